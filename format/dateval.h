// Date reading, internal: matching a value text's list against a picture's,
// and the reader of Japanese dates.
#ifndef OXL_FORMAT_DATEVAL_H
#define OXL_FORMAT_DATEVAL_H

#include "datepic.h"

// 1 when the value list reads under the picture list; then datDef and the
// marks FMTF_HASDATE, FMTF_HASTIME, FMTF_NOHOURZERO of the block are
// written. 0 otherwise, the block untouched. Either list null gives 0.
int FMTMatchDateTokens(const FMTDATETOKEN* value, const FMTDATETOKEN* picture, FMTCNTLBLOCK* block);

// The month of a word that is a month name with `suffix` fused behind it
// ("Tammikuuta" with "ta"); 0 otherwise.
int FMTMonthWithSuffix(const char* word, const char* suffix);

// 1, with *kind 1 (date elements only), 2 (time elements only) or 3 (both);
// 0 for a list without either.
int FMTDatePicKind(const FMTDATETOKEN* picture, int* kind);

// Reads a Japanese date (era or Western year, with the year, month and day
// signs) at the start of lpszInput into datDef, time fields 0: the bytes
// read, leading blanks included, or -1. With bEraOnly an era is required.
int FMTReadJapanDate(FMTCNTLBLOCK* block, int bEraOnly);

// Reads the rest of a text behind a Japanese date as a time on a copy of
// the block and completes the date-time: 1 or 0.
int FMTReadTimeAfterDate(FMTCNTLBLOCK* block, const char* rest);

#endif
