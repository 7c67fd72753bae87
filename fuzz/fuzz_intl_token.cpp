// The tokenisers and the number readers on arbitrary input, sets and limits,
// under a language chosen by the first byte. `out` is malloc'd to exactly
// outSize bytes when there is a limit, and to the input's size otherwise,
// so a copy past the limit shows under ASan. The plain and the parenthesised
// tokenisers are checked against a model; the quoted one by what every
// token must be.
//
// Input: [language] [lead] [quote] [outSize] input 00 skip 00 delims
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "os/osl.h"
#include "fuzz_intl.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char* Step(const char* p) { return IntlDBCSEnabled() ? gOsl.text->CharNextA(p) : (*p ? p + 1 : p); }

// A single-byte character [p, next) that is in set.
bool In(const char* p, const char* next, const char* set) { return next - p == 1 && std::strchr(set, *p); }

enum Variant { kPlain, kNested, kQuoted };

// The token end of the plain and the parenthesised rules, from start.
const char* ModelEnd(const char* p, const char* delims, Variant v) {
    int depth = 0;
    for (const char* next; *p; p = next) {
        next = Step(p);
        bool single = next - p == 1;
        if (v == kNested && single && *p == '(') ++depth;
        if (depth < 1 && In(p, next, delims)) break;
        if (v == kNested && single && *p == ')') --depth;
    }
    return p;
}

void Token(Variant v, const std::string& text, const char* skip, const char* delims, WORD lead, BYTE quote,
           int outSize) {
    char* input = FuzzDup(text);
    const int len = int(text.size());
    size_t size = outSize > 0 ? size_t(outSize) : size_t(len) + 1;
    char* out = static_cast<char*>(std::malloc(size));
    std::memset(out, 0xA5, size);
    int r = v == kPlain    ? IntlStrGetToken(out, input, const_cast<char*>(skip), const_cast<char*>(delims), lead, outSize)
            : v == kNested ? IntlStrGetTokenNestedParens(out, input, const_cast<char*>(skip), const_cast<char*>(delims),
                                                         lead, outSize)
                           : IntlStrGetTokenQuoted(out, input, const_cast<char*>(skip), const_cast<char*>(delims), lead,
                                                   quote, outSize);
    FuzzRequire(r >= 0 && r <= len);
    FuzzRequire(std::memcmp(input, text.c_str(), size_t(len) + 1) == 0);
    bool untouched = true;
    for (size_t i = 0; i < size; ++i) untouched = untouched && BYTE(out[i]) == 0xA5;
    bool written = !untouched;

    // Skip, then the demanded lead byte.
    const char* start = input;
    for (const char* next; *start && In(start, next = Step(start), skip);) start = next;
    bool leadOk = !lead || (*start && BYTE(*start) == BYTE(lead));
    if (lead && leadOk) ++start;

    if (written) {
        size_t tl = strnlen(out, size);
        FuzzRequire(tl < size);
        FuzzRequire(tl <= size_t(r) || (r == 0 && tl == 0));
        FuzzRequire(leadOk && start - input + ptrdiff_t(tl) == r);
        FuzzRequire(std::memcmp(out, start, tl) == 0);
        for (size_t i = tl + 1; i < size; ++i) FuzzRequire(BYTE(out[i]) == 0xA5);
        // The end is a delimiter or the terminator, on a character boundary.
        FuzzRequire(!input[r] || std::strchr(delims, input[r]));
        const char* p = start;
        while (p < input + r) p = Step(p);
        FuzzRequire(p == input + r);
    }
    if (!leadOk) FuzzRequire(r == 0 && untouched);
    if (v != kQuoted && leadOk) {
        const char* end = ModelEnd(start, delims, v);
        size_t tl = size_t(end - start);
        if (outSize > 0 && tl + 1 > size_t(outSize)) {
            FuzzRequire(r == 0 && untouched);
        } else {
            FuzzRequire(r == int(end - input) && (written || (tl == 0 && out[0] == 0)));
            FuzzRequire(out[tl] == 0 && std::memcmp(out, start, tl) == 0);
        }
    }
    std::free(out);
    std::free(input);
}

void Pointer(const std::string& text, const char* skip, const char* delims) {
    char* input = FuzzDup(text);
    char* token = nullptr;
    int r = IntlStrGetTokenPtr(&token, input, const_cast<char*>(skip), const_cast<char*>(delims));
    FuzzRequire(token == input && r >= 0 && r <= int(text.size()));
    FuzzRequire(!input[r] || std::strchr(delims, input[r]));
    std::free(input);
}

void Numbers(const std::string& text) {
    char* s = FuzzDup(text);
    const int len = int(text.size());
    LONG l = 0x5A5A5A5A;
    int r = IntlFetchNextNumLong(&l, s);
    // The model: white space, a sign, digits, and a magnitude that fits.
    const char* p = IntlStripStartSpace(s);
    bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    const char* digits = p;
    long long value = 0;
    bool fits = true;
    for (; *p >= '0' && *p <= '9'; ++p) {
        value = value * 10 + (*p - '0');
        if (value > 2147483647LL) fits = false, value = 2147483648LL;
    }
    if (p == digits || !fits) {
        FuzzRequire(r == 0 && l == 0x5A5A5A5A);
    } else {
        FuzzRequire(r == int(p - s) && l == (negative ? -value : value));
    }

    double d = -12345.5;
    r = IntlFetchNextNumDouble(&d, s);
    FuzzRequire(r >= -1 && r <= len && r <= 99);
    if (r == 0) FuzzRequire(d == -12345.5);
    if (r > 0) {
        FuzzRequire(d == d);
        FuzzRequire(d == std::strtod(std::string(s, size_t(r)).c_str(), nullptr));
    }
    FuzzRequire(std::memcmp(s, text.c_str(), size_t(len) + 1) == 0);
    std::free(s);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    unsigned char head[4] = {0, 0, 0, 0};
    std::memcpy(head, data, size < 4 ? size : 4);
    const char* rest = reinterpret_cast<const char*>(data + (size < 4 ? size : 4));
    size_t left = size < 4 ? 0 : size - 4;
    std::string part[3];
    for (int i = 0; i < 3; ++i) {
        size_t n = strnlen(rest, left);
        part[i].assign(rest, n);
        if (n == left) break;
        rest += n + 1;
        left -= n + 1;
    }
    IntlUnder under(kFuzzLanguages[head[0] % (sizeof kFuzzLanguages / sizeof kFuzzLanguages[0])]);
    // Exact copies of the sets too: a search that reads past one shows.
    char* skip = FuzzDup(part[1]);
    char* delims = FuzzDup(part[2]);
    WORD lead = WORD(head[1]);
    int outSize = static_cast<signed char>(head[3]);
    for (Variant v : {kPlain, kNested, kQuoted}) Token(v, part[0], skip, delims, lead, head[2], outSize);
    Pointer(part[0], skip, delims);
    Numbers(part[0]);
    std::free(skip);
    std::free(delims);
    return 0;
}
