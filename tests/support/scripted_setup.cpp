#include "scripted_setup.h"

#include <algorithm>
#include <cstring>
#include <strings.h>
#include <utility>

namespace {

struct SetupState {
    OslPrinterSetupService setup;
    OslGraphicsService graphics;
    OslWindowService window;
    OslProfileService profile;
    ScriptedSetup::Script script;
    std::vector<std::string> log, rows;
    DWORD lastError;
    LRESULT selected;
    HANDLE property;
    DLGPROC proc;
    INT_PTR ended;
} sS;

const HWND kDialog = reinterpret_cast<HWND>(0xA00), kList = reinterpret_cast<HWND>(0xB00 + 900), kSetup = reinterpret_cast<HWND>(0xB04);
const HDC kIc = reinterpret_cast<HDC>(0xC00);
const HINSTANCE kMessages = reinterpret_cast<HINSTANCE>(0x4D5); // a host's module with string 77

template <class... A> void say(const char* what, A... a) {
    std::string s = what, sep = ":";
    ((s += sep + a, sep = ","), ...);
    sS.log.push_back(s);
}
std::string num(long long v) { return std::to_string(v); }
BOOL fail(DWORD error) { return sS.lastError = error, FALSE; }
// Records of `n` entries then their texts in `out`, when `size` allows; sets *needed.
template <class R, class F> BOOL pack(LPBYTE out, DWORD size, LPDWORD needed, size_t n, size_t texts, F fill) {
    *needed = DWORD(n * sizeof(R) + texts);
    if (size < *needed) return fail(ERROR_INSUFFICIENT_BUFFER);
    char* text = reinterpret_cast<char*>(out + n * sizeof(R));
    auto put = [&text](const std::string& s) { return std::strcpy(text, s.c_str()), text += s.size() + 1, text - s.size() - 1; };
    for (size_t i = 0; i < n; ++i) fill(reinterpret_cast<R*>(out)[i] = R{}, i, put);
    return TRUE;
}

void defaultMode(DEVMODEA* m, size_t size) {
    const auto& papers = sS.script.papers;
    ScriptedSetup::Paper p = papers.empty() ? ScriptedSetup::Paper{1, 2159, 2794, "Letter"} : papers[0];
    std::memset(m, 0, size);
    m->dmSize = sizeof(DEVMODEA), m->dmDriverExtra = WORD(size - sizeof(DEVMODEA)), m->dmFields = sS.script.fields;
    m->dmOrientation = 1, m->dmPaperSize = short(p.code), m->dmPaperLength = short(p.length), m->dmPaperWidth = short(p.width);
    m->dmDefaultSource = 7, m->dmCopies = 1;
    std::strncpy(reinterpret_cast<char*>(m->dmFormName), p.name.c_str(), 31);
}

BOOL WINAPI enumPrinters(DWORD, LPSTR, DWORD, LPBYTE out, DWORD size, LPDWORD needed, LPDWORD count) {
    const auto& ps = sS.script.printers;
    size_t texts = 0;
    for (const auto& p : ps) texts += p.name.size() + p.driver.size() + p.ports.size() + 3;
    *count = DWORD(ps.size());
    return pack<PRINTER_INFO_2A>(out, size, needed, ps.size(), texts, [&ps](PRINTER_INFO_2A& r, size_t i, auto put) {
        r.pPrinterName = put(ps[i].name), r.pDriverName = put(ps[i].driver), r.pPortName = put(ps[i].ports);
    });
}
int WINAPI caps(LPCSTR, LPCSTR, WORD what, LPSTR out, const DEVMODEA*) {
    const auto& papers = sS.script.papers;
    const auto& bins = sS.script.bins;
    bool paper = what == DC_PAPERS || what == DC_PAPERSIZE || what == DC_PAPERNAMES;
    size_t n = paper ? papers.size() : bins.size();
    for (size_t i = 0; out && i < n; ++i) {
        if (what == DC_PAPERS) reinterpret_cast<WORD*>(out)[i] = papers[i].code;
        if (what == DC_PAPERSIZE) reinterpret_cast<POINT*>(out)[i] = {papers[i].width, papers[i].length};
        if (what == DC_PAPERNAMES) std::strcpy(out + 64 * i, papers[i].name.c_str());
        if (what == DC_BINS) reinterpret_cast<WORD*>(out)[i] = bins[i].first;
        if (what == DC_BINNAMES) std::strcpy(out + 24 * i, bins[i].second.c_str());
    }
    return int(n);
}
auto formNamed(LPCSTR name) {
    return std::find_if(sS.script.forms.begin(), sS.script.forms.end(), [name](const auto& f) { return f.name == name; });
}
void fillForm(FORM_INFO_1A& r, const ScriptedSetup::Form& f, auto put) { r.pName = put(f.name), r.Size = {f.cx, f.cy}, r.ImageableArea = {0, 0, f.cx, f.cy}; }
BOOL WINAPI enumForms(HANDLE, DWORD, LPBYTE out, DWORD size, LPDWORD needed, LPDWORD count) {
    const auto& fs = sS.script.forms;
    size_t texts = 0;
    for (const auto& f : fs) texts += f.name.size() + 1;
    *count = DWORD(fs.size());
    return pack<FORM_INFO_1A>(out, size, needed, fs.size(), texts, [&fs](FORM_INFO_1A& r, size_t i, auto put) { fillForm(r, fs[i], put); });
}
BOOL WINAPI getForm(HANDLE, LPSTR name, DWORD, LPBYTE out, DWORD size, LPDWORD needed) {
    auto f = formNamed(name);
    if (f == sS.script.forms.end()) return fail(1902); // ERROR_INVALID_FORM_NAME
    return pack<FORM_INFO_1A>(out, size, needed, 1, f->name.size() + 1, [&f](FORM_INFO_1A& r, size_t, auto put) { fillForm(r, *f, put); });
}
BOOL WINAPI addForm(HANDLE, DWORD, LPBYTE form) {
    const FORM_INFO_1A& f = *reinterpret_cast<FORM_INFO_1A*>(form);
    say("AddFormA", f.pName, num(f.Size.cx), num(f.Size.cy));
    if (sS.script.failAddForm || formNamed(f.pName) != sS.script.forms.end()) return fail(80);
    return sS.script.forms.push_back({f.pName, f.Size.cx, f.Size.cy}), TRUE;
}
BOOL WINAPI deleteForm(HANDLE, LPSTR name) {
    say("DeleteFormA", name);
    auto f = formNamed(name);
    return f == sS.script.forms.end() ? fail(1902) : (sS.script.forms.erase(f), TRUE);
}
DWORD WINAPI lastError() { return sS.lastError; }
BOOL WINAPI endDialog(HWND, INT_PTR result) { return sS.ended = result, TRUE; }
BOOL WINAPI setProp(HWND, LPCSTR, HANDLE v) { return sS.property = v, TRUE; }
HANDLE WINAPI getProp(HWND, LPCSTR) { return sS.property; }
HANDLE WINAPI removeProp(HWND, LPCSTR) { return std::exchange(sS.property, nullptr); }
HCURSOR WINAPI cursor(HCURSOR c) { return c; }
HCURSOR WINAPI loadCursor(HINSTANCE, LPCSTR) { return nullptr; }
int WINAPI windowText(HWND, LPSTR out, int size) { return std::strncpy(out, "Printer Setup", size_t(size)), 13; }

BOOL WINAPI openPrinter(LPSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSA) {
    const auto& ps = sS.script.printers;
    auto p = std::find_if(ps.begin(), ps.end(), [name](const auto& q) { return q.name == name; });
    *printer = reinterpret_cast<HANDLE>(0x9E00 + (p - ps.begin()));
    return p != ps.end();
}
BOOL WINAPI closePrinter(HANDLE) { return say("ClosePrinter"), TRUE; }
BOOL WINAPI getPrinter(HANDLE printer, DWORD, LPBYTE out, DWORD size, LPDWORD needed) {
    const auto& p = sS.script.printers[size_t(reinterpret_cast<uintptr_t>(printer) - 0x9E00)];
    WORD mode = sS.script.levelTwoSize;
    return pack<PRINTER_INFO_2A>(out, size, needed, 1, mode + p.name.size() + p.driver.size() + p.ports.size() + 3,
                                 [&](PRINTER_INFO_2A& r, size_t, auto put) {
        r.pDevMode = reinterpret_cast<LPDEVMODEA>(put(std::string(mode - 1, 'm')));
        defaultMode(r.pDevMode, mode);
        r.pPrinterName = put(p.name), r.pDriverName = put(p.driver), r.pPortName = put(p.ports);
    });
}
LONG WINAPI documentProperties(HWND, HANDLE, LPSTR, LPDEVMODEA out, LPDEVMODEA in, DWORD mode) {
    say("DocumentPropertiesA", num(mode));
    if (!mode) return sS.script.devModeSize;
    defaultMode(out, size_t(sS.script.devModeSize));
    if (in && (mode & 8)) std::memcpy(out, in, std::min<size_t>(in->dmSize + in->dmDriverExtra, size_t(sS.script.devModeSize)));
    if (!(mode & 4)) return IDOK;
    if (sS.script.driverAnswer == IDOK) out->dmCopies = 7;
    return sS.script.driverAnswer;
}
HDC WINAPI createIC(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*) { return kIc; }
HDC WINAPI resetDC(HDC dc, const DEVMODEA* m) { return say("ResetDCA", num(m->dmPaperSize)), dc; }
int WINAPI escape(HDC, int code, int, LPCSTR in, LPVOID out) {
    const auto& s = sS.script;
    int asked = 0;
    if (code == QUERYESCSUPPORT) return std::memcpy(&asked, in, sizeof asked), std::count(s.escapes.begin(), s.escapes.end(), asked) > 0;
    *static_cast<POINT*>(out) = code == GETPHYSPAGESIZE ? s.page : s.offset;
    return 1;
}
BOOL WINAPI toLogical(HDC, LPPOINT p, int n) { return std::transform(p, p + n, p, [](POINT q) { return POINT{q.x, -q.y}; }), TRUE; }
int WINAPI clipBox(HDC, LPRECT r) { return *r = sS.script.clip, 2; }

LRESULT WINAPI listMessage(UINT m, WPARAM w, LPARAM l) {
    auto& rows = sS.rows;
    const char* text = reinterpret_cast<const char*>(l);
    if (m == 384) return rows.push_back(text), LRESULT(rows.size() - 1);
    if (m == 392) return sS.selected;
    if (m == 393) return std::strcpy(reinterpret_cast<char*>(l), rows[w].c_str()), LRESULT(rows[w].size());
    auto at = std::find_if(rows.begin(), rows.end(), [text](const auto& r) { return !strncasecmp(r.c_str(), text, std::strlen(text)); });
    return sS.selected = at == rows.end() ? -1 : at - rows.begin();
}
LRESULT WINAPI sendMessage(HWND w, UINT m, WPARAM wp, LPARAM lp) { return w == kList ? listMessage(m, wp, lp) : sS.proc(w, m, wp, lp); }
LRESULT WINAPI broadcast(HWND, UINT, WPARAM, LPARAM l, UINT flags, UINT ms, PDWORD_PTR) {
    return say("broadcast", std::string(l ? reinterpret_cast<LPCSTR>(l) : "0"), num(flags), num(ms)), 1;
}
BOOL WINAPI enable(HWND w, BOOL on) { return w == kSetup ? say("setup", num(on)) : void(), TRUE; }
HWND WINAPI dlgItem(HWND, int id) { return reinterpret_cast<HWND>(intptr_t(0xB00 + id)); }
int WINAPI messageBox(HWND, LPCSTR text, LPCSTR caption, UINT) { return say("box", std::string(text), std::string(caption)), IDOK; }
// The user acts on the dialog until it ends.
INT_PTR WINAPI dialogBox(HINSTANCE, LPCSTR, HWND, DLGPROC proc, LPARAM data) {
    if (sS.script.user == std::vector<std::string>{"none"}) return -1;
    sS.proc = proc, sS.ended = -2;
    proc(kDialog, WM_INITDIALOG, 0, data);
    for (const std::string& act : sS.script.user) {
        if (sS.ended != -2) break;
        WPARAM id = act == "ok" ? 1 : act == "cancel" ? 2 : act == "setup" ? 4 : 900 | (act[0] == 'd' ? 2 : 1) << 16;
        if (id > 4) sS.selected = act.back() - '0';
        proc(kDialog, WM_COMMAND, id, 0);
    }
    return proc(kDialog, WM_DESTROY, 0, 0), sS.ended;
}
BOOL WINAPI writeProfile(LPCSTR s, LPCSTR k, LPCSTR v) { return say("profile", std::string(s ? s : "0"), std::string(k ? k : "0"), std::string(v ? v : "0")), TRUE; }
int loadString(HINSTANCE module, UINT id, LPSTR out, int size) {
    if (module == kMessages) return std::strncpy(out, id == 77 ? "Settings changed" : "", size_t(size)), int(std::strlen(out));
    return gOslNative.profile->LoadStringA(module, id, out, size);
}

} // namespace

