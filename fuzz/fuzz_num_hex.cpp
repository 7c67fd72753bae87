// NumHexAsciiToNumber on any text: it never fails, consumes no more than the
// text holds, and leaves a normal record (zeros at the end allowed).
#include "fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    tagNUMBER n;
    int used = NumHexAsciiToNumber(&n, text.data());
    FuzzRequire(used >= 0 && used <= int(std::strlen(text.c_str())));
    FuzzRequireNormal(n, false, true);
    return 0;
}
