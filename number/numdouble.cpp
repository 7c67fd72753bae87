// NUMBER records to doubles. The order of the operations, the factor 1e20
// for large shifts and the final division for negative ones decide the low
// bits of the result, which hosts compare; don't reorder them.
#include "numrecord.h"

namespace {

const double kPow100[] = {1.0, 1e2, 1e4, 1e6, 1e8, 1e10, 1e12, 1e14, 1e16, 1e18};

double toDouble(const tagNUMBER* n) {
    NumpOperand x = NumpRead(n, NumpLength(n));
    double v = 0.0;
    for (int i = 0; i < x.count; ++i) v = v * 100.0 + x.digits[i];
    int shift = x.exponent - NUM_EXP_BIAS - x.count; // base-100 places of the last digit
    if (v != 0.0) {
        if (shift > 9) {
            for (int i = shift / 10; i > 0; --i) v *= 1e20;
            shift %= 10;
        } else if (shift < -9) {
            for (int i = -shift / 10; i > 0; --i) v *= 1e-20;
            shift = -(-shift % 10);
        }
        if (shift > 0) v *= kPow100[shift];
        if (shift < 0) v /= kPow100[-shift];
    }
    return x.negative ? -v : v;
}

} // namespace

void OXLAPI NumToDouble(const tagNUMBER* n, double* out) {
    int length = NumpLength(n);
    if (length == 0 || length > 24) {
        NumNullDouble(out);
        return;
    }
    *out = toDouble(n);
}

void OXLAPI NumToDoubleNotNull(const tagNUMBER* n, double* out) {
    if (n->bLength == 0) {
        *out = 0.0;
        return;
    }
    NumToDouble(n, out);
}
