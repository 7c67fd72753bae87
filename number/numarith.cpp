// Addition, subtraction and multiplication of NUMBER records on base-100
// digits, the product on limbs of four digits. Null operands act as zero;
// only NumpPack rounds or clamps.
#include "numrecord.h"

#include <cstdint>
#include <cstring>
#if defined(__SSE2__) && !defined(OXL_NUM_PORTABLE)
#include <emmintrin.h>
#endif

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
        uint64_t a = NumpLoadPlaces8(work + i), b = NumpLoadPlaces8(other + i);
        NumpStorePlaces8(work + i, add ? addDigits8(a, b, &carry) : subtractDigits8(a, b, &carry));
    }
    return NumpWriteNormal(out, work, count, negative, top.exponent + lead);
}

// Sixteen bytes side by side (SSE2 registers where the target has them).
typedef BYTE Bytes16 __attribute__((vector_size(16)));
inline bool anyAbove99(Bytes16 v) {
#if defined(__SSE2__) && !defined(OXL_NUM_PORTABLE)
    __m128i over = _mm_subs_epu8(__m128i(v), _mm_set1_epi8(99));
    return _mm_movemask_epi8(_mm_cmpeq_epi8(over, _mm_setzero_si128())) != 0xFFFF;
#else
    Bytes16 above = v > 99;
    uint64_t h[2];
    std::memcpy(h, &above, 16);
    return (h[0] | h[1]) != 0;
#endif
}

// A record's `count` digits, complemented when negative, at `offset` (0..23)
// in a zeroed area of 24 places; the digits that fall behind place 23 are
// dropped, unrounded. The 24 bytes behind the area take them, so that the
// copy needn't be cut to fit.
inline void placeDigits(BYTE* room, const BYTE* digits, int count, bool negative, int offset) {
    std::memset(room, 0, kWorkDigits);
    NumpCopyDigits(room + offset, digits, count, negative);
}

// The sum (kAdd) or difference of the magnitudes of two records of 2 to 24
// data bytes that both have digits, all 0..99, with none of the bottom's
// left over in front of the work area: each record's digits go straight to
// their place in the work area, aligned by the exponents, and the top is the
// larger exponent or, for equal ones, the larger area. The same steps as
// addMagnitudes, which takes every other case; false when it must. `flip`:
// b's sign is turned (subtraction).
template <bool kAdd>
__attribute__((always_inline)) inline bool addInPlace(tagNUMBER* out, const BYTE* da, int la, const BYTE* db, int lb, bool flip) {
    // Bit 7 of the exponent byte is set for a positive record; E is the
    // byte's low 7 bits, complemented when negative.
    int posA = da[0] >> 7, posB = db[0] >> 7;
    int ea = (da[0] ^ (posA - 1)) & 0x7F, eb = (db[0] ^ (posB - 1)) & 0x7F;
    constexpr int lead = kAdd ? 1 : 0; // a place in front for the last carry
    int top = ea > eb ? ea : eb;
    int oa = lead + top - ea, ob = lead + top - eb;
    if (oa >= kWorkDigits || ob >= kWorkDigits) return false; // nothing left in the area
    // One room for both: a's area, then b's, whose zeros cover what of a's
    // digits fell behind place 23.
    alignas(16) BYTE room[3 * kWorkDigits];
    placeDigits(room, da + 1, la - 2 + posA, !posA, oa);
    placeDigits(room + kWorkDigits, db + 1, lb - 2 + posB, !posB, ob);
    // The words are read once both copies are done (the compiler would
    // otherwise hold the first area in registers, and spill them, while the
    // second is copied).
    asm volatile("" ::: "memory");
    uint64_t a0 = NumpLoad8(room), a1 = NumpLoad8(room + 8), a2 = NumpLoad8(room + 16);
    uint64_t b0 = NumpLoad8(room + 24), b1 = NumpLoad8(room + 32), b2 = NumpLoad8(room + 40);
    // No digit above 99 (the largest byte of the two areas tells), and some
    // digit in each.
    Bytes16 v0, v1, v2;
    std::memcpy(&v0, room, 16);
    std::memcpy(&v1, room + 16, 16);
    std::memcpy(&v2, room + 32, 16);
    Bytes16 m = v0 > v1 ? v0 : v1;
    m = m > v2 ? m : v2;
    if (anyAbove99(m) || !(a0 | a1 | a2) || !(b0 | b1 | b2)) return false;
    NumpArea x = {__builtin_bswap64(a0), __builtin_bswap64(a1), __builtin_bswap64(a2)};
    NumpArea y = {__builtin_bswap64(b0), __builtin_bswap64(b1), __builtin_bswap64(b2)};

    if (kAdd) { // the sum's order doesn't matter, nor its sign, which both share
        NumpWriteArea(out, NumpAddAreas<true>(x, y), !posA, top + lead);
        return true;
    }
    bool aTop = ea > eb || (ea == eb && (x.w0 != y.w0 ? x.w0 > y.w0 : x.w1 != y.w1 ? x.w1 > y.w1 : x.w2 >= y.w2));
    NumpArea r = aTop ? NumpAddAreas<kAdd>(x, y) : NumpAddAreas<kAdd>(y, x);
    bool negative = aTop ? !posA : !posB != flip;
    NumpWriteArea(out, r, negative, top + lead);
    return true;
}

