// NUMBER records to and from integers, doubles and the OLE records, with the
// overflow reply's exact reach.
#include "number_reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using namespace numtest;

// A record brought to a whole number of words, as the OLE conversions write
// it: zero digits behind the last one (in front of a negative's terminator).
std::string padded(const std::string& value) {
    tagNUMBER n = rec(value);
    int len = n.bLength;
    bool negative = len > 1 && !(n.abData[0] & 0x80);
    while (len % 4) n.abData[len++ - negative] = negative ? 0x64 : 0;
    if (negative) n.abData[len - 1] = 0x65;
    n.bLength = BYTE(len);
    return hex(n);
}

TEST(NumToLong, CutsTowardsZeroAndRepliesOnOverflow) {
    const struct { std::string in; int32_t value; LONG reply; } cases[] = {
        {"1.9", 1, 0}, {"-1.9", -1, 0}, {"0.5", 0, 0}, {"1e-50", 0, 0}, {"2147483647", 2147483647, 0},
        {"2147483648", INT32_MIN, 0}, {"-2147483648", INT32_MIN, 0}, {"4294967295", -1, 0}, {"4294967296", 0, 0},
        {"70000", 70000, 0}, {"10000000000", 1410065408, 0}, {"100000000000", 1215752192, 1},
        {"-100000000000", -1215752192, 1}, {"1000000000000", -727379968, 1},
        // the test watches the partial value before its last multiplication: 2^29 - 1 passes; top bits
        // 2 pass while the new value reads negative; 2^31 has top bits that read negative and passes
        {"53687091199", 2147483647, 0}, {"53687091300", -2147483548, 0}, {"80530636800", -1073741824, 1},
        {"214748364800", 0, 0}, {"55834574848", 0, 0}, {"55834574849", 1, 1}, // top bits 2 and a new value of exactly 0 (2^32 x 13) passes, of 1 not
        {"#00", 0, 0}, {"#01 C0", 0, 0}, {"#04 C0 00 00 00", 0, 0},
        {"#04 C1 07 00 00", 7, 0}, {"#43 C1 07 08", 7, 0}, // padded; bits 6-7 are not length
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        LONG r[3] = {9, 9, 9};
        auto got = std::make_tuple(NumToLong(&n), NumToDWord(&n), NumToWord(&n), NumToLongReply(&n, &r[0]),
                                   NumToDWordReply(&n, &r[1]), NumToWordReply(&n, &r[2]));
        EXPECT_EQ(got, std::make_tuple(c.value, DWORD(c.value), WORD(c.value), c.value, DWORD(c.value), WORD(c.value)))
            << "NumToLong, NumToDWord, NumToWord and their Reply forms of " << c.in;
        EXPECT_EQ(std::make_tuple(r[0], r[1], r[2]), std::make_tuple(c.reply, c.reply, c.reply)) << "replies of " << c.in;
    }
}

TEST(NumLongToNumber, Records) {
    tagNUMBER n;
    auto made = [&](int result) { return result == n.bLength ? hex(n) : "result " + std::to_string(result); };
    EXPECT_EQ(made(NumLongToNumber(&n, INT32_MIN)), "07 3A 4F 35 34 40 34 65") << "NumLongToNumber(-2147483648)";
    EXPECT_EQ(made(NumDWordToNumber(&n, 4294967295u)), "06 C5 2A 5E 60 48 5F") << "NumDWordToNumber(4294967295)";
    EXPECT_EQ(made(NumWordToNumber(&n, 65535)), want("65535")) << "NumWordToNumber(65535)";
    EXPECT_EQ(NumGet(40000, &n) == &n ? hex(n) : "not out", want("40000")) << "NumGet(40000)";
    std::mt19937 rng(3);
    for (int i = 0; i < 2000; ++i) {
        int32_t v = int32_t(rng()) / int32_t(std::pow(10.0, rng() % 10)); // small values as often as large ones
        ASSERT_EQ(made(NumLongToNumber(&n, v)), want(std::to_string(v))) << "NumLongToNumber(" << v << ")";
        ASSERT_EQ(NumToLong(&n), v) << "NumToLong of " << hex(n);
        NumDWordToNumber(&n, uint32_t(v));
        ASSERT_EQ(hex(n), want(std::to_string(uint32_t(v)))) << "NumDWordToNumber(" << uint32_t(v) << ")";
    }
}

