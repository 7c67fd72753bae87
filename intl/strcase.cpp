// Case: upper, lower, and proper (each word's first character in upper case).
#include "intlpriv.h"
#include "japantab.h"

namespace {

// A full-width Latin letter is capitalised through its half-width form. The
// table is Shift-JIS, so only Japanese text is looked up in it; any other
// double-byte character stays as it is.
void capitaliseDouble(char* p) {
    if (gpLibState->nDBCSLanguage != 1) return;
    BYTE half[2];
    if (IntlpJapanHalfOf(IntlpValue(p, p + 2), half) != 1) return;
    char c = char(half[0]);
    gOsl.text->CharUpperBuffA(&c, 1);
    WORD full = IntlpJapanFullOf(BYTE(c));
    if (!full) return;
    p[0] = char(full >> 8);
    p[1] = char(full & 0xFF);
}

void capitalise(char* p, const char* next) {
    if (next - p > 1) capitaliseDouble(p);
    else gOsl.text->CharUpperBuffA(p, 1);
}

} // namespace

char* OXLAPI IntlStrUpper(char* s) { return s ? gOsl.text->CharUpperA(s) : s; }

char* OXLAPI IntlStrLower(char* s) { return s ? gOsl.text->CharLowerA(s) : s; }

int OXLAPI IntlStrProper(char* dst, const char* src) {
    if (!dst) return 0;
    const char* text = IntlpText(src);
    std::memmove(dst, text, std::strlen(text) + 1);
    gOsl.text->CharLowerA(dst);
    int count = 0;
    bool wordStart = true;
    for (char* p = dst; *p; ++count) {
        char* next = IntlpStep(p);
        if (IntlpIsWhite(p, next)) {
            wordStart = true;
        } else if (wordStart) {
            capitalise(p, next);
            wordStart = false;
        }
        p = next;
    }
    return count;
}
