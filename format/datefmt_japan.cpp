// The Japanese date styles: the Western year or the era and its year, each
// followed by the year sign, then the month, the month sign, the day and the
// day sign. The signs and era names are Shift-JIS bytes whatever the code page.
#include "datefmt.h"
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <cstring>

namespace {

// v with a "0" in front when it is 9 or less, then the sign.
char* Field(char* end, long v, const char* sign) {
    if (v <= 9) *end++ = '0';
    end = FMTAppendNumber(end, v, 0);
    std::memcpy(end, sign, 3);
    return end + 2;
}

char* MonthAndDay(char* end, const DATDEF& d) {
    end = Field(end, d.nMonth, gFMTMonthSign);
    return Field(end, d.nDay, gFMTDaySign);
}

} // namespace

int FMTFormatJapanDate(FMTCNTLBLOCK* b) {
    CRSectGuard guard(gCRProfileSect);
    char* end = FMTAppendNumber(b->lpszOutput, b->datDef.nYear, 4);
    std::memcpy(end, gFMTYearSign, 3);
    MonthAndDay(end + 2, b->datDef);
    return 1;
}

int FMTFormatEmperorDate(FMTCNTLBLOCK* b) {
    CRSectGuard guard(gCRProfileSect);
    const DATDEF& d = b->datDef;
    LONG eraYear = 0;
    if (!FMTDateInReach(d)) return 0;
    int era = FMTEraOf(FMTDateToJulian(d.nMonth, d.nDay, d.nYear), &eraYear);
    if (era < 0) return 0;
    char* end = b->lpszOutput;
    std::memcpy(end, gFMTEras[era].szName, 4);
    end = Field(end + 4, eraYear >= 100 ? eraYear % 100 : eraYear, gFMTYearSign);
    MonthAndDay(end, d);
    return 1;
}
