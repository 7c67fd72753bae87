#include "scripted_setup.h"

#include <algorithm>
#include <cstring>
#include <strings.h>
#include <utility>

namespace {

// The seam's entries are WINAPI, a calling convention of its own on i686 that
// a lambda can't have: api(lambda) converts to an entry of the type asked
// for, which calls the lambda.
template <class R, class... A> using Entry = R(WINAPI*)(A...);
template <class L> struct Api {
    template <class R, class... A> static R WINAPI call(A... a) { return L{}(a...); }
    template <class R, class... A> operator Entry<R, A...>() const { return call<R, A...>; }
};
template <class L> Api<L> api(L) { return {}; }

using Setup = ScriptedSetup;
struct SetupState {
    OslPrinterSetupService setup; OslGraphicsService graphics; OslWindowService window; OslProfileService profile;
    Setup::Script script;
    std::vector<std::string> log, rows;
    DWORD lastError;
    LRESULT selected;
    HANDLE property;
    DLGPROC proc;
    INT_PTR ended;
} sS;

const HWND kDialog = reinterpret_cast<HWND>(0xA00), kList = reinterpret_cast<HWND>(0xB00 + 900), kSetup = reinterpret_cast<HWND>(0xB04);

std::string text(LPCSTR s) { return s ? s : "0"; }
template <class... A> void say(const char* what, A... a) {
    std::string s = what, sep = ":";
    ((s += sep + a, sep = ","), ...);
    sS.log.push_back(s);
}
BOOL fail(DWORD error) { return sS.lastError = error, FALSE; }
// `n` records, then their texts, into `out` when `size` allows (*needed either way).
template <class R, class F> BOOL pack(LPBYTE out, DWORD size, LPDWORD needed, size_t n, size_t texts, F fill) {
    if (size < (*needed = DWORD(n * sizeof(R) + texts))) return fail(ERROR_INSUFFICIENT_BUFFER);
    char* at = reinterpret_cast<char*>(out + n * sizeof(R));
    auto put = [&at](const std::string& s) { return std::strcpy(at, s.c_str()), at += s.size() + 1, at - s.size() - 1; };
    for (size_t i = 0; i < n; ++i) fill(reinterpret_cast<R*>(out)[i] = R{}, i, put);
    return TRUE;
}
void defaultMode(DEVMODEA* m, size_t size) {
    Setup::Paper p = sS.script.papers.empty() ? Setup::Paper{1, 2159, 2794, "Letter"} : sS.script.papers[0];
    *m = {}, std::memset(m, 0, size);
    m->dmSize = sizeof(DEVMODEA), m->dmDriverExtra = WORD(size - sizeof(DEVMODEA)), m->dmFields = sS.script.fields, m->dmOrientation = 1;
    m->dmPaperSize = short(p.code), m->dmPaperLength = short(p.length), m->dmPaperWidth = short(p.width), m->dmDefaultSource = 7, m->dmCopies = 1;
    std::strncpy(reinterpret_cast<char*>(m->dmFormName), p.name.c_str(), 31);
}
BOOL WINAPI enumPrinters(DWORD, LPSTR, DWORD, LPBYTE out, DWORD size, LPDWORD needed, LPDWORD count) {
    const auto& ps = sS.script.printers;
    size_t texts = 0;
    for (const auto& p : ps) texts += p.name.size() + p.driver.size() + p.ports.size() + 3;
    return pack<PRINTER_INFO_2A>(out, size, needed, *count = DWORD(ps.size()), texts, [&](PRINTER_INFO_2A& r, size_t i, auto put) {
        r.pPrinterName = put(ps[i].name), r.pDriverName = put(ps[i].driver), r.pPortName = put(ps[i].ports);
    });
}
int WINAPI caps(LPCSTR, LPCSTR, WORD what, LPSTR out, const DEVMODEA*) {
    const auto& papers = sS.script.papers;
    const auto& bins = sS.script.bins;
    size_t n = what == DC_BINS || what == DC_BINNAMES ? bins.size() : papers.size();
    for (size_t i = 0; out && i < n; ++i) {
        if (what == DC_PAPERS) reinterpret_cast<WORD*>(out)[i] = papers[i].code;
        if (what == DC_PAPERSIZE) reinterpret_cast<POINT*>(out)[i] = {papers[i].width, papers[i].length};
        if (what == DC_PAPERNAMES || what == DC_BINNAMES) std::strcpy(out + (what == DC_BINNAMES ? 24 : 64) * i, (what == DC_BINNAMES ? bins[i].second : papers[i].name).c_str());
        if (what == DC_BINS) reinterpret_cast<WORD*>(out)[i] = bins[i].first;
    }
    return int(n);
}
auto formNamed(LPCSTR name) { return std::find_if(sS.script.forms.begin(), sS.script.forms.end(), [name](const auto& f) { return f.name == name; }); }
// The printer's forms, or the one named `name`.
BOOL forms(LPCSTR name, LPBYTE out, DWORD size, LPDWORD needed, DWORD* count) {
    std::vector<Setup::Form> fs = sS.script.forms;
    if (name) fs.assign(formNamed(name), formNamed(name) == sS.script.forms.end() ? sS.script.forms.end() : formNamed(name) + 1);
    if (name && fs.empty()) return fail(1902); // ERROR_INVALID_FORM_NAME
    size_t texts = 0;
    for (const auto& f : fs) texts += f.name.size() + 1;
    return pack<FORM_INFO_1A>(out, size, needed, *count = DWORD(fs.size()), texts, [&fs](FORM_INFO_1A& r, size_t i, auto put) {
        r.pName = put(fs[i].name), r.Size = {fs[i].cx, fs[i].cy}, r.ImageableArea = {0, 0, fs[i].cx, fs[i].cy};
    });
}
BOOL WINAPI enumForms(HANDLE, DWORD level, LPBYTE out, DWORD size, LPDWORD needed, LPDWORD count) {
    return level == 1 ? forms(nullptr, out, size, needed, count) : fail(124); // ERROR_INVALID_LEVEL
}
BOOL WINAPI getForm(HANDLE, LPSTR name, DWORD level, LPBYTE out, DWORD size, LPDWORD needed) {
    DWORD n;
    return level == 1 ? forms(name, out, size, needed, &n) : fail(124);
}
BOOL WINAPI addForm(HANDLE, DWORD, LPBYTE form) {
    const FORM_INFO_1A& f = *reinterpret_cast<FORM_INFO_1A*>(form);
    say("AddFormA", text(f.pName), std::to_string(f.Size.cx), std::to_string(f.Size.cy));
    if (sS.script.failAddForm || formNamed(f.pName) != sS.script.forms.end()) return fail(80);
    return sS.script.forms.push_back({f.pName, f.Size.cx, f.Size.cy}), TRUE;
}
BOOL WINAPI deleteForm(HANDLE, LPSTR name) {
    auto f = (say("DeleteFormA", text(name)), formNamed(name));
    return f == sS.script.forms.end() ? fail(1902) : (sS.script.forms.erase(f), TRUE);
}
BOOL WINAPI openPrinter(LPSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSA) {
    const auto& ps = sS.script.printers;
    auto p = std::find_if(ps.begin(), ps.end(), [name](const auto& q) { return q.name == name; });
    return *printer = reinterpret_cast<HANDLE>(0x9E00 + (p - ps.begin())), p != ps.end();
}
BOOL WINAPI getPrinter(HANDLE printer, DWORD, LPBYTE out, DWORD size, LPDWORD needed) {
    const auto& p = sS.script.printers[size_t(reinterpret_cast<uintptr_t>(printer) - 0x9E00)];
    WORD mode = sS.script.levelTwoSize;
    return pack<PRINTER_INFO_2A>(out, size, needed, 1, mode + p.name.size() + p.driver.size() + p.ports.size() + 3, [&](PRINTER_INFO_2A& r, size_t, auto put) {
        defaultMode(r.pDevMode = reinterpret_cast<LPDEVMODEA>(put(std::string(mode - 1, 'm'))), mode);
        r.pPrinterName = put(p.name), r.pDriverName = put(p.driver), r.pPortName = put(p.ports);
    });
}
// Mode 0: the size; otherwise the default, the input over it (DM_IN_BUFFER),
// and the driver's dialog (DM_IN_PROMPT), which sets 7 copies on OK.
LONG WINAPI documentProperties(HWND, HANDLE, LPSTR, LPDEVMODEA out, LPDEVMODEA in, DWORD mode) {
    if (say("DocumentPropertiesA", std::to_string(mode)), !mode) return sS.script.devModeSize;
    defaultMode(out, size_t(sS.script.devModeSize));
    if (in && (mode & 8)) std::memcpy(out, in, std::min<size_t>(in->dmSize + in->dmDriverExtra, size_t(sS.script.devModeSize)));
    if (mode & 4 && sS.script.driverAnswer == IDOK) out->dmCopies = 7;
    return mode & 4 ? sS.script.driverAnswer : IDOK;
}
int WINAPI escape(HDC, int code, int, LPCSTR in, LPVOID out) {
    const auto& s = sS.script;
    if (code == QUERYESCSUPPORT) return std::count(s.escapes.begin(), s.escapes.end(), *reinterpret_cast<const int*>(in)) > 0;
    return *static_cast<POINT*>(out) = code == GETPHYSPAGESIZE ? s.page : s.offset, 1;
}
LRESULT WINAPI listMessage(UINT m, WPARAM w, LPARAM l) {
    auto& rows = sS.rows;
    const char* s = reinterpret_cast<const char*>(l);
    if (m == 384) return rows.push_back(s), LRESULT(rows.size() - 1);
    if (m == 392) return sS.selected;
    if (m == 393) return std::strcpy(reinterpret_cast<char*>(l), rows[w].c_str()), LRESULT(rows[w].size());
    if (m != 396 || w != WPARAM(-1)) return -1; // LB_SELECTSTRING from the start
    auto at = std::find_if(rows.begin(), rows.end(), [s](const auto& r) { return !strncasecmp(r.c_str(), s, std::strlen(s)); });
    return sS.selected = at == rows.end() ? -1 : at - rows.begin();
}
// The user acts on the dialog until it ends.
INT_PTR WINAPI dialogBox(HINSTANCE, LPCSTR, HWND, DLGPROC proc, LPARAM data) {
    if (sS.script.user == std::vector<std::string>{"none"}) return -1;
    (sS.proc = proc, sS.ended = -2), proc(kDialog, WM_INITDIALOG, 0, data);
    for (size_t i = 0; i < sS.script.user.size() && sS.ended == -2; ++i) {
        const std::string& act = sS.script.user[i];
        WPARAM id = act == "ok" ? 1 : act == "cancel" ? 2 : act == "setup" ? 4 : 900 | (act[0] == 'd' ? 2 : 1) << 16;
        if (id > 4) sS.selected = act.back() - '0';
        proc(kDialog, WM_COMMAND, id, 0);
    }
    return proc(kDialog, WM_DESTROY, 0, 0), sS.ended;
}
int loadString(HINSTANCE module, UINT id, LPSTR out, int size) {
    if (module != reinterpret_cast<HINSTANCE>(0x4D5)) return gOslNative.profile->LoadStringA(module, id, out, size);
    return std::strncpy(out, id == 77 ? "Settings changed" : "", size_t(size)), int(std::strlen(out)); // a host's string 77
}

} // namespace

