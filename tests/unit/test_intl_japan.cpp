// Japanese characters: lead and katakana bytes, half-width to full-width and back.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

struct Conversion {
    const char* src;
    const char* dst;
    int chars;
};

void expectConversions(int(OXLAPI* convert)(char*, char*), const char* name, const Conversion* cases, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        const Conversion& c = cases[i];
        std::string src = c.src;
        char dst[64];
        std::memset(dst, 0x55, sizeof dst);
        int r = convert(dst, src.data());
        EXPECT_EQ(Hex(dst), Hex(c.dst)) << name << "(" << Hex(src) << ")";
        EXPECT_EQ(r, c.chars) << name << "(" << Hex(src) << ")";
    }
}

TEST(IntlJapan, FullWidth) {
    IntlUnder env(kJapanese);
    const Conversion cases[] = {
        {"abc", "\x82\x81\x82\x82\x82\x83", 3},
        {"ABC 123", "\x82\x60\x82\x61\x82\x62\x81\x40\x82\x50\x82\x51\x82\x52", 7},
        {"\xB1\xB6\xDE\xCA\xDF\xB3\xDE\xDC", "\x83\x41\x83\x4B\x83\x70\x83\x94\x83\x8F", 5},
        {"\xCA\xDE\xCA\xDF\xCB", "\x83\x6F\x83\x70\x83\x71", 3},
        {"\x1F", "\x1F", 1},
        {"\x7E", "\x81\x60", 1},
        {"\x88\x9F", "\x88\x9F", 1},
        {"\xDE", "\x81\x4A", 1},
        {"\xB1\xDF", "\x83\x41\x81\x4B", 2}, // no semi-voiced form: the mark converts alone
        {"\\[]_`{|}", "\x81\x8F\x81\x6D\x81\x6E\x81\x51\x81\x65\x81\x6F\x81\x62\x81\x70", 8},
        {"\x80\xFD", "\x80\xFD", 2},  // no table covers them: copied
        {"a\x88", "\x82\x81\x88", 2}, // a trailing lead byte is copied alone
        {"", "", 0},
    };
    expectConversions(IntlStrJapanFull, "IntlStrJapanFull", cases, std::size(cases));
}

TEST(IntlJapan, FullWidthOfA0EndsTheText) {
    IntlUnder env(kJapanese);
    char src[] = "a\xA0" "b";
    char dst[16];
    EXPECT_EQ(IntlStrJapanFull(dst, src), 1) << "IntlStrJapanFull(61 A0 62): the length as a reader sees it";
    EXPECT_EQ(Hex(std::string(dst, 6)), Hex(std::string("\x82\x81\x00\x00\x82\x82", 6)));
}

TEST(IntlJapan, HalfWidth) {
    IntlUnder env(kJapanese);
    const Conversion cases[] = {
        {"\x82\x60\x82\x81", "Aa", 2}, {"\x83\x41", "\xB1", 1},     {"\x83\x4B", "\xB6\xDE", 2},
        {"\x83\x70", "\xCA\xDF", 2},   {"\x88\x9F", "\x88\x9F", 1}, {"\x81\x40", " ", 1},
        {"\x83\x8E", "\xDC", 1},       {"\x83\x95", "\xB6", 1},     {"\x83\x96", "\xB9", 1},
        {"a\x82\x60", "aA", 2},        {"\x83\x94", "\xB3\xDE", 2}, {"\x83\x97", "\x83\x97", 1},
        {"\x81\x3F", "\x81\x3F", 1},   {"\x82\x4F\x82\x58", "09", 2}, {"\x82", "\x82", 1},
        {"", "", 0},
    };
    expectConversions(IntlStrJapanHalf, "IntlStrJapanHalf", cases, std::size(cases));
}

// Every half-width byte and kana pair converts to full width and back to itself.
TEST(IntlJapan, HalfOfFullIsTheIdentity) {
    IntlUnder env(kJapanese);
    std::string all;
    for (int b = 0x20; b <= 0x7E; ++b) all += char(b);
    for (int b = 0xA1; b <= 0xDF; ++b) all += char(b);
    for (const char* pair : {"\xB3\xDE", "\xB6\xDE", "\xC4\xDE", "\xCA\xDE", "\xCE\xDE", "\xCA\xDF", "\xCE\xDF"}) all += pair;
    std::string full(all.size() * 2 + 1, '\0'), back(all.size() * 2 + 1, '\0');
    IntlStrJapanFull(full.data(), all.data());
    IntlStrJapanHalf(back.data(), full.data());
    EXPECT_EQ(Hex(back.c_str()), Hex(all));
}

TEST(IntlJapan, SingleBytePathCopies) {
    IntlUnder env(kEnglish);
    char src[] = "a\xB6\xDE", dst[8];
    EXPECT_EQ(IntlStrJapanFull(dst, src), 3) << "IntlStrJapanFull(61 B6 DE) under English: a copy, its length in bytes";
    EXPECT_EQ(Hex(dst), Hex(src));
    EXPECT_EQ(IntlStrJapanHalf(dst, nullptr), -1);
}

TEST(IntlJapan, KanjiAndKatakanaBytes) {
    const struct {
        Language lang;
        BYTE c;
        int kanji, katakana;
    } cases[] = {
        {kJapanese, 0x88, 1, 0}, {kJapanese, 0xA0, 0, 1}, {kJapanese, 0xDF, 0, 1}, {kJapanese, 0xE0, 1, 0},
        {kJapanese, 0xFC, 1, 0}, {kJapanese, 0xFD, 0, 0}, {kJapanese, 0x80, 0, 0}, {kJapanese, 0x9F, 1, 0},
        {kChinese, 0xA0, 1, 0},  {kChinese, 0xB1, 1, 0},  {kChinese, 0xFE, 1, 0},  {kKorean, 0x81, 1, 0},
        {kEnglish, 0x88, 0, 0},  {kEnglish, 0xA0, 0, 0},
    };
    for (const auto& c : cases) {
        IntlUnder env(c.lang);
        EXPECT_EQ(IntlIsKanji(c.c), c.kanji) << std::hex << "IntlIsKanji(0x" << int(c.c) << ") under " << c.lang.name;
        EXPECT_EQ(IntlIsKatakana(c.c), c.katakana) << std::hex << "IntlIsKatakana(0x" << int(c.c) << ") under " << c.lang.name;
    }
}

} // namespace
