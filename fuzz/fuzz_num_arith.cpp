// The arithmetic on any two records: every result is a normal record, the
// same when the result is the first operand, a refused cut changes nothing,
// and the order is antisymmetric.
#include "fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 52) return 0;
    tagNUMBER a = FuzzRecord(data, 25), b = FuzzRecord(data + 25, 25), out;
    for (auto op : {NumAddition, NumSubtract, NumMultiply, NumDivide}) {
        tagNUMBER inPlace = a, copyB = b;
        op(&out, &a, &b);
        op(&inPlace, &inPlace, &copyB);
        FuzzRequire(FuzzIsNormal(out) && std::memcmp(&out, &inPlace, 1 + out.bLength) == 0);
    }
    NumRound(&out, &a, int(data[50]) - 128);
    FuzzRequireNormal(out, true);
    NumPower10(&out, &a, int(data[51]) - 128);
    FuzzRequireNormal(out, true);
    tagNUMBER cut = a; // a refused cut leaves its record alone
    FuzzRequire(NumTruncate(&cut, int(data[50]) - 128, int(data[51]) - 128) ? cut.bLength <= 24 : std::memcmp(&cut, &a, sizeof a) == 0);
    tagNUMBER neg = a, c1 = a, c2 = b;
    FuzzRequire(!NumNegate(&neg) || FuzzIsNormal(neg));
    FuzzRequire(NumCompare(&c1, &c2) == -NumCompare(&c2, &c1));
    return 0;
}
