// FMTFormatNumber on any picture and record: the text fits the length the
// estimate gives (with room for a longer exponent under a scientific
// picture), and plain and currency text stay within their bound.
#include "fuzz_numpic.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    FuzzNumInput in;
    if (!FuzzNumSplit(data, size, in)) return 0;
    FMTCNTLBLOCK& b = in.block;
    b.numValue = FuzzRecord(reinterpret_cast<const unsigned char*>(in.text.data()), in.text.size());
    if (b.numValue.bLength > 24) b.numValue.bLength = 0;
    for (LONG type : {FMT_NUMBER, FMT_CURRENCY}) {
        std::vector<char> out(1024);
        b.nType = type;
        b.lpszOutput = out.data();
        FuzzRequire(FMTFormatNumber(&b) == 1);
        FuzzRequire(std::strlen(out.data()) < 700);
    }
    if (in.picture.empty() || in.picture == "$") return 0;
    std::vector<char> user(10 * in.picture.size() + 1);
    b.lpszOutput = user.data();
    FMTUnTokenizeNumberPic(&b);
    LONG estimate = FMTGetMaxFormattedNumLen(user.data(), 125, 0);
    size_t slack = in.picture[0] == '0' ? 3 : 0; // exponents run to three digits
    std::vector<char> out(size_t(estimate) + slack + 1);
    b.nType = FMT_PICTURE;
    b.lpszOutput = out.data();
    FuzzRequire(FMTFormatNumber(&b) == 1 || !user[0]); // a picture of tokens alone may read as nothing
    FuzzRequire(std::strlen(out.data()) <= size_t(estimate) + slack);
    return 0;
}
