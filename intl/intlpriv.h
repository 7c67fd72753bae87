// What the string family shares inside the library: the path in force, the
// one way of stepping, character values and white space.
#ifndef OXL_INTL_INTLPRIV_H
#define OXL_INTL_INTLPRIV_H

#include <oxlrt31/intl.h>

#include "../core/libstate.h"
#include "../os/osl.h"

#include <cstring>

inline bool IntlpDBCS() { return gpLibState->bDBCS != 0; }

// One character on: the platform's CharNextA and nothing else, so that all
// functions agree on where characters begin. It stays at the terminator and
// never pairs a lead byte with it.
inline char* IntlpNext(const char* p) { return gOsl.text->CharNextA(p); }

// One step of the path in force: a character, or on the single-byte path a byte.
inline char* IntlpStep(const char* p) {
    return IntlpDBCS() ? IntlpNext(p) : const_cast<char*>(*p ? p + 1 : p);
}

// The value of the character [p, next): the byte, or lead x 256 + trail.
inline WORD IntlpValue(const char* p, const char* next) {
    return next - p > 1 ? WORD(BYTE(p[0]) << 8 | BYTE(p[1])) : BYTE(*p);
}

// White space of the character [p, next) (9 to 13 and 32, the double-byte blank).
bool IntlpIsWhite(const char* p, const char* next);

// lstrlenA: a null pointer has length 0.
inline int IntlpLen(const char* s) { return s ? int(std::strlen(s)) : 0; }

// Characters of s on the path in force.
int IntlpCount(const char* s);

// Character n of s by CharNextA, or null when s ends first.
char* IntlpNth(const char* s, int n);

// Copies up to n whole characters of src forwards, without a terminator;
// gives the characters copied and, in *bytes, the bytes written.
int IntlpCopyChars(char* dst, const char* src, int n, int* bytes);

// A null source reads as the empty text.
inline const char* IntlpText(const char* s) { return s ? s : ""; }

#endif
