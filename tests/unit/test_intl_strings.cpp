// String operations: cutting by characters and by bytes, replacing, copying,
// case and trimming, under each double-byte language and on the single-byte path.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

struct Call {
    const char* name; // what was called, for the failure message
    int (*run)(char* dst, char* src);
    const char* src; // the text handed in
    const char* dst; // what dst holds afterwards; null: dst is not written
    long result;
};

void expectCalls(const Language& l, const Call* calls, size_t n) {
    IntlUnder env(l);
    for (size_t i = 0; i < n; ++i) {
        const Call& c = calls[i];
        std::string src = c.src;
        char dst[64];
        std::memset(dst, 0x55, sizeof dst);
        long r = c.run(dst, src.data());
        if (c.dst) {
            EXPECT_EQ(Hex(dst), Hex(c.dst)) << c.name << " of " << Hex(c.src) << " under " << l.name;
        }
        EXPECT_EQ(r, c.result) << c.name << " of " << Hex(c.src) << " under " << l.name;
    }
}

#define S INTL_S
#define K "\x88\x9F"
#define CALL(expr) #expr, []([[maybe_unused]] char* dst, [[maybe_unused]] char* s) -> int { return expr; }

const Call kCutsOfS[] = {
    {CALL(IntlStrLeft(dst, s, 2)), S, "a" K, 2},          {CALL(IntlStrLeft(dst, s, 9)), S, S, 5},
    {CALL(IntlStrLeft(dst, s, -1)), S, "", 0},            {CALL(IntlStrLeftB(dst, s, 2)), S, "a ", 2},
    {CALL(IntlStrLeftB(dst, s, 3)), S, "a" K, 3},         {CALL(IntlStrLeftB(dst, s, 5)), S, "a" K "b ", 5},
    {CALL(IntlStrLeftB(dst, s, 8)), S, S, 7},             {CALL(IntlStrRight(dst, s, 2)), S, K "c", 2},
    {CALL(IntlStrRight(dst, s, 0)), S, "", 0},            {CALL(IntlStrRight(dst, s, 9)), S, S, 5},
    {CALL(IntlStrRightB(dst, s, 2)), S, " c", 2},         {CALL(IntlStrRightB(dst, s, 3)), S, K "c", 3},
    {CALL(IntlStrRightB(dst, s, 5)), S, " b" K "c", 5},   {CALL(IntlStrMid(dst, s, 1, 2)), S, K "b", 2},
    {CALL(IntlStrMid(dst, s, 5, 1)), S, "", 0},           {CALL(IntlStrMid(dst, s, 1, -1)), S, "", 0},
    {CALL(IntlStrMid(dst, s, -3, 2)), S, "a" K, 2},       {CALL(IntlStrMid(dst, s, 6, 1)), S, "", 0},
    {CALL(IntlStrMidB(dst, s, 1, 1)), S, " ", 1},         {CALL(IntlStrMidB(dst, s, 1, 2)), S, K, 2},
    {CALL(IntlStrMidB(dst, s, 2, 1)), S, " ", 1},         {CALL(IntlStrMidB(dst, s, 2, 3)), S, " b ", 3},
    {CALL(IntlStrMidB(dst, s, 7, 1)), S, "", 0},          {CALL(IntlStrMidB(dst, s, 2, -1)), S, "", 0},
    {CALL(IntlStrMidB(dst, s, 0, 100)), S, S, 7},         {CALL(IntlStrReplace(dst, s, (char*)"XY", 1, 1)), S, "aXYb" K "c", 6},
    {CALL(IntlStrReplace(dst, s, (char*)"XY", 9, 1)), S, S "XY", 7},
    {CALL(IntlStrReplace(dst, s, (char*)"", -2, 2)), S, "b" K "c", 3},
    {CALL(IntlStrReplaceB(dst, s, (char*)"XY", 1, 1)), S, "aXY b" K "c", 8},
    {CALL(IntlStrReplaceB(dst, s, (char*)"XY", 2, 2)), S, "a XY" K "c", 7},
    {CALL(IntlStrReplaceB(dst, s, (char*)"XY", 2, 100)), S, "a XY", 4},
    {CALL(IntlStrLen(s)), S, nullptr, 5},      {CALL(IntlStrLenB(s)), S, nullptr, 7},
};

TEST(IntlStrings, CuttingSNeverLeavesHalfACharacter) {
    for (const Language& l : kDoubleByte) expectCalls(l, kCutsOfS, std::size(kCutsOfS));
}

