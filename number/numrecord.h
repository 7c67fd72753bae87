// The two routines through which every operation on tagNUMBER passes: from
// the record's bytes to plain digits and back. Work arrays live on the
// caller's stack; nothing in the number subsystem allocates.
#ifndef OXL_NUMBER_NUMRECORD_H
#define OXL_NUMBER_NUMRECORD_H

#include <oxlrt31/number.h>

#include <cstdint>
#include <cstring>

// Largest digit counts of a normal record: 23 positive, 22 negative.
constexpr int NUM_MAX_DIGITS_POS = 23;
constexpr int NUM_MAX_DIGITS_NEG = 22;
constexpr int NUM_MIN_EXP = 4;
constexpr int NUM_MAX_EXP = 124;
constexpr int NUM_EXP_BIAS = 64;

// The data length of a record as most operations read it (bits 0-5), and as
// the four arithmetic operations and the comparisons read it (bit 7 set:
// bits 0-3 only).
inline int NumpLength(const tagNUMBER* n) { return n->bLength & 0x3F; }
inline int NumpLengthArith(const tagNUMBER* n) { return (n->bLength & 0x80) ? (n->bLength & 0x0F) : (n->bLength & 0x3F); }

// Digit strings in blocks of eight bytes. Every byte of a block is treated on
// its own (no carry or borrow crosses a byte), so the byte order of the load
// doesn't matter. Lengths of 8 and more are covered by whole blocks and one
// last block that overlaps the one before it; shorter ones byte by byte.
inline uint64_t NumpLoad8(const BYTE* p) {
    uint64_t w;
    std::memcpy(&w, p, 8);
    return w;
}
inline void NumpStore8(BYTE* p, uint64_t w) { std::memcpy(p, &w, 8); }

constexpr uint64_t kNumpOnes = 0x0101010101010101ull;
constexpr uint64_t kNumpHigh = 0x8080808080808080ull;

// Bit 7 of each byte of the result is set where the byte of w is above 99.
inline uint64_t NumpAbove99(uint64_t w) { return (((w & ~kNumpHigh) + 28 * kNumpOnes) | w) & kNumpHigh; }

inline uint32_t NumpLoad4(const BYTE* p) {
    uint32_t w;
    std::memcpy(&w, p, 4);
    return w;
}
inline void NumpStore4(BYTE* p, uint32_t w) { std::memcpy(p, &w, 4); }

// True when some byte of digits[0..count) is above 99.
inline bool NumpAnyAbove99(const BYTE* digits, int count) {
    if (count < 8) {
        if (count >= 4) return NumpAbove99(NumpLoad4(digits) | uint64_t(NumpLoad4(digits + count - 4)) << 32) != 0;
        for (int i = 0; i < count; ++i)
            if (digits[i] > 99) return true;
        return false;
    }
    uint64_t seen = NumpAbove99(NumpLoad8(digits + count - 8));
    for (int i = 0; i + 8 <= count; i += 8) seen |= NumpAbove99(NumpLoad8(digits + i));
    return seen != 0;
}

// to[i] = from[i] for count bytes; the two don't overlap.
inline void NumpCopy(BYTE* to, const BYTE* from, int count) {
    if (count < 8) {
        if (count >= 4) {
            uint32_t last = NumpLoad4(from + count - 4);
            NumpStore4(to, NumpLoad4(from));
            NumpStore4(to + count - 4, last);
        } else if (count > 0) { // 1 to 3 bytes: the first, the middle, the last
            BYTE a = from[0], b = from[count / 2], c = from[count - 1];
            to[0] = a;
            to[count / 2] = b;
            to[count - 1] = c;
        }
        return;
    }
    uint64_t last = NumpLoad8(from + count - 8);
    for (int i = 0; i + 8 <= count; i += 8) NumpStore8(to + i, NumpLoad8(from + i));
    NumpStore8(to + count - 8, last);
}

// to[i] = BYTE(100 - from[i]) for count bytes, modulo 256 in each byte (the
// complement of a digit, and what NumpUnpack makes of a byte above 100).
inline uint64_t NumpComplement8(uint64_t w) {
    const uint64_t hundreds = 100 * kNumpOnes;
    return ((hundreds | kNumpHigh) - (w & ~kNumpHigh)) ^ ((hundreds ^ ~w) & kNumpHigh);
}
inline void NumpComplement(BYTE* to, const BYTE* from, int count) {
    if (count < 8) {
        for (int i = 0; i < count; ++i) to[i] = BYTE(100 - from[i]);
        return;
    }
    uint64_t last = NumpComplement8(NumpLoad8(from + count - 8));
    for (int i = 0; i + 8 <= count; i += 8) NumpStore8(to + i, NumpComplement8(NumpLoad8(from + i)));
    NumpStore8(to + count - 8, last);
}

