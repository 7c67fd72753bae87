// Dates under pictures: oxl_date(value, picture [, settings]) writes a date
// value (datevalue.h) under a date picture; oxl_date_read(text [, picture
// [, settings]]) reads a typed text back to a date value, under the picture
// alone, or without one as a host's date field reads it (the short and long
// pictures, the known forms, Japanese dates).
//
// The picture's elements choose the kind: date, time or both; of the
// keywords, "T" is a time, "E" a date-time, the others dates. Text is in the
// library's code page: the English names of its string table, and under the
// era keywords "ED" and "E" its Shift-JIS signs.
#include "datevalue.h"
#include "settings.h"

#include <oxlrt31/datepic.h>

#include <vector>

namespace oxlsql {

namespace {

// FMT_DATE, FMT_TIME or FMT_DATETIME for a valid picture, 0 for another.
LONG KindOf(const std::string& picture) {
    if (!FMTIsDatePicValid(picture.c_str())) return 0;
    bool date = FMTDatePicHasDate(picture.c_str()), time = FMTDatePicHasTime(picture.c_str());
    if (date || time) return date && time ? FMT_DATETIME : date ? FMT_DATE : FMT_TIME;
    return picture == "T" ? FMT_TIME : picture == "E" ? FMT_DATETIME : FMT_DATE;
}

bool PictureKind(sqlite3_context* ctx, const char* fn, const std::string& picture, LONG* kind) {
    *kind = KindOf(picture);
    if (!*kind) Fail(ctx, fn, "'" + picture + "' is not a valid date picture");
    return *kind != 0;
}

void Date(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    DATDEF d;
    DateSettings s;
    LONG kind;
    if (AnyNull(argc, argv) || !ReadDate(ctx, "oxl_date", argv[0], &d) ||
        !DateSettingsOf(ctx, "oxl_date", argc > 2 ? argv[2] : nullptr, &s))
        return;
    std::string picture = DatePicture(s, Text(argv[1]));
    if (!PictureKind(ctx, "oxl_date", picture, &kind)) return;
    // The picture stands as the long one, without the default time behind it
    // ("T" is that time picture itself).
    FMTCNTLBLOCK b = DateBlock(s, kind);
    b.datDef = d, b.lpszLongPic = picture.data();
    if (picture != "T") b.dwFlags &= ~DWORD(FMTF_DEFAULTTIME);
    int most = FMTGetMaxFormattedDTLen(&b, 64);
    // Names of the user's locale aren't measured: room for them besides.
    std::vector<char> out(size_t(most > 0 ? most : 64) + 16 * (picture.size() + 64));
    b.lpszOutput = out.data();
    if (!FMTFormatDateTime(&b, 0)) return Fail(ctx, "oxl_date", "the date has no text under '" + picture + "'");
    sqlite3_result_text(ctx, out.data(), -1, SQLITE_TRANSIENT);
}

void DateRead(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    DateSettings s;
    LONG kind = FMT_DATETIME;
    if (AnyNull(argc, argv) || !DateSettingsOf(ctx, "oxl_date_read", argc > 2 ? argv[2] : nullptr, &s)) return;
    std::string text = Text(argv[0]), picture = argc > 1 ? DatePicture(s, Text(argv[1])) : "";
    if (argc > 1 && !PictureKind(ctx, "oxl_date_read", picture, &kind)) return;
    FMTCNTLBLOCK b = DateBlock(s, kind);
    b.lpszInput = text.data(), b.lpszPicture = picture.data();
    int ok = argc > 1 ? FMTUnformatDateTimeStr(&b) : FMTValidateDateTime(&b);
    if (!ok) {
        std::string under = argc > 1 ? "under the picture '" + picture + "'" : "as a date";
        return Fail(ctx, "oxl_date_read", "'" + text + "' does not read " + under);
    }
    ResultDate(ctx, "oxl_date_read", b.datDef);
}

} // namespace

int RegisterDates(sqlite3* db) {
    static const Scalar kScalars[] = {
        {"oxl_date", 2, Date, false},      {"oxl_date", 3, Date, false},      {"oxl_date_read", 1, DateRead, false},
        {"oxl_date_read", 2, DateRead, false}, {"oxl_date_read", 3, DateRead, false},
    };
    return RegisterScalars(db, kScalars, sizeof kScalars / sizeof kScalars[0]);
}

} // namespace oxlsql
