#include "tests/support/edit_host.h"

#include "format/maskint.h"

#include <cstring>
#include <vector>

namespace {

EditHost* gHost;
const char* gMask;
DWORD gFlags;
WNDPROC gControl;
OslEditService gScripted;

BOOL WINAPI countBeep(UINT) { return ++gHost->beeps, 1; }
SHORT WINAPI keyState(int key) { return key == OSL_VK_SHIFT && gHost->shift ? SHORT(-128) : SHORT(0); }

LRESULT WINAPI hostProc(HWND hWnd, UINT msg, WPARAM w, LPARAM l) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszPicture = const_cast<char*>(gMask);
    b.dwFlags |= gFlags;
    b.hWnd = DWORD(reinterpret_cast<uintptr_t>(hWnd));
    b.uMsg = msg, b.wParam = DWORD(w), b.lParam = DWORD(l);
    long long whole = l;
    std::memcpy(b.abReserved, &whole, sizeof whole);
    if (FMTValidateInput(&b)) return LRESULT(LONG(b.lResult));
    // The host's own message sets the field's text.
    if (msg == FMTM_SETTEXT) gHost->setTextId = w, msg = OSL_WM_SETTEXT, w = 0;
    return gOsl.edit->CallWindowProcA(gControl, hWnd, msg, w, l);
}

} // namespace

EditHost::EditHost(const char* mask, DWORD flags) : m_saved(gOsl.edit) {
    gHost = this, gMask = mask, gFlags = flags;
    gScripted = *m_saved;
    gScripted.MessageBeep = countBeep;
    gScripted.GetKeyState = keyState;
    gOsl.edit = &gScripted;
    m_parent = gOsl.edit->CreateWindowExA(0, "STATIC", "", 0x80000000, 0, 0, 400, 100, nullptr, nullptr, nullptr, nullptr);
    m_edit = gOsl.edit->CreateWindowExA(0, "EDIT", "", 0x40000080, 0, 0, 300, 24, m_parent, reinterpret_cast<HMENU>(7), nullptr, nullptr);
    gControl = reinterpret_cast<WNDPROC>(gOsl.edit->SetWindowLongPtrA(m_edit, OSL_GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(hostProc)));
}

EditHost::~EditHost() {
    gOsl.edit->DestroyWindow(m_edit);
    gOsl.edit->DestroyWindow(m_parent);
    gOsl.edit = m_saved;
}

void EditHost::Set(const char* text, WORD s, WORD e) {
    gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_EM_SETSEL, s, e);
}

LRESULT EditHost::Send(UINT msg, WPARAM w, LPARAM l) { return gOsl.edit->SendMessageA(m_edit, msg, w, l); }

void EditHost::Key(char k, bool withShift) {
    static const UINT kKeys[] = {0, OSL_VK_LEFT, OSL_VK_RIGHT, OSL_VK_HOME, OSL_VK_END, OSL_VK_END, OSL_VK_HOME};
    shift = withShift || k == 5 || k == 6;
    if (k >= 1 && k <= 6) Send(OSL_WM_KEYDOWN, kKeys[int(k)], 1);
    else if (k == 0x7f) Send(OSL_WM_KEYDOWN, OSL_VK_DELETE, 1);
    else if (k == 0x0e || k == 0x0f) Send(k == 0x0e ? OSL_WM_CHAR : OSL_WM_CLEAR, k == 0x0e ? 8 : 0, 0);
    else Send(OSL_WM_CHAR, BYTE(k), 1);
    shift = false;
}

std::string EditHost::Text() const {
    char buf[1024] = "";
    gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_WM_GETTEXT, sizeof buf, reinterpret_cast<LPARAM>(buf));
    return buf;
}
std::pair<WORD, WORD> EditHost::Sel() const {
    DWORD both = DWORD(gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_EM_GETSEL, 0, 0));
    return {WORD(both), WORD(both >> 16)};
}

LONG Unmask(const char* text, const char* mask, char* out) {
    std::vector<char> own(out ? 0 : std::strlen(text) + 1);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszInput = const_cast<char*>(text), b.lpszPicture = const_cast<char*>(mask), b.lpszOutput = out ? out : own.data();
    return FMTUnmaskInput(&b);
}

namespace {

bool caretAllowed(EditHost& host, const char* mask) {
    WORD caret = host.Sel().first;
    size_t len = std::strlen(mask);
    return caret >= host.Text().size() || FMTIsMaskChar(caret < len ? mask[caret] : FMTIsPicUnlimited(mask) ? '*' : 0);
}

void message(EditHost& host, BYTE kind, BYTE value, const std::string& text) {
    LPARAM part = reinterpret_cast<LPARAM>(text.c_str() + value % (text.size() + 1));
    switch (kind % 8) {
    case 0: case 1: host.Send(OSL_WM_CHAR, value, 1); break;
    case 2: host.Key("\1\2\3\4\x7f"[value % 5], value & 0x80); break;
    case 3: host.Send(value & 1 ? OSL_WM_CLEAR : OSL_WM_CHAR, 8, value & 2); break;
    case 4: host.Send(OSL_EM_SETSEL, value % 32, (value >> 3) % 32); break;
    case 5: host.Send(OSL_EM_REPLACESEL, 0, part); break;
    case 6: host.Send(OSL_WM_SETTEXT, 0, part); break;
    default: host.Send(FMTM_SETTEXT, 0, part); break;
    }
}

} // namespace

std::string EditDrive(const unsigned char* data, size_t size) {
    size_t n = size ? 1 + data[0] % 16 : 0;
    if (size < 1 + n) return "";
    std::string mask = data[0] & 0x40 ? "^" : "";
    for (size_t i = 1; i <= n; ++i) mask += data[i] ? char(data[i]) : 'X';
    if (data[0] & 0x80) mask += '*';
    std::string rest(reinterpret_cast<const char*>(data) + 1 + n, size - 1 - n), text = rest.substr(0, rest.find('\0'));
    const char* proper = FMTMaskProper(mask.c_str());
    bool valid = FMTIsValidMaskFormat(proper); // an invalid mask must only do no harm
    // FMTMaskText into exactly the room the header promises, and FMTUnmaskInput
    // on the raw text: neither may write past its buffer.
    std::vector<char> out(FMTIsPicUnlimited(proper) ? FMTCntNonMaskChars(proper) + (*proper == '^') + text.size() + 1 : std::strlen(proper) + 1);
    FMTMaskText(text.c_str(), out.data(), proper);
    Unmask(text.c_str(), mask.c_str(), nullptr);
    EditHost host(mask.c_str(), FMTF_EDITFILTER | FMTF_EDITNOTIFY);
    for (size_t i = 0; i + 1 < rest.size(); i += 2) {
        BYTE kind = BYTE(rest[i]), value = BYTE(rest[i + 1]);
        message(host, kind, value, text);
        std::string where = "mask \"" + mask + "\", text \"" + host.Text() + "\" after message " + std::to_string(i / 2);
        if (valid && Unmask(host.Text().c_str(), mask.c_str(), nullptr) != 1) return "the text no longer fits: " + where;
        if (valid && kind % 8 == 2 && value % 5 < 4 && !(value & 0x80) && !caretAllowed(host, proper))
            return "caret " + std::to_string(host.Sel().first) + " rests on a literal: " + where;
    }
    return "";
}
