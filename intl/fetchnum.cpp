// Reading a number at the start of a text. Results count bytes from the
// start of the text, white space and sign included.
#include "intlpriv.h"

#include <cstdint>

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

const char* digits(const char* p) {
    while (isDigit(*p)) ++p;
    return p;
}

const char* sign(const char* p) { return *p == '-' || *p == '+' ? p + 1 : p; }

// The end of a decimal number with optional fraction and exponent at p, or
// null when there is none.
const char* decimalEnd(const char* p) {
    p = sign(p);
    if (!isDigit(*p) && !(*p == '.' && isDigit(p[1]))) return nullptr;
    p = digits(p);
    if (*p == '.') p = digits(p + 1);
    if (*p == 'e' || *p == 'E') {
        p = sign(p + 1);
        if (!isDigit(*p)) return nullptr;
        p = digits(p);
    }
    return p;
}

// A zero mantissa, whatever the exponent: "0", "-.0", "0.0e5". Leading white
// space is not part of the form.
bool allZeroForm(const char* p, const char* end) {
    for (; p < end && *p != 'e' && *p != 'E'; ++p)
        if (!std::strchr(".0+-", *p)) return false;
    return true;
}

constexpr long kMaxDoubleText = 99;

} // namespace

int OXLAPI IntlFetchNextNumLong(LONG* out, const char* text) {
    if (!out || !text) return 0;
    const char* p = IntlStripStartSpace(text);
    bool negative = *p == '-';
    p = sign(p);
    if (!isDigit(*p)) return 0;
    int32_t value = 0;
    for (; isDigit(*p); ++p) {
        int32_t before = value;
        value = int32_t(uint32_t(value) * 10u + uint32_t(*p - '0')); // wraps on overflow, caught below
        if (value / 10 != before) return 0;
    }
    *out = negative ? -value : value;
    return int(p - text);
}

int OXLAPI IntlFetchNextNumDouble(double* out, const char* text) {
    if (!out || !text) return 0;
    const char* end = decimalEnd(IntlStripStartSpace(text));
    if (!end) return 0;
    if (end - text > kMaxDoubleText) return -1;
    // Zero is recognised by its form: atof gives 0.0 for an underflow too.
    if (allZeroForm(text, end)) {
        *out = 0.0;
        return int(end - text);
    }
    double v = gOsl.crt->atof(text);
    if (v == 0.0) return -1;
    *out = v;
    return int(end - text);
}
