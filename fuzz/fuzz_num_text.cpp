// NumAsciiToNumber on any text: it consumes no more than the text holds and
// gives a normal record when it reads a number, a null one otherwise
// (hexadecimal text goes to the hexadecimal reader: zeros at the end allowed).
#include "fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size); // ASan guards the terminator
    tagNUMBER n;
    int used = NumAsciiToNumber(&n, text.data());
    FuzzRequire(used >= -2 && used <= int(std::strlen(text.c_str())) && (used > 0 || n.bLength == 0));
    FuzzRequireNormal(n, used <= 0, true);
    return 0;
}
