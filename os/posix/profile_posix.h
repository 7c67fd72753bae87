// The POSIX backend's profile store, string table and locale names, each in
// a file of its own.
#ifndef OXL_OS_POSIX_PROFILE_POSIX_H
#define OXL_OS_POSIX_PROFILE_POSIX_H

#include "../osl.h"

// GetProfileIntA, GetProfileStringA and WriteProfileStringA on a file of the
// win.ini form; LoadStringA on the library's own string table.
extern const OslProfileService kOslPosixProfile;

// The file the store lives in: $OXLRT31_PROFILE when set and not empty, else
// $XDG_CONFIG_HOME/oxlrt31/win.ini, else $HOME/.config/oxlrt31/win.ini.
const char* OslPosixProfilePath(void);

// GetLocaleInfoA for the day and month names (items 0x2A to 0x4F) of the
// user's locale (the environment's LC_ALL, LC_TIME, LANG), in `codePage`.
int OslPosixLocaleInfo(UINT codePage, DWORD type, LPSTR data, int size);

#endif
