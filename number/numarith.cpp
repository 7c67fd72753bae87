// Addition, subtraction and multiplication of NUMBER records on base-100
// digits, the product on limbs of four digits. Null operands act as zero;
// only NumpPack rounds or clamps.
#include "numrecord.h"

#include <cstdint>
#include <cstring>

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

// Eight digits (0..99) in base 100, the last in the low byte: the block of
// work[0..8) turned so that carries run from the low byte up.
inline uint64_t loadDigits8(const BYTE* p) { return __builtin_bswap64(NumpLoad8(p)); }
inline void storeDigits8(BYTE* p, uint64_t w) { NumpStore8(p, __builtin_bswap64(w)); }

// a + b + carry on eight base-100 digits at once. Each byte of b is raised by
// 156, so that a byte of the binary sum passes 255 exactly when its digits'
// sum reaches 100; the bytes that did not pass take the 156 off again.
// *carry (0 or 1) comes in at the low digit and goes out of the high one.
inline uint64_t addDigits8(uint64_t a, uint64_t b, unsigned* carry) {
    uint64_t raised = b + 156 * kNumpOnes, sum;
    unsigned out = __builtin_add_overflow(a, raised, &sum);
    out |= __builtin_add_overflow(sum, uint64_t(*carry), &sum);
    uint64_t carriedOut = ((sum ^ a ^ raised) & kNumpOnes) >> 8 | uint64_t(out) << 56;
    *carry = out;
    return sum - (~carriedOut & kNumpOnes) * 156;
}

// a - b - borrow on eight base-100 digits at once: a byte that borrowed from
// the next reads 256 more than its digit difference and takes 156 off.
inline uint64_t subtractDigits8(uint64_t a, uint64_t b, unsigned* borrow) {
    uint64_t difference;
    unsigned out = __builtin_sub_overflow(a, b, &difference);
    out |= __builtin_sub_overflow(difference, uint64_t(*borrow), &difference);
    uint64_t borrowedOut = ((difference ^ a ^ b) & kNumpOnes) >> 8 | uint64_t(out) << 56;
    *borrow = out;
    return difference - (borrowedOut & kNumpOnes) * 156;
}

