// Number formatting: plain and currency text, pictures, scientific
// pictures, the length estimate, and a stored picture formatted under the
// settings of five kinds of user.
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
std::string FormatAs(const Settings& s, LONG type, const char* value, DWORD leadZero = 1, const char* picture = nullptr) {
    FMTCNTLBLOCK b = BlockOf(s, picture);
    b.nType = type, b.bLeadZero = leadZero, b.numValue = Num(value);
    return Format(b);
}

TEST(FmtNumFormat, PlainAndCurrency) {
    const struct { LONG type; const char* value; DWORD leadZero; const char* a; const char* b; } rows[] = {
        {FMT_NUMBER, "1234.5", 1, "1,234.50", "1.234,50"}, {FMT_NUMBER, "-1234.5", 1, "-1,234.50", "-1.234,50"},
        {FMT_NUMBER, ".5", 1, "0.50", "0,50"}, {FMT_NUMBER, ".5", 0, ".50", ",50"}, {FMT_NUMBER, "-.5", 0, "-.50", "-,50"},
        {FMT_NUMBER, "-.5", 1, "-0.50", "-0,50"}, {FMT_NUMBER, "-123", 1, "-123.00", "-123,00"},
        {FMT_NUMBER, "123456", 1, "123,456.00", "123.456,00"}, {FMT_NUMBER, "1234567", 1, "1,234,567.00", "1.234.567,00"},
        {FMT_NUMBER, "0.999", 1, "1.00", "1,00"}, {FMT_NUMBER, "-0.001", 1, "0.00", "0,00"}, {FMT_NUMBER, "1", 1, "1.00", "1,00"},
        {FMT_CURRENCY, "1234.5", 1, "$1,234.50", "1.234,50 DM"}, {FMT_CURRENCY, "-1234.5", 1, "($1,234.50)", "-1.234,50 DM"},
        {FMT_PICTURE, "1234.5", 1, "1,234.50", "1.234,50"}, // no picture: a plain number
    };
    for (const auto& r : rows) {
        EXPECT_EQ(FormatAs(kA, r.type, r.value, r.leadZero), r.a) << "type " << r.type << ", " << r.value << " under A";
        EXPECT_EQ(FormatAs(kB, r.type, r.value, r.leadZero), r.b) << "type " << r.type << ", " << r.value << " under B";
    }
}

TEST(FmtNumFormat, EveryCurrencyForm) {
    const char* negative[] = {"($1.5)", "-$1.5", "$-1.5", "$1.5-", "(1.5$)", "-1.5$", "1.5-$", "1.5$-", "-1.5 $", "-$ 1.5", "1.5 $-"};
    const char* positive[] = {"$1.5", "1.5$", "$ 1.5", "1.5 $"};
    for (DWORD n = 0; n <= 10; ++n) {
        FMTCNTLBLOCK b = BlockOf({"forms", "$", n % 4, n, 0, '.'});
        b.nType = FMT_CURRENCY, b.nDigits = 1, b.numValue = Num("-1.5");
        EXPECT_EQ(Format(b), negative[n]) << "currency -1.5 under iNegCurr " << n;
        b.numValue = Num("1.5");
        EXPECT_EQ(Format(b), positive[n % 4]) << "currency 1.5 under iCurrency " << n % 4;
    }
}

TEST(FmtNumFormat, AllDigitsAndRefusals) {
    FMTCNTLBLOCK b = BlockOf(kA);
    b.nType = FMT_NUMBER, b.dwFlags |= FMTF_ALLDIGITS, b.numValue = Num("1234.56789");
    EXPECT_EQ(Format(b), "1,234.56789") << "FMTF_ALLDIGITS";
    b.numValue = Num("1234");
    EXPECT_EQ(Format(b), "1,234") << "FMTF_ALLDIGITS, no fraction";
    b.numValue.bLength = 0;
    EXPECT_EQ(Format(b), "") << "a null number";
    b.nType = FMT_PICTURE, b.lpszPicture = const_cast<char*>("#,##0");
    EXPECT_EQ(Format(b), "") << "a null number under a picture";
    b.dwFlags &= ~DWORD(FMTF_NUMBERVALUE), b.numValue = Num("1");
    Format(b, 0);
    b.dwFlags |= FMTF_NUMBERVALUE;
    for (LONG type : {FMT_NONE, FMT_DATE, 0, 7}) b.nType = type, Format(b, 0);
}

