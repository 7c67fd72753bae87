// What every fuzz target checks of a record the library wrote: it is null
// (where allowed), zero, or a normal record. A broken invariant traps, which
// libFuzzer reports with the input that caused it.
#ifndef OXL_FUZZ_CHECK_H
#define OXL_FUZZ_CHECK_H

#include <oxlrt31/number.h>

#include <cstddef>
#include <cstring>

inline void FuzzRequire(bool ok) {
    if (!ok) __builtin_trap();
}

// A normal record: length 1 is zero (C0); otherwise exponent 4..124, first
// and last digit non-zero, digits 0..99, and on a negative value the
// terminator 0x65 behind at most 22 digits. No negative zero. The
// hexadecimal reader multiplies a record by 16 in place and may leave zero
// digits at the end of a positive record (`trailingZeros`).
inline bool FuzzIsNormal(const tagNUMBER& n, bool trailingZeros = false) {
    int len = n.bLength;
    if (len < 1 || len > 24) return false;
    const unsigned char* d = n.abData;
    if (len == 1) return d[0] == 0xC0;
    bool negative = !(d[0] & 0x80);
    int e = negative ? (unsigned char)(~d[0]) - 0x80 : d[0] - 0x80;
    int count = negative ? len - 2 : len - 1;
    if (e < 4 || e > 124 || count < 1 || (negative && d[len - 1] != 0x65)) return false;
    for (int i = 1; i <= count; ++i) {
        int digit = negative ? 100 - d[i] : d[i];
        if (digit < 0 || digit > 99) return false;
        if (digit == 0 && (i == 1 || (i == count && !(trailingZeros && !negative)))) return false;
    }
    return true;
}

inline void FuzzRequireNormal(const tagNUMBER& n, bool nullAllowed, bool trailingZeros = false) {
    FuzzRequire((nullAllowed && n.bLength == 0) || FuzzIsNormal(n, trailingZeros));
}

// A record from raw fuzz bytes: whatever they hold, 25 bytes.
inline tagNUMBER FuzzRecord(const unsigned char* data, size_t size) {
    tagNUMBER n;
    std::memset(&n, 0, sizeof n);
    std::memcpy(&n, data, size < sizeof n ? size : sizeof n);
    return n;
}

#endif