// Every case: both records unpacked, the larger magnitude on top.
__attribute__((noinline)) int addUnpacked(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    NumpOperand x = NumpRead(a, NumpLengthArith(a)), y = NumpRead(b, NumpLengthArith(b));
    if (x.count == 0) x.exponent = y.exponent;
    if (y.count == 0) y.exponent = x.exponent;

    bool aTop = compareMagnitudes(x, y) >= 0;
    bool add = ((x.negative != 0) + (y.negative != 0) + subtract) % 2 == 0;
    bool negative = aTop ? x.negative != 0 : (y.negative != 0) != subtract;
    return aTop ? addMagnitudes(out, x, y, add, negative) : addMagnitudes(out, y, x, add, negative);
}

__attribute__((always_inline)) inline int addOrSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b, bool subtract) {
    int la, lb;
    if (NumpPlainLengths(a, b, &la, &lb)) {
        bool add = (a->abData[0] < 0x80) == ((b->abData[0] < 0x80) != subtract);
        if (add ? addInPlace<true>(out, a->abData, la, b->abData, lb, subtract)
                : addInPlace<false>(out, a->abData, la, b->abData, lb, subtract))
            return out->bLength;
    }
    return addUnpacked(out, a, b, subtract);
}

} // namespace

int OXLAPI NumAddition(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) { return addOrSubtract(out, a, b, false); }

int OXLAPI NumSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) { return addOrSubtract(out, a, b, true); }

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

// A record's digits as limbs from the front, the missing digits of the last
// 0; the limb count, or 0 when a digit is above 99 or the first digit is 0.
inline int limbsOf(const BYTE* data, int count, bool negative, uint64_t* limbs) {
    BYTE room[kWorkDigits];
    std::memset(room, 0, kWorkDigits);
    NumpCopyDigits(room, data + 1, count, negative);
    uint64_t w0 = NumpLoad8(room), w1 = NumpLoad8(room + 8), w2 = NumpLoad8(room + 16);
    const uint64_t up = 28 * kNumpOnes; // as in addInPlace
    if (((w0 | w1 | w2 | (w0 + up) | (w1 + up) | (w2 + up)) & kNumpHigh) || (w0 & 0xFF) == 0) return 0;
    uint64_t l0 = NumpTwoLimbsOf8(w0);
    limbs[0] = uint32_t(l0);
    limbs[1] = l0 >> 32;
    if (count > 8) {
        uint64_t l1 = NumpTwoLimbsOf8(w1);
        limbs[2] = uint32_t(l1);
        limbs[3] = l1 >> 32;
        if (count > 16) {
            uint64_t l2 = NumpTwoLimbsOf8(w2);
            limbs[4] = uint32_t(l2);
            limbs[5] = l2 >> 32;
        }
    }
    return (count + 3) >> 2;
}

// limb % 100^k for the last kept digit's place: the digits behind it in its
// limb (k = 3 - that digit's place in the limb, 1..3).
inline uint32_t digitsBehind(uint32_t limb, int k) {
    switch (k) {
    case 1: return limb % 100;
    case 2: return limb % 10000;
    default: return limb % 1000000;
    }
}

