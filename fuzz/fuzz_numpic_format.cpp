// FMTFormatNumber on any picture and record: the text of a normal record
// under a valid picture fits the length the estimate gives (with room for a longer exponent under
// a scientific picture), and plain and currency text stay within their bound.
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
    // The estimate reads the profile's separators: the picture is formatted under them.
    if (in.picture.empty() || in.picture == "$") return 0;
    b.bUseProfile = 1;
    std::vector<char> user(10 * in.picture.size() + 1);
    b.lpszOutput = user.data();
    if (FMTIsNumberPicTokenized(in.picture.c_str()))
        FMTUnTokenizeNumberPic(&b);
    else
        std::strcpy(user.data(), in.picture.c_str());
    LONG estimate = FMTGetMaxFormattedNumLen(user.data(), 125, 0);
    // Exponents run to three digits; other records and pictures have no bound.
    size_t slack = user[0] == '0' ? 3 : 0, room = size_t(estimate) + slack;
    b.lpszPicture = user.data();
    bool normal = (b.numValue.bLength == 0 || FuzzIsNormal(b.numValue)) && FMTIsNumberPicValid(&b);
    b.lpszPicture = const_cast<char*>(in.picture.c_str());
    std::vector<char> out(normal ? room + 1 : 4096);
    b.nType = FMT_PICTURE;
    b.lpszOutput = out.data();
    FuzzRequire(FMTFormatNumber(&b) == 1 || !user[0]); // a picture of tokens alone may read as nothing
    FuzzRequire(!normal || std::strlen(out.data()) <= room);
    return 0;
}
