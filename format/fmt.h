/*
 * The formatting engine: regional settings, the control block, date and
 * number pictures, masks and the input filter.
 */
#ifndef OXL_FORMAT_FMT_H
#define OXL_FORMAT_FMT_H

#include <oxlrt31/oxlapi.h>

/* Loads the month and day names and the calendar keys from the library's
 * string table into the process state; 1 when all is loaded. Runs at load and
 * again from the name lookups while the text is not loaded. */
int FMTLoadCalendarText(void);

#endif
