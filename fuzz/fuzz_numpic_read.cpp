// FMTValidateNumber and FMTUnformatNumberStr on any text and picture: the
// output stays in the room the caller is told to give, and a text that is
// read gives a normal record (or null, for an exponent out of range).
#include "fuzz_numpic.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    FuzzNumInput in;
    if (!FuzzNumSplit(data, size, in)) return 0;
    FMTCNTLBLOCK& b = in.block;
    b.lpszInput = const_cast<char*>(in.text.c_str());
    for (LONG type : {FMT_NUMBER, FMT_CURRENCY}) {
        b.nType = type;
        if (FMTValidateNumber(&b)) FuzzRequireNormal(b.numValue, false);
    }
    std::vector<char> out((in.text.size() > 108 ? in.text.size() : 108) + 1);
    b.lpszOutput = out.data();
    if (FMTUnformatNumberStr(&b)) {
        FuzzRequireNormal(b.numValue, true);
        FuzzRequire(std::strlen(out.data()) <= 108);
    } else {
        FuzzRequire(out[0] == 0);
    }
    return 0;
}