struct PicRow { const char* picture; const char* value; const char* text; };

void CheckPictures(const Settings& s, std::initializer_list<PicRow> rows) {
    for (const PicRow& r : rows)
        EXPECT_EQ(FormatAs(s, FMT_PICTURE, r.value, 1, r.picture), r.text) << "FMTFormatNumber(\"" << r.picture << "\", " << r.value << ") under " << s.name;
}

TEST(FmtNumFormat, Pictures) { // plain, scientific, under a blank thousands character, tokenised
    CheckPictures(kA, {
        {"#,##0.00", "1234567.891", "1,234,567.89"}, {"#,##0.00", "-1234.5", "-1,234.50"}, {"#,##0.00", "0", "0.00"},
        {"#,##0.##", "1234.5", "1,234.5"}, {"#,##0.##", "1234", "1,234"}, {"#.##", ".5", ".5"}, {"#.##", "0", "0"},
        {"#", ".4", "0"}, {"000", "7", "007"}, {"0,000", "1234", "1,234"}, {"0,000", "12", "0,012"},
        {"000,000", "12345", "012,345"}, {"#,##0", "999.5", "1,000"}, {"0.00%", ".1234", "12.34%"},
        {"$#,##0.00;($#,##0.00)", "-1234.5", "($1,234.50)"}, {"$#,##0.00;($#,##0.00)", "1234.5", "$1,234.50"},
        {"#,##0.00_);(#,##0.00)", "1234.5", "1,234.50 "}, {"#,##0.00_);(#,##0.00)", "-1234.5", "(1,234.50)"},
        {"0.00;(0.00)", "-.001", "0.00"}, {"0.00", "-.001", "0.00"}, {"0.00;", "-5", ""}, {";0.00", "5", ""},
        {"0.00;-0.00;\"zero\"", "0", "zero0"}, {"0.00;-0.00;\"zero\"", ".001", "zero0"},
        {"0.00;-0.00;\"zero\"", "-.001", "zero0"}, {"0.00;-0.00;\"zero\"", "-5", "-5.00"},
        {"0.00;;\"zero\"", "-5", ""}, {"0.00;(0.00);", "0", ""},
        {"#\" kg\"", "-42", "-42 kg"}, {"#,##0.00 \"x\"\"y\"", "1", "1.00 x\"y"}, {"#' it''s'", "3", "3 it's"},
        {"#'\\'x'", "3", "3'x"}, {"\"\\\"\"#", "3", "\"3"}, {"'ab", "5", "ab5"}, {"'a'#_", "5", "a5 "},
        {"#.0#", "2.5", "2.5"}, {"#.0#", "2", "2.0"}, {"0.#", ".05", "0.1"}, {"#,###", "1234567", "1,234,567"},
        {"x", "12.6", "x13"}, {"0,000", "123456", "123,456"}, {"#0.0", "-0.04", "0.0"}, {"00.0", "1.25", "01.3"},
        {"$", "-1234.5", "($1,234.50)"}, {"", "1234.5", "1,234.50"}, {"\x0F#\x01##0\x02" "00\x10\x04", "1234.5", "$1,234.50"},
    });
    CheckPictures(kA, {
        {"0.00E+00", "1234.5", "1.23E+03"}, {"0.00E+00", ".00123", "1.23E-03"}, {"0.00E+00", "0", "0.00E+00"},
        {"0.00E+00", "9.5", "0.95E+01"}, {"0.00E+00", "9.999", "1.00E+01"}, {"0.00E+00", ".09996", "1.00E-01"},
        {"0.00E+00", "-1234.5", "-1.23E+03"}, {"0.##E+00", "1", "1.E+00"}, {"0.00E-00", "1234.5", "1.23E03"},
        {"0.00E-00", ".00123", "1.23E-03"}, {"0.00E+000", "1", "1.00E+000"}, {"0.0#e+00", "5", "5.0e+00"},
        {"0.00E+00", "5", "5.00E+00"}, {"0.00E+00", ".5", "5.00E-01"}, {"0.00E+00", "99.5", "1.00E+02"},
        {"0.00E+00", "1e70", "1.00E+70"}, {"0.00E+00", "1e-70", "1.00E-70"},
    });
    CheckPictures(kB, {{"0.00E+00", "1234.5", "1,23E+03"}});
    CheckPictures({"thousands blank", "$", 0, 0, ' ', ','}, {{"# ##0 'kg'", "1234", "1 234kg"}, {"# ##0' kg'", "1234", "1 234 kg"}});
    CheckPictures(kB, {{"\x0F#\x01##0\x02" "00\x10\x04", "1234.5", "1.234,50 DM"},
                       {"\x03\x0F#\x01##0\x02" "00\x10;\x05\x0F#\x01##0\x02" "00\x10\x06", "-1234.5", "-1.234,50 DM"}});
}

