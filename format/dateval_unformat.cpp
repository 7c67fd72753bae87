// Reading a text under one picture (FMTUnformatDateTimeStr), telling whether
// a text has a known form and whether it is the caller's picture
// (FMTIsValidDateString), and telling a valid picture (FMTIsDatePicValid).
#include "dateval.h"
#include "datefmt.h"
#include "fmtint.h"

#include <oxlrt31/datepic.h>

#include <cstring>
#include <initializer_list>

namespace {

bool Is(const char* picture, const char* keyword) { return std::strcmp(picture, keyword) == 0; }

bool BlanksOnly(const char* s) {
    while (*s == ' ' || *s == '\t' || *s == '\n') ++s;
    return !*s;
}

// "ED" and "E": a Japanese era date, for "E" perhaps followed by a time.
int UnformatEra(FMTCNTLBLOCK* b, bool timeAllowed) {
    int n = FMTReadJapanDate(b, 1);
    if (n < 1) return 0;
    const char* rest = b->lpszInput + n;
    if (BlanksOnly(rest)) {
        b->dwFlags = (b->dwFlags | FMTF_HASDATE) & ~DWORD(FMTF_HASTIME);
        return 1;
    }
    return timeAllowed && FMTReadTimeAfterDate(b, rest);
}

// Reads the input under the picture's list, as the kind its elements say.
int UnformatUnder(FMTCNTLBLOCK* b, const char* picture) {
    FMTDATETOKEN* list = FMTParseDateText(picture, FMTDATE_PARSE_PICTURE);
    int kind = 0; // an invalid picture has no kind, and no value text is read in mode 0
    FMTDatePicKind(list, &kind);
    LONG saved = b->nType;
    b->nType = kind;
    FMTDATETOKEN* value = FMTParseDateText(b->lpszInput, kind);
    int ok = FMTMatchDateTokens(value, list, b);
    b->nType = saved;
    FMTFreeDateTokens(value);
    FMTFreeDateTokens(list);
    return ok;
}

} // namespace

int OXLAPI FMTUnformatDateTimeStr(FMTCNTLBLOCK* b) {
    if (!b || !b->lpszInput || !*b->lpszInput || !b->lpszPicture) return 0;
    const char* picture = b->lpszPicture;
    char work[kFMTDefaultPicSize];
    if (Is(picture, "ED") || Is(picture, "E")) return UnformatEra(b, picture[1] == 0);
    if (!*picture) FMTGetDefaultDatePic(work, sizeof work), picture = work;
    else if (Is(picture, "S")) FMTGetDefaultShortDatePic(work, sizeof work), picture = work;
    else if (Is(picture, "L")) FMTGetDefaultLongDatePic(work, sizeof work), picture = work;
    else if (Is(picture, "T")) {
        b->dwFlags &= ~DWORD(FMTF_MICROSECONDS);
        FMTBuildTimePic(b, work), picture = work;
    }
    return UnformatUnder(b, picture);
}

int OXLAPI FMTIsValidDateString(FMTCNTLBLOCK* b) {
    if (!b || !b->lpszPicture || !*b->lpszPicture || !b->lpszInput || !*b->lpszInput) return 0;
    if (b->nType < FMT_DATE || b->nType > FMT_DATETIME) return 0;
    LONG country = b->bUseProfile ? FMTProfileInt(FMTPI_COUNTRY) : LONG(b->iCountry);
    char picture[kFMTDateFormPicSize];
    FMTDATETOKEN* form = FMTMatchDateForm(b->lpszInput, b->nType, picture, country == 1);
    if (!form) return 2;
    int result = 4;
    if (std::strcmp(picture, b->lpszPicture) == 0) {
        FMTDATETOKEN* value = FMTParseDateText(b->lpszInput, b->nType);
        if (FMTMatchDateTokens(value, form, b)) result = 1;
        FMTFreeDateTokens(value);
    }
    FMTFreeDateTokens(form);
    return result;
}

int OXLAPI FMTIsDatePicValid(const char* picture) {
    if (!picture) return 0;
    for (const char* keyword : {"", "S", "L", "E", "T", "ED"})
        if (Is(picture, keyword)) return 1;
    FMTDATETOKEN* list = FMTParseDateText(picture, FMTDATE_PARSE_PICTURE);
    FMTFreeDateTokens(list);
    return list != nullptr;
}
