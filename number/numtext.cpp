// Reading a NUMBER from decimal or scientific text ("." as the point). The
// reader stops at the first character that can't continue the number and
// says how far it got; the caller decides whether the rest matters.
#include "numrecord.h"

#include "../core/libstate.h"

namespace {

constexpr int kMaxChars = 47;      // significant digit characters kept
constexpr int kExponentLimit = 10000;
constexpr int kBias = 128;         // biased decimal exponent: digits before the point

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// White space as the string family defines it: 9 to 13 and 32, and on a
// double-byte system also the language's double-byte blank.
const char* skipSpace(const char* p) {
    static const unsigned kBlank[] = {0, 0x8140, 0xA140, 0xA1A1};
    const LIBSTATE& s = *gpLibState;
    unsigned blank = s.bDBCS && s.nDBCSLanguage >= 1 && s.nDBCSLanguage <= 3 ? kBlank[s.nDBCSLanguage] : 0;
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

// The significant digits read so far and the biased decimal exponent.
struct Mantissa {
    char chars[kMaxChars + 2];
    int count = 0;
    int x = kBias;
    bool seenDigit = false;
    bool seenNonZero = false;

    void keep(char c) {
        if (count < kMaxChars) chars[count++] = c; // further digits are read past, unrounded
    }
};

const char* readMantissa(const char* p, Mantissa& m) {
    for (; isDigit(*p); ++p) {
        m.seenDigit = true;
        if (*p == '0' && !m.seenNonZero) continue; // leading zeros
        m.seenNonZero = true;
        ++m.x;
        m.keep(*p);
    }
    if (*p != '.') return p;
    const char* q = p + 1;
    if (!m.seenNonZero)
        for (; *q == '0'; ++q) {
            m.seenDigit = true;
            --m.x;
        }
    for (; isDigit(*q); ++q) {
        m.seenDigit = true;
        m.seenNonZero = true;
        m.keep(*q);
    }
    return m.seenDigit ? q : p;
}

} // namespace

int OXLAPI NumAsciiToNumber(tagNUMBER* out, char* text) {
    setNull(out);
    if (!text) return 0;
    const char* p = skipSpace(text);
    const char* signAt = p;
    bool negative = false;
    if (*p == '+' || *p == '-') negative = *p++ == '-';
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        char* from = const_cast<char*>(negative ? signAt : p);
        return int(from - text) + NumHexAsciiToNumber(out, from);
    }

    Mantissa m;
    p = readMantissa(p, m);
    if (!m.seenDigit) return 0;

    if (*p == 'e' || *p == 'E') {
        ++p;
        bool down = false;
        if (*p == '+' || *p == '-') down = *p++ == '-';
        int e = 0;
        for (; isDigit(*p); ++p) {
            e = e * 10 + (*p - '0');
            if (e >= kExponentLimit) return -1;
        }
        m.x += down ? -e : e;
    }

    if (m.x < 0) return -2;
    char pairs[kMaxChars + 3];
    int n = 0;
    if (m.x % 2) { // a lone digit before an even place: pad in front
        pairs[n++] = '0';
        ++m.x;
    }
    for (int i = 0; i < m.count; ++i) pairs[n++] = m.chars[i];
    if (n % 2) pairs[n++] = '0';
    int exponent = m.x / 2;
    if (exponent > NUM_MAX_EXP) return -1;

    BYTE digits[25] = {};
    for (int i = 0; i < n / 2; ++i) digits[i] = BYTE((pairs[2 * i] - '0') * 10 + pairs[2 * i + 1] - '0');
    NumpWrite(out, digits, n / 2, negative, exponent);
    return int(p - text);
}
