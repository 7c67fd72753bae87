// The setup dialog's port lists on any text: a spooler's port list cut into
// ports, each non-empty, shorter than a name buffer, without a comma, never
// "None" when those are left out, and no more of them than commas + 1. The
// first byte chooses whether "None" ports are left out.
#include "print/print.h"

#include <oxlrt31/intl.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

void require(bool ok) { if (!ok) __builtin_trap(); }

LPCSTR gNone; // "None" when those ports are left out
int gPorts;
void port(LPCSTR p, void*) {
    size_t n = std::strlen(p);
    require(n > 0 && n < PRINT_NAME_BYTES && !std::strchr(p, ',') && !(gNone && IntlIsStrEqual(p, gNone)));
    ++gPorts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0) return 0;
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    text = text.c_str(); // up to the first NUL, as the spooler's text ends
    gNone = data[0] & 1 ? "None" : nullptr;
    gPorts = 0;
    PrintEachPort(text.c_str(), gNone, port, nullptr);
    require(gPorts <= std::count(text.begin(), text.end(), ',') + 1);
    return 0;
}
