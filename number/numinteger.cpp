// NUMBER records to and from 16- and 32-bit integers.
//
// To an integer, the integer digits are accumulated modulo 2^32 and the
// overflow test watches the partial values before each multiplication by
// 100: hosts rely on its exact reach, so it isn't a true range check.
#include "numrecord.h"

#include <cstdint>

namespace {

// The integer digits of `n` as a 32-bit value (low bits), negated for a
// negative value; *reply becomes 1 when the overflow test fires.
uint32_t toInteger(const tagNUMBER* n, LONG* reply) {
    NumpOperand x = NumpRead(n, NumpLength(n));
    NumpIntegerPart part = NumpIntegerOf(x);
    uint32_t a = 0, h = 0;
    auto step = [&](int digit) {
        h |= a;
        a = a * 100u + uint32_t(digit);
        int t = int32_t(h) >> 28;
        if (t > 2 || (t == 2 && int32_t(a) > 0)) *reply = 1;
    };
    for (int i = 0; i < part.counted; ++i) step(x.digits[i]);
    for (int i = 0; i < part.zeros; ++i) step(0);
    return x.negative ? 0u - a : a;
}

// The digits of a magnitude, from the low end, at the back of the work array
// so that NumpPack strips the leading zeros.
int fromMagnitude(tagNUMBER* out, uint32_t value, int negative) {
    constexpr int kDigits = 5; // 4294967295 has five base-100 digits
    BYTE d[kDigits + 1] = {};
    for (int i = kDigits - 1; i >= 0; --i, value /= 100) d[i] = BYTE(value % 100);
    return NumpWrite(out, d, kDigits, negative, NUM_EXP_BIAS + kDigits);
}

} // namespace

LONG OXLAPI NumToLong(const tagNUMBER* n) {
    LONG reply = 0;
    return LONG(toInteger(n, &reply));
}

DWORD OXLAPI NumToDWord(const tagNUMBER* n) { return DWORD(NumToLong(n)); }

WORD OXLAPI NumToWord(const tagNUMBER* n) { return WORD(NumToLong(n)); }

LONG OXLAPI NumToLongReply(const tagNUMBER* n, LONG* reply) {
    *reply = 0;
    return LONG(toInteger(n, reply));
}

DWORD OXLAPI NumToDWordReply(const tagNUMBER* n, LONG* reply) { return DWORD(NumToLongReply(n, reply)); }

WORD OXLAPI NumToWordReply(const tagNUMBER* n, LONG* reply) { return WORD(NumToLongReply(n, reply)); }

int OXLAPI NumLongToNumber(tagNUMBER* out, LONG value) {
    if (value == INT32_MIN) { // no positive counterpart in 32 bits
        NumDWordToNumber(out, 0x80000000u);
        return NumNegate(out);
    }
    return fromMagnitude(out, uint32_t(value < 0 ? -value : value), value < 0);
}

int OXLAPI NumDWordToNumber(tagNUMBER* out, DWORD value) { return fromMagnitude(out, value, 0); }

int OXLAPI NumWordToNumber(tagNUMBER* out, WORD value) { return fromMagnitude(out, value, 0); }
