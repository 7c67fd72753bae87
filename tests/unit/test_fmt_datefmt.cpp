// Writing dates: FMTFormatDateTime, FMTGetMaxFormattedDTLen, the default
// pictures and what a picture holds. Blocks start as DateBlock says; a row
// changes what it names. Japanese texts are Shift-JIS bytes.
#include "test_fmt_date_env.h"
#include "intl_env.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

#define HEISEI "\x95\xBD\x90\xAC"
#define SHOWA "\x8F\xBA\x98\x61"
#define NEN "\x94\x4E"
#define GATSU "\x8C\x8E"
#define NICHI "\x93\xFA"

using Setup = std::function<void(FMTCNTLBLOCK&)>;
Setup Pic(const char* picture, DWORD flags = 0, LONG style = 0) {
    return [=](FMTCNTLBLOCK& b) {
        b.lpszLongPic = b.lpszShortPic = const_cast<char*>(picture);
        b.dwFlags = flags, b.iDateType = DWORD(style);
    };
}

Setup Style(LONG style) { return [=](FMTCNTLBLOCK& b) { b.iDateType = DWORD(style); }; }
Setup Zero(const char* picture, DWORD flags = 0) { return [=](FMTCNTLBLOCK& b) { Pic(picture, flags)(b), b.bTimeLeadZero = 1; }; }
DATDEF D(LONG m, LONG d, LONG y, LONG h = 0, LONG mi = 0, LONG s = 0, LONG us = 0) { return {m, d, y, h, mi, s, us}; }
DATDEF At(LONG h, LONG mi = 0, LONG s = 0, LONG us = 0) { return {1, 1, 2000, h, mi, s, us}; } // 1 January 2000

// The block as a failure message tells it.
std::string Described(const FMTCNTLBLOCK& b) {
    auto text = [](const char* s) { return s ? "\"" + std::string(s) + "\"" : std::string("null"); };
    return "nType " + std::to_string(b.nType) + ", long " + text(b.lpszLongPic) + ", short " + text(b.lpszShortPic) + ", style " +
           std::to_string(b.iDateType) + ", flags " + std::to_string(b.dwFlags) + ", profile " + std::to_string(b.bUseProfile) +
           ", 24-hour " + std::to_string(b.b24Hour) + ", zero " + std::to_string(b.bTimeLeadZero) + ", markers " + text(b.lpsz1159) +
           " " + text(b.lpsz2359) + ", on " + ShowDate(b.datDef);
}

struct FormatRow {
    LONG nType;
    DATDEF d;
    Setup setup;
    int result;
    const char* out;
};

const DATDEF kJan1 = At(0);
const DATDEF k130509 = At(13, 5, 9);

void ExpectFormats(std::initializer_list<FormatRow> rows, int localeNames = 0) {
    for (const FormatRow& r : rows) {
        DateBlock b(r.nType, r.d);
        if (r.setup) r.setup(b.b);
        std::string what = Described(b.b);
        int got = FMTFormatDateTime(b.get(), localeNames);
        EXPECT_EQ(got, r.result) << "FMTFormatDateTime of " << what;
        std::string want = r.out ? r.out : std::string(sizeof b.out - 1, '~'); // null: untouched
        EXPECT_EQ(Hex(b.out), Hex(want)) << "the text of " << what << ": " << b.out;
    }
}

