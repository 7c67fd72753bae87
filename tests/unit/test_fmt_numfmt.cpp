// Number formatting: plain and currency text, the currency forms, pictures,
// scientific pictures and the length estimate.
#include "test_fmt_num_env.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

std::string Format(FMTCNTLBLOCK& b, LONG expectedResult = 1) {
    char out[256] = "Z";
    b.lpszOutput = out;
    EXPECT_EQ(FMTFormatNumber(&b), expectedResult);
    return out;
}
std::string FormatAs(const Settings& s, LONG type, const char* value, DWORD leadZero = 1, const char* picture = nullptr, DWORD flags = 0) {
    FMTCNTLBLOCK b = BlockOf(s, picture);
    b.nType = type, b.bLeadZero = leadZero, b.numValue = Num(value);
    b.dwFlags ^= flags;
    return Format(b, std::strcmp(value, "Z") ? 1 : 0);
}

// Under the settings of A and B, with flags toggled in the prepared block;
// a refusal returns 0 and leaves the output ("Z") alone.
TEST(FmtNumFormat, PlainAndCurrency) {
    const struct { LONG type; const char* value; DWORD leadZero, flags; const char* a; const char* b; } rows[] = {
        {FMT_NUMBER, "-1234.5", 1, 0, "-1,234.50", "-1.234,50"}, {FMT_NUMBER, "-.5", 0, 0, "-.50", "-,50"},
        {FMT_NUMBER, "-.5", 1, 0, "-0.50", "-0,50"}, {FMT_NUMBER, "123456", 1, 0, "123,456.00", "123.456,00"},
        {FMT_NUMBER, "1234567", 1, 0, "1,234,567.00", "1.234.567,00"}, {FMT_NUMBER, "0.999", 1, 0, "1.00", "1,00"},
        {FMT_NUMBER, "-0.001", 1, 0, "0.00", "0,00"}, {FMT_NUMBER, "", 1, 0, "", ""}, // a null number
        {FMT_NUMBER, "1234.56789", 1, FMTF_ALLDIGITS, "1,234.56789", "1.234,56789"}, {FMT_NUMBER, "1234", 1, FMTF_ALLDIGITS, "1,234", "1.234"},
        {FMT_CURRENCY, "1234.5", 1, 0, "$1,234.50", "1.234,50 DM"}, {FMT_CURRENCY, "-1234.5", 1, 0, "($1,234.50)", "-1.234,50 DM"},
        {FMT_PICTURE, "1234.5", 1, 0, "1,234.50", "1.234,50"}, // no picture: a plain number
        {FMT_NUMBER, "Z", 1, FMTF_NUMBERVALUE, "Z", "Z"}, {FMT_DATE, "Z", 1, 0, "Z", "Z"}, {7, "Z", 1, 0, "Z", "Z"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(FormatAs(kA, r.type, r.value, r.leadZero, nullptr, r.flags), r.a) << "type " << r.type << ", " << r.value << " under A";
        EXPECT_EQ(FormatAs(kB, r.type, r.value, r.leadZero, nullptr, r.flags), r.b) << "type " << r.type << ", " << r.value << " under B";
    }
}

// For each position (iCurrency n % 4, iNegCurr n) FMTFormatNumber writes the
// amount between the forms FMTBuildCurrencyForms gives.
TEST(FmtNumFormat, EveryCurrencyForm) {
    const char* negative[] = {"($1.5)", "-$1.5", "$-1.5", "$1.5-", "(1.5$)", "-1.5$", "1.5-$", "1.5$-", "-1.5 $", "-$ 1.5", "1.5 $-"};
    const char* positive[] = {"$1.5", "1.5$", "$ 1.5", "1.5 $"};
    for (DWORD n = 0; n <= 10; ++n) {
        char pp[10], ps[10], np[10], ns[10];
        FMTBuildCurrencyForms(LONG(n % 4), LONG(n), pp, ps, np, ns, "$");
        EXPECT_EQ(std::string(np) + "1.5" + ns, negative[n]) << "FMTBuildCurrencyForms(" << n % 4 << ", " << n << ") negative";
        EXPECT_EQ(std::string(pp) + "1.5" + ps, positive[n % 4]) << "FMTBuildCurrencyForms(" << n % 4 << ", " << n << ") positive";
        FMTCNTLBLOCK b = BlockOf({"forms", "$", n % 4, n, 0, '.'});
        b.nType = FMT_CURRENCY, b.nDigits = 1, b.numValue = Num("-1.5");
        EXPECT_EQ(Format(b), negative[n]) << "currency -1.5 under iNegCurr " << n;
        b.numValue = Num("1.5");
        EXPECT_EQ(Format(b), positive[n % 4]) << "currency 1.5 under iCurrency " << n % 4;
    }
    char pp[10], ps[10], np[10], ns[10];
    FMTBuildCurrencyForms(4, 11, pp, ps, np, ns, "$");
    EXPECT_EQ(std::string(pp) + ps + np + ns, "") << "FMTBuildCurrencyForms(4, 11): positions out of range";
    FMTBuildCurrencyForms(0, 9, pp, ps, np, ns, "ABCDEFGHIJ");
    EXPECT_STREQ(np, "-ABCDEFG ") << "a symbol is cut to 7 bytes";
}

struct PicRow { const char* picture; const char* value; const char* text; };

void CheckPictures(const Settings& s, std::initializer_list<PicRow> rows) {
    for (const PicRow& r : rows)
        EXPECT_EQ(FormatAs(s, FMT_PICTURE, r.value, 1, r.picture), r.text) << "FMTFormatNumber(\"" << r.picture << "\", " << r.value << ") under " << s.name;
}

// Texts the read-back property can't tell apart (zeros, blanks, sections
// shown as zero, quoting) and inputs its generator never makes.
TEST(FmtNumFormat, Pictures) {
    CheckPictures(kA, {
        {"#,##0.00", "1234567.891", "1,234,567.89"}, {"#,##0.##", "1234", "1,234"}, {"#.##", ".5", ".5"}, {"#.##", "0", "0"},
        {"000", "7", "007"}, {"0,000", "12", "0,012"}, {"0,000", "123456", "123,456"}, {"0.00%", ".1234", "12.34%"},
        {"$#,##0.00;($#,##0.00)", "-1234.5", "($1,234.50)"}, {"#,##0.00_);(#,##0.00)", "1234.5", "1,234.50 "},
        {"0.00;(0.00)", "-.001", "0.00"}, {"0.00", "-.001", "0.00"}, {"0.00;", "-5", ""}, {";0.00", "5", ""},
        {"0.00;-0.00;\"zero\"", "0", "zero0"}, {"0.00;-0.00;\"zero\"", ".001", "zero0"}, {"0.00;-0.00;\"zero\"", "-.001", "zero0"},
        {"#\" kg\"", "-42", "-42 kg"}, {"#,##0.00 \"x\"\"y\"", "1", "1.00 x\"y"}, {"#'\\'x'", "3", "3'x"}, {"'ab", "5", "ab5"},
        {"'a'#_", "5", "a5 "}, {"#.0#", "2", "2.0"}, {"x", "12.6", "x13"}, {"$", "-1234.5", "($1,234.50)"}, {"", "1234.5", "1,234.50"},
        {"\x0F#\x01##0\x02" "00\x10\x04", "1234.5", "$1,234.50"},
        {"0.00E+00", "1234.5", "1.23E+03"}, {"0.00E+00", ".00123", "1.23E-03"}, {"0.00E+00", "0", "0.00E+00"},
        {"0.00E+00", "9.5", "0.95E+01"}, {"0.00E+00", "9.999", "1.00E+01"}, {"0.00E+00", ".09996", "1.00E-01"},
        {"0.00E+00", "-1234.5", "-1.23E+03"}, {"0.##E+00", "1", "1.E+00"}, {"0.00E-00", "1234.5", "1.23E03"},
        {"0.00E+000", "1", "1.00E+000"}, {"0.0#e+00", "5", "5.0e+00"}, {"0.00E+00", "1e70", "1.00E+70"}, {"0.00E+00", "1e-70", "1.00E-70"},
    });
    CheckPictures(kB, {{"0.00E+00", "1234.5", "1,23E+03"},
                       {"\x03\x0F#\x01##0\x02" "00\x10;\x05\x0F#\x01##0\x02" "00\x10\x06", "-1234.5", "-1.234,50 DM"}});
    CheckPictures({"thousands blank", "$", 0, 0, ' ', ','}, {{"# ##0 'kg'", "1234", "1 234kg"}});
}

TEST(FmtNumFormat, MaxFormattedLength) {
    LocaleUnder us(kUS);
    const struct { const char* picture; LONG maxDigits, minLength, length; } rows[] = {
        {"#,##0.00", 7, 0, 13}, {"0.00E+00", 7, 0, 9}, {"#,##0.00", 7, 20, 20}, {"#,###", 4, 0, 6}, {"#,###", 3, 0, 4},
        {"00000", 3, 0, 6}, {"0.0#%", 3, 0, 10}, {"'ab'#", 3, 0, 8}, {"#_)", 3, 0, 5}, {"#_", 3, 0, 5}, {"#;(#);\"zero long\"", 3, 0, 14},
        {"0.0##E+00", 2, 0, 9}, {"0.0##E+00", 9, 0, 10}, {"0.000#E+00", 2, 0, 10}, {"$", 7, 0, 15}, {nullptr, 4, 0, 5},
    };
    for (const auto& r : rows)
        EXPECT_EQ(FMTGetMaxFormattedNumLen(const_cast<char*>(r.picture), r.maxDigits, r.minLength), r.length)
            << "FMTGetMaxFormattedNumLen(\"" << (r.picture ? r.picture : "(null)") << "\", " << r.maxDigits << ", " << r.minLength << ")";
}

TEST(FmtNumFormat, StrToNumber) { // an empty text changes the top 16 bits only
    const struct { const char* input; unsigned long long before, after; } rows[] = {
        {"2.5", 0, 0x4004000000000000ull}, {"", 0x3FE0000000001234ull, 0x7FF8000000001234ull}};
    for (auto r : rows) {
        FMTCNTLBLOCK b = BlockOf(kA);
        std::memcpy(&b.dblValue, &r.before, sizeof r.before), b.lpszInput = const_cast<char*>(r.input);
        EXPECT_EQ(FMTStrToNumber(&b) + std::memcmp(&b.dblValue, &r.after, 8), 1) << "FMTStrToNumber(\"" << r.input << "\")";
    }
}

} // namespace
