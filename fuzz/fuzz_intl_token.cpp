// The tokenisers and the number readers on arbitrary input, sets and limits,
// under a language chosen by the first byte. `out` is malloc'd to exactly
// outSize bytes when there is a limit, and to the input's size otherwise,
// so a copy past the limit shows under ASan. Checked: a token is the input
// just before the index returned, which is the terminator or a delimiter on
// a character boundary; the number readers consume no more than the text.
//
// Input: [language] [lead] [quote] [outSize] input 00 skip 00 delims
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "fuzz_intl.h"

namespace {

// The text from `from` ends at `end` with the terminator or a delimiter, `end` being a step of
// the path in force from `from` (a demanded lead byte may cut a character: the token starts behind it).
bool EndsAtDelimiter(char* from, char* end, const char* delims) {
    while (from < end) from = IntlDBCSEnabled() ? IntlStrNthChar(from, 1) : from + 1;
    return from == end && (!*end || std::strchr(delims, *end));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 4) return 0;
    IntlUnder under(kFuzzLanguages[data[0] % std::size(kFuzzLanguages)]);
    std::vector<std::string> part = FuzzTexts(data + 4, size - 4, 3);
    char *input = FuzzDup(part[0]), *skip = FuzzDup(part[1]), *delims = FuzzDup(part[2]);
    int len = int(part[0].size()), outSize = static_cast<signed char>(data[3]);
    for (int variant = 0; variant < 3; ++variant) {
        size_t outBytes = outSize > 0 ? size_t(outSize) : part[0].size() + 1;
        char* out = static_cast<char*>(std::memset(std::malloc(outBytes), 0xEE, outBytes)); // no zero byte until a token is written
        int r = variant == 0   ? IntlStrGetToken(out, input, skip, delims, data[1], outSize)
                : variant == 1 ? IntlStrGetTokenNestedParens(out, input, skip, delims, data[1], outSize)
                               : IntlStrGetTokenQuoted(out, input, skip, delims, data[1], data[2], outSize);
        bool written = std::memchr(out, 0, outBytes) != nullptr; // then the token ends at r
        size_t tl = written ? std::strlen(out) : 0;
        FuzzRequire(r >= 0 && r <= len && part[0] == input && (written ? tl <= size_t(r) : r == 0));
        FuzzRequire(!written || (std::memcmp(out, input + r - tl, tl) == 0 && EndsAtDelimiter(input + r - tl, input + r, delims)));
        std::free(out);
    }
    char* token = nullptr;
    int r = IntlStrGetTokenPtr(&token, input, skip, delims);
    FuzzRequire(token == input && r >= 0 && r <= len && EndsAtDelimiter(input, input + r, delims));
    LONG l = 0; // the number readers: never past the text
    double d = 0;
    FuzzRequire(IntlFetchNextNumLong(&l, input) <= len && IntlFetchNextNumDouble(&d, input) <= std::min(len, 99) && part[0] == input);
    for (char* p : {input, skip, delims}) std::free(p);
    return 0;
}
