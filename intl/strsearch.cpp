// Finding a character, or any character of a set.
#include "intlpriv.h"

namespace {

// The first character of set whose value is v, on the double-byte path.
bool setHolds(const char* set, WORD v) {
    for (const char* next; *set; set = next) {
        next = IntlpNext(set);
        if (IntlpValue(set, next) == v) return true;
    }
    return false;
}

} // namespace

char* OXLAPI IntlStrChr(char* s, WORD c) {
    if (!s) return nullptr;
    if (!IntlpDBCS()) return std::strchr(s, char(c & 0xFF));
    for (char* next; *s; s = next) {
        next = IntlpNext(s);
        if (IntlpValue(s, next) == c) return s;
    }
    return c == 0 ? s : nullptr;
}

char* OXLAPI IntlStrSearch(char* s, char* set) {
    if (!s || !set || !*set) return nullptr;
    if (!IntlpDBCS()) return std::strpbrk(s, set);
    for (char* next; *s; s = next) {
        next = IntlpNext(s);
        if (setHolds(set, IntlpValue(s, next))) return s;
    }
    return nullptr;
}
