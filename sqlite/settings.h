// Regional settings of the picture and date functions, chosen by the name in
// their last argument: us, de, fr, ch, ja, or profile (the default): the
// profile in force, as the library reads it for its host.
#ifndef OXL_SQLITE_SETTINGS_H
#define OXL_SQLITE_SETTINGS_H

#include "oxlsqlite.h"

namespace oxlsql {

// The date fields of a block; the block points into it, so it outlives the block.
struct DateSettings {
    std::string shortPic, longPic, defaultPic, timeSep, am, pm;
    DWORD h24 = 0, timeLeadZero = 0, country = 1, boundaryCheck = 0;
};

// `name` null: the profile. False, with the error given, for an unknown name.
bool NumberSettings(sqlite3_context* ctx, const char* fn, sqlite3_value* name, FMTCNTLBLOCK* block);
bool DateSettingsOf(sqlite3_context* ctx, const char* fn, sqlite3_value* name, DateSettings* out);
// A block of kind nType under the settings (never bUseProfile: the settings
// already hold the profile's values when the profile was chosen).
FMTCNTLBLOCK DateBlock(DateSettings& s, LONG nType);
// The keywords "", "S" and "L" (which the library reads from the profile)
// as the settings' default, short and long pictures; other pictures as given.
std::string DatePicture(const DateSettings& s, const std::string& picture);

} // namespace oxlsql

#endif