// count bytes (0..24) from `from` to `to`, each complemented on the way
// when asked; no byte outside [0, count) is read or written on either side.
// From 8 bytes on, three blocks that overlap: the first, the last, and one
// halfway between them, which closes the gap up to 24 bytes.
inline void NumpCopyDigits(BYTE* to, const BYTE* from, int count, bool complement) {
    if (count >= 8) {
        int middle = (count - 8) >> 1;
        uint64_t x = NumpLoad8(from), y = NumpLoad8(from + middle), z = NumpLoad8(from + count - 8);
        if (complement) {
            x = NumpComplement8(x);
            y = NumpComplement8(y);
            z = NumpComplement8(z);
        }
        NumpStore8(to, x);
        NumpStore8(to + middle, y);
        NumpStore8(to + count - 8, z);
    } else if (count >= 4) {
        uint64_t x = NumpLoad4(from), z = NumpLoad4(from + count - 4);
        if (complement) {
            x = NumpComplement8(x);
            z = NumpComplement8(z);
        }
        NumpStore4(to, uint32_t(x));
        NumpStore4(to + count - 4, uint32_t(z));
    } else if (count > 0) { // the first, the middle, the last
        int middle = count / 2;
        BYTE x = from[0], y = from[middle], z = from[count - 1];
        if (complement) {
            x = BYTE(100 - x);
            y = BYTE(100 - y);
            z = BYTE(100 - z);
        }
        to[0] = x;
        to[middle] = y;
        to[count - 1] = z;
    }
}

// Four digits (0..99, the first the highest) as one limb of 0..10^8 - 1 and
// back. The limb is made two digits at a time in 16-bit lanes, which follow
// the byte order of the load, little-endian on every target; the digits come
// back two at a time from a table.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "digit lanes are laid out little-endian");
inline uint32_t NumpLimbOf4(const BYTE* digits) {
    uint32_t w = NumpLoad4(digits);                                    // d0 | d1 << 8 | d2 << 16 | d3 << 24
    uint32_t pairs = (w & 0x00FF00FFu) * 100 + ((w >> 8) & 0x00FF00FFu); // d0d1 | d2d3 << 16
    return (pairs & 0xFFFF) * 10000 + (pairs >> 16);
}
// Each value below 10^4 as its two digits, the high one in the low byte.
// Defined once, in numpack.cpp: an inline variable would be a unique symbol
// on ELF, and such a symbol keeps the library from being unloaded.
struct NumpDigitPairs {
    uint16_t pair[10000];
    constexpr NumpDigitPairs() : pair() {
        for (int i = 0; i < 10000; ++i) pair[i] = uint16_t(i / 100 | (i % 100) << 8);
    }
};
extern const NumpDigitPairs kNumpDigitPairs;
inline void NumpDigitsOf4(uint32_t limb, BYTE* digits) {
    uint32_t high = limb / 10000;
    NumpStore4(digits, kNumpDigitPairs.pair[high] | uint32_t(kNumpDigitPairs.pair[limb - high * 10000]) << 16);
}

// Reads `*length` data bytes from `data` (the exponent byte on) into digit
// values 0..99 (for a normal record). On return *length is the digit count
// without trailing zero digits and *exponent is E. The result is the
// negative flag. Lengths below 2 or above 24 read as no digits, exponent
// 0xC0, positive.
inline int NumpUnpack(BYTE* digits, const BYTE* data, int* length, int* exponent) {
    int len = *length;
    if (len < 2 || len > 24) {
        *length = 0;
        *exponent = 0xC0;
        return 0;
    }
    int negative = !(data[0] & 0x80);
    int count;
    if (!negative) {
        count = len - 1;
        NumpCopy(digits, data + 1, count);
        *exponent = data[0] & 0x7F;
    } else {
        count = len - 2; // the last byte is the terminator, whatever it holds
        NumpComplement(digits, data + 1, count);
        *exponent = BYTE(~data[0]) & 0x7F;
    }
    while (count > 0 && digits[count - 1] == 0) --count;
    *length = count;
    return negative;
}

