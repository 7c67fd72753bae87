// The environment and characters: the language settles the path, and every
// character function agrees on where a double-byte character begins.
#include "intl_table.h"
#include "core/libstate.h"

#include <cctype>

namespace {

#define S INTL_S
#define K "\x88\x9F"

// IntlIsNthByteDB, then IntlIsNthCharDB, for n from -1 to two past the last byte, as digits.
long Kinds(char* dst, char* s) {
    for (int byChar = 0; byChar < 2; ++byChar)
        for (int n = -1; n <= int(std::strlen(s)) + 1; ++n) *dst++ = char('0' + (byChar ? IntlIsNthCharDB(s, n) : IntlIsNthByteDB(s, n)));
    return *dst = 0;
}

// IntlStrNthChar and IntlNextDBCInStr (from byte `from`) as offsets into s, -1 for null.
long Nth(char* s, int n) { return At(IntlStrNthChar(s, n), s); }
long NextDBC(char* s, int from) { return At(IntlNextDBCInStr(s + from), s); }

// System language and user locale: the double-byte path, right-to-left, the blank.
TEST(IntlChars, EnvironmentFollowsTheSystemAndUserLanguages) {
    // want: double-byte path, right-to-left, the blank, the primary language
    const struct { LANGID system; LCID user; const char* want; } rows[] = {
        {0x0409, 0x0409, "0 0 0 9"}, {0x0411, 0x0411, "1 0 8140 11"}, {0x0804, 0x0804, "1 0 a140 4"}, {0x0412, 0x0412, "1 0 a1a1 12"},
        {0x0C04, 0x0409, "1 0 a140 4"}, {0x0401, 0x0409, "0 1 0 1"}, {0x040D, 0x0409, "0 1 0 d"}, {0x0429, 0x0409, "0 1 0 29"},
        // A double-byte system is never right-to-left, a double-byte user changes nothing; the neighbours of Arabic and Korean;
        // sublanguage bits are not the language.
        {0x0409, 0x0C01, "0 1 0 9"}, {0x0407, 0x1040D, "0 1 0 7"}, {0x0411, 0x0401, "1 0 8140 11"}, {0x0409, 0x0411, "0 0 0 9"},
        {0x0402, 0x0413, "0 0 0 2"}, {0x7C11, 0x0409, "1 0 8140 11"},
    };
    for (const auto& r : rows) {
        IntlUnder env({"", r.system, 1252}, r.user);
        std::ostringstream got;
        got << IntlDBCSEnabled() << " " << IntlIsBiDiEnabled() << " " << std::hex << IntlDBCSBlank() << " " << gpLibState->wPrimaryLangId;
        EXPECT_EQ(got.str(), r.want) << std::hex << "IntlInit under system 0x" << r.system << ", user 0x" << r.user;
    }
}

TEST(IntlChars, CharactersOfSAndOfATrailingLeadByte) {
    const Call doubleByte[] = {
        {TO(Kinds), S, 0, "00120120000010100000"}, {OF(IntlIsDBChar), S, 0}, {CALL(IntlIsDBChar(s + 1)), S, 1},
        {CALL(IntlBytesInNextChar(s + 1)), S, 2}, {CALL(IntlBytesInNextChar(s + 3)), S, 1}, {CALL(IntlBytesInNextChar(s + 7)), S, 0},
        {OF(NextDBC, 0), S, 1}, {OF(NextDBC, 3), S, 4}, {OF(NextDBC, 6), S, -1}, {OF(Nth, 3), S, 4}, {OF(Nth, 5), S, 7},
        {OF(Nth, 6), S, -1}, {OF(Nth, -1), S, -1}, {CALL(IntlStrFirstChar(s + 1)), S, short(0x889F)}, {OF(IntlStrLastChar), S, 'c'},
        {OF(IntlStrLastChar), "a" K, short(0x889F)}, {CALL(IntlDBCSChar(s + 4)), S, 0x889F}, {CALL(IntlDBCSChar(s + 3)), S, 'b'},
        {TO(Kinds), K "a", 0, "012000010000"},
        // A lead byte just before the terminator is a single byte, widened signed where the value is signed.
        {TO(Kinds), "a\x88", 0, "0000000000"}, {CALL(IntlIsDBChar(s + 1)), "a\x88", 0}, {CALL(IntlBytesInNextChar(s + 1)), "a\x88", 1},
        {OF(IntlStrLastChar), "a\x88", -0x78}, {CALL(IntlStrFirstChar(s + 1)), "a\x88", -0x78},
        {CALL(IntlDBCSChar(s + 1)), "a\x88", 0x88}, {OF(NextDBC, 0), "a\x88", -1}, {OF(Nth, 2), "a\x88", 2}, {OF(Nth, 3), "a\x88", -1},
        // Null texts.
        {CALL(IntlIsDBChar(nullptr)), "", 0}, {CALL(IntlBytesInNextChar(nullptr)), "", 0}, {CALL(IntlDBCSChar(nullptr)), "", 0},
        {CALL(IntlIsNthByteDB(nullptr, 0) + IntlIsNthCharDB(nullptr, 0) + IntlStrIsNextChSpace(nullptr)), "", 0},
        {CALL(At(IntlStrNthChar(nullptr, 0), s)), "", -1}, {CALL(At(IntlNextDBCInStr(nullptr), s)), "", -1},
        {CALL(IntlStrLastChar(nullptr)), "", 0}, {CALL(IntlStrFirstChar(s) + IntlStrLastChar(s)), "", 0},
        {CALL(At(IntlStripStartSpace(nullptr), s)), "", -1}, {CALL(At(IntlStripStartBlank(nullptr), s)), "", -1},
    };
    ExpectCalls(kDoubleByte, doubleByte);
    const Call singleByte[] = {
        {CALL(IntlIsDBChar(s + 1)), S, 0}, {CALL(IntlBytesInNextChar(s + 1)), S, 1},
        {CALL(IntlDBCSChar(s + 1)), S, 0x88}, {OF(Nth, 7), S, 7}, {OF(Nth, 8), S, -1}, {OF(NextDBC, 0), S, -1},
        {CALL(IntlStrFirstChar(s + 1)), S, -0x78},
    };
    ExpectCalls({kEnglish}, singleByte);
    const Call pathOff[] = {{TO(Kinds), S, 0, "00000000000000000000"}}; // even where CharNextA pairs bytes
    ExpectCalls({kEnglish, {"English on 932", 0x0409, 932}}, pathOff);
}

TEST(IntlChars, HexDigitsAreTestedOnTheWholeValue) {
    for (int c : std::initializer_list<int>{'0', '9', 'A', 'F', 'a', 'f', '/', ':', '@', 'G', '`', 'g', 0x4130, 0x8246, 0x0130})
        EXPECT_EQ(IntlCharIsHexDigit(WORD(c)), c < 'g' && std::isxdigit(c)) << std::hex << "IntlCharIsHexDigit(0x" << c << ")";
}

// 9 to 13 and 32 are white space, and on the double-byte path the blank of the language; IntlStripStartBlank
// skips only 32 and that blank. Rows: is the first character space, and where each strip ends.
TEST(IntlChars, WhiteSpaceAndTheDoubleByteBlank) {
    const struct { Language lang; const char* text; int space, stripSpace, stripBlank; } rows[] = {
        {kJapanese, " \t\x81\x40x", 1, 4, 1}, {kJapanese, "\x81\x40\tx", 1, 3, 2}, {kJapanese, "\x81\x40\x81", 1, 2, 2},
        {kJapanese, "\xA1\x40", 0, 0, 0}, {kJapanese, "\x08 ", 0, 0, 0}, {kJapanese, "\r\n\x0E", 1, 2, 0}, {kJapanese, " " K, 1, 1, 1},
        {kChinese, "\xA1\x40\x81\x40", 1, 2, 2}, {kTaiwanese, "\xA1\x40 x", 1, 3, 3}, {kKorean, "\xA1\xA1 \xA1\xA2", 1, 3, 3},
        {kEnglish, "\x0B\x81\x40", 1, 1, 0}, {kEnglish, " \x0C" "a", 1, 2, 1}, {kEnglish, "\t\x0D", 1, 2, 0},
    };
    for (const auto& r : rows) {
        IntlUnder env(r.lang);
        std::string s = r.text, under = Hex(s) + ") under " + r.lang.name;
        EXPECT_EQ(IntlStrIsNextChSpace(s.data()), r.space) << "IntlStrIsNextChSpace(" << under;
        EXPECT_EQ(IntlStripStartSpace(s.data()) - s.data(), r.stripSpace) << "IntlStripStartSpace(" << under;
        EXPECT_EQ(IntlStripStartBlank(s.data()) - s.data(), r.stripBlank) << "IntlStripStartBlank(" << under;
    }
}

} // namespace