TEST(FMTFormatDateTime, Pictures) {
    DateClock clock(2026);
    ExpectFormats({
        {FMT_DATE, kJan1, nullptr, 1, "Saturday, January 01, 2000"}, {FMT_DATE, kJan1, Style(1), 1, "1/1/00"},
        {FMT_DATE, D(9, 9, 2000), Pic("d dd M MM"), 1, "9 09 9 09"}, {FMT_DATE, D(10, 10, 2000), Pic("d dd M MM"), 1, "10 10 10 10"},
        {FMT_DATE, D(1, 1, 5), Pic("yy yyyy"), 1, "05 0005"}, {FMT_DATE, D(1, 1, 12345), Pic("yy yyyy"), 1, "45 12345"},
        {FMT_DATE, D(1, 1, 10), Pic("yy yyyy"), 1, "10 0010"}, {FMT_DATE, D(12, 31, 1999), Pic("ddd MMM"), 1, "Fri Dec"},
        {FMT_DATE, D(13, 1, 2000), Pic("'['MMMM']'"), 1, "[]"},
        {FMT_DATE, kJan1, Pic("d  'of' M, yyyy'\x94\x4E'"), 1, "1  of 1, 2000\x94\x4E"},
        {FMT_DATE, kJan1, Pic("yyy"), 0, ""}, {FMT_DATE, kJan1, Pic(nullptr), 0, ""}, {FMT_DATE, kJan1, Style(4), 0, ""},
        {0, kJan1, nullptr, 0, nullptr}, {4, kJan1, nullptr, 0, nullptr},
        {FMT_DATE, kJan1, [](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = 0; }, 0, ""},
    });
}

TEST(FMTFormatDateTime, Times) {
    ExpectFormats({
        {FMT_DATETIME, k130509, Style(1), 1, "1/1/00 1:05:09 PM"},
        {FMT_DATETIME, k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1, b.bTimeLeadZero = 1; }, 1, "1/1/00 01:05:09 PM"},
        {FMT_DATETIME, At(0, 5, 9), Style(1), 1, "1/1/00 12:05:09 AM"}, {FMT_DATETIME, At(12, 5, 9), Style(1), 1, "1/1/00 12:05:09 PM"},
        {FMT_DATETIME, At(11), Style(1), 1, "1/1/00 11:00:00 AM"},
        {FMT_DATETIME, k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1, b.dwFlags = 0; }, 1, "1/1/00"},
        {FMT_TIME, At(7, 5, 9, 123),
         [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= FMTF_MICROSECONDS, b.lpszTimeSep = const_cast<char*>("."); }, 1, "7.05.09.000123"},
        {FMT_TIME, At(7, 5, 9), [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.lpszTimeSep = const_cast<char*>("::::"); }, 1, "7::05::09"},
        {FMT_TIME, At(7), Pic("hhhh"), 1, "7"}, {FMT_TIME, At(7), Zero("hhhh"), 1, "07"}, {FMT_TIME, At(10), Zero("hhhh"), 1, "10"},
        {FMT_TIME, At(7), Zero("hhhh", FMTF_NOHOURZERO), 1, "7"},
        {FMT_TIME, At(7), Zero("hhh h"), 1, "7 7"}, {FMT_TIME, At(21), Zero("hh"), 1, "09"},
        {FMT_TIME, At(0, 9, 10), Pic("mm ss"), 1, "09 10"},
        {FMT_TIME, At(7), [](FMTCNTLBLOCK& b) { b.dwFlags = 0, b.iDateType = 1, b.lpszShortPic = const_cast<char*>("h"); }, 1, "7"},
        {FMT_TIME, At(7), Pic("h", 0, 2), 0, ""}, {FMT_TIME, kJan1, Pic("S"), 0, ""},
        {FMT_TIME, At(10, 30, 15), Pic("hhhh:mm:ss.mmmmmm", FMTF_OMITZEROMICRO), 1, "10:30:15"},
        {FMT_TIME, At(10, 30, 15, 1), Pic("hhhh:mm:ss.mmmmmm", FMTF_OMITZEROMICRO), 1, "10:30:15.000001"},
        {FMT_TIME, At(10, 30, 15), Pic("hhhh:mm:ss.mmmmmm"), 1, "10:30:15.000000"},
        {FMT_TIME, At(10, 30, 15, -1), Pic("hhhh:mm:ss.mmmmmm"), 1, "10:30:15"}, {FMT_TIME, At(23), Pic("AMPM"), 1, "PM"},
    });
}

