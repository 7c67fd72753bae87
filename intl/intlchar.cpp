// Characters: stepping, the halves of a double-byte character, values and
// white space. Everything here walks with CharNextA, whichever path is on.
#include "intlpriv.h"

namespace {

short signedValue(const char* p, const char* next) {
    return next - p > 1 ? short(IntlpValue(p, next)) : short(static_cast<signed char>(*p));
}

} // namespace

bool IntlpIsWhite(const char* p, const char* next) {
    if (next - p > 1) return IntlpDBCS() && IntlpValue(p, next) == IntlDBCSBlank();
    BYTE b = BYTE(*p);
    return b == ' ' || (b >= 9 && b <= 13);
}

int IntlpCount(const char* s) {
    int n = 0;
    for (; s && *s; s = IntlpStep(s)) ++n;
    return n;
}

char* IntlpNth(const char* s, int n) {
    for (; n > 0; --n) {
        if (!*s) return nullptr;
        s = IntlpNext(s);
    }
    return const_cast<char*>(s);
}

int OXLAPI IntlIsDBChar(const char* p) { return p && IntlpNext(p) - p > 1; }

int OXLAPI IntlBytesInNextChar(const char* p) { return p ? int(IntlpNext(p) - p) : 0; }

char* OXLAPI IntlNextDBCInStr(const char* s) {
    // Before the first double-byte character every character is one byte,
    // so walking by characters visits the same places as going byte by byte.
    for (char* next; s && *s; s = next) {
        next = IntlpNext(s);
        if (next - s > 1) return const_cast<char*>(s); // a place in the caller's text, as strchr gives
    }
    return nullptr;
}

int OXLAPI IntlIsNthCharDB(const char* s, int n) {
    if (!IntlpDBCS() || !s || n < 0) return 0;
    char* p = IntlpNth(s, n);
    return p && *p && IntlIsDBChar(p);
}

int OXLAPI IntlIsNthByteDB(const char* s, int n) {
    if (!IntlpDBCS() || !s || n < 0) return 0;
    int consumed = 0;
    for (const char* p = s; *p;) {
        const char* next = IntlpNext(p);
        if (next - p > 1 && n - consumed < 2) return consumed == n ? 1 : 2;
        consumed += int(next - p);
        if (consumed > n) return 0;
        p = next;
    }
    return 0;
}

char* OXLAPI IntlStrNthChar(const char* s, int n) { return s && n >= 0 ? IntlpNth(s, n) : nullptr; }

short OXLAPI IntlStrFirstChar(const char* s) { return s && *s ? signedValue(s, IntlpNext(s)) : 0; }

short OXLAPI IntlStrLastChar(const char* s) {
    if (!s || !*s) return 0;
    const char* last = s;
    const char* next = IntlpNext(s);
    while (*next) {
        last = next;
        next = IntlpNext(next);
    }
    return signedValue(last, next);
}

WORD OXLAPI IntlDBCSBlank(void) {
    switch (gpLibState->nDBCSLanguage) {
    case 1: return 0x8140;
    case 2: return 0xA140;
    case 3: return 0xA1A1;
    default: return 0;
    }
}

WORD OXLAPI IntlDBCSChar(const char* p) { return p ? IntlpValue(p, IntlpNext(p)) : 0; }

int OXLAPI IntlCharIsHexDigit(WORD c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

char* OXLAPI IntlStripStartSpace(const char* s) {
    for (char* next; s && *s && IntlpIsWhite(s, next = IntlpNext(s));) s = next;
    return const_cast<char*>(s);
}

char* OXLAPI IntlStripStartBlank(const char* s) {
    WORD blank = IntlpDBCS() ? IntlDBCSBlank() : 0;
    for (char* next; s && *s; s = next) {
        next = IntlpNext(s);
        WORD v = IntlpValue(s, next);
        if (v != ' ' && (next - s < 2 || v != blank)) break;
    }
    return const_cast<char*>(s);
}

int OXLAPI IntlStrIsNextChSpace(const char* p) { return p && *p && IntlpIsWhite(p, IntlpNext(p)); }
