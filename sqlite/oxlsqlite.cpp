// The extension's entry point: the loader finds it by the module's name
// (oxlsqlite) and it registers every function and the collation.
#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT1

#include "oxlsqlite.h"

namespace oxlsql {

int RegisterScalars(sqlite3* db, const Scalar* table, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const Scalar& s = table[i];
        int flags = SQLITE_UTF8 | (s.deterministic ? SQLITE_DETERMINISTIC : 0);
        int rc = sqlite3_create_function(db, s.name, s.nArg, flags, nullptr, s.call, nullptr, nullptr);
        if (rc != SQLITE_OK) return rc;
    }
    return SQLITE_OK;
}

} // namespace oxlsql

extern "C" __attribute__((visibility("default"))) int sqlite3_oxlsqlite_init(sqlite3* db, char** error,
                                                                             const sqlite3_api_routines* api) {
    SQLITE_EXTENSION_INIT2(api);
    int (*const registrations[])(sqlite3*) = {oxlsql::RegisterNumbers, oxlsql::RegisterOrder, oxlsql::RegisterSum,
                                              oxlsql::RegisterPictures, oxlsql::RegisterDates};
    for (auto step : registrations) {
        int rc = step(db);
        if (rc != SQLITE_OK) {
            *error = sqlite3_mprintf("oxlsqlite: registering the functions failed (%s)", sqlite3_errstr(rc));
            return rc;
        }
    }
    return SQLITE_OK;
}
