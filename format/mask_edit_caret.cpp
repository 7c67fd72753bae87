// The caret keys: the control moves first, then the caret is set right so
// that it never rests on a literal while a placeholder lies ahead.
#include "maskedit.h"

namespace {

// Up to the first placeholder at or behind s, at most to the text's end + 1,
// which the control takes as its end (and a position stops at 16 bits).
DWORD upToPlaceholder(const FMTEDIT& ed, DWORD s) {
    DWORD bound = FMTEditTextLength(ed) + 1;
    while (s < bound && s < 0xFFFF && !FMTEditIsPlaceholder(ed, WORD(s))) ++s;
    return s;
}

void caretAt(const FMTEDIT& ed, DWORD s) { FMTEditSetSel(ed, s, s); }

} // namespace

void FMTEditCaretLeft(const FMTEDIT& ed) {
    FMTEditDefaultKey(ed, OSL_VK_LEFT);
    DWORD s = FMTEditGetSel(ed).s;
    while (s > 0 && !FMTEditIsPlaceholder(ed, WORD(s))) --s;
    if (s == 0 && !FMTEditIsPlaceholder(ed, 0)) s = upToPlaceholder(ed, 0);
    caretAt(ed, s);
}

void FMTEditCaretRight(const FMTEDIT& ed) {
    FMTEditDefaultKey(ed, OSL_VK_RIGHT);
    caretAt(ed, upToPlaceholder(ed, FMTEditGetSel(ed).s));
}

void FMTEditCaretHome(const FMTEDIT& ed) {
    caretAt(ed, 0);
    if (!FMTEditIsPlaceholder(ed, 0)) caretAt(ed, upToPlaceholder(ed, 0));
}

void FMTEditCaretEnd(const FMTEDIT& ed) {
    caretAt(ed, FMTEditTextLength(ed) + 1);
}

void FMTEditSelectToEdge(const FMTEDIT& ed, bool toEnd) {
    WORD s = FMTEditGetSel(ed).s;
    toEnd ? FMTEditSetSel(ed, s, FMTEditTextLength(ed)) : FMTEditSetSel(ed, 0, s);
}
