// The arithmetic on arbitrary records (any length byte, any digit bytes):
// every result is a normal record, and the operations that may act in place
// give the same bytes when the result is an operand.
#include "fuzz_check.h"

#include <initializer_list>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 52) return 0;
    tagNUMBER a = FuzzRecord(data, 25), b = FuzzRecord(data + 25, 25);
    int scale = int(data[50]) - 128, power = int(data[51]) - 128;
    using Op = int(OXLAPI*)(tagNUMBER*, tagNUMBER*, tagNUMBER*);
    for (Op op : {NumAddition, NumSubtract, NumMultiply, NumDivide}) {
        tagNUMBER out, inPlace = a, copyB = b;
        std::memset(&out, 0xEE, sizeof out);
        op(&out, &a, &b);
        FuzzRequireNormal(out, false);
        op(&inPlace, &inPlace, &copyB);
        FuzzRequire(std::memcmp(&out, &inPlace, 1 + out.bLength) == 0);
    }
    tagNUMBER out;
    NumRound(&out, &a, scale);
    FuzzRequireNormal(out, true);
    NumPower10(&out, &a, power);
    FuzzRequireNormal(out, true);
    tagNUMBER neg = a;
    if (NumNegate(&neg)) FuzzRequireNormal(neg, false); // 0: left as it was
    tagNUMBER c1 = a, c2 = b;
    int order = NumCompare(&c1, &c2);
    FuzzRequire(order >= -1 && order <= 1 && NumCompare(&c2, &c1) == -order);
    return 0;
}
