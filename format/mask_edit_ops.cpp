// The edit control's operations as the filter uses them, each one message
// or call through the OS layer.
#include "maskedit.h"

#include <oxlrt31/mem.h>

namespace {
const OslEditService& os() { return *gOsl.edit; }
LPARAM textParam(const char* s) { return reinterpret_cast<LPARAM>(s); }
LRESULT direct(const FMTEDIT& ed, UINT msg, WPARAM w, LPARAM l) {
    return os().CallWindowProcA(ed.proc, ed.hWnd, msg, w, l);
}
} // namespace

char FMTEditMaskAt(const FMTEDIT& ed, WORD pos) {
    if (pos < ed.len) return ed.mask[pos];
    return ed.unlimited ? '*' : 0;
}

FMTSEL FMTEditGetSel(const FMTEDIT& ed) {
    DWORD r = DWORD(os().SendMessageA(ed.hWnd, OSL_EM_GETSEL, 0, 0));
    return {WORD(r & 0xFFFF), WORD(r >> 16)};
}

void FMTEditSetSelDirect(const FMTEDIT& ed, DWORD a, DWORD b) { direct(ed, OSL_EM_SETSEL, a, b); }
void FMTEditSetSel(const FMTEDIT& ed, DWORD a, DWORD b) { os().SendMessageA(ed.hWnd, OSL_EM_SETSEL, a, b); }
void FMTEditReplaceSel(const FMTEDIT& ed, const char* s) { direct(ed, OSL_EM_REPLACESEL, 0, textParam(s)); }
LRESULT FMTEditSetText(const FMTEDIT& ed, const char* s) { return direct(ed, OSL_WM_SETTEXT, 0, textParam(s)); }
DWORD FMTEditTextLength(const FMTEDIT& ed) {
    int n = os().GetWindowTextLengthA(ed.hWnd);
    return n > 0 ? DWORD(n) : 0;
}
void FMTEditGetText(const FMTEDIT& ed, char* out, int size) {
    *out = 0;
    os().GetWindowTextA(ed.hWnd, out, size);
}
void FMTEditDefaultKey(const FMTEDIT& ed, UINT key) { direct(ed, OSL_WM_KEYDOWN, key, ed.lParam); }

void FMTEditAnnounce(const FMTEDIT& ed) {
    os().SendMessageA(ed.hWnd, OSL_EM_SETMODIFY, 1, 0);
    WPARAM id = WPARAM(os().GetWindowLongPtrA(ed.hWnd, OSL_GWLP_ID) & 0xFFFF);
    os().SendMessageA(os().GetParent(ed.hWnd), OSL_WM_COMMAND, id | WPARAM(OSL_EN_CHANGE) << 16,
                      reinterpret_cast<LPARAM>(ed.hWnd));
}

void FMTEditBeep(void) { os().MessageBeep(0); }
bool FMTEditShiftDown(void) { return os().GetKeyState(OSL_VK_SHIFT) < 0; }

DWORD FMTEditRoom(const FMTEDIT& ed, DWORD textLength) { return textLength + ed.len + 3; }

FMTEditBuffer::FMTEditBuffer(DWORD bytes) : m_p(static_cast<char*>(MemAlloc(bytes))) {}
FMTEditBuffer::~FMTEditBuffer() { MemFree(m_p); }
