// The NUMBER record, byte for byte: the packing routines, small values,
// negation, comparison, zero and null. Records are written as hex strings,
// length byte first, so a failure shows the bytes that came back.
#include "number/numrecord.h"
#include "number_reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace numtest;

// Base-100 digits of a decimal text, worked out here without the library:
// the integer part in pairs leftwards from the point, the fraction rightwards.
struct Digits {
    std::vector<BYTE> d;
    int exponent;
    bool negative;
};
Digits digitsOf(std::string text) {
    Digits r{{}, 64, false};
    if (text[0] == '-') {
        r.negative = true;
        text.erase(0, 1);
    }
    size_t dot = text.find('.');
    std::string ip = text.substr(0, dot), fp = dot == std::string::npos ? "" : text.substr(dot + 1);
    if (ip == "0") ip.clear();
    if (ip.size() % 2) ip.insert(0, "0");
    if (fp.size() % 2) fp += "0";
    std::string all = ip + fp;
    for (size_t i = 0; i < all.size(); i += 2) r.d.push_back(BYTE((all[i] - '0') * 10 + all[i + 1] - '0'));
    r.exponent = 64 + int(ip.size() / 2);
    return r;
}

tagNUMBER pack(const Digits& x, bool pad = false) {
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n);
    std::vector<BYTE> work = x.d;
    work.resize(work.size() + 1); // the rounding may look one digit past the end
    n.bLength = BYTE(NumpPack(n.abData, work.data(), int(x.d.size()), x.negative, x.exponent, pad));
    return n;
}

struct Example {
    const char* value;
    const char* record;
};
const Example kExamples[] = {
    {"0", "01 C0"},
    {"1", "02 C1 01"},
    {"2", "02 C1 02"},
    {"99", "02 C1 63"},
    {"100", "02 C2 01"},
    {"101", "03 C2 01 01"},
    {"1000", "02 C2 0A"},
    {"0.5", "02 C0 32"},
    {"0.01", "02 C0 01"},
    {"0.001", "02 BF 0A"},
    {"0.0001", "02 BF 01"},
    {"12345.678", "06 C3 01 17 2D 43 50"},
    {"-1", "03 3E 63 65"},
    {"-0.5", "03 3F 32 65"},
    {"-100.5", "05 3D 63 64 32 65"},
    {"-12345.678", "07 3C 63 4D 37 21 14 65"},
    {"1234567890123456789012345678901234567890123456",
     "18 D7 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38 4E 5A 0C 22 38"},
    {"-1234567890123456789012345678901234567890123456",
     "18 28 58 42 2C 16 0A 58 42 2C 16 0A 58 42 2C 16 0A 58 42 2C 16 0A 58 41 65"},
};

TEST(NumpPack, WorkedExamples) {
    for (const Example& e : kExamples)
        EXPECT_EQ(hex(pack(digitsOf(e.value))), e.record) << "NumpPack of " << e.value;
}

TEST(NumpUnpack, RepacksToTheSameBytes) {
    for (const Example& e : kExamples) {
        tagNUMBER in = fromHex(e.record), out;
        BYTE digits[25] = {};
        int count = in.bLength, exponent = 0;
        int negative = NumpUnpack(digits, in.abData, &count, &exponent);
        EXPECT_EQ(negative, e.value[0] == '-') << e.value;
        for (int i = 0; i < count; ++i) EXPECT_LT(digits[i], 100) << e.value << " digit " << i;
        if (count) {
            EXPECT_NE(digits[count - 1], 0) << e.value << ": trailing zero digits are dropped";
        }
        std::memset(&out, 0xEE, sizeof out);
        out.bLength = BYTE(NumpPack(out.abData, digits, count, negative, exponent, 0));
        EXPECT_EQ(hex(out), e.record) << "NumpUnpack then NumpPack of " << e.value;
    }
}

TEST(NumpUnpack, LengthsOutsideTwoToTwentyFourReadAsZero) {
    for (int length : {0, 1, 25, 63}) {
        BYTE data[64] = {0xC1, 5, 6}, digits[64];
        int count = length, exponent = -1;
        EXPECT_EQ(NumpUnpack(digits, data, &count, &exponent), 0) << "length " << length;
        EXPECT_EQ(count, 0) << "length " << length;
        EXPECT_EQ(exponent, 0xC0) << "length " << length;
    }
}

TEST(NumpPack, PaddedToWholeWords) {
    const Example padded[] = {
        {"1", "04 C1 01 00 00"},
        {"-1", "04 3E 63 64 65"},
        {"0", "04 C0 00 00 00"},
        {"12345.678", "08 C3 01 17 2D 43 50 00 00"},
        {"-12345.678", "08 3C 63 4D 37 21 14 64 65"},
        {"-100.5", "08 3D 63 64 32 64 64 64 65"},
        {"101", "04 C2 01 01 00"},
    };
    for (const Example& e : padded)
        EXPECT_EQ(hex(pack(digitsOf(e.value), true)), e.record) << "NumpPack(pad) of " << e.value;
}

