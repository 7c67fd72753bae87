// What the files of the SQLite extension share. Every file but the entry
// point reaches SQLite through the routines the loader hands the entry point.
//
// Conventions of every function: SQL NULL in any argument gives NULL; a
// record argument is a blob holding a NUMBER record (the 25 bytes a host
// stores, or at least its length byte and data), or a number or its text,
// read as oxl_num_from reads it; a record result is a 25-byte blob whose
// bytes past the record's data are zero. Bad input gives an SQL error whose
// message names the function.
#ifndef OXL_SQLITE_OXLSQLITE_H
#define OXL_SQLITE_OXLSQLITE_H

#include <sqlite3ext.h>

#include <oxlrt31/fmt.h>

#include <string>

extern const sqlite3_api_routines* sqlite3_api;

namespace oxlsql {

// One scalar function of a registration table.
struct Scalar {
    const char* name;
    int nArg;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
    bool deterministic; // the same result for the same arguments, whatever the profile
};
int RegisterScalars(sqlite3* db, const Scalar* table, size_t count);

// record.cpp: records in and out.
bool IsValidRecord(const void* bytes, int size);
bool ReadRecord(sqlite3_context* ctx, const char* fn, int argument, sqlite3_value* value, tagNUMBER* out);
bool ReadNumberText(sqlite3_context* ctx, const char* fn, const char* text, int size, tagNUMBER* out);
void ResultRecord(sqlite3_context* ctx, const tagNUMBER& n);
bool AnyNull(int argc, sqlite3_value** argv);
std::string Text(sqlite3_value* value);
void Fail(sqlite3_context* ctx, const char* fn, const std::string& why);

// The functions of each file, registered on a connection; SQLITE_OK or an error code.
int RegisterNumbers(sqlite3* db);  // numbers.cpp
int RegisterOrder(sqlite3* db);    // order.cpp
int RegisterSum(sqlite3* db);      // sum.cpp
int RegisterPictures(sqlite3* db); // pictures.cpp
int RegisterDates(sqlite3* db);    // dates.cpp

} // namespace oxlsql

#endif
