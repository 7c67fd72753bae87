// The calendar: names, day numbers, the calendar test, the two-digit-year
// window, the eras and the fixed-position date text.
#include "format/fmtint.h"
#include "core/libstate.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <langinfo.h>
#include <locale.h>
#endif

namespace {

struct Day { LONG month, day, year; };
std::string Show(LONG m, LONG d, LONG y) { return std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y); }
std::string Show(const Day& d) { return Show(d.month, d.day, d.year); }

// Every day of the years 1 to 9999, walked with the leap-year rule from
// 1 January 1 (day 1721426, a Monday): the day numbers follow one another,
// each reads back as its date, and the weekdays go round from Saturday (1).
TEST(FmtCalendar, EveryDayOfTenThousandYears) {
    static constexpr LONG kLength[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    LONG expected = 1721426, weekday = 3, failures = 0;
    for (LONG y = 1; y <= 9999 && failures < 5; ++y)
        for (LONG m = 1; m <= 12; ++m)
            for (LONG d = 1; d <= kLength[m - 1] + (m == 2 && ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0)); ++d) {
                LONG j = FMTDateToJulian(m, d, y), out[3];
                FMTJulianToDate(expected, out);
                int w = FMTWeekday(m, d, y);
                if (j != expected || out[0] != m || out[1] != d || out[2] != y || w != weekday)
                    failures++, ADD_FAILURE() << Show(m, d, y) << ": day " << j << " weekday " << w << ", expected " << expected
                                              << " weekday " << weekday << "; back: " << Show(out[0], out[1], out[2]);
                ++expected, weekday = weekday % 7 + 1;
            }
}

TEST(FmtCalendar, CalendarTest) {
    struct Row { LONG month, day, year; const char* dayName; int valid; } rows[] = {
        {2, 29, 2000, nullptr, 1}, {2, 29, 1900, nullptr, 0}, {2, 29, 2004, nullptr, 1}, {2, 29, 2001, nullptr, 0},
        {2, 28, 2001, nullptr, 1}, {2, 29, 1600, nullptr, 1}, {2, 30, 2000, nullptr, 0}, {4, 30, 2000, nullptr, 1},
        {4, 31, 2000, nullptr, 0}, {6, 31, 2000, nullptr, 0}, {9, 31, 2000, nullptr, 0}, {11, 31, 2000, nullptr, 0},
        {1, 31, 2000, nullptr, 1}, {3, 31, 2000, nullptr, 1}, {12, 31, 2000, nullptr, 1}, {1, 32, 2000, nullptr, 0},
        {13, 1, 2000, nullptr, 0}, {0, 1, 2000, nullptr, 0}, {1, 0, 2000, nullptr, 0}, {12, 1, 2000, nullptr, 1},
        {10, 10, 1582, nullptr, 1}, {1, 1, 2000, "sat", 1}, {1, 1, 2000, "SATURDAY", 1}, {1, 1, 2000, "Sunday", 0},
        {1, 1, 2000, "", 1}, {1, 2, 2000, "Sun", 1}, {1, 7, 2000, "friday", 1}, {1, 7, 2000, "Fri", 1}, {1, 7, 2000, "Thu", 0},
        {13, 1, 2000, "sat", 0}, {1, 32, 2000, "sat", 0}, {3, 15, 2024, "Friday", 1}};
    for (const Row& r : rows)
        EXPECT_EQ(FMTIsDateValid(r.month, r.day, r.year, r.dayName), r.valid)
            << "FMTIsDateValid(" << Show(r.month, r.day, r.year) << ", " << (r.dayName ? r.dayName : "null") << ")";
}

TEST(FmtCalendar, NamesInNumberOrder) {
    const std::string months[] = {"", "January", "February", "March", "April", "May", "June", "July", "August", "September",
                                  "October", "November", "December", ""},
                      days[] = {"", "Saturday", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "", "", "", "", "", ""};
    for (int n = 0; n <= 13; ++n) {
        EXPECT_EQ(FMTMonthLongName(n) + std::string("|") + FMTMonthShortName(n), months[n] + "|" + months[n].substr(0, 3)) << "month " << n;
        EXPECT_EQ(FMTDayLongName(n) + std::string("|") + FMTDayShortName(n), days[n] + "|" + days[n].substr(0, 3)) << "day " << n;
    }
}

