// Dates to and from their records (the form is told in datevalue.h).
#include "datevalue.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace oxlsql {

namespace {

constexpr int kFractionDigits = 12; // hhmmss and six places of microseconds

bool InRange(const DATDEF& d) {
    return d.nYear >= 0 && d.nYear <= 9999 && d.nMonth >= 1 && d.nMonth <= 12 && d.nDay >= 1 && d.nDay <= 31 &&
           d.nHour >= 0 && d.nHour <= 23 && d.nMinute >= 0 && d.nMinute <= 59 && d.nSecond >= 0 && d.nSecond <= 59 &&
           d.nMicrosecond >= 0 && d.nMicrosecond <= 999999;
}

// The fields of a record's fixed text "yyyymmdd.hhmmssuuuuuu" (digits of
// the fraction left out at its end are zeros).
bool FromText(const char* text, DATDEF* d) {
    const char* point = std::strchr(text, '.');
    size_t whole = point ? size_t(point - text) : std::strlen(text);
    std::string fraction = point ? point + 1 : "";
    if (whole > 8 || fraction.size() > size_t(kFractionDigits) || std::strspn(text, "0123456789.") != std::strlen(text))
        return false;
    long date = std::atol(std::string(text, whole).c_str());
    fraction.resize(kFractionDigits, '0');
    auto field = [&](int at, int width) { return LONG(std::atol(fraction.substr(size_t(at), size_t(width)).c_str())); };
    *d = {LONG(date / 100 % 100), LONG(date % 100), LONG(date / 10000), field(0, 2), field(2, 2), field(4, 2), field(6, 6)};
    return InRange(*d);
}

} // namespace

bool ReadDate(sqlite3_context* ctx, const char* fn, sqlite3_value* value, DATDEF* out) {
    tagNUMBER n;
    char text[41] = "";
    bool ok;
    if (sqlite3_value_type(value) == SQLITE_TEXT && Text(value).find('-') != std::string::npos) {
        ok = FMTIsoToDatDef(Text(value).c_str(), out) && InRange(*out);
        std::snprintf(text, sizeof text, "%s", Text(value).c_str());
    } else {
        if (!ReadRecord(ctx, fn, 1, value, &n)) return false;
        ok = NumToAscii(&n, text, 40) > 0 && FromText(text, out);
    }
    if (!ok) Fail(ctx, fn, "'" + std::string(text) + "' is not a date value (yyyymmdd.hhmmssuuuuuu, or yyyy-mm-dd-hh.mm.ss.uuuuuu)");
    return ok;
}

void ResultDate(sqlite3_context* ctx, const char* fn, const DATDEF& d) {
    if (!InRange(d)) return Fail(ctx, fn, "the date lies beyond the years 0 to 9999");
    char text[32];
    std::snprintf(text, sizeof text, "%04ld%02ld%02ld.%02ld%02ld%02ld%06ld", long(d.nYear), long(d.nMonth), long(d.nDay),
                  long(d.nHour), long(d.nMinute), long(d.nSecond), long(d.nMicrosecond));
    tagNUMBER n;
    NumAsciiToNumber(&n, text);
    ResultRecord(ctx, n);
}

} // namespace oxlsql