TEST(NumpPack, RoundsHalfUpOnTheMagnitudeAndClamps) {
    struct Case {
        std::vector<BYTE> digits;
        int exponent;
        bool negative;
        const char* record;
    } cases[] = {
        // 24 digits of 99: the carry runs out of the first digit
        {std::vector<BYTE>(24, 99), 64, false, "02 C1 01"},
        // 23 kept, the 24th decides: 49 drops, 50 carries
        {[] { std::vector<BYTE> d(24, 1); d[23] = 49; return d; }(), 64, false,
         "18 C0 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01"},
        {[] { std::vector<BYTE> d(24, 1); d[23] = 50; return d; }(), 64, false,
         "18 C0 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 02"},
        // the carry stops inside and the zeros behind it go
        {[] { std::vector<BYTE> d(24, 99); d[0] = 7; d[23] = 60; return d; }(), 64, false, "02 C0 08"},
        // negative: 22 digits kept
        {[] { std::vector<BYTE> d(23, 2); d[22] = 50; return d; }(), 64, true,
         "18 3F 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 61 65"},
        // leading zero digits shift the exponent; all zeros is zero, unsigned
        {{0, 0, 5}, 64, false, "02 BE 05"},
        {{0, 0, 0}, 90, true, "01 C0"},
        // exponents beyond 4..124 are clamped, the digits kept
        {{12, 34}, 130, false, "03 FC 0C 22"},
        {{12, 34}, -10, false, "03 84 0C 22"},
        {{12}, 200, true, "03 03 58 65"},
        // digit values above 99 (from bytes that were never a normal record)
        // carry forward; a carry out of the front takes the last digit's place
        {{1, 23, 214, 67, 80}, 67, false, "06 C3 01 19 0E 43 50"},
        {{255, 7}, 64, false, "03 C1 02 37"},
        {{101}, 64, true, "03 3E 63 65"},
    };
    for (const Case& c : cases) {
        Digits d{c.digits, c.exponent, c.negative};
        EXPECT_EQ(hex(pack(d)), c.record) << c.digits.size() << " digits, exponent " << c.exponent
                                           << (c.negative ? ", negative" : "");
    }
}

TEST(NumCreateSmall, Records) {
    const struct {
        int value;
        const char* record;
    } cases[] = {
        {0, "01 C0"}, {1, "02 C1 01"}, {42, "02 C1 2A"}, {99, "02 C1 63"}, {-1, "03 3E 63 65"},
        {-99, "03 3E 01 65"}, {100, "02 C1 00"}, {-100, "02 C1 00"}, {1 << 30, "02 C1 00"},
    };
    for (const auto& c : cases) {
        tagNUMBER n;
        std::memset(&n, 0xEE, sizeof n);
        NumCreateSmall(&n, c.value);
        EXPECT_EQ(hex(n), c.record) << "NumCreateSmall(" << c.value << ")";
    }
}

TEST(NumNegate, Records) {
    const struct {
        const char* in;
        int result;
        const char* out;
    } cases[] = {
        {"02 C1 01", 3, "03 3E 63 65"},
        {"03 3E 63 65", 2, "02 C1 01"},
        {"01 C0", 1, "01 C0"},
        {"00", 0, "00"},
        {"19 C1 01", 0, "19 C1 01"},        // length 25: invalid, untouched
        {"04 C1 01 00 00", 3, "03 3E 63 65"}, // padded in, unpadded out
        {"06 C3 01 17 2D 43 50", 7, "07 3C 63 4D 37 21 14 65"},
        {"42 C1 05", 3, "03 3E 5F 65"}, // bits 6-7 of the length are not length
        // 23 digits positive: a negative keeps 22, the last one rounds
        {"18 C1 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 16 32", 24,
         "18 3E 63 62 61 60 5F 5E 5D 5C 5B 5A 59 58 57 56 55 54 53 52 51 50 4F 4D 65"},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        EXPECT_EQ(NumNegate(&n), c.result) << "NumNegate(" << c.in << ")";
        EXPECT_EQ(hex(n, bytesIn(c.out)), c.out) << "NumNegate(" << c.in << ")";
    }
}

TEST(NumArithmetic, BytesThatWereNeverARecordGiveANormalResult) {
    tagNUMBER bad = fromHex("06 C3 01 17 D6 43 50"), null = fromHex("00"), out;
    NumSubtract(&out, &bad, &null);
    EXPECT_EQ(hex(out), "06 C3 01 19 0E 43 50") << "NumSubtract(06 C3 01 17 D6 43 50, null)";
}

TEST(NumNegate, TwiceLosesTheDigitANegativeHasNoRoomFor) {
    tagNUMBER n = fromHex("18 C1 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 16 32");
    NumNegate(&n);
    NumNegate(&n);
    EXPECT_EQ(hex(n), "17 C1 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 17");
}