// The system's names of the user's locale (English in the suites' environment), by item number.
TEST(FmtCalendar, LocaleNames) {
    const struct { DWORD item; const char* name; } rows[] = {{0x2A, "Monday"}, {0x30, "Sunday"}, {0x31, "Mon"}, {0x36, "Sat"},
        {0x37, "Sun"}, {0x38, "January"}, {0x43, "December"}, {0x44, "Jan"}, {0x4F, "Dec"}, {0x50, ""},
#ifdef _WIN32
        {0x29, "PM"}}; // the system has every item; the POSIX backend only the names
#else
        {0x29, ""}};
#endif
#ifndef _WIN32
    // The POSIX backend takes the names from the locale the environment names
    // (LANG, LC_ALL, LC_TIME), fixed once per process: the rows hold only when
    // that locale speaks English.
    locale_t env = newlocale(LC_TIME_MASK, "", nullptr);
    std::string monday = env ? nl_langinfo_l(DAY_2, env) : "Monday";
    if (env) freelocale(env);
    if (monday != "Monday") GTEST_SKIP() << "the environment's locale names Monday \"" << monday << "\", not English";
#endif
    for (const auto& r : rows) {
        char name[32] = "?";
        int size = gOsl.system->GetLocaleInfoA(0x400, r.item, nullptr, 0);
        EXPECT_EQ(gOsl.system->GetLocaleInfoA(0x400, r.item, name, *r.name ? size : 32), size) << "GetLocaleInfoA(0x400, " << r.item << ")";
        EXPECT_EQ(size ? name : "", std::string(r.name)) << "GetLocaleInfoA(0x400, " << r.item << "), " << size << " bytes";
    }
}

// The lookups search the sorted tables: every name and near misses, under a single- and a double-byte page.
TEST(FmtCalendar, NumberOfAName) {
    struct Row { const char* name; int month, day; } rows[] = {
        {"Jan", 1, 0}, {"JANUARY", 1, 0}, {"january", 1, 0}, {"Feb", 2, 0}, {"march", 3, 0}, {"Apr", 4, 0}, {"April", 4, 0},
        {"May", 5, 0}, {"MAY", 5, 0}, {"Jun", 6, 0}, {"July", 7, 0}, {"aug", 8, 0}, {"September", 9, 0}, {"Oct", 10, 0},
        {"November", 11, 0}, {"Dec", 12, 0}, {"December", 12, 0}, {"Janu", 0, 0}, {"Sept", 0, 0}, {"", 0, 0},
        {"Decembers", 0, 0}, {"A", 0, 0}, {"Zzz", 0, 0}, {"Aaa", 0, 0}, {"sat", 0, 1}, {"Saturday", 0, 1}, {"Sun", 0, 2},
        {"SUNDAY", 0, 2}, {"monday", 0, 3}, {"Tue", 0, 4}, {"Wednesday", 0, 5}, {"Thu", 0, 6}, {"Fri", 0, 7},
        {"Friday", 0, 7}, {"Tues", 0, 0}};
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const Row& r : rows) {
            EXPECT_EQ(FMTMonthFromName(r.name), r.month) << "FMTMonthFromName(\"" << r.name << "\") under " << l.name;
            EXPECT_EQ(FMTDayFromName(r.name), r.day) << "FMTDayFromName(\"" << r.name << "\") under " << l.name;
        }
    }
    EXPECT_EQ(FMTMonthFromName(nullptr), 0);
}

// A string missing from the table: nothing counts as loaded, every lookup fails, and the next question tries again.
TEST(FmtCalendar, MissingStringLeavesTextUnloaded) {
    for (UINT missing : {2001u, 2024u, 2025u, 2030u, 2037u, 2038u, 2039u, 2044u}) {
        ScriptedProfile store({}, {missing});
        EXPECT_EQ(FMTLoadCalendarText() + gpLibState->bTextLoaded + FMTMonthFromName("Jan") + FMTDayFromName("Sat") +
                      FMTIsDateValid(1, 1, 2000, nullptr), 0) << "string " << missing << " missing";
        EXPECT_EQ(FMTMonthLongName(1) + std::string(FMTDayShortName(1)), "") << "string " << missing << " missing";
    }
    EXPECT_EQ(FMTMonthFromName("Jan"), 1) << "after the strings came back";
}

