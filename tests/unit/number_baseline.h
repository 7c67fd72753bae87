// The decimal engine's arithmetic, its text reader and writer as they were
// first written: digit by digit in base 100, character by character, a
// plain NumpPack and NumpUnpack. The faster engine must give the
// same bytes for every operand, normal records or not; the differential tests
// run both side by side.
#ifndef OXL_TESTS_NUMBER_BASELINE_H
#define OXL_TESTS_NUMBER_BASELINE_H

#include "core/libstate.h"
#include "number/numrecord.h"

#include <cstdint>
#include <cstring>

namespace numbaseline {

namespace {

constexpr BYTE kTerminator = 0x65;

// Rounds digits[0..limit) by digits[limit] (half up on the magnitude, base
// 100) and returns the new count. A carry out of the first digit leaves the
// single digit 1 and raises the exponent.
int roundToLimit(BYTE* digits, int limit, int* exponent) {
    if (digits[limit] + 50 < 100) return limit;
    for (int i = limit - 1; i >= 0; --i) {
        if (++digits[i] < 100) return i + 1; // digits behind i are dropped
        digits[i] -= 100;
    }
    digits[0] = 1;
    ++*exponent;
    return 1;
}

// Digit values above 99 come only from records whose bytes were never a
// normal record (unpack does not validate). Carrying the excess forward
// keeps the value unpack read and makes the record normal again; a carry
// out of the front digit takes the last digit's place.
void carryOversizedDigits(BYTE* digits, int count, int* exponent) {
    int carry = 0;
    for (int i = count - 1; i >= 0; --i) {
        int v = digits[i] + carry;
        digits[i] = BYTE(v % 100);
        carry = v / 100;
    }
    if (carry) {
        for (int i = count - 1; i > 0; --i) digits[i] = digits[i - 1];
        digits[0] = BYTE(carry);
        ++*exponent;
    }
}

} // namespace

inline int unpack(BYTE* digits, const BYTE* data, int* length, int* exponent) {
    int len = *length;
    if (len < 2 || len > 24) {
        *length = 0;
        *exponent = 0xC0;
        return 0;
    }
    int negative = !(data[0] & 0x80);
    int count;
    if (!negative) {
        count = len - 1;
        for (int i = 0; i < count; ++i) digits[i] = data[1 + i];
        *exponent = data[0] & 0x7F;
    } else {
        count = len - 2; // the last byte is the terminator, whatever it holds
        for (int i = 0; i < count; ++i) digits[i] = BYTE(100 - data[1 + i]);
        *exponent = BYTE(~data[0]) & 0x7F;
    }
    while (count > 0 && digits[count - 1] == 0) --count;
    *length = count;
    return negative;
}

inline int pack(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord) {
    for (int i = 0; i < count; ++i) {
        if (digits[i] > 99) {
            carryOversizedDigits(digits, count, &exponent);
            break;
        }
    }
    int first = 0;
    while (first < count && digits[first] == 0) {
        ++first;
        --exponent;
    }
    digits += first;
    count -= first;

    int limit = negative ? NUM_MAX_DIGITS_NEG : NUM_MAX_DIGITS_POS;
    if (count > limit) count = roundToLimit(digits, limit, &exponent);

    while (count > 0 && digits[count - 1] == 0) --count;
    int written;
    if (count == 0) { // zero: no sign, no shift
        data[0] = 0x80 + NUM_EXP_BIAS;
        written = 1;
        negative = 0;
    } else {
        if (exponent < NUM_MIN_EXP) exponent = NUM_MIN_EXP;
        if (exponent > NUM_MAX_EXP) exponent = NUM_MAX_EXP;
        if (!negative) {
            data[0] = BYTE(0x80 + exponent);
            for (int i = 0; i < count; ++i) data[1 + i] = digits[i];
            written = 1 + count;
        } else {
            data[0] = BYTE(~(0x80 + exponent));
            for (int i = 0; i < count; ++i) data[1 + i] = BYTE(100 - digits[i]);
            data[1 + count] = kTerminator;
            written = 2 + count;
        }
    }
    if (padToWord) {
        int padded = (written + 3) & ~3;
        if (!negative) {
            while (written < padded) data[written++] = 0x00;
        } else {
            while (written < padded) data[written++ - 1] = 0x64; // zero digits before the terminator
            data[written - 1] = kTerminator;
        }
    }
    return written;
}

inline NumpOperand readOperand(const tagNUMBER* n, int length) {
    NumpOperand u;
    u.count = length;
    u.negative = unpack(u.digits, n->abData, &u.count, &u.exponent);
    return u;
}
inline int writeRecord(tagNUMBER* out, BYTE* digits, int count, int negative, int exponent) {
    out->bLength = BYTE(pack(out->abData, digits, count, negative, exponent, 0));
    return out->bLength;
}


namespace {

// The sum's work area: 24 digit positions, the top's alignment fixing the
// first one.
constexpr int kWorkDigits = 24;

// Order of the magnitudes by exponent, then digit by digit with missing
// digits read as 0. Equal magnitudes give 0.
int compareMagnitudes(const NumpOperand& a, const NumpOperand& b) {
    if (a.exponent != b.exponent) return a.exponent < b.exponent ? -1 : 1;
    int n = a.count > b.count ? a.count : b.count;
    for (int i = 0; i < n; ++i) {
        int x = i < a.count ? a.digits[i] : 0, y = i < b.count ? b.digits[i] : 0;
        if (x != y) return x < y ? -1 : 1;
    }
    return 0;
}

// top +/- bottom on the magnitudes, top >= bottom. The bottom's digits that
// fall outside the work area are dropped first, unrounded.
int addMagnitudes(tagNUMBER* out, const NumpOperand& top, NumpOperand bottom, bool add, bool negative) {
    BYTE work[kWorkDigits + 2] = {};
    int shift = top.exponent - bottom.exponent;
    int excess = shift + bottom.count + (add ? 1 : 0) - kWorkDigits;
    if (excess > 0) bottom.count = bottom.count - excess < 0 ? 0 : bottom.count - excess;

    int lead = add ? 1 : 0; // a place in front for the last carry
    int count = top.count;
    for (int i = 0; i < top.count; ++i) work[lead + i] = top.digits[i];
    if (bottom.count > 0 && shift + bottom.count > count) count = shift + bottom.count;
    count += lead;

    int carry = 0;
    for (int i = count - 1; i >= 0; --i) {
        int j = i - lead - shift; // the bottom digit at this place
        int digit = (j >= 0 && j < bottom.count) ? bottom.digits[j] : 0;
        if (add) {
            int sum = work[i] + digit + carry;
            carry = sum >= 100;
            work[i] = BYTE(sum - (carry ? 100 : 0));
        } else {
            int sum = work[i] + 100 - digit - carry;
            carry = sum < 100; // the borrow
            work[i] = BYTE(sum - (carry ? 0 : 100));
        }
    }
    return writeRecord(out, work, count, negative, top.exponent + lead);
}

int addOrSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    NumpOperand x = readOperand(a, NumpLengthArith(a)), y = readOperand(b, NumpLengthArith(b));
    if (x.count == 0) x.exponent = y.exponent;
    if (y.count == 0) y.exponent = x.exponent;

