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

struct FormatRow {
    const char* what;
    LONG nType;
    DATDEF d;
    Setup setup;
    int result;
    const char* out;
};

const DATDEF kJan1 = {1, 1, 2000, 0, 0, 0, 0};
const DATDEF k130509 = {1, 1, 2000, 13, 5, 9, 0};

void ExpectFormats(std::initializer_list<FormatRow> rows, int localeNames = 0) {
    for (const FormatRow& r : rows) {
        DateBlock b(r.nType, r.d);
        if (r.setup) r.setup(b.b);
        int got = FMTFormatDateTime(b.get(), localeNames);
        EXPECT_EQ(got, r.result) << "FMTFormatDateTime: " << r.what << " on " << ShowDate(r.d);
        std::string want = r.out ? r.out : std::string(sizeof b.out - 1, '~'); // null: untouched
        EXPECT_EQ(Hex(b.out), Hex(want)) << "the text of " << r.what << " on " << ShowDate(r.d) << ": " << b.out;
    }
}

TEST(FMTFormatDateTime, Pictures) {
    DateClock clock(2026);
    ExpectFormats({
        {"the long picture", FMT_DATE, kJan1, nullptr, 1, "Saturday, January 01, 2000"},
        {"the short picture (style 1)", FMT_DATE, kJan1, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 1, "1/1/00"},
        {"d dd M MM", FMT_DATE, {9, 9, 2000, 0, 0, 0, 0}, Pic("d dd M MM"), 1, "9 09 9 09"},
        {"d dd M MM", FMT_DATE, {10, 10, 2000, 0, 0, 0, 0}, Pic("d dd M MM"), 1, "10 10 10 10"},
        {"yy yyyy", FMT_DATE, {1, 1, 5, 0, 0, 0, 0}, Pic("yy yyyy"), 1, "05 0005"},
        {"yy yyyy", FMT_DATE, {1, 1, 12345, 0, 0, 0, 0}, Pic("yy yyyy"), 1, "45 12345"},
        {"yy yyyy", FMT_DATE, {1, 1, 10, 0, 0, 0, 0}, Pic("yy yyyy"), 1, "10 0010"},
        {"ddd MMM", FMT_DATE, {12, 31, 1999, 0, 0, 0, 0}, Pic("ddd MMM"), 1, "Fri Dec"},
        {"MMMM of month 13", FMT_DATE, {13, 1, 2000, 0, 0, 0, 0}, Pic("'['MMMM']'"), 1, "[]"},
        {"blanks and words", FMT_DATE, kJan1, Pic("d  'of' M, yyyy'\x94\x4E'"), 1, "1  of 1, 2000\x94\x4E"},
        {"an invalid picture", FMT_DATE, kJan1, Pic("yyy"), 0, ""},
        {"no picture", FMT_DATE, kJan1, Pic(nullptr), 0, ""},
        {"style 4: no picture", FMT_DATE, kJan1, [](FMTCNTLBLOCK& b) { b.iDateType = 4; }, 0, ""},
        {"nType 0", 0, kJan1, nullptr, 0, nullptr},
        {"nType 4", 4, kJan1, nullptr, 0, nullptr},
        {"the profile without FMTF_DEFAULTTIME", FMT_DATE, kJan1, [](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = 0; }, 0, ""},
    });
}