TEST(NumToDouble, Values) {
    const double null = std::numeric_limits<double>::quiet_NaN(); // any double NumIsNullDouble takes
    const struct { std::string in; double toDouble, notNull; } cases[] = {
        {"1", 1.0, 1.0}, {"#04 C1 01 00 00", 1.0, 1.0}, {"0.1", 0.1, 0.1}, {"12345.678", 12345.678, 12345.678},
        {"-0.5", -0.5, -0.5}, {"1e20", 1e20, 1e20}, {"4294967296", 4294967296.0, 4294967296.0}, {"1e-20", 1e-20, 1e-20},
        {"#01 C0", 0.0, 0.0}, {"#00", null, 0.0}, {"#19 C1 01", null, null}, {"#40 C1 01", null, null},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        double d = -7, e = -7;
        NumToDouble(&n, &d);
        NumToDoubleNotNull(&n, &e);
        EXPECT_TRUE(std::isnan(c.toDouble) ? NumIsNullDouble(&d) : d == c.toDouble) << "NumToDouble(" << c.in << "): " << d;
        EXPECT_TRUE(std::isnan(c.notNull) ? NumIsNullDouble(&e) : e == c.notNull) << "NumToDoubleNotNull(" << c.in << "): " << e;
    }
    std::mt19937 rng(11); // over the whole range, within rounding of the exact value
    for (int i = 0; i < 2000; ++i) {
        tagNUMBER n = randomRecord(rng, 15, 100);
        double d, expect = std::strtod(Ref::of(n).text().c_str(), nullptr);
        NumToDouble(&n, &d);
        ASSERT_NEAR(d, expect, std::fabs(expect) * 1e-14) << "NumToDouble(" << hex(n) << ")";
    }
}

TEST(NumLLong, PaddedRecordsOfExactValuesAndBack) {
    const int64_t values[] = {2147483648LL, 4294967295LL, -1, 0, 1, INT64_MIN, INT64_MAX, 123456789012345678LL, -100};
    for (int64_t v : values) {
        CY cy, back;
        cy.int64 = v;
        tagNUMBER n;
        NumLLongToNumber(&n, &cy);
        EXPECT_EQ(hex(n), padded(std::to_string(v))) << "NumLLongToNumber(" << v << ")";
        LONG reply = 99;
        NumToLLong(&back, &n, &reply);
        EXPECT_EQ(std::make_pair(back.int64, reply), std::make_pair(v, LONG(0))) << "NumToLLong of " << hex(n);
    }
    const struct { const char* in; int64_t value; LONG reply; } cases[] = {
        {"1.9", 1, 0}, {"-1.9", -1, 0}, {"0.25", 0, 0}, {"18446744073709551616", 0, 1},
        {"9223372036854775808", INT64_MIN, 0},           // just beyond, and not reported
        {"1e30", 5076944270305263616LL, 1},              // 10^30 modulo 2^64
        {"14411518807585587199", -4035225266123964417LL, 0}, // the partial is 2^57 - 1: not reported
        {"14411518807585587200", -4035225266123964416LL, 1}, // the partial is 2^57
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        CY out;
        LONG reply = 99;
        NumToLLong(&out, &n, &reply);
        EXPECT_EQ(std::make_pair(out.int64, reply), std::make_pair(c.value, c.reply)) << "NumToLLong(" << c.in << "), reply";
    }
}

