// Arithmetic on NUMBER records, byte for byte: worked cases where the
// format's corners show (the work area's unrounded drop, the division's digit
// count, the clamp), rounding, cutting and shifting in decimal places, the
// date comparison's tolerance, then random operands against exact values.
#include "number_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace numtest;

using BinaryOp = int(OXLAPI*)(tagNUMBER*, const tagNUMBER*, const tagNUMBER*);

// Runs op on copies of two records, into a third and into either operand:
// the result must be the length byte, and the same record all three ways.
std::string apply(BinaryOp op, const tagNUMBER& a, const tagNUMBER& b) {
    tagNUMBER x = a, y = b, out = fromHex("EE"), inA = a, inB = b;
    EXPECT_EQ(op(&out, &x, &y), out.bLength) << "result is the length byte";
    op(&inA, &inA, &y);
    op(&inB, &x, &inB);
    std::string got = hex(out);
    return hex(inA) == got && hex(inB) == got ? got : got + " (into a: " + hex(inA) + ", into b: " + hex(inB) + ")";
}

TEST(NumArithmetic, WorkedCases) {
    const struct { BinaryOp op; const char* name; std::string a, b, record; } cases[] = {
        // 24 quotient digits, the first 0 when a's digits are below b's: then 23 cut, else rounded to 23
        {NumDivide, "/", "1", "3", "18 C0" + rep("21", 23)}, {NumDivide, "/", "2", "3", "18 C0" + rep("42", 23)},
        {NumDivide, "/", "-1", "3", "18 3F" + rep("43", 22) + " 65"}, {NumDivide, "/", "7", "3", "18 C1 02" + rep("21", 22)},
        // by zero and of zero (null reads as zero); the clamp
        {NumDivide, "/", "1", "0", "02 FC 01"}, {NumDivide, "/", "-1", "0", "03 03 63 65"},
        {NumDivide, "/", "0", "0", "01 C0"}, {NumDivide, "/", "#00", "5", "01 C0"}, {NumDivide, "/", "1", "8", "03 C0 0C 32"},
        {NumDivide, "/", "5", "#00", "02 FC 01"}, {NumDivide, "/", "1e100", "1e-100", "02 FC 01"},
        // signs; leading zero digits that aren't normal: 0.05 / 2; digits above 99: 150.75 / 3, / 2.5
        {NumDivide, "/", "12345.678", "-0.001", "06 3B 58 42 2C 16 65"},
        {NumDivide, "/", "#03 C1 00 05", "#03 C2 00 02", "03 C0 02 32"},
        {NumDivide, "/", "#03 C1 96 4B", "3", "03 C1 32 19"}, {NumDivide, "/", "#03 C1 96 4B", "2.5", "03 C1 3C 1E"},
        // the work area: 1e-44 is kept, 1e-46 dropped unrounded; a negative has room for 22 digits
        {NumAddition, "+", "1", "1e-44", "18 C1 01" + rep("00", 21) + " 01"}, {NumSubtract, "-", "-1", "1e-44", "03 3E 63 65"},
        {NumAddition, "+", "1", "1e-46", "02 C1 01"}, {NumSubtract, "-", "1", "1e-46", "18 C0" + rep("63", 23)},
        {NumAddition, "+", "1e78", "1", "02 E8 01"}, {NumAddition, "+", "#00", "#00", "01 C0"},
        {NumAddition, "+", "#00", "-7", "03 3E 5D 65"}, {NumSubtract, "-", "#00", "7", "03 3E 5D 65"},
        {NumSubtract, "-", "5", "5", "01 C0"}, {NumSubtract, "-", "-5", "-5", "01 C0"},
        // carries and borrows through 99s and zeros, the carry's exponent 125 clamped
        {NumAddition, "+", "99", "1", "02 C2 01"}, {NumAddition, "+", "99.99", "0.01", "02 C2 01"},
        {NumAddition, "+", "-12345.678", "12345.6", "04 3F 5D 14 65"},
        {NumSubtract, "-", "0.5", "100.25", "04 3E 01 19 65"},
        {NumSubtract, "-", "100", "0.01", "03 C1 63 63"}, {NumAddition, "+", "1e119", "9e119", "02 FC 01"},
        // 99.99...9950 in 24 places: the 50 behind the 23rd rounds through every 99 to 100
        {NumSubtract, "-", "100", "5e-45", "02 C2 01"}, {NumSubtract, "-", "101", "5e-45", "03 C2 01 01"},
        // bit 7 of a length byte: the length from bits 0-3; a byte above 99 carries; null and zero
        // whatever bytes stand behind them
        {NumAddition, "+", "#82 C1 05", "#92 C1 05 06 07", "02 C1 0A"}, {NumAddition, "+", "#02 C1 64", "99", "03 C2 01 63"},
        {NumAddition, "+", "1", "#09 C1 01 01 01 01 01 01 01 96", "09 C1 02 01 01 01 01 01 02 32"}, // ... the 9th place of b's area
        {NumSubtract, "-", "#06 C3 01 17 D6 43 50", "#00", "06 C3 01 19 0E 43 50"},
        {NumAddition, "+", "#00 3E 63 65", "5", "02 C1 05"}, {NumSubtract, "-", "5", "#01 3E 63 65", "02 C1 05"},
        // 150.75 - 0.8 digit by digit, a borrow: 149 95, whose carry out of 149 takes the last digit's place
        {NumSubtract, "-", "#03 C1 96 4B", "0.8", "03 C2 01 31"},
        {NumMultiply, "*", "#02 C1 96", "1", "03 C2 01 32"}, // 1.5 x 100 with its digit above 99, times 1
        {NumMultiply, "*", "#05 C1 96 05 07 09", "1", "06 C2 01 32 05 07 09"}, // 150.050709: its fourth digit
        {NumMultiply, "*", "#04 C1 96 05 07", "1.01", "06 C2 01 33 37 0C 07"}, // 150.0507 x 1.01, the digits as limbs
        {NumMultiply, "*", "#87 C1 01 02 03 04 05 06", "2.0000000001", "0C C1 02 04 06 08 0A 0D 02 03 04 05 06"}, // limbs, unpacked
        {NumMultiply, "*", "#00", "5", "01 C0"}, {NumMultiply, "*", "1e100", "1e100", "02 FC 01"},
        {NumMultiply, "*", "1e-100", "1e-100", "02 84 01"}, {NumMultiply, "*", "-0.5", "-0.5", "02 C0 19"},
        {NumMultiply, "*", "12345.678", "-2", "07 3C 62 36 09 41 28 65"},
        // products whose rounding carries through 99s, into the front
        {NumMultiply, "*", "12345.678", "#18 C0" + rep("21", 23), "05 C2 29 0F 16 3C"},
        {NumMultiply, "*", "0.0101", "0.9900990099009900990099009900990099009900990099", "02 C0 01"},
        {NumMultiply, "*", "-0.5", "0.01" + std::string(44, '9'), "03 3F 63 65"},
        {NumMultiply, "*", "-0.5", "1." + std::string(44, '9'), "03 3E 63 65"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(apply(c.op, rec(c.a), rec(c.b)), c.record) << c.a << " " << c.name << " " << c.b;
}

// The sum as the engine must form it: the smaller operand's digits behind
// the 24 places of the work area go unrounded (one place fewer when adding,
// which keeps one in front for the carry), then the record's own rounding.
std::string expectedSum(const Ref& a, Ref b) {
    bool aTop = (Ref{a.mag(), a.exp10} + Ref{-b.mag(), b.exp10}).v >= 0; // equal magnitudes: a
    const Ref& top = aTop ? a : b;
    Ref bottom = aTop ? b : a;
    if (top.v == 0) return "01 C0";
    int e;
    top.digits(&e);
    bool adding = top.negative() == bottom.negative() || bottom.v == 0;
    return (top + bottom.at(2 * (e - 88 + adding))).record();
}

// The quotient's first 24 base-100 digits, the first standing for 100^0 of
// (a's digits as a fraction) / (b's digits as a fraction); then the record's rounding.
std::string expectedQuotient(const Ref& a, const Ref& b) {
    if (a.v == 0) return "01 C0";
    if (b.v == 0) return a.negative() ? "03 03 63 65" : "02 FC 01";
    int ea, eb;
    size_t na = a.digits(&ea).size(), nb = b.digits(&eb).size();
    Int ma = a.mag() * (a.exp10 % 2 ? 10 : 1), mb = b.mag() * (b.exp10 % 2 ? 10 : 1);
    Int q = ma * pow10(2 * int(23 + nb)) / (mb * pow10(2 * int(na)));
    return Ref{a.negative() != b.negative() ? Int(-q) : q, 2 * (ea - eb - 23)}.record();
}

TEST(NumArithmetic, AgreesWithExactArithmeticOnRandomOperands) {
    std::mt19937 rng(42);
    for (int i = 0; i < 4000; ++i) {
        int spread = i % 3 ? 40 : 3; // operands of like size make the long carries and borrows
        tagNUMBER ra = randomRecord(rng, 46, spread), rb = i % 16 ? randomRecord(rng, 46, spread) : ra;
        if (i < 6) { // quotient digits whose estimate is one too high: the divisor is added back
            const char* pairs[][2] = {{"0.25", "0.500000000000000099999999"}, {"0.0025", "0.500000000000000099999999"},
                                      {"-0.25", "0.5000000000000000999999999999"},
                                      {"0.250000000000000000000000000001", "0.50000000000000009999999900000007"},
                                      // ... on binary words, with divisors of two and of three words
                                      {"0.2059431152533502576533708110781237438602966529", "0.044927579761200001313586034864605716186485622600"},
                                      {"-5e8", "8000000000000000000000000000000000000000090e18"}};
            ra = rec(pairs[i][0]), rb = rec(pairs[i][1]);
        }
        Ref a = Ref::of(ra), b = Ref::of(rb);
        const struct { BinaryOp op; const char* name; std::string want; } ops[] = {
            {NumAddition, "+", expectedSum(a, b)}, {NumSubtract, "-", expectedSum(a, -b)},
            {NumMultiply, "*", (a * b).record()}, {NumDivide, "/", expectedQuotient(a, b)},
        };
        for (const auto& o : ops) {
            ASSERT_EQ(apply(o.op, ra, rb), o.want)
                << hex(ra) << " " << o.name << " " << hex(rb) << "  (" << a.text() << " " << o.name << " " << b.text() << ")";
        }
        int scale = int(rng() % 60) - 20;
        tagNUMBER out;
        int length = NumRound(&out, &ra, scale);
        ASSERT_EQ(hex(out), a.at(-scale, true).record()) << "NumRound(" << hex(ra) << ", " << scale << ")";
        ASSERT_EQ(length, out.bLength) << "NumRound(" << hex(ra) << ", " << scale << ")'s result";
        int power = int(rng() % 140) - 70;
        bool beyond = power < -60 || power > 60;
        length = NumPower10(&out, &ra, power);
        ASSERT_EQ(hex(out), beyond ? "00" : (a * Ref{1, power}).record()) << "NumPower10(" << hex(ra) << ", " << power << ")";
        ASSERT_EQ(length, beyond ? 0 : out.bLength) << "NumPower10(" << hex(ra) << ", " << power << ")'s result";
    }
}

// The random operands check the rounding itself; these are inputs they never are.
TEST(NumRound, NullAndTheSmallestExponent) {
    tagNUMBER tiny = rec("1e-121"), null = fromHex("00"), out;
    EXPECT_EQ(NumRound(&out, &tiny, 121), 2) << "NumRound(1e-121, 121)";
    EXPECT_EQ(hex(out), want("1e-121")) << "NumRound(1e-121, 121)";
    EXPECT_EQ(NumRound(&out, &null, 2), 1) << "NumRound(null, 2)";
    EXPECT_EQ(hex(out), "01 C0") << "NumRound(null, 2)";
}

TEST(NumTruncate, WorkedCases) {
    const struct { std::string in; int precision, scale, result; std::string out; } cases[] = {
        {"12345.678", 5, 2, 1, want("345.67")}, // high digits go too
        {"-12345.678", 7, 2, 1, want("-12345.67")}, {"123.45", 1, 1, 1, want("0.4")},
        {"123456", 6, -3, 1, want("123000")}, {"123456", 2, -3, 1, want("23000")}, {"0.001", 3, 2, 1, "01 C0"},
        {"-98.76", 3, 1, 1, want("-98.7")}, {"98.76", 1, 0, 1, want("8")}, {"98.76", 0, 0, 1, "01 C0"},
        {"1234", 90, 2, 1, want("1234")}, {"#00", 5, 2, 0, "00"}, {"#19 C1 05", 5, 2, 0, "19 C1 05"},
        {"#04 C1 05 07 00", 5, 1, 1, "02 C1 05"}, // padded in, normal out: 5.07 to 5.0
        // valid records of 24 data bytes: 23 digits, and 22 when negative
        {"12345678901234567890123456789012345678901234.56", 46, 1, 1,
         want("12345678901234567890123456789012345678901234.5")},
        {"-123456789012345678901234567890123456789012.34", 44, 1, 1,
         want("-123456789012345678901234567890123456789012.3")},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.in);
        EXPECT_EQ(NumTruncate(&n, c.precision, c.scale), c.result)
            << "NumTruncate(" << c.in << ", " << c.precision << ", " << c.scale << ")";
        EXPECT_EQ(hex(n, bytesIn(c.out)), c.out) << "NumTruncate(" << c.in << ", " << c.precision << ", " << c.scale << ")";
    }
}

TEST(NumPower10, WorkedCases) {
    const struct { const char* in; int power, result; std::string out; } cases[] = {
        // the random operands meet every power from -70 to 69; these are beyond them, or null
        {"1", INT32_MAX, 0, "00"}, {"1", INT32_MIN, 0, "00"}, {"#00", 5, 1, "01 C0"},
    };
    for (const auto& c : cases) {
        tagNUMBER in = rec(c.in), out = fromHex("EE");
        EXPECT_EQ(NumPower10(&out, &in, c.power), c.result) << "NumPower10(" << c.in << ", " << c.power << ")";
        EXPECT_EQ(hex(out), c.out) << "NumPower10(" << c.in << ", " << c.power << ")";
    }
}

TEST(DateCompare, Tolerance) {
    const struct { std::string a, b; int result; } cases[] = { // hex records
        {want("1.0000000000000002"), want("1"), 0},   // equal within 3 x 10^-16
        {want("1.0000000000000003"), want("1"), 1}, {want("-1.0000000000000003"), want("-1"), -1},
        {want("0.5000000000000002"), want("0.5"), 0},
        {want("1.00000000000000001"), want("1"), 0},  // 10^-17: the exponent alone decides
        {want("2"), want("1"), 1}, {"00", want("1"), -1}, {"00", "00", 0}, {"01 C0", want("-1"), 1},
        {want("1e-20"), "01 C0", 1}, {want("-1e-20"), want("1e-20"), -1}, // signs decide, however close
        {want("-1"), want("1"), -1},
        {"19 C1 05", want("1"), 0}, // length 25: no order
    };
    for (const auto& c : cases) {
        tagNUMBER a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(DateCompare(&a, &b), c.result) << "DateCompare(" << c.a << ", " << c.b << ")";
        a = fromHex(c.a), b = fromHex(c.b);
        EXPECT_EQ(DateCompare(&b, &a), -c.result) << "DateCompare(" << c.b << ", " << c.a << ")";
    }
    // An operand of 13 data bytes or more is cut to 12 in the caller's
    // record: the twelfth digit goes, and with it a difference that would count.
    tagNUMBER a = rec("12345678901234567890.0099"), b = rec("12345678901234567890"), c = rec("1.00000000000000000003");
    EXPECT_EQ(DateCompare(&a, &b), 0) << "DateCompare(12345678901234567890.0099, 12345678901234567890)";
    EXPECT_EQ(hex(a), "0C CA 0C 22 38 4E 5A 0C 22 38 4E 5A 00") << "DateCompare leaves the first operand cut";
    tagNUMBER flagged = fromHex("8D C1 01 00 00 00 00 00 00 00 00 00 00 02 09");
    EXPECT_EQ(DateCompare(&c, &flagged), 0);
    EXPECT_EQ(flagged.bLength, 12) << "bit 7 read and cleared";
}

} // namespace