    bool aTop = compareMagnitudes(x, y) >= 0;
    bool add = ((x.negative != 0) + (y.negative != 0) + subtract) % 2 == 0;
    bool negative = aTop ? x.negative != 0 : (y.negative != 0) != subtract;
    return aTop ? addMagnitudes(out, x, y, add, negative) : addMagnitudes(out, y, x, add, negative);
}

} // namespace

inline int Addition(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) { return addOrSubtract(out, a, b, false); }

inline int Subtract(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) { return addOrSubtract(out, a, b, true); }

namespace {
// Base-100 digits as base-10^4 limbs from the front (a missing last digit is
// 0, so the limbs keep the digits' places); returns the limb count.
int toLimbs(const NumpOperand& v, uint32_t* limbs) {
    int n = (v.count + 1) / 2;
    for (int i = 0; i < n; ++i) {
        int lo = 2 * i + 1 < v.count ? v.digits[2 * i + 1] : 0;
        limbs[i] = uint32_t(v.digits[2 * i]) * 100 + uint32_t(lo);
    }
    return n;
}
} // namespace

inline int Multiply(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) {
    NumpOperand x = readOperand(a, NumpLengthArith(a)), y = readOperand(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    BYTE product[2 * 24 + 1] = {};
    if (x.count == 0 || y.count == 0) return writeRecord(out, product, 0, 0, NUM_EXP_BIAS);

    // Schoolbook on pairs of base-100 digits (limbs of 0..9999), the column
    // sums gathered first and carried once: the exact product, as digit by
    // digit would give it, at a quarter of the multiplications. A column
    // holds at most 12 products below 10^8, well inside 32 bits.
    uint32_t xl[12], yl[12], columns[24] = {};
    int nx = toLimbs(x, xl), ny = toLimbs(y, yl);
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j) columns[i + j + 1] += xl[i] * yl[j];
    uint32_t carry = 0;
    for (int k = nx + ny - 1; k >= 0; --k) {
        uint32_t t = columns[k] + carry;
        uint32_t limb = t % 10000;
        carry = t / 10000;
        product[2 * k] = BYTE(limb / 100);
        product[2 * k + 1] = BYTE(limb % 100);
    }
    return writeRecord(out, product, 2 * (nx + ny), negative, x.exponent + y.exponent - NUM_EXP_BIAS);
}


