// Cutting and shifting a NUMBER in decimal places. A base-100 digit holds two
// decimal places, so a place count v falls at digit v / 2, at its high
// decimal when v is even and at its low decimal when v is odd.
#include "numrecord.h"

namespace {

// NumpWrite, or its form for digits 0..99 when the record read was normal:
// rounding carries each digit it raises back below 100.
int writeRounded(tagNUMBER* out, BYTE* digits, int count, int negative, int exponent, bool normal) {
    return normal ? NumpWriteNormal(out, digits, count, negative, exponent)
                  : NumpWrite(out, digits, count, negative, exponent);
}

} // namespace

int OXLAPI NumRound(tagNUMBER* out, const tagNUMBER* in, int scale) {
    NumpOperand x = NumpRead(in, NumpLength(in));
    BYTE* d = x.digits;
    bool normal = !NumpAnyAbove99(d, x.count);
    int v = scale + 2 * (x.exponent - NUM_EXP_BIAS); // decimal places kept, from the first digit's
    if (v < 0) return NumpWriteNormal(out, d, 0, 0, NUM_EXP_BIAS);
    if (v >= 2 * x.count) return writeRounded(out, d, x.count, x.negative, x.exponent, normal);

    int at = v / 2;
    d[at] = BYTE(d[at] + (v % 2 ? 5 : 50)); // half up on the magnitude
    for (int i = at; d[i] >= 100; --i) {
        d[i] = BYTE(d[i] - 100);
        if (i == 0) { // the carry ran out of the first digit
            d[0] = 1;
            return NumpWriteNormal(out, d, 1, x.negative, x.exponent + 1);
        }
        ++d[i - 1];
    }
    int count = at;
    if (v % 2) {
        d[at] = BYTE(d[at] - d[at] % 10);
        count = at + 1;
    }
    return writeRounded(out, d, count, x.negative, x.exponent, normal);
}

int OXLAPI NumTruncate(tagNUMBER* n, int precision, int scale) {
    int length = NumpLength(n);
    if (length == 0 || length > 24) return 0;
    NumpOperand x = NumpRead(n, length);
    BYTE* d = x.digits;
    int e = x.exponent - NUM_EXP_BIAS, count = x.count;

    int c = 2 * e - precision + scale; // integer places too many, from the front
    if (c > 0) {
        int whole = c / 2 < count ? c / 2 : count;
        for (int i = 0; i < whole; ++i) d[i] = 0;
        if (c % 2 && c / 2 < count) d[c / 2] = BYTE(d[c / 2] % 10);
    }
    c = 2 * (count - e) - scale; // fraction places too many, from the end
    if (c > 0) {
        count = c / 2 < count ? count - c / 2 : 0;
        if (c % 2 && count > 0) d[count - 1] = BYTE(d[count - 1] - d[count - 1] % 10);
    }
    NumpWrite(n, d, count, x.negative, x.exponent);
    return 1;
}

int OXLAPI NumPower10(tagNUMBER* out, const tagNUMBER* in, int power) {
    // Compared without adding the bias: any int may come in (readers pass a
    // typed exponent through NumToLong).
    if (power < NUM_MIN_EXP - NUM_EXP_BIAS || power > NUM_MAX_EXP - NUM_EXP_BIAS) {
        out->bLength = 0;
        return 0;
    }
    // 10^power as a record: an odd power is the digit 10 one place lower.
    tagNUMBER factor;
    factor.bLength = 2;
    factor.abData[0] = BYTE(((power + 66) >> 1) - 96);
    factor.abData[1] = (power & 1) ? 10 : 1;
    return NumMultiply(out, in, &factor);
}