// The product of two records of 2 to 24 data bytes whose digits are all
// 0..99 and whose first digits are above 0, which is at least 100^-2: its
// first digit above 0 is one of the first two. Schoolbook on limbs of four
// digits (0..10^8 - 1), the column sums gathered first and carried once;
// the first 7 columns (28 digits) hold the 23 digits behind the first one
// and the digit that rounds them, the later columns give only carries. The
// rounding (half up, base 100) is done on the limbs, so that the digits
// that it turns to 0 are never written out. The same result as
// multiplyDigits, which takes every other case, and the one rounding that
// carries out of the first place; false then.
__attribute__((always_inline)) inline bool multiplyNormal(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
    int la, lb;
    if (!NumpPlainLengths(a, b, &la, &lb)) return false;
    const BYTE *da = a->abData, *db = b->abData;
    int signA = int(int8_t(da[0])) >> 7, signB = int(int8_t(db[0])) >> 7; // 0 negative, -1 positive
    int na = la - 2 - signA, nb = lb - 2 - signB;
    if (na <= 0 || nb <= 0) return false;
    uint64_t xl[6], yl[6];
    int nx = limbsOf(da, na, !signA, xl), ny = nx ? limbsOf(db, nb, !signB, yl) : 0;
    if (!ny) return false;
    int ea = (da[0] ^ signA ^ 0x7F) & 0x7F, eb = (db[0] ^ signB ^ 0x7F) & 0x7F;
    bool negative = signA != signB;

    // A column holds at most 6 products below 10^16, inside 64 bits. The
    // first row sets the columns it reaches, the five behind them are
    // cleared (as many as the other rows can reach).
    uint64_t columns[12];
    columns[0] = 0;
    for (int j = 0; j < ny; ++j) columns[j + 1] = xl[0] * yl[j];
    for (int k = 1; k <= 5; ++k) columns[ny + k] = 0; // ny + 5 <= 11
    for (int i = 1; i < nx; ++i)
        for (int j = 0; j < ny; ++j) columns[i + j + 1] += xl[i] * yl[j];
    int columnCount = nx + ny, shown = columnCount < 7 ? columnCount : 7;
    uint64_t limbs[7];
    uint64_t carry = 0;
    int k = columnCount - 1;
    for (; k >= shown; --k) carry = (columns[k] + carry) / kLimb8;
    for (; k >= 0; --k) {
        uint64_t t = columns[k] + carry;
        carry = t / kLimb8;
        limbs[k] = t - carry * kLimb8;
    }

    // Digit r rounds the r digits in front of it: 23 (22 negative) behind
    // the first digit above 0, which is digit 0 or 1 (limb 0 is 10^4 or
    // more). The last kept digit is in limb q, which ends k digits behind it.
    int first = limbs[0] >= 1000000 ? 0 : 1;
    int r = first + NUM_MAX_DIGITS_POS - negative;
    int last = shown - 1; // the last limb that may hold a digit above 0
    if (r < 4 * shown) {
        int q = (r - 1) >> 2, behind = 3 - ((r - 1) & 3);
        bool up;
        if (behind == 0) {
            up = limbs[q + 1] >= kLimb8 / 2;
        } else {
            uint32_t rest = digitsBehind(uint32_t(limbs[q]), behind);
            uint32_t half = behind == 1 ? 50 : behind == 2 ? 5000 : 500000;
            up = rest >= half;
            limbs[q] -= rest;
        }
        last = q;
        if (up) {
            // The limb that takes the carry is the last one above 0.
            limbs[q] += behind == 0 ? 1 : behind == 1 ? 100 : behind == 2 ? 10000 : 1000000;
            for (; limbs[last] == kLimb8; --last) {
                // Not for these operands: a product below 1 - 100^-23 (two
                // fractions of 23 digits) or 1 - 100^-22 (one of 22, when
                // negative) doesn't round up to 1. multiplyDigits would.
                if (last == 0) return false;
                limbs[last] = 0;
                ++limbs[last - 1];
            }
            first = limbs[0] >= 1000000 ? 0 : 1; // the carry can reach digit 0
        }
    }
    while (limbs[last] == 0) --last; // limb 0 is above 0

    BYTE digits[4 * 7];
    for (int i = 0; i <= last; ++i) NumpDigitsOf4(uint32_t(limbs[i]), digits + 4 * i);
    // The last limb's zero digits at its end are the high bytes of its load.
    int count = 4 * last + 4 - (__builtin_clz(NumpLoad4(digits + 4 * last)) >> 3) - first;
    NumpWriteDigits(out, digits + first, count, negative, ea + eb - NUM_EXP_BIAS - first);
    return true;
}

// Every case: both records unpacked.
__attribute__((noinline)) int multiplyDigits(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
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

} // namespace

int OXLAPI NumMultiply(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b) {
    if (multiplyNormal(out, a, b)) return out->bLength;
    return multiplyDigits(out, a, b);
}
