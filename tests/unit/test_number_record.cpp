// The NUMBER record, byte for byte: the packing routines, small values,
// negation, comparison, zero and null. Records are hex text, length byte
// first, so that a failure shows the bytes that came back.
#include "number/numrecord.h"
#include "number/numwide.h"
#include "number_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace numtest;

// NumpPack of any digit string; the work array has room for the digit the
// rounding looks at behind the last one.
std::string pack(std::vector<int> digits, int exponent, bool negative, bool pad = false) {
    tagNUMBER n = fromHex("EE");
    BYTE work[32] = {};
    for (size_t i = 0; i < digits.size(); ++i) work[i] = BYTE(digits[i]);
    n.bLength = BYTE(NumpPack(n.abData, work, int(digits.size()), negative, exponent, pad));
    return hex(n);
}

const struct { const char *value, *record, *padded; } kExamples[] = {
    {"0", "01 C0", "04 C0 00 00 00"}, {"1", "02 C1 01", "04 C1 01 00 00"}, {"99", "02 C1 63", "04 C1 63 00 00"},
    {"100", "02 C2 01", "04 C2 01 00 00"}, {"101", "03 C2 01 01", "04 C2 01 01 00"},
    {"1000", "02 C2 0A", "04 C2 0A 00 00"}, {"0.5", "02 C0 32", "04 C0 32 00 00"},
    {"0.001", "02 BF 0A", "04 BF 0A 00 00"}, {"0.0001", "02 BF 01", "04 BF 01 00 00"},
    {"12345.678", "06 C3 01 17 2D 43 50", "08 C3 01 17 2D 43 50 00 00"}, {"-1", "03 3E 63 65", "04 3E 63 64 65"},
    {"-0.5", "03 3F 32 65", "04 3F 32 64 65"}, {"-100.5", "05 3D 63 64 32 65", "08 3D 63 64 32 64 64 64 65"},
    {"-12345.678", "07 3C 63 4D 37 21 14 65", "08 3C 63 4D 37 21 14 64 65"},
    {"1234567890123456789012345678901234567890123456",
     "18 D7 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38", nullptr},
    // 23 digits have no room when negative: the 23rd (38) rounds the 22nd up
    {"-1234567890123456789012345678901234567890123456",
     "18 28 58 42 2C 16 0A 58 42 2C 16 0A 58 42 2C 16 0A 58 42 2C 16 0A 58 41 65", nullptr},
};

TEST(NumpPack, WorkedExamplesUnpackedAndPacked) {
    for (const auto& x : kExamples) {
        Ref r = Ref::parse(x.value);
        int e;
        std::vector<int> d = r.digits(&e);
        EXPECT_EQ(r.record(), x.record) << "reference record of " << x.value;
        EXPECT_EQ(pack(d, e, r.negative()), x.record) << "NumpPack of " << x.value;
        EXPECT_EQ(x.padded ? pack(d, e, r.negative(), true) : "", x.padded ? x.padded : "") << "NumpPack(pad) of " << x.value;
        tagNUMBER in = fromHex(x.record);
        BYTE digits[32] = {};
        int count = in.bLength, exponent = 0;
        int negative = NumpUnpack(digits, in.abData, &count, &exponent);
        EXPECT_EQ(negative, r.negative()) << "NumpUnpack(" << x.record << ")";
        EXPECT_EQ(std::vector<int>(digits, digits + count), r.mag() ? Ref::of(in).digits(&e) : std::vector<int>())
            << "NumpUnpack(" << x.record << ") digits";
        EXPECT_EQ(exponent, r.mag() ? e : 0xC0) << "NumpUnpack(" << x.record << ") exponent";
    }
    for (int length : {0, 1, 25, 63}) { // no digits, exponent C0, positive
        BYTE data[64] = {0x3E, 5, 6}, digits[64];
        int count = length, exponent = -1;
        EXPECT_EQ(NumpUnpack(digits, data, &count, &exponent), 0) << "NumpUnpack of length " << length;
        EXPECT_EQ(count * 1000 + exponent, 0xC0) << "NumpUnpack of length " << length;
    }
}

