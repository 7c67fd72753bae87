// Number pictures: tokenising, untokenising, the old form, validity, and a
// picture stored under one user's settings and read under another's.
#include "test_fmt_num_env.h"

#include <gtest/gtest.h>

namespace {

using Translate = LONG(OXLAPI*)(FMTCNTLBLOCK*);

std::string Translated(Translate f, const Settings& s, const std::string& picture) {
    char out[256] = "Z";
    FMTCNTLBLOCK b = BlockOf(s, picture.c_str(), out);
    EXPECT_EQ(f(&b), 1) << "result for " << Hex(picture) << " under " << s.name;
    return out;
}

// Tokenised forms as Hex() writes them; "=" for a picture copied unchanged.
struct TokenRow { const char* user; const Settings* under; const char* tokens; };
const TokenRow kTokenRows[] = {
    {"#,##0.00", &kA, "0F 23 01 23 23 30 02 30 30 10"},
    {"$#,##0.00;($#,##0.00)", &kA, "03 0F 23 01 23 23 30 02 30 30 10 3B 05 0F 23 01 23 23 30 02 30 30 10 06"},
    {"#,##0.00_);(#,##0.00)", &kA, "0F 23 01 23 23 30 02 30 30 10 0E 06 3B 28 0F 23 01 23 23 30 02 30 30 10 29"},
    {"#,##0;-#,##0;\"zero\"", &kA, "0F 23 01 23 23 30 10 3B 2D 0F 23 01 23 23 30 10 3B 22 7A 65 72 6F 22"},
    {"#.##0,00 DM;-#.##0,00 DM", &kB, "0F 23 01 23 23 30 02 30 30 10 04 3B 05 0F 23 01 23 23 30 02 30 30 10 06"},
    {"0%", &kA, "0F 30 10 25"}, {"0.00E+00", &kA, "="}, {"#.", &kA, "0F 23 02 10"}, {"", &kA, "="}, {"$", &kB, "="},
    {"#, ", &kA, "0F 23 10 2C 20"},                          // a thousands character ending the run stays text
    {"#' $''x'", &kA, "0F 23 10 27 20 24 27 27 78 27"},      // quoted text keeps its bytes, no form inside
    {"#\"a\\\"$", &kA, "0F 23 10 22 61 5C 22 24"},           // an escaped quote does not close
    {"#_ DM;#_ DM", &kB, "0F 23 10 0E 06 3B 0F 23 10 0E 04"}, // a pad: negative suffix first in section 0
    {"#_)_", &kA, "0F 23 10 0E 06 0E"}, {"#_x", &kA, "0F 23 10 0E 78"},
    {";;$#)", &kA, "3B 3B 03 0F 23 10 06"}, // section 2 takes the positive forms, then the negative ones
};

// Each row tokenised, and its tokens untokenised under the same settings give
// the picture back (a pad may go, and section 2 is read in another order: see below).
TEST(FmtNumPic, TokenizeGivesTheStoredBytesAndUntokenizeThePicture) {
    for (const TokenRow& r : kTokenRows) {
        std::string user = r.user, tokens = *r.tokens == '=' ? user : FromHex(r.tokens);
        EXPECT_EQ(Hex(Translated(FMTTokenizeNumberPic, *r.under, user)), Hex(tokens)) << "FMTTokenizeNumberPic(\"" << user << "\") under " << r.under->name;
        if (user.find('_') == std::string::npos && user[0] != ';') {
            EXPECT_EQ(Translated(FMTUnTokenizeNumberPic, *r.under, tokens), user) << "FMTUnTokenizeNumberPic(" << r.tokens << ")";
        }
    }
}

TEST(FmtNumPic, TranslationsUnderOtherSettings) {
    const Settings minus5 = {"iNegCurr 5", "$", 0, 5, ',', '.'};
    const struct { Translate f; const Settings* under; const char* in; const char* out; } rows[] = { // tokens as hex
        {FMTUnTokenizeNumberPic, &kB, kTokenRows[1].tokens, "#.##0,00 DM;-#.##0,00 DM"},
        {FMTUnTokenizeNumberPic, &kA, kTokenRows[4].tokens, "$#,##0.00;($#,##0.00)"},
        {FMTUnTokenizeNumberPic, &kB, kTokenRows[2].tokens, "#.##0,00;(#.##0,00)"}, // the pad has no one-byte suffix
        {FMTUnTokenizeNumberPic, &kA, kTokenRows[2].tokens, "#,##0.00_);(#,##0.00)"},
        {FMTUnTokenizeNumberPic, &kB, "0F 23 10 0E 04", "#"}, {FMTUnTokenizeNumberPic, &kA, "0F 23 10 0E 04", "#"},
        {FMTUnTokenizeNumberPic, &kA, "0F 23 10 0E 78", "#_x"}, {FMTUnTokenizeNumberPic, &kA, "0F 23 10 0E", "#_"},
        {FMTUnTokenizeNumberPic, &kA, "3B 3B 03 0F 23 10 06", ";;$($#)"},
        {FMTUnTokenizeNumberPic, &kB, "0F 23 01 23 23 30 10 3B 2D 0F 23 10", "#.##0;-#"},
        {FMTUnTokenizeNumberPic, &kA, "0F 23 10 3B 0F 23 10 06", "#;($#)"}, // a negative suffix alone brings its prefix
        // a lone "-" form is a plain minus: only the pair of both tokens is the currency form
        {FMTTokenizeNumberPic, &minus5, "$#,##0;-#,##0$", "03 0F 23 01 23 23 30 10 3B 05 0F 23 01 23 23 30 10 06"},
        {FMTTokenizeNumberPic, &minus5, "$#,##0;-#,##0", "03 0F 23 01 23 23 30 10 3B 2D 0F 23 01 23 23 30 10"},
        {FMTTokenizeNumberPic, &minus5, "#;#$", "0F 23 10 3B 0F 23 10 06"}, {FMTTokenizeNumberPic, &kA, "#' it''#'", "0F 23 10 27 20 69 74 27 27 23 27"},
        {FMTCnvOldNumberPic, &kA, "#,##0.00 units", "#,##0.00 'units'"}, {FMTCnvOldNumberPic, &kA, "(#,##0);#", "'('#,##0')';#"},
        {FMTCnvOldNumberPic, &kB, "#,##0 DM", "#.##0 DM"}, {FMTCnvOldNumberPic, &kB, "$#,##0.00;($#,##0.00)", "'$'#.##0,00;'($'#.##0,00')'"},
        {FMTCnvOldNumberPic, &kA, "$#,##0.00;($#,##0.00)", "$#,##0.00;($#,##0.00)"}, {FMTCnvOldNumberPic, &kA, "0%x", "0%'x'"},
        {FMTCnvOldNumberPic, &kA, "#\"a;b\"_)", "#\"a;b\"_)"}, {FMTCnvOldNumberPic, &kA, "ab cd;#", "'ab cd';#"},
        {FMTCnvOldNumberPic, &kA, "ab #", "'ab' #"}, {FMTCnvOldNumberPic, &kA, "#x$", "#'x$'"},
        {FMTCnvOldNumberPic, &kB, "#x DM", "#'x' DM"}, {FMTCnvOldNumberPic, &kB, "0.00E+00", "0.00E+00"},
    };
    for (const auto& r : rows) {
        bool tokens = r.f == FMTUnTokenizeNumberPic, toTokens = r.f == FMTTokenizeNumberPic;
        std::string out = Translated(r.f, *r.under, tokens ? FromHex(r.in) : r.in);
        EXPECT_EQ(toTokens ? Hex(out) : out, r.out) << (tokens ? "FMTUnTokenizeNumberPic(" : toTokens ? "FMTTokenizeNumberPic(" : "FMTCnvOldNumberPic(")
                                                    << r.in << ") under " << r.under->name;
    }
}

TEST(FmtNumPic, NullPictureGivesZeroAndAnEmptyOutput) {
    for (Translate f : {FMTTokenizeNumberPic, FMTUnTokenizeNumberPic, FMTCnvOldNumberPic}) {
        char out[8] = "Z";
        FMTCNTLBLOCK b = BlockOf(kA, nullptr, out);
        EXPECT_EQ(f(&b) + 2 * (out[0] != 0), 0) << "result and output of a translation of a null picture";
    }
    EXPECT_EQ(FMTIsNumberPicTokenized(nullptr) + 2 * FMTIsNumberPicTokenized("#\x0F") + 4 * FMTIsNumberPicTokenized("#\x10"), 2);
}

void CheckValid(const Settings& s, std::initializer_list<std::pair<const char*, int>> rows) {
    for (const auto& [picture, valid] : rows) {
        char out[8] = "keep";
        FMTCNTLBLOCK b = BlockOf(s, picture, out);
        EXPECT_EQ(FMTIsNumberPicValid(&b), valid) << "FMTIsNumberPicValid(\"" << picture << "\") under " << s.name;
        EXPECT_STREQ(out, "keep") << "output after FMTIsNumberPicValid(\"" << picture << "\")";
    }
}

TEST(FmtNumPic, Validity) {
    CheckValid(kA, {{"#,##0.00", 1}, {"#0", 1}, {"#%", 1}, {"# ", 1}, {"#_)", 1}, {"#.00;", 1}, {"#,##0.00;(#,##0.00)", 1},
                    {"$#,##0.00;($#,##0.00)", 1}, {"0.00E+00", 1}, {"0.00e-00", 1}, {"", 1}, {"$", 1}, {"'0'#", 1},
                    {"#' x'", 1}, {"#\"a\"\"b\"", 1}, {"0.0#", 1}, {"#.", 1}, {";(#)", 1}, {"#;-#", 1}, {"#;;\"z\"", 1},
                    {"##,##0", 1}, {"0.###E-0#", 1}, {"#;#-", 1}, {"#;;($#)", 1}, {"#;#)", 1}, {"$$#", 1}, {"#,###.0", 1},
                    {"0#", 0}, {"0.#0", 0}, {"#,#.00", 0}, {"#,##,##0", 0}, {"#.#.#", 0}, {"# #", 0}, {"a#", 0}, {"%#", 0},
                    {"-#", 0}, {"#,", 0}, {"#_) ", 0}, {"#;#;#;#", 0}, {"#,##0.00;(#,##0.00", 0}, {"$#,##0.00;-$#,##0.00", 0},
                    {"$#,##0;-#,##0", 0}, {"0.00E+", 0}, {"0.E+00", 0}, {"0.#0E+00", 0}, {"0.00E+#0", 0}, {"0.00E+00 kg", 0},
                    {"0.00X+00", 0}, {"#'x", 0}, {"#;(#))", 0}, {"#;((#)", 0}, {"#;-(#)", 0}, {"#;(-#)", 0}, {"#;--#", 0},
                    {"#;(#)-", 0}, {"#,####.0", 0}, {"#,##0.0#0", 0}, {"\x0F#\x01##0\x02" "00\x10", 1}, {"\x0F#\x02#0\x10", 0}});
    CheckValid(kB, {{"#,", 1}, {"#,##0.00", 0}, {"#.##0,00 DM;-#.##0,00 DM", 1}, {"#.##0,00 DM;(#)", 0},
                    {"\x0F#\x01##0\x02" "00\x10\x04", 1}});
    CheckValid(kA, {{std::string(63, '#').c_str(), 1}, {std::string(64, '#').c_str(), 0}}); // a picture has at most 63 bytes
    CheckValid({"thousands blank", "$", 0, 0, ' ', ','}, {{"# ##0 'kg'", 1}, {"# ", 1}, {"# ##", 1}});
    CheckValid({"thousands quote", "$", 0, 4, '\'', '.'}, {{"#'##0.00", 1}, {"#'x'", 1}, {"#;(#SFr)", 0}, {"#;(#$)", 1}});
}

// ---- stored under one user's settings, read under another's -----------------

std::string UnderProfile(Translate f, const std::string& picture) {
    char out[256];
    FMTCNTLBLOCK b = ProfileBlock(picture.c_str(), out);
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
        {&kFrench, "# ##0,00 F", &kGerman, "#.##0,00 DM"}, {&kJapan, "\\#,##0;-\\#,##0", &kUS, "$#,##0;($#,##0)"},
        {&kSwiss, "SFr. #'##0.00;SFr.-#'##0.00", &kFrench, "# ##0,00 F;-# ##0,00 F"},
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
            << "\"" << r.typed << "\" stored under " << r.stored->name << " as " << Hex(stored) << ", read under " << r.read->name;
    }
}