namespace {

constexpr int kQuotientDigits = 24;
constexpr int kDividendDigits = 48;

// Multiplies digits[0..count) by a small factor in place; the first digit is
// a leading zero that takes the carry.
void scale(BYTE* digits, int count, int factor) {
    int carry = 0;
    for (int i = count - 1; i >= 0; --i) {
        int t = digits[i] * factor + carry;
        digits[i] = BYTE(t % 100);
        carry = t / 100;
    }
}

// u[0..n] -= q * d[0..n]; false (and u unchanged) when that would go below 0.
bool subtractMultiple(BYTE* u, const BYTE* d, int n, int q) {
    BYTE saved[kQuotientDigits + 2];
    std::memcpy(saved, u, n + 1);
    int borrow = 0;
    for (int k = n; k >= 0; --k) {
        int v = u[k] - q * d[k] - borrow;
        borrow = 0;
        if (v < 0) {
            borrow = (-v + 99) / 100;
            v += borrow * 100;
        }
        u[k] = BYTE(v);
    }
    if (borrow == 0) return true;
    std::memcpy(u, saved, n + 1);
    return false;
}

// The next quotient digit from the two leading digits of the remainder,
// corrected once by the divisor's second digit.
int estimate(const BYTE* u, int d1, int d2) {
    int top = u[0] * 100 + u[1];
    int q = u[0] == d1 ? 99 : top / d1;
    int r = top - q * d1;
    int p = q * d2, t = r * 100 + u[2];
    while (p > t) {
        --q;
        p -= d2;
        t += d1 * 100;
    }
    return q;
}

// Only a record that isn't normal has a leading zero digit or digit bytes
// that read above 99; such a divisor is brought to a form whose normalisation
// is defined (value kept for the zeros, the digits held to 99).
void tidyDivisor(NumpOperand& y) {
    int first = 0;
    while (y.digits[first] == 0) ++first; // count > 0: some digit isn't 0
    for (int i = first; i < y.count; ++i) {
        y.digits[i - first] = y.digits[i] > 99 ? 99 : y.digits[i];
    }
    y.count -= first;
    y.exponent -= first;
}

bool zeroFrom(const BYTE* u, int from) {
    for (int i = from; i < kDividendDigits; ++i)
        if (u[i]) return false;
    return true;
}

} // namespace