TEST(NumpPack, RoundsHalfUpOnTheMagnitudeAndClamps) {
    // 24 digits (23 negative): the last decides, 49 goes and 50 carries; the
    // reference rounds the same value on its own.
    for (bool negative : {false, true})
        for (int last : {49, 50}) {
            std::vector<int> d(24 - negative, 1);
            d.back() = last;
            Ref r{0, -2 * int(d.size())};
            for (int x : d) r.v = r.v * 100 + (negative ? -x : x);
            EXPECT_EQ(pack(d, 64, negative), r.record()) << "NumpPack of 1s and " << last << (negative ? ", negative" : "");
        }
    const struct { std::vector<int> digits; int exponent; bool negative; std::string record; } cases[] = {
        {std::vector<int>(24, 99), 64, false, "02 C1 01"},   // the carry runs out of the first digit
        {std::vector<int>(24, 99), 124, false, "02 FC 01"},  // ... and the clamp holds it at 124
        {{7, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 60}, 64, false,
         "02 C0 08"},                                                          // it stops inside; the zeros go
        {{0, 0, 5}, 64, false, "02 BE 05"},   {{0, 0, 0}, 90, true, "01 C0"}, // leading zeros; zero is unsigned
        {{12, 34}, 130, false, "03 FC 0C 22"}, {{12, 34}, 125, false, "03 FC 0C 22"}, // clamped, digits kept
        {{12, 34}, 3, false, "03 84 0C 22"},  {{12, 34}, -10, false, "03 84 0C 22"}, {{12}, 200, true, "03 03 58 65"},
        // digit values above 99 (bytes that never were a normal record) carry
        // forward; a carry out of the front takes the last place
        {{1, 23, 214, 67, 80}, 67, false, "06 C3 01 19 0E 43 50"}, {{255, 7}, 64, false, "03 C1 02 37"},
        {{101}, 64, true, "03 3E 63 65"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(pack(c.digits, c.exponent, c.negative), c.record)
            << "NumpPack(" << c.digits.size() << " digits, exponent " << c.exponent << (c.negative ? ", negative)" : ")");
}

TEST(NumCreateSmall, Records) {
    const std::pair<int, const char*> cases[] = {{0, "01 C0"},       {1, "02 C1 01"},    {42, "02 C1 2A"},
                                                 {99, "02 C1 63"},    {-1, "03 3E 63 65"}, {-99, "03 3E 01 65"},
                                                 {100, "02 C1 00"},   {-100, "02 C1 00"}, {1 << 30, "02 C1 00"}};
    for (const auto& [value, record] : cases) {
        tagNUMBER n = fromHex("EE");
        NumCreateSmall(&n, value);
        EXPECT_EQ(hex(n), record) << "NumCreateSmall(" << value << ")";
    }
}

TEST(NumNegate, Records) {
    const struct { const char* in; int result; const char* out; } cases[] = {
        {"02 C1 01", 3, "03 3E 63 65"}, {"03 3E 63 65", 2, "02 C1 01"}, {"01 C0", 1, "01 C0"}, {"00", 0, "00"},
        // length 25: invalid, untouched; padded in, unpadded out; bits 6-7 are not length
        {"19 C1 01", 0, "19 C1 01"}, {"04 C1 01 00 00", 3, "03 3E 63 65"}, {"42 C1 05", 3, "03 3E 5F 65"},
        // 23 digits positive: the negative keeps 22, the last one rounded (a
        // second negation does not bring the dropped digit back)
        {"18 C1 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 16 32", 24,
         "18 3E 63 62 61 60 5F 5E 5D 5C 5B 5A 59 58 57 56 55 54 53 52 51 50 4F 4D 65"},
        {"18 3E 63 62 61 60 5F 5E 5D 5C 5B 5A 59 58 57 56 55 54 53 52 51 50 4F 4D 65", 23,
         "17 C1 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 17"},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        EXPECT_EQ(NumNegate(&n), c.result) << "NumNegate(" << c.in << ")";
        EXPECT_EQ(hex(n, bytesIn(c.out)), c.out) << "NumNegate(" << c.in << ")";
    }
}

TEST(NumCompare, Pairs) {
    const struct { std::string a, b; int result; } cases[] = {
        // null is below everything, -1 included, and equal to null
        {"00", "03 3E 63 65", -1}, {"01 C0", "00", 1}, {"00", "00", 0},
        // 1 < 1.01 (the longer is larger), -1 > -1.01, 100 > 99 (the exponent decides), -100.5 < -1
        {"02 C1 01", "03 C1 01 01", -1}, {"03 3E 63 65", "04 3E 63 63 65", 1}, {"02 C2 01", "02 C1 63", 1},
        {"05 3D 63 64 32 65", "03 3E 63 65", -1}, {"03 C1 05 07", "03 C1 05 08", -1},
        // zero against -1, the smallest positive, the largest negative, a digit 0, a padded 1
        {"01 C0", "03 3E 63 65", 1}, {"01 C0", "02 84 01", -1}, {"03 7B 63 65", "01 C0", -1},
        {"02 C1 00", "01 C0", 0}, {"04 C1 01 00 00", "02 C1 01", 0},
        // 24 data bytes are read; 25 or more compare equal; bit 7: the length from bits 0-3
        {std::string("18 C1") + rep("01", 22) + " 02", std::string("18 C1") + rep("01", 23), 1},
        {"19 C1 01", "02 C1 01", 0}, {"02 C1 01", "3F C1 01", 0}, {"82 C1 05", "02 C1 05", 0}, {"92 C1 05", "02 C1 04", 1},
    };
    for (const auto& c : cases) {
        tagNUMBER a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(NumCompare(&a, &b), c.result) << "NumCompare(" << c.a << ", " << c.b << ")";
        EXPECT_EQ(NumCompare(&b, &a), -c.result) << "NumCompare(" << c.b << ", " << c.a << ")";
    }
}

// Random values against the order of their exact values.
TEST(NumCompare, AgreesWithTheOrderOfExactValues) {
    std::mt19937 rng(20261123);
    for (int i = 0; i < 20000; ++i) {
        tagNUMBER a = randomRecord(rng, 46, i % 2 ? 3 : 100), b = i % 7 ? randomRecord(rng, 46, i % 2 ? 3 : 100) : a;
        Ref d = Ref::of(a) + -Ref::of(b);
        ASSERT_EQ(NumCompare(&a, &b), d.v < 0 ? -1 : d.v > 0) << "NumCompare(" << hex(a) << ", " << hex(b) << ")";
    }
}

// Zero is length 1 whatever its byte, or digits that are all 0; null only
// is made zero.
TEST(NumIsZero, AndNumNullToZero) {
    const struct { std::string in; int zero; std::string afterNullToZero; } cases[] = {
        {"00", 0, "01 C0"}, {"C0", 0, "01 C0"}, {"40", 0, "01 C0"}, {"01 C0", 1, "01 C0"}, {"01 55", 1, "01 55"},
        {"02 C1 00", 1, "02 C1 00"}, {"04 C0 00 00 00", 1, "04 C0 00 00 00"}, {"02 C1 07", 0, "02 C1 07"},
        {"03 3E 63 65", 0, "03 3E 63 65"}, {"19 C1 00", 0, "19 C1 00"}, {"19 C1 07", 0, "19 C1 07"},
        {"18 C1" + rep("00", 23), 1, "18 C1" + rep("00", 23)}, // 24 bytes are read
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        EXPECT_EQ(NumIsZero(&n), c.zero) << "NumIsZero(" << c.in << ")";
        NumNullToZero(&n);
        EXPECT_EQ(hex(n, bytesIn(c.afterNullToZero)), c.afterNullToZero) << "NumNullToZero(" << c.in << ")";
    }
}

// The division's word arithmetic: each product and quotient in the
// portable form and in the one the target uses.
TEST(NumpWide, ProductsAndQuotientsOfWords) {
    const struct { uint64_t a, b, hi, lo; } products[] = {
        {~0ull, ~0ull, 0xFFFFFFFFFFFFFFFEull, 1}, // 2^128 - 2^65 + 1
        {1ull << 32, 1ull << 32, 1, 0},
        {10000000000000000ull, 10000000000000000ull, 0x4EE2D6D415Bull, 0x85ACEF8100000000ull}, // 10^32
        {0x123456789ABCDEF0ull, 0xFEDCBA9876543210ull, 0x121FA00AD77D7422ull, 0x236D88FE5618CF00ull},
    };
    for (const auto& p : products) {
        uint64_t lo = 0, lo2 = 0;
        EXPECT_EQ(NumpMulWidePortable(p.a, p.b, &lo), p.hi) << std::hex << "NumpMulWidePortable(" << p.a << ", " << p.b << ")";
        EXPECT_EQ(lo, p.lo) << std::hex << "NumpMulWidePortable(" << p.a << ", " << p.b << ") low word";
        EXPECT_EQ(NumpMulWide(p.a, p.b, &lo2), p.hi) << std::hex << "NumpMulWide(" << p.a << ", " << p.b << ")";
        EXPECT_EQ(lo2, p.lo) << std::hex << "NumpMulWide(" << p.a << ", " << p.b << ") low word";
    }
    const struct { uint64_t hi, lo, d, q, r; } quotients[] = {
        {1, 0, 3, 0x5555555555555555ull, 1}, // 2^64 / 3
        {9999999999999999ull, ~0ull, 10000000000000000ull, ~0ull, 9999999999999999ull}, // the largest quotient
        {0x7FFFFFFFFFFFFFFFull, ~0ull, 1ull << 63, ~0ull, 0x7FFFFFFFFFFFFFFFull},
        {5, 0x123456789ABCDEF0ull, 0x8000000000000001ull, 10, 0x123456789ABCDEE6ull},
        {0, 7, 7, 1, 0},
    };
    for (const auto& x : quotients) {
        uint64_t r = 1, r2 = 1;
        EXPECT_EQ(NumpDivWidePortable(x.hi, x.lo, x.d, &r), x.q) << std::hex << "NumpDivWidePortable(" << x.hi << ":" << x.lo << ", " << x.d << ")";
        EXPECT_EQ(r, x.r) << std::hex << "NumpDivWidePortable(" << x.hi << ":" << x.lo << ", " << x.d << ") remainder";
        EXPECT_EQ(NumpDivWide(x.hi, x.lo, x.d, &r2), x.q) << std::hex << "NumpDivWide(" << x.hi << ":" << x.lo << ", " << x.d << ")";
        EXPECT_EQ(r2, x.r) << std::hex << "NumpDivWide(" << x.hi << ":" << x.lo << ", " << x.d << ") remainder";
    }
}

} // namespace