TEST(FMTFormatDateTime, Times) {
    ExpectFormats({
        {"date-time, default time, 12-hour, no zero", FMT_DATETIME, k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 1,
         "1/1/00 1:05:09 PM"},
        {"date-time, default time, lead zero", FMT_DATETIME, k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1, b.bTimeLeadZero = 1; }, 1,
         "1/1/00 01:05:09 PM"},
        {"date-time, hour 0", FMT_DATETIME, {1, 1, 2000, 0, 5, 9, 0}, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 1, "1/1/00 12:05:09 AM"},
        {"date-time, hour 12", FMT_DATETIME, {1, 1, 2000, 12, 5, 9, 0}, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 1, "1/1/00 12:05:09 PM"},
        {"date-time, hour 11", FMT_DATETIME, {1, 1, 2000, 11, 0, 0, 0}, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 1, "1/1/00 11:00:00 AM"},
        {"date-time without the default time", FMT_DATETIME, k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1, b.dwFlags = 0; }, 1, "1/1/00"},
        {"time, 24-hour with microseconds", FMT_TIME, {1, 1, 2000, 7, 5, 9, 123},
         [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= FMTF_MICROSECONDS, b.lpszTimeSep = const_cast<char*>("."); }, 1, "7.05.09.000123"},
        {"time, separator cut to two bytes", FMT_TIME, {1, 1, 2000, 7, 5, 9, 0},
         [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.lpszTimeSep = const_cast<char*>("::::"); }, 1, "7::05::09"},
        {"hhhh, no zero", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0}, Pic("hhhh"), 1, "7"},
        {"hhhh, zero", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0}, [](FMTCNTLBLOCK& b) { Pic("hhhh")(b), b.bTimeLeadZero = 1; }, 1, "07"},
        {"hhhh, zero, hour 10", FMT_TIME, {1, 1, 2000, 10, 0, 0, 0}, [](FMTCNTLBLOCK& b) { Pic("hhhh")(b), b.bTimeLeadZero = 1; }, 1, "10"},
        {"hhhh, zero, FMTF_NOHOURZERO", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0},
         [](FMTCNTLBLOCK& b) { Pic("hhhh", FMTF_NOHOURZERO)(b), b.bTimeLeadZero = 1; }, 1, "7"},
        {"hhh h, zero", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0}, [](FMTCNTLBLOCK& b) { Pic("hhh h")(b), b.bTimeLeadZero = 1; }, 1, "7 7"},
        {"hh, zero, hour 21", FMT_TIME, {1, 1, 2000, 21, 0, 0, 0}, [](FMTCNTLBLOCK& b) { Pic("hh")(b), b.bTimeLeadZero = 1; }, 1, "09"},
        {"mm ss", FMT_TIME, {1, 1, 2000, 0, 9, 10, 0}, Pic("mm ss"), 1, "09 10"},
        {"the short picture by style 1", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0},
         [](FMTCNTLBLOCK& b) { b.dwFlags = 0, b.iDateType = 1, b.lpszShortPic = const_cast<char*>("h"); }, 1, "7"},
        {"no picture by style 2", FMT_TIME, {1, 1, 2000, 7, 0, 0, 0}, Pic("h", 0, 2), 0, ""},
        {"a keyword in a time picture", FMT_TIME, kJan1, Pic("S"), 0, ""},
        {"zero microseconds left out", FMT_TIME, {1, 1, 2000, 10, 30, 15, 0}, Pic("hhhh:mm:ss.mmmmmm", FMTF_OMITZEROMICRO), 1, "10:30:15"},
        {"microsecond 1 kept", FMT_TIME, {1, 1, 2000, 10, 30, 15, 1}, Pic("hhhh:mm:ss.mmmmmm", FMTF_OMITZEROMICRO), 1, "10:30:15.000001"},
        {"zero microseconds without the flag", FMT_TIME, {1, 1, 2000, 10, 30, 15, 0}, Pic("hhhh:mm:ss.mmmmmm"), 1, "10:30:15.000000"},
        {"negative microseconds", FMT_TIME, {1, 1, 2000, 10, 30, 15, -1}, Pic("hhhh:mm:ss.mmmmmm"), 1, "10:30:15"},
        {"AMPM at 23", FMT_TIME, {1, 1, 2000, 23, 0, 0, 0}, Pic("AMPM"), 1, "PM"},
    });
}