// Writes any digit string (leading and trailing zeros, any length) as a
// normal record into `data` from the exponent byte on, rounding half up on
// the magnitude to 23 digits (22 negative) and clamping E to 4..124;
// `padToWord` brings the data length up to a multiple of 4. Returns the data
// length for the caller to store in the length byte. `digits` is modified.
int NumpPack(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord);

// Rounds digits[0..limit) by digits[limit] (half up on the magnitude, base
// 100) and returns the new count. A carry out of the first digit leaves the
// single digit 1 and raises the exponent.
inline int NumpRoundToLimit(BYTE* digits, int limit, int* exponent) {
    if (digits[limit] + 50 < 100) return limit;
    // The carry passes every 99 in front of the limit, making it 0 (dropped
    // with the digits behind it), and stops in the first digit below 99.
    int i = limit - 1;
    while (i >= 7 && NumpLoad8(digits + i - 7) == 99 * kNumpOnes) i -= 8;
    while (i >= 0 && digits[i] == 99) --i;
    if (i >= 0) {
        ++digits[i];
        return i + 1;
    }
    digits[0] = 1;
    ++*exponent;
    return 1;
}

// NumpPack for digits known to be 0..99 each, which need no carrying first.
constexpr BYTE kNumpTerminator = 0x65;
inline int NumpPackNormal(BYTE* data, BYTE* digits, int count, int negative, int exponent, int padToWord) {
    int first = 0;
    while (first < count && digits[first] == 0) ++first;
    exponent -= first;
    digits += first;
    count -= first;

    int limit = NUM_MAX_DIGITS_POS - (negative != 0);
    if (count > limit) count = NumpRoundToLimit(digits, limit, &exponent);

    while (count > 0 && digits[count - 1] == 0) --count;
    int written;
    if (count == 0) { // zero: no sign, no shift
        data[0] = 0x80 + NUM_EXP_BIAS;
        written = 1;
        negative = 0;
    } else {
        if (unsigned(exponent - NUM_MIN_EXP) > unsigned(NUM_MAX_EXP - NUM_MIN_EXP))
            exponent = exponent < NUM_MIN_EXP ? NUM_MIN_EXP : NUM_MAX_EXP;
        if (!negative) {
            data[0] = BYTE(0x80 + exponent);
            NumpCopy(data + 1, digits, count);
            written = 1 + count;
        } else {
            data[0] = BYTE(~(0x80 + exponent));
            NumpComplement(data + 1, digits, count);
            data[1 + count] = kNumpTerminator;
            written = 2 + count;
        }
    }
    if (padToWord) {
        int padded = (written + 3) & ~3;
        if (!negative) {
            while (written < padded) data[written++] = 0x00;
        } else {
            while (written < padded) data[written++ - 1] = 0x64; // zero digits before the terminator
            data[written - 1] = kNumpTerminator;
        }
    }
    return written;
}

// Writes the normal record of `count` digits (1 to the limit, 0..99 each,
// the first and the last above 0) at `exponent`, clamped to the format's
// range: the end of NumpPackNormal for callers that found the first and last
// digit themselves.
inline void NumpWriteDigits(tagNUMBER* out, const BYTE* digits, int count, bool negative, int exponent) {
    if (unsigned(exponent - NUM_MIN_EXP) > unsigned(NUM_MAX_EXP - NUM_MIN_EXP))
        exponent = exponent < NUM_MIN_EXP ? NUM_MIN_EXP : NUM_MAX_EXP;
    BYTE* data = out->abData;
    NumpCopyDigits(data + 1, digits, count, negative);
    if (negative) {
        data[0] = BYTE(~(0x80 + exponent));
        data[1 + count] = kNumpTerminator;
        out->bLength = BYTE(count + 2);
    } else {
        data[0] = BYTE(0x80 + exponent);
        out->bLength = BYTE(count + 1);
    }
}

// A record unpacked: digit values without trailing zeros, E, the sign. The
// bytes behind the digits are room for zeros that make up a whole limb.
struct NumpOperand {
    BYTE digits[24 + 4];
    int count;
    int exponent;
    int negative;
};

// Unpacks `n` taking `length` as its data length (the caller chooses the
// reading of the length byte).
inline NumpOperand NumpRead(const tagNUMBER* n, int length) {
    NumpOperand u;
    u.count = length;
    u.negative = NumpUnpack(u.digits, n->abData, &u.count, &u.exponent);
    return u;
}

