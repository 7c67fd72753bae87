/*
 * Dates and times under pictures: writing the DATDEF of a control block as
 * text, and reading a typed text back into it.
 *
 * A date picture is text such as "dddd, MMMM dd, yyyy" or "hh:mm:ss AMPM":
 * d dd (day), ddd dddd (day name), M MM (month), MMM MMMM (month name), yy
 * yyyy (year), h hh (12-hour clock), hhh hhhh (24-hour clock; h and hhh
 * never take a leading zero), mm (minutes), ss (seconds), mmmmmm
 * (microseconds), AMPM (the morning or afternoon marker), the separators
 * , - . / : \ and blanks, and any text in single quotes. Five whole pictures
 * are keywords: "" the default date picture, "S" and "L" the default short
 * and long ones, "T" the default time picture, "ED" the Japanese era date,
 * "E" the era date and the default time.
 *
 * Regional settings come from the block (bUseProfile 0) or from the user's
 * cached profile (bUseProfile 1, which requires FMTF_DEFAULTTIME).
 */
#ifndef OXLRT31_DATEPIC_H
#define OXLRT31_DATEPIC_H

#include "fmt.h"

OXL_EXTERN_C_BEGIN

/* Writes datDef to lpszOutput under the block's picture and date style (of
 * nType FMT_DATE, FMT_TIME or FMT_DATETIME); 1, or 0 for a bad block or
 * picture or a date before the first era. The output is always terminated
 * and has no bound: size it with FMTGetMaxFormattedDTLen. With bLocaleNames
 * nonzero, day and month names are the user locale's. The keyword "T" clears
 * FMTF_MICROSECONDS and "E" sets FMTF_OMITZEROMICRO in the block. */
int OXLAPI FMTFormatDateTime(FMTCNTLBLOCK* block, int bLocaleNames);

/* The most bytes FMTFormatDateTime writes under the block, without the NUL,
 * or nMinimum if that is larger; -1 for a bad block. Locale names are not
 * measured, and under the Japanese date styles only the time picture is. */
int OXLAPI FMTGetMaxFormattedDTLen(FMTCNTLBLOCK* block, int nMinimum);

/* The profile's short, long, or (by its date style) default date picture,
 * cut to cb - 1 bytes. 1. */
int OXLAPI FMTGetDefaultShortDatePic(char* dst, DWORD cb);
int OXLAPI FMTGetDefaultLongDatePic(char* dst, DWORD cb);
int OXLAPI FMTGetDefaultDatePic(char* dst, DWORD cb);
/* The profile's long date picture without day names and words, with a
 * blank and the default time picture behind it when bWithTime is nonzero
 * (dst must hold those too: cb limits the date picture only). 1, or 0 with
 * dst empty for an invalid picture. */
int OXLAPI FMTGetGeeLongDatePic(char* dst, DWORD cb, int bWithTime);

/* 1 when the picture holds a date element, or a time element; 0 otherwise
 * or for an invalid picture. */
int OXLAPI FMTDatePicHasDate(const char* picture);
int OXLAPI FMTDatePicHasTime(const char* picture);

/* Reads lpszInput as a date, time or date-time (nType) under the short and
 * long pictures, the known text forms and Japanese dates; 1 with datDef and
 * FMTF_HASDATE, FMTF_HASTIME, FMTF_NOHOURZERO written, or 0. */
int OXLAPI FMTValidateDateTime(FMTCNTLBLOCK* block);

/* Reads lpszInput under lpszPicture alone (keywords too); 1 or 0 as above.
 * The picture's elements decide whether a date, a time or both are read. */
int OXLAPI FMTUnformatDateTimeStr(FMTCNTLBLOCK* block);

/* 0: lpszPicture or lpszInput null or empty, or a bad nType; 1: the text has
 * a known form whose picture is lpszPicture and it reads under it (datDef
 * written); 2: the text has no known form; 4: it has one, but not
 * lpszPicture's, or doesn't read under it. */
int OXLAPI FMTIsValidDateString(FMTCNTLBLOCK* block);

/* 1 for "", a keyword, or a picture of the language above; else 0. */
int OXLAPI FMTIsDatePicValid(const char* picture);

OXL_EXTERN_C_END

#endif
