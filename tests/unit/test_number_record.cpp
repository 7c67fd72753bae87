// The NUMBER record, byte for byte: the packing routines, small values,
// negation, comparison, zero and null. Records are hex text, length byte
// first, so that a failure shows the bytes that came back.
#include "number/numrecord.h"
#include "number_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace numtest;

// NumpPack of any digit string; the work array has room for the digit the
// rounding looks at behind the last one.
std::string pack(std::vector<int> digits, int exponent, bool negative, bool pad = false) {
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n);
    BYTE work[32] = {};
    for (size_t i = 0; i < digits.size(); ++i) work[i] = BYTE(digits[i]);
    n.bLength = BYTE(NumpPack(n.abData, work, int(digits.size()), negative, exponent, pad));
    return hex(n);
}

const struct {
    const char *value, *record, *padded;
} kExamples[] = {
    {"0", "01 C0", "04 C0 00 00 00"},
    {"1", "02 C1 01", "04 C1 01 00 00"},
    {"99", "02 C1 63", "04 C1 63 00 00"},
    {"100", "02 C2 01", "04 C2 01 00 00"},
    {"101", "03 C2 01 01", "04 C2 01 01 00"},
    {"1000", "02 C2 0A", "04 C2 0A 00 00"},
    {"0.5", "02 C0 32", "04 C0 32 00 00"},
    {"0.001", "02 BF 0A", "04 BF 0A 00 00"},
    {"0.0001", "02 BF 01", "04 BF 01 00 00"},
    {"12345.678", "06 C3 01 17 2D 43 50", "08 C3 01 17 2D 43 50 00 00"},
    {"-1", "03 3E 63 65", "04 3E 63 64 65"},
    {"-0.5", "03 3F 32 65", "04 3F 32 64 65"},
    {"-100.5", "05 3D 63 64 32 65", "08 3D 63 64 32 64 64 64 65"},
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
    auto with = [](int count, int fill, std::vector<std::pair<int, int>> set) {
        std::vector<int> d(count, fill);
        for (auto [i, v] : set) d[i] = v;
        return d;
    };
    const struct {
        std::vector<int> digits;
        int exponent;
        bool negative;
        std::string record;
    } cases[] = {
        {with(24, 99, {}), 64, false, "02 C1 01"}, // the carry runs out of the first digit
        {with(24, 99, {}), 124, false, "02 FC 01"}, // ... and the clamp holds it at 124
        {with(24, 1, {{23, 49}}), 64, false, ""}, // "": the reference's record of the digits
        {with(24, 1, {{23, 50}}), 64, false, ""},
        {with(24, 99, {{0, 7}, {23, 60}}), 64, false, "02 C0 08"}, // carry stops inside, zeros behind go
        {with(23, 2, {{22, 49}}), 64, true, ""},
        {with(23, 2, {{22, 50}}), 64, true, ""},
        {{0, 0, 5}, 64, false, "02 BE 05"},   // leading zeros shift the exponent
        {{0, 0, 0}, 90, true, "01 C0"},       // all zeros: zero, unsigned
        {{12, 34}, 130, false, "03 FC 0C 22"}, // clamped, digits kept
        {{12, 34}, -10, false, "03 84 0C 22"},
        {{12, 34}, 3, false, "03 84 0C 22"},
        {{12, 34}, 4, false, "03 84 0C 22"},
        {{12, 34}, 125, false, "03 FC 0C 22"},
        {{12}, 200, true, "03 03 58 65"},
        // digit values above 99 (bytes that never were a normal record)
        // carry forward; a carry out of the front takes the last place
        {{1, 23, 214, 67, 80}, 67, false, "06 C3 01 19 0E 43 50"},
        {{255, 7}, 64, false, "03 C1 02 37"},
        {{101}, 64, true, "03 3E 63 65"},
    };
    for (const auto& c : cases) {
        std::string want = c.record;
        if (want.empty()) { // the 24th digit (23rd negative) decides: 49 goes, 50 carries
            Ref r;
            for (int d : c.digits) r.v = r.v * 100 + d;
            r.exp10 = -2 * int(c.digits.size());
            if (c.negative) r.v = -r.v;
            want = r.record();
        }
        EXPECT_EQ(pack(c.digits, c.exponent, c.negative), want)
            << "NumpPack(" << c.digits.size() << " digits, exponent " << c.exponent << (c.negative ? ", negative)" : ")");
    }
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
    const struct {
        const char* in;
        int result;
        const char* out;
    } cases[] = {
        {"02 C1 01", 3, "03 3E 63 65"},
        {"03 3E 63 65", 2, "02 C1 01"},
        {"01 C0", 1, "01 C0"},
        {"00", 0, "00"},
        {"19 C1 01", 0, "19 C1 01"},          // length 25: invalid, untouched
        {"04 C1 01 00 00", 3, "03 3E 63 65"}, // padded in, unpadded out
        {"42 C1 05", 3, "03 3E 5F 65"},       // bits 6-7 of the length are not length
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
    const struct {
        const char *a, *b;
        int result;
    } cases[] = {
        {"00", "03 3E 63 65", -1},                // null below -1
        {"01 C0", "00", 1},                       // zero above null
        {"00", "00", 0},
        {"02 C1 01", "03 C1 01 01", -1},          // 1 < 1.01: the longer is larger
        {"03 3E 63 65", "04 3E 63 63 65", 1},     // -1 > -1.01
        {"01 C0", "03 3E 63 65", 1},
        {"01 C0", "02 84 01", -1},                // zero below the smallest positive
        {"03 7B 63 65", "01 C0", -1},             // and above the largest negative
        {"02 C1 00", "01 C0", 0},                 // reads as zero
        {"02 C2 01", "02 C1 63", 1},              // 100 > 99: the exponent decides
        {"05 3D 63 64 32 65", "03 3E 63 65", -1}, // -100.5 < -1
        {"03 C1 05 07", "03 C1 05 08", -1},       // the last digit decides
        {"04 C1 01 00 00", "02 C1 01", 0},        // padding reads as the same value
        {"18 C1 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 02",
         "18 C1 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01", 1}, // 24 bytes: valid
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

// Random values against the order of their exact values.
TEST(NumCompare, AgreesWithTheOrderOfExactValues) {
    std::mt19937 rng(20261123);
    for (int i = 0; i < 20000; ++i) {
        tagNUMBER a = randomRecord(rng, 46, i % 2 ? 3 : 100), b = i % 7 ? randomRecord(rng, 46, i % 2 ? 3 : 100) : a;
        Ref d = Ref::of(a) + -Ref::of(b);
        ASSERT_EQ(NumCompare(&a, &b), d.v < 0 ? -1 : d.v > 0) << "NumCompare(" << hex(a) << ", " << hex(b) << ")";
    }
}

TEST(NumIsZero, Records) {
    const std::pair<const char*, int> cases[] = {
        {"00", 0},          {"01 C0", 1},       {"01 55", 1}, {"02 C1 00", 1}, {"04 C0 00 00 00", 1},
        {"02 C1 01", 0},    {"03 3E 63 65", 0}, {"19 C1 00", 0}, {"40", 0},
        {"18 C1 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00", 1}, // 24 bytes: read
    };
    for (const auto& [in, result] : cases) {
        tagNUMBER n = fromHex(in);
        EXPECT_EQ(NumIsZero(&n), result) << "NumIsZero(" << in << ")";
    }
}

TEST(NumNullToZero, OnlyNullChanges) {
    const std::pair<const char*, const char*> cases[] = {{"00", "01 C0"},          {"C0", "01 C0"},
                                                         {"01 C0", "01 C0"},       {"03 3E 63 65", "03 3E 63 65"},
                                                         {"02 C1 07", "02 C1 07"}, {"19 C1 07", "19 C1 07"}};
    for (const auto& [in, out] : cases) {
        tagNUMBER n = fromHex(in);
        NumNullToZero(&n);
        EXPECT_EQ(hex(n, bytesIn(out)), out) << "NumNullToZero(" << in << ")";
    }
}

TEST(NumNullDouble, AllExponentBitsSetIsNull) {
    const std::pair<uint64_t, int> cases[] = {
        {0x7FF8000000000000ull, 1}, {0x7FF0000000000000ull, 1}, {0xFFF0000000000000ull, 1},
        {0x7FF0000000000001ull, 1}, {0xFFFFFFFFFFFFFFFFull, 1}, {0x0000000000000000ull, 0},
        {0x3FF0000000000000ull, 0}, {0x7FEFFFFFFFFFFFFFull, 0}, {0x7FE8000000000000ull, 0},
    };
    for (const auto& [bits, null] : cases) {
        double d;
        std::memcpy(&d, &bits, sizeof d);
        EXPECT_EQ(NumIsNullDouble(&d), null) << std::hex << "NumIsNullDouble(0x" << bits << ")";
    }
    double d = 1.5;
    uint64_t bits;
    NumNullDouble(&d);
    std::memcpy(&bits, &d, sizeof bits);
    EXPECT_EQ(bits, 0x7FF8000000000000ull) << "NumNullDouble";
}

} // namespace
