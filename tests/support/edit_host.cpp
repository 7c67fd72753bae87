#include "tests/support/edit_host.h"

#include <oxlrt31/mask.h>

#include <cstring>

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

std::string EditHost::Text() const {
    char buf[1024] = "";
    gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_WM_GETTEXT, sizeof buf, reinterpret_cast<LPARAM>(buf));
    return buf;
}
WORD EditHost::SelStart() const { return WORD(gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_EM_GETSEL, 0, 0)); }
WORD EditHost::SelEnd() const { return WORD(DWORD(gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_EM_GETSEL, 0, 0)) >> 16); }
bool EditHost::Modified() const { return gOsl.edit->CallWindowProcA(gControl, m_edit, OSL_EM_GETMODIFY, 0, 0) != 0; }
