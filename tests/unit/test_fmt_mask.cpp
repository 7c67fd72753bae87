// Input masks: putting a text in, taking it out, filling a field, and the
// position arithmetic, each against rows worked out from the mask rules.
#include "format/maskint.h"
#include "tests/support/edit_host.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// 'T' FMTMaskText, 'A' FMTMaskApply without skipping (every character is
// data, a literal's own among them), 'U' FMTUnmaskInput.
struct TextRow { char call; const char* text; const char* mask; LONG result; const char* out; };
const TextRow kTextRows[] = {
    {'T', "5551234567", "(999) 999-9999", 1, "(555) 123-4567"}, {'T', "(555) 1234567", "(999) 999-9999", 1, "(555) 123-4567"},
    {'T', "abc12", "AA-99", 1, "AB-12"}, {'T', "ab", "AA-99", 1, "AB-"}, {'T', "a1b2", "AA-99", 1, "AB-2"},
    {'T', "123456789", "99-99", 1, "12-34"}, {'T', "ab", "nN", 1, "aB"}, {'T', "j smith", "!aaaaaaa", 1, "Jsmith"},
    {'T', "hello world", "XX*", 1, "hello world"}, {'T', "abc", "X-*", 1, "a-bc"}, {'T', "a", "X-X-*", 1, "a-"},
    {'T', "", "(999)", 1, "("}, {'T', "", "X-*", 1, ""}, {'T', "a\nb", "XX", 1, "ab"}, {'T', "1a", "nn", 1, "1a"},
    {'T', "x-y", "X-X", 1, "x-y"}, {'T', "x", "X*X", 0, "?"}, {'T', "ab", "^X*", 1, "^ab"}, {'T', "x", "", 0, "?"},
    {'T', "1", "(9)", 1, "(1)"}, {'A', "(555", "(999)", 1, "(555)"}, {'A', "555", "(999)", 1, "(555)"}, {'A', "5-1", "9-9", 1, "5-1"},
    {'U', "(555) 123-4567", "(999) 999-9999", 1, "5551234567"}, {'U', "(555) 123-456", "(999) 999-9999", 1, "555123456"},
    {'U', "(   ) 123-4567", "(999) 999-9999", 1, "   1234567"}, {'U', "(555 123-4567", "(999) 999-9999", 0, ""},
    {'U', "(5a5) 123-4567", "(999) 999-9999", 0, ""}, {'U', "ab-cdefg", "XX-*", 1, "abcdefg"}, {'U', "ab", "XX-*", 1, "ab"},
    {'U', "^x", "^XX", 1, "^x"}, {'U', "a1", "nN", 1, "a1"}, {'U', "a-", "nN", 0, ""}, {'U', "-b", "NN", 0, ""}, {'U', "!?", "Xa", 1, "!?"},
    {'U', "abc", "XX", 0, ""}, {'U', "ab", "XX", 1, "ab"}, {'U', "", "99", 1, ""}, {'U', "x", "", 0, ""}, {'U', "x", "^", 0, ""},
    {'U', "1-", "9-9", 1, "1"}, {'U', "-x", "*", 1, "-x"}, {'U', "x", nullptr, 0, ""},
};

TEST(FmtMask, PutInAndTakenOut) {
    for (const TextRow& r : kTextRows) {
        char out[64] = "?";
        LONG got = r.call == 'U' ? Unmask(r.text, r.mask, out) : r.call == 'T' ? FMTMaskText(r.text, out, r.mask) : FMTMaskApply(r.text, out, r.mask, false);
        EXPECT_EQ(std::make_pair(got, std::string(out)), std::make_pair(r.result, std::string(r.out)))
            << (r.call == 'U' ? "FMTUnmaskInput" : r.call == 'T' ? "FMTMaskText" : "FMTMaskApply, no skipping") << "(\"" << r.text << "\", \"" << (r.mask ? r.mask : "(null)") << "\")";
    }
    char same[16] = "5551234";
    EXPECT_EQ(FMTMaskText(same, same, "999-9999"), 1);
    EXPECT_STREQ(same, "555-1234") << "text and output the same buffer";
    EXPECT_EQ(FMTMaskText(nullptr, same, "X") + FMTMaskText("x", nullptr, "X") + FMTMaskText("x", same, nullptr), 0) << "FMTMaskText with a null";
}

