// Number pictures: tokenising, untokenising, the old form, validity, and a
// picture stored under one user's settings and read under another's.
#include "test_fmt_num_env.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Translate = LONG(OXLAPI*)(FMTCNTLBLOCK*);

std::string Translated(Translate f, const Settings& s, const std::string& picture) {
    char out[256] = "Z";
    FMTCNTLBLOCK b = BlockOf(s, picture.c_str(), out);
    EXPECT_EQ(f(&b), 1) << "result for " << Hex(picture) << " under " << s.name;
    return out;
}

// Each translation under block settings. A picture tokenised is also
// untokenised under the same settings and comes back, unless it has a pad
// (which may go) or starts in section 2 (read in another order).
TEST(FmtNumPic, Translations) {
    const Settings minus5 = {"iNegCurr 5", "$", 0, 5, ',', '.'};
    const struct { Translate f; const Settings* under; const char* in; const char* out; } rows[] = {
        {FMTTokenizeNumberPic, &kA, "$#,##0.00;($#,##0.00)", "\x03\x0F#\x01##0\x02" "00\x10;\x05\x0F#\x01##0\x02" "00\x10\x06"},
        {FMTTokenizeNumberPic, &kA, "#,##0.00_);(#,##0.00)", "\x0F#\x01##0\x02" "00\x10\x0E\x06;(\x0F#\x01##0\x02" "00\x10)"},
        {FMTTokenizeNumberPic, &kB, "#.##0,00 DM;-#.##0,00 DM", "\x0F#\x01##0\x02" "00\x10\x04;\x05\x0F#\x01##0\x02" "00\x10\x06"},
        {FMTTokenizeNumberPic, &kA, "0.00E+00", "0.00E+00"}, {FMTTokenizeNumberPic, &kB, "$", "$"},
        {FMTTokenizeNumberPic, &kA, "#.", "\x0F#\x02\x10"},
        {FMTTokenizeNumberPic, &kA, "#, ", "\x0F#\x10, "},               // a thousands character ending the run stays text
        {FMTTokenizeNumberPic, &kA, "#' $''x'", "\x0F#\x10' $''x'"},     // quoted text keeps its bytes, no form inside
        {FMTTokenizeNumberPic, &kA, "#\"a\\\"$", "\x0F#\x10\"a\\\"$"},   // an escaped quote does not close
        {FMTTokenizeNumberPic, &kB, "#_ DM;#_ DM", "\x0F#\x10\x0E\x06;\x0F#\x10\x0E\x04"}, // a pad: negative suffix first in section 0
        {FMTTokenizeNumberPic, &kA, "#_)_", "\x0F#\x10\x0E\x06\x0E"}, {FMTTokenizeNumberPic, &kA, "#_x", "\x0F#\x10\x0Ex"},
        {FMTTokenizeNumberPic, &kA, ";;$#)", ";;\x03\x0F#\x10\x06"}, // section 2 takes the positive forms, then the negative ones
        // a lone "-" form is a plain minus: only the pair of both tokens is the currency form
        {FMTTokenizeNumberPic, &minus5, "$#,##0;-#,##0$", "\x03\x0F#\x01##0\x10;\x05\x0F#\x01##0\x10\x06"},
        {FMTTokenizeNumberPic, &minus5, "$#,##0;-#,##0", "\x03\x0F#\x01##0\x10;-\x0F#\x01##0\x10"},
        {FMTUnTokenizeNumberPic, &kB, "\x0F#\x01##0\x02" "00\x10\x0E\x06;(\x0F#\x01##0\x02" "00\x10)", "#.##0,00;(#.##0,00)"}, // no one-byte suffix
        {FMTUnTokenizeNumberPic, &kA, "\x0F#\x01##0\x02" "00\x10\x0E\x06;(\x0F#\x01##0\x02" "00\x10)", "#,##0.00_);(#,##0.00)"},
        {FMTUnTokenizeNumberPic, &kB, "\x0F#\x10\x0E\x04", "#"}, {FMTUnTokenizeNumberPic, &kA, "\x0F#\x10\x0E\x04", "#"},
        {FMTUnTokenizeNumberPic, &kA, "\x0F#\x10\x0Ex", "#_x"}, {FMTUnTokenizeNumberPic, &kA, "\x0F#\x10\x0E", "#_"},
        {FMTUnTokenizeNumberPic, &kA, ";;\x03\x0F#\x10\x06", ";;$($#)"},
        {FMTUnTokenizeNumberPic, &kB, "\x0F#\x01##0\x10;-\x0F#\x10", "#.##0;-#"},
        {FMTUnTokenizeNumberPic, &kA, "\x0F#\x10;\x0F#\x10\x06", "#;($#)"}, // a negative suffix alone brings its prefix
        {FMTCnvOldNumberPic, &kB, "$#,##0.00;($#,##0.00)", "'$'#.##0,00;'($'#.##0,00')'"},
        {FMTCnvOldNumberPic, &kA, "$#,##0.00;($#,##0.00)", "$#,##0.00;($#,##0.00)"}, {FMTCnvOldNumberPic, &kA, "0%x", "0%'x'"},
        {FMTCnvOldNumberPic, &kA, "#\"a;b\"_)", "#\"a;b\"_)"}, {FMTCnvOldNumberPic, &kA, "ab cd;#", "'ab cd';#"},
        {FMTCnvOldNumberPic, &kA, "ab #", "'ab' #"}, {FMTCnvOldNumberPic, &kB, "#x DM", "#'x' DM"},
    };
    for (const auto& r : rows) {
        const char* name = r.f == FMTTokenizeNumberPic ? "FMTTokenizeNumberPic(" : r.f == FMTUnTokenizeNumberPic ? "FMTUnTokenizeNumberPic(" : "FMTCnvOldNumberPic(";
        EXPECT_EQ(Hex(Translated(r.f, *r.under, r.in)), Hex(r.out)) << name << Hex(r.in) << ") under " << r.under->name;
        if (r.f == FMTTokenizeNumberPic && !std::strchr(r.in, '_') && *r.in != ';') {
            EXPECT_EQ(Translated(FMTUnTokenizeNumberPic, *r.under, r.out), r.in) << "FMTUnTokenizeNumberPic(" << Hex(r.out) << ") under " << r.under->name;
        }
    }
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
    CheckValid(kA, {{"#,##0.00", 1}, {"#%", 1}, {"#_)", 1}, {"#.00;", 1}, {"$#,##0.00;($#,##0.00)", 1}, {"0.###E-0#", 1},
                    {"", 1}, {"$", 1}, {"#\"a\"\"b\"", 1}, {"#;-#", 1}, {"#;;($#)", 1}, {"#;#)", 1}, {"##,##0", 1},
                    {"#,###.0", 1}, {"0#", 0}, {"0.#0", 0}, {"#,#.00", 0}, {"#,##,##0", 0}, {"#.#.#", 0}, {"# #", 0},
                    {"a#", 0}, {"-#", 0}, {"#,", 0}, {"#_) ", 0}, {"#;#;#;#", 0}, {"#,##0.00;(#,##0.00", 0},
                    {"$#,##0.00;-$#,##0.00", 0}, {"$#,##0;-#,##0", 0}, {"0.00E+", 0}, {"0.E+00", 0}, {"0.#0E+00", 0},
                    {"0.00E+#0", 0}, {"0.00E+00 kg", 0}, {"#'x", 0}, {"#;(#))", 0}, {"#;((#)", 0}, {"#;-(#)", 0},
                    {"#;(-#)", 0}, {"#;--#", 0}, {"#;(#)-", 0}, {"\x0F#\x01##0\x02" "00\x10", 1}, {"\x0F#\x02#0\x10", 0}});
    CheckValid(kB, {{"#,", 1}, {"#.##0,00 DM;-#.##0,00 DM", 1}, {"#.##0,00 DM;(#)", 0}});
    CheckValid(kA, {{std::string(63, '#').c_str(), 1}, {std::string(64, '#').c_str(), 0}}); // a picture has at most 63 bytes
    CheckValid({"thousands blank", "$", 0, 0, ' ', ','}, {{"# ##0 'kg'", 1}, {"# ", 1}});
    CheckValid({"thousands quote", "$", 0, 4, '\'', '.'}, {{"#'##0.00", 1}, {"#'x'", 1}, {"#;(#SFr)", 0}, {"#;(#$)", 1}});
}

