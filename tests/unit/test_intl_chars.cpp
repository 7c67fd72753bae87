// Characters: halves of double-byte characters, the n-th character, values
// and white space, under each double-byte language and on the single-byte path.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

TEST(IntlChars, BytesAndCharactersOfSUnderEachDoubleByteLanguage) {
    const int byteKinds[] = {0, 1, 2, 0, 1, 2, 0, 0};
    const int charIsDB[] = {0, 1, 0, 1, 0, 0};
    for (const Language& l : kDoubleByte) {
        IntlUnder env(l);
        char s[] = INTL_S;
        for (int i = 0; i < 8; ++i)
            EXPECT_EQ(IntlIsNthByteDB(s, i), byteKinds[i]) << "IntlIsNthByteDB(S, " << i << ") under " << l.name;
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(IntlIsNthCharDB(s, i), charIsDB[i]) << "IntlIsNthCharDB(S, " << i << ") under " << l.name;
        EXPECT_EQ(IntlIsNthByteDB(s, -1), 0) << l.name;
        EXPECT_EQ(IntlIsNthCharDB(s, -1), 0) << l.name;
        EXPECT_EQ(IntlStrNthChar(s, 3), s + 4) << "IntlStrNthChar(S, 3) under " << l.name;
        EXPECT_EQ(IntlStrNthChar(s, 5), s + 7) << "IntlStrNthChar(S, 5): the terminator, under " << l.name;
        EXPECT_EQ(IntlStrNthChar(s, 6), nullptr) << "IntlStrNthChar(S, 6) under " << l.name;
        EXPECT_EQ(IntlNextDBCInStr(s + 3), s + 4) << "IntlNextDBCInStr(b K c) under " << l.name;
        EXPECT_EQ(IntlBytesInNextChar(s + 1), 2) << l.name;
        EXPECT_EQ(WORD(IntlStrLastChar(s)), 'c') << l.name;
        EXPECT_EQ(WORD(IntlStrFirstChar(s + 1)), 0x889F) << "IntlStrFirstChar(K c) under " << l.name;
    }
}

TEST(IntlChars, SingleBytePathHasNoDoubleByteCharacters) {
    IntlUnder env(kEnglish);
    char s[] = INTL_S;
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(IntlIsNthByteDB(s, i), 0) << "IntlIsNthByteDB(S, " << i << ") under English";
        EXPECT_EQ(IntlIsNthCharDB(s, i), 0) << "IntlIsNthCharDB(S, " << i << ") under English";
    }
    EXPECT_EQ(IntlDBCSBlank(), 0);
    EXPECT_EQ(IntlStrNthChar(s, 7), s + 7) << "seven one-byte characters";
    EXPECT_EQ(IntlNextDBCInStr(s), nullptr);
    EXPECT_EQ(IntlDBCSChar(nullptr), 0);
    EXPECT_EQ(IntlStrLastChar(nullptr), 0);
    EXPECT_EQ(IntlStrNthChar(nullptr, 0), nullptr);
    EXPECT_EQ(IntlBytesInNextChar(s + 7), 0) << "at the terminator";
}

// A lead byte just before the terminator is one single-byte character.
TEST(IntlChars, TrailingHalfIsASingleByte) {
    for (const Language& l : kDoubleByte) {
        IntlUnder env(l);
        char s[] = "a\x88";
        EXPECT_EQ(IntlIsDBChar(s + 1), 0) << "IntlIsDBChar(88 00) under " << l.name;
        EXPECT_EQ(IntlBytesInNextChar(s + 1), 1) << l.name;
        EXPECT_EQ(WORD(IntlStrLastChar(s)), 0xFF88) << "IntlStrLastChar(61 88) under " << l.name;
        EXPECT_EQ(WORD(IntlStrFirstChar(s + 1)), 0xFF88) << "IntlStrFirstChar(88) under " << l.name;
        EXPECT_EQ(IntlDBCSChar(s + 1), 0x88) << l.name;
        EXPECT_EQ(IntlIsNthByteDB(s, 1), 0) << "IntlIsNthByteDB(61 88, 1) under " << l.name;
        EXPECT_EQ(IntlIsNthCharDB(s, 1), 0) << l.name;
        EXPECT_EQ(IntlNextDBCInStr(s), nullptr) << l.name;
        EXPECT_EQ(IntlStrNthChar(s, 2), s + 2) << l.name;
        EXPECT_EQ(IntlStrNthChar(s, 3), nullptr) << l.name;
        EXPECT_EQ(IntlStripStartSpace(s + 1), s + 1) << l.name;
    }
}

