// NUMBER records from and to text: the decimal and hexadecimal readers, the
// writer's choice of form within a width, and doubles by way of their text.
#include "intl_env.h"
#include "number_reference.h"

#include "os/osl.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace {

using namespace numtest;

using Reader = int(OXLAPI*)(tagNUMBER*, const char*);
struct ReadCase {
    std::string text;
    int result;
    std::string record;
};
void expectRead(Reader read, const char* name, const ReadCase& c) {
    tagNUMBER n = fromHex("EE EE");
    EXPECT_EQ(read(&n, const_cast<char*>(c.text.c_str())), c.result) << name << "(\"" << c.text << "\")";
    EXPECT_EQ(hex(n, bytesIn(c.record)), c.record) << name << "(\"" << c.text << "\")";
    EXPECT_TRUE(c.record != "00" || n.abData[0] == 0xC0) << name << "(\"" << c.text << "\"): null is 00 C0";
}

TEST(NumAsciiToNumber, ResultsAndRecords) {
    const ReadCase cases[] = {
        {"", 0, "00"}, {"   ", 0, "00"}, {"abc", 0, "00"}, {".", 0, "00"}, {"-", 0, "00"}, {"+e5", 0, "00"},
        {"12", 2, "02 C1 0C"}, {"  -12.5", 7, "04 3E 58 32 65"}, {"+.5", 3, "02 C0 32"}, {"1E+3", 4, "02 C2 0A"},
        {"1e", 2, "02 C1 01"}, {"1e-", 3, "02 C1 01"}, {"1.5e2x", 5, "03 C2 01 32"}, {"12.5.7", 4, "03 C1 0C 32"},
        {"1,5", 1, "02 C1 01"}, {"1.", 2, "02 C1 01"}, {"0", 1, "01 C0"}, {"-0", 2, "01 C0"}, {"0e5", 3, "01 C0"},
        {"00012", 5, "02 C1 0C"}, {"0.001", 5, "02 BF 0A"}, {"\t\n\v\f\r 12", 8, "02 C1 0C"}, {"\x08" "1", 0, "00"},
        {"000.000", 7, "01 C0"}, {".000", 4, "01 C0"}, {"00.50", 5, "02 C0 32"}, {"-.0e3", 5, "01 C0"},
        {".05e1", 5, "02 C0 32"}, {"12345.678", 9, "06 C3 01 17 2D 43 50"}, {"123.4567", 8, "05 C2 01 17 2D 43"},
        {"0x10", 4, "02 C1 10"}, {"-0x10", 5, "03 3E 54 65"}, {" +0X10", 6, "02 C1 10"}, {"0x", 2, "01 C0"},
        // the exponent's range: E above 124 is too large, x below 0 too small
        {"1e119", 5, "02 FC 0A"}, {"99e118", 6, "02 FC 63"}, {"1e120", -1, "00"}, {"1e10000", -1, "00"},
        {"1e9999", -1, "00"}, {"1e-10000", -1, "00"}, {"1e-9999", -2, "00"}, {"1e-122", 6, "02 84 01"}, {"1e-129", 6, "02 84 0A"}, {"1e-130", -2, "00"},
        {"0.1e-128", 8, "02 84 0A"}, {"10e-130", 7, "02 84 0A"},
        // the 47 characters kept run on from the integer digits into the
        // fraction; further ones are passed over unrounded
        {"1234567890123456789012345678901234567890.1234567899", 51,
         want("1234567890123456789012345678901234567890.1234567")},
        {"12345678901234567890123456789012345678901234567.5", 49, want("12345678901234567890123456789012345678901234567")},
        {"1234567890123456789012345678901234567890123456789999", 52,
         want("12345678901234567890123456789012345678901234567e5")},
        {"0." + std::string(53, '0') + "12345678901234567890123456789012345678901234567899", 105,
         want("12345678901234567890123456789012345678901234567e-100")},
    };
    for (const Language& language : {kEnglish, kJapanese, kChinese, kKorean, kTaiwanese}) { // the same everywhere
        IntlUnder under(language);
        SCOPED_TRACE(language.name);
        for (const ReadCase& c : cases) expectRead(NumAsciiToNumber, "NumAsciiToNumber", c);
    }
    tagNUMBER n = rec("5");
    auto ofNull = [&](Reader read) { int r = read(&n, nullptr); return std::to_string(r) + ", " + hex(n); };
    EXPECT_EQ(ofNull(NumAsciiToNumber), "0, 00") << "NumAsciiToNumber(null)";
    EXPECT_EQ(ofNull(NumHexAsciiToNumber), "0, 01 C0") << "NumHexAsciiToNumber(null)";
}