TEST(FMTFormatDateTime, KeywordsAndJapaneseStyles) {
    IntlUnder japanese(kJapanese);
    const DATDEF heisei1 = D(1, 8, 1989, 12), meiji0 = D(9, 7, 1868);
    ExpectFormats({
        {FMT_DATE, heisei1, Pic("E", FMTF_MICROSECONDS), 1, HEISEI "01" NEN "01" GATSU "08" NICHI "12:00:00 PM"},
        {FMT_DATE, heisei1, Pic("ED"), 1, HEISEI "01" NEN "01" GATSU "08" NICHI},
        {FMT_DATE, meiji0, Pic("ED"), 0, ""}, {FMT_DATE, meiji0, Pic("E"), 0, ""},
        {FMT_DATE, At(10, 30, 15), Pic("T", FMTF_MICROSECONDS), 1, "10:30:15 AM"},
        {FMT_DATETIME, At(10, 30, 15), Pic("T", FMTF_DEFAULTTIME), 1, "10:30:15 AM"},
        {FMT_DATE, D(1, 5, 2000), Pic("x", 0, 2), 1, "2000" NEN "01" GATSU "05" NICHI},
        {FMT_DATE, D(11, 25, 5), Pic("x", 0, 2), 1, "0005" NEN "11" GATSU "25" NICHI},
        {FMT_DATETIME, D(1, 5, 2000, 10, 30, 15), Pic("x", FMTF_DEFAULTTIME, 2), 1, "2000" NEN "01" GATSU "05" NICHI "10:30:15 AM"},
        {FMT_DATETIME, D(1, 5, 2000, 10, 30, 15), Pic("x", 0, 2), 1, "2000" NEN "01" GATSU "05" NICHI},
        {FMT_DATE, heisei1, Pic("x", 0, 3), 1, HEISEI "01" NEN "01" GATSU "08" NICHI},
        {FMT_DATE, D(1, 7, 1989), Pic("x", 0, 3), 1, SHOWA "64" NEN "01" GATSU "07" NICHI},
        {FMT_DATE, D(12, 31, 1990), Pic("x", 0, 3), 1, HEISEI "02" NEN "12" GATSU "31" NICHI},
        {FMT_DATE, D(1, 1, 2098), Pic("x", 0, 3), 1, HEISEI "10" NEN "01" GATSU "01" NICHI}, {FMT_DATE, meiji0, Pic("x", 0, 3), 0, ""},
        {FMT_DATETIME, D(1, 8, 1989, 22), Pic("x", FMTF_DEFAULTTIME, 3), 1, HEISEI "01" NEN "01" GATSU "08" NICHI "10:00:00 PM"},
        {FMT_DATETIME, meiji0, Pic("x", FMTF_DEFAULTTIME, 3), 0, ""},
    });
    DateBlock b(FMT_DATE, heisei1);
    Pic("E", FMTF_MICROSECONDS)(b.b);
    FMTFormatDateTime(b.get(), 0);
    EXPECT_EQ(b->dwFlags, DWORD(FMTF_MICROSECONDS | FMTF_OMITZEROMICRO)) << "flags after the keyword E";
    Pic("T", FMTF_MICROSECONDS)(b.b);
    FMTFormatDateTime(b.get(), 0);
    EXPECT_EQ(b->dwFlags, 0u) << "flags after the keyword T";
}

