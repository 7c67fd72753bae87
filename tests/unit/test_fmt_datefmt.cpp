// Writing dates: FMTFormatDateTime, FMTGetMaxFormattedDTLen, the default
// pictures and what a picture holds. Blocks start as DateBlock says; a row
// changes what it names. Japanese texts are Shift-JIS bytes.
#include "test_fmt_date_env.h"
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

Change Pic(const char* picture, DWORD flags = 0, LONG style = 0) {
    return [=](FMTCNTLBLOCK& b) { b.lpszLongPic = b.lpszShortPic = const_cast<char*>(picture), b.dwFlags = flags, b.iDateType = DWORD(style); };
}
Change Style(LONG style) { return [=](FMTCNTLBLOCK& b) { b.iDateType = DWORD(style); }; }
Change Zero(const char* picture, DWORD flags = 0) { return [=](FMTCNTLBLOCK& b) { Pic(picture, flags)(b), b.bTimeLeadZero = 1; }; }
Change Profile(DWORD flags) { return [=](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags = flags; }; }
DATDEF At(LONG h, LONG mi = 0, LONG s = 0, LONG us = 0) { return {1, 1, 2000, h, mi, s, us}; } // 1 January 2000
const DATDEF kJan1 = At(0), k130509 = At(13, 5, 9);

// The block as a failure message tells it: what the rows change.
std::string Described(const FMTCNTLBLOCK& b) {
    return "nType " + std::to_string(b.nType) + ", picture \"" + (b.lpszLongPic ? b.lpszLongPic : "(null)") + "\", style " + std::to_string(b.iDateType) +
           ", flags " + std::to_string(b.dwFlags) + ", profile " + std::to_string(b.bUseProfile) + ", 24-hour " + std::to_string(b.b24Hour) +
           ", zero " + std::to_string(b.bTimeLeadZero) + ", separator \"" + b.lpszTimeSep + "\", on " + ShowDate(b.datDef);
}

// The result is 1 when a text is written; out null: 0 and the buffer untouched; "": 0 and an empty text.
struct FormatRow { DATDEF d; Change setup; const char* out; LONG nType = FMT_DATE; };

void ExpectFormats(std::initializer_list<FormatRow> rows, int localeNames = 0) {
    for (const FormatRow& r : rows) {
        DateBlock b(r.nType, r.d);
        if (r.setup) r.setup(b.b);
        std::string what = Described(b.b);
        ScriptedHeap heap;
        int got = FMTFormatDateTime(&b.b, localeNames);
        std::string want = r.out ? r.out : std::string(sizeof b.out - 1, '~');
        EXPECT_EQ(std::make_tuple(got, Hex(b.out), heap.Outstanding()), std::make_tuple(r.out && *r.out ? 1 : 0, Hex(want), 0))
            << "FMTFormatDateTime of " << what << ": " << b.out << " (result, text, blocks left)";
    }
}

#define YMD(y, m, d) y NEN m GATSU d NICHI

