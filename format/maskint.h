// Input masks, private: the character rules and the position arithmetic the
// edit filter builds on. A mask here is without its "^"; positions of a
// masked text are positions of the mask, 16-bit unsigned.
#ifndef OXL_FORMAT_MASKINT_H
#define OXL_FORMAT_MASKINT_H

#include <oxlrt31/mask.h>

// One of the eight placeholders X ! a A n N 9 *.
bool FMTIsMaskChar(char c);
// Whether `ch` may stand at a position of `maskChar`, with `ch` set to what
// is stored there (case folded); a literal accepts, making `ch` itself.
bool FMTMaskCharAccept(char maskChar, char* ch);
// FMTMaskText, and with skipLiterals 0 every text character is data.
LONG FMTMaskApply(const char* text, char* output, const char* mask, bool skipLiterals);
// A masked text of `width` positions from a text set by program: blanks for
// the empty placeholders, trailing blanks cut. `output` has width + 1 bytes.
void FMTMaskFill(const char* mask, DWORD width, char* output, const char* text);
// Literals of the mask, a leading "^" among them (FMTCntNonMaskChars steps
// over it, but here it is literal text).
LONG FMTCountLiterals(const char* mask);
// Literals of the mask plus the text's length.
DWORD FMTMaskedLength(const char* mask, const char* text);
// Index in the unmasked text of the character at `pos` of the masked text.
WORD FMTMaskIndexOfPos(const char* mask, WORD pos);
// First position at or behind `pos` holding a literal (a placeholder); false
// when the mask ends first.
bool FMTNextLiteralPos(const char* mask, WORD pos, WORD* found);
bool FMTNextMaskPos(const char* mask, WORD pos, WORD* found);
// Cuts blanks from the end, in place.
void FMTTrimBlanks(char* text);
// The mask behind a leading "^".
inline const char* FMTMaskProper(const char* mask) { return *mask == '^' ? mask + 1 : mask; }

#endif