TEST(FMTFormatDateTime, ProfileAndDefaults) {
    DateProfile profile({{"intl", "sShortDate", "dd.MM.yy"}, {"intl", "sLongDate", "d MMMM yyyy"}, {"intl", "iTime", "1"}, {"intl", "sTime", "."},
                         {"intl", "iTLZero", "1"}, {"OXLEEKIT", "sDateType", "ShortGregorian"}});
    const DATDEF d = D(3, 5, 2024, 7, 8, 9);
    auto profileFlags = [](DWORD flags) { return [=](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = flags; }; };
    ExpectFormats({
        {FMT_DATE, d, profileFlags(FMTF_DEFAULTTIME), 1, "05.03.24"},
        {FMT_DATE, d, profileFlags(FMTF_DEFAULTTIME | FMTF_LONGDATE), 1, "5 March 2024"},
        {FMT_DATETIME, d, profileFlags(FMTF_DEFAULTTIME), 1, "05.03.24 07.08.09"},
        {FMT_DATE, d, Pic(""), 1, "05.03.24"}, {FMT_DATE, d, Pic("S"), 1, "05.03.24"},
        {FMT_DATE, d, Pic("L"), 1, "5 March 2024"}, {FMT_DATE, d, Pic("s"), 0, ""},
    });
    char pic[64];
    const struct { const char* what; int (*call)(char*, DWORD); DWORD cb; const char* want; } rows[] = {
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 64, "dd.MM.yy"},
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 3, "dd"}, {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 1, ""},
        {"FMTGetDefaultLongDatePic", FMTGetDefaultLongDatePic, 64, "d MMMM yyyy"},
        {"FMTGetDefaultDatePic", FMTGetDefaultDatePic, 64, "dd.MM.yy"},
    };
    for (const auto& r : rows) {
        std::memset(pic, 'Z', sizeof pic);
        EXPECT_EQ(r.call(pic, r.cb), 1) << r.what << "(dst, " << r.cb << ")";
        EXPECT_STREQ(pic, r.want) << r.what << "(dst, " << r.cb << ")";
    }
}

TEST(FMTFormatDateTime, LocaleNames) {
    DateLocaleNames names(0x35);
    ExpectFormats({
                      {FMT_DATE, kJan1, Pic("dddd ddd"), 1, "L2F L36"}, // Saturday: day 1
                      {FMT_DATE, D(1, 2, 2000), Pic("dddd ddd"), 1, "L30 L37"}, {FMT_DATE, D(1, 3, 2000), Pic("dddd ddd"), 1, "L2A L31"},
                      {FMT_DATE, D(1, 7, 2000), Pic("dddd ddd"), 1, "L2E "}, // 0x35 unknown
                      {FMT_DATE, kJan1, Pic("MMMM MMM"), 1, "L38 L44"}, {FMT_DATE, D(12, 1, 2000), Pic("MMMM MMM"), 1, "L43 L4F"},
                      {FMT_DATE, D(0, 1, 2000), Pic("'['MMMM']'"), 1, "[]"}, {FMT_DATE, D(13, 1, 2000), Pic("'['MMMM']'"), 1, "[]"},
                  },
                  1);
}

struct LenRow { LONG nType; Setup setup; int nMinimum, result; DWORD flagsAfter; };

TEST(FMTGetMaxFormattedDTLen, Widths) {
    const LenRow rows[] = {
        {FMT_DATE, nullptr, 0, 29, FMTF_DEFAULTTIME}, {FMT_DATE, nullptr, 40, 40, FMTF_DEFAULTTIME},
        {FMT_DATE, nullptr, 29, 29, FMTF_DEFAULTTIME}, {FMT_DATE, Pic("ddd MMM yyyy mmmmmm"), 0, 3 + 1 + 3 + 1 + 4 + 1 + 6, 0},
        {FMT_DATE, Pic("d dd M MM yy h hh hhh hhhh mm ss"), 0, 11 * 2 + 10, 0},
        {FMT_DATE, [](FMTCNTLBLOCK& b) { Pic("'abc'  AMPM")(b), b.lpsz1159 = const_cast<char*>("a.m."); }, 0, 3 + 2 + 4, 0},
        {FMT_DATE, [](FMTCNTLBLOCK& b) { Pic("AMPM")(b), b.lpsz2359 = const_cast<char*>("p.m."); }, 0, 4, 0},
        {FMT_DATE, Pic("yyy"), -5, -1, 0}, {FMT_DATE, Pic("yyy"), 3, 3, 0}, {0, nullptr, 40, -1, FMTF_DEFAULTTIME},
        {4, nullptr, 40, -1, FMTF_DEFAULTTIME}, {FMT_DATE, [](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = 0; }, 40, -1, 0},
        {FMT_DATE, Pic("ED"), 40, 16, 0}, {FMT_DATE, Pic("E", FMTF_MICROSECONDS), 0, 16 + 11, 0},
        {FMT_DATE, Pic("T", FMTF_MICROSECONDS), 0, 11, 0}, {FMT_TIME, nullptr, 0, 11, FMTF_DEFAULTTIME},
        {FMT_TIME, [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= FMTF_MICROSECONDS; }, 0, 15, FMTF_DEFAULTTIME | FMTF_MICROSECONDS},
        {FMT_DATETIME, Style(1), 0, (6 + 13 + 2) + 8 + 1 + 11, FMTF_DEFAULTTIME}, {FMT_DATE, Pic("x", 0, 2), 5, 5, 0},
        {FMT_DATETIME, Pic("x", FMTF_DEFAULTTIME, 3), 5, 11, FMTF_DEFAULTTIME},
        {FMT_DATETIME, Pic("x", 0, 3), 5, 5, 0}, {FMT_DATE, Pic("x", 0, 4), 5, 5, 0},
    };
    for (const LenRow& r : rows) {
        DateBlock b(r.nType);
        if (r.setup) r.setup(b.b);
        std::string what = Described(b.b) + ", nMinimum " + std::to_string(r.nMinimum);
        EXPECT_EQ(FMTGetMaxFormattedDTLen(b.get(), r.nMinimum), r.result) << "FMTGetMaxFormattedDTLen of " << what;
        EXPECT_EQ(b->dwFlags, r.flagsAfter) << "flags after FMTGetMaxFormattedDTLen of " << what;
    }
}

