// NUMBER records to and from integers, doubles and the OLE records, with the
// overflow reply's exact reach.
#include "number_reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace {

using namespace numtest;

std::string want(const std::string& text) { return Ref::parse(text).record(); }

// A record brought to a whole number of words the way hosts expect from the
// OLE conversions: zero digits behind the last (before the terminator).
std::string padded(std::string record) {
    bool negative = record.size() > 3 && record.compare(record.size() - 2, 2, "65") == 0 &&
                    !(std::stoul(record.substr(3, 2), nullptr, 16) & 0x80);
    int length = int(std::stoul(record.substr(0, 2), nullptr, 16));
    while (length % 4) {
        record.insert(negative ? record.size() - 3 : record.size(), negative ? " 64" : " 00");
        ++length;
    }
    char b[3];
    std::snprintf(b, sizeof b, "%02X", length);
    return record.replace(0, 2, b);
}

TEST(NumToLong, CutsTowardsZeroAndRepliesOnOverflow) {
    const struct {
        std::string in; // hex record
        int32_t value;
        LONG reply;
    } cases[] = {
        {want("1.9"), 1, 0},
        {want("-1.9"), -1, 0},
        {want("0.5"), 0, 0},
        {want("2147483647"), 2147483647, 0},
        {want("2147483648"), INT32_MIN, 0},
        {want("4294967295"), -1, 0},
        {want("4294967296"), 0, 0},
        {want("10000000000"), 1410065408, 0},
        {want("100000000000"), 1215752192, 1},
        {want("1000000000000"), -727379968, 1},
        {want("-2147483648"), INT32_MIN, 0},
        {want("1e-50"), 0, 0},
        {"00", 0, 0},
        {"01 C0", 0, 0},
        {"04 C0 00 00 00", 0, 0},
        {"04 C1 07 00 00", 7, 0},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        LONG reply = 99;
        EXPECT_EQ(NumToLong(&n), c.value) << "NumToLong(" << c.in << ")";
        EXPECT_EQ(NumToDWord(&n), DWORD(c.value)) << "NumToDWord(" << c.in << ")";
        EXPECT_EQ(NumToLongReply(&n, &reply), c.value) << "NumToLongReply(" << c.in << ")";
        EXPECT_EQ(reply, c.reply) << "NumToLongReply(" << c.in << ") reply";
        EXPECT_EQ(NumToDWordReply(&n, &reply), DWORD(c.value)) << "NumToDWordReply(" << c.in << ")";
        EXPECT_EQ(reply, c.reply) << "NumToDWordReply(" << c.in << ") reply";
    }
}

TEST(NumToWord, LowSixteenBitsAndTheThirtyTwoBitReply) {
    tagNUMBER n = rec("70000");
    LONG reply = 99;
    EXPECT_EQ(NumToWord(&n), 4464);
    EXPECT_EQ(NumToWordReply(&n, &reply), 4464);
    EXPECT_EQ(reply, 0) << "NumToWordReply(70000): only the 32-bit accumulation is watched";
    n = rec("1000000000000");
    NumToWordReply(&n, &reply);
    EXPECT_EQ(reply, 1) << "NumToWordReply(10^12)";
}

TEST(NumLongToNumber, Records) {
    tagNUMBER n;
    EXPECT_EQ(NumLongToNumber(&n, INT32_MIN), 7);
    EXPECT_EQ(hex(n), "07 3A 4F 35 34 40 34 65") << "NumLongToNumber(-2147483648)";
    EXPECT_EQ(NumToLong(&n), INT32_MIN) << "and back";
    EXPECT_EQ(NumDWordToNumber(&n, 4294967295u), 6);
    EXPECT_EQ(hex(n), "06 C5 2A 5E 60 48 5F") << "NumDWordToNumber(4294967295)";
    EXPECT_EQ(NumWordToNumber(&n, 65535), 4);
    EXPECT_EQ(hex(n), want("65535")) << "NumWordToNumber(65535)";
    EXPECT_EQ(NumLongToNumber(&n, 0), 1);
    EXPECT_EQ(hex(n), "01 C0") << "NumLongToNumber(0)";

    std::mt19937 rng(3);
    std::uniform_int_distribution<int32_t> any(INT32_MIN, INT32_MAX);
    std::uniform_int_distribution<int> magnitude(0, 9);
    for (int i = 0; i < 2000; ++i) {
        int32_t v = any(rng);
        v /= int32_t(std::pow(10.0, magnitude(rng))); // small values as often as large ones
        NumLongToNumber(&n, v);
        ASSERT_EQ(hex(n), want(std::to_string(v))) << "NumLongToNumber(" << v << ")";
        ASSERT_EQ(NumToLong(&n), v) << "NumToLong of " << hex(n);
    }
}

