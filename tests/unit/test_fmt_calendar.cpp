// The calendar: names, day numbers, the calendar test, the two-digit-year
// window, the eras and the fixed-position date text.
#include "format/fmtint.h"
#include "core/libstate.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Day { LONG month, day, year; };
std::string Show(const Day& d) {
    return std::to_string(d.month) + "/" + std::to_string(d.day) + "/" + std::to_string(d.year);
}

TEST(FmtCalendar, JulianDayNumbersBothWays) {
    struct Row { Day date; LONG julian; } rows[] = {
        {{1, 1, 2000}, 2451545},   {{12, 31, 1999}, 2451544}, {{1, 8, 1989}, 2447535}, {{9, 29, 1868}, 2403605},
        {{7, 30, 1912}, 2419614},  {{12, 25, 1926}, 2424875}, {{1, 1, 1}, 1721426},    {{12, 31, 9999}, 5373484},
        {{2, 29, 2000}, 2451604},  {{3, 1, 2000}, 2451605},   {{2, 28, 1900}, 2415079}, {{3, 1, 1900}, 2415080},
        {{10, 15, 1582}, 2299161}, {{10, 4, 1582}, 2299150},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(FMTDateToJulian(r.date.month, r.date.day, r.date.year), r.julian) << "FMTDateToJulian(" << Show(r.date) << ")";
        LONG out[3] = {-1, -1, -1};
        FMTJulianToDate(r.julian, out);
        EXPECT_EQ(Show({out[0], out[1], out[2]}), Show(r.date)) << "FMTJulianToDate(" << r.julian << ")";
    }
}

