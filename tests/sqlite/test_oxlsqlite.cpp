// The extension through SQLite's C API, loaded as a host loads it: random
// records stored as blobs sorted by the collation (with and without an
// index) against NumCompare, summed against NumAddition, formatted against
// FMTFormatNumber; then what each function gives for NULL and bad input.
#include <oxlrt31/numpic.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct Db {
    sqlite3* db = nullptr;
    Db() {
        char* error = nullptr;
        sqlite3_open(":memory:", &db), sqlite3_enable_load_extension(db, 1);
        EXPECT_EQ(sqlite3_load_extension(db, OXL_SQLITE_MODULE, nullptr, &error), SQLITE_OK) << (error ? error : "");
        sqlite3_free(error);
    }
    ~Db() { sqlite3_close(db); }
    // The first column of each row as bytes ("NULL" for NULL); "error: ..." for a failed statement.
    std::vector<std::string> Rows(const std::string& sql, const std::string& blob = "") {
        std::vector<std::string> rows;
        sqlite3_stmt* s = nullptr;
        int rc = sqlite3_prepare_v2(db, sql.c_str(), -1, &s, nullptr);
        sqlite3_bind_blob(s, 1, blob.data(), int(blob.size()), SQLITE_STATIC);
        for (rc = rc == SQLITE_OK ? sqlite3_step(s) : rc; rc == SQLITE_ROW; rc = sqlite3_step(s)) {
            const char* p = static_cast<const char*>(sqlite3_column_blob(s, 0));
            rows.push_back(sqlite3_column_type(s, 0) == SQLITE_NULL ? "NULL" : std::string(p, p + sqlite3_column_bytes(s, 0)));
        }
        sqlite3_finalize(s);
        return rc == SQLITE_DONE ? rows : std::vector<std::string>{"error: " + std::string(sqlite3_errmsg(db))};
    }
};

tagNUMBER AsRecord(const std::string& bytes) {
    tagNUMBER n = {};
    std::memcpy(&n, bytes.data(), bytes.size() < sizeof n ? bytes.size() : sizeof n);
    return n;
}

// A table of records of 1 to 46 digits, either sign, exponents -60 to 60, stored as the library wrote them.
class OxlSqlite : public ::testing::Test {
protected:
    void SetUp() override {
        std::mt19937 random(18);
        db.Rows("CREATE TABLE t(v BLOB)");
        for (int i = 0; i < 3000; ++i) {
            std::string text = random() % 2 ? "-" : "";
            for (unsigned d = 0, digits = 1 + random() % 46; d < digits; ++d) text += char('0' + random() % 10);
            tagNUMBER n;
            NumAsciiToNumber(&n, (text + "e" + std::to_string(int(random() % 121) - 60)).c_str());
            db.Rows("INSERT INTO t VALUES(?1)", std::string(reinterpret_cast<char*>(&n), sizeof n));
        }
    }
    Db db;
};

