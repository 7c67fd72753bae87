// Writing a NUMBER as text within a width: fixed form while the digits that
// matter fit, scientific form (d.dddE+xx, filling the width) otherwise.
//
// The text t holds the decimal digits without leading or trailing zeros; x
// is the count of decimal places before the point. The fixed form is made of
// parts: I (the integer digits of t), P (zeros up to the point), the point,
// Z (zeros behind the point) and F (the fraction digits of t).
#include "numrecord.h"

#include <cstdint>
#include <cstring>

namespace {

struct Layout {
    char t[2 * 24 + 2];
    int lt = 0;   // length of t
    int x = 0;    // decimal places before the point, for t[0]
    int lenI = 0; // characters of t in I
    int lenF = 0; // characters of t in F
    int P = 0, Z = 0;
    bool point = false;
    bool zero = false;
    bool negative = false;
};

// The two characters of each byte value d, '0' + d / 10 and '0' + d % 10,
// the first in the low byte (the order in memory on the little-endian
// targets): "00" to "99" for the digits, and for the bytes above 99 that a
// record that isn't normal may hold, the same characters as the writer
// gives them one at a time.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "character pairs are laid out little-endian");
constexpr struct DigitPairs {
    uint16_t pair[256];
    constexpr DigitPairs() : pair() {
        for (int i = 0; i < 256; ++i) pair[i] = uint16_t(('0' + i / 10) | ('0' + i % 10) << 8);
    }
} kPairs;

// Four digits as their eight characters; bytes behind a record's digits
// (any value) give characters behind the text's end.
void fourDigitsAsText(const BYTE* digits, char* text) {
    for (int i = 0; i < 4; ++i) std::memcpy(text + 2 * i, &kPairs.pair[digits[i]], 2);
}

Layout layoutOf(const NumpOperand& v) {
    Layout L;
    L.negative = v.negative != 0;
    L.x = 2 * (v.exponent - NUM_EXP_BIAS);
    if (v.count > 0 && v.digits[0] != 0) {
        // A first digit above 0: it shows one character when below 10 (the
        // zero in front of it goes), then two a digit; only the last digit's
        // second character can be a trailing zero (a byte above 99 has no
        // zero for its first).
        int first = v.digits[0];
        char* t = L.t;
        if (first < 10) {
            *t++ = char('0' + first);
            --L.x;
        } else {
            std::memcpy(t, &kPairs.pair[first], 2);
            t += 2;
        }
        // The others four at a time (the bytes behind the last digit give
        // characters behind the text's end, inside L.t).
        for (int i = 1; i < v.count; i += 4, t += 8) fourDigitsAsText(v.digits + i, t);
        t -= 2 * ((v.count + 2) / 4 * 4 - (v.count - 1));
        if (t[-1] == '0') --t;
        L.lt = int(t - L.t);
    } else {
        for (int i = 0; i < v.count; ++i) {
            L.t[L.lt++] = char('0' + v.digits[i] / 10);
            L.t[L.lt++] = char('0' + v.digits[i] % 10);
        }
        while (L.lt > 0 && L.t[L.lt - 1] == '0') --L.lt;
        if (L.lt > 0 && L.t[0] == '0') {
            std::memmove(L.t, L.t + 1, --L.lt);
            --L.x;
        }
    }
    if (L.lt == 0) { // zero: the text "0", never signed
        L.zero = true;
        L.x = 0;
        L.P = 1;
    } else if (L.x <= 0) {
        L.Z = -L.x;
        L.lenF = L.lt;
        L.point = true;
    } else if (L.x < L.lt) {
        L.lenI = L.x;
        L.lenF = L.lt - L.x;
        L.point = true;
    } else {
        L.lenI = L.lt;
        L.P = L.x - L.lt;
    }
    return L;
}

// Rounds t at index i (half up): true when the carry ran out of the front,
// leaving "1" and zeros.
bool roundAt(Layout& L, int i) {
    if (L.t[i] < '5') return false;
    int k = i - 1;
    for (; k >= 0 && L.t[k] == '9'; --k) L.t[k] = '0';
    if (k >= 0) {
        ++L.t[k];
        return false;
    }
    L.t[0] = '1';
    for (int j = 1; j < L.lt; ++j) L.t[j] = '0';
    return true;
}

char* repeat(char* out, char c, int n) {
    for (int i = 0; i < n; ++i) *out++ = c;
    return out;
}

char* writeFixed(char* out, const Layout& L, int m) {
    char* start = out;
    int keep = m - L.Z < 0 ? 0 : m - L.Z;
    int fEnd = L.lenI + L.lenF < keep ? L.lenI + L.lenF : keep;
    while (fEnd > L.lenI && L.t[fEnd - 1] == '0') --fEnd;
    bool point = L.point && fEnd > L.lenI;
    NumpCopy(reinterpret_cast<BYTE*>(out), reinterpret_cast<const BYTE*>(L.t), L.lenI);
    out = repeat(out + L.lenI, '0', L.P);
    if (point) *out++ = '.';
    out = repeat(out, '0', L.Z);
    if (fEnd > L.lenI) {
        NumpCopy(reinterpret_cast<BYTE*>(out), reinterpret_cast<const BYTE*>(L.t + L.lenI), fEnd - L.lenI);
        out += fEnd - L.lenI;
    }
    if (out == start) *out++ = '0';
    return out;
}

// Fills w characters exactly: d.ddd, then E, the sign and two digits.
char* writeScientific(char* out, const Layout& L, int w) {
    int e = L.x - 1, tail = w - 6;
    bool beyond = e < -99 || e > 99; // shown as the largest mantissa and exponent 99
    *out++ = beyond ? '9' : L.t[0];
    *out++ = '.';
    for (int i = 1; i <= tail; ++i) *out++ = beyond ? '9' : (i < L.lt ? L.t[i] : '0');
    int mag = beyond ? 99 : (e < 0 ? -e : e);
    *out++ = 'E';
    *out++ = e < 0 ? '-' : '+';
    *out++ = char('0' + mag / 10);
    *out++ = char('0' + mag % 10);
    return out;
}

// The fixed form of a record with an integer part when every digit
// of t fits in the width: I, then the point and F, or P. The same text as
// NumToAscii's layout makes of it, without the layout; -1 for every other
// record and width. t is made of the record's digits four at a time, the
// first digit included; its first character goes when it is a zero.
int fixedWithIntegerPart(const NumpOperand& v, char* buffer, int width) {
    int count = v.count;
    if (count == 0 || v.exponent <= NUM_EXP_BIAS || v.digits[0] == 0) return -1;
    char text[2 * 24 + 8];
    for (int i = 0; i < count; i += 4) fourDigitsAsText(v.digits + i, text + 2 * i);
    int lead = v.digits[0] < 10;
    const char* t = text + lead;
    int lt = 2 * count - lead - (text[2 * count - 1] == '0'); // the last digit is above 0: one zero at most
    int x = 2 * (v.exponent - NUM_EXP_BIAS) - lead;             // 1 or more: I is not empty
    int negative = v.negative != 0;
    bool point = x < lt;
    if ((point ? lt + 1 : x) + negative > width) return -1;
    char* out = buffer;
    if (negative) *out++ = '-';
    BYTE* to = reinterpret_cast<BYTE*>(out);
    const BYTE* from = reinterpret_cast<const BYTE*>(t);
    if (point) {
        NumpCopy(to, from, x);
        to[x] = '.';
        NumpCopy(to + x + 1, from + x, lt - x);
        out += lt + 1;
    } else {
        NumpCopy(to, from, lt);
        out = repeat(out + lt, '0', x - lt);
    }
    *out = 0;
    return int(out - buffer);
}

} // namespace

