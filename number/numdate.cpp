// DateCompare: hosts keep date values in NUMBER records and want two values
// that differ only in the noise of their own arithmetic to compare equal.
// Both operands are first cut to 12 data bytes in the caller's records, and
// a difference below 3 x 10^-16 counts as none.
#include "numrecord.h"

namespace {

constexpr int kDateLength = 12;

void cut(tagNUMBER* n) {
    if (NumpLengthArith(n) > kDateLength) n->bLength = kDateLength;
}

} // namespace

int OXLAPI DateCompare(tagNUMBER* a, tagNUMBER* b) {
    int la = NumpLengthArith(a), lb = NumpLengthArith(b);
    if (la > 24 || lb > 24) return 0;
    cut(a);
    cut(b);
    la = NumpLengthArith(a);
    lb = NumpLengthArith(b);

    if (la == 0) return lb == 0 ? 0 : -1; // null is below every value
    if (lb == 0) return 1;
    NumpOperand x = NumpRead(a, la), y = NumpRead(b, lb);
    if (x.count == 0 && y.count == 0) return 0;
    if (x.count == 0) return y.negative ? 1 : -1;
    if (y.count == 0) return x.negative ? -1 : 1;
    if (x.negative != y.negative) return x.negative ? -1 : 1;

    tagNUMBER diff;
    NumSubtract(&diff, a, b);
    NumpOperand d = NumpRead(&diff, NumpLength(&diff));
    if (d.count == 0) return 0;
    int x100 = d.exponent - NUM_EXP_BIAS; // 100^x100 / 100 is the place of the first digit
    if (x100 < -7 || (x100 == -7 && d.digits[0] < 3)) return 0;
    return d.negative ? -1 : 1;
}