// Every day of the years 1 to 9999, walked with the leap-year rule: the day
// numbers follow one another and each one reads back as its date.
TEST(FmtCalendar, EveryDayOfTenThousandYearsReadsBack) {
    static constexpr LONG kLength[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    LONG expected = 1721426, failures = 0;
    for (LONG y = 1; y <= 9999 && failures < 5; ++y) {
        bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
        for (LONG m = 1; m <= 12; ++m)
            for (LONG d = 1; d <= kLength[m - 1] + (m == 2 && leap); ++d, ++expected) {
                LONG j = FMTDateToJulian(m, d, y), out[3];
                FMTJulianToDate(expected, out);
                if (j == expected && out[0] == m && out[1] == d && out[2] == y) continue;
                ADD_FAILURE() << Show({m, d, y}) << ": day number " << j << ", expected " << expected
                              << "; back: " << Show({out[0], out[1], out[2]});
                ++failures;
            }
    }
}

TEST(FmtCalendar, WeekdayCountsFromSaturday) {
    struct Row { Day date; int weekday; } rows[] = {
        {{1, 1, 2000}, 1}, {{1, 2, 2000}, 2}, {{1, 3, 2000}, 3}, {{1, 6, 2000}, 6}, {{1, 7, 2000}, 7},
        {{3, 15, 2024}, 7}, {{12, 31, 1999}, 7}, {{1, 1, 1}, 3}, {{12, 31, 9999}, 7},
    };
    for (const Row& r : rows)
        EXPECT_EQ(FMTWeekday(r.date.month, r.date.day, r.date.year), r.weekday) << "FMTWeekday(" << Show(r.date) << ")";
}

TEST(FmtCalendar, CalendarTest) {
    struct Row { Day date; const char* dayName; int valid; } rows[] = {
        {{2, 29, 2000}, nullptr, 1}, {{2, 29, 1900}, nullptr, 0}, {{2, 29, 2004}, nullptr, 1},
        {{2, 29, 2001}, nullptr, 0}, {{2, 28, 2001}, nullptr, 1}, {{2, 29, 1600}, nullptr, 1},
        {{2, 30, 2000}, nullptr, 0}, {{4, 30, 2000}, nullptr, 1}, {{4, 31, 2000}, nullptr, 0},
        {{6, 31, 2000}, nullptr, 0}, {{9, 31, 2000}, nullptr, 0}, {{11, 31, 2000}, nullptr, 0},
        {{1, 31, 2000}, nullptr, 1}, {{3, 31, 2000}, nullptr, 1}, {{12, 31, 2000}, nullptr, 1},
        {{1, 32, 2000}, nullptr, 0}, {{13, 1, 2000}, nullptr, 0}, {{0, 1, 2000}, nullptr, 0},
        {{1, 0, 2000}, nullptr, 0},  {{12, 1, 2000}, nullptr, 1}, {{10, 10, 1582}, nullptr, 1},
        {{1, 1, 2000}, "sat", 1},    {{1, 1, 2000}, "SATURDAY", 1}, {{1, 1, 2000}, "Sunday", 0},
        {{1, 1, 2000}, "", 1},       {{1, 2, 2000}, "Sun", 1},      {{1, 7, 2000}, "friday", 1},
        {{1, 7, 2000}, "Fri", 1},    {{1, 7, 2000}, "Thu", 0},      {{13, 1, 2000}, "sat", 0},
        {{1, 32, 2000}, "sat", 0},   {{2, 29, 1900}, "Thursday", 0}, {{3, 15, 2024}, "Friday", 1},
    };
    for (const Row& r : rows)
        EXPECT_EQ(FMTIsDateValid(r.date.month, r.date.day, r.date.year, r.dayName), r.valid)
            << "FMTIsDateValid(" << Show(r.date) << ", " << (r.dayName ? r.dayName : "null") << ")";
}

TEST(FmtCalendar, NamesInNumberOrder) {
    const char* months[] = {"January", "February", "March", "April", "May", "June", "July",
                            "August", "September", "October", "November", "December"};
    const char* days[] = {"Saturday", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday"};
    for (int n = 1; n <= 12; ++n) {
        EXPECT_STREQ(FMTMonthLongName(n), months[n - 1]) << "FMTMonthLongName(" << n << ")";
        EXPECT_EQ(std::string(FMTMonthShortName(n)), std::string(months[n - 1], 3)) << "FMTMonthShortName(" << n << ")";
    }
    for (int n = 1; n <= 7; ++n) {
        EXPECT_STREQ(FMTDayLongName(n), days[n - 1]) << "FMTDayLongName(" << n << ")";
        EXPECT_EQ(std::string(FMTDayShortName(n)), std::string(days[n - 1], 3)) << "FMTDayShortName(" << n << ")";
    }
    struct Outside { const char* what; const char* (*get)(int); int n; } outside[] = {
        {"FMTDayShortName", FMTDayShortName, 0},   {"FMTDayLongName", FMTDayLongName, 8},
        {"FMTMonthShortName", FMTMonthShortName, 0}, {"FMTMonthLongName", FMTMonthLongName, 13},
        {"FMTMonthLongName", FMTMonthLongName, -1},
    };
    for (const Outside& o : outside) {
        const char* got = o.get(o.n);
        ASSERT_NE(got, nullptr) << o.what << "(" << o.n << ")";
        EXPECT_STREQ(got, "") << o.what << "(" << o.n << ")";
    }
}

// The lookups search the sorted tables; every name and a few near misses,
// under a single-byte and a double-byte code page.
TEST(FmtCalendar, NumberOfAName) {
    struct Row { int (*find)(const char*); const char* name; int number; } rows[] = {
        {FMTMonthFromName, "Jan", 1},      {FMTMonthFromName, "JANUARY", 1},   {FMTMonthFromName, "january", 1},
        {FMTMonthFromName, "Feb", 2},      {FMTMonthFromName, "march", 3},     {FMTMonthFromName, "Apr", 4},
        {FMTMonthFromName, "April", 4},    {FMTMonthFromName, "May", 5},       {FMTMonthFromName, "MAY", 5},
        {FMTMonthFromName, "Jun", 6},      {FMTMonthFromName, "July", 7},      {FMTMonthFromName, "aug", 8},
        {FMTMonthFromName, "September", 9}, {FMTMonthFromName, "Oct", 10},    {FMTMonthFromName, "November", 11},
        {FMTMonthFromName, "Dec", 12},     {FMTMonthFromName, "December", 12}, {FMTMonthFromName, "Janu", 0},
        {FMTMonthFromName, "Sept", 0},     {FMTMonthFromName, "", 0},          {FMTMonthFromName, "Decembers", 0},
        {FMTMonthFromName, "A", 0},        {FMTMonthFromName, "Zzz", 0},       {FMTMonthFromName, nullptr, 0},
        {FMTDayFromName, "sat", 1},        {FMTDayFromName, "Saturday", 1},    {FMTDayFromName, "Sun", 2},
        {FMTDayFromName, "SUNDAY", 2},     {FMTDayFromName, "monday", 3},      {FMTDayFromName, "Tue", 4},
        {FMTDayFromName, "Wednesday", 5},  {FMTDayFromName, "Thu", 6},         {FMTDayFromName, "Fri", 7},
        {FMTDayFromName, "Friday", 7},     {FMTDayFromName, "Tues", 0},        {FMTDayFromName, "", 0},
        {FMTDayFromName, "Aaa", 0},        {FMTDayFromName, "Zzz", 0},
    };
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const Row& r : rows)
            EXPECT_EQ(r.find(r.name), r.number) << (r.find == FMTMonthFromName ? "FMTMonthFromName(" : "FMTDayFromName(")
                                                << (r.name ? r.name : "null") << ") under " << l.name;
    }
}

