// The internal error box. Its text cuts the last two characters of the file
// name, whatever they are, and runs the line number on without a separator:
// hosts and the people who read these boxes know the text in this form.
#include <oxlrt31/diag.h>

#include "../os/osl.h"

#include <cstdio>
#include <cstring>

namespace {
constexpr size_t kTextSize = 200;
constexpr size_t kNumberRoom = 11; // "%d" of any 32-bit value
} // namespace

void OXLAPI AssertBox(const char* file, DWORD line) {
    static const char kPrefix[] = "Internal Error: ";
    char text[kTextSize];
    // Prefix and name, less the two cut characters, leave room for the number.
    size_t room = kTextSize - 1 - kNumberRoom + 2;
    size_t n = std::snprintf(text, room + 1, "%s%s", kPrefix, file ? file : "");
    if (n > room) n = room;
    std::snprintf(text + n - 2, kTextSize - (n - 2), "%d", static_cast<int>(line));
    gOsl.window->MessageBoxA(gOsl.window->GetActiveWindow(), text, "Oxlee", MB_ICONHAND | MB_SYSTEMMODAL);
}
