// The setup dialog's text handling on any text: a spooler's port list cut
// into ports (each non-empty, shorter than a name buffer, without a comma,
// never "None" when those are left out, no more of them than commas + 1),
// and a row format with its two "%s" filled (always terminated within the
// buffer; a format without "%" comes back as it stands, cut to fit). The
// first byte chooses whether "None" ports are left out and the buffer size.
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
    size_t room = 1 + data[0] / 2;
    std::string out(room + 16, '\x7f');
    PrintFormatPair(&out[0], room, text.c_str(), "printer", "port");
    size_t n = std::strlen(out.c_str());
    require(n < room && out[room] == '\x7f');
    if (text.find('%') == std::string::npos) require(out.compare(0, n, text, 0, n) == 0 && n == std::min(text.size(), room - 1));
    return 0;
}
