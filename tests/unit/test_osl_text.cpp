// The code page behind the text service: lead bytes and stepping of the
// double-byte pages, as the backend in force gives them (Wine's own functions
// under Wine, os/codepage.cpp natively), and case changes that leave
// double-byte characters alone.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

TEST(OslText, CharNextExAndPrevExStepByTheLeadBytesOfThePage) {
    const struct { WORD page; const char* text; int step; } rows[] = {
        {932, "\x81\x40", 2}, {932, "\x9F\x40", 2}, {932, "\xE0\x40", 2}, {932, "\xFC\x40", 2}, {932, "\xA0\x40", 1}, {932, "\xDF\x40", 1},
        {932, "\x80\x40", 1}, {932, "\xFD\x40", 1}, {932, "\x88", 1}, {932, "a\x9F", 1}, {932, "", 0}, {936, "\x81\x40", 2},
        {936, "\xFE\x40", 2}, {936, "\x80\x40", 1}, {936, "\xFF\x40", 1}, {949, "\xB0\xA1", 2}, {950, "\xA4\x40", 2}, {950, "\x7F\x40", 1},
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
        {932, "ab\x82" "a\xA1z", "AB\x82" "a\xA1Z", "ab\x82" "a\xA1z"},
        {936, "\xA3" "a" "Q", "\xA3" "aQ", "\xA3" "aq"},
        {1252, "`az{@AZ[\xBF\xC0\xD7\xDE\xDF\xE0\xF7\xFE", "`AZ{@AZ[\xBF\xC0\xD7\xDE\xDF\xC0\xF7\xDE", "`az{@az[\xBF\xE0\xD7\xFE\xDF\xE0\xF7\xFE"},
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

} // namespace