// ---- stored under one user's settings, read under another's -----------------

// A translation or FMTFormatNumber under the profile (the value and type for the latter).
std::string UnderProfile(Translate f, const std::string& picture, LONG type = FMT_NONE, const char* value = "0") {
    char out[256] = "Z";
    FMTCNTLBLOCK b = ProfileBlock(picture.c_str(), out);
    b.nType = type;
    b.numValue = Num(value);
    EXPECT_EQ(f(&b), 1);
    return out;
}

// Each user's own currency picture, and what each user is shown for
// 1234.5 and -1234.5 under it, then as a plain number and as currency.
struct UserRow { const Locale* locale; const char* picture; const char* texts[4]; };
const UserRow kUsers[] = {
    {&kUS, "$#,##0.00;($#,##0.00)", {"$1,234.50", "($1,234.50)", "1,234.50", "$1,234.50"}},
    {&kGerman, "#.##0,00 DM;-#.##0,00 DM", {"1.234,50 DM", "-1.234,50 DM", "1.234,50", "1.234,50 DM"}},
    {&kFrench, "# ##0,00 F;-# ##0,00 F", {"1 234,50 F", "-1 234,50 F", "1 234,50", "1 234,50 F"}},
    {&kSwiss, "SFr. #'##0.00;SFr.-#'##0.00", {"SFr. 1'234.50", "SFr.-1'234.50", "1'234.50", "SFr. 1'234.50"}},
    {&kJapan, "\\#,##0.00;-\\#,##0.00", {"\\1,234.50", "-\\1,234.50", "1,234.50", "\\1,235"}},
};

// Every user's picture stored, then shown to and used by every user.
TEST(FmtNumPic, StoredUnderOneLocaleReadUnderAnother) {
    const struct { LONG type; const char* value; } calls[] = {
        {FMT_PICTURE, "1234.5"}, {FMT_PICTURE, "-1234.5"}, {FMT_NUMBER, "1234.5"}, {FMT_CURRENCY, "1234.5"}};
    for (const UserRow& from : kUsers) {
        std::string stored;
        {
            LocaleUnder l(*from.locale);
            stored = UnderProfile(FMTTokenizeNumberPic, from.picture);
        }
        for (const UserRow& to : kUsers) {
            LocaleUnder l(*to.locale);
            std::string where = std::string("\"") + from.picture + "\" stored under " + from.locale->name + " as " + Hex(stored) +
                                ", read under " + to.locale->name;
            EXPECT_EQ(UnderProfile(FMTUnTokenizeNumberPic, stored), to.picture) << where;
            for (int i = 0; i < 4; ++i)
                EXPECT_EQ(UnderProfile(FMTFormatNumber, stored, calls[i].type, calls[i].value), to.texts[i])
                    << "FMTFormatNumber type " << calls[i].type << ", " << calls[i].value << ", " << where;
        }
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

} // namespace
