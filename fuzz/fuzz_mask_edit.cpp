// Masks and the edit filter on any bytes. The first byte gives the mask's
// length (and a leading "^" or a trailing "*"), the mask follows; the rest
// is a text for FMTMaskText and FMTUnmaskInput, in buffers of exactly the
// room the header promises, and then, read two bytes at a time, messages to
// a masked control of the OS layer's model: after each one the text fits
// the mask, and after a caret key the caret rests on a placeholder or at
// the text's end. An invalid mask gets the same messages, with no promise
// but that nothing breaks.
#include "format/maskint.h"
#include "fuzz_check.h"
#include "tests/support/edit_host.h"

#include <string>
#include <vector>

namespace {

void putAndTake(const std::string& mask, const std::string& text) {
    const char* m = FMTMaskProper(mask.c_str());
    size_t room = FMTIsPicUnlimited(m) ? FMTCntNonMaskChars(m) + (*m == '^') + text.size() + 1 : std::strlen(m) + 1;
    std::vector<char> out(room), plain(text.size() + 1);
    if (FMTMaskText(text.c_str(), out.data(), m)) FuzzRequire(std::strlen(out.data()) < room);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszInput = const_cast<char*>(text.c_str()), b.lpszPicture = const_cast<char*>(mask.c_str()), b.lpszOutput = plain.data();
    FMTUnmaskInput(&b);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    size_t n = 1 + data[0] % 16;
    if (size < 1 + n) return 0;
    std::string mask = data[0] & 0x40 ? "^" : "";
    for (size_t i = 1; i <= n; ++i) mask += data[i] ? char(data[i]) : 'X';
    if (data[0] & 0x80) mask += '*';
    std::string rest(reinterpret_cast<const char*>(data) + 1 + n, size - 1 - n);
    std::string text = rest.substr(0, rest.find('\0'));
    putAndTake(mask, text);
    FuzzRequire(EditDrive(data, size).empty());
    return 0;
}
