// A search for a pattern in the manner of LIKE, without regard to case:
// % stands for any run of characters, _ for one, \ makes the next pattern
// character literal. The pattern need not reach the end of the subject.
//
// A first literal is searched for (scanning); later literals are compared
// in place. A mismatch goes back to the last % if there was one, and
// otherwise starts the whole pattern again one character further on.
#include "intlpriv.h"

namespace {

// The value of the character [p, next) in upper or lower case: CharUpperBuffA
// on a single byte, CharUpperA on a double-byte character.
WORD caseOf(const char* p, const char* next, bool upper) {
    char c[3] = {p[0], next - p > 1 ? p[1] : '\0', '\0'};
    if (next - p > 1) upper ? gOsl.text->CharUpperA(c) : gOsl.text->CharLowerA(c);
    else upper ? gOsl.text->CharUpperBuffA(c, 1) : gOsl.text->CharLowerBuffA(c, 1);
    return IntlpValue(c, c + (next - p));
}

bool sameWithoutCase(const char* a, const char* b) {
    const char *an = IntlpStep(a), *bn = IntlpStep(b);
    return *b && caseOf(a, an, true) == caseOf(b, bn, true);
}

// The first character from c that is the pattern character p in upper or lower case.
const char* findEitherCase(const char* c, const char* p) {
    const char* pn = IntlpStep(p);
    WORD up = caseOf(p, pn, true), low = caseOf(p, pn, false);
    for (const char* next; *c; c = next) {
        next = IntlpStep(c);
        WORD v = IntlpValue(c, next);
        if (v == up || v == low) return c;
    }
    return nullptr;
}

struct Scan {
    const char *s, *pattern;
    const char *c, *p, *m; // subject and pattern cursors, match start
    const char *resumeC, *resumeP; // where a mismatch goes back to after a %
    bool scanning = true, percent = false;
};

// A literal at p. Returns false when the pattern cannot match at all.
bool literal(Scan& k) {
    if (k.scanning) {
        k.scanning = false;
        const char* found = findEitherCase(k.c, k.p);
        if (found) {
            k.c = IntlpStep(found);
            k.p = IntlpStep(k.p);
            if (!k.m) k.m = found;
            if (k.percent) k.resumeC = k.c;
            return true;
        }
        if (!k.m || !*k.m || k.percent) return false;
    } else {
        if (sameWithoutCase(k.p, k.c)) {
            k.c = IntlpStep(k.c);
            k.p = IntlpStep(k.p);
            return true;
        }
        if (!k.m || !*k.m) return false;
        if (k.percent) {
            k.c = k.resumeC;
            k.p = k.resumeP;
            k.scanning = true;
            return true;
        }
    }
    k.m = IntlpStep(k.m); // start again one character further on
    k.p = k.pattern;
    k.c = k.m;
    return true;
}

bool step(Scan& k) {
    if (*k.p == '%') {
        k.p = k.resumeP = IntlpStep(k.p);
        k.scanning = k.percent = true;
        if (!k.m && *k.c) k.m = k.s;
        return true;
    }
    if (*k.p == '_') {
        k.p = IntlpStep(k.p);
        k.c = IntlpStep(k.c);
        if (!k.m && *k.c) k.m = k.s, k.scanning = false;
        return true;
    }
    if (*k.p == '\\') {
        k.p = IntlpStep(k.p);
        if (!*k.p) return true;
    }
    return literal(k);
}

} // namespace

int OXLAPI IntlStrScan(const char* s, const char* pattern) {
    if (!s || !pattern) return -1;
    if (!*s || !*pattern) return !*s && !*pattern ? 0 : -1;
    Scan k{s, pattern, s, pattern, nullptr, s, pattern};
    while (*k.p)
        if (!step(k)) return -1;
    if (!k.m) return -1;
    int index = 0;
    for (const char* c = s; c < k.m; c = IntlpStep(c)) ++index;
    return index;
}
