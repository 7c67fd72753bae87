#include "scripted_print.h"

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
const HWND kDialog = reinterpret_cast<HWND>(0xA00);
const HWND kDesktop = reinterpret_cast<HWND>(0xDE5);
void note(const std::string& s) { sP.log.push_back(s); }

ScriptedPrint::Window* find(HWND w) {
    for (auto& [h, rec] : sP.windows)
        if (h == w) return &rec;
    return nullptr;
}

int WINAPI messageBox(HWND, LPCSTR text, LPCSTR caption, UINT style) {
    note(std::string("box:") + text + "|" + (caption ? caption : "") + "|" + std::to_string(style));
    return IDOK;
}
LRESULT WINAPI sendMessage(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    note("send:" + std::to_string(m) + "," + std::to_string(wp) + "," + std::to_string(lp));
    return w == sP.dialog && sP.dialogProc ? sP.dialogProc(w, m, wp, lp) : 0;
}
LONG_PTR WINAPI windowLong(HWND w, int index) {
    ScriptedPrint::Window* r = find(w);
    if (!r) return 0;
    return index == GWL_STYLE ? r->style : reinterpret_cast<LONG_PTR>(r->instance);
}
HWND WINAPI getWindow(HWND w, UINT cmd) {
    if (cmd == GW_HWNDFIRST) return sP.windows.empty() ? nullptr : sP.windows.front().first;
    if (cmd == GW_OWNER) return nullptr;
    for (size_t i = 0; i + 1 < sP.windows.size(); ++i)
        if (sP.windows[i].first == w) return sP.windows[i + 1].first;
    return nullptr;
}
HWND WINAPI getParent(HWND w) {
    ScriptedPrint::Window* r = find(w);
    return r ? r->parent : nullptr;
}
HWND WINAPI findWindow(LPCSTR, LPCSTR) { return sP.windows.empty() ? nullptr : sP.windows.front().first; }
BOOL WINAPI enableWindow(HWND w, BOOL enable) {
    note(std::string(enable ? "enable:" : "disable:") + std::to_string(reinterpret_cast<uintptr_t>(w)));
    ScriptedPrint::Window* r = find(w);
    if (!r) return FALSE;
    BOOL was = (r->style & WS_DISABLED) != 0;
    r->style = enable ? r->style & ~WS_DISABLED : r->style | WS_DISABLED;
    return was;
}
BOOL WINAPI isWindow(HWND w) { return find(w) != nullptr; }
DWORD WINAPI windowThread(HWND w, LPDWORD) {
    ScriptedPrint::Window* r = find(w);
    return r ? r->thread : 0;
}
HWND WINAPI desktop() { return kDesktop; }
BOOL WINAPI windowRect(HWND w, LPRECT rect) {
    ScriptedPrint::Window* r = find(w);
    if (w == kDesktop) *rect = {0, 0, 1280, 1024};
    else if (r) *rect = r->rect;
    else *rect = {0, 0, 0, 0};
    return TRUE;
}
HDC WINAPI getDC(HWND) { return reinterpret_cast<HDC>(0xD15); }
int WINAPI releaseDC(HWND, HDC) { return 1; }
BOOL WINAPI iconic(HWND w) {
    ScriptedPrint::Window* r = find(w);
    return r && r->iconic;
}
BOOL WINAPI screenToClient(HWND w, LPPOINT p) {
    RECT r;
    windowRect(w, &r);
    p->x -= r.left;
    p->y -= r.top;
    return TRUE;
}
BOOL WINAPI moveWindow(HWND, int x, int y, int w, int h, BOOL) {
    note("move:" + std::to_string(x) + "," + std::to_string(y) + "," + std::to_string(w) + "," + std::to_string(h));
    return TRUE;
}
INT_PTR WINAPI dialogBox(HINSTANCE, LPCSTR name, HWND, DLGPROC proc, LPARAM lp) {
    note(std::string("dialogbox:") + name);
    return proc(nullptr, WM_INITDIALOG, 0, lp);
}
HWND WINAPI createDialog(HINSTANCE, LPCSTR name, HWND, DLGPROC proc, LPARAM lp) {
    note(std::string("dialog:") + name);
    if (sP.script.failDialog) return nullptr;
    sP.dialog = kDialog;
    sP.dialogProc = proc;
    proc(kDialog, WM_INITDIALOG, 0, lp);
    return kDialog;
}
BOOL WINAPI destroyWindow(HWND w) {
    note("destroy");
    if (w == sP.dialog && sP.dialogProc) sP.dialogProc(w, WM_DESTROY, 0, 0);
    if (w == sP.dialog) sP.dialog = nullptr;
    return TRUE;
}
BOOL WINAPI peek(LPMSG msg, HWND, UINT, UINT, UINT remove) {
    if (!(remove & PM_REMOVE)) return FALSE;
    if (++sP.peeks != sP.script.cancelAtPeek) return FALSE;
    note("cancel");
    *msg = {};
    msg->hwnd = sP.dialog;
    msg->message = WM_COMMAND;
    msg->wParam = IDCANCEL;
    return TRUE;
}
BOOL WINAPI isDialogMessage(HWND dialog, LPMSG msg) {
    if (msg->hwnd != dialog || !sP.dialogProc) return FALSE;
    sP.dialogProc(dialog, msg->message, msg->wParam, msg->lParam);
    return TRUE;
}
BOOL WINAPI translate(const MSG*) { return TRUE; }
LRESULT WINAPI dispatch(const MSG*) { return note("dispatch"), 0; }
BOOL WINAPI windowText(HWND, LPCSTR text) {
    note(std::string("caption:") + (text ? text : ""));
    return TRUE;
}
BOOL WINAPI itemText(HWND, int id, LPCSTR text) {
    note(std::to_string(id) + ":" + (text ? text : ""));
    return TRUE;
}
HWND WINAPI dlgItem(HWND, int id) { return reinterpret_cast<HWND>(intptr_t(0xB00 + id)); }
BOOL WINAPI update(HWND) { return TRUE; }
HWND WINAPI focus(HWND) { return nullptr; }
HMENU WINAPI systemMenu(HWND, BOOL) { return reinterpret_cast<HMENU>(0x5E0); }
BOOL WINAPI menuItem(HMENU menu, UINT id, UINT flags) {
    note("menu:" + std::to_string(reinterpret_cast<uintptr_t>(menu)) + "," + std::to_string(id) + "," + std::to_string(flags));
    return TRUE;
}