inline int Divide(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) {
    NumpOperand x = readOperand(a, NumpLengthArith(a)), y = readOperand(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    BYTE q[kQuotientDigits + 1] = {};
    if (x.count == 0) return writeRecord(out, q, 0, 0, NUM_EXP_BIAS);
    if (y.count == 0) { // division by zero: the largest value, rounded and clamped to 10^118
        std::memset(q, 99, kQuotientDigits);
        return writeRecord(out, q, kQuotientDigits, negative, NUM_MAX_EXP);
    }

    tidyDivisor(y);
    BYTE u[kDividendDigits + 2] = {}, d[kQuotientDigits + 2] = {};
    std::memcpy(u + 1, x.digits, x.count);
    std::memcpy(d + 1, y.digits, y.count);
    int f = 100 / (d[1] + 1); // normalisation: the divisor's first digit becomes 50 or more
    scale(u, x.count + 1, f);
    scale(d, y.count + 1, f);

    int n = y.count, stored = 0;
    for (int j = 0; stored < kQuotientDigits; ++j) {
        int digit = estimate(u + j, d[1], d[2]);
        while (!subtractMultiple(u + j, d, n, digit)) --digit;
        q[stored++] = BYTE(digit);
        if (zeroFrom(u, j)) break;
    }
    return writeRecord(out, q, stored, negative, x.exponent - y.exponent + 65);
}

inline int Round(tagNUMBER* out, tagNUMBER* in, int scale) {
    NumpOperand x = readOperand(in, NumpLength(in));
    BYTE* d = x.digits;
    int v = scale + 2 * (x.exponent - NUM_EXP_BIAS); // decimal places kept, from the first digit's
    if (v < 0) return writeRecord(out, d, 0, 0, NUM_EXP_BIAS);
    if (v >= 2 * x.count) return writeRecord(out, d, x.count, x.negative, x.exponent);

    int at = v / 2;
    d[at] = BYTE(d[at] + (v % 2 ? 5 : 50)); // half up on the magnitude
    for (int i = at; d[i] >= 100; --i) {
        d[i] = BYTE(d[i] - 100);
        if (i == 0) { // the carry ran out of the first digit
            d[0] = 1;
            return writeRecord(out, d, 1, x.negative, x.exponent + 1);
        }
        ++d[i - 1];
    }
    int count = at;
    if (v % 2) {
        d[at] = BYTE(d[at] - d[at] % 10);
        count = at + 1;
    }
    return writeRecord(out, d, count, x.negative, x.exponent);
}

inline int Truncate(tagNUMBER* n, int precision, int scale) {
    int length = NumpLength(n);
    if (length == 0 || length > 24) return 0;
    NumpOperand x = readOperand(n, length);
    BYTE* d = x.digits;
    int e = x.exponent - NUM_EXP_BIAS, count = x.count;

    int c = 2 * e - precision + scale; // integer places too many, from the front
    if (c > 0) {
        int whole = c / 2 < count ? c / 2 : count;
        for (int i = 0; i < whole; ++i) d[i] = 0;
        if (c % 2 && c / 2 < count) d[c / 2] = BYTE(d[c / 2] % 10);
    }
    c = 2 * (count - e) - scale; // fraction places too many, from the end
    if (c > 0) {
        count = c / 2 < count ? count - c / 2 : 0;
        if (c % 2 && count > 0) d[count - 1] = BYTE(d[count - 1] - d[count - 1] % 10);
    }
    writeRecord(n, d, count, x.negative, x.exponent);
    return 1;
}

inline int Power10(tagNUMBER* out, tagNUMBER* in, int power) {
    if (power + NUM_EXP_BIAS < NUM_MIN_EXP || power + NUM_EXP_BIAS > NUM_MAX_EXP) {
        out->bLength = 0;
        return 0;
    }
    // 10^power as a record: an odd power is the digit 10 one place lower.
    tagNUMBER factor;
    factor.bLength = 2;
    factor.abData[0] = BYTE(((power + 66) >> 1) - 96);
    factor.abData[1] = (power & 1) ? 10 : 1;
    return Multiply(out, in, &factor);
}

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

inline int AsciiToNumber(tagNUMBER* out, char* text) {
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
    writeRecord(out, digits, n / 2, negative, exponent);
    return int(p - text);
}

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

Layout layoutOf(const NumpOperand& v) {
    Layout L;
    L.negative = v.negative != 0;
    for (int i = 0; i < v.count; ++i) {
        L.t[L.lt++] = char('0' + v.digits[i] / 10);
        L.t[L.lt++] = char('0' + v.digits[i] % 10);
    }
    while (L.lt > 0 && L.t[L.lt - 1] == '0') --L.lt;
    L.x = 2 * (v.exponent - NUM_EXP_BIAS);
    if (L.lt > 0 && L.t[0] == '0') {
        std::memmove(L.t, L.t + 1, --L.lt);
        --L.x;
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
    std::memcpy(out, L.t, L.lenI);
    out = repeat(out + L.lenI, '0', L.P);
    if (point) *out++ = '.';
    out = repeat(out, '0', L.Z);
    if (fEnd > L.lenI) {
        std::memcpy(out, L.t + L.lenI, fEnd - L.lenI);
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

} // namespace

inline int ToAscii(tagNUMBER* n, char* buffer, WORD width) {
    int length = NumpLength(n);
    if (length == 0 || length > 24) {
        buffer[0] = 0;
        return 0;
    }
    Layout L = layoutOf(readOperand(n, length));

    char* out = buffer;
    int w = width;
    if (!L.zero && L.negative) {
        *out++ = '-';
        --w;
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
        if (L.Z > 0)
            --L.Z;
        else
            ++L.lenI;
        if (L.lenF > 0) --L.lenF;
        if (!scientific && L.lenI + L.P > m) {
            scientific = true;
            m = w - 5;
            L.Z = 0;
            if (m < 1) return 0; // no room for the exponent
        }
    }

    out = scientific ? writeScientific(out, L, w) : writeFixed(out, L, m);
    *out = 0;
    return int(out - buffer);
}

} // namespace numbaseline

#endif