DECIMAL dec(const Int& mantissa, int scale, int sign) {
    DECIMAL d;
    std::memset(&d, 0xEE, sizeof d);
    d.Lo32 = uint32_t(mantissa & 0xFFFFFFFFu);
    d.Mid32 = uint32_t((mantissa >> 32) & 0xFFFFFFFFu);
    d.Hi32 = uint32_t((mantissa >> 64) & 0xFFFFFFFFu);
    d.scale = BYTE(scale);
    d.sign = BYTE(sign);
    return d;
}
const Int kMax96 = (Int(1) << 96) - 1; // 79228162514264337593543950335

TEST(NumDECIMALToNumber, PaddedRecords) {
    const struct { Int mantissa; int scale, sign; const char* value; } cases[] = {
        {5, 1, 0, "0.5"},          {5, 2, 0, "0.05"},          {125, 3, 0, "0.125"},      {125, 3, 0x80, "-0.125"},
        {5, 1, 0x80, "-0.5"},      {kMax96, 0, 0, "79228162514264337593543950335"},
        {kMax96, 27, 0, "79.228162514264337593543950335"}, {kMax96, 28, 1, "-7.9228162514264337593543950335"},
        {Int(1) << 32, 0, 0, "4294967296"}, {0, 4, 0x80, "0"}, {7, 0, 0, "7"},
    };
    for (const auto& c : cases) {
        DECIMAL d = dec(c.mantissa, c.scale, c.sign);
        tagNUMBER n;
        NumDECIMALToNumber(&n, &d);
        EXPECT_EQ(hex(n), padded(c.value)) << "NumDECIMALToNumber(" << c.value << ")";
    }
}

TEST(NumToDECIMAL, MantissaScaleAndReply) {
    const Int k28("1234567890123456789012345678");
    const struct { std::string in; Int mantissa; int scale, sign; LONG reply; } cases[] = {
        {"79228162514264337593543950335", kMax96, 0, 0, 0}, {"0.5", 50, 2, 0, 0}, {"123.456", 1234560, 4, 0, 0},
        {"-0.5", 50, 2, 0x80, 0}, {"0", 0, 0, 0, 0}, {"#00", 0, 0, 0, 0}, {"4294967296", Int(1) << 32, 0, 0, 0},
        {"1e64", pow10(64) % (Int(1) << 96), 0, 0, 1}, // 32 zero digits after the 1: still placed
        // 27 and 28 places are kept; 29, 30 and 40 cut to 28, unrounded
        {"0.123456789012345678901234567", Int("1234567890123456789012345670"), 28, 0, 0},
        {"0.1234567890123456789012345678", k28, 28, 0, 0}, {"0.12345678901234567890123456789", k28, 28, 0, 0},
        {"-0.123456789012345678901234567899", k28, 28, 0x80, 0},
        {"0.1234567890123456789012345678999999999999", k28, 28, 0, 0},
        {"1e-29", 0, 28, 0, 0}, // its one digit falls behind the cut: nothing left, still placed
        // 2^96 x 2 escapes the reply and is kept modulo 2^96
        {"158456325028528675187087900672", 0, 0, 0, 0},
        // no place for the value at all: reply 1 and `out` left as it was (1, scale 1, sign 1)
        {"1e66", 1, 1, 1, 1}, {"1e-31", 1, 1, 1, 1}, {"-1e-40", 1, 1, 1, 1},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        DECIMAL out = dec(1, 1, 1), expect = dec(c.mantissa, c.scale, c.sign);
        LONG reply = 99;
        NumToDECIMAL(&out, &n, &reply);
        EXPECT_EQ(std::make_tuple(out.Hi32, out.Mid32, out.Lo32, out.scale, out.sign, reply),
                  std::make_tuple(expect.Hi32, expect.Mid32, expect.Lo32, expect.scale, expect.sign, c.reply))
            << "NumToDECIMAL(" << c.in << "): hi, mid, lo, scale, sign, reply";
    }
}

} // namespace