HDC WINAPI createDC(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*) {
    note("CreateDCA");
    return sP.script.failCreateDC ? nullptr : kDc;
}
HDC WINAPI createIC(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*) { return kDc; }
BOOL WINAPI deleteDC(HDC) { return note("DeleteDC"), TRUE; }
int WINAPI saveDC(HDC) { return note("SaveDC"), sP.script.saveLevel; }
BOOL WINAPI restoreDC(HDC, int level) { return note("RestoreDC:" + std::to_string(level)), TRUE; }
HDC WINAPI resetDC(HDC dc, const DEVMODEA* m) { return note("ResetDCA:" + std::to_string(m->dmDefaultSource)), dc; }
int WINAPI startDoc(HDC, const DOCINFOA* d) {
    note(std::string("StartDocA:") + (d->lpszDocName ? d->lpszDocName : ""));
    return sP.script.startDoc;
}
int WINAPI startPage(HDC) {
    note("StartPage");
    return sP.script.startPage;
}
int WINAPI endPage(HDC dc) {
    note("EndPage");
    int n = ++sP.endPages;
    auto code = sP.script.abortAtEndPage.find(n);
    if (code != sP.script.abortAtEndPage.end() && sP.abortProc) sP.abortProc(dc, code->second);
    return size_t(n) <= sP.script.endPage.size() ? sP.script.endPage[size_t(n) - 1] : 1;
}
int WINAPI endDoc(HDC) { return note("EndDoc"), 1; }
int WINAPI abortProc(HDC, ABORTPROC proc) {
    note("SetAbortProc");
    sP.abortProc = proc;
    return 1;
}
int WINAPI escape(HDC, int code, int, LPCSTR in, LPVOID out) {
    if (code == 8) {
        int asked;
        std::memcpy(&asked, in, sizeof asked);
        for (int e : sP.script.escapes)
            if (e == asked) return 1;
        return 0;
    }
    if (code == 12) *static_cast<POINT*>(out) = {sP.script.paperWidth, sP.script.paperHeight};
    if (code == 7 || code == 17) {
        LONG v;
        std::memcpy(&v, in, sizeof v);
        note((code == 7 ? "draft:" : "copies:") + std::to_string(v));
    }
    return 1;
}
int WINAPI caps(HDC, int index) {
    switch (index) {
    case LOGPIXELSX: case LOGPIXELSY: return 96;
    case HORZRES: return 1280;
    case VERTRES: return 1024;
    case PHYSICALWIDTH: return sP.script.paperWidth;
    case PHYSICALHEIGHT: return sP.script.paperHeight;
    case PHYSICALOFFSETX: return sP.script.offsetX;
    case PHYSICALOFFSETY: return sP.script.offsetY;
    default: return 0;
    }
}
int WINAPI mapMode(HDC, int) { return 1; }
int WINAPI clipBox(HDC, LPRECT r) { return *r = sP.script.clip, 2; }
// MM_HIENGLISH at 100 pixels an inch, origins left at 0 for the measures.
BOOL WINAPI toLogical(HDC, LPPOINT p, int n) {
    for (int i = 0; i < n; ++i) p[i] = {p[i].x * 10, -p[i].y * 10};
    return TRUE;
}
BOOL WINAPI toDevice(HDC, LPPOINT p, int n) {
    for (int i = 0; i < n; ++i) p[i] = {p[i].x / 10, -p[i].y / 10};
    return TRUE;
}
BOOL WINAPI windowOrg(HDC, int x, int y, LPPOINT) { return note("worg:" + std::to_string(x) + "," + std::to_string(y)), TRUE; }
BOOL WINAPI viewportOrg(HDC, int x, int y, LPPOINT) { return note("vorg:" + std::to_string(x) + "," + std::to_string(y)), TRUE; }
BOOL WINAPI extent(HDC, int, int, LPSIZE) { return TRUE; }
int WINAPI bkMode(HDC, int) { return 1; }
BOOL WINAPI rectangle(HDC, int l, int t, int r, int b) {
    note("frame:" + std::to_string(l) + "," + std::to_string(t) + "," + std::to_string(r) + "," + std::to_string(b));
    return TRUE;
}

} // namespace

