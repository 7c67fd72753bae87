// The code page behind the text service: lead bytes and stepping of the
// double-byte pages, as the backend in force gives them (Wine's own functions
// under Wine, os/codepage.cpp natively), and case changes that leave
// double-byte characters alone.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

TEST(OslText, CharNextExStepsByTheLeadBytesOfThePage) {
    const struct {
        WORD page;
        const char* text;
        int step;
    } cases[] = {
        {932, "\x88\x9F", 2}, {932, "\xE0\x40", 2}, {932, "\xFC\x40", 2}, {932, "\xA1\x40", 1},
        {932, "\xDF\x40", 1}, {932, "\x80\x40", 1}, {932, "\xFD\x40", 1}, {932, "\x88", 1},
        {932, "a\x9F", 1},    {932, "", 0},         {936, "\xA1\xA1", 2}, {936, "\xFE\x40", 2},
        {936, "\x80\x40", 1}, {936, "\xC4", 1},     {949, "\xB0\xA1", 2}, {949, "\xA1\xA1", 2},
        {949, "\x41\xA1", 1}, {950, "\xA4\x40", 2}, {950, "\xF9\xD5", 2}, {950, "\x7F\x40", 1},
    };
    for (const auto& c : cases) {
        const char* next = gOsl.text->CharNextExA(c.page, c.text, 0);
        EXPECT_EQ(next - c.text, c.step) << "CharNextExA(" << c.page << ", " << Hex(c.text) << ")";
    }
}

TEST(OslText, CharPrevExFindsTheStartOfTheCharacterBefore) {
    const char s[] = "a\x88\x9F" "b";
    EXPECT_EQ(gOsl.text->CharPrevExA(932, s, s + 3, 0), s + 1) << "before b: the lead byte of 88 9F";
    EXPECT_EQ(gOsl.text->CharPrevExA(932, s, s + 1, 0), s) << "before 88 9F: a";
    EXPECT_EQ(gOsl.text->CharPrevExA(932, s, s, 0), s) << "at the start";
}

TEST(OslText, ScriptedPageStepsAndChangesCaseOfSingleBytesOnly) {
    const struct {
        UINT page;
        const char* text;
        const char* upper;
        const char* lower;
    } cases[] = {
        {932, "ab\x82" "a\xA1z", "AB\x82" "a\xA1Z", "ab\x82" "a\xA1z"},
        {936, "\xA3" "a" "Q", "\xA3" "aQ", "\xA3" "aq"},
        {1252, "a\xE0Z\xC0", "A\xC0Z\xC0", "a\xE0z\xE0"},
        {1255, "a\xE0", "A\xE0", "a\xE0"},
    };
    for (const auto& c : cases) {
        ScriptedText page(c.page);
        std::string up = c.text, low = c.text;
        gOsl.text->CharUpperA(up.data());
        gOsl.text->CharLowerA(low.data());
        EXPECT_EQ(Hex(up), Hex(c.upper)) << "CharUpperA(" << Hex(c.text) << ") under " << c.page;
        EXPECT_EQ(Hex(low), Hex(c.lower)) << "CharLowerA(" << Hex(c.text) << ") under " << c.page;
        EXPECT_EQ(gOsl.text->GetACP(), c.page);
        EXPECT_EQ(gOsl.text->IsDBCSLeadByte(0x88), c.page == 932 || c.page == 936) << "IsDBCSLeadByte(88) under " << c.page;
    }
}

} // namespace
