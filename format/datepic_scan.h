// The date picture scanner: one static instance, used under gCRDatePicSect
// only. Its input begins with a mode marker, the bytes 02 n 02:
//   1 value text, 2 picture, 3 date form, 4 time form, 5 date-time form.
// Before the marker nothing is accepted; a marker is honoured at any token
// boundary. The input ends at a NUL or a byte 0xFF.
#ifndef OXL_FORMAT_DATEPIC_SCAN_H
#define OXL_FORMAT_DATEPIC_SCAN_H

#include <cstdint>

enum {
    FMTDATESCAN_VALUE = 1,
    FMTDATESCAN_PICTURE = 2,
    FMTDATESCAN_DATEFORM = 3,
    FMTDATESCAN_TIMEFORM = 4,
    FMTDATESCAN_DATETIMEFORM = 5,
};

// Tokens. The value of the last token stands in gpLibState->lexValue: the
// number, the character, the blank count, or the length of a run of "d", "M",
// "y" or "h". The text of a STRING is FMTDateScanText().
enum FMTDateTok {
    TK_END,
    TK_ERROR,
    TK_FORM, // a known text form; its classes in FMTDateScanClasses
    TK_NUMBER,
    TK_STRING,
    TK_CHAR,
    TK_BLANK,
    TK_DAY,
    TK_MONTH,
    TK_YEAR,
    TK_HOUR,
    TK_MINUTE,
    TK_SECOND,
    TK_MICROSECOND,
    TK_AMPM,
};

// A token's text holds at most this many bytes less one: a token that
// reaches it ends the input there.
constexpr int kFMTDateTokenMax = 100;

// Starts a scan of `input` (marker first) in the initial mode, classes clear.
void FMTDateScanReset(const char* input);
FMTDateTok FMTDateScanNext();
// The text of the last STRING token (the bytes between quotes, or the word).
const char* FMTDateScanText();
// The date form class (0 to 10, the index of the form's picture) and the time
// form class (0: 12-hour, 1: 24-hour) of the last scan.
void FMTDateScanClasses(int* dateClass, int* timeClass);

#endif
