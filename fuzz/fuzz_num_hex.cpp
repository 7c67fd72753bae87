// NumHexAsciiToNumber on arbitrary text: it never fails, never reads past
// the terminator, and always leaves a normal record (zero digits at the end
// allowed: the record is multiplied by 16 in place).
#include "fuzz_check.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    char* text = static_cast<char*>(std::malloc(size + 1));
    std::memcpy(text, data, size);
    text[size] = 0;
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n);
    int used = NumHexAsciiToNumber(&n, text);
    FuzzRequire(used >= 0 && used <= int(std::strlen(text)));
    FuzzRequireNormal(n, /*nullAllowed=*/false, /*trailingZeros=*/true);
    std::free(text);
    return 0;
}
