// A date held in a NUMBER record. The library leaves the form to its hosts;
// this extension's form is the value yyyymmdd.hhmmssuuuuuu (31 December 1999,
// 23:59:59.000123 is 19991231.235959000123), whose numeric order is the
// order in time. A date may also be given as text in the library's ISO form
// "yyyy-mm-dd-hh.mm.ss.uuuuuu" (the time or its tail may be left out): a
// text with a "-" in it is read so, any other as a number.
#ifndef OXL_SQLITE_DATEVALUE_H
#define OXL_SQLITE_DATEVALUE_H

#include "oxlsqlite.h"

namespace oxlsql {

// The date of a record, a number or an ISO text; false, with the error given,
// for a value that isn't a date of the years 0 to 9999 with every field in range.
bool ReadDate(sqlite3_context* ctx, const char* fn, sqlite3_value* value, DATDEF* out);
// The record of a date, or the error for a date beyond those years.
void ResultDate(sqlite3_context* ctx, const char* fn, const DATDEF& d);

} // namespace oxlsql

#endif