// A double-byte blank in front of a number is white space under its own
// language only; a single-byte system has none.
TEST(NumAsciiToNumber, SkipsTheLanguagesDoubleByteBlank) {
    const std::pair<Language, const char*> blanks[] = {
        {kEnglish, ""}, {kJapanese, "\x81\x40"}, {kChinese, "\xA1\x40"}, {kKorean, "\xA1\xA1"}, {kTaiwanese, "\xA1\x40"}};
    for (const auto& [language, blank] : blanks) {
        IntlUnder under(language);
        for (const char* other : {"\x81\x40", "\xA1\x40", "\xA1\xA1"}) {
            bool skipped = std::strcmp(other, blank) == 0;
            for (const auto& [text, value] : {std::pair{std::string(other) + "7", "7"},
                                              std::pair{std::string(" ") + other + "\t" + other + "-7", "-7"}})
                expectRead(NumAsciiToNumber, language.name, {text, skipped ? int(text.size()) : 0, skipped ? want(value) : "00"});
        }
    }
}

TEST(NumHexAsciiToNumber, ResultsAndValues) {
    const ReadCase cases[] = {
        {"", 0, "01 C0"}, {"xyz", 0, "01 C0"}, {"0x", 2, "01 C0"}, {"  -0X1F", 7, want("-31")}, {"+ff", 3, want("255")},
        {"12g", 2, want("18")}, {"\t000a", 5, want("10")}, {"\n1", 0, "01 C0"}, {"FFFFFFFF", 8, want("4294967295")},
        {"10000000000000000", 17, want("18446744073709551616")}, {"0x0ABCDEF", 9, want("11259375")},
        // 10^45 + 1649 and + 1650 fill the record (23 digits), so the next
        // digit drops the last one first: 49 just goes, 50 rounds up
        {"2cd76fe086b93ce2f768a00b22a000000006710", 39, want("160000000000000000000000000000000000000000256e2")},
        {"2cd76fe086b93ce2f768a00b22a000000006720", 39, want("160000000000000000000000000000000000000000272e2")},
        // 10^45 + 9950: the carry runs through the 99 in front (the zero digit it leaves at the end stays)
        {"2cd76fe086b93ce2f768a00b22a000000026de0", 39, "18 D8 01 3C" + rep("00", 19) + " 10 00"},
    };
    for (const ReadCase& c : cases) expectRead(NumHexAsciiToNumber, "NumHexAsciiToNumber", c);
}

