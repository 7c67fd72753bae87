// NumAsciiToNumber on arbitrary text: it reads no further than the text's
// terminator, consumes no more than the text holds, and gives a normal
// record when it reads a number and a null one otherwise.
#include "fuzz_check.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    char* text = static_cast<char*>(std::malloc(size + 1)); // exact: ASan guards the end
    std::memcpy(text, data, size);
    text[size] = 0;
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n);
    int used = NumAsciiToNumber(&n, text);
    FuzzRequire(used >= -2 && used <= int(std::strlen(text)));
    // Hexadecimal text goes to the hexadecimal reader, whose records may end
    // in zero digits.
    FuzzRequireNormal(n, /*nullAllowed=*/used <= 0, /*trailingZeros=*/true);
    if (used <= 0) FuzzRequire(n.bLength == 0);
    std::free(text);
    return 0;
}
