// Arithmetic on 64-bit words with a double-word product or dividend: what
// the division works in. x86_64 divides with one instruction, other 64-bit
// targets through the compiler's 128-bit integers; without those (i686) the
// portable forms below, which the tests hold to the same results.
// OXL_NUM_PORTABLE takes the portable forms everywhere (for the tests).
#ifndef OXL_NUMBER_NUMWIDE_H
#define OXL_NUMBER_NUMWIDE_H

#include <cstdint>

// a * b as hi:lo, portably: four products of 32-bit halves.
inline uint64_t NumpMulWidePortable(uint64_t a, uint64_t b, uint64_t* lo) {
    uint64_t a0 = uint32_t(a), a1 = a >> 32, b0 = uint32_t(b), b1 = b >> 32;
    uint64_t low = a0 * b0, mid1 = a1 * b0, mid2 = a0 * b1, high = a1 * b1;
    uint64_t middle = (low >> 32) + uint32_t(mid1) + uint32_t(mid2); // below 3 * 2^32
    *lo = (middle << 32) | uint32_t(low);
    return high + (mid1 >> 32) + (mid2 >> 32) + (middle >> 32);
}

// hi:lo / d, portably, for hi < d (the quotient fits a word): one bit at a
// time. A bit shifted out of hi means the partial remainder is above d.
inline uint64_t NumpDivWidePortable(uint64_t hi, uint64_t lo, uint64_t d, uint64_t* remainder) {
    uint64_t q = 0;
    for (int i = 0; i < 64; ++i) {
        bool out = hi >> 63;
        hi = hi << 1 | lo >> 63;
        lo <<= 1;
        q <<= 1;
        if (out || hi >= d) {
            hi -= d;
            q |= 1;
        }
    }
    *remainder = hi;
    return q;
}

#if defined(__SIZEOF_INT128__) && !defined(OXL_NUM_PORTABLE)
inline uint64_t NumpMulWide(uint64_t a, uint64_t b, uint64_t* lo) {
    unsigned __int128 p = (unsigned __int128)a * b;
    *lo = uint64_t(p);
    return uint64_t(p >> 64);
}
#else
inline uint64_t NumpMulWide(uint64_t a, uint64_t b, uint64_t* lo) { return NumpMulWidePortable(a, b, lo); }
#endif

// hi:lo / d for hi < d; the remainder in *remainder.
inline uint64_t NumpDivWide(uint64_t hi, uint64_t lo, uint64_t d, uint64_t* remainder) {
#if defined(__x86_64__) && !defined(OXL_NUM_PORTABLE)
    uint64_t q, r;
    __asm__("divq %4" : "=a"(q), "=d"(r) : "a"(lo), "d"(hi), "rm"(d) : "cc");
    *remainder = r;
    return q;
#elif defined(__SIZEOF_INT128__) && !defined(OXL_NUM_PORTABLE)
    unsigned __int128 n = (unsigned __int128)hi << 64 | lo;
    uint64_t q = uint64_t(n / d);
    *remainder = lo - q * d;
    return q;
#else
    return NumpDivWidePortable(hi, lo, d, remainder);
#endif
}

#endif
