#include "numrecord.h"

constexpr NumpDigitPairs kNumpDigitPairs;

namespace {

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

int NumpPack(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord) {
    if (NumpAnyAbove99(digits, count)) carryOversizedDigits(digits, count, &exponent);
    return NumpPackNormal(data, digits, count, negative, exponent, padToWord);
}

__attribute__((noinline, cold)) void NumpWritePlaces(tagNUMBER* out, uint64_t w0, uint64_t w1, uint64_t w2, bool negative,
                                                      int exponent) {
    BYTE work[kNumpPlaces];
    NumpStorePlaces8(work, w0);
    NumpStorePlaces8(work + 8, w1);
    NumpStorePlaces8(work + 16, w2);
    NumpWriteNormal(out, work, kNumpPlaces, negative, exponent);
}
