// What every number fuzz target checks of a record the library wrote: it is
// null (where allowed), zero, or a normal record. A broken invariant traps,
// which libFuzzer reports with the input that caused it.
#ifndef OXL_FUZZ_CHECK_H
#define OXL_FUZZ_CHECK_H

#include <oxlrt31/number.h>

#include <cstring>
#include <string>

inline void FuzzRequire(bool ok) { if (!ok) __builtin_trap(); }

// Zero is 01 C0; otherwise exponent 4..124, digits 0..99 with the first and
// the last above 0 (the hexadecimal reader may leave zeros at the end of a
// positive record: `trailingZeros`), and a negative's terminator 0x65.
inline bool FuzzIsNormal(const tagNUMBER& n, bool trailingZeros = false) {
    const BYTE* d = n.abData;
    int len = n.bLength, negative = !(d[0] & 0x80), count = len - 1 - negative;
    if (len == 1 || len < 1 || len > 24) return len == 1 && d[0] == 0xC0;
    int e = (negative ? BYTE(~d[0]) : d[0]) - 0x80;
    if (e < 4 || e > 124 || count < 1 || (negative && d[len - 1] != 0x65)) return false;
    for (int i = 1; i <= count; ++i) {
        int digit = negative ? 100 - d[i] : d[i];
        if (digit < 0 || digit > 99 || (digit == 0 && (i == 1 || (i == count && (negative || !trailingZeros))))) return false;
    }
    return true;
}
inline void FuzzRequireNormal(const tagNUMBER& n, bool nullAllowed, bool trailingZeros = false) {
    FuzzRequire((nullAllowed && n.bLength == 0) || FuzzIsNormal(n, trailingZeros));
}

// A record of any 25 bytes, zeros where the input runs short.
inline tagNUMBER FuzzRecord(const unsigned char* data, size_t size) {
    tagNUMBER n = {};
    std::memcpy(&n, data, size < sizeof n ? size : sizeof n);
    return n;
}

#endif
