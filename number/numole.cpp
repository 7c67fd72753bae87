// NUMBER records to and from the OLE records: CY read as a plain 64-bit
// integer (no scaling by 10000) and DECIMAL, a 96-bit integer over a power
// of ten. Records made here are padded to whole words, as hosts that keep
// them beside these records expect.
#include "numrecord.h"

#include <cstdint>

namespace {

constexpr int kPad = 1;

// Base-100 digits of an unsigned integer held in 32-bit words, most
// significant first, taken from the low end; returns the digit count.
int takeApart(uint32_t* words, int nwords, BYTE* digits, int room) {
    int count = 0;
    for (;;) {
        bool any = false;
        for (int i = 0; i < nwords; ++i) any |= words[i] != 0;
        if (!any || count == room) break;
        uint64_t rem = 0;
        for (int i = 0; i < nwords; ++i) { // divide by 100 from the top word
            uint64_t cur = (rem << 32) | words[i];
            words[i] = uint32_t(cur / 100);
            rem = cur % 100;
        }
        digits[room - 1 - count++] = BYTE(rem);
    }
    for (int i = 0; i < count; ++i) digits[i] = digits[room - count + i];
    return count;
}

// A 128-bit mantissa in 16-bit limbs, least significant first.
struct Mantissa {
    uint32_t limb[8] = {};
    uint32_t overflow = 0;

    // Before each multiplication the bits above bit 95 are noted.
    void times100Plus(int digit) {
        for (int i = 6; i < 8; ++i) overflow |= limb[i];
        uint32_t carry = uint32_t(digit);
        for (uint32_t& l : limb) {
            uint32_t t = l * 100u + carry;
            l = t & 0xFFFF;
            carry = t >> 16;
        }
    }
    uint32_t word(int i) const { return limb[2 * i] | (limb[2 * i + 1] << 16); }
};

} // namespace

void OXLAPI NumLLongToNumber(tagNUMBER* out, const CY* in) {
    int64_t value = in->int64;
    uint64_t mag = value < 0 ? 0 - uint64_t(value) : uint64_t(value);
    uint32_t words[2] = {uint32_t(mag >> 32), uint32_t(mag)};
    BYTE digits[11] = {};
    int count = takeApart(words, 2, digits, 10);
    out->bLength = BYTE(NumpPack(out->abData, digits, count, value < 0, NUM_EXP_BIAS + count, kPad));
}

void OXLAPI NumToLLong(CY* out, const tagNUMBER* in, LONG* reply) {
    *reply = 0;
    NumpOperand x = NumpRead(in, in->bLength); // the whole byte is the length here
    NumpIntegerPart part = NumpIntegerOf(x);
    uint64_t a = 0;
    uint32_t h = 0;
    for (int i = 0; i < part.counted + part.zeros; ++i) {
        h |= uint32_t(a >> 32);
        a = a * 100u + (i < part.counted ? x.digits[i] : 0);
    }
    if (h & 0xFE000000u) *reply = 1;
    out->int64 = int64_t(x.negative ? 0 - a : a);
}

void OXLAPI NumDECIMALToNumber(tagNUMBER* out, const DECIMAL* in) {
    // An odd scale takes one decimal digit more: the mantissa times 10, with
    // a fourth word for what that carries beyond 96 bits.
    uint32_t words[4] = {0, in->Hi32, in->Mid32, in->Lo32};
    int scale = in->scale;
    if (scale % 2) {
        uint64_t carry = 0;
        for (int i = 3; i >= 0; --i) {
            uint64_t t = uint64_t(words[i]) * 10 + carry;
            words[i] = uint32_t(t);
            carry = t >> 32;
        }
        ++scale;
    }
    BYTE digits[17] = {};
    int count = takeApart(words, 4, digits, 16);
    int exponent = NUM_EXP_BIAS + count - scale / 2;
    out->bLength = BYTE(NumpPack(out->abData, digits, count, in->sign != 0, exponent, kPad));
}

void OXLAPI NumToDECIMAL(DECIMAL* out, const tagNUMBER* in, LONG* reply) {
    *reply = 0;
    NumpOperand x = NumpRead(in, in->bLength); // the whole byte is the length here
    if (x.count == 0) {
        out->Hi32 = out->Lo32 = out->Mid32 = 0;
        out->scale = out->sign = 0;
        return;
    }
    int last = x.exponent - NUM_EXP_BIAS - x.count; // base-100 place of the last digit
    if (last > 32) {
        *reply = 1;
        return;
    }
    int count = x.count, scale = 0, zeros = 0;
    if (last < -14) { // beyond 28 decimal places: cut, unrounded
        count += last + 14;
        if (count < 0) {
            *reply = 1;
            return;
        }
        scale = 28;
    } else if (last <= 0) {
        scale = -2 * last;
    } else {
        zeros = last;
    }
    Mantissa m;
    for (int i = 0; i < count; ++i) m.times100Plus(x.digits[i]);
    for (int i = 0; i < zeros; ++i) m.times100Plus(0);
    if (m.overflow) *reply = 1;
    out->Lo32 = m.word(0);
    out->Mid32 = m.word(1);
    out->Hi32 = m.word(2);
    out->scale = BYTE(scale);
    out->sign = x.negative ? 0x80 : 0;
}
