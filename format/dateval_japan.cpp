// Reading a Japanese date: an era name and year, or a Western year, then the
// month and the day, each number followed by its Shift-JIS sign.
#include "dateval.h"
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <oxlrt31/intl.h>

#include <cstring>

namespace {

// Reads a number at p and then the two bytes of `sign`; false when either
// is missing or the number ends the text.
bool NumberAndSign(const char*& p, LONG* value, const char* sign) {
    int n = IntlFetchNextNumLong(value, p);
    if (n < 1 || !p[n]) return false;
    p += n;
    if (std::strlen(p) < 2 || std::memcmp(p, sign, 2) != 0) return false;
    p += 2;
    return true;
}

// The era whose four-byte name stands at p, or -1.
int EraNamed(const char* p) {
    for (int i = 0; i < FMT_ERA_COUNT; ++i)
        if (std::strncmp(p, gFMTEras[i].szName, 4) == 0) return i;
    return -1;
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

} // namespace

int FMTReadJapanDate(FMTCNTLBLOCK* b, int bEraOnly) {
    CRSectGuard guard(gCRProfileSect);
    const char* p = b->lpszInput;
    while (*p == ' ' || *p == '\t' || *p == '\n') ++p;
    LONG check = b->bUseProfile ? FMTProfileInt(FMTPI_EMPBOUNDARY) : LONG(b->bEmpBoundryCheck);
    int era = -1;
    LONG year = 0, month = 0, day = 0;
    bool twoDigits = false;
    if (IntlIsDBChar(p)) {
        era = EraNamed(p);
        if (era < 0) return -1;
        p += 4;
        LONG first[3];
        FMTJulianToDate(LONG(gFMTEras[era].dwFirstDay), first);
        // An era year beyond a million has no day number to test.
        if (!NumberAndSign(p, &year, gFMTYearSign) || year < 1 || year > 1000000) return -1;
        year += first[2] - 1;
    } else {
        // An era's Latin initial is never accepted.
        if (IsLetter(*p) || bEraOnly) return -1;
        const char* start = p;
        if (!NumberAndSign(p, &year, gFMTYearSign)) return -1;
        twoDigits = p - start - 2 < 3;
    }
    if (!NumberAndSign(p, &month, gFMTMonthSign) || !NumberAndSign(p, &day, gFMTDaySign)) return -1;
    if (twoDigits && year >= 0 && year <= 99) year += 1900;
    if (!FMTIsDateValid(month, day, year, nullptr)) return -1;
    if (era >= 0) {
        LONG j = FMTDateToJulian(month, day, year);
        if (j < LONG(gFMTEras[era].dwFirstDay)) return -1;
        DWORD next = gFMTEras[era + 1].dwFirstDay;
        if (check == 1 && next && j >= LONG(next)) return -1;
    }
    b->datDef = DATDEF{month, day, year, 0, 0, 0, 0};
    return int(p - b->lpszInput);
}