// FMTMaskFill, and FMTMaskedLength of the same text: the literals and the
// text (a "^" there is a literal).
TEST(FmtMask, FillMakesAFieldOfItsWidth) {
    const struct { const char* text; const char* mask; WORD width; const char* out; WORD length; } rows[] = {
        {"555", "(999) 999-9999", 14, "(555)    -", 7}, {"ab", "AA-99", 5, "AB-", 3}, {"abcdef", "XX-*", 7, "ab-cdef", 7}, {"", "(999)", 5, "", 2},
        {"1", "9-9-9", 3, "1-", 3}, {"1", "(9)", 2, "(1", 3}, {"a", "X-X-*", 5, "a-", 3}, {"abcd", "X-*", 5, "a-bcd", 5}, {"ab", "^X*", 3, "^ab", 3},
    };
    for (const auto& r : rows) {
        char out[64] = "?";
        FMTMaskFill(r.mask, r.width, out, r.text);
        EXPECT_STREQ(out, r.out) << "FMTMaskFill(\"" << r.mask << "\", " << r.width << ", \"" << r.text << "\")";
        EXPECT_EQ(FMTMaskedLength(r.mask, r.text), r.length) << "FMTMaskedLength(\"" << r.mask << "\", \"" << r.text << "\")";
    }
}

TEST(FmtMask, ValidityMarksAndCounts) {
    const struct { const char* mask; LONG valid, marks, placeholders, others; } rows[] = {
        {"(999) 999-9999", 1, 0, 10, 4}, {"XX*", 1, 2, 3, 0}, {"*", 1, 2, 1, 0}, {"", 0, 0, 0, 0}, {"---", 0, 0, 0, 3}, {"X*X", 0, 0, 3, 0},
        {"**", 0, 2, 2, 0}, {"*X", 0, 0, 2, 0}, {"^(999)", 1, 1, 3, 2}, {"x!aAnN9", 1, 0, 6, 1}, {"^X*", 1, 3, 2, 0},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(FMTIsValidMaskFormat(r.mask), r.valid) << "FMTIsValidMaskFormat(\"" << r.mask << "\")";
        EXPECT_EQ(FMTIsPicUnlimited(r.mask) * 2 + FMTIsPicNoUnmaskOnGets(r.mask), r.marks) << "marks of \"" << r.mask << "\"";
        EXPECT_EQ(FMTCntMaskChars(r.mask), r.placeholders) << "FMTCntMaskChars(\"" << r.mask << "\")";
        EXPECT_EQ(FMTCntNonMaskChars(r.mask), r.others) << "FMTCntNonMaskChars(\"" << r.mask << "\")";
    }
    EXPECT_EQ(FMTIsValidMaskFormat(nullptr) + FMTCntMaskChars(nullptr) + FMTCntNonMaskChars(nullptr) +
                  FMTIsPicNoUnmaskOnGets(nullptr) + FMTIsPicUnlimited(nullptr), 0) << "null masks";
}

TEST(FmtMask, PositionsOfTheMaskedText) {
    const struct { const char* mask; WORD pos; WORD index; int literal, placeholder; } rows[] = {
        {"(999) 999-9999", 0, 0, 0, 1}, {"(999) 999-9999", 1, 0, 4, 1}, {"(999) 999-9999", 3, 2, 4, 3}, {"(999) 999-9999", 6, 3, 9, 6},
        {"(999) 999-9999", 13, 9, -1, 13}, {"(999) 999-9999", 14, 9, -1, -1}, {"XX*", 3, 3, -1, -1}, {"XX*", 5, 5, -1, -1}, {"X-*", 4, 3, -1, -1},
        {"X-*", 1, 0, 1, 2}, {"9-", 2, 0, -1, -1},
    };
    for (const auto& r : rows) {
        WORD at = 99;
        EXPECT_EQ(FMTMaskIndexOfPos(r.mask, r.pos), r.index) << "FMTMaskIndexOfPos(\"" << r.mask << "\", " << r.pos << ")";
        EXPECT_EQ(FMTNextLiteralPos(r.mask, r.pos, &at) ? at : -1, r.literal) << "FMTNextLiteralPos(\"" << r.mask << "\", " << r.pos << ")";
        EXPECT_EQ(FMTNextMaskPos(r.mask, r.pos, &at) ? at : -1, r.placeholder) << "FMTNextMaskPos(\"" << r.mask << "\", " << r.pos << ")";
    }
}

TEST(FmtMask, CharactersOfThePlaceholders) {
    // typed, then what each of X ! a A n N 9 * and a literal stores ('-' for a refusal)
    const struct { char typed; const char* stored; } rows[] = {
        {'b', "bBbBbB-b("}, {'7', "77--7777("}, {'\n', "-------\n("}, {' ', "  ----- ("}, {'Z', "ZZZZZZ-Z("},
    };
    const char* kinds = "X!aAnN9*(";
    for (const auto& r : rows) {
        for (int i = 0; kinds[i]; ++i) {
            char ch = r.typed;
            bool ok = FMTMaskCharAccept(kinds[i], &ch);
            EXPECT_EQ(ok ? ch : '-', r.stored[i]) << "FMTMaskCharAccept('" << kinds[i] << "', " << int(r.typed) << ")";
        }
    }
    EXPECT_FALSE(FMTIsMaskChar('x') || FMTIsMaskChar('\0')) << "FMTIsMaskChar of a literal and of the end";
    char blanks[] = "a b  ";
    FMTTrimBlanks(blanks);
    EXPECT_STREQ(blanks, "a b");
}

} // namespace
