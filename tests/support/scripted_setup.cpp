#include "scripted_setup.h"

#include <cstring>
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
    OslPrinterSetupService setup;
    OslGraphicsService graphics;
    const OslGraphicsService* print; // the print backend's, under ours
    Setup::Script script;
    ScriptedPrint* log;
    DWORD lastError;
} sS;

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
// The paper lists; no bins.
int WINAPI caps(LPCSTR, LPCSTR, WORD what, LPSTR out, const DEVMODEA*) {
    const auto& papers = sS.script.papers;
    for (size_t i = 0; out && i < papers.size(); ++i) {
        if (what == DC_PAPERS) reinterpret_cast<WORD*>(out)[i] = papers[i].code;
        if (what == DC_PAPERSIZE) reinterpret_cast<POINT*>(out)[i] = {papers[i].width, papers[i].length};
        if (what == DC_PAPERNAMES) std::strcpy(out + 64 * i, papers[i].name.c_str());
    }
    return int(papers.size());
}
// The printer's forms (level 1), or the one named `name`.
BOOL forms(LPCSTR name, LPBYTE out, DWORD size, LPDWORD needed, DWORD* count) {
    std::vector<Setup::Form> fs;
    for (const Setup::Form& f : sS.script.forms)
        if (!name || f.name == name) fs.push_back(f);
    if (name && fs.empty()) return fail(1902); // ERROR_INVALID_FORM_NAME
    size_t texts = 0;
    for (const auto& f : fs) texts += f.name.size() + 1;
    return pack<FORM_INFO_1A>(out, size, needed, *count = DWORD(fs.size()), texts, [&fs](FORM_INFO_1A& r, size_t i, auto put) {
        r.pName = put(fs[i].name), r.Size = {fs[i].cx, fs[i].cy}, r.ImageableArea = {0, 0, fs[i].cx, fs[i].cy};
    });
}
BOOL WINAPI addForm(HANDLE, DWORD, LPBYTE form) {
    const FORM_INFO_1A& f = *reinterpret_cast<FORM_INFO_1A*>(form);
    say("AddFormA", text(f.pName), std::to_string(f.Size.cx), std::to_string(f.Size.cy), std::to_string(f.ImageableArea.left) + ":" +
        std::to_string(f.ImageableArea.top) + ":" + std::to_string(f.ImageableArea.right) + ":" + std::to_string(f.ImageableArea.bottom));
    return sS.script.failAddForm ? fail(80) : (sS.script.forms.push_back({f.pName, f.Size.cx, f.Size.cy}), TRUE);
}
// Logged "DocumentPropertiesA:MODE", answered by the print backend; a device
// mode out is the default, with the input over it (DM_IN_BUFFER).
LONG WINAPI documentProperties(HWND w, HANDLE printer, LPSTR name, LPDEVMODEA out, LPDEVMODEA in, DWORD mode) {
    say("DocumentPropertiesA", std::to_string(mode));
    LONG answer = sS.print->DocumentPropertiesA(w, printer, name, out, in, mode);
    if (!mode) return answer;
    defaultMode(out);
    if (in && (mode & 8)) *out = *in;
    return answer;
}
// The print backend's level 2 record, its device mode (when "dmSize" gives
// it one) the driver's default.
BOOL WINAPI getPrinter(HANDLE printer, DWORD level, LPBYTE out, DWORD size, LPDWORD needed) {
    BOOL got = sS.print->GetPrinterA(printer, level, out, size, needed);
    if (LPDEVMODEA m = got ? reinterpret_cast<PRINTER_INFO_2A*>(out)->pDevMode : nullptr) defaultMode(m);
    return got;
}

} // namespace

ScriptedSetup::ScriptedSetup(Script script) : m_saved(gOsl), print(script.replies) {
    sS.script = std::move(script);
    sS.log = &print, sS.print = gOsl.graphics, sS.lastError = 0;
    // The dialog's entries are the backend's: the setup dialog is tested on a real spooler only.
    sS.setup = *gOslNative.printerSetup;
    sS.setup.DeviceCapabilitiesA = caps, sS.setup.AddFormA = addForm, sS.setup.GetLastError = api([] { return sS.lastError; });
    sS.setup.EnumFormsA = api([](HANDLE, DWORD, LPBYTE o, DWORD s, LPDWORD n, LPDWORD c) { return forms(nullptr, o, s, n, c); });
    sS.setup.GetFormA = api([](HANDLE, LPSTR name, DWORD, LPBYTE o, DWORD s, LPDWORD n) { DWORD c; return forms(name, o, s, n, &c); });
    sS.setup.DeleteFormA = api([](HANDLE, LPSTR name) { return say("DeleteFormA", text(name)), fail(1902); });
    sS.graphics = *gOsl.graphics;
    sS.graphics.DocumentPropertiesA = documentProperties, sS.graphics.GetPrinterA = getPrinter;
    gOsl.printerSetup = &sS.setup, gOsl.graphics = &sS.graphics;
}
ScriptedSetup::~ScriptedSetup() { gOsl = m_saved; }
