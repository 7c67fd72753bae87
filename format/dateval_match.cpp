// Matching a value text's list against a picture's, element by element.
// The matcher forgives in chosen ways: any separator fits any separator,
// blanks count for nothing, a picture separator may stand without its value,
// and time fields may be missing at the end.
#include "dateval.h"
#include "fmtint.h"

#include "os/osl.h"

#include <oxlrt31/intl.h>

#include <cstring>

namespace {

struct Match {
    DATDEF d{1, 1, 1900, 0, 0, 0, 0};
    bool date = false, time = false, h12 = false, h24 = false, noZero = false;
    const char* dayName = nullptr;
};

bool IsBlankChar(char c) { return c == ' ' || c == '\t' || c == '\n'; }

bool BlanksOnly(const FMTDATETOKEN* e) {
    if (e->nType == FMTDT_BLANK) return true;
    if (e->nType != FMTDT_STRING) return false;
    for (const char* s = e->pszText; *s; ++s)
        if (!IsBlankChar(*s)) return false;
    return true;
}

const FMTDATETOKEN* SkipBlanks(const FMTDATETOKEN* e) {
    while (e && BlanksOnly(e)) e = e->pNext;
    return e;
}

// Equal without regard to case once both are cut of blanks at both ends.
bool SameWords(const char* a, const char* b) {
    char x[kFMTDateWordMax], y[kFMTDateWordMax];
    auto cut = [](char* out, const char* s) {
        while (IsBlankChar(*s)) ++s;
        size_t n = strnlen(s, kFMTDateWordMax - 1);
        while (n && IsBlankChar(s[n - 1])) --n;
        std::memcpy(out, s, n);
        out[n] = 0;
    };
    cut(x, a), cut(y, b);
    return gOsl.text->lstrcmpiA(x, y) == 0;
}

bool IsNumber(const FMTDATETOKEN* v) { return v && v->nType == FMTDT_NUMBER; }
bool IsString(const FMTDATETOKEN* v) { return v && v->nType == FMTDT_STRING; }

// What one picture element does with the value cursor.
enum Step { kFail, kTake, kStay };

// A number field of the time, which may be missing.
Step TimeField(const FMTDATETOKEN* v, Match& m, LONG DATDEF::*field, uint32_t limit) {
    if (!v) return kStay;
    if (!IsNumber(v)) return m.h24 ? kFail : kStay;
    if (uint32_t(v->lValue) > limit) return kFail;
    m.d.*field = v->lValue, m.time = true;
    return kTake;
}

Step Hour(const FMTDATETOKEN* v, Match& m, uint32_t limit, bool noZero) {
    if (!v) return kStay;
    if (!IsNumber(v) || uint32_t(v->lValue) > limit) return kFail;
    m.d.nHour = v->lValue, m.time = true;
    (limit == 12 ? m.h12 : m.h24) = true;
    m.noZero = m.noZero || noZero;
    return kTake;
}

Step Year(const FMTDATETOKEN* v, Match& m, bool full) {
    if (!IsNumber(v)) return kFail;
    uint32_t y = uint32_t(v->lValue);
    bool marked = full && (y & kFMTFullYearMark) == kFMTFullYearMark;
    if (marked) y &= ~kFMTFullYearMark;
    if (y > 9999) return kFail;
    m.d.nYear = LONG(y) + (y < 100 && !marked ? FMTCentury(LONG(y)) : 0);
    m.date = true;
    return kTake;
}

Step AmPm(const FMTDATETOKEN* v, Match& m, const FMTCNTLBLOCK* b) {
    if (!v) return m.h12 ? kFail : kStay;
    if (!IsString(v)) return kFail;
    const char* am = b->bUseProfile ? FMTProfileString(FMTPS_1159) : b->lpsz1159;
    const char* pm = b->bUseProfile ? FMTProfileString(FMTPS_2359) : b->lpsz2359;
    bool isPm = pm && gOsl.text->lstrcmpiA(v->pszText, pm) == 0;
    bool isAm = !isPm && am && gOsl.text->lstrcmpiA(v->pszText, am) == 0;
    if ((!isAm && !isPm) || m.d.nHour < 1 || m.d.nHour > 12) return kFail;
    if (isPm && m.d.nHour != 12) m.d.nHour += 12;
    if (isAm && m.d.nHour == 12) m.d.nHour = 0;
    return kTake;
}

// A month name, or a month name fused with the picture's next literal,
// which is then taken too.
Step MonthName(const FMTDATETOKEN* v, const FMTDATETOKEN*& p, Match& m) {
    if (!IsString(v)) return kFail;
    int month = FMTMonthFromName(v->pszText);
    if (!month && p->pNext && p->pNext->nType == FMTDT_STRING) {
        month = FMTMonthWithSuffix(v->pszText, p->pNext->pszText);
        if (month) p = p->pNext;
    }
    if (!month) return kFail;
    m.d.nMonth = month, m.date = true;
    return kTake;
}

Step Element(const FMTDATETOKEN* v, const FMTDATETOKEN*& p, Match& m, const FMTCNTLBLOCK* b) {
    switch (p->nType) {
    case FMTDT_STRING: return IsString(v) && SameWords(v->pszText, p->pszText) ? kTake : kFail;
    case FMTDT_CHAR:
        if (!v || v->nType == FMTDT_CHAR) return v ? kTake : kStay;
        return (b->nType == FMT_TIME || b->nType == FMT_DATETIME) && m.h24 ? kFail : kStay;
    case FMTDT_DAY1:
    case FMTDT_DAY2:
        if (!IsNumber(v) || uint32_t(v->lValue) - 1 > 30) return kFail;
        m.d.nDay = v->lValue, m.date = true;
        return kTake;
    case FMTDT_DAYSHORT:
    case FMTDT_DAYLONG:
        if (!IsString(v) || !FMTDayFromName(v->pszText)) return kFail;
        m.dayName = v->pszText;
        return kTake;
    case FMTDT_MONTH1:
    case FMTDT_MONTH2:
        if (!IsNumber(v) || uint32_t(v->lValue) - 1 > 11) return kFail;
        m.d.nMonth = v->lValue, m.date = true;
        return kTake;
    case FMTDT_MONTHSHORT:
    case FMTDT_MONTHLONG: return MonthName(v, p, m);
    case FMTDT_YEAR2: return Year(v, m, false);
    case FMTDT_YEAR4: return Year(v, m, true);
    case FMTDT_HOUR12: return Hour(v, m, 12, false);
    case FMTDT_HOUR12N: return Hour(v, m, 12, true);
    case FMTDT_HOUR24: return Hour(v, m, 24, false);
    case FMTDT_HOUR24N: return Hour(v, m, 24, true);
    case FMTDT_MINUTE: return TimeField(v, m, &DATDEF::nMinute, 59);
    case FMTDT_SECOND: return TimeField(v, m, &DATDEF::nSecond, 59);
    case FMTDT_MICRO: return TimeField(v, m, &DATDEF::nMicrosecond, 999999);
    case FMTDT_AMPM: return AmPm(v, m, b);
    default: return kFail;
    }
}

DWORD WithFlag(DWORD flags, DWORD flag, bool on) { return on ? flags | flag : flags & ~flag; }

} // namespace

