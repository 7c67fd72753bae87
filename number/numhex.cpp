// Reading a hexadecimal integer into a NUMBER: digit by digit, times 16 in
// place on the record's bytes, plus the digit. Long text loses low digits
// instead of failing.
#include "numrecord.h"

namespace {

constexpr int kFullLength = 24;

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// The exponent byte is held at the format's largest exponent, as NumpPack
// would hold it.
void raiseExponent(tagNUMBER* n) {
    if (n->abData[0] < 0x80 + NUM_MAX_EXP) ++n->abData[0];
}

// Drops the last digit of a full positive record, rounding half up into the
// one before it; a carry out of the front leaves the single digit 1.
void dropLastDigit(tagNUMBER* n) {
    BYTE* d = n->abData + 1;
    int count = n->bLength - 1;
    bool up = d[count - 1] >= 50;
    --count;
    for (int i = count - 1; up && i >= 0; --i) {
        up = ++d[i] >= 100;
        if (up) d[i] = 0;
    }
    if (up) {
        d[0] = 1;
        count = 1;
        raiseExponent(n);
    }
    n->bLength = BYTE(1 + count);
}

// n x 16 on a positive record (zero stays zero).
void times16(tagNUMBER* n) {
    if (n->bLength < 2) return;
    if (n->bLength >= kFullLength) dropLastDigit(n);
    BYTE* d = n->abData + 1;
    int count = n->bLength - 1, carry = 0;
    for (int i = count - 1; i >= 0; --i) {
        int t = d[i] * 16 + carry;
        d[i] = BYTE(t % 100);
        carry = t / 100;
    }
    if (!carry) return;
    for (int i = count; i > 0; --i) d[i] = d[i - 1];
    d[0] = BYTE(carry);
    n->bLength = BYTE(n->bLength + 1);
    raiseExponent(n);
}

} // namespace

tagNUMBER* OXLAPI NumGet(WORD value, tagNUMBER* out) {
    NumWordToNumber(out, value);
    return out;
}

int OXLAPI NumHexAsciiToNumber(tagNUMBER* out, const char* text) {
    NumCreateSmall(out, 0);
    if (!text) return 0;
    const char* p = text;
    while (*p == ' ' || *p == '\t') ++p;
    bool negative = false;
    if (*p == '+' || *p == '-') negative = *p++ == '-';
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) p += 2;
    while (*p == '0') ++p;
    for (int v; (v = hexValue(*p)) >= 0; ++p) {
        times16(out);
        if (v) {
            tagNUMBER digit;
            NumAddition(out, out, NumGet(WORD(v), &digit));
        }
    }
    if (negative) NumNegate(out);
    return int(p - text);
}
