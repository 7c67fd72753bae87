// IntlStrScan on an arbitrary subject and pattern, under a language chosen
// by the first byte. Both texts sit in buffers of exactly their size, so a
// cursor that steps over a terminator shows under ASan; a cursor that never
// gets anywhere shows as a libFuzzer timeout.
//
// Input: [language] subject 00 pattern
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "fuzz_intl.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    IntlUnder under(kFuzzLanguages[data[0] % std::size(kFuzzLanguages)]);
    std::vector<std::string> texts = FuzzTexts(data + 1, size - 1, 2);
    const std::string &subject = texts[0], &pattern = texts[1];
    char *s = FuzzDup(subject), *p = FuzzDup(pattern);
    int at = IntlStrScan(s, p);
    // A match starts at a character of the subject; only two empty texts match at the terminator.
    if (subject.empty() || pattern.empty()) FuzzRequire(at == (subject.empty() && pattern.empty() ? 0 : -1));
    else FuzzRequire(at >= -1 && at < IntlStrLen(s));
    // A lone % matches any subject that is not empty, at its start; a subject without wildcards matches itself at 0.
    FuzzRequire(pattern != "%" || at == (subject.empty() ? -1 : 0));
    FuzzRequire(subject.empty() || subject.find_first_of("%_\\") != std::string::npos || IntlStrScan(s, s) == 0);
    FuzzRequire(subject == s && pattern == p && IntlStrScan(nullptr, p) == -1 && IntlStrScan(s, nullptr) == -1);
    std::free(s);
    std::free(p);
    return 0;
}
