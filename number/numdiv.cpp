// Division of NUMBER records: the first 24 base-100 digits of the quotient,
// truncated, which NumpPack then rounds. Long division (Knuth's algorithm D)
// gives the quotient exactly, so it may run on any base: on 64-bit binary
// words for records whose digits are all 0..99 (straight from the bytes of
// two normal records, unpacked for the others), and digit by digit for the
// rest, whose digit values above 99 the limbs would not hold.
#include "numrecord.h"
#include "numwide.h"

#include <cstdint>
#include <cstring>

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

// Long division with a binary remainder -----------------------------------

constexpr uint64_t kLimb16 = 10000000000000000ull; // eight base-100 digits

constexpr uint64_t kLimb8 = 100000000; // four base-100 digits

// Eight digits (0..99, the first at the lowest address) as one limb.
inline uint64_t limbOf8(uint64_t w) {
    uint64_t l = NumpTwoLimbsOf8(w);
    return uint32_t(l) * kLimb8 + (l >> 32);
}

// A record's 1..23 digits, complemented when negative, as three limbs of
// eight digits (10^16) from the front, the missing digits 0; false when a
// digit is above 99 or the first is 0.
inline bool limbs16Of(const BYTE* data, int count, bool negative, uint64_t* limbs) {
    BYTE room[kNumpPlaces];
    std::memset(room, 0, kNumpPlaces);
    NumpCopyDigits(room, data + 1, count, negative);
    uint64_t w0 = NumpLoad8(room), w1 = NumpLoad8(room + 8), w2 = NumpLoad8(room + 16);
    const uint64_t up = 28 * kNumpOnes; // a byte above 99 carries into bit 7
    if (((w0 | w1 | w2 | (w0 + up) | (w1 + up) | (w2 + up)) & kNumpHigh) || (w0 & 0xFF) == 0) return false;
    limbs[0] = limbOf8(w0);
    limbs[1] = count > 8 ? limbOf8(w1) : 0;
    limbs[2] = count > 16 ? limbOf8(w2) : 0;
    return true;
}

// Eight digits of a limb below 10^16 as the area's word, the first in the
// top byte.
inline uint64_t placesOfLimb(uint64_t limb) {
    uint32_t high = uint32_t(limb / kLimb8), low = uint32_t(limb - high * kLimb8);
    uint32_t h1 = high / 10000, l1 = low / 10000;
    const uint16_t* pair = kNumpDigitPairs.pair;
    uint64_t memory = pair[h1] | uint64_t(pair[high - h1 * 10000]) << 16 | uint64_t(pair[l1]) << 32 |
                      uint64_t(pair[low - l1 * 10000]) << 48;
    return __builtin_bswap64(memory);
}

// w[0..k) * 10^16 + limb as w[0..k], least significant word first.
inline void appendLimb(uint64_t* w, int k, uint64_t limb) {
    uint64_t carry = limb;
    for (int i = 0; i < k; ++i) {
        uint64_t lo, hi = NumpMulWide(w[i], kLimb16, &lo);
        lo += carry;
        carry = hi + (lo < carry);
        w[i] = lo;
    }
    w[k] = carry;
}

// w >> (64 - shift) for a shift of 0..63 (0 for 0).
inline uint64_t spill(uint64_t w, int shift) { return (w >> 1) >> (63 - shift); }

// One step of the long division by d[0..n) (n = 2 or 3 words, the binary
// form of a divisor below 10^50): the remainder r[0..n), below d, becomes
// r * 10^16 + limb, and the next limb of the quotient, below 10^16, comes
// off. The estimate is Knuth's: the top two words of r and d shifted so
// that d's top bit is set (r's top word is then below 2^54, d's at least
// 2^63), the quotient of the one by the other's top word, at most 2 too
// high, and tested once against the next word. A second test could never
// take another 1 off: the first leaves the partial remainder at d's top
// word or more, above the estimate times the next word over 2^64. At most
// 1 too high then, when the subtraction goes below 0 and d is added back.
inline uint64_t divideStep(uint64_t* r, const uint64_t* d, int n, int shift, uint64_t limb) {
    appendLimb(r, n, limb);
    uint64_t dTop = d[n - 1] << shift | spill(d[n - 2], shift);
    uint64_t dNext = d[n - 2] << shift | (n > 2 ? spill(d[n - 3], shift) : 0);
    uint64_t u2 = r[n] << shift | spill(r[n - 1], shift), u1 = r[n - 1] << shift | spill(r[n - 2], shift);
    uint64_t u0 = r[n - 2] << shift | (n > 2 ? spill(r[n - 3], shift) : 0);
    uint64_t rhat, qhat = NumpDivWide(u2, u1, dTop, &rhat), testLo, testHi = NumpMulWide(qhat, dNext, &testLo);
    if (testHi > rhat || (testHi == rhat && testLo > u0)) --qhat;
    uint64_t carry = 0, borrow = 0;
    for (int i = 0; i < n; ++i) {
        uint64_t lo, hi = NumpMulWide(qhat, d[i], &lo);
        lo += carry;
        carry = hi + (lo < carry);
        uint64_t t = r[i] - lo, b = r[i] < lo;
        r[i] = t - borrow;
        borrow = b + (t < borrow);
    }
    if (r[n] < carry || r[n] - carry < borrow) { // one too many: add d back
        --qhat;
        uint64_t c = 0;
        for (int i = 0; i < n; ++i) {
            uint64_t t = r[i] + c, sum = t + d[i];
            c = (t < c) + (sum < t);
            r[i] = sum;
        }
    }
    return qhat;
}

