// Input masks: the placeholders, the test of a mask, its two end marks and
// its counts.
#include "maskint.h"

#include "os/osl.h"
#include <oxlrt31/intl.h>

#include <cstring>

namespace {

bool isLetter(char c) { return gOsl.text->IsCharAlphaA(c); }
bool isLetterOrDigit(char c) { return gOsl.text->IsCharAlphaNumericA(c); }
char upper(char c) {
    gOsl.text->CharUpperBuffA(&c, 1);
    return c;
}

LONG countOf(const char* p, bool placeholders) {
    LONG n = 0;
    for (; p && *p; ++p) n += FMTIsMaskChar(*p) == placeholders;
    return n;
}

} // namespace

bool FMTIsMaskChar(char c) { return c && std::strchr("X!aAnN9*", c); }

bool FMTMaskCharAccept(char maskChar, char* ch) {
    char c = *ch;
    switch (maskChar) {
    case 'X': return c != '\n';
    case '!': return c != '\n' && (*ch = upper(c), true);
    case 'a': return isLetter(c);
    case 'A': return isLetter(c) && (*ch = upper(c), true);
    case 'n': return isLetterOrDigit(c);
    case 'N': return isLetterOrDigit(c) && (*ch = upper(c), true);
    case '9': return isLetterOrDigit(c) && !isLetter(c);
    case '*': return true;
    default: *ch = maskChar; return true;
    }
}

LONG OXLAPI FMTIsValidMaskFormat(const char* mask) {
    if (!mask || !*mask) return 0;
    bool placeholder = false;
    for (const char* p = mask; *p; ++p) {
        if (*p == '*' && p[1]) return 0;
        placeholder = placeholder || FMTIsMaskChar(*p);
    }
    return placeholder;
}

LONG OXLAPI FMTCntMaskChars(const char* mask) { return mask ? countOf(FMTMaskProper(mask), true) : 0; }
LONG OXLAPI FMTCntNonMaskChars(const char* mask) { return mask ? countOf(FMTMaskProper(mask), false) : 0; }
LONG FMTCountLiterals(const char* mask) { return countOf(mask, false); }
LONG OXLAPI FMTIsPicNoUnmaskOnGets(const char* mask) { return mask && *mask == '^'; }
LONG OXLAPI FMTIsPicUnlimited(const char* mask) { return IntlStrLastChar(mask) == '*'; }

void FMTTrimBlanks(char* text) {
    size_t n = std::strlen(text);
    while (n && text[n - 1] == ' ') --n;
    text[n] = 0;
}
