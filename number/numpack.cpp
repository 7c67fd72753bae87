#include "numrecord.h"

namespace {

constexpr BYTE kTerminator = 0x65;

// Rounds digits[0..limit) by digits[limit] (half up on the magnitude, base
// 100) and returns the new count. A carry out of the first digit leaves the
// single digit 1 and raises the exponent.
int roundToLimit(BYTE* digits, int limit, int* exponent) {
    if (digits[limit] + 50 < 100) return limit;
    // The carry passes every 99 in front of the limit, making it 0 (dropped
    // with the digits behind it), and stops in the first digit below 99.
    int i = limit - 1;
    while (i >= 7 && NumpLoad8(digits + i - 7) == 99 * kNumpOnes) i -= 8;
    while (i >= 0 && digits[i] == 99) --i;
    if (i >= 0) {
        ++digits[i];
        return i + 1;
    }
    digits[0] = 1;
    ++*exponent;
    return 1;
}

// Digit values above 99 come only from records whose bytes were never a
// normal record (NumpUnpack does not validate). Carrying the excess forward
// keeps the value NumpUnpack read and makes the record normal again; a carry
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

int NumpUnpack(BYTE* digits, const BYTE* data, int* length, int* exponent) {
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
        NumpCopy(digits, data + 1, count);
        *exponent = data[0] & 0x7F;
    } else {
        count = len - 2; // the last byte is the terminator, whatever it holds
        NumpComplement(digits, data + 1, count);
        *exponent = BYTE(~data[0]) & 0x7F;
    }
    while (count > 0 && digits[count - 1] == 0) --count;
    *length = count;
    return negative;
}

int NumpPack(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord) {
    if (NumpAnyAbove99(digits, count)) carryOversizedDigits(digits, count, &exponent);
    return NumpPackNormal(data, digits, count, negative, exponent, padToWord);
}

int NumpPackNormal(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord) {
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
            NumpCopy(data + 1, digits, count);
            written = 1 + count;
        } else {
            data[0] = BYTE(~(0x80 + exponent));
            NumpComplement(data + 1, digits, count);
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
