// The picture translations and the validity test on any picture: every
// output stays within its bound, the validity test leaves the output alone,
// and a valid picture tokenised and untokenised again is still valid.
#include "fuzz_numpic.h"

#include <vector>

namespace {
// Runs a translation into a buffer of exactly `room` bytes; its text.
std::string Translate(LONG(OXLAPI* f)(FMTCNTLBLOCK*), FMTCNTLBLOCK block, const std::string& picture, size_t room) {
    std::vector<char> out(room);
    block.lpszPicture = const_cast<char*>(picture.c_str());
    block.lpszOutput = out.data();
    FuzzRequire(f(&block) == 1);
    FuzzRequire(std::memchr(out.data(), 0, room) != nullptr);
    return out.data();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    FuzzNumInput in;
    if (!FuzzNumSplit(data, size, in)) return 0;
    FMTCNTLBLOCK& b = in.block;
    char keep[4] = "ab";
    b.lpszOutput = keep;
    LONG valid = FMTIsNumberPicValid(&b);
    FuzzRequire(std::strcmp(keep, "ab") == 0);
    size_t n = in.picture.size();
    // Tokens: a run adds two bytes, a form shrinks to one; a token grows to a
    // form of at most 9 bytes, a run's end to one more form.
    std::string tokens = Translate(FMTTokenizeNumberPic, b, in.picture, 3 * n + 1);
    std::string user = Translate(FMTUnTokenizeNumberPic, b, tokens, 10 * tokens.size() + 1);
    Translate(FMTUnTokenizeNumberPic, b, in.picture, 10 * n + 1);
    Translate(FMTCnvOldNumberPic, b, in.picture, 10 * n + 1);
    // A symbol made of picture characters (digits, quotes, signs) is one no
    // locale has: the round trip is judged for the others.
    bool plainSymbol = in.symbol.find_first_of("#0123456789;'\"_-()%\\") == std::string::npos;
    if (valid && plainSymbol && !FMTIsNumberPicTokenized(in.picture.c_str()) && user.size() < 64) {
        b.lpszPicture = const_cast<char*>(user.c_str());
        FuzzRequire(FMTIsNumberPicValid(&b) == 1);
    }
    return 0;
}
