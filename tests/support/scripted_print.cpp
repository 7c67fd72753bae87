#include "scripted_print.h"

#include <algorithm>
#include <cstring>

namespace {

struct PrintScript {
    OslWindowService window;
    OslGraphicsService graphics;
    ScriptedPrint::Script script;
    std::vector<std::string> log;
    std::vector<std::pair<HWND, ScriptedPrint::Window>> windows;
    int endPages, peeks;
    ABORTPROC abortProc;
    DLGPROC dialogProc;
    HWND dialog;
} sP;

const HDC kDc = reinterpret_cast<HDC>(0xD00);
const HWND kDialog = reinterpret_cast<HWND>(0xA00), kDesktop = reinterpret_cast<HWND>(0xDE5); // GetDesktopWindow's

std::string str(const char* s) { return s ? s : ""; }
std::string str(long long v) { return std::to_string(v); }
template <class T> std::string str(T* p) { return std::to_string(reinterpret_cast<uintptr_t>(p)); }
// Logs "what:a,b,...".
template <class... A> void say(const char* what, A... a) {
    std::string s = what;
    ((s += (s.find(':') == std::string::npos ? ":" : ",") + str(a)), ...);
    sP.log.push_back(s);
}
// A fixed answer of any entry.
template <uintptr_t V, class R, class... A> R WINAPI fixed(A...) { return R(V); }
ScriptedPrint::Window* find(HWND w) {
    for (auto& [h, rec] : sP.windows)
        if (h == w) return &rec;
    return nullptr;
}

int WINAPI messageBox(HWND, LPCSTR text, LPCSTR caption, UINT style) { return say("box", text, caption, style), IDOK; }
LRESULT WINAPI sendMessage(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    say("send", m, wp, lp);
    return w == sP.dialog && sP.dialogProc ? sP.dialogProc(w, m, wp, lp) : 0;
}
LONG_PTR WINAPI windowLong(HWND w, int index) {
    ScriptedPrint::Window* r = find(w);
    return !r ? 0 : index == GWL_STYLE ? r->style : reinterpret_cast<LONG_PTR>(r->instance);
}
HWND WINAPI getWindow(HWND w, UINT cmd) {
    if (cmd == GW_HWNDFIRST) return sP.windows.empty() ? nullptr : sP.windows.front().first;
    for (size_t i = 0; cmd == GW_HWNDNEXT && i + 1 < sP.windows.size(); ++i)
        if (sP.windows[i].first == w) return sP.windows[i + 1].first;
    return nullptr;
}
HWND WINAPI getParent(HWND w) { return find(w) ? find(w)->parent : nullptr; }
HWND WINAPI findWindow(LPCSTR, LPCSTR) { return getWindow(nullptr, GW_HWNDFIRST); }
BOOL WINAPI enableWindow(HWND w, BOOL enable) {
    say(enable ? "enable" : "disable", w);
    ScriptedPrint::Window* r = find(w);
    if (!r) return FALSE;
    BOOL was = (r->style & WS_DISABLED) != 0;
    r->style = enable ? r->style & ~WS_DISABLED : r->style | WS_DISABLED;
    return was;
}
BOOL WINAPI isWindow(HWND w) { return find(w) != nullptr; }
DWORD WINAPI windowThread(HWND w, LPDWORD) { return find(w) ? find(w)->thread : 0; }
BOOL WINAPI windowRect(HWND w, LPRECT rect) { return *rect = w == kDesktop ? RECT{0, 0, 1280, 1024} : find(w) ? find(w)->rect : RECT{}, TRUE; }
BOOL WINAPI iconic(HWND w) { return find(w) && find(w)->iconic; }
BOOL WINAPI screenToClient(HWND w, LPPOINT p) {
    RECT r;
    return windowRect(w, &r), *p = {p->x - r.left, p->y - r.top}, TRUE;
}
BOOL WINAPI moveWindow(HWND, int x, int y, int w, int h, BOOL) { return say("move", x, y, w, h), TRUE; }
INT_PTR WINAPI dialogBox(HINSTANCE, LPCSTR name, HWND, DLGPROC proc, LPARAM lp) {
    return say("dialogbox", name), proc(nullptr, WM_INITDIALOG, 0, lp);
}
HWND WINAPI createDialog(HINSTANCE, LPCSTR name, HWND, DLGPROC proc, LPARAM lp) {
    if (say("dialog", name), sP.script.failDialog) return nullptr;
    sP.dialog = kDialog, sP.dialogProc = proc;
    return proc(kDialog, WM_INITDIALOG, 0, lp), kDialog;
}
BOOL WINAPI destroyWindow(HWND w) {
    if (say("destroy"), w == sP.dialog && sP.dialogProc) sP.dialogProc(w, WM_DESTROY, 0, 0);
    return sP.dialog = w == sP.dialog ? nullptr : sP.dialog, TRUE;
}
BOOL WINAPI peek(LPMSG msg, HWND, UINT, UINT, UINT remove) {
    if (!(remove & PM_REMOVE) || ++sP.peeks != sP.script.cancelAtPeek) return FALSE;
    say("cancel");
    *msg = {sP.dialog, WM_COMMAND, IDCANCEL, 0, 0, {}};
    return TRUE;
}
BOOL WINAPI isDialogMessage(HWND dialog, LPMSG msg) {
    if (msg->hwnd != dialog || !sP.dialogProc) return FALSE;
    return sP.dialogProc(dialog, msg->message, msg->wParam, msg->lParam), TRUE;
}
LRESULT WINAPI dispatch(const MSG*) { return say("dispatch"), 0; }
BOOL WINAPI windowText(HWND, LPCSTR text) { return say("caption", text), TRUE; }
BOOL WINAPI itemText(HWND, int id, LPCSTR text) { return say(std::to_string(id).c_str(), text), TRUE; }
HWND WINAPI dlgItem(HWND, int id) { return reinterpret_cast<HWND>(intptr_t(0xB00 + id)); }
BOOL WINAPI menuItem(HMENU menu, UINT id, UINT flags) { return say("menu", menu, id, flags), TRUE; }

HDC WINAPI createDC(LPCSTR driver, LPCSTR device, LPCSTR port, const DEVMODEA* m) {
    return say("CreateDCA"), say("dc", driver, device, port, m != nullptr), sP.script.failCreateDC ? nullptr : kDc;
}
HDC WINAPI createIC(LPCSTR driver, LPCSTR device, LPCSTR port, const DEVMODEA* m) { return say("ic", driver, device, port, m != nullptr), kDc; }
BOOL WINAPI deleteDC(HDC) { return say("DeleteDC"), TRUE; }
int WINAPI saveDC(HDC) { return say("SaveDC"), sP.script.saveLevel; }
BOOL WINAPI restoreDC(HDC, int level) { return say("RestoreDC", level), TRUE; }
HDC WINAPI resetDC(HDC dc, const DEVMODEA* m) { return say("ResetDCA", m->dmDefaultSource), dc; }
int WINAPI startDoc(HDC, const DOCINFOA* d) { return say("StartDocA", d->lpszDocName), sP.script.startDoc; }
int WINAPI startPage(HDC) { return say("StartPage"), sP.script.startPage; }
int WINAPI endPage(HDC dc) {
    say("EndPage");
    int n = ++sP.endPages;
    auto code = sP.script.abortAtEndPage.find(n);
    if (code != sP.script.abortAtEndPage.end() && sP.abortProc) sP.abortProc(dc, code->second);
    return size_t(n) <= sP.script.endPage.size() ? sP.script.endPage[size_t(n) - 1] : 1;
}
int WINAPI endDoc(HDC) { return say("EndDoc"), 1; }
int WINAPI abortProc(HDC, ABORTPROC proc) { return sP.abortProc = proc, 1; }
int WINAPI escape(HDC, int code, int, LPCSTR in, LPVOID out) {
    int v = 0;
    if (in) std::memcpy(&v, in, sizeof v);
    if (code == 8) return std::find(sP.script.escapes.begin(), sP.script.escapes.end(), v) != sP.script.escapes.end();
    if (code == 12) *static_cast<POINT*>(out) = {sP.script.paperWidth, sP.script.paperHeight};
    if (code == 7 || code == 17) say(code == 7 ? "draft" : "copies", v);
    return 1;
}
int WINAPI caps(HDC, int index) {
    const ScriptedPrint::Script& s = sP.script;
    std::map<int, int> caps = {{LOGPIXELSX, 96}, {LOGPIXELSY, 96}, {HORZRES, 1280}, {VERTRES, 1024}, {PHYSICALWIDTH, s.paperWidth},
                               {PHYSICALHEIGHT, s.paperHeight}, {PHYSICALOFFSETX, s.offsetX}, {PHYSICALOFFSETY, s.offsetY}};
    return caps[index];
}
int WINAPI clipBox(HDC, LPRECT r) { return *r = sP.script.clip, 2; }
// MM_HIENGLISH at 100 pixels an inch, origins left at 0 for the measures.
BOOL WINAPI toLogical(HDC, LPPOINT p, int n) { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x * 10, -q.y * 10}; }), TRUE; }
BOOL WINAPI toDevice(HDC, LPPOINT p, int n) { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x / 10, -q.y / 10}; }), TRUE; }
BOOL WINAPI windowOrg(HDC, int x, int y, LPPOINT) { return say("worg", x, y), TRUE; }
BOOL WINAPI viewportOrg(HDC, int x, int y, LPPOINT) { return say("vorg", x, y), TRUE; }
BOOL WINAPI printDlg(LPPRINTDLGA d) {
    say("PrintDlgA", d->Flags);
    std::string block(sizeof(DEVNAMES), '\0');
    WORD offsets[3] = {};
    for (size_t i = 0; i < sP.script.devNames.size(); ++i) offsets[i] = WORD(block.size()), block += sP.script.devNames[i] + '\0';
    DEVNAMES n = {offsets[1], offsets[0], offsets[2], 0};
    std::memcpy(&block[0], &n, sizeof n);
    if (!sP.script.devNames.empty()) d->hDevNames = gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, block.size());
    if (d->hDevNames) std::memcpy(gOsl.memory->GlobalLock(d->hDevNames), block.data(), block.size()), gOsl.memory->GlobalUnlock(d->hDevNames);
    d->hDevMode = gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, 156);
    return sP.script.printDlg;
}
DWORD WINAPI dialogError() { return sP.script.dialogError; }
BOOL WINAPI openPrinter(LPSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSA) {
    say("OpenPrinterA", name);
    *printer = reinterpret_cast<HANDLE>(0x9E);
    return std::strcmp(name, "none") != 0;
}
BOOL WINAPI closePrinter(HANDLE p) { return say("ClosePrinter", p), TRUE; }
BOOL WINAPI getPrinter(HANDLE, DWORD level, LPBYTE out, DWORD size, LPDWORD needed) {
    const char strings[] = "drv\0CUPS:PDF";
    WORD mode = sP.script.levelTwoDevMode;
    *needed = DWORD(sizeof(PRINTER_INFO_2A) + mode + sizeof strings);
    if (sP.script.failGetPrinter || level != 2 || size < *needed) return FALSE;
    PRINTER_INFO_2A info = {};
    std::memset(out, 0, size);
    LPSTR text = reinterpret_cast<LPSTR>(out + sizeof info + mode);
    std::memcpy(text, strings, sizeof strings);
    info.pDriverName = text, info.pPortName = text + 4;
    if (mode) {
        info.pDevMode = reinterpret_cast<LPDEVMODEA>(out + sizeof info);
        info.pDevMode->dmSize = WORD(mode - 20), info.pDevMode->dmDriverExtra = 20, info.pDevMode->dmCopies = 5;
    }
    std::memcpy(out, &info, sizeof info);
    return TRUE;
}
LONG WINAPI documentProperties(HWND, HANDLE, LPSTR, LPDEVMODEA out, LPDEVMODEA, DWORD mode) {
    say("DocumentPropertiesA", mode);
    if (mode == DM_OUT_BUFFER && sP.script.devModeCopy >= 0) out->dmCopies = 3;
    return mode ? sP.script.devModeCopy : sP.script.devModeSize;
}
BOOL WINAPI rectangle(HDC, int l, int t, int r, int b) { return say("frame", l, t, r, b), TRUE; }

} // namespace

