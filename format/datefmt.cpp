// FMTFormatDateTime: choosing the picture (the block's or the profile's, a
// date style, a keyword, a separate time picture), then walking its list.
#include "datefmt.h"
#include "datepic.h"
#include "fmtint.h"

#include "os/osl.h"

#include <oxlrt31/datepic.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

// The settings of the walk.
struct Walk {
    const DATDEF* d;
    bool leadZero;
    const char *am, *pm;
    bool omitZeroMicro;
    bool localeNames;
};

char* Append(char* end, const char* text) {
    size_t n = text ? std::strlen(text) : 0;
    std::memcpy(end, text ? text : "", n + 1);
    return end + n;
}

// v with a "0" in front when it is 9 or less.
char* Pad2(char* end, long v) {
    if (v <= 9) *end++ = '0';
    return FMTAppendNumber(end, v, 0);
}

// A name of the user's locale by item number; nothing when it has none.
char* AppendLocaleName(char* end, DWORD item) {
    int size = gOsl.system->GetLocaleInfoA(0x400, item, nullptr, 0);
    if (size <= 0) return end;
    char* name = static_cast<char*>(MemAlloc(DWORD(size)));
    if (!name) return end;
    if (gOsl.system->GetLocaleInfoA(0x400, item, name, size) > 0) end = Append(end, name);
    MemFree(name);
    return end;
}

// Locale items of day 1 (Saturday) to 7 (Friday); months from 1.
DWORD DayItem(int day, bool full) {
    static const DWORD kShort[] = {0x36, 0x37, 0x31, 0x32, 0x33, 0x34, 0x35};
    static const DWORD kFull[] = {0x2F, 0x30, 0x2A, 0x2B, 0x2C, 0x2D, 0x2E};
    return full ? kFull[day - 1] : kShort[day - 1];
}

char* AppendDayName(char* end, const Walk& w, bool full) {
    if (!FMTDateInReach(*w.d)) return end;
    int day = FMTWeekday(w.d->nMonth, w.d->nDay, w.d->nYear); // outside 1 to 7 before the year 1
    if (w.localeNames) return day >= 1 && day <= 7 ? AppendLocaleName(end, DayItem(day, full)) : end;
    return Append(end, full ? FMTDayLongName(day) : FMTDayShortName(day));
}

char* AppendMonthName(char* end, const Walk& w, bool full) {
    long m = w.d->nMonth;
    if (!w.localeNames) return Append(end, full ? FMTMonthLongName(int(m)) : FMTMonthShortName(int(m)));
    if (m < 1 || m > 12) return end;
    return AppendLocaleName(end, DWORD((full ? 0x38 : 0x44) + m - 1));
}

// The hour of a 12-hour clock: 0 and 12 are 12.
long Hour12(long h) {
    h %= 12;
    return h == 0 ? 12 : h;
}

char* AppendHour(char* end, long h, bool zero) {
    if (zero && h >= 0 && h <= 9) *end++ = '0';
    return FMTAppendNumber(end, h, 0);
}

// The microseconds: none, and the character before them gone, for a value
// below 1 under FMTF_OMITZEROMICRO and for a negative one.
char* AppendMicro(char* start, char* end, const Walk& w) {
    long us = w.d->nMicrosecond;
    if ((w.omitZeroMicro && us < 1) || us < 0) {
        if (end > start) *--end = 0;
        return end;
    }
    return FMTAppendNumber(end, us, 6);
}

char* AppendYear2(char* end, long y) {
    if (y <= 9) return Pad2(end, y);
    char text[16];
    size_t n = size_t(FMTAppendNumber(text, y, 0) - text);
    return Append(end, text + n - 2);
}

char* AppendElement(char* start, char* end, const FMTDATETOKEN* e, const Walk& w) {
    const DATDEF* d = w.d;
    switch (e->nType) {
    case FMTDT_STRING: return Append(end, e->pszText);
    case FMTDT_CHAR: *end++ = char(e->lValue), *end = 0; return end;
    case FMTDT_BLANK:
        for (int32_t i = 0; i < e->lValue; ++i) *end++ = ' ';
        *end = 0;
        return end;
    case FMTDT_DAY1: return FMTAppendNumber(end, d->nDay, 0);
    case FMTDT_DAY2: return Pad2(end, d->nDay);
    case FMTDT_DAYSHORT: return AppendDayName(end, w, false);
    case FMTDT_DAYLONG: return AppendDayName(end, w, true);
    case FMTDT_MONTH1: return FMTAppendNumber(end, d->nMonth, 0);
    case FMTDT_MONTH2: return Pad2(end, d->nMonth);
    case FMTDT_MONTHSHORT: return AppendMonthName(end, w, false);
    case FMTDT_MONTHLONG: return AppendMonthName(end, w, true);
    case FMTDT_YEAR2: return AppendYear2(end, d->nYear);
    case FMTDT_YEAR4: return FMTAppendNumber(end, d->nYear, 4);
    case FMTDT_HOUR12: return AppendHour(end, Hour12(d->nHour), w.leadZero);
    case FMTDT_HOUR12N: return AppendHour(end, Hour12(d->nHour), false);
    case FMTDT_HOUR24: return AppendHour(end, d->nHour, w.leadZero);
    case FMTDT_HOUR24N: return AppendHour(end, d->nHour, false);
    case FMTDT_MINUTE: return Pad2(end, d->nMinute);
    case FMTDT_SECOND: return Pad2(end, d->nSecond);
    case FMTDT_MICRO: return AppendMicro(start, end, w);
    case FMTDT_AMPM: return Append(end, d->nHour >= 12 ? w.pm : w.am);
    default: return end; // a number, which only a value text has
    }
}

