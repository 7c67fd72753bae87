// A model of windows and single-line edit controls, for the input filter
// where the system has none. An edit control is a text, a selection given
// by its anchor and its caret end (the end a key moves), and a modified
// flag (set by every change but WM_SETTEXT, which clears it); it takes the
// messages below as a Win32 EDIT control does and answers 0 to any other. Positions behind the text's end mean its end.
// Windows live until DestroyWindow; handles are small numbers, never reused.
#include "edit_posix.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <strings.h>

namespace {

struct Window {
    bool edit;
    HWND parent;
    LONG_PTR id;
    WNDPROC proc;
    std::string text;
    size_t anchor = 0, caret = 0;
    bool modified = false;
};

std::mutex gLock;
std::map<HWND, Window>& windows() {
    static std::map<HWND, Window> all;
    return all;
}
uintptr_t gLastHandle = 0x100;

// Map nodes stay put while other windows come and go; a window is used only
// by the thread that made it, as on Windows.
Window* find(HWND hWnd) {
    std::lock_guard<std::mutex> hold(gLock);
    auto it = windows().find(hWnd);
    return it == windows().end() ? nullptr : &it->second;
}

size_t lo(const Window& w) { return std::min(w.anchor, w.caret); }
size_t hi(const Window& w) { return std::max(w.anchor, w.caret); }

void select(Window& w, size_t anchor, size_t caret) {
    w.anchor = std::min(anchor, w.text.size());
    w.caret = std::min(caret, w.text.size());
}

void replace(Window& w, const std::string& s) {
    size_t at = lo(w);
    w.modified = true;
    w.text.replace(at, hi(w) - at, s);
    select(w, at + s.size(), at + s.size());
}

LRESULT keyDown(Window& w, WPARAM key) {
    size_t c = w.caret, n = w.text.size();
    switch (key) {
    case OSL_VK_LEFT: select(w, c ? c - 1 : 0, c ? c - 1 : 0); break;
    case OSL_VK_RIGHT: select(w, std::min(c + 1, n), std::min(c + 1, n)); break;
    case OSL_VK_HOME: select(w, 0, 0); break;
    case OSL_VK_END: select(w, n, n); break;
    case OSL_VK_DELETE:
        if (lo(w) == hi(w)) select(w, c, c + 1);
        replace(w, "");
        break;
    default: break;
    }
    return 0;
}

LRESULT typed(Window& w, WPARAM ch) {
    if (ch == 8) {
        if (lo(w) == hi(w)) select(w, w.caret ? w.caret - 1 : 0, w.caret);
        replace(w, "");
    } else if (ch >= 32 && ch < 256) {
        replace(w, std::string(1, char(ch)));
    }
    return 0;
}

LRESULT WINAPI editProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    Window* w = find(hWnd);
    if (!w || !w->edit) return 0;
    switch (msg) {
    case OSL_WM_SETTEXT:
        w->text = lParam ? reinterpret_cast<const char*>(lParam) : "";
        w->modified = false;
        select(*w, 0, 0);
        return 1;
    case OSL_WM_GETTEXT: {
        if (!wParam || !lParam) return 0;
        size_t n = std::min(w->text.size(), size_t(wParam) - 1);
        std::memcpy(reinterpret_cast<char*>(lParam), w->text.data(), n);
        reinterpret_cast<char*>(lParam)[n] = 0;
        return LRESULT(n);
    }
    case OSL_WM_GETTEXTLENGTH: return LRESULT(w->text.size());
    case OSL_EM_GETSEL:
        if (wParam) *reinterpret_cast<DWORD*>(wParam) = DWORD(lo(*w));
        if (lParam) *reinterpret_cast<DWORD*>(lParam) = DWORD(hi(*w));
        return LRESULT(DWORD(lo(*w) & 0xFFFF) | DWORD(hi(*w) & 0xFFFF) << 16);
    case OSL_EM_SETSEL:
        if (int(wParam) == -1) return select(*w, w->caret, w->caret), 0;
        select(*w, UINT(wParam), lParam == -1 ? w->text.size() : UINT(lParam));
        return 0;
    case OSL_EM_REPLACESEL: replace(*w, lParam ? reinterpret_cast<const char*>(lParam) : ""); return 0;
    case OSL_EM_GETMODIFY: return w->modified;
    case OSL_EM_SETMODIFY: w->modified = wParam != 0; return 0;
    case OSL_WM_KEYDOWN: return keyDown(*w, wParam);
    case OSL_WM_CHAR: return typed(*w, wParam);
    case OSL_WM_CUT: // no clipboard: the selection goes nowhere
    case OSL_WM_CLEAR: replace(*w, ""); return 0;
    default: return 0;
    }
}

LRESULT WINAPI callProc(WNDPROC proc, HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    return proc ? proc(hWnd, msg, wParam, lParam) : 0;
}

LRESULT WINAPI sendMessage(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    Window* w = find(hWnd);
    return w ? callProc(w->proc, hWnd, msg, wParam, lParam) : 0;
}

LONG_PTR WINAPI getLong(HWND hWnd, int index) {
    Window* w = find(hWnd);
    if (!w) return 0;
    if (index == OSL_GWLP_WNDPROC) return reinterpret_cast<LONG_PTR>(w->proc);
    return index == OSL_GWLP_ID ? w->id : 0;
}

LONG_PTR WINAPI setLong(HWND hWnd, int index, LONG_PTR value) {
    Window* w = find(hWnd);
    LONG_PTR old = getLong(hWnd, index);
    if (w && index == OSL_GWLP_WNDPROC) w->proc = reinterpret_cast<WNDPROC>(value);
    if (w && index == OSL_GWLP_ID) w->id = value;
    return old;
}

int WINAPI textLength(HWND hWnd) { return int(sendMessage(hWnd, OSL_WM_GETTEXTLENGTH, 0, 0)); }
int WINAPI getText(HWND hWnd, LPSTR out, int size) {
    return int(sendMessage(hWnd, OSL_WM_GETTEXT, WPARAM(size > 0 ? size : 0), reinterpret_cast<LPARAM>(out)));
}
HWND WINAPI parentOf(HWND hWnd) {
    Window* w = find(hWnd);
    return w ? w->parent : nullptr;
}
BOOL WINAPI beep(UINT) { return 1; }
SHORT WINAPI keyState(int) { return 0; }

HWND WINAPI createWindow(DWORD, LPCSTR cls, LPCSTR text, DWORD, int, int, int, int, HWND parent, HMENU menu,
                         HINSTANCE, LPVOID) {
    bool edit = cls && !strcasecmp(cls, "EDIT");
    std::lock_guard<std::mutex> hold(gLock);
    HWND h = reinterpret_cast<HWND>(gLastHandle += 0x10);
    Window& w = windows().emplace(h, Window{edit, parent, reinterpret_cast<LONG_PTR>(menu), editProc, {}}).first->second;
    if (edit && text) w.text = text;
    return h;
}

BOOL WINAPI destroyWindow(HWND hWnd) {
    std::lock_guard<std::mutex> hold(gLock);
    return windows().erase(hWnd) != 0;
}

} // namespace

const OslEditService kOslPosixEdit = {getLong, setLong, sendMessage, callProc, textLength, getText,
                                      parentOf, beep, keyState, createWindow, destroyWindow};