ScriptedSetup::ScriptedSetup(Script script) : m_saved(gOsl) {
    sS.script = std::move(script);
    sS.log.clear(), sS.rows.clear(), sS.selected = -1, sS.property = nullptr, sS.lastError = 0;
    sS.setup = {enumPrinters, caps, enumForms, getForm, addForm, deleteForm, lastError, endDialog, setProp, getProp, removeProp,
                cursor, loadCursor, windowText};
    sS.graphics = *gOsl.graphics, sS.window = *gOsl.window, sS.profile = *gOsl.profile;
    OslGraphicsService& g = sS.graphics;
    g.OpenPrinterA = openPrinter, g.ClosePrinter = closePrinter, g.GetPrinterA = getPrinter, g.DocumentPropertiesA = documentProperties;
    g.CreateICA = createIC, g.ResetDCA = resetDC, g.Escape = escape, g.DPtoLP = toLogical, g.GetClipBox = clipBox;
    g.DeleteDC = [](HDC) -> BOOL { return TRUE; }, g.SetMapMode = [](HDC, int) { return 1; };
    OslWindowService& w = sS.window;
    w.SendMessageA = sendMessage, w.SendMessageTimeoutA = broadcast, w.EnableWindow = enable, w.GetDlgItem = dlgItem;
    w.MessageBoxA = messageBox, w.DialogBoxParamA = dialogBox, w.SetFocus = [](HWND h) { return h; };
    w.GetParent = [](HWND) -> HWND { return nullptr; }, w.MoveWindow = [](HWND, int, int, int, int, BOOL) -> BOOL { return TRUE; };
    sS.profile.WriteProfileStringA = writeProfile, sS.profile.LoadStringA = loadString;
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
const std::vector<ScriptedSetup::Form>& ScriptedSetup::Forms() const { return sS.script.forms; }