ScriptedPrint::ScriptedPrint(Script script) : m_window(gOsl.window), m_graphics(gOsl.graphics) {
    sP.window = *m_window;
    sP.graphics = *m_graphics;
    sP.script = std::move(script);
    sP.log.clear();
    sP.windows.clear();
    sP.endPages = sP.peeks = 0;
    sP.abortProc = nullptr;
    sP.dialogProc = nullptr;
    sP.dialog = nullptr;
    OslWindowService& w = sP.window;
    w.MessageBoxA = messageBox; w.SendMessageA = sendMessage; w.GetWindowLongPtrA = windowLong;
    w.GetWindow = getWindow; w.GetParent = getParent; w.FindWindowA = findWindow; w.EnableWindow = enableWindow;
    w.IsWindow = isWindow; w.GetWindowThreadProcessId = windowThread; w.GetDesktopWindow = desktop;
    w.GetWindowRect = windowRect; w.GetDC = getDC; w.ReleaseDC = releaseDC; w.IsIconic = iconic;
    w.ScreenToClient = screenToClient; w.MoveWindow = moveWindow; w.DialogBoxParamA = dialogBox;
    w.CreateDialogParamA = createDialog; w.DestroyWindow = destroyWindow; w.PeekMessageA = peek;
    w.IsDialogMessageA = isDialogMessage; w.TranslateMessage = translate; w.DispatchMessageA = dispatch;
    w.SetWindowTextA = windowText; w.SetDlgItemTextA = itemText; w.GetDlgItem = dlgItem; w.UpdateWindow = update;
    w.SetFocus = focus; w.GetSystemMenu = systemMenu; w.EnableMenuItem = menuItem;
    OslGraphicsService& g = sP.graphics;
    g.CreateDCA = createDC; g.CreateICA = createIC; g.DeleteDC = deleteDC; g.SaveDC = saveDC; g.RestoreDC = restoreDC;
    g.ResetDCA = resetDC; g.StartDocA = startDoc; g.StartPage = startPage; g.EndPage = endPage; g.EndDoc = endDoc;
    g.SetAbortProc = abortProc; g.Escape = escape; g.GetDeviceCaps = caps; g.SetMapMode = mapMode;
    g.GetClipBox = clipBox; g.DPtoLP = toLogical; g.LPtoDP = toDevice; g.SetWindowOrgEx = windowOrg;
    g.SetViewportOrgEx = viewportOrg; g.SetWindowExtEx = extent; g.SetViewportExtEx = extent; g.SetBkMode = bkMode;
    g.Rectangle = rectangle;
    gOsl.window = &sP.window;
    gOsl.graphics = &sP.graphics;
}
ScriptedPrint::~ScriptedPrint() {
    gOsl.window = m_window;
    gOsl.graphics = m_graphics;
}
const std::vector<std::string>& ScriptedPrint::Log() const { return sP.log; }
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
void ScriptedPrint::Note(const std::string& entry) { note(entry); }
HDC ScriptedPrint::Dc() const { return kDc; }
HWND ScriptedPrint::Dialog() const { return kDialog; }
HWND ScriptedPrint::AddWindow(Window w) {
    HWND h = reinterpret_cast<HWND>(uintptr_t(0x100 + 0x10 * sP.windows.size()));
    sP.windows.push_back({h, w});
    return h;
}
ScriptedPrint::Window& ScriptedPrint::WindowOf(HWND w) { return *find(w); }
