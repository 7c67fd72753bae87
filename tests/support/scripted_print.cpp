#include "scripted_print.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <sstream>
#include <type_traits>
#include <utility>

namespace {

struct PrintScript {
    OslServices saved;
    OslWindowService window;
    OslGraphicsService graphics;
    ScriptedPrint::Replies replies;
    std::map<std::string, size_t> turns;
    std::vector<std::string> devNames, log;
    std::vector<ScriptedPrint::Window> windows; // the Nth has the handle 256 + 16 N
    ABORTPROC abortProc;
    DLGPROC dialogProc; // the abort dialog's, while it is open
} sP;

const HWND kDialog = reinterpret_cast<HWND>(0xA00), kDesktop = reinterpret_cast<HWND>(0xDE5); // GetDesktopWindow's

long long reply(const std::string& name, long long otherwise) {
    auto r = sP.replies.find(name);
    return r == sP.replies.end() || r->second.empty() ? otherwise : r->second[std::min(sP.turns[name]++, r->second.size() - 1)];
}
void note(const std::string& entry) { sP.log.size() < 100000 ? sP.log.push_back(entry) : (std::fputs("scripted print: over 100000 calls, the job runs away\n", stderr), std::abort()); }
template <class T> std::string str(T v) {
    if constexpr (std::is_convertible_v<T, const char*>) return v ? v : "";
    else if constexpr (std::is_same_v<T, const DOCINFOA*>) return str(v->lpszDocName);
    else if constexpr (std::is_same_v<T, const DEVMODEA*>) return v ? std::to_string(v->dmDefaultSource) : "null";
    else if constexpr (std::is_same_v<T, const MSG*>) return std::to_string(v->message);
    else if constexpr (std::is_pointer_v<T>) return v == static_cast<void*>(kScriptedDc) || v == static_cast<void*>(kDialog) ? "" : std::to_string(uintptr_t(v));
    else return std::to_string(v);
}
// Logs "what:a,b,...", leaving out empty values.
template <class... A> void say(const char* what, A... a) {
    std::string s = what, sep = ":";
    for (const std::string& v : std::initializer_list<std::string>{str(a)...})
        if (!v.empty()) s += sep + v, sep = ",";
    note(s);
}
template <size_t N> struct Name { char s[N]; constexpr Name(const char (&v)[N]) { std::copy_n(v, N, s); } };
// An entry that logs its call and answers its replies, else `V`.
template <Name N, long long V, class R, class... A> R WINAPI entry(A... a) { return say(N.s, a...), R(reply(N.s, V)); }
// An entry that answers `V` and logs nothing.
template <uintptr_t V, class R, class... A> R WINAPI fixed(A...) { return R(V); }

ScriptedPrint::Window* find(HWND w) { return uintptr_t(w) % 0x10 == 0 && (uintptr_t(w) - 0x100) / 0x10 < sP.windows.size() ? &sP.windows[(uintptr_t(w) - 0x100) / 0x10] : nullptr; }
LONG_PTR WINAPI windowLong(HWND w, int index) { return !find(w) ? 0 : index == GWL_STYLE ? find(w)->style : reinterpret_cast<LONG_PTR>(find(w)->instance); }
HWND WINAPI getWindow(HWND w, UINT cmd) { HWND next = HWND(cmd == GW_HWNDFIRST ? 0x100 : uintptr_t(w) + 0x10); return (cmd == GW_HWNDFIRST || cmd == GW_HWNDNEXT) && find(next) ? next : nullptr; }
// A field of the window's record; 0 for no window.
template <auto M, class R, class... A> R WINAPI field(HWND w, A...) { return find(w) ? R(find(w)->*M) : R(); }
BOOL WINAPI enableWindow(HWND w, BOOL enable) {
    ScriptedPrint::Window* r = (say("EnableWindow", w, enable), find(w));
    return r ? std::exchange(r->style, enable ? r->style & ~WS_DISABLED : r->style | WS_DISABLED) & WS_DISABLED : FALSE;
}
BOOL WINAPI isWindow(HWND w) { return find(w) != nullptr; }
BOOL WINAPI windowRect(HWND w, LPRECT rect) { return *rect = w == kDesktop ? RECT{0, 0, 1280, 1024} : find(w) ? find(w)->rect : RECT{}, TRUE; }
BOOL WINAPI screenToClient(HWND w, LPPOINT p) { RECT r; return windowRect(w, &r), *p = {p->x - r.left, p->y - r.top}, TRUE; }
LRESULT WINAPI sendMessage(HWND w, UINT m, WPARAM wp, LPARAM lp) { return say("SendMessageA", m, wp, lp), w == kDialog && sP.dialogProc ? sP.dialogProc(w, m, wp, lp) : 0; }
INT_PTR WINAPI dialogBox(HINSTANCE, LPCSTR name, [[maybe_unused]] HWND owner, DLGPROC proc, LPARAM lp) {
    say("DialogBoxParamA", name);
#ifdef _WIN32 // a real dialog: every step shows the module's abort dialog
    return DialogBoxParamA(GetModuleHandleA(nullptr), "PrintAbortDialog", owner, proc, lp);
#endif
    return proc(nullptr, WM_INITDIALOG, 0, lp);
}
HWND WINAPI createDialog(HINSTANCE, LPCSTR name, HWND, DLGPROC proc, LPARAM lp) {
    if (say("CreateDialogParamA", name), !reply("CreateDialogParamA", 1)) return nullptr;
    return sP.dialogProc = proc, proc(kDialog, WM_INITDIALOG, 0, lp), kDialog;
}
BOOL WINAPI destroyWindow(HWND w) { return say("DestroyWindow", w), w == kDialog && sP.dialogProc && sP.dialogProc(w, WM_DESTROY, 0, 0), sP.dialogProc = w == kDialog ? nullptr : sP.dialogProc, TRUE; }
BOOL WINAPI peek(LPMSG msg, HWND, UINT, UINT, UINT remove) { return remove & PM_REMOVE && reply("PeekMessageA", 0) && (say("Cancel"), *msg = {sP.dialogProc ? kDialog : nullptr, WM_COMMAND, IDCANCEL, 0, 0, {}}, true); }
BOOL WINAPI isDialogMessage(HWND dialog, LPMSG msg) { return msg->hwnd == dialog && sP.dialogProc && (sP.dialogProc(dialog, msg->message, msg->wParam, msg->lParam), true); }

int WINAPI endPage(HDC dc) {
    int code = int(reply("spooler", 1)), result = entry<"EndPage", 1, int>(dc);
    return code <= 0 && sP.abortProc && sP.abortProc(dc, code), result;
}
int WINAPI abortProc(HDC, ABORTPROC proc) { return sP.abortProc = proc, 1; }
const std::map<int, int> kCaps = {{LOGPIXELSX, 96}, {LOGPIXELSY, 96}, {HORZRES, 1280}, {VERTRES, 1024}, {PHYSICALWIDTH, 850}, {PHYSICALHEIGHT, 1100}};
int WINAPI caps(HDC, int index) { return int(reply("GetDeviceCaps:" + std::to_string(index), kCaps.count(index) ? kCaps.at(index) : 0)); }
int WINAPI escape(HDC dc, int code, int, LPCSTR in, LPVOID out) {
    int v = in ? *reinterpret_cast<const int*>(in) : 0;
    if (code == 8) return int(reply("Escape8:" + std::to_string(v), v == 9 || v == 12)); // QUERYESCSUPPORT: SETABORTPROC, GETPHYSPAGESIZE
    if (code == 12 || code == 13) *static_cast<POINT*>(out) = {caps(dc, code == 12 ? PHYSICALWIDTH : PHYSICALOFFSETX), caps(dc, code == 12 ? PHYSICALHEIGHT : PHYSICALOFFSETY)};
    return say("Escape", code, v), 1;
}
int WINAPI clipBox(HDC, LPRECT r) { std::vector<long long> c = sP.replies.count("GetClipBox") ? sP.replies["GetClipBox"] : std::vector<long long>{0, 0, 8500, -11000}; return *r = {LONG(c[0]), LONG(c[1]), LONG(c[2]), LONG(c[3])}, 2; }
// MM_HIENGLISH at 100 pixels an inch, origins left at 0 for the measures.
BOOL WINAPI toLogical(HDC, LPPOINT p, int n) { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x * 10, -q.y * 10}; }), TRUE; }
BOOL WINAPI toDevice(HDC, LPPOINT p, int n) { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x / 10, -q.y / 10}; }), TRUE; }
// A success brings a device mode; the DEVNAMES block holds the names device,
// driver, port in this order.
BOOL WINAPI printDlg(LPPRINTDLGA d) {
    BOOL done = entry<"PrintDlgA", 1, BOOL>(d->Flags);
    d->hDevMode = done ? gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, 156) : nullptr;
    if (const std::vector<std::string>& n = sP.devNames; !n.empty()) {
        DEVNAMES head = {WORD(sizeof head + n[0].size() + 1), WORD(sizeof head), WORD(sizeof head + n[0].size() + n[1].size() + 2), 0};
        std::string block = std::string(reinterpret_cast<char*>(&head), sizeof head) + n[0] + '\0' + n[1] + '\0' + n[2] + '\0';
        d->hDevNames = gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, block.size());
        std::memcpy(gOsl.memory->GlobalLock(d->hDevNames), block.data(), block.size()), gOsl.memory->GlobalUnlock(d->hDevNames);
    }
    return done;
}
BOOL WINAPI openPrinter(LPSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSA) { return *printer = reinterpret_cast<HANDLE>(0x9E), entry<"OpenPrinterA", 1, BOOL>(name); }
// Level 2: driver "drv", port "CUPS:PDF", a device mode of "dmSize" bytes with 5 copies.
BOOL WINAPI getPrinter(HANDLE, DWORD level, LPBYTE out, DWORD size, LPDWORD needed) {
    const char strings[] = "drv\0CUPS:PDF";
    WORD mode = WORD(reply("dmSize", 0));
    *needed = DWORD(sizeof(PRINTER_INFO_2A) + mode + sizeof strings);
    if (level != 2 || size < *needed || !entry<"GetPrinterA", 1, BOOL>()) return FALSE;
    PRINTER_INFO_2A* info = static_cast<PRINTER_INFO_2A*>(std::memset(out, 0, size));
    info->pDriverName = static_cast<LPSTR>(std::memcpy(out + sizeof *info + mode, strings, sizeof strings)), info->pPortName = info->pDriverName + 4;
    if (mode) info->pDevMode = reinterpret_cast<LPDEVMODEA>(out + sizeof *info), info->pDevMode->dmSize = WORD(mode - 20), info->pDevMode->dmDriverExtra = 20, info->pDevMode->dmCopies = 5;
    return TRUE;
}
// Mode 0: the device mode's size; mode 2 (DM_OUT_BUFFER): 3 copies.
LONG WINAPI documentProperties(HWND, HANDLE, LPSTR, LPDEVMODEA out, LPDEVMODEA, DWORD mode) {
    LONG r = LONG(reply("DocumentPropertiesA:" + std::to_string(mode), mode ? 1 : 220));
    return mode == DM_OUT_BUFFER && r >= 0 ? out->dmCopies = 3, r : r;
}

} // namespace