int OXLAPI NumToAscii(const tagNUMBER* n, char* buffer, WORD width) {
    int length = NumpLength(n);
    if (length == 0 || length > 24) {
        buffer[0] = 0;
        return 0;
    }
    NumpOperand v = NumpRead(n, length);
    int fixed = fixedWithIntegerPart(v, buffer, width);
    if (fixed >= 0) return fixed;
    Layout L = layoutOf(v);

    char* out = buffer;
    int w = width;
    if (!L.zero && L.negative) {
        *out++ = '-';
        --w;
    }

    // The fixed form with an integer part and every digit of t: nothing to
    // round, nothing to cut, so I, then P or the point and F.
    if (L.lenI > 0 && L.lt + L.P + (L.point ? 1 : 0) <= w) {
        BYTE* text = reinterpret_cast<BYTE*>(out);
        const BYTE* t = reinterpret_cast<const BYTE*>(L.t);
        if (L.point) {
            NumpCopy(text, t, L.lenI);
            text[L.lenI] = '.';
            NumpCopy(text + L.lenI + 1, t + L.lenI, L.lenF);
            out += L.lt + 1;
        } else {
            NumpCopy(text, t, L.lt);
            out = repeat(out + L.lt, '0', L.P);
        }
        *out = 0;
        return int(out - buffer);
    }

    bool scientific;
    int m;
    if (L.lenI == 0) {
        scientific = w <= L.lt + L.Z + 1 && L.Z >= 4;
        m = w - (L.point ? 1 : 0);
    } else {
        scientific = L.lenI + L.P > w;
        if (L.point && w == 1)
            m = 1;
        else if (L.P > 0 || w > L.lenI)
            m = w - (L.point ? 1 : 0);
        else
            m = L.lenI;
    }
    if (scientific) {
        m = w - 5;
        L.Z = 0;
    }
    if (m < 1) return 0; // no room for a digit

    if (m < L.lt + L.Z && m - L.Z >= 0 && roundAt(L, m - L.Z)) {
        ++L.x; // the zero or digit that the new 1 pushes aside goes
        if (L.Z > 0) {
            --L.Z; // the 1 takes the last zero's place: as many fraction digits
        } else {
            ++L.lenI; // the 1 moves in front of the point
            if (L.lenF > 0) --L.lenF;
        }
        if (!scientific && L.lenI + L.P > m) {
            scientific = true;
            m = w - 5;
            L.Z = 0;
            if (m < 1) return 0; // no room for the exponent
        }
    }

    // A fraction whose first digit has no place in the width rounds to zero
    // there: its text is "0", unsigned, not the zeros behind the point alone
    // (0.001 in two places would read "00").
    if (!scientific && L.lenI == 0 && m <= L.Z) {
        buffer[0] = '0';
        buffer[1] = 0;
        return 1;
    }
    out = scientific ? writeScientific(out, L, w) : writeFixed(out, L, m);
    *out = 0;
    return int(out - buffer);
}
