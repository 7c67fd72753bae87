// Number pictures: tokenising, untokenising, the old form, validity, and a
// picture stored under one user's settings and read under another's.
#include "test_fmt_num_env.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Translate = LONG(OXLAPI*)(FMTCNTLBLOCK*);

std::string Translated(Translate f, const Settings& s, const std::string& picture) {
    char out[256];
    std::memset(out, 'Z', sizeof out);
    FMTCNTLBLOCK b = BlockOf(s, picture.c_str(), out);
    EXPECT_EQ(f(&b), 1) << "result for " << Hex(picture) << " under " << s.name;
    return out;
}

std::string Bytes(std::initializer_list<int> bytes) {
    std::string s;
    for (int b : bytes) s += char(b);
    return s;
}

struct TokenRow { const char* user; const Settings* under; std::string tokens; };
const TokenRow kTokenRows[] = {
    {"#,##0.00", &kA, Bytes({0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10})},
    {"$#,##0.00;($#,##0.00)", &kA, Bytes({0x03, 0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x3B, 0x05,
                                          0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x06})},
    {"#,##0.00_);(#,##0.00)", &kA, Bytes({0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x0E, 0x06, 0x3B,
                                          0x28, 0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x29})},
    {"#,##0;-#,##0;\"zero\"", &kA, Bytes({0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x10, 0x3B, 0x2D, 0x0F, 0x23, 0x01, 0x23,
                                          0x23, 0x30, 0x10, 0x3B, 0x22, 0x7A, 0x65, 0x72, 0x6F, 0x22})},
    {"0%", &kA, Bytes({0x0F, 0x30, 0x10, 0x25})},
    {"#.##0,00 DM;-#.##0,00 DM", &kB, Bytes({0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x04, 0x3B,
                                             0x05, 0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x02, 0x30, 0x30, 0x10, 0x06})},
    {"0.00E+00", &kA, "0.00E+00"},
    {"#.", &kA, Bytes({0x0F, 0x23, 0x02, 0x10})},
    {"", &kA, ""},
    {"$", &kB, "$"},
    // a thousands character with no placeholder behind it ends the run and stays text
    {"#, ", &kA, Bytes({0x0F, 0x23, 0x10, 0x2C, 0x20})},
    // quoted text keeps its bytes, escapes included, and a form inside it is no form
    {"#' $''x'", &kA, Bytes({0x0F, 0x23, 0x10, 0x27, 0x20, 0x24, 0x27, 0x27, 0x78, 0x27})},
    {"#\"a\\\"$", &kA, Bytes({0x0F, 0x23, 0x10, 0x22, 0x61, 0x5C, 0x22, 0x24})},
    // a pad: the negative suffix in section 0, the positive one in section 1
    {"#_ DM;#_ DM", &kB, Bytes({0x0F, 0x23, 0x10, 0x0E, 0x06, 0x3B, 0x0F, 0x23, 0x10, 0x0E, 0x04})},
    {"#_)_", &kA, Bytes({0x0F, 0x23, 0x10, 0x0E, 0x06, 0x0E})},
    {"#_x", &kA, Bytes({0x0F, 0x23, 0x10, 0x0E, 0x78})},
    // section 2 takes the positive forms, then the negative ones
    {";;$#)", &kA, Bytes({0x3B, 0x3B, 0x03, 0x0F, 0x23, 0x10, 0x06})},
};

TEST(FmtNumPic, TokenizeGivesTheStoredBytes) {
    for (const TokenRow& r : kTokenRows)
        EXPECT_EQ(Hex(Translated(FMTTokenizeNumberPic, *r.under, r.user)), Hex(r.tokens))
            << "FMTTokenizeNumberPic(\"" << r.user << "\") under " << r.under->name;
}

TEST(FmtNumPic, UntokenizeUnderTheSameSettingsGivesThePictureBack) {
    for (const TokenRow& r : kTokenRows) {
        // a pad may be dropped; a negative form in section 2 comes back ahead of the run as well
        if (std::string(r.user).find('_') != std::string::npos || r.user[0] == ';') continue;
        EXPECT_EQ(Translated(FMTUnTokenizeNumberPic, *r.under, r.tokens), r.user)
            << "FMTUnTokenizeNumberPic(" << Hex(r.tokens) << ") under " << r.under->name;
    }
}