ScriptedPrint::ScriptedPrint(Replies replies, std::vector<std::string> devNames) {
    const OslWindowService* native = (sP.saved = gOsl).window;
    sP.replies = std::move(replies), sP.devNames = std::move(devNames), sP.turns.clear(), sP.log.clear(), sP.windows.clear();
    sP.abortProc = nullptr, sP.dialogProc = nullptr;
    sP.window = {entry<"MessageBoxA", IDOK>, native->MessageBeep, native->GetActiveWindow, sendMessage, native->SendMessageTimeoutA,
                 windowLong, getWindow, field<&ScriptedPrint::Window::parent>, fixed<0x100>, enableWindow, isWindow, field<&ScriptedPrint::Window::thread>,
                 fixed<0xDE5>, windowRect, fixed<0xD15>, fixed<1>, field<&ScriptedPrint::Window::iconic>, screenToClient, entry<"MoveWindow", 1>, dialogBox, createDialog,
                 destroyWindow, peek, isDialogMessage, fixed<1>, entry<"DispatchMessageA", 0>, entry<"SetWindowTextA", 1>,
                 entry<"SetDlgItemTextA", 1>, fixed<0xB00>, entry<"UpdateWindow", 1>, fixed<0>, fixed<0x5E0>, entry<"EnableMenuItem", 1>};
    sP.graphics = {entry<"CreateDCA", 0xD00>, entry<"CreateICA", 0xD00>, entry<"DeleteDC", 1>, entry<"StartDocA", 1>, entry<"StartPage", 1>,
                   endPage, entry<"EndDoc", 1>, abortProc, escape, caps, entry<"SaveDC", 3>, entry<"RestoreDC", 1>, entry<"ResetDCA", 0xD00>,
                   fixed<1>, clipBox, toLogical, toDevice, entry<"SetWindowOrgEx", 1>, entry<"SetViewportOrgEx", 1>, fixed<1>, fixed<1>,
                   entry<"SetBkMode", 2>, entry<"Rectangle", 1>, printDlg, entry<"CommDlgExtendedError", 0>, openPrinter, entry<"ClosePrinter", 1>,
                   getPrinter, documentProperties};
    gOsl.window = &sP.window, gOsl.graphics = &sP.graphics;
}
ScriptedPrint::~ScriptedPrint() { gOsl = sP.saved; }
std::string ScriptedPrint::Calls(const std::string& prefixes) const {
    std::string out;
    for (const std::string& e : sP.log)
        if (std::istringstream words(prefixes); std::any_of(std::istream_iterator<std::string>(words), {}, [&](const std::string& p) { return e.rfind(p, 0) == 0; }))
            out += (out.empty() ? "" : " ") + e;
    return out;
}
void ScriptedPrint::Note(const std::string& entry) { note(entry); }
HWND ScriptedPrint::AddWindow(Window w) { return sP.windows.push_back(w), reinterpret_cast<HWND>(uintptr_t(0x100 + 0x10 * (sP.windows.size() - 1))); }