TEST(NumToDouble, Values) {
    const struct {
        std::string in;
        double value;
    } cases[] = {
        {want("1"), 1.0},           {"04 C1 01 00 00", 1.0},    {want("0.1"), 0.1},
        {want("12345.678"), 12345.678}, {want("-0.5"), -0.5},   {want("1e20"), 1e20},
        {want("4294967296"), 4294967296.0}, {"01 C0", 0.0},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.in);
        double d = -7, e = -7;
        NumToDouble(&n, &d);
        NumToDoubleNotNull(&n, &e);
        EXPECT_EQ(d, c.value) << "NumToDouble(" << c.in << ")";
        EXPECT_EQ(e, c.value) << "NumToDoubleNotNull(" << c.in << ")";
    }
    tagNUMBER null = fromHex("00"), invalid = fromHex("19 C1 01"), flagged = fromHex("40 C1 01");
    double d = 1;
    NumToDouble(&null, &d);
    EXPECT_TRUE(NumIsNullDouble(&d)) << "NumToDouble(null)";
    d = 1;
    NumToDouble(&invalid, &d);
    EXPECT_TRUE(NumIsNullDouble(&d)) << "NumToDouble(length 25)";
    NumToDoubleNotNull(&null, &d);
    EXPECT_EQ(d, 0.0) << "NumToDoubleNotNull(null)";
    NumToDoubleNotNull(&flagged, &d);
    EXPECT_TRUE(NumIsNullDouble(&d)) << "NumToDoubleNotNull(40): only a length byte of 0 is 0.0";
}

TEST(NumToDouble, WithinRoundingOfTheValueOverTheWholeRange) {
    std::mt19937 rng(11);
    for (int i = 0; i < 2000; ++i) {
        Ref r = randomRef(rng, 15, 110);
        tagNUMBER n = rec(r.text());
        double d;
        NumToDouble(&n, &d);
        double expect = std::strtod(Ref::ofRecord(n).text().c_str(), nullptr);
        ASSERT_NEAR(d, expect, std::fabs(expect) * 1e-14) << "NumToDouble(" << hex(n) << ")";
    }
}

TEST(NumLLongToNumber, PaddedRecordsOfExactValues) {
    const int64_t values[] = {2147483648LL, 4294967295LL, -1, 0, INT64_MIN, INT64_MAX, 123456789012345678LL};
    for (int64_t v : values) {
        CY cy;
        cy.int64 = v;
        tagNUMBER n;
        NumLLongToNumber(&n, &cy);
        EXPECT_EQ(hex(n), padded(want(std::to_string(v)))) << "NumLLongToNumber(" << v << ")";
        LONG reply = 99;
        CY back;
        NumToLLong(&back, &n, &reply);
        EXPECT_EQ(back.int64, v) << "NumToLLong of " << hex(n);
        EXPECT_EQ(reply, 0);
    }
    CY cy;
    cy.int64 = -1;
    tagNUMBER n;
    NumLLongToNumber(&n, &cy);
    EXPECT_EQ(hex(n), "04 3E 63 64 65");
}

TEST(NumToLLong, CutsAndReplies) {
    const struct {
        const char* in;
        int64_t value;
        LONG reply;
    } cases[] = {
        {"-1", -1, 0},
        {"1.9", 1, 0},
        {"-1.9", -1, 0},
        {"18446744073709551616", 0, 1},
        {"9223372036854775808", INT64_MIN, 0}, // just beyond, and not reported
        {"1e30", 5076944270305263616LL, 1}, // 10^30 modulo 2^64
        {"0.25", 0, 0},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        CY out;
        LONG reply = 99;
        NumToLLong(&out, &n, &reply);
        EXPECT_EQ(out.int64, c.value) << "NumToLLong(" << c.in << ")";
        EXPECT_EQ(reply, c.reply) << "NumToLLong(" << c.in << ") reply";
    }
}

