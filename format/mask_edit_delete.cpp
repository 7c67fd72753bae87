// Deleting from a masked text: the characters of the placeholders go, what
// stands behind them moves left over the literals, and a literal itself is
// never deleted while the text holds a placeholder.
#include "maskedit.h"

#include <cstring>

bool FMTMaskHasPlaceholder(const FMTEDIT& ed, DWORD textLength) {
    DWORD n = textLength < ed.len ? textLength : ed.len;
    for (DWORD i = 0; i < n; ++i) {
        if (FMTIsMaskChar(ed.mask[i])) return true;
    }
    return false;
}

void FMTEditDelete(const FMTEDIT& ed, WORD first, WORD last) {
    DWORD length = FMTEditTextLength(ed);
    if (first >= length || last >= length) return;
    DWORD room = FMTEditRoom(ed, length);
    FMTEditBuffer text(room), plain(room);
    if (!text.get() || !plain.get()) return;
    *text.get() = 0;
    if (DWORD(last - first) != length - 1) {
        FMTEditGetText(ed, text.get(), int(room));
        FMTCNTLBLOCK b = {};
        b.lpszInput = text.get();
        b.lpszOutput = plain.get();
        b.lpszPicture = const_cast<char*>(ed.mask);
        if (!FMTUnmaskInput(&b)) return;
        size_t n = std::strlen(plain.get()), from = FMTMaskIndexOfPos(ed.mask, first);
        size_t to = FMTMaskIndexOfPos(ed.mask, last) + size_t(1);
        if (from < n) std::memmove(plain.get() + from, plain.get() + (to < n ? to : n), n - (to < n ? to : n) + 1);
        *text.get() = 0;
        if (*plain.get() && !FMTMaskApply(plain.get(), text.get(), ed.mask, false)) return;
        FMTTrimBlanks(text.get());
    }
    FMTEditSetText(ed, text.get());
    FMTEditSetSel(ed, first, first);
    FMTEditAnnounce(ed);
}

void FMTEditDeleteSel(const FMTEDIT& ed, WORD s, WORD e) {
    DWORD length = FMTEditTextLength(ed);
    if (s != 0 || e != length) {
        bool trim = FMTMaskHasPlaceholder(ed, length);
        if (s < ed.len && trim) {
            while (s < e && !FMTEditIsPlaceholder(ed, s)) ++s;
            if (s == e) return FMTEditSetSel(ed, e, e);
        }
        if (e <= ed.len && e > 0 && trim) {
            while (e > s + 1 && !FMTEditIsPlaceholder(ed, WORD(e - 1))) --e;
        }
    }
    if (e > s) FMTEditDelete(ed, s, WORD(e - 1));
}

void FMTEditDeleteKey(const FMTEDIT& ed) {
    FMTSEL sel = FMTEditGetSel(ed);
    if (sel.s != sel.e) return FMTEditDeleteSel(ed, sel.s, sel.e);
    if (!FMTEditIsPlaceholder(ed, sel.s) && FMTMaskHasPlaceholder(ed, FMTEditTextLength(ed))) return;
    FMTEditDelete(ed, sel.s, sel.s);
}

void FMTEditBackspace(const FMTEDIT& ed) {
    FMTSEL sel = FMTEditGetSel(ed);
    if (sel.e == 0) return;
    if (sel.s != sel.e) return FMTEditDeleteSel(ed, sel.s, sel.e);
    FMTEditCaretLeft(ed);
    WORD now = FMTEditGetSel(ed).s;
    if (now != sel.s) FMTEditDelete(ed, now, now);
}