TEST(FMTDatePicHas, DateAndTime) {
    const struct { const char* picture; int date, time; } rows[] = {
        {"hh:mm", 0, 1}, {"yyy", 0, 0}, {"d", 1, 0}, {"yyyy", 1, 0}, {"AMPM", 0, 1}, {"hhh", 0, 1}, {"mmmmmm", 0, 1},
        {"'d' - ", 0, 0}, {"MMMM h", 1, 1}, {"", 0, 0},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(FMTDatePicHasDate(r.picture), r.date) << "FMTDatePicHasDate(\"" << r.picture << "\")";
        EXPECT_EQ(FMTDatePicHasTime(r.picture), r.time) << "FMTDatePicHasTime(\"" << r.picture << "\")";
    }
    EXPECT_EQ(FMTDatePicHasDate(nullptr) + FMTDatePicHasTime(nullptr), 0);
    ScriptedHeap heap;
    FMTDatePicHasDate("d"), FMTDatePicHasTime("'a' h");
    EXPECT_EQ(heap.Outstanding(), 0) << "blocks left by FMTDatePicHasDate and FMTDatePicHasTime";
}

TEST(FMTGetGeeLongDatePic, WithoutNames) {
    const struct { const char* longPic; int withTime, result; const char* want; } rows[] = {
        {"dddd, MMMM dd, yyyy", 0, 1, "MMMM dd, yyyy"}, {"MMMM dd, yyyy, dddd", 0, 1, "MMMM dd, yyyy"},
        {"d. MMMM'ta' yyyy", 0, 1, "d. MMMM  yyyy"}, {"d'. 'MMMM yyyy", 0, 1, "d. MMMM yyyy"}, {"yyyy ddd, dddd M", 0, 1, "yyyy M"},
        {"dddd", 0, 1, ""}, {"d MMMM yyyy.", 0, 1, "d MMMM yyyy."}, {"dddd, MMMM dd, yyyy", 1, 1, "MMMM dd, yyyy hh:mm:ss AMPM"}, {"yyy", 0, 0, ""},
    };
    for (const auto& r : rows) {
        DateProfile profile({{"intl", "sLongDate", r.longPic}, {"intl", "sTime", ":"}, {"intl", "iCountry", "1"}});
        char dst[80];
        std::memset(dst, 'Z', sizeof dst);
        EXPECT_EQ(FMTGetGeeLongDatePic(dst, 40, r.withTime), r.result) << "FMTGetGeeLongDatePic under " << r.longPic << ", " << r.withTime;
        EXPECT_STREQ(dst, r.want) << "FMTGetGeeLongDatePic under " << r.longPic << ", " << r.withTime;
    }
}

} // namespace
