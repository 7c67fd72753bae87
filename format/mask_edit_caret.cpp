// The caret keys: the control moves first, then the caret is set right so
// that it never rests on a literal while a placeholder lies ahead.
#include "maskedit.h"

namespace {

// Up to the first placeholder at or behind s, at most to the text's end + 1,
// which the control takes as its end.
WORD upToPlaceholder(const FMTEDIT& ed, WORD s) {
    WORD bound = WORD(FMTEditTextLength(ed) + 1);
    while (s < bound && !FMTEditIsPlaceholder(ed, s)) ++s;
    return s;
}

void caretAt(const FMTEDIT& ed, WORD s) { FMTEditSetSel(ed, s, s); }

} // namespace

void FMTEditCaretLeft(const FMTEDIT& ed) {
    FMTEditDefaultKey(ed, OSL_VK_LEFT);
    WORD s = FMTEditGetSel(ed).s;
    while (s > 0 && !FMTEditIsPlaceholder(ed, s)) --s;
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
    WORD end = WORD(FMTEditTextLength(ed) + 1);
    caretAt(ed, end);
}

void FMTEditSelectToEdge(const FMTEDIT& ed, bool toEnd) {
    WORD s = FMTEditGetSel(ed).s;
    toEnd ? FMTEditSetSel(ed, s, FMTEditTextLength(ed)) : FMTEditSetSel(ed, 0, s);
}