// top +/- bottom on the magnitudes, top >= bottom. The bottom's digits that
// fall outside the work area are dropped first, unrounded.
int addMagnitudes(tagNUMBER* out, const NumpOperand& top, const NumpOperand& bottom, bool add, bool negative) {
    int shift = top.exponent - bottom.exponent; // >= 0: the top's exponent is the larger
    int bottomCount = bottom.count;
    int excess = shift + bottomCount + (add ? 1 : 0) - kWorkDigits;
    if (excess > 0) bottomCount = bottomCount - excess < 0 ? 0 : bottomCount - excess;

    int lead = add ? 1 : 0; // a place in front for the last carry
    int count = top.count;
    if (bottomCount > 0 && shift + bottomCount > count) count = shift + bottomCount;
    count += lead;

    if (NumpAnyAbove99(top.digits, top.count) || NumpAnyAbove99(bottom.digits, bottomCount)) {
        // Digit values above 99 (records that aren't normal): digit by digit,
        // as the blocks of eight can't hold them.
        BYTE work[kWorkDigits + 2] = {};
        for (int i = 0; i < top.count; ++i) work[lead + i] = top.digits[i];
        int carry = 0;
        for (int i = count - 1; i >= 0; --i) {
            int j = i - lead - shift; // the bottom digit at this place
            int digit = (j >= 0 && j < bottomCount) ? bottom.digits[j] : 0;
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

    // Both aligned in 24 places (lead + top.count <= 24, and lead + shift +
    // bottomCount <= 24 after the drop), then three blocks from the last.
    BYTE work[kWorkDigits] = {}, other[kWorkDigits] = {};
    NumpCopy(work + lead, top.digits, top.count);
    if (bottomCount > 0) NumpCopy(other + lead + shift, bottom.digits, bottomCount);
    unsigned carry = 0;
    for (int i = kWorkDigits - 8; i >= 0; i -= 8) {
        uint64_t a = loadDigits8(work + i), b = loadDigits8(other + i);
        storeDigits8(work + i, add ? addDigits8(a, b, &carry) : subtractDigits8(a, b, &carry));
    }
    return NumpWriteNormal(out, work, count, negative, top.exponent + lead);
}

// An operand's digits, read straight from the record, at `offset` in a
// zeroed area of 24 places; those behind the area are dropped, unrounded.
void place(BYTE* area, const BYTE* data, int count, bool negative, int offset) {
    int n = kWorkDigits - offset < count ? kWorkDigits - offset : count;
    if (n <= 0) return;
    if (negative)
        NumpComplement(area + offset, data + 1, n);
    else
        NumpCopy(area + offset, data + 1, n);
}

bool anyBlock(const BYTE* area, uint64_t (*test)(uint64_t)) {
    return (test(NumpLoad8(area)) | test(NumpLoad8(area + 8)) | test(NumpLoad8(area + 16))) != 0;
}
uint64_t itself(uint64_t w) { return w; }

// The sum or difference of two records that both have digits, all 0..99,
// with none of the bottom's left over in front of the work area: each
// record's digits go straight to their place in the work area, aligned by
// the exponents, and the top is the larger exponent or, for equal ones, the
// larger area. The same steps as addMagnitudes, which takes every other
// case; false when it must.
bool addInPlace(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    int la = NumpLengthArith(a), lb = NumpLengthArith(b);
    if (la < 2 || la > 24 || lb < 2 || lb > 24) return false;
    const BYTE *da = a->abData, *db = b->abData;
    bool negA = !(da[0] & 0x80), negB = !(db[0] & 0x80);
    int ea = (negA ? ~da[0] : da[0]) & 0x7F, eb = (negB ? ~db[0] : db[0]) & 0x7F;
    bool add = (negA + negB + subtract) % 2 == 0;
    int lead = add ? 1 : 0, top = ea > eb ? ea : eb;
    BYTE wa[kWorkDigits] = {}, wb[kWorkDigits] = {};
    place(wa, da, negA ? la - 2 : la - 1, negA, lead + top - ea);
    place(wb, db, negB ? lb - 2 : lb - 1, negB, lead + top - eb);
    if (anyBlock(wa, NumpAbove99) || anyBlock(wb, NumpAbove99)) return false;
    if (!anyBlock(wa, itself) || !anyBlock(wb, itself)) return false; // no digits, or none left in the area

    bool aTop = ea != eb ? ea > eb : true;
    for (int i = 0; ea == eb && i < kWorkDigits; i += 8) {
        uint64_t x = loadDigits8(wa + i), y = loadDigits8(wb + i);
        if (x != y) {
            aTop = x > y;
            break;
        }
    }
    BYTE* work = aTop ? wa : wb;
    const BYTE* other = aTop ? wb : wa;
    unsigned carry = 0;
    for (int i = kWorkDigits - 8; i >= 0; i -= 8) {
        uint64_t x = loadDigits8(work + i), y = loadDigits8(other + i);
        storeDigits8(work + i, add ? addDigits8(x, y, &carry) : subtractDigits8(x, y, &carry));
    }
    bool negative = aTop ? negA : negB != subtract;
    NumpWriteNormal(out, work, kWorkDigits, negative, top + lead);
    return true;
}

int addOrSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    if (addInPlace(out, a, b, subtract)) return out->bLength;
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

// The product of operands whose digit values may exceed 99 (records that
// aren't normal), in limbs of 10^4 with 32-bit columns as it always was:
// such digits can make a column wrap, and the result must stay what it was.
int multiplyAnyDigits(tagNUMBER* out, const NumpOperand& x, const NumpOperand& y, int negative) {
    BYTE product[2 * 24 + 1] = {};
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

constexpr uint64_t kLimb8 = 100000000; // four base-100 digits

// Digits 0..99 as limbs of four digits from the front, the missing digits
// of the last one 0; returns the limb count.
int toLimbs8(NumpOperand& v, uint64_t* limbs) {
    NumpStore4(v.digits + v.count, 0); // count <= 23: inside the room behind the digits
    int n = (v.count + 3) / 4;
    const BYTE* d = v.digits;
    for (int i = 0; i < n; ++i, d += 4) limbs[i] = NumpLimbOf4(d);
    return n;
}

} // namespace

int OXLAPI NumMultiply(tagNUMBER* out, tagNUMBER* a, tagNUMBER* b) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    int negative = x.negative != y.negative;
    if (x.count == 0 || y.count == 0) {
        BYTE none[1] = {0};
        return NumpWrite(out, none, 0, 0, NUM_EXP_BIAS);
    }
    if (NumpAnyAbove99(x.digits, x.count) || NumpAnyAbove99(y.digits, y.count))
        return multiplyAnyDigits(out, x, y, negative);

    // Schoolbook on limbs of four digits (0..10^8 - 1), the column sums
    // gathered first and carried once: the exact product, as digit by digit
    // would give it. A column holds at most 6 products below 10^16, inside
    // 64 bits.
    uint64_t xl[6], yl[6], columns[12] = {};
    int nx = toLimbs8(x, xl), ny = toLimbs8(y, yl);
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j) columns[i + j + 1] += xl[i] * yl[j];
    // With both first digits above 0 the product is at least 100^-2, so its
    // first digit above 0 is among the first two; NumpPack then reads no
    // further than 23 digits behind that one and the digit that rounds them,
    // which the first 7 columns hold. The later columns give only carries.
    int columnCount = nx + ny, shown = columnCount;
    if (x.digits[0] != 0 && y.digits[0] != 0 && shown > 7) shown = 7;
    BYTE product[4 * 12];
    uint64_t carry = 0;
    int k = columnCount - 1;
    for (; k >= shown; --k) carry = (columns[k] + carry) / kLimb8;
    for (; k >= 0; --k) {
        uint64_t t = columns[k] + carry;
        carry = t / kLimb8;
        NumpDigitsOf4(uint32_t(t - carry * kLimb8), product + 4 * k);
    }
    return NumpWriteNormal(out, product, 4 * shown, negative, x.exponent + y.exponent - NUM_EXP_BIAS);
}
