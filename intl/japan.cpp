// Japanese characters: lead and katakana bytes, and the conversion between
// half-width and full-width forms (intl/japantab.cpp holds the tables).
#include "intlpriv.h"
#include "japantab.h"

namespace {

constexpr int kJapanese = 1;

bool japanese() { return IntlpDBCS() && gpLibState->nDBCSLanguage == kJapanese; }

void putCode(char*& out, WORD code) {
    *out++ = char(code >> 8);
    *out++ = char(code & 0xFF);
}

// Copies the character [p, next) unchanged.
void putSame(char*& out, const char* p, const char* next) {
    while (p < next) *out++ = *p++;
}

// The full-width form of the single byte at p; a kana byte takes the mark
// behind it when the pair has a form of its own. Returns what was consumed.
const char* putFull(char*& out, const char* p, bool* wroteZero) {
    BYTE b = BYTE(*p);
    if (b < 0x20 || (b > 0x7E && b < 0xA0) || b > 0xDF) { // no table covers it
        *out++ = char(b);
        return p + 1;
    }
    WORD marked = b >= 0xA0 ? IntlpJapanMarkedOf(b, BYTE(p[1])) : 0;
    WORD code = marked ? marked : IntlpJapanFullOf(b);
    if (!code) *wroteZero = true; // 0xA0: two zero bytes end the text as a reader sees it
    putCode(out, code);
    return p + (marked ? 2 : 1);
}

int copyBytes(char* dst, const char* src) {
    int n = IntlpLen(src);
    std::memcpy(dst, src, size_t(n) + 1);
    return n;
}

} // namespace

int OXLAPI IntlIsKanji(BYTE c) {
    if (!IntlpDBCS()) return 0;
    if (japanese()) return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
    return gOsl.text->IsDBCSLeadByte(c) ? 1 : 0;
}

int OXLAPI IntlIsKatakana(BYTE c) { return japanese() && c >= 0xA0 && c <= 0xDF; }

int OXLAPI IntlStrJapanFull(char* dst, const char* src) {
    if (!dst || !src) return -1;
    if (!IntlpDBCS()) return copyBytes(dst, src);
    char* out = dst;
    int chars = 0;
    bool ended = false;
    for (const char* p = src; *p;) {
        const char* next = IntlpNext(p);
        if (next - p > 1) {
            putSame(out, p, next);
            p = next;
        } else {
            p = putFull(out, p, &ended);
        }
        if (!ended) ++chars;
    }
    *out = 0;
    return chars;
}

int OXLAPI IntlStrJapanHalf(char* dst, const char* src) {
    if (!dst || !src) return -1;
    if (!IntlpDBCS()) return copyBytes(dst, src);
    char* out = dst;
    int chars = 0;
    for (const char* p = src; *p;) {
        const char* next = IntlpNext(p);
        BYTE half[2];
        int n = next - p > 1 ? IntlpJapanHalfOf(IntlpValue(p, next), half) : 0;
        for (int i = 0; i < n; ++i) *out++ = char(half[i]);
        if (!n) putSame(out, p, next);
        chars += n ? n : 1;
        p = next;
    }
    *out = 0;
    return chars;
}