TEST(FmtCalendar, TwoDigitYearWindow) {
    struct Row { WORD now; LONG yy, century; } rows[] = {
        {2026, 49, 2000}, {2026, 50, 1900}, {2026, 0, 2000}, {2026, 99, 1900}, {1999, 49, 2000}, {1999, 50, 1900},
        {1949, 49, 1900}, {1949, 50, 1800}, {2049, 49, 2000}, {2049, 50, 1900}, {2050, 49, 2100}, {2050, 50, 2000},
        {2050, 0, 2100}, {2050, 99, 2000}, {2000, 0, 2000}, {2000, 99, 1900}, {2099, 0, 2100}, {2099, 99, 2000},
        {2100, 49, 2100}, {2100, 50, 2000}};
    for (const Row& r : rows) {
        ScriptedClock clock(r.now);
        EXPECT_EQ(FMTCentury(r.yy), r.century) << "FMTCentury(" << r.yy << ") in " << r.now;
    }
}

// Eras by their first days; their names are two double-byte characters in code page 932.
TEST(FmtCalendar, EraOfADate) {
    IntlUnder env(kJapanese);
    const std::string names[] = {"", "96 BE 8E A1, 2 characters", "91 E5 90 B3, 2 characters", "8F BA 98 61, 2 characters",
                                 "95 BD 90 AC, 2 characters"};
    struct Row { Day date; int era; LONG eraYear; } rows[] = {
        {{1, 8, 1989}, 3, 1}, {{12, 31, 1989}, 3, 1}, {{1, 1, 1990}, 3, 2}, {{1, 7, 1989}, 2, 64}, {{9, 28, 1868}, -1, 0},
        {{9, 29, 1868}, 0, 1}, {{7, 29, 1912}, 0, 45}, {{7, 30, 1912}, 1, 1}, {{12, 24, 1926}, 1, 15}, {{12, 25, 1926}, 2, 1},
        {{1, 1, 2000}, 3, 12}, {{1, 1, 1}, -1, 0}};
    for (const Row& r : rows) {
        LONG eraYear = 0;
        int era = FMTEraOf(FMTDateToJulian(r.date.month, r.date.day, r.date.year), &eraYear);
        EXPECT_EQ(era, r.era) << "era of " << Show(r.date);
        EXPECT_EQ(eraYear, r.eraYear) << "era year of " << Show(r.date);
        EXPECT_EQ(era < 0 ? "" : Hex(gFMTEras[era].szName) + ", " + std::to_string(IntlStrLen(gFMTEras[era].szName)) + " characters",
                  names[era + 1]) << "name of the era of " << Show(r.date);
    }
    EXPECT_EQ(Hex(std::string(gFMTYearSign) + gFMTMonthSign + gFMTDaySign) + gFMTEras[0].chInitial + gFMTEras[1].chInitial +
                  gFMTEras[2].chInitial + gFMTEras[3].chInitial + std::to_string(gFMTEras[4].dwFirstDay), "94 4E 8C 8E 93 FAMTSH0");
}

// Rows: the text, and the fields as "month/day/year hour/minute/second.microsecond".
TEST(FmtCalendar, IsoText) {
    const char* rows[][2] = {
        {"1999-12-31-23.59.59.000123", "12/31/1999 23/59/59.123"}, {"1999", "0/0/1999 0/0/0.0"}, {"199", "0/0/0 0/0/0.0"},
        {"1999-1", "0/0/1999 0/0/0.0"}, {"1999-12", "12/0/1999 0/0/0.0"}, {"1999-12-3", "12/0/1999 0/0/0.0"},
        {"1999-12-31", "12/31/1999 0/0/0.0"}, {"1999-12-31-2", "12/31/1999 0/0/0.0"}, {"1999-12-31-23", "12/31/1999 23/0/0.0"},
        {"1999-12-31-23.5", "12/31/1999 23/0/0.0"}, {"1999-12-31-23.59", "12/31/1999 23/59/0.0"},
        {"2024-03-15 08:30:07", "3/15/2024 8/30/7.0"}, {"1999-12-31-23.59.59.00012", "12/31/1999 23/59/59.0"},
        {"1999-12-31-23.59.59.999999x", "12/31/1999 23/59/59.999999"}, {"abcd-xy-3z", "0/3/0 0/0/0.0"}, {"", "0/0/0 0/0/0.0"}};
    for (const auto& r : rows) {
        DATDEF d;
        std::memset(&d, 0x5A, sizeof d);
        EXPECT_EQ(FMTIsoToDatDef(r[0], &d), 1) << "FMTIsoToDatDef(\"" << r[0] << "\")";
        EXPECT_EQ(Show(d.nMonth, d.nDay, d.nYear) + " " + Show(d.nHour, d.nMinute, d.nSecond) + "." + std::to_string(d.nMicrosecond), r[1])
            << "FMTIsoToDatDef(\"" << r[0] << "\")";
    }
}

} // namespace