TEST(FMTFormatDateTime, KeywordsAndJapaneseStyles) {
    IntlUnder japanese(kJapanese);
    const DATDEF heisei1 = {1, 8, 1989, 12, 0, 0, 0}, meiji0 = {9, 7, 1868, 0, 0, 0, 0};
    ExpectFormats({
        {"E", FMT_DATE, heisei1, [](FMTCNTLBLOCK& b) { Pic("E", FMTF_MICROSECONDS)(b); }, 1, HEISEI "01" NEN "01" GATSU "08" NICHI "12:00:00 PM"},
        {"ED", FMT_DATE, heisei1, Pic("ED"), 1, HEISEI "01" NEN "01" GATSU "08" NICHI},
        {"ED before the first era", FMT_DATE, meiji0, Pic("ED"), 0, ""},
        {"E before the first era", FMT_DATE, meiji0, Pic("E"), 0, ""},
        {"T", FMT_DATE, {1, 1, 2000, 10, 30, 15, 0}, Pic("T", FMTF_MICROSECONDS), 1, "10:30:15 AM"},
        {"T in a date-time: the time once", FMT_DATETIME, {1, 1, 2000, 10, 30, 15, 0}, Pic("T", FMTF_DEFAULTTIME), 1, "10:30:15 AM"},
        {"style 2", FMT_DATE, {1, 5, 2000, 0, 0, 0, 0}, Pic("x", 0, 2), 1, "2000" NEN "01" GATSU "05" NICHI},
        {"style 2, year 5", FMT_DATE, {11, 25, 5, 0, 0, 0, 0}, Pic("x", 0, 2), 1, "0005" NEN "11" GATSU "25" NICHI},
        {"style 2, date-time", FMT_DATETIME, {1, 5, 2000, 10, 30, 15, 0}, Pic("x", FMTF_DEFAULTTIME, 2), 1,
         "2000" NEN "01" GATSU "05" NICHI "10:30:15 AM"},
        {"style 2, date-time, no default time", FMT_DATETIME, {1, 5, 2000, 10, 30, 15, 0}, Pic("x", 0, 2), 1,
         "2000" NEN "01" GATSU "05" NICHI},
        {"style 3, first day", FMT_DATE, heisei1, Pic("x", 0, 3), 1, HEISEI "01" NEN "01" GATSU "08" NICHI},
        {"style 3, the day before", FMT_DATE, {1, 7, 1989, 0, 0, 0, 0}, Pic("x", 0, 3), 1, SHOWA "64" NEN "01" GATSU "07" NICHI},
        {"style 3, year 2", FMT_DATE, {12, 31, 1990, 0, 0, 0, 0}, Pic("x", 0, 3), 1, HEISEI "02" NEN "12" GATSU "31" NICHI},
        {"style 3, era year 110", FMT_DATE, {1, 1, 2098, 0, 0, 0, 0}, Pic("x", 0, 3), 1, HEISEI "10" NEN "01" GATSU "01" NICHI},
        {"style 3, before the first era", FMT_DATE, meiji0, Pic("x", 0, 3), 0, ""},
        {"style 3, date-time", FMT_DATETIME, {1, 8, 1989, 22, 0, 0, 0}, Pic("x", FMTF_DEFAULTTIME, 3), 1,
         HEISEI "01" NEN "01" GATSU "08" NICHI "10:00:00 PM"},
        {"style 3, date-time before the first era", FMT_DATETIME, meiji0, Pic("x", FMTF_DEFAULTTIME, 3), 0, ""},
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
    const DATDEF d = {3, 5, 2024, 7, 8, 9, 0};
    auto profileFlags = [](DWORD flags) { return [=](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = flags; }; };
    ExpectFormats({
        {"the profile's short picture", FMT_DATE, d, profileFlags(FMTF_DEFAULTTIME), 1, "05.03.24"},
        {"the profile's long picture (FMTF_LONGDATE)", FMT_DATE, d, profileFlags(FMTF_DEFAULTTIME | FMTF_LONGDATE), 1, "5 March 2024"},
        {"the profile's date and time", FMT_DATETIME, d, profileFlags(FMTF_DEFAULTTIME), 1, "05.03.24 07.08.09"},
        {"keyword \"\"", FMT_DATE, d, Pic(""), 1, "05.03.24"},
        {"keyword S", FMT_DATE, d, Pic("S"), 1, "05.03.24"},
        {"keyword L", FMT_DATE, d, Pic("L"), 1, "5 March 2024"},
        {"keyword s is a picture", FMT_DATE, d, Pic("s"), 0, ""},
    });
    char pic[64];
    const struct { const char* what; int (*call)(char*, DWORD); DWORD cb; const char* want; } rows[] = {
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 64, "dd.MM.yy"},
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 3, "dd"},
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 1, ""},
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
                      {"dddd, ddd", FMT_DATE, kJan1, Pic("dddd ddd"), 1, "L2F L36"}, // Saturday: day 1
                      {"dddd, ddd", FMT_DATE, {1, 2, 2000, 0, 0, 0, 0}, Pic("dddd ddd"), 1, "L30 L37"},
                      {"dddd, ddd", FMT_DATE, {1, 3, 2000, 0, 0, 0, 0}, Pic("dddd ddd"), 1, "L2A L31"},
                      {"dddd, ddd", FMT_DATE, {1, 7, 2000, 0, 0, 0, 0}, Pic("dddd ddd"), 1, "L2E "}, // 0x35 unknown
                      {"MMMM, MMM", FMT_DATE, kJan1, Pic("MMMM MMM"), 1, "L38 L44"},
                      {"MMMM, MMM", FMT_DATE, {12, 1, 2000, 0, 0, 0, 0}, Pic("MMMM MMM"), 1, "L43 L4F"},
                      {"MMMM of month 0", FMT_DATE, {0, 1, 2000, 0, 0, 0, 0}, Pic("'['MMMM']'"), 1, "[]"},
                      {"MMMM of month 13", FMT_DATE, {13, 1, 2000, 0, 0, 0, 0}, Pic("'['MMMM']'"), 1, "[]"},
                  },
                  1);
}

struct LenRow { const char* what; LONG nType; Setup setup; int nMinimum, result; DWORD flagsAfter; };

