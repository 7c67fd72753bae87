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
    const OslGraphicsService* print; // the print backend's, under ours
    Setup::Script script;
    ScriptedPrint* log;
    std::vector<std::string> rows;
    DWORD lastError;
    LRESULT selected;
    HANDLE property;
    DLGPROC proc;
    INT_PTR ended;
} sS;

const HWND kDialog = reinterpret_cast<HWND>(0xA00);

std::string text(LPCSTR s) { return s ? s : "0"; }
template <class... A> void say(const char* what, A... a) {
    std::string s = what, sep = ":";
    ((s += sep + a, sep = ","), ...);
    sS.log->Note(s);
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
// The driver's default: the first paper, portrait, the first bin, one copy.
void defaultMode(DEVMODEA* m) {
    const Setup::Paper& p = sS.script.papers[0];
    *m = {};
    m->dmSize = sizeof(DEVMODEA), m->dmFields = 0x1020F, m->dmOrientation = 1, m->dmDefaultSource = 7, m->dmCopies = 1;
    m->dmPaperSize = short(p.code), m->dmPaperLength = short(p.length), m->dmPaperWidth = short(p.width);
    std::strncpy(reinterpret_cast<char*>(m->dmFormName), p.name.c_str(), 31);
}
size_t textsOf(const Setup::Printer& p) { return p.name.size() + p.driver.size() + p.ports.size() + 3; }
BOOL WINAPI enumPrinters(DWORD, LPSTR, DWORD, LPBYTE out, DWORD size, LPDWORD needed, LPDWORD count) {
    const auto& ps = sS.script.printers;
    size_t texts = 0;
    for (const auto& p : ps) texts += textsOf(p);
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
// The printer's forms, or the one named `name`; level 1 only.
BOOL forms(DWORD level, LPCSTR name, LPBYTE out, DWORD size, LPDWORD needed, DWORD* count) {
    std::vector<Setup::Form> fs;
    for (const Setup::Form& f : sS.script.forms)
        if (!name || f.name == name) fs.push_back(f);
    if (level != 1) return fail(124); // ERROR_INVALID_LEVEL
    if (name && fs.empty()) return fail(1902); // ERROR_INVALID_FORM_NAME
    size_t texts = 0;
    for (const auto& f : fs) texts += f.name.size() + 1;
    return pack<FORM_INFO_1A>(out, size, needed, *count = DWORD(fs.size()), texts, [&fs](FORM_INFO_1A& r, size_t i, auto put) {
        r.pName = put(fs[i].name), r.Size = {fs[i].cx, fs[i].cy}, r.ImageableArea = {0, 0, fs[i].cx, fs[i].cy};
    });
}
BOOL WINAPI addForm(HANDLE, DWORD, LPBYTE form) {
    const FORM_INFO_1A& f = *reinterpret_cast<FORM_INFO_1A*>(form);
    say("AddFormA", text(f.pName), std::to_string(f.Size.cx), std::to_string(f.Size.cy));
    return sS.script.failAddForm ? fail(80) : (sS.script.forms.push_back({f.pName, f.Size.cx, f.Size.cy}), TRUE);
}
// A printer's handle is its place in the script.
BOOL WINAPI openPrinter(LPSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSA) {
    const auto& ps = sS.script.printers;
    auto p = std::find_if(ps.begin(), ps.end(), [name](const auto& q) { return q.name == name; });
    *printer = reinterpret_cast<HANDLE>(0x9E00 + (p - ps.begin()));
    return p != ps.end() && (say("open"), TRUE); // an opened printer is logged "open"
}
// Level 2, with the default device mode.
BOOL WINAPI getPrinter(HANDLE printer, DWORD, LPBYTE out, DWORD size, LPDWORD needed) {
    const auto& p = sS.script.printers[size_t(reinterpret_cast<uintptr_t>(printer) - 0x9E00)];
    return pack<PRINTER_INFO_2A>(out, size, needed, 1, sizeof(DEVMODEA) + textsOf(p), [&](PRINTER_INFO_2A& r, size_t, auto put) {
        defaultMode(r.pDevMode = reinterpret_cast<LPDEVMODEA>(put(std::string(sizeof(DEVMODEA) - 1, 'm'))));
        r.pPrinterName = put(p.name), r.pDriverName = put(p.driver), r.pPortName = put(p.ports);
    });
}
// Logged "DocumentPropertiesA:MODE", answered by the print backend; a device
// mode out is the default, the input over it (DM_IN_BUFFER), and 7 copies
// when the driver's dialog (DM_IN_PROMPT) is confirmed.
LONG WINAPI documentProperties(HWND w, HANDLE printer, LPSTR name, LPDEVMODEA out, LPDEVMODEA in, DWORD mode) {
    say("DocumentPropertiesA", std::to_string(mode));
    LONG answer = sS.print->DocumentPropertiesA(w, printer, name, out, in, mode);
    if (!mode) return answer;
    defaultMode(out);
    if (in && (mode & 8)) *out = *in;
    if ((mode & 4) && answer == IDOK) out->dmCopies = 7;
    return answer;
}
// The print backend's device, with a printing offset of (5, 4).
int WINAPI escape(HDC dc, int code, int n, LPCSTR in, LPVOID out) {
    if (code == GETPRINTINGOFFSET) *static_cast<POINT*>(out) = {5, 4};
    return sS.print->Escape(dc, code, n, in, out);
}
// The list box takes its messages whatever the control; WM_COMMAND goes to the dialog.
LRESULT WINAPI sendMessage(HWND h, UINT m, WPARAM w, LPARAM l) {
    auto& rows = sS.rows;
    const char* s = reinterpret_cast<const char*>(l);
    if (m == WM_COMMAND) return sS.proc(h, m, w, l);
    if (m == 384) return say("row", std::string(s)), rows.push_back(s), LRESULT(rows.size() - 1);
    if (m == 392) return sS.selected;
    if (m == 393) return std::strcpy(reinterpret_cast<char*>(l), rows[w].c_str()), LRESULT(rows[w].size());
    if (m != 396 || w != WPARAM(-1)) return -1; // LB_SELECTSTRING from the start
    auto at = std::find_if(rows.begin(), rows.end(), [s](const auto& r) { return !strncasecmp(r.c_str(), s, std::strlen(s)); });
    sS.selected = at == rows.end() ? -1 : at - rows.begin();
    return say("selected", std::to_string(sS.selected)), sS.selected;
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

ScriptedSetup::ScriptedSetup(Script script) : m_saved(gOsl), print(script.replies) {
    sS.script = std::move(script);
    sS.log = &print, sS.print = gOsl.graphics, sS.rows.clear(), sS.selected = -1, sS.property = nullptr, sS.lastError = 0;
    // The cursor's entries are the backend's.
    sS.setup = {enumPrinters, caps, api([](HANDLE, DWORD l, LPBYTE o, DWORD s, LPDWORD n, LPDWORD c) { return forms(l, nullptr, o, s, n, c); }),
                api([](HANDLE, LPSTR name, DWORD l, LPBYTE o, DWORD s, LPDWORD n) { DWORD c; return forms(l, name, o, s, n, &c); }), addForm,
                api([](HANDLE, LPSTR name) { return say("DeleteFormA", text(name)), fail(1902); }), api([] { return sS.lastError; }),
                api([](HWND, INT_PTR r) -> BOOL { return sS.ended = r, TRUE; }), api([](HWND, LPCSTR, HANDLE v) -> BOOL { return sS.property = v, TRUE; }),
                api([](HWND, LPCSTR) { return sS.property; }), api([](HWND, LPCSTR) { return std::exchange(sS.property, nullptr); }),
                gOslNative.printerSetup->SetCursor, gOslNative.printerSetup->LoadCursorA,
                api([](HWND, LPSTR out, int n) { return std::strncpy(out, "Printer Setup", size_t(n)), 13; })};
    sS.graphics = *gOsl.graphics;
    sS.graphics.OpenPrinterA = openPrinter, sS.graphics.GetPrinterA = getPrinter, sS.graphics.DocumentPropertiesA = documentProperties;
    sS.graphics.Escape = escape;
    sS.window = *gOsl.window;
    sS.window.SendMessageA = sendMessage, sS.window.DialogBoxParamA = dialogBox;
    sS.window.SendMessageTimeoutA = api([](HWND, UINT, WPARAM w, LPARAM l, UINT f, UINT ms, PDWORD_PTR) -> LRESULT {
        return say("broadcast", std::to_string(w), text(reinterpret_cast<LPCSTR>(l)), std::to_string(f), std::to_string(ms)), 1;
    });
    sS.profile = *gOsl.profile, sS.profile.LoadStringA = loadString;
    sS.profile.WriteProfileStringA = [](LPCSTR s, LPCSTR k, LPCSTR v) -> BOOL { return say("profile", text(s), text(k), text(v)), TRUE; };
    gOsl.printerSetup = &sS.setup, gOsl.graphics = &sS.graphics, gOsl.window = &sS.window, gOsl.profile = &sS.profile;
}
ScriptedSetup::~ScriptedSetup() { gOsl = m_saved; }
