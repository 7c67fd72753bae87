// The aggregate oxl_num_sum: the records of a group added in the order SQLite
// hands them over, by the library's NumAddition (each partial sum rounded as
// the library rounds). NULLs are left out; a group without a record gives NULL.
#include "oxlsqlite.h"

namespace oxlsql {

namespace {

struct Total {
    tagNUMBER sum;
    bool any;
};

void Step(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    tagNUMBER n;
    if (AnyNull(argc, argv)) return;
    auto* total = static_cast<Total*>(sqlite3_aggregate_context(ctx, sizeof(Total)));
    if (!total) return sqlite3_result_error_nomem(ctx);
    if (!ReadRecord(ctx, "oxl_num_sum", 1, argv[0], &n)) return;
    if (!total->any) NumCreateSmall(&total->sum, 0);
    NumAddition(&total->sum, &total->sum, &n);
    total->any = true;
}

void Final(sqlite3_context* ctx) {
    auto* total = static_cast<Total*>(sqlite3_aggregate_context(ctx, 0));
    if (total && total->any) ResultRecord(ctx, total->sum);
    else sqlite3_result_null(ctx);
}

} // namespace

int RegisterSum(sqlite3* db) {
    return sqlite3_create_function(db, "oxl_num_sum", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, nullptr, Step,
                                   Final);
}

} // namespace oxlsql
