// Division of NUMBER records: long division in base 100 (Knuth's algorithm
// D), up to 24 quotient digits, which NumpPack then rounds.
#include "numrecord.h"

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

} // namespace

int OXLAPI NumDivide(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    BYTE q[kQuotientDigits + 1] = {};
    if (x.count == 0) return NumpWrite(out, q, 0, 0, NUM_EXP_BIAS);
    if (y.count == 0) { // division by zero: the largest value, rounded and clamped to 10^118
        std::memset(q, 99, kQuotientDigits);
        return NumpWrite(out, q, kQuotientDigits, negative, NUM_MAX_EXP);
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
    return NumpWrite(out, q, stored, negative, x.exponent - y.exponent + 65);
}
