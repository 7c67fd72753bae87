// PageGetPageInfo: the size of the paper a device mode chooses and the part
// of it a printer can print on, in tenths of a millimetre, y downwards.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>
#include <utility>

namespace {

enum { kFormNameBytes = 32, kLandscape = 2 };

LONG magnitude(LONG v) { return v >= 0 ? v : v == -2147483647 - 1 ? 2147483647 : -v; }

// The size of the form the device mode names (way 1); false when it can't be read.
bool formSize(HANDLE printer, const DEVMODEA* m, SIZE* size) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    char name[kFormNameBytes + 1] = "";
    std::memcpy(name, m->dmFormName, kFormNameBytes);
    DWORD needed = 0;
    if (ps->GetFormA(printer, name, 1, nullptr, 0, &needed) || ps->GetLastError() != ERROR_INSUFFICIENT_BUFFER) return false;
    LPBYTE block = needed >= sizeof(FORM_INFO_1A) ? static_cast<LPBYTE>(MemAlloc(needed)) : nullptr;
    bool read = block && ps->GetFormA(printer, name, 1, block, needed, &needed);
    if (read) {
        const FORM_INFO_1A* form = reinterpret_cast<const FORM_INFO_1A*>(block);
        *size = {form->Size.cx / 100, form->Size.cy / 100};
    }
    MemFree(block);
    return read;
}

// The size the device's paper list gives the code (way 2); false when it can't be told.
bool listedSize(LPCSTR device, LPCSTR port, const DEVMODEA* m, SIZE* size) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    int n = ps->DeviceCapabilitiesA(device, port, DC_PAPERS, nullptr, m);
    WORD* codes = static_cast<WORD*>(PrintCapabilityList(device, port, DC_PAPERS, n, sizeof(WORD), m));
    POINT* sizes = codes ? static_cast<POINT*>(PrintCapabilityList(device, port, DC_PAPERSIZE, n, sizeof(POINT), m)) : nullptr;
    int i = 0;
    while (sizes && i < n && codes[i] != WORD(m->dmPaperSize)) ++i;
    bool found = sizes && i < n && sizes[i].x && sizes[i].y;
    if (found) *size = {sizes[i].x, sizes[i].y};
    MemFree(codes), MemFree(sizes);
    return found;
}

bool supports(HDC ic, int escape) { return gOsl.graphics->Escape(ic, QUERYESCSUPPORT, sizeof escape, reinterpret_cast<LPCSTR>(&escape), nullptr) > 0; }

// A point the device gives by `escape`, in tenths of a millimetre, y made
// positive; false when the device has no such escape.
bool escapePoint(HDC ic, int escape, POINT* p) {
    *p = {0, 0};
    if (!supports(ic, escape) || gOsl.graphics->Escape(ic, escape, 0, nullptr, p) <= 0) return false;
    gOsl.graphics->DPtoLP(ic, p, 1);
    p->y = magnitude(p->y);
    return true;
}

bool paperSize(HANDLE printer, HDC ic, LPCSTR device, LPCSTR port, const DEVMODEA* m, WORD* paper, SIZE* size) {
    bool hasPaper = m && (m->dmFields & DM_PAPERSIZE) && m->dmPaperSize;
    if (m && (m->dmFields & DM_FORMNAME)) {
        if (m->dmFields & DM_PAPERSIZE) *paper = WORD(m->dmPaperSize);
        return formSize(printer, m, size);
    }
    if (hasPaper) *paper = WORD(m->dmPaperSize);
    if (hasPaper && WORD(m->dmPaperSize) == DMPAPER_USER) return *size = {m->dmPaperWidth, m->dmPaperLength}, true;
    if (hasPaper && listedSize(device, port, m, size)) return true;
    POINT p;
    if (!supports(ic, GETPHYSPAGESIZE) || gOsl.graphics->Escape(ic, GETPHYSPAGESIZE, 0, nullptr, &p) <= 0 || !p.x || !p.y) return false;
    gOsl.graphics->DPtoLP(ic, &p, 1);
    *size = {p.x, magnitude(p.y)};
    return true;
}

} // namespace

BOOL OXLAPI PageGetPageInfo(LPCSTR driver, LPCSTR device, LPCSTR port, const DEVMODEA* mode, WORD* paper, SIZE* size,
                            RECT* printable) {
    HANDLE printer = nullptr;
    if (!device || !paper || !size || !printable || !gOsl.graphics->OpenPrinterA(const_cast<LPSTR>(device), &printer, nullptr))
        return FALSE;
    HGLOBAL own = nullptr;
    const DEVMODEA* m = mode ? mode : PrintDefaultDevMode(printer, const_cast<LPSTR>(device), &own);
    HDC ic = gOsl.graphics->CreateICA(driver, device, nullptr, m);
    SIZE s = {};
    POINT offset = {};
    bool ok = ic && (gOsl.graphics->SetMapMode(ic, MM_LOMETRIC), paperSize(printer, ic, device, port, m, paper, &s));
    if (ok) {
        escapePoint(ic, GETPRINTINGOFFSET, &offset);
        if (m && m->dmOrientation == kLandscape) std::swap(s.cx, s.cy), std::swap(offset.x, offset.y);
        RECT clip = {};
        gOsl.graphics->GetClipBox(ic, &clip);
        *size = s;
        *printable = {offset.x, offset.y, offset.x + magnitude(clip.right - clip.left), offset.y + magnitude(clip.bottom - clip.top)};
    }
    if (ic) gOsl.graphics->DeleteDC(ic);
    if (own) gOsl.memory->GlobalUnlock(own), gOsl.memory->GlobalFree(own);
    gOsl.graphics->ClosePrinter(printer);
    return ok;
}
