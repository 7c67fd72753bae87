// The calendar: names, day numbers, the calendar test, the two-digit-year
// window, the eras and the fixed-position date text.
#include "format/fmtint.h"
#include "core/libstate.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <gtest/gtest.h>

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
        {2, 29, 2000, nullptr, 1}, {2, 29, 1900, nullptr, 0}, {4, 31, 2000, nullptr, 0}, {12, 31, 2000, nullptr, 1}, {1, 32, 2000, nullptr, 0},
        {13, 1, 2000, nullptr, 0}, {0, 1, 2000, nullptr, 0}, {1, 0, 2000, nullptr, 0}, {1, 1, 2000, "SATURDAY", 1}, {1, 1, 2000, "Sunday", 0},
        {1, 1, 2000, "", 1}, {1, 7, 2000, "Fri", 1}};
    for (const Row& r : rows)
        EXPECT_EQ(FMTIsDateValid(r.month, r.day, r.year, r.dayName), r.valid)
            << "FMTIsDateValid(" << Show(r.month, r.day, r.year) << ", " << (r.dayName ? r.dayName : "null") << ")";
}

// The lookups search the sorted tables: every name and near misses, under a single- and a double-byte page.
TEST(FmtCalendar, NumberOfAName) {
    struct Row { const char* name; int month, day; } rows[] = {
        {"Apr", 4, 0}, {"JANUARY", 1, 0}, {"May", 5, 0}, {"September", 9, 0}, {"Dec", 12, 0}, {"Janu", 0, 0}, {"A", 0, 0}, {"Zzz", 0, 0},
        {"sat", 0, 1}, {"SUNDAY", 0, 2}, {"Wednesday", 0, 5}, {"Friday", 0, 7}, {"Tues", 0, 0}};
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
        {2049, 49, 2000}, {2049, 50, 1900}, {2050, 49, 2100}, {2050, 50, 2000}, {2050, 0, 2100}, {2050, 99, 2000}, {2000, 0, 2000}};
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
        {{9, 29, 1868}, 0, 1}, {{7, 29, 1912}, 0, 45}, {{7, 30, 1912}, 1, 1}, {{12, 25, 1926}, 2, 1}};
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
        {"1999-12-31-23.59.59.000123", "12/31/1999 23/59/59.123"}, {"199", "0/0/0 0/0/0.0"}, {"1999-12-3", "12/0/1999 0/0/0.0"},
        {"1999-12-31-23.5", "12/31/1999 23/0/0.0"}, {"1999-12-31-23.59.59.00012", "12/31/1999 23/59/59.0"}, {"abcd-xy-3z", "0/3/0 0/0/0.0"}};
    for (const auto& r : rows) {
        DATDEF d;
        std::memset(&d, 0x5A, sizeof d);
        EXPECT_EQ(FMTIsoToDatDef(r[0], &d), 1) << "FMTIsoToDatDef(\"" << r[0] << "\")";
        EXPECT_EQ(Show(d.nMonth, d.nDay, d.nYear) + " " + Show(d.nHour, d.nMinute, d.nSecond) + "." + std::to_string(d.nMicrosecond), r[1])
            << "FMTIsoToDatDef(\"" << r[0] << "\")";
    }
}

} // namespace
