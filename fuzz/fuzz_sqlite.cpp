// The SQLite extension's functions on any arguments: each call ends in a
// value or an SQL error, every record it gives back is a valid record, and
// the collation orders any two values one way only.
//
// Input: [function] [kinds: bit i, argument i is a blob] then up to three
// arguments separated by NUL bytes.
#include "fuzz_check.h"

#include <sqlite3.h>

#include <string>
#include <vector>

extern "C" int sqlite3_oxlsqlite_init(sqlite3*, char**, const sqlite3_api_routines*);

namespace {

const char* const kCalls[] = {
    "oxl_num(?1)", "oxl_num_from(?1)", "oxl_num_valid(?1)", "oxl_num_add(?1, ?2)", "oxl_num_sub(?1, ?2)",
    "oxl_num_mul(?1, ?2)", "oxl_num_div(?1, ?2)", "oxl_num_round(?1, ?2)", "oxl_num_cmp(?1, ?2)",
    "(SELECT oxl_num_sum(y) FROM (SELECT ?1 AS y UNION ALL SELECT ?2))", "oxl_format(?1, ?2, ?3)", "oxl_unformat(?1, ?2, ?3)",
    "oxl_date(?1, ?2, ?3)", "oxl_date_read(?1, ?2, ?3)", "oxl_date_read(?1)",
    "(CAST(?1 AS TEXT) COLLATE oxl_num < CAST(?2 AS TEXT) AND CAST(?2 AS TEXT) COLLATE oxl_num < CAST(?1 AS TEXT))",
};

sqlite3* Db() {
    static sqlite3* db = nullptr;
    if (!db) sqlite3_auto_extension(reinterpret_cast<void (*)()>(sqlite3_oxlsqlite_init)), sqlite3_open(":memory:", &db);
    return db;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 2) return 0;
    std::string rest(reinterpret_cast<const char*>(data + 2), size - 2);
    std::vector<std::string> args;
    for (size_t at = 0, end = 0; end != std::string::npos && args.size() < 3; at = end + 1)
        args.push_back(rest.substr(at, (end = rest.find('\0', at)) - at));
    size_t call = data[0] % std::size(kCalls);
    sqlite3_stmt* s = nullptr;
    std::string sql = std::string("SELECT x, typeof(x) != 'blob' OR oxl_num_valid(x) FROM (SELECT ") + kCalls[call] + " AS x)";
    FuzzRequire(sqlite3_prepare_v2(Db(), sql.c_str(), -1, &s, nullptr) == SQLITE_OK);
    for (size_t i = 0; i < args.size(); ++i)
        if (data[1] >> i & 1) sqlite3_bind_blob(s, int(i + 1), args[i].data(), int(args[i].size()), SQLITE_STATIC);
        else sqlite3_bind_text(s, int(i + 1), args[i].data(), int(args[i].size()), SQLITE_STATIC);
    int rc = sqlite3_step(s);
    FuzzRequire(rc == SQLITE_ROW || rc == SQLITE_ERROR);
    if (rc == SQLITE_ROW) FuzzRequire(sqlite3_column_int(s, 1) == 1); // a blob is a valid record
    if (rc == SQLITE_ROW && call == std::size(kCalls) - 1) FuzzRequire(sqlite3_column_int(s, 0) == 0); // never both ways
    sqlite3_finalize(s);
    return 0;
}
