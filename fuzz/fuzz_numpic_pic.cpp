// The picture translations and the validity test on any picture: every
// output stays within its bound, the validity test leaves the output alone,
// and a valid picture tokenised and untokenised again is still valid.
#include "fuzz_numpic.h"
#include "format/numpicint.h"

#include <algorithm>
#include <vector>

namespace {
// Runs a translation into a buffer of exactly `room` bytes; its text.
// In a third section the validity test takes the positive form of a place
// before the negative one, so where one is the start of the other ("$" and
// "$)") the longer form that untokenising writes there reads as the shorter
// one and a stray rest. Such pictures are left out of the round trip.
bool FormsOverlap(const FMTCNTLBLOCK& b, const std::string& picture) {
    char pp[16], ps[16], np[16], ns[16];
    FMTBuildCurrencyForms(LONG(b.iCurrency), LONG(b.iNegCurr), pp, ps, np, ns, b.lpszCurrency);
    auto starts = [](const char* shorter, const char* longer) {
        size_t n = std::strlen(shorter);
        return n && n < std::strlen(longer) && std::strncmp(shorter, longer, n) == 0;
    };
    size_t semi = picture.find(';');
    bool third = semi != std::string::npos && picture.find(';', semi + 1) != std::string::npos;
    return third && (starts(ps, ns) || starts(pp, np));
}

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
    // A symbol made of picture characters (digits, quotes, signs) or of the
    // bytes that stand for tokens is one no locale has, and a picture in user
    // form holds no token bytes (untokenising reads them as tokens, even
    // inside quotes): the round trip is judged for the others.
    auto tokenBytes = [](const std::string& t) { return std::any_of(t.begin(), t.end(), [](char c) { return c >= 1 && c <= 0x10; }); };
    bool plainSymbol = in.symbol.find_first_of("#0123456789;'\"_-()%\\") == std::string::npos && !tokenBytes(in.symbol);
    // Untokenising writes a currency suffix where the digit run ends, ahead of
    // a "%" that followed the run, and the validity rules take no "%" behind
    // a form: a picture with both is left out too.
    bool formAndPercent = tokens.find_first_of("\x03\x04\x05\x06") != std::string::npos && in.picture.find('%') != std::string::npos;
    if (valid && plainSymbol && !in.symbol.empty() && !tokenBytes(in.picture) && !formAndPercent && user.size() < 64 && !FormsOverlap(b, user)) {
        b.lpszPicture = const_cast<char*>(user.c_str());
        FuzzRequire(FMTIsNumberPicValid(&b) == 1);
    }
    return 0;
}
