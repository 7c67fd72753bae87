// The calendar: loading the names, day numbers and the eras (the two-digit
// year window is read through FMTValidateDateTime). The fixed-position date text is read by the SQLite
// extension's tests.
#include "format/fmtint.h"
#include "core/libstate.h"
#include "intl_env.h"
#include "test_fmt_date_env.h"

#include <gtest/gtest.h>

namespace {

std::string Show(LONG m, LONG d, LONG y) { return std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y); }

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

// A string missing from the table: nothing counts as loaded, every lookup fails, and the next question tries again.
TEST(FmtCalendar, MissingStringLeavesTextUnloaded) {
    for (UINT missing : {2001u, 2024u, 2025u, 2038u, 2039u, 2044u}) {
        ScriptedProfile store({}, {missing});
        EXPECT_EQ(FMTLoadCalendarText() + gpLibState->bTextLoaded + FMTMonthFromName("Jan") + FMTDayFromName("Sat") +
                      FMTIsDateValid(1, 1, 2000, nullptr), 0) << "string " << missing << " missing";
    }
    EXPECT_EQ(FMTMonthFromName("Jan"), 1) << "after the strings came back";
}

// Eras by their first days (their names are written and read by the Japanese date tests).
TEST(FmtCalendar, EraOfADate) {
    struct Row { DATDEF date; int era; LONG eraYear; } rows[] = {
        {D(1, 8, 1989), 3, 1}, {D(1, 7, 1989), 2, 64}, {D(9, 28, 1868), -1, 0}, {D(9, 29, 1868), 0, 1}, {D(7, 30, 1912), 1, 1}, {D(12, 25, 1926), 2, 1}};
    for (const Row& r : rows) {
        LONG eraYear = 0;
        int era = FMTEraOf(FMTDateToJulian(r.date.nMonth, r.date.nDay, r.date.nYear), &eraYear);
        EXPECT_EQ(std::make_pair(era, eraYear), std::make_pair(r.era, r.eraYear)) << "era and era year of " << ShowDate(r.date);
    }
}

} // namespace