int FMTMatchDateTokens(const FMTDATETOKEN* v, const FMTDATETOKEN* p, FMTCNTLBLOCK* b) {
    if (!v || !p) return 0;
    Match m;
    for (;;) {
        v = SkipBlanks(v), p = SkipBlanks(p);
        if (!p) {
            if (v) return 0; // value elements left over
            break;
        }
        Step step = Element(v, p, m, b);
        if (step == kFail) return 0;
        if (step == kTake) v = v->pNext;
        p = p->pNext;
    }
    if (b->nType != FMT_TIME && !FMTIsDateValid(m.d.nMonth, m.d.nDay, m.d.nYear, m.dayName)) return 0;
    b->datDef = m.d;
    DWORD flags = WithFlag(b->dwFlags, FMTF_HASDATE, m.date);
    flags = WithFlag(flags, FMTF_HASTIME, m.time);
    b->dwFlags = WithFlag(flags, FMTF_NOHOURZERO, m.noZero);
    return 1;
}

int FMTMonthWithSuffix(const char* word, const char* suffix) {
    size_t wl = std::strlen(word), sl = std::strlen(suffix);
    if (wl <= sl || wl >= size_t(kFMTDateWordMax)) return 0;
    const char* cut = word;
    while (*cut && size_t(cut - word) < wl - sl) cut += IntlBytesInNextChar(cut);
    if (size_t(cut - word) != wl - sl || std::memcmp(cut, suffix, sl) != 0) return 0;
    char head[kFMTDateWordMax];
    std::memcpy(head, word, wl - sl);
    head[wl - sl] = 0;
    return FMTMonthFromName(head);
}

int FMTDatePicKind(const FMTDATETOKEN* p, int* kind) {
    int k = 0;
    for (; p; p = p->pNext) k |= FMTDTIsDate(p->nType) ? 1 : FMTDTIsTime(p->nType) ? 2 : 0;
    *kind = k;
    return k != 0;
}
