// The formatting engine's private interface: the cached regional settings,
// the calendar (names, day numbers, the two-digit-year window, the eras) and
// the engine's per-thread item. Hosts see <oxlrt31/fmt.h> only.
//
// Locks: the profile region (gCRProfileSect) guards the cached profile, its
// stale mark and the calendar text. The getters below take it themselves;
// the date picture region is never held while they run.
#ifndef OXL_FORMAT_FMTINT_H
#define OXL_FORMAT_FMTINT_H

#include <oxlrt31/fmt.h>

#include <cstdint>

// ---- cached regional settings -------------------------------------------

// Keys of FMTProfileString.
enum {
    FMTPS_SHORTDATE = 0, // sShortDate
    FMTPS_LONGDATE = 1,  // sLongDate
    FMTPS_TIME = 2,      // sTime, the time separator
    FMTPS_1159 = 3,      // s1159, the morning marker
    FMTPS_2359 = 4,      // s2359, the afternoon marker
    FMTPS_CURRENCY = 5,  // sCurrency
    FMTPS_THOUSAND = 6,  // the thousands separator, as a one-character string
    FMTPS_DECIMAL = 7,   // the decimal separator, likewise
};
// Keys of FMTProfileInt.
enum {
    FMTPI_TIME = 0,           // iTime: 1 for the 24-hour clock
    FMTPI_TLZERO = 1,         // iTLZero
    FMTPI_LZERO = 2,          // iLzero
    FMTPI_DIGITS = 3,         // iDigits
    FMTPI_CURRDIGITS = 4,     // iCurrDigits
    FMTPI_NEGCURR = 5,        // iNegCurr
    FMTPI_DATETYPE = 6,       // iDateType
    FMTPI_EMPBOUNDARY = 7,    // iEmpDateBoundryCheck
    FMTPI_CURRENCY = 10,      // iCurrency, rebuilt from its two flags
    FMTPI_COUNTRY = 11,       // iCountry
};

// A string of the cached profile, read again first when it is stale; null
// for an unknown key. Keys 0 to 5 point into the cached record: use the text
// within the current operation only (a reload elsewhere rewrites it in
// place). Keys 6 and 7 point into the calling thread's item, overwritten by
// the next such call on the thread; an empty string when the thread has no
// item.
const char* FMTProfileString(int key);
// An integer of the cached profile; -1 for an unknown key.
LONG FMTProfileInt(int key);
// Reads the store into the cached record if it is stale.
void FMTReloadProfile(void);
// Rewrites quoted runs of a long date picture in place (see profile_rewrite.cpp);
// `size` is the room of `picture`, and the result is cut to fit it.
void FMTRewriteLongDatePic(char* picture, size_t size, LONG iCountry);

// ---- calendar --------------------------------------------------------------

// Loads the month and day names and the profile keys of the library's
// string table into the process state; 1 when all is loaded. Runs at load
// and again from the name lookups while the text is not loaded.
int FMTLoadCalendarText(void);

// Days are numbered from Saturday: 1 Saturday, 2 Sunday ... 7 Friday.
// Month or day number of a short or full name, any case; 0 for none.
int FMTMonthFromName(const char* name);
int FMTDayFromName(const char* name);
// The names of day 1..7 or month 1..12; "" out of range or not loaded.
const char* FMTDayShortName(int n);
const char* FMTDayLongName(int n);
const char* FMTMonthShortName(int n);
const char* FMTMonthLongName(int n);

// Julian day numbers of the proleptic Gregorian calendar, exact both ways
// for the years 1 to 9999.
LONG FMTDateToJulian(LONG month, LONG day, LONG year);
void FMTJulianToDate(LONG julian, LONG out[3]); // month, day, year
int FMTWeekday(LONG month, LONG day, LONG year); // 1 Saturday .. 7 Friday
// 1 when the date exists (and `dayName`, if given and not empty, names its
// weekday, short or full, any case); 0 otherwise or when the text can't load.
int FMTIsDateValid(LONG month, LONG day, LONG year, const char* dayName);
// The century to add to a two-digit year 0..99, as a multiple of 100, from
// the current year of the system clock.
LONG FMTCentury(LONG yy);

// The Japanese eras, each named by four Shift-JIS bytes. The table ends
// with an entry whose dwFirstDay is 0.
#pragma pack(push, 1)
struct FMTERA {
    char szName[5];    // Shift-JIS, NUL-terminated
    DWORD dwFirstDay;  // Julian day number of the era's first day
    char chInitial;    // Latin initial
};
#pragma pack(pop)
static_assert(sizeof(FMTERA) == 10, "FMTERA entries are 10 bytes");
constexpr int FMT_ERA_COUNT = 4;
extern const FMTERA gFMTEras[FMT_ERA_COUNT + 1];
// The era of Julian day `julian`: its index in gFMTEras, with its era year
// in *eraYear; -1 before the first era (and *eraYear untouched).
int FMTEraOf(LONG julian, LONG* eraYear);
// Shift-JIS year, month and day signs, two bytes and a NUL.
extern const char gFMTYearSign[3];
extern const char gFMTMonthSign[3];
extern const char gFMTDaySign[3];

// ---- per-thread item ---------------------------------------------------------

struct FMTTHREADITEM {
    DWORD bInFilter = 0;         // the input filter is running on this thread
    LONG cchMaxDayName = -1;     // longest full day name, -1 until measured
    LONG cchMaxMonthName = -1;   // longest full month name, -1 until measured
    char chSep[2] = {0, 0};      // a separator handed out by FMTProfileString
};
// The calling thread's item, made on first use; null when it can't be made.
FMTTHREADITEM* FMTThreadItem(void);

#endif
