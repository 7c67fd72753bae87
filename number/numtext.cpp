// Reading a NUMBER from decimal or scientific text ("." as the point). The
// reader stops at the first character that can't continue the number and
// says how far it got; the caller decides whether the rest matters.
#include "numrecord.h"

#include "../core/libstate.h"
#include <oxlrt31/intl.h>

#include <cstdint>
#include <cstring>

namespace {

constexpr int kMaxChars = 47;      // significant digit characters kept
constexpr int kExponentLimit = 10000;
constexpr int kBias = 128;         // biased decimal exponent: digits before the point

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// White space as the string family defines it: 9 to 13 and 32, and on a
// double-byte system also the language's double-byte blank.
const char* skipSpace(const char* p) {
    BYTE first = BYTE(*p);
    if (first > ' ' && first < 0x80) return p; // no blank, nor the lead byte of one
    unsigned blank = gpLibState->bDBCS ? IntlDBCSBlank() : 0; // the string family's table
    for (;;) {
        BYTE c = BYTE(*p);
        if (c == ' ' || (c >= 9 && c <= 13)) {
            ++p;
        } else if (blank && c == (blank >> 8) && BYTE(p[1]) == (blank & 0xFF)) {
            p += 2;
        } else {
            return p;
        }
    }
}

void setNull(tagNUMBER* out) {
    out->bLength = 0;
    out->abData[0] = 0xC0;
}

// Eight digit characters as four base-100 digits: the pairs gathered in
// 16-bit lanes, then the lanes' low bytes side by side. The lanes follow the
// byte order of the load, little-endian on every target.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "character lanes are laid out little-endian");
void pairsOf8(const char* chars, BYTE* digits) {
    uint64_t w = NumpLoad8(reinterpret_cast<const BYTE*>(chars)) - '0' * kNumpOnes;
    uint64_t lanes = (w & 0x00FF00FF00FF00FFull) * 10 + ((w >> 8) & 0x00FF00FF00FF00FFull);
    uint64_t halves = (lanes | lanes >> 8) & 0x0000FFFF0000FFFFull;
    NumpStore4(digits, uint32_t(halves | halves >> 16));
}

} // namespace

int OXLAPI NumAsciiToNumber(tagNUMBER* out, const char* text) {
    setNull(out);
    if (!text) return 0;
    const char* p = skipSpace(text);
    const char* signAt = p;
    bool negative = false;
    if (*p == '+' || *p == '-') negative = *p++ == '-';
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        const char* from = negative ? signAt : p;
        return int(from - text) + NumHexAsciiToNumber(out, from);
    }

    // The mantissa: leading zeros, the integer digits (the first above 0),
    // the point, and the fraction, whose own leading zeros only shift the
    // point while no integer digit came first. x is the biased count of
    // decimal places before the point.
    const char* zeros = p;
    while (*p == '0') ++p;
    bool seenDigit = p != zeros;
    const char* whole = p;
    while (isDigit(*p)) ++p;
    int wholeCount = int(p - whole);
    int x = kBias + wholeCount;
    const char* fraction = p;
    int fractionCount = 0;
    if (*p == '.') {
        const char* q = p + 1;
        if (wholeCount == 0) {
            const char* from = q;
            while (*q == '0') ++q;
            x -= int(q - from);
            seenDigit = seenDigit || q != from;
        }
        fraction = q;
        while (isDigit(*q)) ++q;
        fractionCount = int(q - fraction);
        if (seenDigit || wholeCount || fractionCount) p = q; // else the point is no part of a number
    }
    if (!seenDigit && !wholeCount && !fractionCount) return 0;

    if (*p == 'e' || *p == 'E') {
        ++p;
        bool down = false;
        if (*p == '+' || *p == '-') down = *p++ == '-';
        int e = 0;
        for (; isDigit(*p); ++p) {
            e = e * 10 + (*p - '0');
            if (e >= kExponentLimit) return -1;
        }
        x += down ? -e : e;
    }

    if (x < 0) return -2;
    int pad = x % 2; // a lone digit before an even place: a zero in front
    x += pad;
    int exponent = x / 2;
    if (exponent > NUM_MAX_EXP) return -1;

    // At most 47 significant characters are kept, unrounded; behind them and
    // up to a whole block of eight, zeros. The zero in front and 47 make six
    // blocks exactly.
    char chars[kMaxChars + 1];
    std::memset(chars, '0', sizeof chars);
    int keptWhole = wholeCount < kMaxChars ? wholeCount : kMaxChars;
    int keptFraction = fractionCount < kMaxChars - keptWhole ? fractionCount : kMaxChars - keptWhole;
    NumpCopy(reinterpret_cast<BYTE*>(chars + pad), reinterpret_cast<const BYTE*>(whole), keptWhole);
    NumpCopy(reinterpret_cast<BYTE*>(chars + pad + keptWhole), reinterpret_cast<const BYTE*>(fraction), keptFraction);
    int count = int(unsigned(pad + keptWhole + keptFraction + 1) / 2);
    BYTE digits[24];
    // The first two blocks always (8 digits, inside both arrays whatever the
    // count), then as many more as the count needs.
    pairsOf8(chars, digits);
    pairsOf8(chars + 8, digits + 4);
    for (int i = 8; i < count; i += 4) pairsOf8(chars + 2 * i, digits + i);
    NumpWriteNormal(out, digits, count, negative, exponent);
    return int(p - text);
}