// The keywords and the Japanese styles write Shift-JIS whatever the code page.
TEST(FMTFormatDateTime, Pictures) {
    ScriptedClock clock(2026);
    auto sep = [](const char* t, DWORD flags) { return [=](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= flags, b.lpszTimeSep = const_cast<char*>(t); }; };
    const char* const kFull = "hhhh:mm:ss.mmmmmm";
    const DATDEF heisei1 = D(1, 8, 1989, 12), meiji0 = D(9, 7, 1868);
    ExpectFormats({
        {kJan1, nullptr, "Saturday, January 01, 2000"}, {D(9, 9, 2000), Pic("d dd M MM"), "9 09 9 09"}, {D(1, 1, 5), Pic("yy yyyy"), "05 0005"},
        {kJan1, Pic("d  'of' M, yyyy'\x94\x4E'"), "1  of 1, 2000\x94\x4E"}, {kJan1, Pic("yyy"), ""}, {kJan1, Style(4), ""}, {kJan1, nullptr, nullptr, 4},
        {kJan1, Profile(0), ""}, {k130509, Style(1), "1/1/00 1:05:09 PM", FMT_DATETIME}, {At(0, 5, 9), Style(1), "1/1/00 12:05:09 AM", FMT_DATETIME},
        {k130509, [](FMTCNTLBLOCK& b) { b.iDateType = 1, b.dwFlags = 0; }, "1/1/00", FMT_DATETIME},
        {At(7, 5, 9, 123), sep("::", FMTF_MICROSECONDS), "7::05::09::000123", FMT_TIME}, {At(7), Zero("hhhh"), "07", FMT_TIME},
        {At(7), Zero("hhhh", FMTF_NOHOURZERO), "7", FMT_TIME}, {At(21), Zero("hh"), "09", FMT_TIME}, {At(7), Pic("h", 0, 2), "", FMT_TIME},
        {kJan1, Pic("S"), "", FMT_TIME}, {At(10, 30, 15), Pic(kFull, FMTF_OMITZEROMICRO), "10:30:15", FMT_TIME},
        {At(10, 30, 15, 1), Pic(kFull, FMTF_OMITZEROMICRO), "10:30:15.000001", FMT_TIME},
        {heisei1, Pic("E", FMTF_MICROSECONDS), HEISEI YMD("01", "01", "08") "12:00:00 PM"}, {heisei1, Pic("ED"), HEISEI YMD("01", "01", "08")},
        {At(10, 30, 15), Pic("T", FMTF_MICROSECONDS), "10:30:15 AM"}, {At(10, 30, 15), Pic("T", FMTF_DEFAULTTIME), "10:30:15 AM", FMT_DATETIME},
        {D(1, 5, 2000, 10), Pic("x", 0, 2), YMD("2000", "01", "05"), FMT_DATETIME}, {D(1, 7, 1989), Pic("x", 0, 3), SHOWA YMD("64", "01", "07")},
        {D(9, 9, 2098), Pic("x", 0, 3), HEISEI YMD("10", "09", "09")}, {meiji0, Pic("x", 0, 3), ""},
    });
}

TEST(FMTFormatDateTime, ProfileAndDefaults) {
    DateProfile profile({{"intl", "sShortDate", "dd.MM.yy"}, {"intl", "sLongDate", "d MMMM yyyy"}, {"intl", "iTime", "1"}, {"intl", "sTime", "."},
                         {"intl", "iTLZero", "1"}, {"OXLEEKIT", "sDateType", "ShortGregorian"}});
    const DATDEF d = D(3, 5, 2024, 7, 8, 9);
    ExpectFormats({
        {d, Profile(FMTF_DEFAULTTIME | FMTF_LONGDATE), "5 March 2024"}, {d, Profile(FMTF_DEFAULTTIME), "05.03.24 07.08.09", FMT_DATETIME},
        {d, Pic(""), "05.03.24"}, {d, Pic("L"), "5 March 2024"},
    });
    // want null: no room, the buffer untouched
    const struct { const char* what; int(OXLAPI* call)(char*, DWORD); DWORD cb; const char* want; } rows[] = {
        {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 3, "dd"}, {"FMTGetDefaultLongDatePic", FMTGetDefaultLongDatePic, 64, "d MMMM yyyy"},
        {"FMTGetDefaultDatePic", FMTGetDefaultDatePic, 64, "dd.MM.yy"}, {"FMTGetDefaultShortDatePic", FMTGetDefaultShortDatePic, 0, nullptr},
    };
    for (const auto& r : rows) {
        char pic[65] = {};
        std::memset(pic, 'Z', 64);
        int got = r.call(pic, r.cb);
        EXPECT_EQ(std::make_pair(got, std::string(pic)), std::make_pair(1, std::string(r.want ? r.want : std::string(64, 'Z'))))
            << r.what << "(dst, " << r.cb << ")";
    }
}