// The integer part of an unpacked value for the conversions to integers:
// how many of its digits stand before the point (the fraction is dropped)
// and how many zero digits follow them up to the point.
struct NumpIntegerPart {
    int counted;
    int zeros;
};
inline NumpIntegerPart NumpIntegerOf(const NumpOperand& x) {
    int whole = x.exponent - NUM_EXP_BIAS;
    if (whole - x.count >= 0) return {x.count, whole - x.count};
    return {whole < 1 ? 0 : whole, 0};
}

// Packs into `out` (unpadded) and stores the length byte, which it returns.
inline int NumpWrite(tagNUMBER* out, BYTE* digits, int count, int negative, int exponent) {
    out->bLength = BYTE(NumpPack(out->abData, digits, count, negative, exponent, 0));
    return out->bLength;
}

// NumpWrite for digits known to be 0..99 each.
inline int NumpWriteNormal(tagNUMBER* out, BYTE* digits, int count, int negative, int exponent) {
    out->bLength = BYTE(NumpPackNormal(out->abData, digits, count, negative, exponent, 0));
    return out->bLength;
}

// The data lengths of two records for the paths that take records of 2 to
// 24 data bytes; false for other lengths, and for a length byte with bit 7
// set (whose length is read from bits 0-3: NumpLengthArith), which the
// paths that unpack both records take as well.
inline bool NumpPlainLengths(const tagNUMBER* a, const tagNUMBER* b, int* la, int* lb) {
    int x = a->bLength, y = b->bLength;
    *la = x & 0x3F;
    *lb = y & 0x3F;
    return !((x | y) & 0x80) && unsigned(*la - 2) <= 22 && unsigned(*lb - 2) <= 22;
}

// Eight digits (0..99, the first at the lowest address, as a little-endian
// load gives them) as two limbs: the first four in the low half, the next
// four in the high half. Pairs of digits gather in 16-bit lanes, pairs of
// pairs in 32-bit lanes; no lane overflows into the next.
inline uint64_t NumpTwoLimbsOf8(uint64_t w) {
    uint64_t pairs = (w & 0x00FF00FF00FF00FFull) * 100 + (w >> 8 & 0x00FF00FF00FF00FFull);
    return (pairs & 0x0000FFFF0000FFFFull) * 10000 + (pairs >> 16 & 0x0000FFFF0000FFFFull);
}

// A work area of 24 places (base-100 digits) as three words, place 0 in the
// top byte of w0: the first place most significant, as in one 192-bit
// number. Places 8k..8k+7 in memory order load and store through a byte
// swap.
constexpr int kNumpPlaces = 24;
struct NumpArea {
    uint64_t w0, w1, w2;
};
inline uint64_t NumpLoadPlaces8(const BYTE* p) { return __builtin_bswap64(NumpLoad8(p)); }
inline void NumpStorePlaces8(BYTE* p, uint64_t w) { NumpStore8(p, __builtin_bswap64(w)); }

// x + y or x - y on the areas as on two 192-bit numbers, one carry or borrow
// chain through all 24 places, each byte then put back into base 100. For
// the sum every byte of y is first raised by 156, so that a byte carries
// exactly when its digits' sum reaches 100: a byte that carried holds its
// digit (0..99), one that did not 156 more (156..255). The difference of a
// byte that borrowed holds 256 more than its digit (156..255), one that did
// not its digit. Either way bit 7 marks the bytes that take 156 off. What
// leaves place 0 is dropped: nothing for a sum, whose place 0 is the empty
// place in front.
template <bool kAdd>
inline NumpArea NumpAddAreas(NumpArea x, NumpArea y) {
    const uint64_t raise = kAdd ? 156 * kNumpOnes : 0;
    uint64_t s0 = x.w0, s1 = x.w1, s2 = x.w2, y0 = y.w0 + raise, y1 = y.w1 + raise, y2 = y.w2 + raise;
#if defined(__x86_64__) && !defined(OXL_NUM_PORTABLE)
    if (kAdd)
        __asm__("addq %5, %2\n\tadcq %4, %1\n\tadcq %3, %0" : "+r"(s0), "+r"(s1), "+r"(s2) : "r"(y0), "r"(y1), "r"(y2) : "cc");
    else
        __asm__("subq %5, %2\n\tsbbq %4, %1\n\tsbbq %3, %0" : "+r"(s0), "+r"(s1), "+r"(s2) : "r"(y0), "r"(y1), "r"(y2) : "cc");
#else
    if (kAdd) {
        uint64_t c2 = __builtin_add_overflow(s2, y2, &s2);
        uint64_t c1 = __builtin_add_overflow(s1, y1, &s1);
        c1 += __builtin_add_overflow(s1, c2, &s1);
        s0 += y0 + c1;
    } else {
        uint64_t c2 = __builtin_sub_overflow(s2, y2, &s2);
        uint64_t c1 = __builtin_sub_overflow(s1, y1, &s1);
        c1 += __builtin_sub_overflow(s1, c2, &s1);
        s0 -= y0 + c1;
    }
#endif
    auto base100 = [](uint64_t w) { return w - (w >> 7 & kNumpOnes) * 156; };
    return {base100(s0), base100(s1), base100(s2)};
}

