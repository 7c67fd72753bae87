// The pictures the engine hands out: the default time picture, the
// profile's date pictures, the long date picture without names, and what a
// picture holds.
#include "datefmt.h"
#include "datepic.h"
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <oxlrt31/datepic.h>

#include <cstring>

namespace {

char* Put(char* end, const char* text) {
    size_t n = std::strlen(text);
    std::memcpy(end, text, n + 1);
    return end + n;
}

// A profile string copied out under the profile region, cut to cb - 1 bytes.
int CopyProfileString(int key, char* dst, DWORD cb) {
    if (!dst || !cb) return 1;
    CRSectGuard guard(gCRProfileSect);
    const char* s = FMTProfileString(key);
    size_t n = s ? strnlen(s, cb - 1) : 0;
    std::memcpy(dst, s ? s : "", n);
    dst[n] = 0;
    return 1;
}

// The picture letters of date and time elements, by type from FMTDT_DAY1.
const char* const kLetters[] = {"d", "dd", "ddd", "dddd", "M", "MM", "MMM", "MMMM", "yy", "yyyy",
                                "hh", "hhhh", "mm", "ss", "mmmmmm", "AMPM", "h", "hhh"};

bool IsLiteral(const FMTDATETOKEN* e) { return e->nType >= FMTDT_STRING && e->nType <= FMTDT_BLANK; }
bool IsDayName(const FMTDATETOKEN* e) { return e->nType == FMTDT_DAYSHORT || e->nType == FMTDT_DAYLONG; }

// Only literals up to a day name, and only literals and day names from
// there to the end.
bool OnlyNamesFollow(const FMTDATETOKEN* e) {
    while (e && IsLiteral(e)) e = e->pNext;
    if (!e || !IsDayName(e)) return false;
    while (e && (IsLiteral(e) || IsDayName(e))) e = e->pNext;
    return !e;
}

bool SeparatorsAndBlanksOnly(const char* s) {
    for (; *s; ++s)
        if (!std::strchr(".-/:\\, \t", *s)) return false;
    return true;
}

// Writes the list back without day names and words.
void WriteWithoutNames(char* dst, const FMTDATETOKEN* e) {
    char* end = dst;
    *end = 0;
    while (e) {
        if (IsDayName(e)) { // it goes with the literals and names behind it
            while (e && (IsLiteral(e) || IsDayName(e))) e = e->pNext;
            continue;
        }
        if (e->nType == FMTDT_NUMBER) { // only a value text has numbers
        } else if (!IsLiteral(e)) {
            end = Put(end, kLetters[e->nType - FMTDT_DAY1]);
        } else if (OnlyNamesFollow(e)) {
            return;
        } else if (e->nType == FMTDT_CHAR) {
            *end++ = char(e->lValue), *end = 0;
        } else if (e->nType == FMTDT_BLANK) {
            for (int32_t i = 0; i < e->lValue; ++i) *end++ = ' ';
            *end = 0;
        } else {
            end = Put(end, SeparatorsAndBlanksOnly(e->pszText) ? e->pszText : " ");
        }
        e = e->pNext;
    }
}

// 1 when the picture parses and holds an element of which `is` says yes.
int PictureHas(const char* picture, bool (*is)(int32_t)) {
    FMTDATETOKEN* list = picture ? FMTParseDateText(picture, FMTDATE_PARSE_PICTURE) : nullptr;
    int has = 0;
    for (const FMTDATETOKEN* e = list; e && !has; e = e->pNext) has = is(e->nType);
    FMTFreeDateTokens(list);
    return has;
}

} // namespace

void FMTBuildTimePic(const FMTCNTLBLOCK* b, char* dst) {
    bool h24;
    char sep[3] = {0, 0, 0};
    const char* s;
    if (b->bUseProfile) {
        h24 = FMTProfileInt(FMTPI_TIME) != 0;
        s = FMTProfileString(FMTPS_TIME);
    } else {
        h24 = b->b24Hour != 0;
        s = b->lpszTimeSep;
    }
    if (s) std::memcpy(sep, s, strnlen(s, 2));
    char* end = Put(dst, h24 ? "hhhh" : "hh");
    end = Put(Put(Put(Put(end, sep), "mm"), sep), "ss");
    if (b->dwFlags & FMTF_MICROSECONDS) end = Put(Put(end, sep), "mmmmmm");
    if (!h24) Put(end, " AMPM");
}

int OXLAPI FMTGetDefaultShortDatePic(char* dst, DWORD cb) { return CopyProfileString(FMTPS_SHORTDATE, dst, cb); }

int OXLAPI FMTGetDefaultLongDatePic(char* dst, DWORD cb) { return CopyProfileString(FMTPS_LONGDATE, dst, cb); }

int OXLAPI FMTGetDefaultDatePic(char* dst, DWORD cb) {
    return FMTProfileInt(FMTPI_DATETYPE) ? FMTGetDefaultShortDatePic(dst, cb) : FMTGetDefaultLongDatePic(dst, cb);
}

int OXLAPI FMTGetGeeLongDatePic(char* dst, DWORD cb, int bWithTime) {
    if (!dst) return 0;
    dst[0] = 0;
    FMTGetDefaultLongDatePic(dst, cb);
    if (bWithTime) {
        FMTCNTLBLOCK block;
        FMTInitCntlBlock(&block);
        block.bUseProfile = 1;
        block.dwFlags &= ~DWORD(FMTF_MICROSECONDS);
        char timePic[kFMTTimePicSize];
        FMTBuildTimePic(&block, timePic);
        Put(Put(dst + std::strlen(dst), " "), timePic);
    }
    FMTDATETOKEN* list = FMTParseDateText(dst, FMTDATE_PARSE_PICTURE);
    dst[0] = 0;
    if (!list) return 0;
    WriteWithoutNames(dst, list);
    FMTFreeDateTokens(list);
    return 1;
}

int OXLAPI FMTDatePicHasDate(const char* picture) { return PictureHas(picture, FMTDTIsDate); }

int OXLAPI FMTDatePicHasTime(const char* picture) { return PictureHas(picture, FMTDTIsTime); }