TEST(FmtNumPic, AThreadKeepsItsCurrencyFormsWhenTheProfileChanges) {
    const std::string stored = "\x03\x0F#\x10";
    LocaleUnder us(kUS);
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "$#");
    ScriptedProfile german(kGerman.intl);
    FMTWinIniChanged();
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "$#") << "forms of the thread's first use";
    LocaleUnder::Fresh();
    EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), "# DM") << "forms built again after the record went";
}

TEST(FmtNumPic, CurrencyFormsOfEveryPosition) {
    const char* rows[] = {"$||($|)", "|$|-$|", "$ ||$-|", "| $|$|-", "$||(|$)", "|$|-|$", "$ |||-$", "| $||$-",
                          "$||-| $", "|$|-$ |", "$ ||| $-", "|||"}; // iCurrency n % 4 (4 for the last), iNegCurr n
    for (LONG n = 0; n < 12; ++n) {
        char pp[10], ps[10], np[10], ns[10];
        FMTBuildCurrencyForms(n == 11 ? 4 : n % 4, n, pp, ps, np, ns, "$");
        EXPECT_EQ(std::string(pp) + "|" + ps + "|" + np + "|" + ns, rows[n]) << "FMTBuildCurrencyForms(" << n % 4 << ", " << n << ")";
    }
    char pp[10], ps[10], np[10], ns[10];
    FMTBuildCurrencyForms(0, 9, pp, ps, np, ns, "ABCDEFGHIJ");
    EXPECT_STREQ(np, "-ABCDEFG ") << "a symbol is cut to 7 bytes";
}

} // namespace