// Random values: the text reads as the exact value rounded, and the wide
// text of a record reads back to the same record.
TEST(NumAsciiToNumber, AgreesWithExactValuesAndReadsBackNumToAscii) {
    std::mt19937 rng(5);
    for (int i = 0; i < 3000; ++i) {
        int digits = 1 + int(rng() % 47), place = int(rng() % (242 - digits)) - 122; // within the range
        std::string text = std::to_string(rng() % 1000);
        while (int(text.size()) < digits) text += char('0' + rng() % 10);
        text = (rng() % 2 ? "-" : "") + text + "e" + std::to_string(place);
        tagNUMBER n, back;
        ASSERT_EQ(NumAsciiToNumber(&n, text.data()), int(text.size())) << "NumAsciiToNumber(\"" << text << "\")";
        ASSERT_EQ(hex(n), want(text)) << "NumAsciiToNumber(\"" << text << "\")";
        char buffer[256];
        int r = NumToAscii(&n, buffer, 200);
        ASSERT_EQ(r, int(std::strlen(buffer))) << "NumToAscii(" << hex(n) << ", 200)";
        ASSERT_EQ(NumAsciiToNumber(&back, buffer), r) << "NumAsciiToNumber(\"" << buffer << "\")";
        ASSERT_EQ(hex(back), hex(n)) << "NumToAscii(" << hex(n) << ", 200) gave \"" << buffer << "\"";
    }
}

TEST(NumToAscii, FormsWithinTheWidth) {
    const struct { std::string value; int width; const char* text; } cases[] = { // text nullptr: none
        {"0", 10, "0"}, {"0", 1, "0"}, {"-1", 10, "-1"}, {"0.5", 10, ".5"}, {"-0.5", 10, "-.5"}, {"100", 10, "100"},
        {"12345.678", 20, "12345.678"}, {"12345.678", 9, "12345.678"}, {"12345.678", 8, "12345.68"},
        {"12345.678", 7, "12345.7"}, {"12345.678", 6, "12346"}, {"12345.678", 5, "12346"}, {"12345.678", 4, nullptr},
        {"-12345.678", 6, "-12346"}, {"-12345.678", 5, nullptr}, {"0.00001", 10, ".00001"}, {"0.00001", 7, ".00001"},
        {"0.00001", 6, "1.E-05"}, {"0.00001", 5, nullptr}, {"0.00001234", 6, "1.E-05"}, {"0.000012345678", 8, "1.23E-05"},
        {"0.000099996", 8, "1.00E-04"}, {"0.0000995", 8, "9.95E-05"}, // rounded at the 3rd digit, not the 2nd
        {"0.0001234", 6, ".00012"}, {"0.0012345", 5, ".0012"}, {"1.26", 3, "1.3"}, {"1.96", 3, "2"},
        {"9.96", 3, "10"}, {"99.96", 4, "100"}, {"0.0996", 4, ".1"}, {"0.994", 3, ".99"}, {"1000000", 7, "1000000"},
        {"1000000", 6, "1.E+06"}, {"1000000", 5, nullptr}, {"123456789", 8, "1.23E+08"}, {"-123456789", 8, "-1.2E+08"},
        {"999999.96", 7, "1.0E+06"}, // the carry makes it too long for the fixed form
        {"0.1", 1, nullptr}, {"5", 1, "5"}, {"1.5", 2, "2"}, {"12.5", 2, "13"}, {"0.25", 2, ".3"},
        {"1e-40", 12, "1.000000E-40"}, {"-2.5e50", 9, "-2.50E+50"},
        {"1e118", 30, "9.999999999999999999999999E+99"}, {"1e-122", 30, "9.999999999999999999999999E-99"},
        // padded; a leading zero digit (one "0" goes); fewer places than zeros behind the point: the
        // value rounds to zero in the width, unsigned; null and an invalid length give ""
        {"#04 C1 07 00 00", 10, "7"}, {"#03 C1 00 05", 10, "0.05"}, {"#03 C1 00 14", 10, "0.2"}, {"0.001", 2, "0"}, {"0.0001", 2, "0"},
        {"-0.001", 3, "0"}, {"0.004", 3, "0"}, {"0.006", 3, ".01"}, {"-0.006", 4, "-.01"}, {"0.0006", 4, ".001"},
        // the carry leaves the front: its 1 takes a zero's place behind the point, no fraction digit goes
        {"0.005", 3, ".01"}, {"0.0005", 4, ".001"}, {"-0.0005", 5, "-.001"}, {"0.05", 2, ".1"},
        {"#00", 10, nullptr}, {"#19 C1 01", 10, nullptr}, {"#02 C1 00", 10, "0"},
    };
    for (const auto& c : cases) {
        tagNUMBER n = rec(c.value);
        char buffer[64];
        std::memset(buffer, 'Z', sizeof buffer);
        int r = NumToAscii(&n, buffer, WORD(c.width));
        EXPECT_EQ(r, c.text ? int(std::strlen(c.text)) : 0) << "NumToAscii(" << c.value << ", " << c.width << ")";
        if (c.text || c.value[0] == '#') { // a refusal of a valid record leaves no usable text
            EXPECT_STREQ(buffer, c.text ? c.text : "") << "NumToAscii(" << c.value << ", " << c.width << ")";
            EXPECT_EQ(std::string(buffer + r + 1, 8), "ZZZZZZZZ") << "bytes past the text of NumToAscii(" << c.value << ")";
        }
    }
}

