// NumToAscii on arbitrary 25-byte records and widths: the text is always
// terminated inside the buffer the contract asks for (width + 1 bytes, 3 more
// below a width of 6), its length is the result, and a normal record's text
// reads back.
#include "fuzz_check.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 2) return 0;
    WORD width = WORD((data[0] | data[1] << 8) % 300);
    tagNUMBER n = FuzzRecord(data + 2, size - 2);
    size_t room = size_t(width) + 1 + (width < 6 ? 3 : 0);
    char* buffer = static_cast<char*>(std::malloc(room));
    std::memset(buffer, 'x', room);
    int length = NumToAscii(&n, buffer, width);
    if (length > 0) {
        FuzzRequire(std::memchr(buffer, 0, room) != nullptr);
        FuzzRequire(size_t(length) == std::strlen(buffer));
        FuzzRequire(length <= width + (width < 6 ? 2 : 0));
        if (FuzzIsNormal(n)) { // a normal record's text reads back as a number
            tagNUMBER back;
            FuzzRequire(NumAsciiToNumber(&back, buffer) > 0);
            FuzzRequireNormal(back, false);
        }
    }
    std::free(buffer);
    return 0;
}