// A string missing from the table: nothing counts as loaded, every lookup
// fails, and the next question tries again.
TEST(FmtCalendar, MissingStringLeavesTextUnloaded) {
    for (UINT missing : {2001u, 2024u, 2025u, 2030u, 2037u, 2038u, 2039u, 2044u}) {
        CalendarReload reload;
        {
            ScriptedProfile store({}, {missing});
            EXPECT_EQ(FMTLoadCalendarText(), 0) << "string " << missing << " missing";
            EXPECT_EQ(gpLibState->bTextLoaded, 0) << "string " << missing << " missing";
            EXPECT_EQ(FMTMonthFromName("Jan"), 0) << "string " << missing << " missing";
            EXPECT_EQ(FMTDayFromName("Sat"), 0) << "string " << missing << " missing";
            EXPECT_STREQ(FMTMonthLongName(1), "") << "string " << missing << " missing";
            EXPECT_STREQ(FMTDayShortName(1), "") << "string " << missing << " missing";
            EXPECT_EQ(FMTIsDateValid(1, 1, 2000, nullptr), 0) << "string " << missing << " missing";
        }
        EXPECT_EQ(FMTMonthFromName("Jan"), 1) << "after string " << missing << " came back";
        EXPECT_EQ(gpLibState->bTextLoaded, 1) << "after string " << missing << " came back";
    }
}

TEST(FmtCalendar, TwoDigitYearWindow) {
    struct Row { WORD now; LONG yy, century; } rows[] = {
        {2026, 49, 2000}, {2026, 50, 1900}, {2026, 0, 2000},  {2026, 99, 1900}, {1999, 49, 2000},
        {1999, 50, 1900}, {1949, 49, 1900}, {1949, 50, 1800}, {2049, 49, 2000}, {2049, 50, 1900},
        {2050, 49, 2100}, {2050, 50, 2000}, {2050, 0, 2100},  {2050, 99, 2000}, {2000, 0, 2000},
        {2000, 99, 1900}, {2099, 0, 2100},  {2099, 99, 2000}, {2100, 49, 2100}, {2100, 50, 2000},
    };
    for (const Row& r : rows) {
        ScriptedClock clock(r.now);
        EXPECT_EQ(FMTCentury(r.yy), r.century) << "FMTCentury(" << r.yy << ") in " << r.now;
    }
}