// With the double-byte path off both sets count bytes and nothing is replaced.
TEST(IntlStrings, SingleBytePathCountsBytes) {
    const Call calls[] = {
        {CALL(IntlStrLeft(dst, s, 2)), S, "a\x88", 2},       {CALL(IntlStrLeftB(dst, s, 2)), S, "a\x88", 2},
        {CALL(IntlStrRight(dst, s, 2)), S, "\x9F" "c", 2},   {CALL(IntlStrRightB(dst, s, 9)), S, S, 7},
        {CALL(IntlStrMid(dst, s, 2, 3)), S, "\x9F" "b\x88", 3},
        {CALL(IntlStrMidB(dst, s, 8, 1)), S, "", 0},
        {CALL(IntlStrReplace(dst, s, (char*)"XY", 2, 2)), S, "a\x88XY\x88\x9F" "c", 7},
        {CALL(IntlStrReplaceB(dst, s, (char*)"XY", 9, 2)), S, S "XY", 9},
        {CALL(IntlStrLen(s)), S, nullptr, 7},
    };
    expectCalls(kEnglish, calls, std::size(calls));
}

// A lead byte just before the terminator is one single-byte character for
// every function that walks: none steps over the terminator.
TEST(IntlStrings, TrailingHalfIsOneCharacterEverywhere) {
    const Call calls[] = {
        {CALL(IntlStrLen(s)), "a\x88", nullptr, 2},
        {CALL(IntlStrLeft(dst, s, 2)), "a\x88", "a\x88", 2},
        {CALL(IntlStrLeftB(dst, s, 2)), "a\x88", "a\x88", 2},
        {CALL(IntlStrRight(dst, s, 1)), "a\x88", "\x88", 1},
        {CALL(IntlStrRightB(dst, s, 1)), "a\x88", "\x88", 1},
        {CALL(IntlStrMid(dst, s, 1, 5)), "a\x88", "\x88", 1},
        {CALL(IntlStrMidB(dst, s, 1, 1)), "a\x88", "\x88", 1},
        {CALL(IntlStrReplace(dst, s, (char*)"X", 1, 1)), "a\x88", "aX", 2},
        {CALL(IntlStrReplace(dst, s, (char*)"X", 2, 0)), "a\x88", "a\x88X", 2}, // in dst, 88 58 is one character
        {CALL(IntlStrReplaceB(dst, s, (char*)"X", 2, 0)), "a\x88", "a\x88X", 3},
        {CALL(IntlStrProper(dst, s)), "a\x88", "A\x88", 2},
        {CALL(IntlStrTrim(dst, s)), " a \x88", "a \x88", 3},
        {CALL((IntlStrnCpy(dst, s, 3), 0)), "a\x88", "a\x88", 0},
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "a\x88", "a\x88", 2},
        {CALL((IntlStripEndSpace(dst, s), 0)), "a\x88", "a\x88", 0},
        {CALL((IntlStrStripSpace(strcpy(dst, s)), 0)), " \x88", "\x88", 0},
    };
    for (const Language& l : kDoubleByte) expectCalls(l, calls, std::size(calls));
}

TEST(IntlStrings, StrnCpyCopiesWholeCharactersAndPads) {
    IntlUnder env(kJapanese);
    const struct {
        const char* src;
        WORD n;
        const char* dst; // the bytes written, then the mark 55
        size_t bytes;
    } cases[] = {
        {S, 2, "a" K "\x55", 4},       {S, 5, S "\x55", 8},         {"ab", 4, "ab\0\0\x55", 5},
        {K, 3, K "\0\0\x55", 5},       {S, 0, "\x55", 1},           {"", 2, "\0\0\x55", 3},
    };
    for (const auto& c : cases) {
        std::string src = c.src;
        char dst[32];
        std::memset(dst, 0x55, sizeof dst);
        EXPECT_EQ(IntlStrnCpy(dst, src.data(), c.n), dst);
        EXPECT_EQ(Hex(std::string(dst, c.bytes)), Hex(std::string(c.dst, c.bytes)))
            << "IntlStrnCpy(" << Hex(src) << ", " << c.n << ")";
    }
}