ScriptedPrint::ScriptedPrint(Script script) : m_window(gOsl.window), m_graphics(gOsl.graphics) {
    sP.script = std::move(script);
    sP.log.clear(), sP.windows.clear();
    sP.endPages = sP.peeks = 0, sP.abortProc = nullptr, sP.dialogProc = nullptr, sP.dialog = nullptr;
    sP.window = {messageBox, m_window->MessageBeep, m_window->GetActiveWindow, sendMessage, m_window->SendMessageTimeoutA,
                 windowLong, getWindow, getParent, findWindow, enableWindow, isWindow, windowThread, fixed<0xDE5>, windowRect,
                 fixed<0xD15>, fixed<1>, iconic, screenToClient, moveWindow, dialogBox, createDialog, destroyWindow, peek,
                 isDialogMessage, fixed<1>, dispatch, windowText, itemText, dlgItem, fixed<1>, fixed<0>, fixed<0x5E0>, menuItem};
    sP.graphics = {createDC, createIC, deleteDC, startDoc, startPage, endPage, endDoc, abortProc, escape, caps, saveDC,
                   restoreDC, resetDC, fixed<1>, clipBox, toLogical, toDevice, windowOrg, viewportOrg, fixed<1>, fixed<1>,
                   fixed<1>, rectangle, printDlg, dialogError, openPrinter, closePrinter, getPrinter, documentProperties};
    gOsl.window = &sP.window, gOsl.graphics = &sP.graphics;
}
ScriptedPrint::~ScriptedPrint() { gOsl.window = m_window, gOsl.graphics = m_graphics; }
std::string ScriptedPrint::Calls(std::initializer_list<const char*> prefixes) const {
    std::string out;
    for (const std::string& e : sP.log)
        for (const char* p : prefixes)
            if (e.rfind(p, 0) == 0) {
                out += (out.empty() ? "" : " ") + e;
                break;
            }
    return out;
}
void ScriptedPrint::Note(const std::string& entry) { sP.log.push_back(entry); }
HDC ScriptedPrint::Dc() const { return kDc; }
HWND ScriptedPrint::AddWindow(Window w) {
    sP.windows.push_back({reinterpret_cast<HWND>(uintptr_t(0x100 + 0x10 * sP.windows.size())), w});
    return sP.windows.back().first;
}
ScriptedPrint::Window& ScriptedPrint::WindowOf(HWND w) { return *find(w); }
