// NUMBER records from and to text: the decimal and hexadecimal readers, the
// writer's choice of form within a width, and doubles by way of their text.
#include "number_baseline.h"
#include "number_reference.h"

#include "core/libstate.h"
#include "os/osl.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace {

using namespace numtest;

std::string want(const std::string& text) { return Ref::parse(text).record(); }

struct ReadCase {
    const char* text;
    int result;
    std::string record;
};

TEST(NumAsciiToNumber, ResultsAndRecords) {
    const ReadCase cases[] = {
        {"", 0, "00"},
        {"   ", 0, "00"},
        {"12", 2, "02 C1 0C"},
        {"  -12.5", 7, "04 3E 58 32 65"},
        {"+.5", 3, "02 C0 32"},
        {"1E+3", 4, "02 C2 0A"},
        {"1e", 2, "02 C1 01"},
        {"1e-", 3, "02 C1 01"},
        {"1.5e2x", 5, "03 C2 01 32"},
        {"12.5.7", 4, "03 C1 0C 32"},
        {"1,5", 1, "02 C1 01"},
        {"abc", 0, "00"},
        {".", 0, "00"},
        {"-", 0, "00"},
        {"+e5", 0, "00"},
        {"1.", 2, "02 C1 01"},
        {"0", 1, "01 C0"},
        {"-0", 2, "01 C0"},
        {"0e5", 3, "01 C0"},
        {"00012", 5, "02 C1 0C"},
        {"0.001", 5, "02 BF 0A"},
        {"\t\n12", 4, "02 C1 0C"},
        {"0x10", 4, "02 C1 10"},
        {"-0x10", 5, "03 3E 54 65"},
        {" +0x10", 6, "02 C1 10"},
        {"1e119", 5, "02 FC 0A"},
        {"1e120", -1, "00"},
        {"1e10000", -1, "00"},
        {"1e9999", -1, "00"},
        {"1e-122", 6, "02 84 01"},
        {"1e-129", 6, "02 84 0A"},
        {"1e-130", -2, "00"},
        {"12345.678", 9, "06 C3 01 17 2D 43 50"},
        {"123.4567", 8, "05 C2 01 17 2D 43"},
        {"000.000", 7, "01 C0"},
        {".000", 4, "01 C0"},
        {"0.", 2, "01 C0"},
        {"00.50", 5, "02 C0 32"},
        {"-.0e3", 5, "01 C0"},
        {".05e1", 5, "02 C0 32"},
        // the 47 characters kept run on from the integer digits into the fraction
        {"1234567890123456789012345678901234567890.1234567899", 51, want("1234567890123456789012345678901234567890.1234567")},
        {"12345678901234567890123456789012345678901234567.5", 49, want("12345678901234567890123456789012345678901234567")},
        // 47 significant characters are read, the rest passed over unrounded
        {"1234567890123456789012345678901234567890123456789999", 52, want("12345678901234567890123456789012345678901234567e5")},
        {"0.000000000000000000000000000000000000000000000000000012345678901234567890123456789012345678901234567899",
         104, want("12345678901234567890123456789012345678901234567e-99")},
    };
    for (const ReadCase& c : cases) {
        tagNUMBER n;
        std::memset(&n, 0xEE, sizeof n);
        EXPECT_EQ(NumAsciiToNumber(&n, const_cast<char*>(c.text)), c.result) << "NumAsciiToNumber(\"" << c.text << "\")";
        EXPECT_EQ(hex(n, bytesIn(c.record)), c.record) << "NumAsciiToNumber(\"" << c.text << "\")";
        if (c.result <= 0) {
            EXPECT_EQ(n.abData[0], 0xC0) << "NumAsciiToNumber(\"" << c.text << "\"): a null result is 00 C0";
        }
    }
}

TEST(NumAsciiToNumber, NullTextIsNoNumber) {
    tagNUMBER n = rec("5");
    EXPECT_EQ(NumAsciiToNumber(&n, nullptr), 0);
    EXPECT_EQ(hex(n), "00") << "NumAsciiToNumber(null)";
    n = rec("5");
    EXPECT_EQ(NumHexAsciiToNumber(&n, nullptr), 0);
    EXPECT_EQ(hex(n), "01 C0") << "NumHexAsciiToNumber(null)";
}

