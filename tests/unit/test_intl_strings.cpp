// String operations: cutting by characters and by bytes, replacing, copying,
// case and trimming, under each double-byte language and on the single-byte path.
#include "intl_table.h"

namespace {

#define S INTL_S
#define K "\x88\x9F"

char kXY[] = "XY";
char kX[] = "X";
char kNone[] = "";
// IntlStrTrimTrailing works in place: on a copy in dst; IntlStripEndSpace as an offset into dst.
long TrimTrailing(char* dst, const char* s) { return IntlStrTrimTrailing(std::strcpy(dst, s)); }
long StripEnd(char* dst, char* s) { return At(IntlStripEndSpace(dst, s), dst); }
// Upper, Lower and StripSpace work in place: on a copy in dst.
long Upper(char* dst, const char* s) { return At(IntlStrUpper(std::strcpy(dst, s)), dst); }
long Lower(char* dst, const char* s) { return At(IntlStrLower(std::strcpy(dst, s)), dst); }
long StripSpace(char* dst, const char* s) { return IntlStrStripSpace(std::strcpy(dst, s)), 0; }
// IntlStrnCpy: the bytes it wrote.
long StrnCpyWritten(char* dst, char* s, WORD n) { return Written(IntlStrnCpy(dst, s, n)); }

#define T "a\x88"

// S is a K b K c: 7 bytes, 5 characters. A byte count that would cut K leaves a space for its half.
const Call kCutsOfS[] = {
    {OF(IntlStrLen), S, 5}, {OF(IntlStrLenB), S, 7}, {TO(IntlStrLeft, 2), S, 2, "a" K}, {TO(IntlStrLeft, 9), S, 5, S},
    {TO(IntlStrLeft, -1), S, 0, ""}, {TO(IntlStrLeftB, 2), S, 2, "a "}, {TO(IntlStrLeftB, 3), S, 3, "a" K},
    {TO(IntlStrLeftB, 5), S, 5, "a" K "b "}, {TO(IntlStrLeftB, 8), S, 7, S}, {TO(IntlStrLeftB, -1), S, 0, ""},
    {TO(IntlStrRight, 2), S, 2, K "c"}, {TO(IntlStrRight, 0), S, 0, ""}, {TO(IntlStrRight, 5), S, 5, S}, {TO(IntlStrRight, 9), S, 5, S},
    {TO(IntlStrRightB, 2), S, 2, " c"}, {TO(IntlStrRightB, 3), S, 3, K "c"}, {TO(IntlStrRightB, 5), S, 5, " b" K "c"},
    {TO(IntlStrRightB, 9), S, 7, S}, {TO(IntlStrRightB, 0), S, 0, ""}, {TO(IntlStrTrim), K "a" K, 3, K "a" K}, {TO(IntlStrMid, 1, 2), S, 2, K "b"},
    {TO(IntlStrMid, 4, 3), S, 1, "c"}, {TO(IntlStrMid, 5, 1), S, 0, ""}, {TO(IntlStrMid, 1, -1), S, 0, ""},
    {TO(IntlStrMid, -3, 2), S, 2, "a" K}, {TO(IntlStrMid, 6, 1), S, 0, ""}, {TO(IntlStrMidB, 1, 1), S, 1, " "},
    {TO(IntlStrMidB, 1, 2), S, 2, K}, {TO(IntlStrMidB, 2, 1), S, 1, " "}, {TO(IntlStrMidB, 2, 3), S, 3, " b "},
    {TO(IntlStrMidB, 3, 4), S, 4, "b" K "c"}, {TO(IntlStrMidB, 7, 1), S, 0, ""}, {TO(IntlStrMidB, 8, 1), S, 0, ""},
    {TO(IntlStrMidB, 2, -1), S, 0, ""}, {TO(IntlStrMidB, -1, 100), S, 7, S}, {TO(IntlStrMidB, 6, 0), S, 0, ""},
    {TO(IntlStrReplace, kXY, 1, 1), S, 6, "aXYb" K "c"}, {TO(IntlStrReplace, kXY, 9, 1), S, 7, S "XY"},
    {TO(IntlStrReplace, kNone, -2, 2), S, 3, "b" K "c"}, {TO(IntlStrReplace, kXY, 4, 9), S, 6, "a" K "b" K "XY"},
    {TO(IntlStrReplaceB, kXY, 1, 1), S, 8, "aXY b" K "c"}, {TO(IntlStrReplaceB, kXY, 2, 2), S, 7, "a XY" K "c"},
    {TO(IntlStrReplaceB, kXY, 2, 100), S, 4, "a XY"}, {TO(IntlStrReplaceB, kX, 3, 2), S, 6, "a" K "X c"},
    {TO(IntlStrReplaceB, kX, -1, -1), S, 8, "X" S}, {CALL(IntlStrReplace(dst, nullptr, kX, 0, 0)), "", 1, "X"},
    // In place, dst at, above or below src: each part is read before it is overwritten.
    {CALL(IntlStrReplace(dst, std::strcpy(dst, s), kXY, 0, 1)), S, 6, "XY" K "b" K "c"},
    {CALL(IntlStrReplaceB(dst + 1, std::strcpy(dst, s), kX, 1, 0)), S, 8, "aaX" K "b" K "c"},
    {CALL(IntlStrReplaceB(dst, std::strcpy(dst, s) + 1, kNone, 2, 1)), S, 5, K K "c"},
    // A lead byte just before the terminator (T) is one single-byte character for every function: none steps over the terminator.
        {OF(IntlStrLen), T, 2}, {TO(IntlStrLeft, 2), T, 2, T}, {TO(IntlStrLeftB, 2), T, 2, T}, {TO(IntlStrRight, 1), T, 1, "\x88"},
        {TO(IntlStrRightB, 1), T, 1, "\x88"}, {TO(IntlStrMid, 1, 5), T, 1, "\x88"}, {TO(IntlStrMidB, 1, 1), T, 1, "\x88"},
        {TO(IntlStrReplace, kX, 1, 1), T, 2, "aX"}, {TO(IntlStrReplace, kX, 2, 0), T, 2, T "X"}, // in dst, 88 58 is one character
        {TO(IntlStrReplaceB, kX, 2, 0), T, 3, T "X"}, {TO(IntlStrProper), T, 2, "A\x88"}, {TO(IntlStrTrim), " a \x88", 3, "a \x88"},
        {TO(TrimTrailing), T, 2, T}, {TO(StripEnd), T, 0, T}, {TO(StripSpace), " \x88", 0, "\x88"},
    // strncpy by characters: no terminator when src has n characters or more, else a zero byte for each missing.
    {TO(StrnCpyWritten, 2), S, 3}, {TO(StrnCpyWritten, 5), S, 7}, {TO(StrnCpyWritten, 6), S, 8, S},
    {TO(StrnCpyWritten, 4), "ab", 4, "ab"}, {TO(StrnCpyWritten, 3), K, 4, K}, {TO(StrnCpyWritten, 0), S, 0},
    {TO(StrnCpyWritten, 2), "", 2, ""},
};

TEST(IntlStrings, CuttingSNeverLeavesHalfACharacter) { ExpectCalls(kDoubleByte, kCutsOfS); }

// With the double-byte path off both sets count bytes and nothing is replaced.
TEST(IntlStrings, SingleBytePathCountsBytes) {
    const Call calls[] = {
        {OF(IntlStrLen), S, 7}, {TO(IntlStrLeft, 2), S, 2, "a\x88"}, {TO(IntlStrLeftB, 2), S, 2, "a\x88"}, {TO(IntlStrRightB, 9), S, 7, S},
        {TO(IntlStrRight, 2), S, 2, "\x9F" "c"}, {TO(IntlStrMid, 2, 3), S, 3, "\x9F" "b\x88"}, {TO(IntlStrMidB, 7, 1), S, 0, ""},
        {TO(IntlStrMidB, 8, 1), S, 0, ""}, {TO(IntlStrMid, -1, 2), S, 2, "a\x88"}, {TO(IntlStrReplace, kX, -1, 9), S, 1, "X"},
        {TO(IntlStrReplace, kXY, 2, 2), S, 7, "a\x88XY\x88\x9F" "c"}, {TO(IntlStrReplaceB, kXY, 9, 2), S, 9, S "XY"},
        {TO(IntlStrReplaceB, kX, 2, -1), S, 8, "a\x88X\x9F" "b\x88\x9F" "c"},
        {CALL(IntlStrLeft(nullptr, s, 1) + IntlStrRight(nullptr, s, 1) + IntlStrMid(nullptr, s, 0, 1) + IntlStrLeftB(nullptr, s, 1)), S, 0},
        {CALL(IntlStrRightB(nullptr, s, 1) + IntlStrMidB(nullptr, s, 0, 1) + IntlStrReplace(nullptr, s, s, 0, 0)), S, 0},
        {CALL(IntlStrReplaceB(nullptr, s, s, 0, 0) + At(IntlStrnCpy(nullptr, s, 1), s)), S, -1},
    };
    ExpectCalls({kEnglish}, calls);
}

TEST(IntlStrings, TrimmingAndCase) {
    const Call anyPath[] = {
        {TO(IntlStrTrim), "  a  b  ", 3, "a b"}, {TO(IntlStrTrim), "   ", 0, ""}, {TO(IntlStrTrim), " a\r\nb ", 4, "a\r\nb"},
        {TO(IntlStrTrim), "a \r\n b", 6, "a \r\n b"}, {TO(IntlStrTrim), "\ta\f\vb", 3, "a b"}, {TO(TrimTrailing), "a  ", 1, "a"},
        {TO(TrimTrailing), "   ", 1, " "}, {TO(TrimTrailing), "", 0, ""}, {TO(TrimTrailing), "ab c\t", 4, "ab c"},
        {TO(StripEnd), "a\r\n", 0, "a"}, {TO(StripEnd), " \t\r\n", 0, ""}, {TO(StripSpace), " \ta b\n", 0, "a b"},
        {TO(IntlStrProper), "hello wORLD  foo", 16, "Hello World  Foo"}, {TO(IntlStrProper), "\tx\ny", 4, "\tX\nY"},
        {TO(Upper), "abC1", 0, "ABC1"}, {TO(Lower), "abC1", 0, "abc1"}, {CALL(IntlStrProper(dst, nullptr)), "", 0, ""},
        {CALL(At(IntlStripEndSpace(dst, nullptr), dst) + At(IntlStripEndSpace(nullptr, s), s)), "a", -2, kUntouched},
        {CALL(IntlStrTrimTrailing(nullptr) + IntlStrProper(nullptr, s) + IntlStrTrim(nullptr, s) + At(IntlStrUpper(nullptr), s)), "a", -1},
        {CALL(IntlStrTrim(dst, nullptr)), "", 0, ""}, {OF(IntlIsStrEqual, dst), "ab", 0}, {OF(IntlIsStrEqual, nullptr), "", 0},
        {CALL(IntlIsStrEqual(nullptr, nullptr)), "", 1},
        {OF(IntlIsStrEqual, std::strcpy(dst, s)), "ab", 1}, {OF(IntlIsStrnEqual, std::strcpy(dst, "abd"), 2), "abc", 1},
        {OF(IntlIsStrnEqual, std::strcpy(dst, "abd"), 3), "abc", 0}, {CALL(IntlIsStrnEqual(nullptr, s, 0)), "", 0},
    };
    ExpectCalls({kEnglish, kJapanese, kKorean}, anyPath);
    const Call singleByte[] = {
        {TO(TrimTrailing), "a\r\n", 3, "a\r\n"}, {TO(IntlStrTrim), "\x81\x40" "a", 3, "\x81\x40" "a"},
        {TO(IntlStrProper), "\x82\x81 b", 4, "\x82\x81 B"}, {TO(StrnCpyWritten, 2), S, 2}, {TO(StrnCpyWritten, 4), "ab", 4, "ab"},
    };
    ExpectCalls({kEnglish}, singleByte);
    const Call japanese[] = {
        {TO(TrimTrailing), "a\r\n", 1, "a"}, {TO(TrimTrailing), "\x81\x40" K "\x81\x40 ", 2, "\x81\x40" K},
        {TO(IntlStrTrim), "\x81\x40" "a\x81\x40\x81\x40" "b\x81\x40", 3, "a b"}, {TO(StripEnd), "a\x81\x40", 0, "a"},
        // A full-width Latin letter starts a word in upper case; other double-byte characters stay.
        {TO(IntlStrProper), "\x82\x81\x82\x82\x81\x40\x82\x9A " K, 6, "\x82\x60\x82\x82\x81\x40\x82\x79 " K},
        {TO(IntlStrProper), "aB" K "C", 4, "Ab" K "c"}, {TO(Upper), "a\x82" "a", 0, "A\x82" "a"},
    };
    ExpectCalls({kJapanese}, japanese);
    const Call chinese[] = {
        {TO(IntlStrProper), "\x82\x81 b", 3, "\x82\x81 B"}, // not looked up in the Japanese table
        {TO(IntlStrTrim), "\xA1\x40" "a\xA1\x40" "b", 3, "a b"},
    };
    ExpectCalls({kChinese}, chinese);
}

} // namespace
