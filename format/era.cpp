// The Japanese eras and the Shift-JIS signs of Japanese dates. These are
// bytes, not text of the current code page: an era name is recognised by
// comparing its four bytes.
#include "fmtint.h"

const FMTERA gFMTEras[FMT_ERA_COUNT + 1] = {
    {"\x96\xBE\x8E\xA1", 2403605, 'M'}, // from 29 September 1868
    {"\x91\xE5\x90\xB3", 2419614, 'T'}, // from 30 July 1912
    {"\x8F\xBA\x98\x61", 2424875, 'S'}, // from 25 December 1926
    {"\x95\xBD\x90\xAC", 2447535, 'H'}, // from 8 January 1989
    {"", 0, 0},
};

const char gFMTYearSign[3] = "\x94\x4E";
const char gFMTMonthSign[3] = "\x8C\x8E";
const char gFMTDaySign[3] = "\x93\xFA";

int FMTEraOf(LONG julian, LONG* eraYear) {
    int count = 0;
    while (gFMTEras[count].dwFirstDay != 0 && LONG(gFMTEras[count].dwFirstDay) <= julian) ++count;
    if (count == 0) return -1;
    const FMTERA& era = gFMTEras[count - 1];
    LONG first[3], date[3];
    FMTJulianToDate(LONG(era.dwFirstDay), first);
    FMTJulianToDate(julian, date);
    *eraYear = date[2] - first[2] + 1;
    return count - 1;
}