ScriptedSetup::ScriptedSetup(Script script) : m_saved(gOsl) {
    sS.script = std::move(script);
    sS.log.clear(), sS.rows.clear(), sS.selected = -1, sS.property = nullptr, sS.lastError = 0;
    sS.setup = {enumPrinters, caps, enumForms, getForm, addForm, deleteForm, api([] { return sS.lastError; }),
                api([](HWND, INT_PTR r) -> BOOL { return sS.ended = r, TRUE; }), api([](HWND, LPCSTR, HANDLE v) -> BOOL { return sS.property = v, TRUE; }),
                api([](HWND, LPCSTR) { return sS.property; }), api([](HWND, LPCSTR) { return std::exchange(sS.property, nullptr); }),
                api([](HCURSOR c) { return c; }), api([](HINSTANCE, LPCSTR) -> HCURSOR { return nullptr; }),
                api([](HWND, LPSTR out, int n) { return std::strncpy(out, "Printer Setup", size_t(n)), 13; })};
    OslGraphicsService& g = sS.graphics = *gOsl.graphics;
    g.OpenPrinterA = openPrinter, g.GetPrinterA = getPrinter, g.DocumentPropertiesA = documentProperties, g.Escape = escape;
    g.ClosePrinter = api([](HANDLE) -> BOOL { return TRUE; }), g.DeleteDC = api([](HDC) -> BOOL { return TRUE; }), g.SetMapMode = api([](HDC, int) { return 1; });
    g.CreateICA = api([](LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*) { return reinterpret_cast<HDC>(0xC00); });
    g.ResetDCA = api([](HDC dc, const DEVMODEA* m) { return say("ResetDCA", std::to_string(m->dmPaperSize)), dc; });
    g.DPtoLP = api([](HDC, LPPOINT p, int n) -> BOOL { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x, -q.y}; }), TRUE; });
    g.GetClipBox = api([](HDC, LPRECT r) { return *r = sS.script.clip, 2; });
    OslWindowService& w = sS.window = *gOsl.window;
    w.SendMessageA = api([](HWND h, UINT m, WPARAM wp, LPARAM lp) { return h == kList ? listMessage(m, wp, lp) : sS.proc(h, m, wp, lp); });
    w.SendMessageTimeoutA = api([](HWND, UINT, WPARAM, LPARAM l, UINT f, UINT ms, PDWORD_PTR) -> LRESULT {
        return say("broadcast", text(reinterpret_cast<LPCSTR>(l)), std::to_string(f), std::to_string(ms)), 1;
    });
    w.EnableWindow = api([](HWND h, BOOL on) -> BOOL { return h == kSetup ? say("setup", std::to_string(on)) : void(), TRUE; });
    w.GetDlgItem = api([](HWND, int id) { return reinterpret_cast<HWND>(intptr_t(0xB00 + id)); });
    w.MessageBoxA = api([](HWND, LPCSTR t, LPCSTR caption, UINT) { return say("box", text(t), text(caption)), IDOK; });
    w.DialogBoxParamA = dialogBox, w.SetFocus = api([](HWND h) { return h; }), w.GetParent = api([](HWND) -> HWND { return nullptr; });
    w.MoveWindow = api([](HWND, int, int, int, int, BOOL) -> BOOL { return TRUE; });
    sS.profile = *gOsl.profile, sS.profile.LoadStringA = loadString;
    sS.profile.WriteProfileStringA = [](LPCSTR s, LPCSTR k, LPCSTR v) -> BOOL { return say("profile", text(s), text(k), text(v)), TRUE; };
    gOsl.printerSetup = &sS.setup, gOsl.graphics = &g, gOsl.window = &w, gOsl.profile = &sS.profile;
}
ScriptedSetup::~ScriptedSetup() { gOsl = m_saved; }
std::string ScriptedSetup::Calls(std::initializer_list<const char*> prefixes) const {
    std::string out;
    for (const std::string& e : sS.log)
        if (std::any_of(prefixes.begin(), prefixes.end(), [&e](const char* p) { return e.rfind(p, 0) == 0; })) out += (out.empty() ? "" : " ") + e;
    return out;
}
std::string ScriptedSetup::Rows() const {
    std::string out;
    for (const std::string& r : sS.rows) out += (out.empty() ? "" : "|") + r;
    return out;
}