TEST(IntlStrings, TrimmingAndCase) {
    const Call anyPath[] = {
        {CALL(IntlStrTrim(dst, s)), "  a  b  ", "a b", 3},
        {CALL(IntlStrTrim(dst, s)), "   ", "", 0},
        {CALL(IntlStrTrim(dst, s)), " a\r\nb ", "a\r\nb", 4},
        {CALL(IntlStrTrim(dst, s)), "a \r\n b", "a \r\n b", 6},
        {CALL(IntlStrTrim(dst, s)), "\ta\f\vb", "a b", 3},
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "a  ", "a", 1},
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "   ", " ", 1},
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "", "", 0},
        {CALL(IntlStripEndSpace(dst, s) == dst), "a\r\n", "a", 1},
        {CALL(IntlStripEndSpace(dst, s) == dst), " \t\r\n", "", 1},
        {CALL((strcpy(dst, s), IntlStrStripSpace(dst), 0)), " \ta b\n", "a b", 0},
        {CALL(IntlStrProper(dst, s)), "hello wORLD  foo", "Hello World  Foo", 16},
        {CALL(IntlStrProper(dst, s)), "\tx\ny", "\tX\nY", 4},
        {CALL((strcpy(dst, s), IntlStrUpper(dst) == dst)), "abC1", "ABC1", 1},
        {CALL((strcpy(dst, s), IntlStrLower(dst) == dst)), "abC1", "abc1", 1},
    };
    for (const Language& l : {kEnglish, kJapanese, kKorean}) expectCalls(l, anyPath, std::size(anyPath));
    const Call singleByte[] = {
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "a\r\n", "a\r\n", 3},
        {CALL(IntlStrTrim(dst, s)), "\x81\x40" "a", "\x81\x40" "a", 3},
    };
    expectCalls(kEnglish, singleByte, std::size(singleByte));
    const Call japanese[] = {
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "a\r\n", "a", 1},
        {CALL((strcpy(dst, s), int(IntlStrTrimTrailing(dst)))), "\x81\x40" K "\x81\x40 ", "\x81\x40" K, 2},
        {CALL(IntlStrTrim(dst, s)), "\x81\x40" "a\x81\x40\x81\x40" "b\x81\x40", "a b", 3},
        {CALL(IntlStripEndSpace(dst, s) == dst), "a\x81\x40", "a", 1},
        {CALL(IntlStrProper(dst, s)), "\x82\x81\x82\x82\x81\x40\x82\x83 " K, "\x82\x60\x82\x82\x81\x40\x82\x62 " K, 6},
        {CALL(IntlStrProper(dst, s)), "aB" K "C", "Ab" K "c", 4},
        {CALL((strcpy(dst, s), IntlStrUpper(dst) == dst)), "a\x82" "a", "A\x82" "a", 1},
    };
    expectCalls(kJapanese, japanese, std::size(japanese));
    const Call chinese[] = {
        {CALL(IntlStrProper(dst, s)), "\x82\x81 b", "\x82\x81 B", 3}, // not looked up in the Japanese table
        {CALL(IntlStrTrim(dst, s)), "\xA1\x40" "a\xA1\x40" "b", "a b", 3},
    };
    expectCalls(kChinese, chinese, std::size(chinese));
}

TEST(IntlStrings, InPlaceAndNullArguments) {
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        char text[32] = S;
        EXPECT_EQ(IntlStrReplace(text, text, (char*)"XYZ", 0, 1), l.codePage == 932 ? 7 : 9);
        EXPECT_EQ(Hex(text), Hex("XYZ" K "b" K "c")) << "IntlStrReplace in place under " << l.name;
        EXPECT_EQ(IntlStrReplaceB(text, text, (char*)"", 0, 3), l.codePage == 932 ? 6 : 6);
        EXPECT_EQ(Hex(text), Hex(K "b" K "c")) << "IntlStrReplaceB in place under " << l.name;
        EXPECT_EQ(IntlStrRight(text, text, 2), 2);
        EXPECT_EQ(Hex(text), Hex(l.codePage == 932 ? K "c" : "\x9F" "c")) << "IntlStrRight in place under " << l.name;
        EXPECT_EQ(IntlStrLen(nullptr), 0);
        EXPECT_EQ(IntlStripEndSpace(text, nullptr), nullptr);
        EXPECT_EQ(IntlStripEndSpace(nullptr, text), nullptr);
        EXPECT_EQ(IntlIsStrEqual(text, nullptr), 0);
        EXPECT_EQ(IntlIsStrEqual(nullptr, nullptr), 1);
    }
}

} // namespace
