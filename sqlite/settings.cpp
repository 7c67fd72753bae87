// The settings the functions take by name (tools/named_settings.h), and
// the profile's own.
#include "settings.h"

#include "tools/named_settings.h"

#include <oxlrt31/datepic.h>

namespace oxlsql {

namespace {

const NamedSettings* Find(sqlite3_context* ctx, const char* fn, sqlite3_value* name) {
    std::string wanted = name ? Text(name) : "profile";
    if (const NamedSettings* s = NamedSettingsOf(wanted)) return s;
    Fail(ctx, fn, "no settings '" + wanted + "' (us, de, fr, ch, ja or profile)");
    return nullptr;
}

} // namespace

bool NumberSettings(sqlite3_context* ctx, const char* fn, sqlite3_value* name, FMTCNTLBLOCK* b) {
    const NamedSettings* s = Find(ctx, fn, name);
    if (!s) return false;
    NamedNumberBlock(*s, b);
    return true;
}

bool DateSettingsOf(sqlite3_context* ctx, const char* fn, sqlite3_value* name, DateSettings* out) {
    const NamedSettings* s = Find(ctx, fn, name);
    if (!s) return false;
    if (NamedIsProfile(*s)) {
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
