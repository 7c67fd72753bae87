// Day numbers of the proleptic Gregorian calendar, the weekday, the calendar
// test and the window of two-digit years. Every division truncates toward
// zero, as the formulas assume.
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"
#include "os/osl.h"

#include <cstdint>

namespace {

LONG truncate(double v) { return static_cast<LONG>(v); }

bool isLeapYear(LONG year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

LONG daysInMonth(LONG month, LONG year) {
    static constexpr LONG kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

// The weekday's short or full name equals `dayName`, any case.
bool namesWeekday(const char* dayName, LONG month, LONG day, LONG year) {
    int weekday = FMTWeekday(month, day, year);
    return gOsl.text->lstrcmpiA(dayName, FMTDayShortName(weekday)) == 0 ||
           gOsl.text->lstrcmpiA(dayName, FMTDayLongName(weekday)) == 0;
}

} // namespace

// Worked in 64 bits and given back modulo 2^32: the day number of any year
// of the calendar fits, and fields far outside it give a defined number
// instead of an overflow.
LONG FMTDateToJulian(LONG m, LONG d, LONG y) {
    int64_t M = m, D = d, Y = y;
    int64_t j = 367 * Y - (7 * (Y + (M + 9) / 12)) / 4 - (3 * ((Y + (M - 9) / 7) / 100 + 1)) / 4 + (275 * M) / 9 + D +
                1721029;
    return LONG(uint32_t(uint64_t(j)));
}

void FMTJulianToDate(LONG julian, LONG out[3]) {
    LONG a = truncate(julian * 2.7379070069885075e-5 - 51.12264);
    LONG b = a - a / 4 + julian + 1525;
    LONG c = truncate(b * 0.0027378507871321013 - 0.3343);
    LONG d = truncate(c * 365.25);
    LONG e = truncate((b - d) * 0.032669062397909183);
    LONG month = e - 1;
    if (e > 13) month -= 12;
    out[0] = month;
    out[1] = truncate((b - truncate(e * 30.61) - d) + 0.5);
    out[2] = c - 4716 + (month < 3 ? 1 : 0);
}

int FMTWeekday(LONG month, LONG day, LONG year) { return (FMTDateToJulian(month, day, year) + 2) % 7 + 1; }

int FMTIsDateValid(LONG month, LONG day, LONG year, const char* dayName) {
    CRSectGuard hold(gCRProfileSect);
    if (!gpLibState->bTextLoaded && !FMTLoadCalendarText()) return 0;
    if (day < 1 || day > 31 || month < 1 || month > 12) return 0;
    if (dayName && *dayName && !namesWeekday(dayName, month, day, year)) return 0;
    return day <= daysInMonth(month, year);
}

LONG FMTCentury(LONG yy) {
    SYSTEMTIME now = {};
    gOsl.system->GetSystemTime(&now);
    LONG c = now.wYear / 100, r = now.wYear % 100;
    if (r < 50) return (yy >= 50 && yy <= 99 ? c - 1 : c) * 100;
    return (yy >= 0 && yy <= 49 ? c + 1 : c) * 100;
}
