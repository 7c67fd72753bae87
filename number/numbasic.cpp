// The operations on tagNUMBER that need no arithmetic: small values,
// negation, comparison, zero and null tests.
#include "numrecord.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr int kMaxLength = 24;

struct Unpacked {
    BYTE digits[kMaxLength];
    int count;
    int exponent;
    int negative;
};

Unpacked unpack(const tagNUMBER* n, int length) {
    Unpacked u;
    u.count = length;
    u.negative = NumpUnpack(u.digits, n->abData, &u.count, &u.exponent);
    return u;
}

void writeZero(tagNUMBER* n) {
    n->bLength = 1;
    n->abData[0] = 0xC0;
}

// Order of the magnitudes: exponent, then digits over the shorter count plus
// one byte, then the longer digit string is the larger.
int compareMagnitudes(const Unpacked& a, const Unpacked& b) {
    BYTE x[1 + kMaxLength], y[1 + kMaxLength];
    x[0] = BYTE(a.exponent);
    y[0] = BYTE(b.exponent);
    std::memcpy(x + 1, a.digits, a.count);
    std::memcpy(y + 1, b.digits, b.count);
    int span = 1 + (a.count < b.count ? a.count : b.count);
    if (int c = std::memcmp(x, y, span)) return c < 0 ? -1 : 1;
    return (a.count > b.count) - (a.count < b.count);
}

} // namespace

void OXLAPI NumCreateSmall(tagNUMBER* n, int value) {
    if (value == 0) {
        writeZero(n);
    } else if (value > 0 && value <= 99) {
        n->bLength = 2;
        n->abData[0] = 0xC1;
        n->abData[1] = BYTE(value);
    } else if (value < 0 && value >= -99) {
        n->bLength = 3;
        n->abData[0] = 0x3E;
        n->abData[1] = BYTE(100 + value);
        n->abData[2] = 0x65;
    } else { // out of range: one zero digit, which reads as zero
        n->bLength = 2;
        n->abData[0] = 0xC1;
        n->abData[1] = 0;
    }
}

int OXLAPI NumNegate(tagNUMBER* n) {
    int length = NumpLength(n);
    if (length == 0 || length > kMaxLength) return 0;
    Unpacked u = unpack(n, length);
    n->bLength = BYTE(NumpPack(n->abData, u.digits, u.count, !u.negative, u.exponent, 0));
    return n->bLength;
}

int OXLAPI NumCompare(const tagNUMBER* a, const tagNUMBER* b) {
    int la = NumpLengthArith(a), lb = NumpLengthArith(b);
    if (la > kMaxLength || lb > kMaxLength) return 0;
    if (la == 0) return lb == 0 ? 0 : -1; // null is below every value
    if (lb == 0) return 1;

    Unpacked x = unpack(a, la), y = unpack(b, lb);
    if (x.count == 0 && y.count == 0) return 0;
    if (x.count == 0) return y.negative ? 1 : -1;
    if (y.count == 0) return x.negative ? -1 : 1;
    if (x.negative != y.negative) return x.negative ? -1 : 1;
    int order = compareMagnitudes(x, y);
    return x.negative ? -order : order;
}

int OXLAPI NumIsZero(const tagNUMBER* n) {
    int length = NumpLength(n);
    if (length == 0 || length > kMaxLength) return 0;
    if (length == 1) return 1;
    return unpack(n, length).count == 0;
}

void OXLAPI NumNullToZero(tagNUMBER* n) {
    if (NumpLength(n) == 0) writeZero(n);
}

int OXLAPI NumIsNullDouble(const double* d) {
    uint64_t bits;
    std::memcpy(&bits, d, sizeof bits);
    return ((bits >> 52) & 0x7FF) == 0x7FF;
}

void OXLAPI NumNullDouble(double* d) {
    const uint64_t bits = 0x7FF8000000000000ull;
    std::memcpy(d, &bits, sizeof bits);
}