DECIMAL dec(uint32_t hi, uint32_t mid, uint32_t lo, int scale, int sign) {
    DECIMAL d;
    std::memset(&d, 0xEE, sizeof d);
    d.Hi32 = hi;
    d.Mid32 = mid;
    d.Lo32 = lo;
    d.scale = BYTE(scale);
    d.sign = BYTE(sign);
    return d;
}

TEST(NumDECIMALToNumber, PaddedRecords) {
    const struct {
        DECIMAL in;
        const char* value;
    } cases[] = {
        {dec(0, 0, 5, 1, 0), "0.5"},
        {dec(0, 0, 5, 2, 0), "0.05"},
        {dec(0, 0, 125, 3, 0), "0.125"},
        {dec(0, 0, 125, 3, 0x80), "-0.125"},
        {dec(0, 0, 5, 1, 0x80), "-0.5"},
        {dec(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0, 0), "79228162514264337593543950335"},
        {dec(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 27, 0), "79.228162514264337593543950335"},
        {dec(0, 1, 0, 0, 0), "4294967296"},
        {dec(0, 0, 0, 4, 0x80), "0"},
    };
    for (const auto& c : cases) {
        DECIMAL d = c.in;
        tagNUMBER n;
        NumDECIMALToNumber(&n, &d);
        EXPECT_EQ(hex(n), padded(want(c.value))) << "NumDECIMALToNumber(" << c.value << ")";
    }
}

TEST(NumToDECIMAL, MantissaScaleAndReply) {
    const struct {
        const char* in;
        uint32_t hi, mid, lo;
        int scale, sign;
        LONG reply;
    } cases[] = {
        {"79228162514264337593543950335", 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0, 0, 0},
        {"0.5", 0, 0, 50, 2, 0, 0},
        {"123.456", 0, 0, 1234560, 4, 0, 0},
        {"-0.5", 0, 0, 50, 2, 0x80, 0},
        {"0", 0, 0, 0, 0, 0, 0},
        {"4294967296", 0, 1, 0, 0, 0, 0},
        // 40 places: the first 28 kept, cut
        {"0.1234567890123456789012345678999999999999", 0x03FD35EB, 0x6D797A91, 0xBE38F34E, 28, 0, 0},
        // 2^96 x 2: escapes the reply and is kept modulo 2^96
        {"158456325028528675187087900672", 0, 0, 0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        DECIMAL out = dec(1, 1, 1, 1, 1);
        LONG reply = 99;
        NumToDECIMAL(&out, &n, &reply);
        EXPECT_EQ(reply, c.reply) << "NumToDECIMAL(" << c.in << ") reply";
        EXPECT_EQ(out.Hi32, c.hi) << "NumToDECIMAL(" << c.in << ") Hi32";
        EXPECT_EQ(out.Mid32, c.mid) << "NumToDECIMAL(" << c.in << ") Mid32";
        EXPECT_EQ(out.Lo32, c.lo) << "NumToDECIMAL(" << c.in << ") Lo32";
        EXPECT_EQ(out.scale, c.scale) << "NumToDECIMAL(" << c.in << ") scale";
        EXPECT_EQ(out.sign, c.sign) << "NumToDECIMAL(" << c.in << ") sign";
    }
}

TEST(NumToDECIMAL, OutOfReach) {
    tagNUMBER big62 = rec("1e62"), big66 = rec("1e66"), tiny = rec("1e-40");
    LONG reply = 99;
    DECIMAL out = dec(1, 2, 3, 4, 5);
    NumToDECIMAL(&out, &big62, &reply);
    EXPECT_EQ(reply, 1) << "NumToDECIMAL(10^62)";
    out = dec(1, 2, 3, 4, 5);
    NumToDECIMAL(&out, &big66, &reply);
    EXPECT_EQ(reply, 1) << "NumToDECIMAL(10^66)";
    EXPECT_EQ(out.Hi32 + out.Mid32 + out.Lo32 + out.scale + out.sign, 15u) << "NumToDECIMAL(10^66) leaves out alone";
    out = dec(1, 2, 3, 4, 5);
    NumToDECIMAL(&out, &tiny, &reply);
    EXPECT_EQ(reply, 1) << "NumToDECIMAL(10^-40): no digit within 28 places";
    EXPECT_EQ(out.Lo32, 3u) << "NumToDECIMAL(10^-40) leaves out alone";
}

} // namespace
