// NumToAscii on any record and width: the text ends inside the room the
// contract asks for (width + 1 bytes, 3 more below a width of 6), its length
// is the result, and a normal record's text reads back as a normal record.
#include "fuzz_check.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 2) return 0;
    WORD width = WORD((data[0] | data[1] << 8) % 300);
    tagNUMBER n = FuzzRecord(data + 2, size - 2), back;
    std::vector<char> buffer(width + 1 + (width < 6 ? 3 : 0), 'x');
    int length = NumToAscii(&n, buffer.data(), width);
    if (length <= 0) return 0;
    FuzzRequire(std::memchr(buffer.data(), 0, buffer.size()) && size_t(length) == std::strlen(buffer.data()));
    FuzzRequire(!FuzzIsNormal(n) || (NumAsciiToNumber(&back, buffer.data()) > 0 && FuzzIsNormal(back)));
    return 0;
}
