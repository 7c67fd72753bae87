// Japanese characters: lead and katakana bytes, half-width to full-width and back.
#include "intl_table.h"

#include <vector>

namespace {

// Each half-width character and its full-width code in code page 932, written
// out: 0-9, A-Z and a-z run on from 824F, 8260 and 8281; the quotes take the
// typographic quotes and 5C the yen sign (5C is the yen sign of the half-width set).
const char kPunct[] = " !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
const WORD kPunctFull[] = {0x8140, 0x8149, 0x8168, 0x8194, 0x8190, 0x8193, 0x8195, 0x8166, 0x8169, 0x816A, 0x8196,
                           0x817B, 0x8143, 0x817C, 0x8144, 0x815E, 0x8146, 0x8147, 0x8183, 0x8181, 0x8184, 0x8148,
                           0x8197, 0x816D, 0x818F, 0x816E, 0x814F, 0x8151, 0x8165, 0x816F, 0x8162, 0x8170, 0x8160};
// A1 to DF: the punctuation, wo, the small kana, the prolonged sound mark, a to n, and the two marks.
const WORD kKanaFull[] = {
    0x8142, 0x8175, 0x8176, 0x8141, 0x8145, 0x8392, 0x8340, 0x8342, 0x8344, 0x8346, 0x8348, 0x8383, 0x8385, 0x8387,
    0x8362, 0x815B, 0x8341, 0x8343, 0x8345, 0x8347, 0x8349, 0x834A, 0x834C, 0x834E, 0x8350, 0x8352, 0x8354, 0x8356,
    0x8358, 0x835A, 0x835C, 0x835E, 0x8360, 0x8363, 0x8365, 0x8367, 0x8369, 0x836A, 0x836B, 0x836C, 0x836D, 0x836E,
    0x8371, 0x8374, 0x8377, 0x837A, 0x837D, 0x837E, 0x8380, 0x8381, 0x8382, 0x8384, 0x8386, 0x8388, 0x8389, 0x838A,
    0x838B, 0x838C, 0x838D, 0x838F, 0x8393, 0x814A, 0x814B};
// A kana and the voiced mark DE or the semi-voiced mark DF: one full-width character.
const struct { const char* half; WORD full; } kMarked[] = {
    {"\xB3\xDE", 0x8394}, {"\xB6\xDE", 0x834B}, {"\xB7\xDE", 0x834D}, {"\xB8\xDE", 0x834F}, {"\xB9\xDE", 0x8351}, {"\xBA\xDE", 0x8353},
    {"\xBB\xDE", 0x8355}, {"\xBC\xDE", 0x8357}, {"\xBD\xDE", 0x8359}, {"\xBE\xDE", 0x835B}, {"\xBF\xDE", 0x835D}, {"\xC0\xDE", 0x835F},
    {"\xC1\xDE", 0x8361}, {"\xC2\xDE", 0x8364}, {"\xC3\xDE", 0x8366}, {"\xC4\xDE", 0x8368}, {"\xCA\xDE", 0x836F}, {"\xCB\xDE", 0x8372},
    {"\xCC\xDE", 0x8375}, {"\xCD\xDE", 0x8378}, {"\xCE\xDE", 0x837B}, {"\xCA\xDF", 0x8370}, {"\xCB\xDF", 0x8373}, {"\xCC\xDF", 0x8376},
    {"\xCD\xDF", 0x8379}, {"\xCE\xDF", 0x837C}
};

TEST(IntlJapan, EachHalfWidthCharacterAndItsFullWidthCode) {
    std::vector<std::pair<std::string, WORD>> rows;
    for (int i = 0; i < 26; ++i) rows.push_back({std::string(1, char('A' + i)), WORD(0x8260 + i)});
    for (int i = 0; i < 26; ++i) rows.push_back({std::string(1, char('a' + i)), WORD(0x8281 + i)});
    for (int i = 0; i < 10; ++i) rows.push_back({std::string(1, char('0' + i)), WORD(0x824F + i)});
    for (size_t i = 0; i < std::size(kPunctFull); ++i) rows.push_back({std::string(1, kPunct[i]), kPunctFull[i]});
    for (size_t i = 0; i < std::size(kKanaFull); ++i) rows.push_back({std::string(1, char(0xA1 + i)), kKanaFull[i]});
    for (const auto& m : kMarked) rows.push_back({m.half, m.full});
    IntlUnder env(kJapanese);
    for (auto& [half, code] : rows) {
        std::string full = {char(code >> 8), char(code & 0xFF)};
        char dst[8];
        EXPECT_EQ(IntlStrJapanFull(dst, half.data()), 1) << "IntlStrJapanFull(" << Hex(half) << ")";
        EXPECT_EQ(Hex(dst), Hex(full)) << "IntlStrJapanFull(" << Hex(half) << ")";
        EXPECT_EQ(IntlStrJapanHalf(dst, full.data()), int(half.size())) << "IntlStrJapanHalf(" << Hex(full) << ")";
        EXPECT_EQ(Hex(dst), Hex(half)) << "IntlStrJapanHalf(" << Hex(full) << ")";
    }
}
TEST(IntlJapan, ConversionsCountCharactersOfTheirResult) {
    const Call japanese[] = {
    {TO(IntlStrJapanFull), "\xB1\xB6\xDE\xCA\xDF\xB3\xDE\xDC", 5, "\x83\x41\x83\x4B\x83\x70\x83\x94\x83\x8F"},
    {TO(IntlStrJapanFull), "\xCA\xDE\xCA\xDF\xCB", 3, "\x83\x6F\x83\x70\x83\x71"},
        // Pairs with no form of their own: the mark converts alone.
    {TO(IntlStrJapanFull), "\xB1\xDF\xA6\xDE\xDC\xDE", 6, "\x83\x41\x81\x4B\x83\x92\x81\x4A\x83\x8F\x81\x4A"},
        // Bytes no table covers are copied: controls, 7F, a lone 80, lead bytes at the end.
    {TO(IntlStrJapanFull), "\x1F\x7F\x80", 3, "\x1F\x7F\x80"}, {TO(IntlStrJapanFull), "a\x9F", 2, "\x82\x81\x9F"},
    {TO(IntlStrJapanFull), "\xE0", 1, "\xE0"}, {TO(IntlStrJapanFull), "\x88\x9F" "a", 2, "\x88\x9F\x82\x81"},
        // A0 has the code 0: two zero bytes end the text as a reader sees it.
    {CALL((IntlStrJapanFull(dst, s), Written(dst))), "a\xA0" "b", 7, "\x82\x81"}, {TO(IntlStrJapanFull), "a\xA0" "b", 1},
        // Small wa, ka and ke have a half-width form without being one; codes outside 8140-8396 or not in the table are copied.
    {TO(IntlStrJapanHalf), "\x83\x8E\x83\x95\x83\x96", 3, "\xDC\xB6\xB9"}, {TO(IntlStrJapanHalf), "\x83\x4B\x83\x41", 3, "\xB6\xDE\xB1"},
    {TO(IntlStrJapanHalf), "\x83\x97\x81\x3F", 2, "\x83\x97\x81\x3F"}, {TO(IntlStrJapanHalf), "\x81\x50\x88\x9F", 2, "\x81\x50\x88\x9F"},
    {TO(IntlStrJapanHalf), "a\x82\x60\x82", 3, "aA\x82"}, {TO(IntlStrJapanFull), "", 0, ""},
    {CALL(IntlStrJapanFull(nullptr, s)), "a", -1}, {CALL(IntlStrJapanHalf(dst, nullptr)), "", -1, kUntouched},
    };
    ExpectCalls({kJapanese}, japanese);
    const Call english[] = { // the single-byte path copies, and counts bytes
        {TO(IntlStrJapanFull), "a\xB6\xDE", 3, "a\xB6\xDE"}, {TO(IntlStrJapanHalf), "\x82\x60", 2, "\x82\x60"},
        {OF(IntlStrJapanHalf, nullptr), "", -1},
    };
    ExpectCalls({kEnglish}, english);
}

TEST(IntlJapan, KanjiAndKatakanaBytes) {
    const struct { Language lang; BYTE c; int kanji, katakana; } rows[] = {
        {kJapanese, 0x80, 0, 0}, {kJapanese, 0x81, 1, 0}, {kJapanese, 0x9F, 1, 0}, {kJapanese, 0xA0, 0, 1}, {kJapanese, 0xDF, 0, 1},
        {kJapanese, 0xE0, 1, 0}, {kJapanese, 0xFC, 1, 0}, {kJapanese, 0xFD, 0, 0}, {kChinese, 0xA0, 1, 0}, {kChinese, 0xFE, 1, 0},
        {kChinese, 0x80, 0, 0}, {kKorean, 0x81, 1, 0}, {kTaiwanese, 0xFF, 0, 0}, {kEnglish, 0x88, 0, 0}, {kEnglish, 0xA0, 0, 0},
    };
    for (const auto& r : rows) {
        IntlUnder env(r.lang);
        EXPECT_EQ(IntlIsKanji(r.c), r.kanji) << std::hex << "IntlIsKanji(0x" << int(r.c) << ") under " << r.lang.name;
        EXPECT_EQ(IntlIsKatakana(r.c), r.katakana) << std::hex << "IntlIsKatakana(0x" << int(r.c) << ") under " << r.lang.name;
    }
}

} // namespace
