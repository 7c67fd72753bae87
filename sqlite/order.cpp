// Ordering records by value: the collation oxl_num and the function
// oxl_num_cmp, both by the library's NumCompare.
//
// SQLite hands a collation only TEXT values; a record stored as a blob is
// sorted through its bytes as text: ORDER BY CAST(v AS TEXT) COLLATE oxl_num,
// and the same expression makes an index. The collation can't raise an
// error, so it orders what isn't a valid record after every record (the
// null record first of all, as NumCompare has it), those among themselves by
// their bytes and then by length. The order is total and never changes, so
// indexes built on it stay consistent.
#include "oxlsqlite.h"

#include <cstring>

namespace oxlsql {

namespace {

int CompareBytes(int sizeA, const void* a, int sizeB, const void* b) {
    int shorter = sizeA < sizeB ? sizeA : sizeB; // an empty text may come as a null pointer
    int common = shorter ? std::memcmp(a, b, size_t(shorter)) : 0;
    if (common) return common < 0 ? -1 : 1;
    return sizeA < sizeB ? -1 : sizeA > sizeB;
}

tagNUMBER Record(const void* bytes) {
    tagNUMBER n = {};
    std::memcpy(&n, bytes, size_t(static_cast<const BYTE*>(bytes)[0]) + 1);
    return n;
}

int Collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    bool validA = IsValidRecord(a, sizeA), validB = IsValidRecord(b, sizeB);
    if (validA != validB) return validA ? -1 : 1;
    if (!validA) return CompareBytes(sizeA, a, sizeB, b);
    tagNUMBER x = Record(a), y = Record(b);
    return NumCompare(&x, &y);
}

void Cmp(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    tagNUMBER a, b;
    if (AnyNull(argc, argv) || !ReadRecord(ctx, "oxl_num_cmp", 1, argv[0], &a) ||
        !ReadRecord(ctx, "oxl_num_cmp", 2, argv[1], &b))
        return;
    sqlite3_result_int(ctx, NumCompare(&a, &b));
}

} // namespace

int RegisterOrder(sqlite3* db) {
    static const Scalar kScalars[] = {{"oxl_num_cmp", 2, Cmp, true}};
    int rc = sqlite3_create_collation(db, "oxl_num", SQLITE_UTF8, nullptr, Collate);
    return rc == SQLITE_OK ? RegisterScalars(db, kScalars, 1) : rc;
}

} // namespace oxlsql