TEST(IntlChars, HexDigitsAreTestedOnTheWholeValue) {
    const struct {
        WORD c;
        int hex;
    } cases[] = {{'0', 1}, {'9', 1}, {'A', 1}, {'f', 1}, {'G', 0}, {'g', 0}, {'/', 0}, {0x4130, 0}, {0x8246, 0}};
    for (const auto& c : cases) EXPECT_EQ(IntlCharIsHexDigit(c.c), c.hex) << std::hex << "IntlCharIsHexDigit(0x" << c.c << ")";
}

TEST(IntlChars, WhiteSpaceAndTheDoubleByteBlank) {
    const struct {
        Language lang;
        WORD blank;
        const char* text;
        int space;
    } cases[] = {
        {kJapanese, 0x8140, "\x81\x40", 1}, {kJapanese, 0x8140, "\xA1\x40", 0}, {kJapanese, 0x8140, "\x0C", 1},
        {kChinese, 0xA140, "\xA1\x40", 1},  {kChinese, 0xA140, "\x81\x40", 0},  {kKorean, 0xA1A1, "\xA1\xA1", 1},
        {kKorean, 0xA1A1, "\x0D", 1},       {kTaiwanese, 0xA140, "\xA1\x40", 1}, {kEnglish, 0, "\x0B", 1},
        {kEnglish, 0, "\x81\x40", 0},       {kEnglish, 0, "\x0E", 0},            {kJapanese, 0x8140, "\x08", 0},
    };
    for (const auto& c : cases) {
        IntlUnder env(c.lang);
        std::string s = c.text;
        EXPECT_EQ(IntlDBCSBlank(), c.blank) << "IntlDBCSBlank under " << c.lang.name;
        EXPECT_EQ(IntlStrIsNextChSpace(s.data()), c.space) << "IntlStrIsNextChSpace(" << Hex(s) << ") under " << c.lang.name;
    }
}

TEST(IntlChars, StrippingLeadingSpaceAndBlanks) {
    const struct {
        Language lang;
        const char* text;
        int space, blank; // offsets of the results
    } cases[] = {
        {kJapanese, " \t\x81\x40x", 4, 1},  {kJapanese, " \x81\x40\tx", 4, 3}, {kJapanese, " \r\n", 3, 1},
        {kJapanese, "\x81\x40\x81", 2, 2},  {kKorean, "\xA1\xA1 \xA1\xA2", 3, 3}, {kEnglish, " \x81\x40", 1, 1},
        {kEnglish, "", 0, 0},
    };
    for (const auto& c : cases) {
        IntlUnder env(c.lang);
        std::string s = c.text;
        EXPECT_EQ(IntlStripStartSpace(s.data()) - s.data(), c.space) << "IntlStripStartSpace(" << Hex(s) << ") under " << c.lang.name;
        EXPECT_EQ(IntlStripStartBlank(s.data()) - s.data(), c.blank) << "IntlStripStartBlank(" << Hex(s) << ") under " << c.lang.name;
    }
    EXPECT_EQ(IntlStripStartSpace(nullptr), nullptr);
    EXPECT_EQ(IntlStripStartBlank(nullptr), nullptr);
}

} // namespace
