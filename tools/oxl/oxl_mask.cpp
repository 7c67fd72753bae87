// oxl mask: a text put into an input mask and taken out again, or a key
// sequence replayed against a masked edit control, as a host's field takes it.
//
//   oxl mask MASK put TEXT    FMTMaskText, then FMTUnmaskInput of the result
//   oxl mask MASK take TEXT   FMTUnmaskInput
//   oxl mask MASK keys KEYS   each key through FMTValidateInput into an edit
//                             control, printing the text and the caret after it;
//                             \L \R \H \E are Left Right Home End, \D Delete,
//                             \B Backspace, \\ a backslash, anything else typed
#include "oxl_tool.h"

#include <oxlrt31/mask.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

bool take(const char* mask, const char* text, std::string* out) {
    std::vector<char> plain(std::strlen(text) + 1);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszInput = const_cast<char*>(text), b.lpszPicture = const_cast<char*>(mask), b.lpszOutput = plain.data();
    LONG ok = FMTUnmaskInput(&b);
    *out = plain.data();
    return ok;
}

int put(const char* mask, const char* text) {
    const char* proper = *mask == '^' ? mask + 1 : mask;
    std::vector<char> out(std::strlen(proper) + std::strlen(text) + 1);
    if (!FMTMaskText(text, out.data(), proper)) {
        std::fprintf(stderr, "oxl mask: \"%s\" is not a valid mask\n", proper);
        return 1;
    }
    std::string plain;
    take(mask, out.data(), &plain);
    std::printf("masked   \"%s\"\nunmasked \"%s\"\n", OxlFromLibrary(out.data()).c_str(), OxlFromLibrary(plain).c_str());
    return 0;
}

#ifdef _WIN32
const char* gMask;
WNDPROC gEditProc;

LRESULT CALLBACK filtered(HWND hWnd, UINT msg, WPARAM w, LPARAM l) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszPicture = const_cast<char*>(gMask);
    b.dwFlags |= FMTF_EDITFILTER;
    b.hWnd = DWORD(reinterpret_cast<uintptr_t>(hWnd)), b.uMsg = msg, b.wParam = DWORD(w), b.lParam = DWORD(l);
    long long whole = l;
    std::memcpy(b.abReserved, &whole, sizeof whole);
    if (FMTValidateInput(&b)) return LONG(b.lResult);
    return CallWindowProcA(gEditProc, hWnd, msg, w, l);
}

// Hands the queue's messages to their windows until it is empty, as a
// host's message loop does: key presses become WM_KEYDOWN and, translated,
// WM_CHAR for the focused control.
void pump() {
    MSG m;
    for (DWORD quiet = GetTickCount() + 50; GetTickCount() < quiet;) {
        if (!PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) { Sleep(1); continue; }
        TranslateMessage(&m), DispatchMessageA(&m);
        quiet = GetTickCount() + 50;
    }
}

// A key pressed and let go on the keyboard; Shift held for characters
// that need it. Arrows, Home, End and Delete are keys of the extended set.
void press(UINT vk, bool shift) {
    INPUT in[4] = {};
    int n = 0;
    DWORD extended = vk == VK_LEFT || vk == VK_RIGHT || vk == VK_HOME || vk == VK_END || vk == VK_DELETE ? KEYEVENTF_EXTENDEDKEY : 0;
    auto add = [&](UINT key, DWORD flags) { in[n].type = INPUT_KEYBOARD, in[n].ki.wVk = WORD(key), in[n++].ki.dwFlags = flags; };
    if (shift) add(VK_SHIFT, 0);
    add(vk, extended), add(vk, extended | KEYEVENTF_KEYUP);
    if (shift) add(VK_SHIFT, KEYEVENTF_KEYUP);
    SendInput(UINT(n), in, sizeof(INPUT));
    pump();
}

// Each key goes through the keyboard to the focused control when the
// system lets this process take the focus (it does under a desktop or a
// bare X server); otherwise as messages straight to the control.
void key(HWND edit, bool keyboard, UINT vk, char typed) {
    SHORT scan = typed ? VkKeyScanA(typed) : 0;
    if (!keyboard || (typed && (scan == -1 || (scan & 0x600)))) {
        SendMessageA(edit, typed ? WM_CHAR : WM_KEYDOWN, typed ? WPARAM(BYTE(typed)) : vk, 1);
        return;
    }
    press(typed ? UINT(LOBYTE(scan)) : vk, typed && (scan & 0x100));
}

int keys(const char* mask, const char* keys) {
    gMask = mask;
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 60, nullptr, nullptr, nullptr, nullptr);
    HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 380, 24, parent, nullptr, nullptr, nullptr);
    gEditProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(filtered)));
    SetForegroundWindow(parent);
    SetFocus(edit);
    pump();
    bool keyboard = GetFocus() == edit;
    std::printf("keys %s\n", keyboard ? "typed on the keyboard" : "sent as messages (this window can't have the keyboard)");
    for (const char* k = keys; *k; ++k) {
        static const struct { char code; UINT vk; const char* name; } kNamed[] = {{'L', VK_LEFT, "Left"}, {'R', VK_RIGHT, "Right"},
            {'H', VK_HOME, "Home"}, {'E', VK_END, "End"}, {'D', VK_DELETE, "Delete"}, {'B', VK_BACK, "Backspace"}};
        std::string name(1, *k);
        char typed = *k;
        UINT vk = 0;
        if (*k == '\\' && k[1]) {
            typed = *++k, name = std::string(1, typed);
            for (const auto& n : kNamed)
                if (n.code == typed) vk = n.vk, name = n.name, typed = 0;
        }
        if (vk == VK_BACK) // Backspace is a key and, translated, the character 8
            keyboard ? press(VK_BACK, false) : void(SendMessageA(edit, WM_CHAR, 8, 1));
        else
            key(edit, keyboard, vk, typed);
        char text[512] = "";
        CallWindowProcA(gEditProc, edit, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        DWORD sel = DWORD(CallWindowProcA(gEditProc, edit, EM_GETSEL, 0, 0));
        std::printf("%-9s \"%s\" caret %u", name.c_str(), OxlFromLibrary(text).c_str(), unsigned(LOWORD(sel)));
        if (HIWORD(sel) != LOWORD(sel)) std::printf(" to %u", unsigned(HIWORD(sel)));
        std::printf("\n");
    }
    DestroyWindow(parent);
    return 0;
}
#else
int keys(const char*, const char*) {
    std::fprintf(stderr, "oxl mask keys: this system has no edit controls; run the Windows build\n");
    return 2;
}
#endif

} // namespace

int OxlMask(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: oxl mask MASK put|take|keys TEXT\n");
        return 2;
    }
    const char *mask = argv[0], *verb = argv[1], *text = argv[2];
    if (!std::strcmp(verb, "put")) return put(mask, text);
    if (!std::strcmp(verb, "keys")) return keys(mask, text);
    if (std::strcmp(verb, "take")) {
        std::fprintf(stderr, "oxl mask: put, take or keys, not \"%s\"\n", verb);
        return 2;
    }
    std::string plain;
    if (!take(mask, text, &plain)) {
        std::printf("\"%s\" does not fit the mask \"%s\"\n", OxlFromLibrary(text).c_str(), mask);
        return 1;
    }
    std::printf("unmasked \"%s\"\n", OxlFromLibrary(plain).c_str());
    return 0;
}
