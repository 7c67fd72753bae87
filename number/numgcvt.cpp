// Doubles into NUMBER records by way of their text: the run-time library
// writes 15 significant digits and the decimal reader reads them back, so a
// double enters a record as the decimal that it was meant to be (0.1 is
// 02 C0 0A, not the binary fraction's 23 digits).
#include "numrecord.h"

#include "../os/osl.h"

#include <clocale>
#include <cstring>

namespace {

constexpr int kSignificantDigits = 15;

} // namespace

char* OXLAPI FMTgcvt(double value, char* buffer) {
    if (value == 0.0 || value != value) {
        std::strcpy(buffer, "0");
        return buffer;
    }
    // "." as the point, whatever the host chose; left so for the whole
    // process, since setting it back would race with other threads.
    const char* current = gOsl.crt->setlocale(LC_NUMERIC, nullptr);
    if (!current || std::strcmp(current, "C") != 0) gOsl.crt->setlocale(LC_NUMERIC, "C");
    return gOsl.crt->gcvt(value, kSignificantDigits, buffer);
}

int OXLAPI NumDoubleToNumber(tagNUMBER* out, double value) {
    if (NumIsNullDouble(&value)) {
        out->bLength = 0;
        return 1;
    }
    char text[64];
    FMTgcvt(value, text);
    return NumAsciiToNumber(out, text) < 1 ? 0 : 1;
}