// Appends the value under `picture` to the output; 0 for an invalid picture.
int WalkPicture(FMTCNTLBLOCK* b, const char* picture, bool localeNames) {
    FMTDATETOKEN* list = FMTParseDateText(picture, FMTDATE_PARSE_PICTURE);
    if (!list) return 0;
    Walk w{&b->datDef, false, b->lpsz1159, b->lpsz2359, (b->dwFlags & FMTF_OMITZEROMICRO) != 0, localeNames};
    if (b->bUseProfile) {
        w.leadZero = FMTProfileInt(FMTPI_TLZERO) != 0;
        w.am = FMTProfileString(FMTPS_1159), w.pm = FMTProfileString(FMTPS_2359);
    } else {
        w.leadZero = b->bTimeLeadZero && !(b->dwFlags & FMTF_NOHOURZERO);
    }
    char* start = b->lpszOutput;
    char* end = start + std::strlen(start);
    for (const FMTDATETOKEN* e = list; e; e = e->pNext) end = AppendElement(start, end, e, w);
    FMTFreeDateTokens(list);
    return 1;
}

bool Is(const char* picture, const char* keyword) { return picture && std::strcmp(picture, keyword) == 0; }

} // namespace

char* FMTAppendNumber(char* end, long v, int width) {
    unsigned long u = v < 0 ? 0ul - static_cast<unsigned long>(v) : static_cast<unsigned long>(v);
    char digits[24];
    int n = 0;
    do digits[n++] = char('0' + u % 10);
    while ((u /= 10) != 0);
    if (v < 0) *end++ = '-', --width;
    for (; width > n; --width) *end++ = '0';
    while (n) *end++ = digits[--n];
    *end = 0;
    return end;
}

long FMTDateStyleOf(const FMTCNTLBLOCK* b) {
    if (!b->bUseProfile) return long(b->iDateType);
    return b->dwFlags & FMTF_LONGDATE ? 0 : FMTProfileInt(FMTPI_DATETYPE);
}

const char* FMTDatePicOfStyle(const FMTCNTLBLOCK* b, long style) {
    if (style == FMT_DATETYPE_LONG) return b->bUseProfile ? FMTProfileString(FMTPS_LONGDATE) : b->lpszLongPic;
    if (style == FMT_DATETYPE_SHORT) return b->bUseProfile ? FMTProfileString(FMTPS_SHORTDATE) : b->lpszShortPic;
    return nullptr;
}

int OXLAPI FMTFormatDateTime(FMTCNTLBLOCK* b, int bLocaleNames) {
    if (!b || b->nType < FMT_DATE || b->nType > FMT_DATETIME || !b->lpszOutput) return 0;
    b->lpszOutput[0] = 0;
    if (b->bUseProfile && !(b->dwFlags & FMTF_DEFAULTTIME)) return 0;
    const long blockType = b->nType;
    long type = blockType;
    char timePic[kFMTTimePicSize] = "", defaultPic[kFMTDefaultPicSize];
    const char* picture = nullptr;
    if (type != FMT_DATE) {
        if (b->dwFlags & FMTF_DEFAULTTIME) FMTBuildTimePic(b, timePic), picture = timePic;
        else if (type == FMT_TIME) picture = b->iDateType == 0 ? b->lpszLongPic : b->iDateType == 1 ? b->lpszShortPic : nullptr;
    }
    if (type != FMT_TIME) {
        long style = FMTDateStyleOf(b);
        if (style == FMT_DATETYPE_JAPAN || style == FMT_DATETYPE_EMPEROR) {
            int done = style == FMT_DATETYPE_JAPAN ? FMTFormatJapanDate(b) : FMTFormatEmperorDate(b);
            // The date is written; a date-time goes on with its time alone.
            if (type == FMT_DATE || !done || !picture) return done;
            type = FMT_TIME;
        } else {
            picture = FMTDatePicOfStyle(b, style); // none for a style above 3
        }
    }
    if (blockType != FMT_TIME) { // the keywords
        if (Is(picture, "")) FMTGetDefaultDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "S")) FMTGetDefaultShortDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "L")) FMTGetDefaultLongDatePic(defaultPic, sizeof defaultPic), picture = defaultPic;
        else if (Is(picture, "T") || Is(picture, "E") || Is(picture, "ED")) {
            if (picture[0] == 'E') {
                int done = FMTFormatEmperorDate(b);
                if (!done || picture[1]) return done;
                b->dwFlags |= FMTF_OMITZEROMICRO;
            } else {
                b->dwFlags &= ~DWORD(FMTF_MICROSECONDS);
            }
            // The time picture alone follows, once: "T" in a date-time is not
            // composed with itself.
            FMTBuildTimePic(b, timePic), picture = timePic;
            type = FMT_TIME;
        }
    }
    if (!picture || !*picture) return 0;
    if (*timePic && type == FMT_DATETIME && (b->dwFlags & FMTF_DEFAULTTIME) && picture != timePic) {
        size_t n = std::strlen(picture);
        char* composed = static_cast<char*>(MemAlloc(DWORD(n + std::strlen(timePic) + 2)));
        if (!composed) return 0;
        std::memcpy(composed, picture, n);
        composed[n] = ' ';
        std::strcpy(composed + n + 1, timePic);
        int done = WalkPicture(b, composed, bLocaleNames != 0);
        MemFree(composed);
        return done;
    }
    return WalkPicture(b, picture, bLocaleNames != 0);
}
