// Number pictures: oxl_format(record, picture [, settings]) writes a record
// under a picture (user or stored, tokenised form), oxl_unformat(text,
// picture [, settings]) reads a typed text back to a record. The picture ""
// stands for a plain number and "$" for currency, under the settings.
#include "settings.h"

#include <oxlrt31/numpic.h>

#include <cstring>
#include <vector>

namespace oxlsql {

namespace {

constexpr size_t kMaxPicture = 63;

// nType and lpszPicture for the picture; false, with the error given, for a
// picture the settings refuse.
bool SetPicture(sqlite3_context* ctx, const char* fn, const std::string& picture, FMTCNTLBLOCK* b) {
    b->lpszPicture = const_cast<char*>(picture.c_str());
    if (picture.empty() || picture == "$") {
        b->nType = picture.empty() ? FMT_NUMBER : FMT_CURRENCY;
        return true;
    }
    b->nType = FMT_PICTURE;
    if (picture.size() <= kMaxPicture && FMTIsNumberPicValid(b)) return true;
    Fail(ctx, fn, "'" + picture + "' is not a valid number picture under these settings" +
                      (picture.size() > kMaxPicture ? " (at most 63 bytes)" : ""));
    return false;
}

// Room for the text of any valid record under a valid picture: the library's
// estimate of its user form at 125 digits, with room to spare for exponents
// and currency forms; plain numbers and currency stay far below the floor.
size_t Room(FMTCNTLBLOCK& b) {
    constexpr size_t kFloor = 1024;
    if (b.nType != FMT_PICTURE) return kFloor;
    std::vector<char> user(10 * std::strlen(b.lpszPicture) + 1);
    char* output = b.lpszOutput;
    b.lpszOutput = user.data();
    if (FMTIsNumberPicTokenized(b.lpszPicture)) FMTUnTokenizeNumberPic(&b);
    else std::strcpy(user.data(), b.lpszPicture);
    b.lpszOutput = output;
    size_t estimate = size_t(FMTGetMaxFormattedNumLen(user.data(), 125, 0));
    return 2 * estimate + 64 > kFloor ? 2 * estimate + 64 : kFloor;
}

void Format(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    FMTCNTLBLOCK b;
    tagNUMBER n;
    if (AnyNull(argc, argv) || !ReadRecord(ctx, "oxl_format", 1, argv[0], &n) ||
        !NumberSettings(ctx, "oxl_format", argc > 2 ? argv[2] : nullptr, &b))
        return;
    std::string picture = Text(argv[1]);
    if (!SetPicture(ctx, "oxl_format", picture, &b)) return;
    b.numValue = n;
    std::vector<char> out(Room(b));
    b.lpszOutput = out.data();
    if (!FMTFormatNumber(&b)) return Fail(ctx, "oxl_format", "the library could not format the number");
    sqlite3_result_text(ctx, out.data(), -1, SQLITE_TRANSIENT);
}

void Unformat(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    FMTCNTLBLOCK b;
    if (AnyNull(argc, argv) || !NumberSettings(ctx, "oxl_unformat", argc > 2 ? argv[2] : nullptr, &b)) return;
    std::string text = Text(argv[0]), picture = Text(argv[1]);
    if (!SetPicture(ctx, "oxl_unformat", picture, &b)) return;
    std::vector<char> out(text.size() + 256);
    b.lpszInput = text.data();
    b.lpszOutput = out.data();
    LONG ok = b.nType == FMT_PICTURE ? FMTUnformatNumberStr(&b) : FMTValidateNumber(&b);
    if (!ok) return Fail(ctx, "oxl_unformat", "'" + text + "' does not read under the picture '" + picture + "'");
    ResultRecord(ctx, b.numValue);
}

} // namespace

int RegisterPictures(sqlite3* db) {
    static const Scalar kScalars[] = {
        {"oxl_format", 2, Format, false},
        {"oxl_format", 3, Format, false},
        {"oxl_unformat", 2, Unformat, false},
        {"oxl_unformat", 3, Unformat, false},
    };
    return RegisterScalars(db, kScalars, sizeof kScalars / sizeof kScalars[0]);
}

} // namespace oxlsql
