// NUMBER records as SQL values: the check of a stored blob, the reading of a
// record argument (blob, number or text) and the blob of a record result.
#include "oxlsqlite.h"

#include <cstdio>
#include <cstring>

namespace oxlsql {

namespace {

constexpr int kRecordSize = sizeof(tagNUMBER);

// The base-100 digits of a record of `length` data bytes: 0..99 each, the
// first above 0; a negative record stores 100 - d and ends in 0x65, and its
// last digit is above 0 (positive records may end in zeros: the hexadecimal
// reader leaves them). The exponent byte holds 4..124 either way.
bool DigitsValid(const BYTE* data, int length) {
    bool negative = !(data[0] & 0x80);
    int exponent = (negative ? BYTE(~data[0]) : data[0]) - 0x80;
    int count = length - 1 - (negative ? 1 : 0);
    if (exponent < 4 || exponent > 124 || count < 1 || (negative && data[length - 1] != 0x65)) return false;
    for (int i = 1; i <= count; ++i) {
        int digit = negative ? 100 - data[i] : data[i];
        if (digit < 0 || digit > 99) return false;
        if (digit == 0 && (i == 1 || (negative && i == count))) return false;
    }
    return true;
}

std::string Hex(const void* bytes, int size) {
    std::string out;
    char b[3];
    for (int i = 0; i < size && i < kRecordSize + 1; ++i)
        out += (std::snprintf(b, sizeof b, "%02X", static_cast<const BYTE*>(bytes)[i]), b);
    return out + (size > kRecordSize + 1 ? "..." : "");
}

} // namespace

// Null (length 0), zero (01 C0) or a normal record, whose length byte has
// bits 6 and 7 clear and whose data the blob holds.
bool IsValidRecord(const void* bytes, int size) {
    const BYTE* b = static_cast<const BYTE*>(bytes);
    if (size < 1 || size > kRecordSize || (b[0] & 0xC0) || b[0] + 1 > size) return false;
    if (b[0] <= 1) return b[0] == 0 || b[1] == 0xC0;
    return DigitsValid(b + 1, b[0]);
}

bool ReadNumberText(sqlite3_context* ctx, const char* fn, const char* text, int size, tagNUMBER* out) {
    int read = NumAsciiToNumber(out, text);
    if (read > 0 && read == size) return true;
    std::string why = read == -1 ? "' is too large for a NUMBER" : read == -2 ? "' is too small for a NUMBER" : "' is not a number";
    Fail(ctx, fn, "'" + std::string(text) + why);
    return false;
}

bool ReadRecord(sqlite3_context* ctx, const char* fn, int argument, sqlite3_value* value, tagNUMBER* out) {
    *out = tagNUMBER{};
    switch (sqlite3_value_type(value)) {
    case SQLITE_BLOB: {
        const void* bytes = sqlite3_value_blob(value);
        int size = sqlite3_value_bytes(value);
        if (size > 0 && IsValidRecord(bytes, size)) {
            std::memcpy(out, bytes, size_t(static_cast<const BYTE*>(bytes)[0]) + 1);
            return true;
        }
        Fail(ctx, fn, "argument " + std::to_string(argument) + " is not a NUMBER record: x'" + Hex(bytes, size) + "'");
        return false;
    }
    case SQLITE_FLOAT:
        if (NumDoubleToNumber(out, sqlite3_value_double(value))) return true;
        Fail(ctx, fn, "argument " + std::to_string(argument) + " is beyond the range of a NUMBER");
        return false;
    default: { // integers read through their text, exactly
        const char* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return ReadNumberText(ctx, fn, text ? text : "", sqlite3_value_bytes(value), out);
    }
    }
}

void ResultRecord(sqlite3_context* ctx, const tagNUMBER& n) {
    tagNUMBER clean = {};
    size_t length = size_t(n.bLength & 0x3F) + 1;
    std::memcpy(&clean, &n, length < sizeof clean ? length : sizeof clean);
    sqlite3_result_blob(ctx, &clean, kRecordSize, SQLITE_TRANSIENT);
}

bool AnyNull(int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return true;
    return false;
}

std::string Text(sqlite3_value* value) {
    const unsigned char* text = sqlite3_value_text(value);
    return text ? reinterpret_cast<const char*>(text) : "";
}

void Fail(sqlite3_context* ctx, const char* fn, const std::string& why) {
    sqlite3_result_error(ctx, (std::string(fn) + ": " + why).c_str(), -1);
}

} // namespace oxlsql
