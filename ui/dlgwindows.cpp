// Disabling groups of windows and enabling them again: the record is a
// movable block of 50 window handles ended by the first 0, holding only the
// windows this call disabled, so that one disabled for another reason stays
// disabled afterwards.
#include "ui/dlg.h"

#include "core/libstate.h"
#include "os/osl.h"

namespace {

constexpr int kMaxWindows = 50;

bool disabled(HWND w) { return (gOsl.window->GetWindowLongPtrA(w, GWL_STYLE) & WS_DISABLED) != 0; }

// The window exists, on NT is of `instance`, and belongs to this thread.
bool belongs(HINSTANCE instance, HWND w) {
    const OslWindowService* win = gOsl.window;
    if (!win->IsWindow(w)) return false;
    if (gOsl.system->GetPlatformId() == VER_PLATFORM_WIN32_NT &&
        reinterpret_cast<HINSTANCE>(win->GetWindowLongPtrA(w, GWLP_HINSTANCE)) != instance)
        return false;
    return win->GetWindowThreadProcessId(w, nullptr) == gOsl.sync->GetCurrentThreadId();
}

// One step of a walk: when disabling, records and disables `w` if it is
// enabled; when enabling, enables it if the record holds it. `count` is the
// number of windows recorded, the walk's limit.
void visit(HWND w, BOOL enable, HWND* record, int& count) {
    if (!enable) {
        if (!disabled(w)) {
            record[count] = w;
            gOsl.window->EnableWindow(w, FALSE);
            ++count;
        }
        return;
    }
    for (int i = 0; i < kMaxWindows && record[i]; ++i)
        if (record[i] == w) {
            gOsl.window->EnableWindow(w, TRUE);
            break;
        }
}

// Starts a walk: the locked record, new when disabling. Null ends the call.
HWND* open(BOOL enable, HGLOBAL& saved) {
    const OslMemoryService* mem = gOsl.memory;
    if (enable) {
        if (!saved) return nullptr;
    } else {
        saved = mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, kMaxWindows * sizeof(HWND)); // 200 bytes on i686
        if (!saved) return nullptr;
    }
    HWND* record = static_cast<HWND*>(mem->GlobalLock(saved));
    if (!record && !enable) mem->GlobalFree(saved);
    return record;
}

HGLOBAL close(BOOL enable, HGLOBAL saved) {
    gOsl.memory->GlobalUnlock(saved);
    if (!enable) return saved;
    gOsl.memory->GlobalFree(saved);
    return nullptr;
}

} // namespace

HGLOBAL OXLAPI DlgEnableAllWindows(HINSTANCE instance, HWND except, BOOL enable, HGLOBAL saved) {
    if (!instance) return nullptr;
    HWND* record = open(enable, saved);
    if (!record) return nullptr;
    const OslWindowService* win = gOsl.window;
    int count = 0;
    for (HWND w = win->GetWindow(win->FindWindowA(nullptr, nullptr), GW_HWNDFIRST); w && count < kMaxWindows;
         w = win->GetWindow(w, GW_HWNDNEXT))
        if (w != except && belongs(instance, w)) visit(w, enable, record, count);
    return close(enable, saved);
}

HGLOBAL DlgEnableParentChain(HWND window, BOOL enable, HGLOBAL saved) {
    HWND* record = open(enable, saved);
    if (!record) return nullptr;
    int count = 0;
    for (HWND w = window; w && count < kMaxWindows; w = gOsl.window->GetParent(w)) visit(w, enable, record, count);
    return close(enable, saved);
}