TEST(FMTGetMaxFormattedDTLen, Widths) {
    const LenRow rows[] = {
        {"dddd, MMMM dd, yyyy", FMT_DATE, nullptr, 0, 29, FMTF_DEFAULTTIME},
        {"dddd, MMMM dd, yyyy with a minimum", FMT_DATE, nullptr, 40, 40, FMTF_DEFAULTTIME},
        {"dddd, MMMM dd, yyyy with a minimum of 29", FMT_DATE, nullptr, 29, 29, FMTF_DEFAULTTIME},
        {"ddd MMM yyyy mmmmmm", FMT_DATE, Pic("ddd MMM yyyy mmmmmm"), 0, 3 + 1 + 3 + 1 + 4 + 1 + 6, 0},
        {"d dd M MM yy h hh hhh hhhh mm ss", FMT_DATE, Pic("d dd M MM yy h hh hhh hhhh mm ss"), 0, 11 * 2 + 10, 0},
        {"'abc'  AMPM", FMT_DATE, [](FMTCNTLBLOCK& b) { Pic("'abc'  AMPM")(b), b.lpsz1159 = const_cast<char*>("a.m."); }, 0, 3 + 2 + 4, 0},
        {"AMPM, the afternoon longer", FMT_DATE, [](FMTCNTLBLOCK& b) { Pic("AMPM")(b), b.lpsz2359 = const_cast<char*>("p.m."); }, 0, 4, 0},
        {"an invalid picture", FMT_DATE, Pic("yyy"), -5, -1, 0},
        {"an invalid picture with a minimum", FMT_DATE, Pic("yyy"), 3, 3, 0},
        {"a bad nType", 0, nullptr, 40, -1, FMTF_DEFAULTTIME},
        {"nType 4", 4, nullptr, 40, -1, FMTF_DEFAULTTIME},
        {"the profile without FMTF_DEFAULTTIME", FMT_DATE, [](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = 0; }, 40, -1, 0},
        {"ED", FMT_DATE, Pic("ED"), 40, 16, 0},
        {"E", FMT_DATE, Pic("E", FMTF_MICROSECONDS), 0, 16 + 11, 0},
        {"T", FMT_DATE, Pic("T", FMTF_MICROSECONDS), 0, 11, 0},
        {"the default time", FMT_TIME, nullptr, 0, 11, FMTF_DEFAULTTIME},
        {"the default 24-hour time with microseconds", FMT_TIME,
         [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= FMTF_MICROSECONDS; }, 0, 15, FMTF_DEFAULTTIME | FMTF_MICROSECONDS},
        {"a date and the default time", FMT_DATETIME, [](FMTCNTLBLOCK& b) { b.iDateType = 1; }, 0, (6 + 13 + 2) + 8 + 1 + 11,
         FMTF_DEFAULTTIME},
        {"style 2: nothing to measure", FMT_DATE, Pic("x", 0, 2), 5, 5, 0},
        {"style 3, date-time: the time", FMT_DATETIME, Pic("x", FMTF_DEFAULTTIME, 3), 5, 11, FMTF_DEFAULTTIME},
        {"style 3, date-time without a time", FMT_DATETIME, Pic("x", 0, 3), 5, 5, 0},
        {"style 4", FMT_DATE, Pic("x", 0, 4), 5, 5, 0},
    };
    for (const LenRow& r : rows) {
        DateBlock b(r.nType);
        if (r.setup) r.setup(b.b);
        EXPECT_EQ(FMTGetMaxFormattedDTLen(b.get(), r.nMinimum), r.result) << "FMTGetMaxFormattedDTLen: " << r.what << ", " << r.nMinimum;
        EXPECT_EQ(b->dwFlags, r.flagsAfter) << "flags after FMTGetMaxFormattedDTLen: " << r.what;
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
}

TEST(FMTGetGeeLongDatePic, WithoutNames) {
    const struct { const char* longPic; int withTime, result; const char* want; } rows[] = {
        {"dddd, MMMM dd, yyyy", 0, 1, "MMMM dd, yyyy"},
        {"MMMM dd, yyyy, dddd", 0, 1, "MMMM dd, yyyy"},
        {"d. MMMM'ta' yyyy", 0, 1, "d. MMMM  yyyy"},
        {"d'. 'MMMM yyyy", 0, 1, "d. MMMM yyyy"},
        {"yyyy ddd, dddd M", 0, 1, "yyyy M"},
        {"dddd", 0, 1, ""},
        {"dddd, MMMM dd, yyyy", 1, 1, "MMMM dd, yyyy hh:mm:ss AMPM"},
        {"yyy", 0, 0, ""},
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