TEST(NumAsciiToNumber, SkipsTheDoubleByteBlankOnADoubleByteSystem) {
    LIBSTATE& s = *gpLibState;
    int32_t dbcs = s.bDBCS, language = s.nDBCSLanguage;
    s.bDBCS = 1;
    s.nDBCSLanguage = 1; // Japanese: 81 40
    tagNUMBER n;
    int r = NumAsciiToNumber(&n, const_cast<char*>("\x81\x40 7"));
    s.nDBCSLanguage = 3; // Korean: A1 A1; the Japanese blank is no blank here
    int r2 = NumAsciiToNumber(&n, const_cast<char*>("\x81\x40 7"));
    s.bDBCS = dbcs;
    s.nDBCSLanguage = language;
    EXPECT_EQ(r, 4) << "NumAsciiToNumber(81 40 ' 7') under language 1";
    EXPECT_EQ(r2, 0) << "NumAsciiToNumber(81 40 ' 7') under language 3";
}

TEST(NumAsciiToNumber, AgreesWithTheExactValueRounded) {
    std::mt19937 rng(5);
    for (int i = 0; i < 3000; ++i) {
        Ref r = randomRef(rng, 46, 70);
        std::string text = r.text();
        tagNUMBER n;
        ASSERT_EQ(NumAsciiToNumber(&n, text.data()), int(text.size())) << "NumAsciiToNumber(\"" << text << "\")";
        ASSERT_EQ(hex(n), r.record()) << "NumAsciiToNumber(\"" << text << "\")";
    }
}

// Text made of the characters a number is made of, in any order, read as the
// first, character-by-character reader read it: the same count and record.
TEST(NumAsciiToNumber, SameAsTheCharacterByCharacterReader) {
    std::mt19937 rng(17);
    const char alphabet[] = "0000000123456789.....eE+- x";
    for (int i = 0; i < 30000; ++i) {
        std::string text;
        int length = int(rng() % 70);
        for (int k = 0; k < length; ++k) text += alphabet[rng() % (sizeof alphabet - 1)];
        if (rng() % 2) text = std::to_string(rng()) + text; // most often a number first
        if (i % 4 == 0) { // long runs of digits around a point: the 47 characters kept
            text = std::string(rng() % 3, '0');
            for (int k = 30 + int(rng() % 30); k > 0; --k) text += char('0' + rng() % 10);
            text.insert(rng() % text.size(), ".");
            if (rng() % 2) text += "e" + std::to_string(int(rng() % 400) - 200);
        }
        std::string copy = text;
        tagNUMBER got, want;
        std::memset(&got, 0xEE, sizeof got);
        std::memset(&want, 0xEE, sizeof want);
        int r = NumAsciiToNumber(&got, text.data()), w = numbaseline::AsciiToNumber(&want, copy.data());
        ASSERT_EQ(r, w) << "NumAsciiToNumber(\"" << text << "\")";
        ASSERT_EQ(hex(got, 2 + (got.bLength & 0x3F)), hex(want, 2 + (want.bLength & 0x3F))) << "NumAsciiToNumber(\"" << text << "\")";
    }
}

TEST(NumHexAsciiToNumber, ResultsAndValues) {
    const ReadCase cases[] = {
        {"", 0, "01 C0"},           {"xyz", 0, "01 C0"},      {"0x", 2, "01 C0"},
        {"  -0X1F", 7, want("-31")}, {"+ff", 3, want("255")}, {"12g", 2, want("18")},
        {"\t000a", 5, want("10")},  {"FFFFFFFF", 8, want("4294967295")},
        {"10000000000000000", 17, want("18446744073709551616")},
    };
    for (const ReadCase& c : cases) {
        tagNUMBER n;
        std::memset(&n, 0xEE, sizeof n);
        EXPECT_EQ(NumHexAsciiToNumber(&n, const_cast<char*>(c.text)), c.result) << "NumHexAsciiToNumber(\"" << c.text << "\")";
        EXPECT_EQ(hex(n, bytesIn(c.record)), c.record) << "NumHexAsciiToNumber(\"" << c.text << "\")";
    }
}