TEST(NumCompare, Pairs) {
    const struct {
        const char *a, *b;
        int result;
    } cases[] = {
        {"00", "03 3E 63 65", -1},                // null below -1
        {"01 C0", "00", 1},                       // zero above null
        {"00", "00", 0},
        {"02 C1 01", "03 C1 01 01", -1},          // 1 < 1.01
        {"03 3E 63 65", "04 3E 63 63 65", 1},     // -1 > -1.01
        {"01 C0", "03 3E 63 65", 1},
        {"01 C0", "02 C0 01", -1},
        {"01 C0", "02 84 01", -1},                // zero below the smallest positive
        {"03 7B 63 65", "01 C0", -1},             // and above the largest negative
        {"03 3E 63 65", "01 C0", -1},
        {"02 C1 00", "01 C0", 0},                 // reads as zero
        {"02 C2 01", "02 C1 63", 1},              // 100 > 99: the exponent decides
        {"05 3D 63 64 32 65", "03 3E 63 65", -1}, // -100.5 < -1
        {"04 C1 01 00 00", "02 C1 01", 0},        // padding reads as the same value
        {"19 C1 01", "02 C1 01", 0},              // length 25 or more: equal
        {"02 C1 01", "3F C1 01", 0},
        {"82 C1 05", "02 C1 05", 0},              // bit 7: length from bits 0-3
        {"92 C1 05", "02 C1 04", 1},
    };
    for (const auto& c : cases) {
        tagNUMBER a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(NumCompare(&a, &b), c.result) << "NumCompare(" << c.a << ", " << c.b << ")";
        EXPECT_EQ(NumCompare(&b, &a), -c.result) << "NumCompare(" << c.b << ", " << c.a << ")";
    }
}

// Normal non-zero records sort as unsigned byte strings from the exponent
// byte on. (Zero, C0, does not: it sorts above the positive values below 1.)
TEST(NumCompare, AgreesWithTheByteOrderOfNormalRecords) {
    std::mt19937 rng(20261123);
    auto randomRecord = [&] {
        std::uniform_int_distribution<int> count(1, 26), digit(0, 99), exp(0, 128), coin(0, 1);
        for (;;) {
            std::vector<BYTE> d(count(rng));
            for (BYTE& x : d) x = BYTE(coin(rng) ? digit(rng) : (coin(rng) ? 0 : 99));
            tagNUMBER n = pack({d, exp(rng), coin(rng) == 1});
            if (n.bLength > 1) return n;
        }
    };
    for (int i = 0; i < 20000; ++i) {
        tagNUMBER a = randomRecord(), b = i % 7 ? randomRecord() : a;
        int la = a.bLength, lb = b.bLength;
        int bytes = std::memcmp(a.abData, b.abData, std::min(la, lb));
        int expect = bytes ? (bytes < 0 ? -1 : 1) : (la > lb) - (la < lb);
        ASSERT_EQ(NumCompare(&a, &b), expect) << "NumCompare(" << hex(a) << ", " << hex(b) << ")";
    }
}

TEST(NumIsZero, Records) {
    const struct {
        const char* in;
        int result;
    } cases[] = {{"00", 0}, {"01 C0", 1}, {"01 55", 1}, {"02 C1 00", 1}, {"04 C0 00 00 00", 1},
                 {"02 C1 01", 0}, {"03 3E 63 65", 0}, {"19 C1 00", 0}, {"40", 0}};
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        EXPECT_EQ(NumIsZero(&n), c.result) << "NumIsZero(" << c.in << ")";
    }
}

TEST(NumNullToZero, OnlyNullChanges) {
    const struct {
        const char *in, *out;
    } cases[] = {{"00", "01 C0"}, {"C0", "01 C0"}, {"01 C0", "01 C0"}, {"03 3E 63 65", "03 3E 63 65"},
                 {"02 C1 07", "02 C1 07"}, {"19 C1 07", "19 C1 07"}};
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        NumNullToZero(&n);
        EXPECT_EQ(hex(n, bytesIn(c.out)), c.out) << "NumNullToZero(" << c.in << ")";
    }
}

TEST(NumNullDouble, AllExponentBitsSetIsNull) {
    const struct {
        uint64_t bits;
        int null;
    } cases[] = {
        {0x7FF8000000000000ull, 1}, {0x7FF0000000000000ull, 1}, {0xFFF0000000000000ull, 1},
        {0x7FF0000000000001ull, 1}, {0xFFFFFFFFFFFFFFFFull, 1}, {0x0000000000000000ull, 0},
        {0x3FF0000000000000ull, 0}, {0x7FEFFFFFFFFFFFFFull, 0}, {0x0000000000000001ull, 0},
    };
    for (const auto& c : cases) {
        double d;
        std::memcpy(&d, &c.bits, sizeof d);
        EXPECT_EQ(NumIsNullDouble(&d), c.null) << std::hex << "NumIsNullDouble(0x" << c.bits << ")";
    }
    double d = 1.5;
    uint64_t bits;
    NumNullDouble(&d);
    std::memcpy(&bits, &d, sizeof bits);
    EXPECT_EQ(bits, 0x7FF8000000000000ull) << "NumNullDouble";
}

} // namespace
