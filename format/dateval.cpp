// FMTValidateDateTime: a typed text tried under the short and long pictures,
// the known text forms, and as a Japanese date, in that order.
#include "dateval.h"
#include "datefmt.h"
#include "fmtint.h"

#include <oxlrt31/datepic.h>
#include <oxlrt31/intl.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

constexpr const char* kRetryTime = "hhhh.mm.ss.mmmmmm";

// Matches the value list under one picture (null or invalid: no match).
int MatchUnder(const FMTDATETOKEN* value, const char* picture, FMTCNTLBLOCK* b) {
    FMTDATETOKEN* list = picture ? FMTParseDateText(picture, FMTDATE_PARSE_PICTURE) : nullptr;
    int ok = FMTMatchDateTokens(value, list, b);
    FMTFreeDateTokens(list);
    return ok;
}

// Matches under `picture`, a blank and `time` (none: the picture alone).
int MatchUnderWithTime(const FMTDATETOKEN* value, const char* picture, const char* time, FMTCNTLBLOCK* b) {
    if (!picture || !time) return MatchUnder(value, picture, b);
    size_t n = std::strlen(picture);
    char* composed = static_cast<char*>(MemAlloc(DWORD(n + std::strlen(time) + 2)));
    if (!composed) return 0;
    std::memcpy(composed, picture, n);
    composed[n] = ' ';
    std::strcpy(composed + n + 1, time);
    int ok = MatchUnder(value, composed, b);
    MemFree(composed);
    return ok;
}

// Matches under the picture of the text's known form, if it has one.
int MatchForm(const FMTDATETOKEN* value, FMTCNTLBLOCK* b, bool monthFirst) {
    char picture[kFMTDateFormPicSize];
    FMTDATETOKEN* form = FMTMatchDateForm(b->lpszInput, b->nType, picture, monthFirst);
    int ok = FMTMatchDateTokens(value, form, b);
    FMTFreeDateTokens(form);
    return ok;
}

int ValidateTime(const FMTDATETOKEN* value, FMTCNTLBLOCK* b, const char* timePic) {
    const char* picture = b->dwFlags & FMTF_DEFAULTTIME ? timePic : b->lpszShortPic;
    if (MatchUnder(value, picture, b)) return 1;
    if (b->dwFlags & FMTF_STRICTTIME) return 0;
    return MatchForm(value, b, false);
}

int ValidateDate(const FMTDATETOKEN* value, FMTCNTLBLOCK* b, const char* timePic, bool monthFirst) {
    const char* shortPic = FMTDatePicOfStyle(b, FMT_DATETYPE_SHORT);
    const char* longPic = FMTDatePicOfStyle(b, FMT_DATETYPE_LONG);
    const char* time = b->nType == FMT_DATETIME && (b->dwFlags & FMTF_DEFAULTTIME) ? timePic : nullptr;
    if (MatchUnderWithTime(value, shortPic, time, b) || MatchUnderWithTime(value, longPic, time, b)) return 1;
    if (MatchForm(value, b, monthFirst)) return 1;
    if (b->nType != FMT_DATETIME) return 0;
    return MatchUnderWithTime(value, shortPic, kRetryTime, b) || MatchUnderWithTime(value, longPic, kRetryTime, b);
}

bool BlanksOnly(const char* s) {
    while (*s == ' ' || *s == '\t' || *s == '\n') ++s;
    return !*s;
}

// A Japanese date, alone or followed by a time.
int ValidateJapan(FMTCNTLBLOCK* b) {
    int n = FMTReadJapanDate(b, 0);
    if (n < 1) return 0;
    const char* rest = b->lpszInput + n;
    if (BlanksOnly(rest)) {
        b->dwFlags = (b->dwFlags | FMTF_HASDATE) & ~DWORD(FMTF_HASTIME);
        return 1;
    }
    return b->nType == FMT_DATETIME && FMTReadTimeAfterDate(b, rest);
}

} // namespace

int FMTReadTimeAfterDate(FMTCNTLBLOCK* b, const char* rest) {
    FMTCNTLBLOCK copy = *b;
    copy.nType = FMT_TIME;
    copy.lpszInput = const_cast<char*>(rest);
    if (!FMTValidateDateTime(&copy)) return 0;
    b->datDef.nHour = copy.datDef.nHour, b->datDef.nMinute = copy.datDef.nMinute;
    b->datDef.nSecond = copy.datDef.nSecond, b->datDef.nMicrosecond = copy.datDef.nMicrosecond;
    b->dwFlags |= FMTF_HASDATE | FMTF_HASTIME;
    return 1;
}

int OXLAPI FMTValidateDateTime(FMTCNTLBLOCK* b) {
    if (!b || b->nType < FMT_DATE || b->nType > FMT_DATETIME) return 0;
    if (b->bUseProfile && !(b->dwFlags & FMTF_DEFAULTTIME)) return 0;
    if (!b->lpszInput || !*b->lpszInput) return 0;
    LONG country = b->bUseProfile ? FMTProfileInt(FMTPI_COUNTRY) : LONG(b->iCountry);
    char timePic[kFMTTimePicSize] = "";
    if (b->nType == FMT_TIME || (b->nType == FMT_DATETIME && (b->dwFlags & FMTF_DEFAULTTIME))) FMTBuildTimePic(b, timePic);
    FMTDATETOKEN* value = FMTParseDateText(b->lpszInput, b->nType);
    if (!value) return 0;
    int ok = b->nType == FMT_TIME ? ValidateTime(value, b, timePic) : ValidateDate(value, b, timePic, country == 1);
    FMTFreeDateTokens(value);
    if (ok || b->nType == FMT_TIME) return ok;
    if (!IntlDBCSEnabled() || !IntlNextDBCInStr(b->lpszInput)) return 0;
    return ValidateJapan(b);
}