// Long hexadecimal text loses low digits on the way, a little at each step,
// and never fails.
TEST(NumHexAsciiToNumber, LongTextStaysCloseToItsValue) {
    std::mt19937 rng(9);
    std::uniform_int_distribution<int> len(1, 80), dig(0, 15);
    for (int i = 0; i < 500; ++i) {
        std::string text;
        Ref exact;
        for (int k = len(rng); k > 0; --k) {
            int d = dig(rng);
            text += "0123456789abcdef"[d];
            exact.mag = big::add(big::mul(exact.mag, "16"), d ? std::to_string(d) : "");
        }
        tagNUMBER n;
        ASSERT_EQ(NumHexAsciiToNumber(&n, text.data()), int(text.size())) << text;
        if (exact.mag.size() <= 45) {
            ASSERT_EQ(hex(n), exact.record()) << "NumHexAsciiToNumber(\"" << text << "\")";
        } else {
            Ref got = Ref::ofRecord(n), diff = got + -exact;
            int digitsOfDiff = int(diff.mag.size()) + diff.exp10;
            ASSERT_LT(digitsOfDiff, int(exact.mag.size()) - 40) << "NumHexAsciiToNumber(\"" << text << "\") gave "
                                                                << got.text();
        }
    }
}

TEST(NumToAscii, FormsWithinTheWidth) {
    const struct {
        std::string record;
        int width;
        const char* text; // nullptr: no text
        int result;
    } cases[] = {
        {"01 C0", 10, "0", 1},
        {"01 C0", 1, "0", 1},
        {want("-1"), 10, "-1", 2},
        {want("0.5"), 10, ".5", 2},
        {want("-0.5"), 10, "-.5", 3},
        {want("100"), 10, "100", 3},
        {want("12345.678"), 20, "12345.678", 9},
        {want("12345.678"), 8, "12345.68", 8},
        {want("12345.678"), 7, "12345.7", 7},
        {want("12345.678"), 5, "12346", 5},
        {want("12345.678"), 4, nullptr, 0},
        {want("-12345.678"), 6, "-12346", 6},
        {want("0.00001"), 10, ".00001", 6},
        {want("0.00001"), 5, nullptr, 0},
        {want("0.00001234"), 6, "1.E-05", 6},
        {want("0.000012345678"), 8, "1.23E-05", 8},
        {want("1.26"), 3, "1.3", 3},
        {want("1.96"), 3, "2", 1},
        {want("9.96"), 3, "10", 2},
        {want("99.96"), 4, "100", 3},
        {want("0.0996"), 4, ".1", 2},
        {want("1000000"), 6, "1.E+06", 6},
        {want("1000000"), 5, nullptr, 0},
        {want("123456789"), 8, "1.23E+08", 8},
        {want("999999.96"), 7, "1.0E+06", 7}, // the carry makes it too long for the fixed form
        {want("0.1"), 1, nullptr, 0},
        {want("5"), 1, "5", 1},
        {"02 FC 01", 30, "9.999999999999999999999999E+99", 30},
        {"02 84 01", 30, "9.999999999999999999999999E-99", 30},
        {"04 C1 07 00 00", 10, "7", 1},
        {"00", 10, "", 0},
        {"19 C1 01", 10, "", 0},
    };
    for (const auto& c : cases) {
        tagNUMBER n = fromHex(c.record);
        char buffer[64];
        std::memset(buffer, 'Z', sizeof buffer);
        int r = NumToAscii(&n, buffer, WORD(c.width));
        EXPECT_EQ(r, c.result) << "NumToAscii(" << c.record << ", " << c.width << ")";
        if (c.text) {
            EXPECT_STREQ(buffer, c.text) << "NumToAscii(" << c.record << ", " << c.width << ")";
            EXPECT_LE(int(std::strlen(buffer)), c.width) << "NumToAscii(" << c.record << ", " << c.width << ")";
        }
    }
}

TEST(NumToAscii, WideTextReadsBackToTheSameRecord) {
    std::mt19937 rng(13);
    for (int i = 0; i < 3000; ++i) {
        tagNUMBER n = rec(randomRef(rng, 46, 110).text()), back;
        char buffer[256];
        int r = NumToAscii(&n, buffer, 200);
        ASSERT_EQ(r, int(std::strlen(buffer))) << "NumToAscii(" << hex(n) << ", 200)";
        ASSERT_EQ(NumAsciiToNumber(&back, buffer), r) << "NumAsciiToNumber(\"" << buffer << "\")";
        ASSERT_EQ(hex(back), hex(n)) << "NumToAscii(" << hex(n) << ") gave \"" << buffer << "\"";
    }
}

// The numeric locale as the run-time reports it, and what FMTgcvt sets.
const char* gLocaleNow;
const char* gLocaleSet;
char* scriptedSetlocale(int category, const char* locale) {
    if (category == LC_NUMERIC && locale) gLocaleSet = locale;
    return const_cast<char*>(locale ? locale : gLocaleNow);
}

