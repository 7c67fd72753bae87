// Placing dialogs, lengths in screen pixels and message boxes from the
// string resources.
#include "ui/dlg.h"

#include "os/osl.h"

#include <cstdio>

int OXLAPI DlgGetScreenPixels(LONG length, BOOL vertical) {
    const OslGraphicsService* gdi = gOsl.graphics;
    HDC ic = gdi->CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    long long perInch = gdi->GetDeviceCaps(ic, vertical ? LOGPIXELSY : LOGPIXELSX);
    if (ic) gdi->DeleteDC(ic);
    long long scaled = length * perInch; // halves away from zero
    return int((scaled + (scaled < 0 ? -500 : 500)) / 1000);
}

namespace {

// The point to centre a w by h window on: the reference rectangle's centre,
// kept on the screen, or the screen's centre when the reference is iconic.
POINT centrePoint(HWND reference, const RECT& r, LONG w, LONG h) {
    const OslWindowService* win = gOsl.window;
    HDC dc = win->GetDC(reference);
    LONG cx = gOsl.graphics->GetDeviceCaps(dc, HORZRES), cy = gOsl.graphics->GetDeviceCaps(dc, VERTRES);
    win->ReleaseDC(reference, dc);
    if (win->IsIconic(reference)) return {cx / 2, cy / 2};
    POINT p = {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    if (p.x + w / 2 > cx) p.x = cx - w / 2;
    else if (p.x - w / 2 < 0) p.x = w / 2;
    if (p.y + h / 2 > cy) p.y = cy - h / 2;
    else if (p.y - h / 2 < 0) p.y = h / 2;
    return p;
}

} // namespace

BOOL OXLAPI DlgCenterDialog(HWND dialog) {
    const OslWindowService* win = gOsl.window;
    HWND reference = win->GetParent(dialog);
    if (!reference) reference = win->GetWindow(dialog, GW_OWNER);
    if (!reference) reference = win->GetDesktopWindow();
    RECT own = {}, ref = {};
    win->GetWindowRect(dialog, &own);
    win->GetWindowRect(reference, &ref);
    LONG w = own.right - own.left, h = own.bottom - own.top;
    POINT p = centrePoint(reference, ref, w, h);
    p.x -= w / 2;
    p.y -= h / 2;
    if (win->GetWindowLongPtrA(dialog, GWL_STYLE) & WS_CHILD) win->ScreenToClient(reference, &p);
    return win->MoveWindow(dialog, p.x, p.y, w, h, TRUE);
}

int OXLAPI DlgMessageBoxString(HINSTANCE instance, HWND owner, WORD textId, WORD captionId, LPARAM argument, WORD style) {
    char format[200] = "", caption[40] = "", text[200];
    gOsl.profile->LoadStringA(instance, textId, format, sizeof format);
    gOsl.profile->LoadStringA(instance, captionId, caption, sizeof caption);
    // The text's one conversion takes the argument as wsprintfA would.
    std::snprintf(text, sizeof text, format, argument);
    return gOsl.window->MessageBoxA(owner, text, caption, style);
}

BOOL OXLAPI DlgDoDlgWizard(DLGWIZARD* wz) {
    if (!wz || !wz->DlgTemplates || !wz->DlgProcs || !wz->DlgInstance) return FALSE;
    while (wz->DlgNext >= 0) {
        if (wz->DlgNext >= wz->DlgCount) return FALSE;
        LPCSTR name = wz->DlgTemplates;
        for (LONG i = 0; i < wz->DlgNext; ++i) {
            if (!*name || !wz->DlgProcs[i]) return FALSE;
            while (*name) ++name;
            ++name;
        }
        DLGPROC proc = wz->DlgProcs[wz->DlgNext];
        if (!*name || !proc) return FALSE;
        wz->DlgCurrent = wz->DlgNext;
        INT_PTR r = gOsl.window->DialogBoxParamA(wz->DlgInstance, name, wz->DlgOwner, proc, reinterpret_cast<LPARAM>(wz));
        if (r == -1 || r == IDCANCEL) return FALSE;
    }
    return TRUE;
}