TEST(FmtCalendar, EraOfADate) {
    struct Row { Day date; int era; LONG eraYear; } rows[] = {
        {{1, 8, 1989}, 3, 1},   {{12, 31, 1989}, 3, 1}, {{1, 1, 1990}, 3, 2},  {{1, 7, 1989}, 2, 64},
        {{9, 28, 1868}, -1, 0}, {{9, 29, 1868}, 0, 1},  {{7, 29, 1912}, 0, 45}, {{7, 30, 1912}, 1, 1},
        {{12, 24, 1926}, 1, 15}, {{12, 25, 1926}, 2, 1}, {{1, 1, 2000}, 3, 12}, {{1, 1, 1}, -1, 0},
    };
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const Row& r : rows) {
            LONG eraYear = 0;
            EXPECT_EQ(FMTEraOf(FMTDateToJulian(r.date.month, r.date.day, r.date.year), &eraYear), r.era)
                << "era of " << Show(r.date) << " under " << l.name;
            EXPECT_EQ(eraYear, r.eraYear) << "era year of " << Show(r.date) << " under " << l.name;
        }
    }
}

// 8 January 1989 as a Japanese system writes it: era name, era year, signs.
TEST(FmtCalendar, EraDateBytesUnderCodePage932) {
    IntlUnder env(kJapanese);
    LONG eraYear = 0;
    int era = FMTEraOf(FMTDateToJulian(1, 8, 1989), &eraYear);
    ASSERT_EQ(era, 3);
    std::string text = std::string(gFMTEras[era].szName) + "0" + std::to_string(eraYear) + gFMTYearSign + "01" +
                       gFMTMonthSign + "08" + gFMTDaySign;
    EXPECT_EQ(Hex(text), "95 BD 90 AC 30 31 94 4E 30 31 8C 8E 30 38 93 FA");
    EXPECT_EQ(IntlStrLen(text.c_str()), 11) << "characters of " << Hex(text);
    EXPECT_EQ(gFMTEras[FMT_ERA_COUNT].dwFirstDay, 0u);
    const char initials[] = {'M', 'T', 'S', 'H'};
    for (int i = 0; i < FMT_ERA_COUNT; ++i) EXPECT_EQ(gFMTEras[i].chInitial, initials[i]) << "era " << i;
}

TEST(FmtCalendar, IsoText) {
    struct Row { const char* text; DATDEF expected; } rows[] = {
        {"1999-12-31-23.59.59.000123", {12, 31, 1999, 23, 59, 59, 123}},
        {"1999", {0, 0, 1999, 0, 0, 0, 0}},
        {"199", {0, 0, 0, 0, 0, 0, 0}},
        {"1999-1", {0, 0, 1999, 0, 0, 0, 0}},
        {"1999-12", {12, 0, 1999, 0, 0, 0, 0}},
        {"1999-12-3", {12, 0, 1999, 0, 0, 0, 0}},
        {"1999-12-31", {12, 31, 1999, 0, 0, 0, 0}},
        {"1999-12-31-2", {12, 31, 1999, 0, 0, 0, 0}},
        {"1999-12-31-23", {12, 31, 1999, 23, 0, 0, 0}},
        {"1999-12-31-23.5", {12, 31, 1999, 23, 0, 0, 0}},
        {"1999-12-31-23.59", {12, 31, 1999, 23, 59, 0, 0}},
        {"2024-03-15 08:30:07", {3, 15, 2024, 8, 30, 7, 0}},
        {"1999-12-31-23.59.59.00012", {12, 31, 1999, 23, 59, 59, 0}},
        {"1999-12-31-23.59.59.999999x", {12, 31, 1999, 23, 59, 59, 999999}},
        {"abcd-xy-3z", {0, 3, 0, 0, 0, 0, 0}},
        {"", {0, 0, 0, 0, 0, 0, 0}},
    };
    for (const Row& r : rows) {
        DATDEF got;
        std::memset(&got, 0x5A, sizeof got);
        EXPECT_EQ(FMTIsoToDatDef(r.text, &got), 1) << "FMTIsoToDatDef(\"" << r.text << "\")";
        EXPECT_EQ(std::memcmp(&got, &r.expected, sizeof got), 0)
            << "FMTIsoToDatDef(\"" << r.text << "\") gave " << got.nMonth << "/" << got.nDay << "/" << got.nYear << " "
            << got.nHour << ":" << got.nMinute << ":" << got.nSecond << "." << got.nMicrosecond;
    }
}

} // namespace
