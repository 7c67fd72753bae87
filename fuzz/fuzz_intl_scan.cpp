// IntlStrScan on an arbitrary subject and pattern, under a language chosen
// by the first byte. Both texts sit in buffers of exactly their size, so a
// cursor that steps over a terminator shows under ASan; a cursor that never
// gets anywhere shows as a libFuzzer timeout.
//
// Input: [language] subject 00 pattern
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "os/osl.h"
#include "fuzz_intl.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Characters of s on the path in force: bytes, or steps of CharNextA.
int Count(const char* s) {
    int n = 0;
    for (const char* p = s; *p; ++n) p = IntlDBCSEnabled() ? gOsl.text->CharNextA(p) : p + 1;
    return n;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    IntlUnder under(kFuzzLanguages[data[0] % (sizeof kFuzzLanguages / sizeof kFuzzLanguages[0])]);
    const char* rest = reinterpret_cast<const char*>(data + 1);
    size_t restSize = size - 1;
    const char* zero = static_cast<const char*>(std::memchr(rest, 0, restSize));
    std::string subject(rest, zero ? size_t(zero - rest) : restSize);
    std::string pattern;
    if (zero) pattern.assign(zero + 1, strnlen(zero + 1, restSize - size_t(zero - rest) - 1));

    char* s = FuzzDup(subject);
    char* p = FuzzDup(pattern);
    int at = IntlStrScan(s, p);
    int count = Count(s);
    // A match starts at a character of the subject; only two empty texts
    // match at the terminator.
    if (subject.empty() || pattern.empty())
        FuzzRequire(at == (subject.empty() && pattern.empty() ? 0 : -1));
    else
        FuzzRequire(at == -1 || (at >= 0 && at < count));
    // A lone % matches any subject that is not empty, at its start.
    if (pattern == "%") FuzzRequire(at == (subject.empty() ? -1 : 0));
    // A subject without wildcards, taken as a pattern, matches itself at 0.
    if (!subject.empty() && subject.find_first_of("%_\\") == std::string::npos) {
        char* self = FuzzDup(subject);
        FuzzRequire(IntlStrScan(s, self) == 0);
        std::free(self);
    }
    FuzzRequire(std::memcmp(s, subject.c_str(), subject.size() + 1) == 0);
    FuzzRequire(std::memcmp(p, pattern.c_str(), pattern.size() + 1) == 0);
    FuzzRequire(IntlStrScan(nullptr, p) == -1 && IntlStrScan(s, nullptr) == -1);
    std::free(s);
    std::free(p);
    return 0;
}
