// The code page behind the text service: lead bytes and stepping of the
// double-byte pages, as the backend in force gives them (Wine's own functions
// under Wine, os/codepage.cpp natively), and case changes that leave
// double-byte characters alone.
#include "intl_env.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

TEST(OslText, CharNextExAndPrevExStepByTheLeadBytesOfThePage) {
    const struct { WORD page; const char* text; int step; } rows[] = {
        {932, "\x81\x40", 2}, {932, "\x9F\x40", 2}, {932, "\xE0\x40", 2}, {932, "\xFC\x40", 2}, {932, "\xA0\x40", 1}, {932, "\x80\x40", 1},
        {932, "\xFD\x40", 1}, {932, "\x88", 1}, {932, "a\x9F", 1}, {932, "", 0}, {936, "\x81\x40", 2}, {936, "\xFE\x40", 2},
        {936, "\xFF\x40", 1}, {949, "\xB0\xA1", 2}, {950, "\xA4\x40", 2}, {950, "\x80\x40", 1},
    };
    for (const auto& r : rows)
        EXPECT_EQ(gOsl.text->CharNextExA(r.page, r.text, 0) - r.text, r.step) << "CharNextExA(" << r.page << ", " << Hex(r.text) << ")";
    const char s[] = "a\x88\x9F" "b";
    for (int at : {0, 1, 3, 4}) // before b is the lead byte of 88 9F, before it a, and the start stays
        EXPECT_EQ(gOsl.text->CharPrevExA(932, s, s + at, 0) - s, at == 4 ? 3 : at == 3 ? 1 : 0) << "CharPrevExA(932, S, S + " << at << ")";
}

// On 1252 the accented letters change case too, but not the multiplication and
// division signs nor sharp s; other pages change ASCII letters only.
TEST(OslText, ScriptedPageChangesCaseOfSingleBytesOnly) {
    const struct { UINT page; const char* text; const char* upper; const char* lower; } rows[] = {
        {932, "ab\x82" "a\xA1z", "AB\x82" "a\xA1Z", "ab\x82" "a\xA1z"}, {936, "\xA3" "a" "Q", "\xA3" "aQ", "\xA3" "aq"},
        {1252, "`az{@AZ[\xBF\xC0\xD7\xDE\xDF\xE0\xF7\xFE", "`AZ{@AZ[\xBF\xC0\xD7\xDE\xDF\xC0\xF7\xDE",
         "`az{@az[\xBF\xE0\xD7\xFE\xDF\xE0\xF7\xFE"},
        {1255, "a\xE0\xC0", "A\xE0\xC0", "a\xE0\xC0"},
    };
    for (const auto& r : rows) {
        ScriptedText page(r.page);
        std::string up = r.text, low = r.text, part = r.text;
        gOsl.text->CharUpperBuffA(part.data(), 1), gOsl.text->CharUpperA(up.data()), gOsl.text->CharLowerA(low.data());
        EXPECT_EQ(Hex(up), Hex(r.upper)) << "CharUpperA(" << Hex(r.text) << ") under " << r.page;
        EXPECT_EQ(Hex(low), Hex(r.lower)) << "CharLowerA(" << Hex(r.text) << ") under " << r.page;
        EXPECT_EQ(Hex(part), Hex(r.upper[0] + std::string(r.text + 1))) << "CharUpperBuffA(" << Hex(r.text) << ", 1) under " << r.page;
        EXPECT_EQ(gOsl.text->GetACP(), r.page);
        EXPECT_EQ(gOsl.text->IsDBCSLeadByte(0x88), r.page == 932 || r.page == 936) << "IsDBCSLeadByte(88) under " << r.page;
    }
}

// The string family on the system's own code page and language, with no
// scripted service: the suite runs once as the machine is set up and once
// more under a Japanese locale (tests/CMakeLists.txt), where the platform's
// CharNextA walks Shift-JIS.
TEST(IntlSystem, StringsFollowTheSystemCodePage) {
    UINT acp = gOsl.text->GetACP();
    bool db = acp == 932 || acp == 936 || acp == 949 || acp == 950;
    LANGID primary = gOsl.system->GetSystemDefaultLangID() & 0x3FF; // a double-byte page goes with a double-byte language
    ASSERT_EQ(db, primary == 0x04 || primary == 0x11 || primary == 0x12) << "code page " << acp << ", language 0x" << std::hex << primary;
    char s[] = INTL_S, tail[] = "a\x88", dst[16], full[16];
    EXPECT_EQ(IntlDBCSEnabled(), int(db)) << "IntlDBCSEnabled under code page " << acp;
    EXPECT_EQ(IntlStrLen(s), db ? 5 : 7) << "IntlStrLen(S) under code page " << acp;
    EXPECT_EQ(Hex((IntlStrLeftB(dst, s, 2), dst)), Hex(db ? "a " : "a\x88")) << "IntlStrLeftB(S, 2) under code page " << acp;
    EXPECT_EQ(Hex((IntlStrRightB(dst, s, 5), dst)), Hex(db ? " b\x88\x9F" "c" : "\x9F" "b\x88\x9F" "c")) << "IntlStrRightB(S, 5)";
    EXPECT_EQ(IntlIsNthByteDB(s, 2), db ? 2 : 0) << "IntlIsNthByteDB(S, 2) under code page " << acp;
    EXPECT_EQ(IntlStrScan(s, const_cast<char*>("b")), db ? 2 : 3) << "IntlStrScan(S, b) under code page " << acp;
    EXPECT_EQ(IntlStrLen(tail), 2) << "a trailing lead byte is one character, code page " << acp;
    // Letters of the page: not digits, and on 1252 sharp s but not the multiplication sign.
    EXPECT_TRUE(gOsl.text->IsCharAlphaA('a') && !gOsl.text->IsCharAlphaA('1') && gOsl.text->IsCharAlphaNumericA('0')) << acp;
    EXPECT_TRUE(acp != 1252 || (gOsl.text->IsCharAlphaA(char(0xDF)) && !gOsl.text->IsCharAlphaA(char(0xD7)))) << "IsCharAlphaA(DF, D7)";
    const char* lc = std::getenv("LC_ALL"); // the second run's Japanese locale is a Japanese system
    EXPECT_TRUE(!lc || std::strncmp(lc, "ja", 2) || (acp == 932 && primary == 0x11)) << "LC_ALL=" << lc << ": " << acp;
    char kana[] = "\xB6\xDE"; // under a Japanese system, the voiced ka
    EXPECT_EQ(acp == 932 ? (IntlStrJapanFull(full, kana), Hex(full)) : "83 4B", "83 4B") << "IntlStrJapanFull(B6 DE) under code page 932";
}

} // namespace