TEST(FMTgcvt, TextOfFifteenDigitsWithAPoint) {
    const std::pair<double, const char*> cases[] = {
        {0.0, "0"},   {-0.0, "0"},  {std::numeric_limits<double>::quiet_NaN(), "0"}, {1.5, "1.5"}, {100.0, "100"},
        {0.1, "0.1"}, {2.0 / 3.0, "0.666666666666667"}, {-314150.0, "-314150"}, {1e20, "1e+020"}, {1e-5, "1e-005"},
    };
    for (const auto& [value, text] : cases) {
        char buffer[64];
        EXPECT_STREQ(FMTgcvt(value, buffer), text) << "FMTgcvt(" << value << ")";
    }
}

// The numeric locale as the run-time reports it, and what FMTgcvt sets.
const char *gLocaleNow, *gLocaleSet;
char* scriptedSetlocale(int category, const char* locale) {
    if (category == LC_NUMERIC && locale) gLocaleSet = locale;
    return const_cast<char*>(locale ? locale : gLocaleNow);
}

TEST(FMTgcvt, SetsTheNumericLocaleToCWhenItIsNot) {
    OslCrtService crt = *gOsl.crt;
    crt.setlocale = scriptedSetlocale;
    const OslCrtService* saved = gOsl.crt;
    gOsl.crt = &crt;
    const std::tuple<const char*, double, const char*> cases[] = {
        {"German_Germany.1252", 2.5, "C"}, {"C", 2.5, nullptr}, {"German_Germany.1252", 0.0, nullptr}};
    for (const auto& [now, value, set] : cases) {
        char buffer[64];
        gLocaleNow = now;
        gLocaleSet = nullptr;
        FMTgcvt(value, buffer);
        EXPECT_STREQ(gLocaleSet ? gLocaleSet : "(not set)", set ? set : "(not set)") << "FMTgcvt(" << value << ") under " << now;
    }
    gOsl.crt = saved;
}

TEST(NumDoubleToNumber, ThroughFifteenDigits) {
    double null;
    NumNullDouble(&null);
    const struct { double value; int result; std::string record; } cases[] = {
        {0.1, 1, "02 C0 0A"}, {1.5, 1, want("1.5")}, {-2.5, 1, want("-2.5")}, {0.0, 1, "01 C0"},
        {1.0 / 3.0, 1, want("0.333333333333333")}, {123456789012345678.0, 1, want("1.23456789012346e17")},
        {1e130, 0, "00"}, {1e-130, 0, "00"}, {std::numeric_limits<double>::infinity(), 1, "00"}, {null, 1, "00"},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex("EE");
        EXPECT_EQ(NumDoubleToNumber(&n, c.value), c.result) << "NumDoubleToNumber(" << c.value << ")";
        EXPECT_EQ(hex(n, bytesIn(c.record)), c.record) << "NumDoubleToNumber(" << c.value << ")";
    }
}

} // namespace
