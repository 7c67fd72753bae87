// String operations: cutting by characters and by bytes, replacing, copying,
// case and trimming, under each double-byte language and on the single-byte path.
#include "intl_table.h"

namespace {

#define S INTL_S
#define K "\x88\x9F"

char kXY[] = "XY";
char kX[] = "X";
char kNone[] = "";
// IntlStrTrimTrailing works in place: on a copy in dst.
long TrimTrailing(char* dst, const char* s) { return IntlStrTrimTrailing(std::strcpy(dst, s)); }

// S is a K b K c: 7 bytes, 5 characters. A byte count that would cut K leaves a space for its half.
const Call kCutsOfS[] = {
    {CALL(IntlStrLen(s)), S, 5}, {CALL(IntlStrLenB(s)), S, 7}, {CALL(IntlStrLeft(dst, s, 2)), S, 2, "a" K},
    {CALL(IntlStrLeft(dst, s, 9)), S, 5, S}, {CALL(IntlStrLeft(dst, s, -1)), S, 0, ""}, {CALL(IntlStrLeftB(dst, s, 2)), S, 2, "a "},
    {CALL(IntlStrLeftB(dst, s, 3)), S, 3, "a" K}, {CALL(IntlStrLeftB(dst, s, 5)), S, 5, "a" K "b "},
    {CALL(IntlStrLeftB(dst, s, 8)), S, 7, S}, {CALL(IntlStrLeftB(dst, s, -1)), S, 0, ""}, {CALL(IntlStrRight(dst, s, 2)), S, 2, K "c"},
    {CALL(IntlStrRight(dst, s, 0)), S, 0, ""}, {CALL(IntlStrRight(dst, s, 5)), S, 5, S}, {CALL(IntlStrRight(dst, s, 9)), S, 5, S},
    {CALL(IntlStrRightB(dst, s, 2)), S, 2, " c"}, {CALL(IntlStrRightB(dst, s, 3)), S, 3, K "c"},
    {CALL(IntlStrRightB(dst, s, 5)), S, 5, " b" K "c"}, {CALL(IntlStrRightB(dst, s, 7)), S, 7, S}, {CALL(IntlStrRightB(dst, s, 0)), S, 0, ""},
    {CALL(IntlStrMid(dst, s, 1, 2)), S, 2, K "b"}, {CALL(IntlStrMid(dst, s, 4, 3)), S, 1, "c"}, {CALL(IntlStrMid(dst, s, 5, 1)), S, 0, ""},
    {CALL(IntlStrMid(dst, s, 1, -1)), S, 0, ""}, {CALL(IntlStrMid(dst, s, -3, 2)), S, 2, "a" K}, {CALL(IntlStrMid(dst, s, 6, 1)), S, 0, ""},
    {CALL(IntlStrMidB(dst, s, 1, 1)), S, 1, " "}, {CALL(IntlStrMidB(dst, s, 1, 2)), S, 2, K}, {CALL(IntlStrMidB(dst, s, 2, 1)), S, 1, " "},
    {CALL(IntlStrMidB(dst, s, 2, 3)), S, 3, " b "}, {CALL(IntlStrMidB(dst, s, 3, 4)), S, 4, "b" K "c"},
    {CALL(IntlStrMidB(dst, s, 7, 1)), S, 0, ""}, {CALL(IntlStrMidB(dst, s, 8, 1)), S, 0, ""}, {CALL(IntlStrMidB(dst, s, 2, -1)), S, 0, ""},
    {CALL(IntlStrMidB(dst, s, -1, 100)), S, 7, S}, {CALL(IntlStrMidB(dst, s, 6, 0)), S, 0, ""},
    {CALL(IntlStrReplace(dst, s, kXY, 1, 1)), S, 6, "aXYb" K "c"}, {CALL(IntlStrReplace(dst, s, kXY, 9, 1)), S, 7, S "XY"},
    {CALL(IntlStrReplace(dst, s, kNone, -2, 2)), S, 3, "b" K "c"}, {CALL(IntlStrReplace(dst, s, kXY, 4, 9)), S, 6, "a" K "b" K "XY"},
    {CALL(IntlStrReplaceB(dst, s, kXY, 1, 1)), S, 8, "aXY b" K "c"}, {CALL(IntlStrReplaceB(dst, s, kXY, 2, 2)), S, 7, "a XY" K "c"},
    {CALL(IntlStrReplaceB(dst, s, kXY, 2, 100)), S, 4, "a XY"}, {CALL(IntlStrReplaceB(dst, s, kX, 3, 2)), S, 6, "a" K "X c"},
    {CALL(IntlStrReplaceB(dst, s, kX, -1, -1)), S, 8, "X" S}, {CALL(IntlStrReplace(dst, nullptr, kX, 0, 0)), "", 1, "X"},
};

TEST(IntlStrings, CuttingSNeverLeavesHalfACharacter) { ExpectCalls(kDoubleByte, kCutsOfS); }

// With the double-byte path off both sets count bytes and nothing is replaced.
TEST(IntlStrings, SingleBytePathCountsBytes) {
    const Call calls[] = {
        {CALL(IntlStrLen(s)), S, 7}, {CALL(IntlStrLeft(dst, s, 2)), S, 2, "a\x88"}, {CALL(IntlStrLeftB(dst, s, 2)), S, 2, "a\x88"},
        {CALL(IntlStrLeft(dst, s, -1)), S, 0, ""}, {CALL(IntlStrRight(dst, s, 2)), S, 2, "\x9F" "c"}, {CALL(IntlStrRightB(dst, s, 9)), S, 7, S},
        {CALL(IntlStrRight(dst, s, 0)), S, 0, ""}, {CALL(IntlStrMid(dst, s, 2, 3)), S, 3, "\x9F" "b\x88"},
        {CALL(IntlStrMidB(dst, s, 7, 1)), S, 0, ""}, {CALL(IntlStrMidB(dst, s, 8, 1)), S, 0, ""}, {CALL(IntlStrMid(dst, s, -1, 2)), S, 2, "a\x88"},
        {CALL(IntlStrReplace(dst, s, kXY, 2, 2)), S, 7, "a\x88XY\x88\x9F" "c"}, {CALL(IntlStrReplaceB(dst, s, kXY, 9, 2)), S, 9, S "XY"},
        {CALL(IntlStrReplace(dst, s, kX, -1, 9)), S, 1, "X"},
    };
    ExpectCalls({kEnglish}, calls);
}

// A lead byte just before the terminator is one single-byte character for
// every function that walks: none steps over the terminator.
TEST(IntlStrings, TrailingLeadByteIsOneCharacterEverywhere) {
    const Call calls[] = {
        {CALL(IntlStrLen(s)), "a\x88", 2}, {CALL(IntlStrLeft(dst, s, 2)), "a\x88", 2, "a\x88"},
        {CALL(IntlStrLeftB(dst, s, 2)), "a\x88", 2, "a\x88"}, {CALL(IntlStrRight(dst, s, 1)), "a\x88", 1, "\x88"},
        {CALL(IntlStrRightB(dst, s, 1)), "a\x88", 1, "\x88"}, {CALL(IntlStrMid(dst, s, 1, 5)), "a\x88", 1, "\x88"},
        {CALL(IntlStrMidB(dst, s, 1, 1)), "a\x88", 1, "\x88"}, {CALL(IntlStrReplace(dst, s, kX, 1, 1)), "a\x88", 2, "aX"},
        {CALL(IntlStrReplace(dst, s, kX, 2, 0)), "a\x88", 2, "a\x88X"}, // in dst, 88 58 is one character
        {CALL(IntlStrReplaceB(dst, s, kX, 2, 0)), "a\x88", 3, "a\x88X"}, {CALL(IntlStrProper(dst, s)), "a\x88", 2, "A\x88"},
        {CALL(IntlStrTrim(dst, s)), " a \x88", 3, "a \x88"}, {CALL(TrimTrailing(dst, s)), "a\x88", 2, "a\x88"},
        {CALL(At(IntlStripEndSpace(dst, s), dst)), "a\x88", 0, "a\x88"},
        {CALL((IntlStrStripSpace(std::strcpy(dst, s)), 0)), " \x88", 0, "\x88"},
    };
    ExpectCalls(kDoubleByte, calls);
}

// strncpy by characters: no terminator when src has n characters or more,
// otherwise the terminator and one zero byte for each character missing.
TEST(IntlStrings, StrnCpyCopiesWholeCharactersAndPads) {
    const Call calls[] = {
        {CALL(Written(IntlStrnCpy(dst, s, 2))), S, 3}, {CALL(Written(IntlStrnCpy(dst, s, 5))), S, 7}, {CALL(Written(IntlStrnCpy(dst, s, 6))), S, 8, S},
        {CALL(Written(IntlStrnCpy(dst, s, 4))), "ab", 4, "ab"}, {CALL(Written(IntlStrnCpy(dst, s, 3))), K, 4, K},
        {CALL(Written(IntlStrnCpy(dst, s, 0))), S, 0}, {CALL(Written(IntlStrnCpy(dst, s, 2))), "", 2, ""},
    };
    ExpectCalls({kJapanese}, calls);
}

TEST(IntlStrings, TrimmingAndCase) {
    const Call anyPath[] = {
        {CALL(IntlStrTrim(dst, s)), "  a  b  ", 3, "a b"}, {CALL(IntlStrTrim(dst, s)), "   ", 0, ""},
        {CALL(IntlStrTrim(dst, s)), " a\r\nb ", 4, "a\r\nb"}, {CALL(IntlStrTrim(dst, s)), "a \r\n b", 6, "a \r\n b"},
        {CALL(IntlStrTrim(dst, s)), "\ta\f\vb", 3, "a b"}, {CALL(TrimTrailing(dst, s)), "a  ", 1, "a"},
        {CALL(TrimTrailing(dst, s)), "   ", 1, " "}, {CALL(TrimTrailing(dst, s)), "", 0, ""}, {CALL(TrimTrailing(dst, s)), "ab c\t", 4, "ab c"},
        {CALL(At(IntlStripEndSpace(dst, s), dst)), "a\r\n", 0, "a"}, {CALL(At(IntlStripEndSpace(dst, s), dst)), " \t\r\n", 0, ""},
        {CALL((IntlStrStripSpace(std::strcpy(dst, s)), 0)), " \ta b\n", 0, "a b"},
        {CALL(IntlStrProper(dst, s)), "hello wORLD  foo", 16, "Hello World  Foo"}, {CALL(IntlStrProper(dst, s)), "\tx\ny", 4, "\tX\nY"},
        {CALL(At(IntlStrUpper(std::strcpy(dst, s)), dst)), "abC1", 0, "ABC1"},
        {CALL(At(IntlStrLower(std::strcpy(dst, s)), dst)), "abC1", 0, "abc1"},
        {CALL(At(IntlStripEndSpace(dst, nullptr), dst)), "", -1, kUntouched}, {CALL(At(IntlStripEndSpace(nullptr, s), s)), "a", -1},
        {CALL(IntlStrTrimTrailing(nullptr)), "", 0}, {CALL(At(IntlStrUpper(nullptr), s)), "", -1}, {CALL(IntlStrProper(nullptr, s)), "a", 0},
        {CALL(IntlStrProper(dst, nullptr)), "", 0, ""}, {CALL(IntlStrTrim(dst, nullptr)), "", 0, ""},
        {CALL(IntlIsStrEqual(s, dst)), "ab", 0}, {CALL(IntlIsStrEqual(s, nullptr)), "", 0}, {CALL(IntlIsStrEqual(nullptr, nullptr)), "", 1},
        {CALL(IntlIsStrEqual(s, (std::strcpy(dst, s), dst))), "ab", 1}, {CALL(IntlIsStrnEqual(s, std::strcpy(dst, "abd"), 2)), "abc", 1},
        {CALL(IntlIsStrnEqual(s, std::strcpy(dst, "abd"), 3)), "abc", 0}, {CALL(IntlIsStrnEqual(nullptr, s, 0)), "", 0},
    };
    ExpectCalls({kEnglish, kJapanese, kKorean}, anyPath);
    const Call singleByte[] = {
        {CALL(TrimTrailing(dst, s)), "a\r\n", 3, "a\r\n"}, {CALL(IntlStrTrim(dst, s)), "\x81\x40" "a", 3, "\x81\x40" "a"},
        {CALL(IntlStrProper(dst, s)), "\x82\x81 b", 4, "\x82\x81 B"},
        {CALL(Written(IntlStrnCpy(dst, s, 2))), S, 2}, {CALL(Written(IntlStrnCpy(dst, s, 4))), "ab", 4, "ab"},
    };
    ExpectCalls({kEnglish}, singleByte);
    const Call japanese[] = {
        {CALL(TrimTrailing(dst, s)), "a\r\n", 1, "a"}, {CALL(TrimTrailing(dst, s)), "\x81\x40" K "\x81\x40 ", 2, "\x81\x40" K},
        {CALL(IntlStrTrim(dst, s)), "\x81\x40" "a\x81\x40\x81\x40" "b\x81\x40", 3, "a b"},
        {CALL(At(IntlStripEndSpace(dst, s), dst)), "a\x81\x40", 0, "a"},
        // A full-width Latin letter starts a word in upper case; other double-byte characters stay.
        {CALL(IntlStrProper(dst, s)), "\x82\x81\x82\x82\x81\x40\x82\x9A " K, 6, "\x82\x60\x82\x82\x81\x40\x82\x79 " K},
        {CALL(IntlStrProper(dst, s)), "aB" K "C", 4, "Ab" K "c"},
        {CALL(At(IntlStrUpper(std::strcpy(dst, s)), dst)), "a\x82" "a", 0, "A\x82" "a"},
    };
    ExpectCalls({kJapanese}, japanese);
    const Call chinese[] = {
        {CALL(IntlStrProper(dst, s)), "\x82\x81 b", 3, "\x82\x81 B"}, // not looked up in the Japanese table
        {CALL(IntlStrTrim(dst, s)), "\xA1\x40" "a\xA1\x40" "b", 3, "a b"},
    };
    ExpectCalls({kChinese}, chinese);
}

// Replacing and cutting in place, dst being src.
TEST(IntlStrings, InPlace) {
    const Call calls[] = {
        {CALL((std::strcpy(dst, s), IntlStrReplace(dst, dst, kXY, 0, 1))), S, 6, "XY" K "b" K "c"},
        {CALL((std::strcpy(dst, s), IntlStrReplaceB(dst, dst, kNone, 0, 3))), S, 4, "b" K "c"},
        {CALL((std::strcpy(dst, s), IntlStrReplaceB(dst + 1, dst, kX, 1, 0))), S, 8, "aaX" K "b" K "c"},
        {CALL((std::strcpy(dst, s), IntlStrReplaceB(dst, dst + 1, kNone, 2, 1))), S, 5, K K "c"},
        {CALL((std::strcpy(dst, s), IntlStrRight(dst, dst, 2))), S, 2, K "c"},
        {CALL((std::strcpy(dst, s), IntlStrMid(dst, dst + 1, 1, 9))), S, 3, "b" K "c"},
    };
    ExpectCalls({kJapanese}, calls);
}

} // namespace