TEST(FmtNumFormat, AStoredPictureUnderEachUser) {
    const std::string stored = "\x03\x0F#\x01##0\x02" "00\x10;\x05\x0F#\x01##0\x02" "00\x10\x06";
    const struct { const Locale* locale; const char* texts[4]; } rows[] = { // +1234.5, -1234.5 stored, plain, currency
        {&kUS, {"$1,234.50", "($1,234.50)", "1,234.50", "$1,234.50"}},
        {&kGerman, {"1.234,50 DM", "-1.234,50 DM", "1.234,50", "1.234,50 DM"}},
        {&kFrench, {"1 234,50 F", "-1 234,50 F", "1 234,50", "1 234,50 F"}},
        {&kSwiss, {"SFr. 1'234.50", "SFr.-1'234.50", "1'234.50", "SFr. 1'234.50"}},
        {&kJapan, {"\\1,234.50", "-\\1,234.50", "1,234.50", "\\1,235"}},
    };
    const struct { LONG type; const char* value; } calls[] = {
        {FMT_PICTURE, "1234.5"}, {FMT_PICTURE, "-1234.5"}, {FMT_NUMBER, "1234.5"}, {FMT_CURRENCY, "1234.5"}};
    for (const auto& r : rows) {
        LocaleUnder l(*r.locale);
        for (int i = 0; i < 4; ++i) {
            FMTCNTLBLOCK b = ProfileBlock(stored.c_str(), nullptr);
            b.nType = calls[i].type, b.numValue = Num(calls[i].value);
            EXPECT_EQ(Format(b), r.texts[i]) << "type " << calls[i].type << ", " << calls[i].value << " under " << r.locale->name;
        }
    }
}

TEST(FmtNumFormat, MaxFormattedLength) {
    LocaleUnder us(kUS);
    const struct { const char* picture; LONG maxDigits, minLength, length; } rows[] = {
        {"#,##0.00", 7, 0, 13}, {"0.00E+00", 7, 0, 9}, {"#,##0.00", 7, 20, 20}, {"#", 1, 0, 2}, {"#", 4, 0, 5}, {"#,###", 4, 0, 6},
        {"#,###", 3, 0, 4}, {"00000", 3, 0, 6}, {"0.0#%", 3, 0, 10}, {"'ab'#", 3, 0, 8}, {"#_)", 3, 0, 5}, {"#_", 3, 0, 5},
        {"#;(#)", 3, 0, 5}, {"#;(#);\"zero long\"", 3, 0, 14}, {"0.0##E+00", 2, 0, 9}, {"0.0##E+00", 9, 0, 10}, {"0.000#E+00", 2, 0, 10},
        {"$", 7, 0, 15}, {"", 5, 0, 6}, {"0.0##E+00;x", 2, 0, 8}, {nullptr, 4, 0, 5},
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
