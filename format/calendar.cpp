// Calendar names. The library's string table does not carry the calendar
// strings yet, so the text never counts as loaded: bTextLoaded stays 0 and
// every lookup that needs a name reports failure, as with a missing string.
#include "fmtint.h"

int FMTLoadCalendarText(void) { return 0; }
