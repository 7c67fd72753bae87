// Trimming white space and blanks. Results count steps of the path in force:
// bytes on the single-byte path, characters on the double-byte path.
#include "intlpriv.h"

namespace {

// The narrow set of IntlStrTrim: 9, 11, 12, 32 and the double-byte blank; a
// line end is no blank, so text after it keeps its leading run.
bool isBlank(const char* p, const char* next) {
    if (next - p > 1) return IntlpDBCS() && IntlpValue(p, next) == IntlDBCSBlank();
    return *p == ' ' || *p == '\t' || *p == '\v' || *p == '\f';
}

// Where the text ends once trailing white space is gone; `keep` is the
// earliest that end may be.
char* endOfText(char* s, char* keep) {
    for (char* p = s; *p;) {
        char* next = IntlpStep(p);
        if (!IntlpIsWhite(p, next)) keep = next;
        p = next;
    }
    return keep;
}

} // namespace

int OXLAPI IntlStrTrim(char* dst, const char* src) {
    if (!dst) return 0;
    const char* p = IntlpText(src);
    for (const char* next; *p && isBlank(p, next = IntlpStep(p));) p = next;
    // dst never gets ahead of p: a space is written only for a run passed.
    char* out = dst;
    int count = 0;
    bool run = false;
    while (*p) {
        const char* next = IntlpStep(p);
        if (isBlank(p, next)) {
            run = true;
        } else {
            if (run) *out++ = ' ', ++count;
            run = false;
            while (p < next) *out++ = *p++;
            ++count;
        }
        p = next;
    }
    *out = 0;
    return count;
}

LONG OXLAPI IntlStrTrimTrailing(char* s) {
    if (!s || !*s) return 0;
    // The first character stays, white or not.
    char* p = IntlpStep(s);
    char* end = p;
    long count = 1, kept = 1;
    for (; *p; ++count) {
        char* next = IntlpStep(p);
        bool white = IntlpDBCS() ? IntlpIsWhite(p, next) : isBlank(p, next);
        if (!white) end = next, kept = count + 1;
        p = next;
    }
    *end = 0;
    return kept;
}

char* OXLAPI IntlStripEndSpace(char* dst, const char* src) {
    if (!dst || !src) return nullptr;
    std::memmove(dst, src, std::strlen(src) + 1);
    *endOfText(dst, dst) = 0;
    return dst;
}

void OXLAPI IntlStrStripSpace(char* s) {
    if (!s) return;
    char* p = s;
    for (char* next; *p && IntlpIsWhite(p, next = IntlpStep(p));) p = next;
    std::memmove(s, p, std::strlen(p) + 1);
    *endOfText(s, s) = 0;
}
