// Arithmetic on NUMBER records, byte for byte: worked cases where the
// format's corners show (the work area's unrounded drop, the division's
// digit count, the clamp), then random operands against the exact reference.
#include "number_baseline.h"
#include "number_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace numtest;

std::string rep(const char* byte, int times) {
    std::string s;
    for (int i = 0; i < times; ++i) s += std::string(" ") + byte;
    return s;
}

using BinaryOp = int(OXLAPI*)(tagNUMBER*, tagNUMBER*, tagNUMBER*);

// Runs op on two records; checks that the result is the length byte.
std::string apply(BinaryOp op, const tagNUMBER& a, const tagNUMBER& b) {
    tagNUMBER x = a, y = b, out;
    std::memset(&out, 0xEE, sizeof out);
    int r = op(&out, &x, &y);
    EXPECT_EQ(r, out.bLength) << "result is the length byte";
    return hex(out);
}

struct Case {
    BinaryOp op;
    const char* name;
    std::string a, b; // decimal text, or "#" and hex bytes
    std::string record;
};

tagNUMBER operand(const std::string& text) { return text[0] == '#' ? fromHex(text.substr(1)) : rec(text.c_str()); }

TEST(NumArithmetic, WorkedCases) {
    const Case cases[] = {
        {NumDivide, "/", "1", "3", "18 C0" + rep("21", 23)},
        {NumDivide, "/", "-1", "3", "18 3F" + rep("43", 22) + " 65"},
        {NumDivide, "/", "2", "3", "18 C0" + rep("42", 23)}, // first quotient digit 0: truncated
        {NumDivide, "/", "7", "3", "18 C1 02" + rep("21", 22)},
        {NumDivide, "/", "1", "0", "02 FC 01"},
        {NumDivide, "/", "-1", "0", "03 03 63 65"},
        {NumDivide, "/", "0", "0", "01 C0"},
        {NumDivide, "/", "#00", "5", "01 C0"},
        {NumDivide, "/", "5", "#00", "02 FC 01"},
        {NumDivide, "/", "1", "8", "03 C0 0C 32"},
        {NumDivide, "/", "12345.678", "-0.001", "06 3B 58 42 2C 16 65"},
        {NumDivide, "/", "#03 C1 00 05", "#03 C2 00 02", "03 C0 02 32"}, // leading zero digits: 0.05 / 2
        {NumAddition, "+", "1", "1e-44", "18 C1 01" + rep("00", 21) + " 01"},
        {NumAddition, "+", "1", "1e-46", "02 C1 01"},
        {NumSubtract, "-", "1", "1e-46", "18 C0" + rep("63", 23)},
        {NumSubtract, "-", "-1", "1e-44", "03 3E 63 65"},
        {NumAddition, "+", "1e78", "1", "02 E8 01"},
        {NumAddition, "+", "#00", "#00", "01 C0"},
        {NumAddition, "+", "#00", "-7", "03 3E 5D 65"},
        {NumSubtract, "-", "#00", "7", "03 3E 5D 65"},
        {NumSubtract, "-", "5", "5", "01 C0"},
        {NumSubtract, "-", "-5", "-5", "01 C0"},
        {NumAddition, "+", "99", "1", "02 C2 01"},
        {NumAddition, "+", "-12345.678", "12345.6", "04 3F 5D 14 65"},
        {NumSubtract, "-", "0.5", "100.25", "04 3E 01 19 65"},
        {NumAddition, "+", "#82 C1 05", "#92 C1 05 06 07", "02 C1 0A"}, // bit 7: lengths from bits 0-3
        {NumMultiply, "*", "#00", "5", "01 C0"},
        {NumMultiply, "*", "1e100", "1e100", "02 FC 01"},
        {NumMultiply, "*", "1e-100", "1e-100", "02 84 01"},
        {NumMultiply, "*", "12345.678", "-2", "07 3C 62 36 09 41 28 65"},
        {NumMultiply, "*", "-0.5", "-0.5", "02 C0 19"},
        // Products whose rounding carries through 99s: across limbs of eight
        // decimal digits, and into the zero digit in front of the first one.
        {NumMultiply, "*", "12345.678", "#18 C0" + rep("21", 23), "05 C2 29 0F 16 3C"},
        {NumMultiply, "*", "0.0101", "0.9900990099009900990099009900990099009900990099", "02 C0 01"},
        {NumMultiply, "*", "-0.5", "0.01" + std::string(44, '9'), "03 3F 63 65"},
        {NumMultiply, "*", "-0.5", "1." + std::string(44, '9'), "03 3E 63 65"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(apply(c.op, operand(c.a), operand(c.b)), c.record) << c.a << " " << c.name << " " << c.b;
}

TEST(NumArithmetic, ResultMayBeAnOperand) {
    tagNUMBER a = rec("12345.678"), b = rec("-0.001");
    NumMultiply(&a, &a, &b);
    EXPECT_EQ(hex(a), Ref::parse("-12.345678").record()) << "NumMultiply(a, a, b)";
    NumAddition(&b, &a, &b);
    EXPECT_EQ(hex(b), Ref::parse("-12.346678").record()) << "NumAddition(b, a, b)";
    NumDivide(&b, &b, &b);
    EXPECT_EQ(hex(b), "02 C1 01") << "NumDivide(b, b, b)";
}

// The result of an operation on the reference's values, as a record. The sum
// drops the smaller operand's digits behind the 24-digit work area unrounded,
// and the quotient is the first 24 base-100 digits of the exact quotient.
std::string expectedSum(const Ref& a, const Ref& b, bool subtract) {
    Ref bs = subtract ? -b : b;
    bool aTop = a.compareMagnitude(b) >= 0;
    const Ref& top = aTop ? a : bs;
    Ref bottom = aTop ? bs : a;
    if (top.zero()) return "01 C0";
    bool adding = top.negative == bottom.negative || bottom.zero();
    int e = top.place100() + 65;
    int lowest = e - 87 - (adding ? 0 : 1); // base-100 place of the work area's last digit
    return (top + bottom.cut(2 * lowest)).record();
}

std::string expectedQuotient(const Ref& a, const Ref& b) {
    if (a.zero()) return "01 C0";
    int ea, eb;
    std::string pa = a.pairs(&ea), pb = b.pairs(&eb);
    int s = 23 + int(pb.size() / 2) - int(pa.size() / 2);
    Ref q;
    q.mag = big::div(big::trim(pa + std::string(2 * s, '0')), big::trim(pb));
    q.exp10 = 2 * (ea - eb - 23);
    q.negative = !q.mag.empty() && a.negative != b.negative;
    return q.record();
}

// Quotients whose digit estimate from the divisor's first two limbs of eight
// decimal digits is still one too high, so that the divisor is added back:
// a divisor 0.5 followed by zeros and then nines in its third limb.
TEST(NumArithmetic, QuotientDigitsWhereTheEstimateIsOneTooHigh) {
    const char* cases[][2] = {
        {"0.25", "0.500000000000000099999999"},
        {"0.0025", "0.500000000000000099999999"},
        {"-0.25", "0.5000000000000000999999999999"},
        {"0.250000000000000000000000000001", "0.50000000000000009999999900000007"},
    };
    for (const auto& c : cases) {
        tagNUMBER a = rec(c[0]), b = rec(c[1]), want;
        tagNUMBER x = a, y = b;
        numbaseline::Divide(&want, &x, &y);
        EXPECT_EQ(apply(NumDivide, a, b), expectedQuotient(Ref::ofRecord(a), Ref::ofRecord(b))) << c[0] << " / " << c[1];
        EXPECT_EQ(apply(NumDivide, a, b), hex(want)) << c[0] << " / " << c[1] << " against the digit-by-digit engine";
    }
}

TEST(NumArithmetic, AgreesWithExactArithmeticOnRandomOperands) {
    std::mt19937 rng(42);
    int failures = 0;
    for (int i = 0; i < 3000 && failures < 10; ++i) {
        bool close = i % 3 == 0; // operands of like size make the long carries and borrows
        tagNUMBER ra = rec(randomRef(rng, 46, close ? 3 : 40).text());
        tagNUMBER rb = rec(randomRef(rng, 46, close ? 3 : 40).text());
        Ref a = Ref::ofRecord(ra), b = Ref::ofRecord(rb);
        const struct {
            BinaryOp op;
            const char* name;
            std::string want;
        } ops[] = {
            {NumAddition, "+", expectedSum(a, b, false)},
            {NumSubtract, "-", expectedSum(a, b, true)},
            {NumMultiply, "*", (a * b).record()},
            {NumDivide, "/", b.zero() ? (a.zero() ? "01 C0" : a.negative ? "03 03 63 65" : "02 FC 01")
                                      : expectedQuotient(a, b)},
        };
        for (const auto& o : ops) {
            std::string got = apply(o.op, ra, rb);
            if (got != o.want) ++failures;
            EXPECT_EQ(got, o.want) << hex(ra) << " " << o.name << " " << hex(rb) << "  (" << a.text() << " " << o.name
                                   << " " << b.text() << ")";
        }
    }
}

// Records of any bytes (hosts' files can hold anything) give some record of
// at most 24 data bytes, and nothing is read or written outside the records.
TEST(NumArithmetic, AnyBytesGiveARecordOfValidLength) {
    std::mt19937 rng(99);
    std::uniform_int_distribution<int> byte(0, 255);
    auto anyRecord = [&] {
        tagNUMBER n;
        for (BYTE* p = &n.bLength; p < &n.bLength + sizeof n; ++p) *p = BYTE(byte(rng));
        if (byte(rng) < 128) n.bLength &= 0x1F; // lengths that are read as well as invalid ones
        return n;
    };
    for (int i = 0; i < 20000; ++i) {
        tagNUMBER a = anyRecord(), b = anyRecord(), out;
        for (BinaryOp op : {NumAddition, NumSubtract, NumMultiply, NumDivide}) {
            op(&out, &a, &b);
            ASSERT_LE(out.bLength, 24) << hex(a, 25) << " / " << hex(b, 25);
        }
        NumRound(&out, &a, byte(rng) - 128);
        ASSERT_LE(out.bLength, 24) << "NumRound of " << hex(a, 25);
        tagNUMBER c = a;
        if (NumTruncate(&c, byte(rng) - 128, byte(rng) - 128)) {
            ASSERT_LE(c.bLength, 24) << "NumTruncate of " << hex(a, 25);
        } else {
            ASSERT_EQ(hex(c, 25), hex(a, 25)) << "NumTruncate leaves what it refuses alone";
        }
    }
}

// A record of random digits: normal ones of every length and sign around the
// exponents that make the operands overlap, the longest ones (23 and 22
// digits, with 99s to carry through) more often, and now and then bytes that
// aren't a normal record at all.
tagNUMBER randomRecord(std::mt19937& rng) {
    std::uniform_int_distribution<int> pick(0, 99);
    tagNUMBER n;
    for (BYTE* p = &n.bLength; p < &n.bLength + sizeof n; ++p) *p = BYTE(rng());
    int kind = pick(rng);
    if (kind < 8) { // any bytes, any length the four operations read
        if (kind < 4) n.bLength &= 0x1F;
        return n;
    }
    bool negative = pick(rng) < 50;
    int limit = negative ? NUM_MAX_DIGITS_NEG : NUM_MAX_DIGITS_POS;
    int count = kind < 40 ? limit : 1 + pick(rng) % limit;
    int e = NUM_EXP_BIAS - 6 + pick(rng) % 13;
    if (pick(rng) < 3) e = pick(rng) < 50 ? NUM_MIN_EXP + pick(rng) % 3 : NUM_MAX_EXP - pick(rng) % 3;
    BYTE digits[24];
    for (int i = 0; i < count; ++i) {
        int style = pick(rng);
        digits[i] = BYTE(style < 15 ? 99 : style < 25 ? 0 : style < 30 ? 50 : pick(rng));
    }
    if (digits[0] == 0) digits[0] = 1;
    if (digits[count - 1] == 0) digits[count - 1] = 7;
    n.abData[0] = BYTE(negative ? ~(0x80 + e) : 0x80 + e);
    for (int i = 0; i < count; ++i) n.abData[1 + i] = BYTE(negative ? 100 - digits[i] : digits[i]);
    if (negative) n.abData[1 + count] = 0x65;
    n.bLength = BYTE(negative ? count + 2 : count + 1);
    if (pick(rng) < 2) n.bLength |= 0x80; // the four operations then read bits 0-3 only
    return n;
}

// The engine against its first, digit-by-digit form: every byte of every
// result the same, for normal and non-normal operands alike.
TEST(NumArithmetic, SameBytesAsTheDigitByDigitEngine) {
    struct Pair {
        BinaryOp fast;
        int (*plain)(tagNUMBER*, tagNUMBER*, tagNUMBER*);
        const char* name;
    } pairs[] = {{NumAddition, numbaseline::Addition, "NumAddition"},
                 {NumSubtract, numbaseline::Subtract, "NumSubtract"},
                 {NumMultiply, numbaseline::Multiply, "NumMultiply"},
                 {NumDivide, numbaseline::Divide, "NumDivide"}};
    std::mt19937 rng(2024);
    int failures = 0;
    for (int i = 0; i < 40000 && failures < 10; ++i) {
        tagNUMBER a = randomRecord(rng), b = randomRecord(rng);
        if (i % 16 == 0) b = a; // equal magnitudes: a - a, and the tie between equal exponents
        int length = a.bLength & 0x3F;
        if (i % 16 == 1 && length > 2 && length <= 24) { // equal exponents, a last digit apart
            b = a;
            ++b.abData[length - 2];
        }
        for (const Pair& p : pairs) {
            // All 25 bytes: those past the result's length are left as they were.
            tagNUMBER x = a, y = b, out1, out2;
            std::memset(&out1, i & 0xFF, sizeof out1);
            std::memset(&out2, i & 0xFF, sizeof out2);
            p.fast(&out1, &x, &y);
            x = a, y = b;
            p.plain(&out2, &x, &y);
            std::string got = hex(out1, 25), want = hex(out2, 25);
            if (got != want) ++failures;
            EXPECT_EQ(got, want) << p.name << "(" << hex(a, 25) << ", " << hex(b, 25) << ")";
        }
        int scale = int(rng() % 80) - 40;
        tagNUMBER out1, out2;
        NumRound(&out1, &a, scale);
        numbaseline::Round(&out2, &a, scale);
        EXPECT_EQ(hex(out1), hex(out2)) << "NumRound(" << hex(a, 25) << ", " << scale << ")";
        int power = int(rng() % 130) - 65;
        NumPower10(&out1, &a, power);
        numbaseline::Power10(&out2, &a, power);
        EXPECT_EQ(hex(out1), hex(out2)) << "NumPower10(" << hex(a, 25) << ", " << power << ")";
    }
}

} // namespace
