// FMTValidateInput: one message of a masked edit control, taken and done
// as the mask wants, or declined for the control's ordinary handling.
#include "fmtint.h"
#include "maskedit.h"

#include <cstring>

namespace {

// The filter's own messages to the control come back through the host:
// the thread's mark makes those inner calls decline.
class InFilter {
public:
    explicit InFilter(FMTTHREADITEM* item) : m_item(item) { m_item->bInFilter = 1; }
    ~InFilter() { m_item->bInFilter = 0; }
    InFilter(const InFilter&) = delete;
    InFilter& operator=(const InFilter&) = delete;

private:
    FMTTHREADITEM* m_item;
};

// The message's LPARAM: 32 bits in the block; a 64-bit host gives the whole
// of it in abReserved as well.
LPARAM fullLParam(const FMTCNTLBLOCK* b) {
    if (sizeof(LPARAM) > sizeof(DWORD)) {
        unsigned long long whole;
        std::memcpy(&whole, b->abReserved, sizeof whole);
        if (DWORD(whole) == b->lParam) return LPARAM(whole);
    }
    return LPARAM(b->lParam);
}

// Text that reaches the control other than by typing: the control takes
// it, and then it is put through the mask.
LRESULT fromElsewhere(const FMTEDIT& ed, UINT msg, WPARAM w) {
    LRESULT r = gOsl.edit->CallWindowProcA(ed.proc, ed.hWnd, msg, w, ed.lParam);
    FMTEditRemask(ed);
    if (ed.flags & FMTF_EDITNOTIFY) FMTEditAnnounce(ed);
    return r;
}

// The host's FMTM_SETTEXT: the text filled out to the field's width.
bool setMaskedText(const FMTEDIT& ed, LRESULT* result) {
    const char* text = reinterpret_cast<const char*>(ed.lParam);
    DWORD width = ed.unlimited ? FMTMaskedLength(ed.mask, text) : ed.len;
    FMTEditBuffer buf(width + 1);
    if (!buf.get()) return false;
    FMTMaskFill(ed.mask, width, buf.get(), text);
    WPARAM id = WPARAM(gOsl.edit->GetWindowLongPtrA(ed.hWnd, OSL_GWLP_ID) & 0xFFFF);
    *result = gOsl.edit->CallWindowProcA(ed.proc, ed.hWnd, FMTM_SETTEXT, id, reinterpret_cast<LPARAM>(buf.get()));
    return true;
}

bool keyDown(const FMTEDIT& ed, WORD key) {
    switch (key) {
    case OSL_VK_END: FMTEditShiftDown() ? FMTEditSelectToEdge(ed, true) : FMTEditCaretEnd(ed); return true;
    case OSL_VK_HOME: FMTEditShiftDown() ? FMTEditSelectToEdge(ed, false) : FMTEditCaretHome(ed); return true;
    case OSL_VK_LEFT: FMTEditCaretLeft(ed); return true;
    case OSL_VK_RIGHT: FMTEditCaretRight(ed); return true;
    case OSL_VK_DELETE: FMTEditDeleteKey(ed); return true;
    default: return false;
    }
}

void typed(const FMTEDIT& ed, WORD ch) {
    if (ch == 8) {
        ed.lParam ? FMTEditBackspace(ed) : FMTEditDeleteKey(ed);
    } else if (ch != 9 && !FMTEditTypeChar(ed, char(ch))) {
        FMTEditBeep();
    }
}

bool dispatch(const FMTEDIT& ed, const FMTCNTLBLOCK* b, LRESULT* result) {
    WORD msg = WORD(b->uMsg), w = WORD(b->wParam);
    *result = 0;
    switch (msg) {
    case OSL_WM_CHAR: typed(ed, w); return true;
    case OSL_WM_KEYDOWN: return keyDown(ed, w);
    case OSL_WM_CLEAR: FMTEditDeleteKey(ed); return true;
    case OSL_WM_SETTEXT:
    case OSL_EM_REPLACESEL:
    case OSL_WM_PASTE:
        if (!(ed.flags & FMTF_EDITFILTER)) return false;
        *result = fromElsewhere(ed, msg, WPARAM(b->wParam));
        return true;
    case FMTM_SETTEXT:
        if ((ed.flags & (FMTF_EDITFILTER | FMTF_EDITNOTIFY)) != (FMTF_EDITFILTER | FMTF_EDITNOTIFY) || !ed.lParam) return false;
        return setMaskedText(ed, result);
    default: return false;
    }
}

} // namespace

LONG OXLAPI FMTValidateInput(FMTCNTLBLOCK* b) {
    FMTTHREADITEM* item = b && b->lpszPicture ? FMTThreadItem() : nullptr;
    if (!item || item->bInFilter) return 0;
    InFilter guard(item);
    const char* mask = FMTMaskProper(b->lpszPicture);
    HWND hWnd = reinterpret_cast<HWND>(intptr_t(LONG(b->hWnd)));
    WNDPROC proc = reinterpret_cast<WNDPROC>(gOsl.edit->GetWindowLongPtrA(hWnd, OSL_GWLP_WNDPROC));
    FMTEDIT ed = {hWnd, proc, mask, DWORD(std::strlen(mask)), FMTIsPicUnlimited(mask) != 0, b->dwFlags, fullLParam(b)};
    LRESULT result;
    if (!dispatch(ed, b, &result)) return 0;
    b->lResult = DWORD(result);
    return 1;
}