TEST(FmtNumPic, UntokenizeUnderOtherSettings) {
    const struct { std::string tokens; const Settings* under; const char* user; } rows[] = {
        {kTokenRows[1].tokens, &kB, "#.##0,00 DM;-#.##0,00 DM"},
        {kTokenRows[5].tokens, &kA, "$#,##0.00;($#,##0.00)"},
        {kTokenRows[2].tokens, &kB, "#.##0,00;(#.##0,00)"},
        {kTokenRows[2].tokens, &kA, "#,##0.00_);(#,##0.00)"},
        {Bytes({0x0F, 0x23, 0x10, 0x0E, 0x04}), &kB, "#"},
        {Bytes({0x0F, 0x23, 0x10, 0x0E, 0x04}), &kA, "#"},
        {Bytes({0x0F, 0x23, 0x10, 0x0E, 0x78}), &kA, "#_x"},
        {Bytes({0x0F, 0x23, 0x10, 0x0E}), &kA, "#_"},
        {Bytes({0x3B, 0x3B, 0x03, 0x0F, 0x23, 0x10, 0x06}), &kA, ";;$($#)"},
        // a section without a currency token shows none
        {Bytes({0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x10, 0x3B, 0x2D, 0x0F, 0x23, 0x10}), &kB, "#.##0;-#"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(Translated(FMTUnTokenizeNumberPic, *r.under, r.tokens), r.user)
            << "FMTUnTokenizeNumberPic(" << Hex(r.tokens) << ") under " << r.under->name;
}

TEST(FmtNumPic, ALoneMinusFormIsAPlainMinus) {
    const Settings minus5 = {"iNegCurr 5", "$", 0, 5, ',', '.'};
    const struct { const char* user; std::string tokens; } rows[] = {
        {"$#,##0;-#,##0$", Bytes({0x03, 0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x10, 0x3B, 0x05, 0x0F, 0x23, 0x01, 0x23,
                                  0x23, 0x30, 0x10, 0x06})},
        {"$#,##0;-#,##0", Bytes({0x03, 0x0F, 0x23, 0x01, 0x23, 0x23, 0x30, 0x10, 0x3B, 0x2D, 0x0F, 0x23, 0x01, 0x23,
                                 0x23, 0x30, 0x10})},
        {"#;#$", Bytes({0x0F, 0x23, 0x10, 0x3B, 0x0F, 0x23, 0x10, 0x06})},
    };
    for (const auto& r : rows)
        EXPECT_EQ(Hex(Translated(FMTTokenizeNumberPic, minus5, r.user)), Hex(r.tokens)) << "FMTTokenizeNumberPic(\"" << r.user << "\")";
}

TEST(FmtNumPic, OldFormConversion) {
    const struct { const char* old; const Settings* under; const char* user; } rows[] = {
        {"#,##0.00 units", &kA, "#,##0.00 'units'"},
        {"(#,##0);#", &kA, "'('#,##0')';#"},
        {"#,##0 DM", &kB, "#.##0 DM"},
        {"$#,##0.00;($#,##0.00)", &kB, "'$'#.##0,00;'($'#.##0,00')'"},
        {"$#,##0.00;($#,##0.00)", &kA, "$#,##0.00;($#,##0.00)"},
        {"0%x", &kA, "0%'x'"},
        {"#\"a;b\"_)", &kA, "#\"a;b\"_)"},
        {"ab cd;#", &kA, "'ab cd';#"},
        {"ab #", &kA, "'ab' #"},
        {"#x$", &kA, "#'x$'"},
        {"#x DM", &kB, "#'x' DM"},
        {"0.00E+00", &kB, "0.00E+00"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(Translated(FMTCnvOldNumberPic, *r.under, r.old), r.user) << "FMTCnvOldNumberPic(\"" << r.old << "\") under " << r.under->name;
}

TEST(FmtNumPic, NullPictureGivesZeroAndAnEmptyOutput) {
    for (Translate f : {FMTTokenizeNumberPic, FMTUnTokenizeNumberPic, FMTCnvOldNumberPic}) {
        char out[8] = "Z";
        FMTCNTLBLOCK b = BlockOf(kA, nullptr, out);
        EXPECT_EQ(f(&b), 0) << "a translation of a null picture";
        EXPECT_STREQ(out, "") << "output of a translation of a null picture";
    }
    EXPECT_EQ(FMTIsNumberPicTokenized(nullptr), 0);
    EXPECT_EQ(FMTIsNumberPicTokenized("#\x0F"), 1);
    EXPECT_EQ(FMTIsNumberPicTokenized("#\x10"), 0);
}

struct ValidRow { const char* picture; int valid; };

void CheckValid(const Settings& s, std::initializer_list<ValidRow> rows) {
    for (const ValidRow& r : rows) {
        char out[8] = "keep";
        FMTCNTLBLOCK b = BlockOf(s, r.picture, out);
        EXPECT_EQ(FMTIsNumberPicValid(&b), r.valid) << "FMTIsNumberPicValid(\"" << r.picture << "\") under " << s.name;
        EXPECT_STREQ(out, "keep") << "output after FMTIsNumberPicValid(\"" << r.picture << "\")";
    }
}

TEST(FmtNumPic, ValidityUnderA) {
    CheckValid(kA, {{"#,##0.00", 1}, {"#0", 1}, {"#%", 1}, {"# ", 1}, {"#_)", 1}, {"#.00;", 1},
                    {"#,##0.00;(#,##0.00)", 1}, {"$#,##0.00;($#,##0.00)", 1}, {"0.00E+00", 1}, {"0.00e-00", 1},
                    {"", 1}, {"$", 1}, {"'0'#", 1}, {"#' x'", 1}, {"#\"a\"\"b\"", 1}, {"0.0#", 1}, {"#,##0", 1},
                    {"#.", 1}, {";(#)", 1}, {"#;-#", 1}, {"#;;\"z\"", 1}, {"##,##0", 1}, {"0.###E-0#", 1},
                    {"0#", 0}, {"0.#0", 0}, {"#,#.00", 0}, {"#,##,##0", 0}, {"#.#.#", 0}, {"# #", 0}, {"a#", 0},
                    {"%#", 0}, {"-#", 0}, {"#,", 0}, {"#_) ", 0}, {"#;#;#;#", 0}, {"#,##0.00;(#,##0.00", 0},
                    {"$#,##0.00;-$#,##0.00", 0}, {"$#,##0;-#,##0", 0}, {"0.00E+", 0}, {"0.E+00", 0},
                    {"0.#0E+00", 0}, {"0.00E+#0", 0}, {"0.00E+00 kg", 0}, {"0.00X+00", 0}, {"#'x", 0},
                    {"#;#)", 1}, {"#;(#))", 0}, {"#;((#)", 0}, {"#;-(#)", 0}, {"#;(-#)", 0}, {"#;--#", 0},
                    {"#;#-", 1}, {"#;(#)-", 0}, {"$$#", 1}, {"#;;($#)", 1}, {"#,###.0", 1}, {"#,####.0", 0}, {"#,##0.0#0", 0}});
}

TEST(FmtNumPic, ValidityUnderB) {
    CheckValid(kB, {{"#,", 1}, {"#,##0.00", 0}, {"#.##0,00 DM;-#.##0,00 DM", 1}, {"#.##0,00 DM;(#)", 0}});
    const Settings blankThousand = {"thousands blank", "$", 0, 0, ' ', ','};
    CheckValid(blankThousand, {{"# ##0 'kg'", 1}, {"# ", 1}, {"# ##", 1}});
    const Settings quoteThousand = {"thousands quote", "$", 0, 4, '\'', '.'};
    CheckValid(quoteThousand, {{"#'##0.00", 1}, {"#'x'", 1}, {"#;(#SFr)", 0}, {"#;(#$)", 1}});
}

TEST(FmtNumPic, TokenizedPicturesAreJudgedInTheirUserForm) {
    CheckValid(kA, {{"\x0F#\x01##0\x02" "00\x10", 1}, {"\x0F#\x02#0\x10", 0}});
    CheckValid(kB, {{"\x0F#\x01##0\x02" "00\x10\x04", 1}});
}

// ---- stored under one user's settings, read under another's -----------------

std::string UnderProfile(Translate f, const std::string& picture) {
    char out[256];
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.bUseProfile = 1;
    b.lpszPicture = const_cast<char*>(picture.c_str());
    b.lpszOutput = out;
    EXPECT_EQ(f(&b), 1);
    return out;
}

TEST(FmtNumPic, StoredUnderOneLocaleReadUnderAnother) {
    const struct { const Locale* stored; const char* typed; const Locale* read; const char* shown; } rows[] = {
        {&kUS, "$#,##0.00;($#,##0.00)", &kGerman, "#.##0,00 DM;-#.##0,00 DM"},
        {&kUS, "$#,##0.00;($#,##0.00)", &kFrench, "# ##0,00 F;-# ##0,00 F"},
        {&kUS, "$#,##0.00;($#,##0.00)", &kSwiss, "SFr. #'##0.00;SFr.-#'##0.00"},
        {&kUS, "$#,##0.00;($#,##0.00)", &kJapan, "\\#,##0.00;-\\#,##0.00"},
        {&kGerman, "#.##0,00 DM;-#.##0,00 DM", &kUS, "$#,##0.00;($#,##0.00)"},
        {&kGerman, "#.##0,00 DM;-#.##0,00 DM", &kSwiss, "SFr. #'##0.00;SFr.-#'##0.00"},
        {&kFrench, "# ##0,00 F", &kGerman, "#.##0,00 DM"},
        {&kSwiss, "SFr. #'##0.00;SFr.-#'##0.00", &kFrench, "# ##0,00 F;-# ##0,00 F"},
        {&kJapan, "\\#,##0;-\\#,##0", &kUS, "$#,##0;($#,##0)"},
        {&kUS, "#,##0.00 'kg'", &kFrench, "# ##0,00 'kg'"},
    };
    for (const auto& r : rows) {
        std::string stored;
        {
            LocaleUnder l(*r.stored);
            stored = UnderProfile(FMTTokenizeNumberPic, r.typed);
        }
        LocaleUnder l(*r.read);
        EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), r.shown)
            << "\"" << r.typed << "\" stored under " << r.stored->name << " as " << Hex(stored) << ", read under "
            << r.read->name;
    }
}

TEST(FmtNumPic, AThreadKeepsItsCurrencyFormsWhenTheProfileChanges) {
    std::string stored = "\x03\x0F#\x10";
    LocaleUnder us(kUS);
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "$#");
    ScriptedProfile german(kGerman.intl);
    FMTWinIniChanged();
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "$#") << "forms of the thread's first use";
    LocaleUnder::Fresh();
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "# DM") << "forms built again after the record went";
}

