// The named regional settings, and the profile's own.
#include "settings.h"

#include <oxlrt31/datepic.h>

namespace oxlsql {

namespace {

struct Named {
    const char* name;
    const char* currency;
    DWORD iCurrency, iNegCurr;
    char thousand, decimal;
    const char *shortPic, *longPic;
    DWORD h24, country;
};

// "profile" is the last entry: its fields come from the profile itself.
constexpr Named kNamed[] = {
    {"us", "$", 0, 0, ',', '.', "M/d/yy", "dddd, MMMM dd, yyyy", 0, 1},
    {"de", "DM", 3, 8, '.', ',', "dd.MM.yyyy", "dddd, d. MMMM yyyy", 1, 49},
    {"fr", "F", 3, 8, ' ', ',', "dd/MM/yyyy", "dddd d MMMM yyyy", 1, 33},
    {"ch", "SFr.", 2, 2, '\'', '.', "dd.MM.yyyy", "dddd, d. MMMM yyyy", 1, 41},
    {"ja", "\\", 0, 1, ',', '.', "yyyy/MM/dd", "yyyy/MM/dd", 1, 81},
    {"profile", "", 0, 0, 0, 0, "", "", 0, 1},
};

const Named* Find(sqlite3_context* ctx, const char* fn, sqlite3_value* name) {
    std::string wanted = name ? Text(name) : "profile";
    for (const Named& s : kNamed)
        if (wanted == s.name) return &s;
    Fail(ctx, fn, "no settings '" + wanted + "' (us, de, fr, ch, ja or profile)");
    return nullptr;
}

bool IsProfile(const Named* s) { return s == &kNamed[sizeof kNamed / sizeof kNamed[0] - 1]; }

} // namespace

bool NumberSettings(sqlite3_context* ctx, const char* fn, sqlite3_value* name, FMTCNTLBLOCK* b) {
    const Named* s = Find(ctx, fn, name);
    if (!s) return false;
    FMTInitCntlBlock(b);
    b->bUseProfile = IsProfile(s);
    b->lpszCurrency = const_cast<char*>(s->currency);
    b->iCurrency = s->iCurrency, b->iNegCurr = s->iNegCurr;
    b->chThousand = s->thousand, b->chDecimal = s->decimal;
    b->bLeadZero = 1, b->nDigits = 2;
    return true;
}

bool DateSettingsOf(sqlite3_context* ctx, const char* fn, sqlite3_value* name, DateSettings* out) {
    const Named* s = Find(ctx, fn, name);
    if (!s) return false;
    if (IsProfile(s)) {
        FMTPROFILEINTL p;
        FMTGetProfileIntl(&p);
        char defaultPic[64];
        FMTGetDefaultDatePic(defaultPic, sizeof defaultPic);
        *out = {p.sShortDate, p.sLongDate, defaultPic, p.sTime, p.s1159, p.s2359, p.iTime != 0, p.iTLZero, p.iCountry,
                p.iEmpDateBoundryCheck};
        return true;
    }
    *out = {s->shortPic, s->longPic, s->shortPic, ":", s->h24 ? "" : "AM", s->h24 ? "" : "PM", s->h24, s->h24, s->country, 0};
    return true;
}

FMTCNTLBLOCK DateBlock(DateSettings& s, LONG nType) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.nType = nType;
    b.lpszShortPic = s.shortPic.data(), b.lpszLongPic = s.longPic.data(), b.lpszTimeSep = s.timeSep.data();
    b.lpsz1159 = s.am.data(), b.lpsz2359 = s.pm.data();
    b.b24Hour = s.h24, b.bTimeLeadZero = s.timeLeadZero;
    b.iCountry = s.country, b.bEmpBoundryCheck = s.boundaryCheck;
    return b;
}

std::string DatePicture(const DateSettings& s, const std::string& picture) {
    return picture.empty() ? s.defaultPic : picture == "S" ? s.shortPic : picture == "L" ? s.longPic : picture;
}

} // namespace oxlsql