TEST_F(OxlSqlite, CollationOrdersByNumCompareInvalidLast) {
    db.Rows("INSERT INTO t VALUES(x'00'), (x'02FC'), (x'01C1'), ('text'), (x'41C0')");
    // INDEXED BY fails to prepare unless the index can serve the query.
    for (std::string query : {"SELECT v FROM t", "SELECT v FROM t INDEXED BY t_value"}) {
        if (query.find("INDEXED") != std::string::npos) db.Rows("CREATE INDEX t_value ON t(CAST(v AS TEXT) COLLATE oxl_num)");
        std::vector<std::string> rows = db.Rows(query + " ORDER BY CAST(v AS TEXT) COLLATE oxl_num");
        ASSERT_EQ(rows.size(), 3005u) << query << ": " << rows.at(0);
        EXPECT_EQ(rows[0], std::string(1, '\0')) << "the null record comes first; " << query;
        for (size_t i = 1; i + 4 < rows.size(); ++i) {
            tagNUMBER a = AsRecord(rows[i - 1]), b = AsRecord(rows[i]);
            ASSERT_LE(NumCompare(&a, &b), 0) << "rows " << i - 1 << " and " << i << " out of order; " << query;
        }
        EXPECT_EQ(std::vector<std::string>(rows.end() - 4, rows.end()),
                  (std::vector<std::string>{"\x01\xC1", "\x02\xFC", "\x41\xC0", "text"})) << "invalid values last, by bytes; " << query;
    }
    EXPECT_EQ(db.Rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
}

TEST_F(OxlSqlite, SumIsNumAdditionInRowOrder) {
    tagNUMBER total, got = AsRecord(db.Rows("SELECT oxl_num_sum(v) FROM t").at(0));
    NumCreateSmall(&total, 0);
    for (const std::string& row : db.Rows("SELECT v FROM t ORDER BY rowid")) {
        tagNUMBER n = AsRecord(row);
        NumAddition(&total, &total, &n);
    }
    EXPECT_EQ(std::memcmp(&got, &total, size_t(total.bLength) + 1), 0) << "oxl_num_sum against NumAddition over the same rows";
}

TEST_F(OxlSqlite, FormatIsFMTFormatNumber) {
    std::vector<std::string> all = db.Rows("SELECT v FROM t ORDER BY rowid");
    for (const char* picture : {"#,##0.00", "0.000E+00", "$#,##0.00;($#,##0.00)", "##0.0#%"}) {
        std::vector<std::string> got = db.Rows(std::string("SELECT oxl_format(v, '") + picture + "', 'us') FROM t ORDER BY rowid");
        for (size_t i = 0; i < all.size(); ++i) {
            char out[4096];
            FMTCNTLBLOCK b;
            FMTInitCntlBlock(&b);
            b.nType = FMT_PICTURE, b.lpszPicture = const_cast<char*>(picture), b.numValue = AsRecord(all[i]);
            b.chThousand = ',', b.chDecimal = '.', b.lpszCurrency = const_cast<char*>("$"), b.lpszOutput = out;
            ASSERT_EQ(FMTFormatNumber(&b), 1);
            ASSERT_EQ(got.at(i), out) << "oxl_format of row " << i + 1 << " under " << picture;
        }
    }
}

TEST(OxlSqliteCalls, NullAndBadInput) {
    const struct { const char* sql; std::string expected; } cases[] = {
        {"oxl_num(NULL)", "NULL"}, {"oxl_num_add(1, NULL)", "NULL"}, {"oxl_format(NULL, '0')", "NULL"},
        {"oxl_num_sum(NULL)", "NULL"}, {"oxl_date_read(NULL, 'S')", "NULL"}, {"oxl_num(x'00')", "NULL"},
        {"oxl_num_valid(x'00')", "1"}, {"oxl_num_valid(x'0141')", "0"}, {"oxl_num_valid('1')", "0"}, {"oxl_num_valid(x'02C164')", "0"},
        {"oxl_num(oxl_num_div(1, 3))", "." + std::string(46, '3')}, {"oxl_num(oxl_num_round('-2.5', 0))", "-3"},
        {"oxl_num(oxl_num_sub(x'02C10A', 0.5))", "9.5"}, {"oxl_num(oxl_num_mul('1e50', '1e50'))", "1" + std::string(100, '0')},
        {"oxl_num_cmp('1e-3', 0)", "1"}, {"hex(oxl_num_from('1.5'))", "03C10132" + std::string(42, '0')},
        {"oxl_format(1234.5, '', 'de')", "1.234,50"}, {"oxl_num(oxl_unformat('(1,234.50)', '#,##0.00;(#,##0.00)'))", "-1234.5"},
        {"oxl_num(oxl_unformat('1.234,5', '#.##0,00', 'de'))", "1234.5"},
        {"oxl_date('9999-12-31-23.59.59.999999', 'yyyy-MM-dd hhhh:mm:ss.mmmmmm')", "9999-12-31 23:59:59.999999"},
        {"oxl_date('1999-12-31-23.59.59', 'dddd, MMMM d, yyyy hhhh:mm')", "Friday, December 31, 1999 23:59"},
        {"oxl_num(oxl_date_read('Dec 31, 1999 10:30 PM'))", "19991231.223"}, {"oxl_date(20240315.1405, 'hhhh:mm')", "14:05"},
        {"oxl_date(20240315.1405, 'T', 'de')", "14:05:00:000000"}, {"oxl_date(20240315, 'L', 'de')", "Friday, 15. March 2024"},
        {"oxl_num(x'02FC')", "error: oxl_num: argument 1 is not a NUMBER record: x'02FC'"}, {"oxl_num_add(1, 'one')", "error: oxl_num_add: 'one' is not a number"},
        {"oxl_num_from('1e500')", "error: oxl_num_from: '1e500' is too large for a NUMBER"},
        {"oxl_num_round(1, 'x')", "error: oxl_num_round: the places are a whole number, not 'x'"},
        {"oxl_format(1, '#.#.#;;;')", "error: oxl_format: '#.#.#;;;' is not a valid number picture under these settings"},
        {"oxl_format(1, '0', 'xx')", "error: oxl_format: no settings 'xx' (us, de, fr, ch, ja or profile)"},
        {"oxl_unformat('abc', '0.00')", "error: oxl_unformat: 'abc' does not read under the picture '0.00'"},
        {"oxl_date(20241301, 'S')", "error: oxl_date: '20241301' is not a date value (yyyymmdd.hhmmssuuuuuu, or yyyy-mm-dd-hh.mm.ss.uuuuuu)"},
        {"oxl_date('2024-01-32', 'S')", "error: oxl_date: '2024-01-32' is not a date value (yyyymmdd.hhmmssuuuuuu, or yyyy-mm-dd-hh.mm.ss.uuuuuu)"},
        {"oxl_date(20241231, 'dd %')", "error: oxl_date: 'dd %' is not a valid date picture"},
        {"oxl_date(20241231.0060, 'S')", "error: oxl_date: '20241231.006' is not a date value (yyyymmdd.hhmmssuuuuuu, or yyyy-mm-dd-hh.mm.ss.uuuuuu)"},
        {"oxl_date_read('nonsense')", "error: oxl_date_read: 'nonsense' does not read as a date"},
    };
    Db db;
    for (const auto& c : cases)
        EXPECT_EQ(db.Rows(std::string("SELECT ") + c.sql), std::vector<std::string>{c.expected}) << c.sql;
}

} // namespace