TEST(FmtNumPic, CurrencyFormsOfEveryPosition) {
    const struct { LONG iCurrency, iNegCurr; const char* forms; } rows[] = {
        {0, 0, "$||($|)"},  {1, 1, "|$|-$|"},   {2, 2, "$ ||$-|"},  {3, 3, "| $|$|-"},  {0, 4, "$||(|$)"},
        {0, 5, "$||-|$"},   {0, 6, "$|||-$"},   {0, 7, "$|||$-"},   {0, 8, "$||-| $"},  {0, 9, "$||-$ |"},
        {0, 10, "$||| $-"}, {4, 11, "|||"},     {-1, -1, "|||"},
    };
    for (const auto& r : rows) {
        char pp[10], ps[10], np[10], ns[10];
        FMTBuildCurrencyForms(r.iCurrency, r.iNegCurr, pp, ps, np, ns, "$");
        EXPECT_EQ(std::string(pp) + "|" + ps + "|" + np + "|" + ns, r.forms)
            << "FMTBuildCurrencyForms(" << r.iCurrency << ", " << r.iNegCurr << ")";
    }
    char pp[10], ps[10], np[10], ns[10];
    FMTBuildCurrencyForms(0, 9, pp, ps, np, ns, "ABCDEFGHIJ");
    EXPECT_STREQ(np, "-ABCDEFG ") << "a symbol is cut to 7 bytes";
}

} // namespace
