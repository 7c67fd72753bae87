// A typed character: written over, inserted or appended where the mask
// lets it stand, with the literals around it written by the filter; and
// text from elsewhere put through the mask.
#include "maskedit.h"

#include <cstring>

namespace {

// Writes the literals from s up to the next placeholder; false when the
// mask ends first. *s becomes that placeholder.
bool writeLiterals(const FMTEDIT& ed, WORD* s) {
    for (; *s < ed.len && !FMTIsMaskChar(ed.mask[*s]); ++*s) FMTEditReplaceChar(ed, ed.mask[*s], *s);
    return *s < ed.len;
}

// Insertion or a wide selection: the text is taken out of the mask, ch goes
// in at its index, and the whole is masked again.
bool rebuild(const FMTEDIT& ed, char ch, WORD s, WORD e, bool insert) {
    if (!insert) FMTEditDeleteSel(ed, s, e);
    DWORD room = FMTEditRoom(ed, FMTEditTextLength(ed));
    FMTEditBuffer text(room), plain(room);
    if (!text.get() || !plain.get()) return false;
    FMTEditGetText(ed, text.get(), int(room));
    FMTCNTLBLOCK b = {};
    b.lpszInput = text.get();
    b.lpszOutput = plain.get();
    b.lpszPicture = const_cast<char*>(ed.mask);
    if (!FMTUnmaskInput(&b)) return false;
    size_t at = FMTMaskIndexOfPos(ed.mask, s), n = std::strlen(plain.get());
    if (at <= n) {
        std::memmove(plain.get() + at + 1, plain.get() + at, n - at + 1);
        plain.get()[at] = ch;
    }
    if (!FMTMaskApply(plain.get(), text.get(), ed.mask, false)) return false;
    FMTTrimBlanks(text.get());
    FMTEditSetText(ed, text.get());
    FMTEditSetSelDirect(ed, s + 1u, s + 1u);
    FMTEditAnnounce(ed);
    return true;
}

// Behind the character: the caret steps over the literals up to the next
// placeholder, or, with none left, the mask's closing literals are written,
// each only where the text reaches: written behind its end, a literal would
// land on an earlier position than its own (as when a rebuild lost the
// character).
void tail(const FMTEDIT& ed, WORD p) {
    WORD next;
    if (FMTNextMaskPos(ed.mask, p, &next)) {
        for (; p < next; ++p) FMTEditSetSelDirect(ed, p + 1u, p + 1u);
    } else {
        for (; p < ed.len && p <= FMTEditTextLength(ed); ++p) FMTEditReplaceChar(ed, ed.mask[p], p);
    }
}

} // namespace

void FMTEditReplaceChar(const FMTEDIT& ed, char ch, WORD pos) {
    const char one[2] = {ch, 0};
    FMTEditSetSelDirect(ed, pos, WORD(pos + 1));
    FMTEditReplaceSel(ed, one);
}

bool FMTEditTypeChar(const FMTEDIT& ed, char ch) {
    FMTSEL sel = FMTEditGetSel(ed);
    WORD s = sel.s;
    DWORD length = FMTEditTextLength(ed);
    if (!ch) return false; // a NUL can't stand in a text
    if (s >= ed.len) {
        if (ed.unlimited) FMTEditReplaceChar(ed, ch, s);
        return ed.unlimited;
    }
    bool insert = sel.s == sel.e && length > s;
    if (insert && length == ed.len) return false; // the field is full
    bool literalHit = !FMTIsMaskChar(ed.mask[s]) && ch == ed.mask[s];
    insert = insert && !literalHit;
    if (!FMTIsMaskChar(ed.mask[s]) && !writeLiterals(ed, &s)) return false;
    if (!literalHit && !FMTMaskCharAccept(ed.mask[s], &ch)) return false;
    if (sel.e > s + 1 || insert) {
        if (!rebuild(ed, ch, s, sel.e, insert)) return false;
    } else if (!literalHit) {
        FMTEditReplaceChar(ed, ch, s);
    }
    // A literal typed filled no placeholder: s itself still waits for one, and
    // the closing literals must not be written behind it.
    tail(ed, literalHit ? s : WORD(s + 1));
    return true;
}

void FMTEditRemask(const FMTEDIT& ed) {
    DWORD room = FMTEditRoom(ed, FMTEditTextLength(ed));
    FMTEditBuffer text(room), masked(room);
    if (!text.get() || !masked.get()) return;
    FMTEditGetText(ed, text.get(), int(ed.unlimited ? room : ed.len + 1));
    if (!*text.get() || !FMTMaskApply(text.get(), masked.get(), ed.mask, true)) return;
    FMTTrimBlanks(masked.get());
    FMTEditSetText(ed, masked.get());
}