// The first 24 digits of the quotient of two digit strings (0..99 each, the
// divisor's first above 0), as the area that writes the record. With X and
// Y the 24 places of each as integers (0.x = X / 100^24), they are
// floor(X * 100^23 / Y) = floor(X * 10^48 / (100 * Y)), below 10^48. In
// limbs of eight digits X is x0 x1 x2 and Y is y0..y(n-1) and zeros; the
// division runs on the limbs x0 x1 x2 0 0 0 less those zeros, by
// d = 100 * (y0..y(n-1)) as a binary integer, with a binary remainder that
// takes the next limb at each step; each step gives a limb of the quotient,
// the first one 0 (x0..x(n-1) is below d). x[3..5] are the zeros.
__attribute__((always_inline)) inline NumpArea quotientArea(const uint64_t* x, const uint64_t* y, int n) {
    uint64_t q[3];
    if (n == 1) {
        uint64_t d = 100 * y[0], r = x[0];
        for (int i = 0; i < 3; ++i) {
            uint64_t lo, hi = NumpMulWide(r, kLimb16, &lo);
            lo += x[1 + i];
            hi += lo < x[1 + i];
            q[i] = NumpDivWide(hi, lo, d, &r);
        }
    } else {
        // d and the first remainder: n words each (100 * Y < 10^50).
        uint64_t d[3], r[4];
        d[0] = y[0];
        r[0] = x[0];
        for (int k = 1; k < n; ++k) {
            appendLimb(d, k, y[k]);
            appendLimb(r, k, x[k]);
        }
        uint64_t carry = 0;
        for (int i = 0; i < n; ++i) {
            uint64_t lo, hi = NumpMulWide(d[i], 100, &lo);
            lo += carry;
            carry = hi + (lo < carry);
            d[i] = lo;
        }
        int shift = __builtin_clzll(d[n - 1]);
        for (int i = 0; i < 3; ++i) q[i] = divideStep(r, d, n, shift, x[n + i]);
    }
    return {placesOfLimb(q[0]), placesOfLimb(q[1]), placesOfLimb(q[2])};
}

// The quotient of two records of 2 to 24 data bytes whose digits are all
// 0..99, the first above 0, straight from their bytes; false for every
// other record.
__attribute__((always_inline)) inline bool divideNormal(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
    int la, lb;
    if (!NumpPlainLengths(a, b, &la, &lb)) return false;
    const BYTE *da = a->abData, *db = b->abData;
    int signA = int(int8_t(da[0])) >> 7, signB = int(int8_t(db[0])) >> 7; // 0 negative, -1 positive
    int na = la - 2 - signA, nb = lb - 2 - signB;
    uint64_t x[6], y[3];
    if (na <= 0 || nb <= 0 || !limbs16Of(da, na, !signA, x) || !limbs16Of(db, nb, !signB, y)) return false;
    int ea = (da[0] ^ signA ^ 0x7F) & 0x7F, eb = (db[0] ^ signB ^ 0x7F) & 0x7F;
    x[3] = x[4] = x[5] = 0;
    NumpWriteArea(out, quotientArea(x, y, (nb + 7) >> 3), signA != signB, ea - eb + 65);
    return true;
}

// Every case: both records unpacked.
__attribute__((noinline)) int divideDigits(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    BYTE q[kQuotientDigits + 1]; // read only as far as written
    if (x.count == 0) return NumpWrite(out, q, 0, 0, NUM_EXP_BIAS);
    if (y.count == 0) { // division by zero: the largest value, rounded and clamped to 10^118
        std::memset(q, 99, kQuotientDigits);
        return NumpWrite(out, q, kQuotientDigits, negative, NUM_MAX_EXP);
    }

    tidyDivisor(y);
    if (!NumpAnyAbove99(x.digits, x.count)) {
        BYTE room[2 * kNumpPlaces] = {};
        NumpCopy(room, x.digits, x.count);
        NumpCopy(room + kNumpPlaces, y.digits, y.count);
        uint64_t xl[6] = {}, yl[3];
        for (int i = 0; i < 3; ++i) {
            xl[i] = limbOf8(NumpLoad8(room + 8 * i));
            yl[i] = limbOf8(NumpLoad8(room + kNumpPlaces + 8 * i));
        }
        NumpWriteArea(out, quotientArea(xl, yl, (y.count + 7) >> 3), negative, x.exponent - y.exponent + 65);
        return out->bLength;
    }
    // Digits above 99 (a dividend that isn't a normal record): digit by digit
    // in base 100, as the limbs can't take such digits.
    int stored = 0;
    {
        BYTE u[kDividendDigits + 2] = {}, d[kQuotientDigits + 2] = {};
        std::memcpy(u + 1, x.digits, x.count);
        std::memcpy(d + 1, y.digits, y.count);
        int f = 100 / (d[1] + 1); // normalisation: the divisor's first digit becomes 50 or more
        scale(u, x.count + 1, f);
        scale(d, y.count + 1, f);

        int n = y.count;
        for (int j = 0; stored < kQuotientDigits; ++j) {
            int digit = estimate(u + j, d[1], d[2]);
            while (!subtractMultiple(u + j, d, n, digit)) --digit;
            q[stored++] = BYTE(digit);
            if (zeroFrom(u, j)) break;
        }
    }
    return NumpWrite(out, q, stored, negative, x.exponent - y.exponent + 65);
}

} // namespace

int OXLAPI NumDivide(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
    if (divideNormal(out, a, b)) return out->bLength;
    return divideDigits(out, a, b);
}
