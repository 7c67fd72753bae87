// FMTGetMaxFormattedDTLen: the longest text FMTFormatDateTime can write under
// a block, from the same choice of picture and a fixed width per element.
#include "datefmt.h"
#include "datepic.h"
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <oxlrt31/datepic.h>

#include <oxlrt31/mem.h>

#include <algorithm>
#include <cstring>

namespace {

// The longest full day and month names, measured once per thread.
void LongestNames(LONG* day, LONG* month) {
    FMTTHREADITEM* item = FMTThreadItem();
    if (item && item->cchMaxDayName >= 0 && item->cchMaxMonthName >= 0) {
        *day = item->cchMaxDayName, *month = item->cchMaxMonthName;
        return;
    }
    CRSectGuard guard(gCRProfileSect);
    *day = *month = 0;
    for (int n = 1; n <= 12; ++n) {
        if (n <= 7) *day = std::max(*day, LONG(std::strlen(FMTDayLongName(n))));
        *month = std::max(*month, LONG(std::strlen(FMTMonthLongName(n))));
    }
    if (item) item->cchMaxDayName = *day, item->cchMaxMonthName = *month;
}

LONG Width(const FMTDATETOKEN* e, const char* am, const char* pm) {
    switch (e->nType) {
    case FMTDT_STRING: return LONG(std::strlen(e->pszText));
    case FMTDT_CHAR: return 1;
    case FMTDT_BLANK: return e->lValue;
    case FMTDT_YEAR4: return 4;
    case FMTDT_MICRO: return 6;
    case FMTDT_DAYSHORT:
    case FMTDT_MONTHSHORT: return 3;
    case FMTDT_DAYLONG:
    case FMTDT_MONTHLONG: {
        LONG day, month;
        LongestNames(&day, &month);
        return e->nType == FMTDT_DAYLONG ? day : month;
    }
    case FMTDT_AMPM: return LONG(std::max(std::strlen(am ? am : ""), std::strlen(pm ? pm : "")));
    default: return 2;
    }
}

// The width of a picture's elements, or -1 when it is invalid.
LONG Measure(const FMTCNTLBLOCK* b, const char* picture) {
    FMTDATETOKEN* list = FMTParseDateText(picture, FMTDATE_PARSE_PICTURE);
    if (!list) return -1;
    const char* am = b->bUseProfile ? FMTProfileString(FMTPS_1159) : b->lpsz1159;
    const char* pm = b->bUseProfile ? FMTProfileString(FMTPS_2359) : b->lpsz2359;
    LONG count = 0;
    for (const FMTDATETOKEN* e = list; e; e = e->pNext) count += Width(e, am, pm);
    FMTFreeDateTokens(list);
    return count;
}

bool Is(const char* picture, const char* keyword) { return picture && std::strcmp(picture, keyword) == 0; }

} // namespace

int OXLAPI FMTGetMaxFormattedDTLen(FMTCNTLBLOCK* b, int nMinimum) {
    if (!b || b->nType < FMT_DATE || b->nType > FMT_DATETIME) return -1;
    if (b->bUseProfile && !(b->dwFlags & FMTF_DEFAULTTIME)) return -1;
    long type = b->nType;
    char timePic[kFMTTimePicSize] = "", defaultPic[kFMTDefaultPicSize];
    const char* picture = nullptr;
    LONG start = 0;
    if (type != FMT_DATE) {
        if (b->dwFlags & FMTF_DEFAULTTIME) FMTBuildTimePic(b, timePic), picture = timePic;
        else if (type == FMT_TIME) picture = b->iDateType == 0 ? b->lpszLongPic : b->iDateType == 1 ? b->lpszShortPic : nullptr;
    }
    if (type != FMT_TIME) {
        long style = FMTDateStyleOf(b);
        if (style == FMT_DATETYPE_JAPAN || style == FMT_DATETYPE_EMPEROR) {
            // The Japanese date itself is not measured: only a time behind it.
            if (type == FMT_DATE) return nMinimum;
            type = FMT_TIME;
        } else {
            picture = FMTDatePicOfStyle(b, style);
        }
    }
    if (!b->bUseProfile) { // the keywords
        if (Is(picture, "")) FMTGetDefaultDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "S")) FMTGetDefaultShortDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "L")) FMTGetDefaultLongDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "ED")) return 16;
        else if (Is(picture, "T") || Is(picture, "E")) {
            if (picture[0] == 'E') start = 16;
            b->dwFlags &= ~DWORD(FMTF_MICROSECONDS);
            FMTBuildTimePic(b, timePic), picture = timePic;
            type = FMT_TIME;
        }
    }
    if (!picture || !*picture) return nMinimum;
    LONG count;
    if (*timePic && type == FMT_DATETIME && (b->dwFlags & FMTF_DEFAULTTIME) && picture != timePic) {
        size_t n = std::strlen(picture), t = std::strlen(timePic);
        char* composed = static_cast<char*>(MemAlloc(DWORD(n + t + 2)));
        if (!composed) return -1;
        std::memcpy(composed, picture, n);
        composed[n] = ' ';
        std::strcpy(composed + n + 1, timePic);
        count = Measure(b, composed);
        MemFree(composed);
        if (count >= 0) count += LONG(n + t + 2);
    } else {
        count = Measure(b, picture);
        if (count >= 0) count += start;
    }
    return count > nMinimum ? count : nMinimum;
}
