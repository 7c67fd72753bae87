// Date formatting, internal: the default time picture, the two Japanese
// date styles, and the output the formatting walk appends to.
#ifndef OXL_FORMAT_DATEFMT_H
#define OXL_FORMAT_DATEFMT_H

#include <oxlrt31/fmt.h>

#include <cstddef>

// Room for a default time picture: "hh" or "hhhh", three separators of at
// most two bytes, "mm", "ss", "mmmmmm" and " AMPM" need 24 bytes and a NUL.
constexpr int kFMTTimePicSize = 32;
// Room for a default date picture fetched from the profile.
constexpr int kFMTDefaultPicSize = 64;

// The default time picture of the block's settings (the profile's with
// bUseProfile): "hhhh" or "hh", the separator, "mm", the separator, "ss",
// with FMTF_MICROSECONDS the separator and "mmmmmm", and on a 12-hour clock
// " AMPM". The separator is cut to two bytes. dst holds kFMTTimePicSize.
void FMTBuildTimePic(const FMTCNTLBLOCK* block, char* dst);

// Japanese styles, under the profile region. Each empties lpszOutput first.
// "2000年01月05日" (Western year); always 1.
int FMTFormatJapanDate(FMTCNTLBLOCK* block);
// "平成01年01月08日" (era and era year); 0, writing nothing, before the
// first era.
int FMTFormatEmperorDate(FMTCNTLBLOCK* block);

// The day number formula is 32-bit: a date whose month, day and year lie
// within a million of 0 has a day number (and so a weekday and an era); one
// beyond has neither.
inline bool FMTDateInReach(const DATDEF& d) {
    auto within = [](LONG v) { return v >= -1000000 && v <= 1000000; };
    return within(d.nMonth) && within(d.nDay) && within(d.nYear);
}

// Decimal text of v with zeros in front up to `width` digits.
char* FMTAppendNumber(char* end, long v, int width);


// The date style in force: the block's iDateType; with bUseProfile, 0
// under FMTF_LONGDATE and else the profile's.
long FMTDateStyleOf(const FMTCNTLBLOCK* block);
// The long (style 0) or short (style 1) date picture of the profile or the
// block; null for another style or a block without one.
const char* FMTDatePicOfStyle(const FMTCNTLBLOCK* block, long style);

#endif
