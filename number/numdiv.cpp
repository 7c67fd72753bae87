// Division of NUMBER records: the first 24 base-100 digits of the quotient,
// truncated, which NumpPack then rounds. Long division (Knuth's algorithm D)
// gives each digit exactly, so it may run on any base that holds whole
// digits: on limbs of four digits (10^8) with 64-bit integers for records
// whose digits are all 0..99, and digit by digit for the others, whose digit
// values above 99 the limbs would not hold.
#include "numrecord.h"

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

// Long division on limbs of 10^8 -------------------------------------------

constexpr int64_t kLimb = 100000000; // four base-100 digits
constexpr int kQuotientLimbs = kQuotientDigits / 4;

// limbs[i] = the four digits from digits[4 * i] on, the first the highest.
void toLimbs(const BYTE* digits, int count, int64_t* limbs) {
    for (int i = 0; i < count; ++i, digits += 4) limbs[i] = NumpLimbOf4(digits);
}

// The first 24 base-100 digits of 0.x / 0.y (the first one 0 when x's digits
// read as a fraction are below y's), truncated: the integer
// floor(X * 100^(23 + ny - nx) / Y) of the digit strings X and Y. The divisor
// is y's digits followed by zeros up to k whole limbs; the dividend, with the
// same zeros behind it and one zero digit in front, is 6 + k limbs. The
// quotient is below 100^24, six limbs, so the dividend's first k limbs are
// below the divisor and are the first remainder.
// x's digits are 0..99; y's are 0..99 with the first above 0.
void quotientDigits(const NumpOperand& x, const NumpOperand& y, BYTE* q) {
    int k = (y.count + 3) / 4;
    BYTE ud[kDividendDigits] = {}, vd[kQuotientDigits] = {};
    NumpCopy(ud + 1, x.digits, x.count);
    NumpCopy(vd, y.digits, y.count);
    int64_t u[kQuotientLimbs * 2 + 1], v[kQuotientLimbs] = {}, quotient[kQuotientLimbs];
    toLimbs(ud, kQuotientLimbs + k, u);
    toLimbs(vd, k, v);

    if (k == 1) { // a short divisor: one limb at a time
        int64_t r = u[0];
        for (int j = 1; j <= kQuotientLimbs; ++j) {
            int64_t t = r * kLimb + u[j];
            quotient[j - 1] = t / v[0];
            r = t % v[0];
        }
    } else {
        // Normalisation: the divisor's first limb becomes at least 10^8 / 2,
        // so that the estimate from two limbs is at most 2 too high. The
        // dividend's first k limbs stay below the divisor, so no carry
        // leaves them.
        int64_t f = kLimb / (v[0] + 1);
        if (f > 1) {
            int64_t carry = 0;
            for (int i = k - 1; i >= 0; --i) {
                int64_t t = v[i] * f + carry;
                v[i] = t % kLimb;
                carry = t / kLimb;
            }
            carry = 0;
            for (int i = kQuotientLimbs + k - 1; i >= 0; --i) {
                int64_t t = u[i] * f + carry;
                u[i] = t % kLimb;
                carry = t / kLimb;
            }
        }
        // Step j divides the k + 1 limbs from u[j - 1] on (below 10^8 times
        // v) by v, leaving the remainder in their place.
        for (int j = 1; j <= kQuotientLimbs; ++j) {
            int64_t* w = u + j - 1;
            int64_t top = w[0] * kLimb + w[1];
            int64_t qhat = top / v[0], rhat = top % v[0];
            while (qhat >= kLimb || qhat * v[1] > rhat * kLimb + w[2]) {
                --qhat;
                rhat += v[0];
                if (rhat >= kLimb) break;
            }
            int64_t carry = 0, borrow = 0;
            for (int i = k - 1; i >= 0; --i) {
                int64_t p = qhat * v[i] + carry;
                carry = p / kLimb;
                int64_t t = w[1 + i] - p % kLimb - borrow;
                borrow = t < 0;
                w[1 + i] = t + (borrow ? kLimb : 0);
            }
            w[0] -= carry + borrow;
            if (w[0] < 0) { // one too many: add the divisor back
                --qhat;
                int64_t c = 0;
                for (int i = k - 1; i >= 0; --i) {
                    int64_t t = w[1 + i] + v[i] + c;
                    c = t >= kLimb;
                    w[1 + i] = t - (c ? kLimb : 0);
                }
                w[0] += c;
            }
            quotient[j - 1] = qhat;
        }
    }
    for (int j = 0; j < kQuotientLimbs; ++j) NumpDigitsOf4(uint32_t(quotient[j]), q + 4 * j);
}

} // namespace

int OXLAPI NumDivide(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
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
        quotientDigits(x, y, q);
        return NumpWriteNormal(out, q, kQuotientDigits, negative, x.exponent - y.exponent + 65);
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