// The system's names for the user's locale (the POSIX backend takes them from
// the environment's LC_TIME): the rows hold where that locale speaks English.
TEST(FMTFormatDateTime, LocaleNames) {
    char monday[32] = "";
    ASSERT_GT(gOsl.system->GetLocaleInfoA(0x400, 0x2A, monday, sizeof monday), 0) << "GetLocaleInfoA of the name of Monday";
    if (std::string(monday) != "Monday") GTEST_SKIP() << "the user's locale names Monday \"" << monday << "\"";
    ExpectFormats({
        {D(1, 2, 2000), Pic("dddd ddd"), "Sunday Sun"}, {D(1, 7, 2000), Pic("dddd ddd"), "Friday Fri"}, {kJan1, Pic("MMMM MMM"), "January Jan"},
    }, 1);
}

TEST(FMTGetMaxFormattedDTLen, Widths) {
    const struct { LONG nType; Change setup; int nMinimum, result; DWORD flagsAfter; } rows[] = {
        {FMT_DATE, nullptr, 0, 29, FMTF_DEFAULTTIME}, {FMT_DATE, nullptr, 40, 40, FMTF_DEFAULTTIME}, {FMT_DATE, Pic("yyy"), -5, -1, 0},
        {FMT_DATE, Pic("d dd M MM yy h hh hhh hhhh mm ss"), 0, 11 * 2 + 10, 0}, {FMT_DATE, Pic("'abc'  AMPM"), 0, 3 + 2 + 2, 0},
        {4, nullptr, 40, -1, FMTF_DEFAULTTIME}, {FMT_DATE, Profile(0), 40, -1, 0}, {FMT_DATE, Pic("ED"), 40, 16, 0},
        {FMT_DATE, Pic("E", FMTF_MICROSECONDS), 0, 16 + 11, 0},
        {FMT_TIME, [](FMTCNTLBLOCK& b) { b.b24Hour = 1, b.dwFlags |= FMTF_MICROSECONDS; }, 0, 15, FMTF_DEFAULTTIME | FMTF_MICROSECONDS},
        {FMT_DATETIME, Style(1), 0, (6 + 13 + 2) + 8 + 1 + 11, FMTF_DEFAULTTIME},
    };
    DateBlock first(FMT_DATE); // the thread's item and the calendar's names are made before any count
    FMTGetMaxFormattedDTLen(&first.b, 0);
    for (const auto& r : rows) {
        DateBlock b(r.nType);
        if (r.setup) r.setup(b.b);
        std::string what = Described(b.b) + ", nMinimum " + std::to_string(r.nMinimum);
        ScriptedHeap heap;
        int got = FMTGetMaxFormattedDTLen(&b.b, r.nMinimum);
        EXPECT_EQ(std::make_tuple(got, b->dwFlags, heap.Outstanding()), std::make_tuple(r.result, r.flagsAfter, 0))
            << "FMTGetMaxFormattedDTLen of " << what << " (result, flags, blocks left)";
    }
}

TEST(FMTGetGeeLongDatePic, WithoutNames) {
    const struct { const char* longPic; int withTime, result; const char* want; } rows[] = {
        {"dddd, MMMM dd, yyyy", 0, 1, "MMMM dd, yyyy"}, {"MMMM dd, yyyy, dddd", 0, 1, "MMMM dd, yyyy"}, {"d. MMMM'ta' yyyy", 0, 1, "d. MMMM  yyyy"},
        {"yyyy ddd, dddd M", 0, 1, "yyyy M"}, {"dddd", 0, 1, ""}, {"dddd, MMMM dd, yyyy", 1, 1, "MMMM dd, yyyy hh:mm:ss AMPM"}, {"yyy", 0, 0, ""},
    };
    for (const auto& r : rows) {
        DateProfile profile({{"intl", "sLongDate", r.longPic}, {"intl", "sTime", ":"}, {"intl", "iCountry", "1"}});
        char dst[80];
        std::memset(dst, 'Z', sizeof dst);
        int got = FMTGetGeeLongDatePic(dst, 40, r.withTime);
        EXPECT_EQ(std::make_pair(got, std::string(dst)), std::make_pair(r.result, std::string(r.want)))
            << "FMTGetGeeLongDatePic under " << r.longPic << ", " << r.withTime;
    }
}

} // namespace
