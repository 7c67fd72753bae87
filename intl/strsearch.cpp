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

char* OXLAPI IntlStrChr(const char* s, WORD c) {
    if (!s) return nullptr;
    if (!IntlpDBCS()) return const_cast<char*>(std::strchr(s, char(c & 0xFF)));
    for (char* next; *s; s = next) {
        next = IntlpNext(s);
        if (IntlpValue(s, next) == c) return const_cast<char*>(s);
    }
    return c == 0 ? const_cast<char*>(s) : nullptr;
}

char* OXLAPI IntlStrSearch(const char* s, const char* set) {
    if (!s || !set || !*set) return nullptr;
    if (!IntlpDBCS()) return const_cast<char*>(std::strpbrk(s, set));
    for (char* next; *s; s = next) {
        next = IntlpNext(s);
        if (setHolds(set, IntlpValue(s, next))) return const_cast<char*>(s);
    }
    return nullptr;
}