// Records of every length, normal or not, written in every width as the
// first, character-by-character writer wrote them.
TEST(NumToAscii, SameAsTheCharacterByCharacterWriter) {
    std::mt19937 rng(23);
    for (int i = 0; i < 20000; ++i) {
        tagNUMBER n;
        for (BYTE* p = &n.bLength; p < &n.bLength + sizeof n; ++p) *p = BYTE(rng());
        if (i % 8) { // mostly normal records
            Ref r = randomRef(rng, 1 + int(rng() % 46), 70);
            n = rec(r.text());
        }
        WORD width = WORD(rng() % 50);
        char got[64], want[64];
        std::memset(got, 'x', sizeof got);
        std::memset(want, 'x', sizeof want);
        int r = NumToAscii(&n, got, width), w = numbaseline::ToAscii(&n, want, width);
        ASSERT_EQ(r, w) << "NumToAscii(" << hex(n, 25) << ", " << width << ")";
        ASSERT_EQ(std::string(got, width + 4), std::string(want, width + 4)) << "NumToAscii(" << hex(n, 25) << ", " << width << ")";
    }
}

TEST(FMTgcvt, TextOfFifteenDigitsWithAPoint) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0, "0"}, {-0.0, "0"}, {std::numeric_limits<double>::quiet_NaN(), "0"}, {1.5, "1.5"}, {100.0, "100"},
        {0.1, "0.1"}, {2.0 / 3.0, "0.666666666666667"}, {-314150.0, "-314150"}, {1e20, "1e+020"}, {1e-5, "1e-005"},
    };
    for (const auto& c : cases) {
        char buffer[64];
        EXPECT_STREQ(FMTgcvt(c.value, buffer), c.text) << "FMTgcvt(" << c.value << ")";
    }
}

TEST(FMTgcvt, SetsTheNumericLocaleToCOnce) {
    OslCrtService crt = *gOsl.crt;
    crt.setlocale = scriptedSetlocale;
    const OslCrtService* saved = gOsl.crt;
    gOsl.crt = &crt;
    char buffer[64];
    gLocaleNow = "German_Germany.1252";
    gLocaleSet = nullptr;
    FMTgcvt(2.5, buffer);
    const char* setFromGerman = gLocaleSet;
    gLocaleNow = "C";
    gLocaleSet = nullptr;
    FMTgcvt(2.5, buffer);
    const char* setFromC = gLocaleSet;
    gLocaleSet = nullptr;
    FMTgcvt(0.0, buffer);
    gOsl.crt = saved;
    EXPECT_STREQ(setFromGerman, "C") << "FMTgcvt under a German numeric locale";
    EXPECT_EQ(setFromC, nullptr) << "FMTgcvt when the numeric locale is already C";
    EXPECT_EQ(gLocaleSet, nullptr) << "FMTgcvt(0.0) doesn't touch the locale";
}

TEST(NumDoubleToNumber, ThroughFifteenDigits) {
    const struct {
        double value;
        int result;
        std::string record;
    } cases[] = {
        {0.1, 1, "02 C0 0A"},
        {1.5, 1, want("1.5")},
        {-2.5, 1, want("-2.5")},
        {0.0, 1, "01 C0"},
        {1.0 / 3.0, 1, want("0.333333333333333")},
        {123456789012345678.0, 1, want("1.23456789012346e17")},
        {1e130, 0, "00"},
        {1e-130, 0, "00"},
        {std::numeric_limits<double>::infinity(), 1, "00"},
    };
    for (const auto& c : cases) {
        tagNUMBER n;
        std::memset(&n, 0xEE, sizeof n);
        EXPECT_EQ(NumDoubleToNumber(&n, c.value), c.result) << "NumDoubleToNumber(" << c.value << ")";
        EXPECT_EQ(hex(n, bytesIn(c.record)), c.record) << "NumDoubleToNumber(" << c.value << ")";
    }
    double null;
    NumNullDouble(&null);
    tagNUMBER n = rec("5");
    EXPECT_EQ(NumDoubleToNumber(&n, null), 1) << "NumDoubleToNumber(null)";
    EXPECT_EQ(n.bLength, 0) << "NumDoubleToNumber(null)";
}

TEST(NumGet, IsNumWordToNumber) {
    tagNUMBER n;
    EXPECT_EQ(NumGet(65535, &n), &n);
    EXPECT_EQ(hex(n), want("65535"));
}

} // namespace