// Zero, and a rounding that carries out of place 0: NumpWriteNormal of all
// 24 places (numpack.cpp).
void NumpWritePlaces(tagNUMBER* out, uint64_t w0, uint64_t w1, uint64_t w2, bool negative, int exponent);

// NumpWriteNormal of the 24 places of `r` (0..99 each, exponent E for place
// 0), in words: the first place above 0 and the last come from the words'
// leading and trailing zero bytes. With more places than the limit of 23
// (22 negative) behind the first, those behind the limit go, and when the
// first of them is 50 or more, 1 is added at the last place kept, carried
// as NumpAddAreas carries. Zero, and a carry out of place 0, are left to
// NumpWriteNormal itself; the bytes are the same either way.
__attribute__((always_inline)) inline void NumpWriteArea(tagNUMBER* out, NumpArea r, bool negative, int exponent) {
    if (r.w0 == 0) return NumpWritePlaces(out, r.w0, r.w1, r.w2, negative, exponent);
    int first = __builtin_clzll(r.w0) >> 3;
    if (first <= int(negative)) {
        // The last place kept is 22 (21 for a negative whose first place is
        // 0): the places behind it are the last one or two bytes of w2.
        int behind = int(negative) > first ? 16 : 8;
        uint64_t unit = 1ull << behind; // 1 in the last place kept
        uint64_t dropped = r.w2 & (unit - 1);
        r.w2 -= dropped;
        if (dropped >> (behind - 8) >= 50) {
            if ((r.w2 >> behind & 0xFF) < 99) { // the last place kept takes the 1
                r.w2 += unit;
            } else {
                NumpArea kept = r;
                r = NumpAddAreas<true>(r, {0, 0, unit});
                if (r.w0 == 0) return NumpWritePlaces(out, kept.w0, kept.w1, kept.w2 + dropped, negative, exponent);
                first = __builtin_clzll(r.w0) >> 3;
            }
        }
    }
    // 23 digits, positive, in places 1..23 or 0..22: the record's 24 data
    // bytes are the area, moved a place on in the second case, with the
    // exponent byte in place 0.
    unsigned place23 = r.w2 & 0xFF, place22 = r.w2 >> 8 & 0xFF;
    if (!negative && (first == 1 ? place23 != 0 : first == 0 && place22 != 0 && place23 == 0) &&
        unsigned(exponent - first - NUM_MIN_EXP) <= NUM_MAX_EXP - NUM_MIN_EXP) {
        uint64_t head = uint64_t(0x80 + exponent - first) << 56;
        if (first == 0) {
            head |= r.w0 >> 8;
            r.w2 = r.w2 >> 8 | r.w1 << 56;
            r.w1 = r.w1 >> 8 | r.w0 << 56;
        } else {
            head |= r.w0;
        }
        NumpStorePlaces8(out->abData, head);
        NumpStorePlaces8(out->abData + 8, r.w1);
        NumpStorePlaces8(out->abData + 16, r.w2);
        out->bLength = 24;
        return;
    }
    int last = r.w2 ? 23 - (__builtin_ctzll(r.w2) >> 3)
             : r.w1 ? 15 - (__builtin_ctzll(r.w1) >> 3)
                    : 7 - (__builtin_ctzll(r.w0) >> 3);
    alignas(8) BYTE work[kNumpPlaces];
    NumpStorePlaces8(work, r.w0);
    NumpStorePlaces8(work + 8, r.w1);
    NumpStorePlaces8(work + 16, r.w2);
    NumpWriteDigits(out, work + first, last + 1 - first, negative, exponent - first);
}

#endif
