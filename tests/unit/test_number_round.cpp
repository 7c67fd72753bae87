// Rounding, cutting and shifting NUMBER records in decimal places, and the
// date comparison with its tolerance.
#include "number_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace numtest;

std::string want(const char* text) { return Ref::parse(text).record(); }

TEST(NumRound, WorkedCases) {
    const struct {
        const char* in;
        int scale;
        const char* out;
    } cases[] = {
        {"2.5", 0, "3"},        {"-2.5", 0, "-3"},       {"0.125", 2, "0.13"},  {"1.005", 2, "1.01"},
        {"1234", -2, "1200"},   {"1250", -2, "1300"},    {"99.5", 0, "100"},    {"0.4", 0, "0"},
        {"0.5", -1, "0"},       {"5", -1, "10"},         {"95", -1, "100"},     {"-0.049", 1, "0"},
        {"-0.05", 1, "-0.1"},   {"12345.678", 9, "12345.678"}, {"0.994", 2, "0.99"}, {"0.995", 2, "1"},
    };
    for (const auto& c : cases) {
        tagNUMBER in = rec(c.in), out;
        int r = NumRound(&out, &in, c.scale);
        EXPECT_EQ(hex(out), want(c.out)) << "NumRound(" << c.in << ", " << c.scale << ")";
        EXPECT_EQ(r, out.bLength) << "NumRound(" << c.in << ", " << c.scale << ")";
    }
    tagNUMBER null = fromHex("00"), out;
    NumRound(&out, &null, 2);
    EXPECT_EQ(hex(out), "01 C0") << "NumRound(null, 2)";
}

TEST(NumRound, AgreesWithExactRoundingHalfAwayFromZero) {
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> scales(-12, 30);
    for (int i = 0; i < 3000; ++i) {
        tagNUMBER in = rec(randomRef(rng, 46, 20).text()), out;
        int scale = scales(rng);
        NumRound(&out, &in, scale);
        ASSERT_EQ(hex(out), Ref::ofRecord(in).round(-scale).record()) << "NumRound(" << hex(in) << ", " << scale << ")";
    }
}

TEST(NumTruncate, WorkedCases) {
    const struct {
        const char* in; // decimal text, or "#" and hex bytes
        int precision, scale;
        int result;
        std::string out;
    } cases[] = {
        {"12345.678", 5, 2, 1, want("345.67")},       // high digits go too
        {"-12345.678", 7, 2, 1, want("-12345.67")},
        {"123.45", 1, 1, 1, want("0.4")},
        {"123456", 6, -3, 1, want("123000")},
        {"0.001", 3, 2, 1, "01 C0"},
        {"-98.76", 3, 1, 1, want("-98.7")},
        {"98.76", 1, 0, 1, want("8")},
        {"#00", 5, 2, 0, "00"},
        {"#19 C1 05", 5, 2, 0, "19 C1 05"},
        {"#04 C1 05 07 00", 5, 1, 1, "02 C1 05"}, // padded in, normal out: 5.07 to 5.0
    };
    for (const auto& c : cases) {
        tagNUMBER n = c.in[0] == '#' ? fromHex(c.in + 1) : rec(c.in);
        EXPECT_EQ(NumTruncate(&n, c.precision, c.scale), c.result)
            << "NumTruncate(" << c.in << ", " << c.precision << ", " << c.scale << ")";
        EXPECT_EQ(hex(n, bytesIn(c.out)), c.out) << "NumTruncate(" << c.in << ", " << c.precision << ", " << c.scale << ")";
    }
}

TEST(NumPower10, WorkedCases) {
    const struct {
        const char* in;
        int power;
        int result;
        std::string out;
    } cases[] = {
        {"1", 61, 0, "00"},           {"1", -61, 0, "00"},
        {"1", 60, 2, "02 DF 01"},     {"5", 1, 2, "02 C1 32"},
        {"1", -60, 2, want("1e-60")}, {"12345.678", -3, 5, want("12.345678")},
        {"-7", 3, 3, want("-7000")},  {"0", 9, 1, "01 C0"},
    };
    for (const auto& c : cases) {
        tagNUMBER in = rec(c.in), out;
        std::memset(&out, 0xEE, sizeof out);
        EXPECT_EQ(NumPower10(&out, &in, c.power), c.result) << "NumPower10(" << c.in << ", " << c.power << ")";
        EXPECT_EQ(hex(out), c.out) << "NumPower10(" << c.in << ", " << c.power << ")";
    }
}

TEST(DateCompare, Tolerance) {
    const struct {
        std::string a, b; // hex records
        int result;
    } cases[] = {
        {want("1.0000000000000002"), want("1"), 0},
        {want("1.0000000000000003"), want("1"), 1},
        {want("-1.0000000000000003"), want("-1"), -1},
        {want("0.5000000000000002"), want("0.5"), 0},
        {want("2"), want("1"), 1},
        {"00", want("1"), -1},
        {"00", "00", 0},
        {"01 C0", want("-1"), 1},
        {want("-1"), want("1"), -1},
        {"19 C1 05", want("1"), 0}, // length 25: no order
    };
    for (const auto& c : cases) {
        tagNUMBER a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(DateCompare(&a, &b), c.result) << "DateCompare(" << c.a << ", " << c.b << ")";
        a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(DateCompare(&b, &a), -c.result) << "DateCompare(" << c.b << ", " << c.a << ")";
    }
}

TEST(DateCompare, CutsLongOperandsInTheCallersRecords) {
    // 12 digits: the twelfth goes, and with it a difference that would count.
    tagNUMBER a = rec("12345678901234567890.0099"), b = rec("12345678901234567890"), c = rec("1.00000000000000000003");
    ASSERT_EQ(a.bLength, 13);
    EXPECT_EQ(DateCompare(&a, &b), 0);
    EXPECT_EQ(a.bLength, 12) << "DateCompare leaves the first operand cut";
    EXPECT_EQ(hex(b), want("12345678901234567890"));
    tagNUMBER flagged = fromHex("8D C1 01 00 00 00 00 00 00 00 00 00 00 02 09");
    EXPECT_EQ(DateCompare(&c, &flagged), 0);
    EXPECT_EQ(flagged.bLength, 12) << "bit 7 read and cleared";
}

} // namespace
