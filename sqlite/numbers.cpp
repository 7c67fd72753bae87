// The record's text, a record from a number, the check of a stored blob, and
// the arithmetic: each one call of the library.
#include "oxlsqlite.h"

namespace oxlsql {

namespace {

// Wide enough for every record's digits in fixed form up to 1E+107; the
// library writes larger and smaller ones in its scientific form.
constexpr WORD kTextWidth = 108;

void Num(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    tagNUMBER n;
    if (AnyNull(argc, argv) || !ReadRecord(ctx, "oxl_num", 1, argv[0], &n)) return;
    if (n.bLength == 0) return sqlite3_result_null(ctx); // the host's null value
    char text[kTextWidth + 1];
    if (!NumToAscii(&n, text, kTextWidth)) return Fail(ctx, "oxl_num", "the record has no text");
    sqlite3_result_text(ctx, text, -1, SQLITE_TRANSIENT);
}

void NumFrom(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    tagNUMBER n;
    if (!AnyNull(argc, argv) && ReadRecord(ctx, "oxl_num_from", 1, argv[0], &n)) ResultRecord(ctx, n);
}

void NumValid(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (AnyNull(argc, argv)) return;
    bool blob = sqlite3_value_type(argv[0]) == SQLITE_BLOB;
    sqlite3_result_int(ctx, blob && IsValidRecord(sqlite3_value_blob(argv[0]), sqlite3_value_bytes(argv[0])));
}

using Operation = int OXLAPI (*)(tagNUMBER*, const tagNUMBER*, const tagNUMBER*);

template <Operation op>
void Binary(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    const char* fn = static_cast<const char*>(sqlite3_user_data(ctx));
    tagNUMBER a, b, out = {};
    if (AnyNull(argc, argv) || !ReadRecord(ctx, fn, 1, argv[0], &a) || !ReadRecord(ctx, fn, 2, argv[1], &b)) return;
    op(&out, &a, &b);
    ResultRecord(ctx, out);
}

void Round(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    tagNUMBER n, out = {};
    if (AnyNull(argc, argv) || !ReadRecord(ctx, "oxl_num_round", 1, argv[0], &n)) return;
    if (sqlite3_value_numeric_type(argv[1]) != SQLITE_INTEGER)
        return Fail(ctx, "oxl_num_round", "the places are a whole number, not '" + Text(argv[1]) + "'");
    sqlite3_int64 places = sqlite3_value_int64(argv[1]);
    // Beyond the format's reach either way the result no longer changes.
    NumRound(&out, &n, int(places < -130 ? -130 : places > 130 ? 130 : places));
    ResultRecord(ctx, out);
}

struct Named {
    const char* name;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
};

} // namespace

int RegisterNumbers(sqlite3* db) {
    static const Scalar kScalars[] = {
        {"oxl_num", 1, Num, true},
        {"oxl_num_from", 1, NumFrom, true},
        {"oxl_num_valid", 1, NumValid, true},
        {"oxl_num_round", 2, Round, true},
    };
    static const Named kBinary[] = {
        {"oxl_num_add", Binary<NumAddition>},
        {"oxl_num_sub", Binary<NumSubtract>},
        {"oxl_num_mul", Binary<NumMultiply>},
        {"oxl_num_div", Binary<NumDivide>},
    };
    int rc = RegisterScalars(db, kScalars, sizeof kScalars / sizeof kScalars[0]);
    for (const Named& f : kBinary) {
        if (rc != SQLITE_OK) break;
        rc = sqlite3_create_function(db, f.name, 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, const_cast<char*>(f.name),
                                     f.call, nullptr, nullptr);
    }
    return rc;
}

} // namespace oxlsql
