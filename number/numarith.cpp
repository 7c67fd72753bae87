// Addition, subtraction and multiplication of NUMBER records, digit by digit
// in base 100. Null operands act as zero; only NumpPack rounds or clamps.
#include "numrecord.h"

#include <cstdint>

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
    return NumpWrite(out, work, count, negative, top.exponent + lead);
}

int addOrSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    if (x.count == 0) x.exponent = y.exponent;
    if (y.count == 0) y.exponent = x.exponent;

    bool aTop = compareMagnitudes(x, y) >= 0;
    bool add = ((x.negative != 0) + (y.negative != 0) + subtract) % 2 == 0;
    bool negative = aTop ? x.negative != 0 : (y.negative != 0) != subtract;
    return aTop ? addMagnitudes(out, x, y, add, negative) : addMagnitudes(out, y, x, add, negative);
}

} // namespace

int OXLAPI NumAddition(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) { return addOrSubtract(out, a, b, false); }

int OXLAPI NumSubtract(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) { return addOrSubtract(out, a, b, true); }

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

int OXLAPI NumMultiply(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    BYTE product[2 * 24 + 1] = {};
    if (x.count == 0 || y.count == 0) return NumpWrite(out, product, 0, 0, NUM_EXP_BIAS);

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
    return NumpWrite(out, product, 2 * (nx + ny), negative, x.exponent + y.exponent - NUM_EXP_BIAS);
}
