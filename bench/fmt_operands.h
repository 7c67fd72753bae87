// The values every date and number picture benchmark uses, and the control
// blocks a host fills for them, so that each program (and each engine in
// it) works on the same values.
#ifndef OXL_BENCH_FMT_OPERANDS_H
#define OXL_BENCH_FMT_OPERANDS_H

#include <oxlrt31/datepic.h>
#include <oxlrt31/numpic.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace oxlbench {

// Friday, 15 March 2024, written under the long picture and read back.
inline constexpr const char* kDatePicture = "dddd, MMMM dd, yyyy";
inline constexpr const char* kDateShortPicture = "M/d/yy";
inline constexpr const char* kDateText = "Friday, March 15, 2024";
inline constexpr DATDEF kDate = {3, 15, 2024, 0, 0, 0, 0};
// The same for ICU (pattern letters) and the C library.
inline constexpr const char* kDateIcuPattern = "EEEE, MMMM dd, yyyy";
inline constexpr const char* kDateCFormat = "%A, %B %d, %Y";
inline constexpr double kDateIcuMillis = 1710460800000.0; // 2024-03-15 00:00 UTC

// A number under a picture, as currency, and a typed number read back.
inline constexpr const char* kNumValue = "12345.678";
inline constexpr double kNumDouble = 12345.678;
inline constexpr const char* kNumPicture = "#,##0.00";
inline constexpr const char* kNumTyped = "1,234,567.89";

// A date block: the long picture given, the short one for
// FMTValidateDateTime's first try; `output` holds 64 bytes.
inline void dateBlock(FMTCNTLBLOCK& b, char* output) {
    FMTInitCntlBlock(&b);
    b.nType = FMT_DATE;
    b.lpszLongPic = b.lpszPicture = const_cast<char*>(kDatePicture);
    b.lpszShortPic = const_cast<char*>(kDateShortPicture);
    b.datDef = kDate;
    b.lpszOutput = output;
}

// A number block with US settings in the block itself (bUseProfile clear)
// and numValue 12345.678; `output` holds 128 bytes.
inline void numberBlock(FMTCNTLBLOCK& b, char* output) {
    FMTInitCntlBlock(&b);
    b.chThousand = ',';
    b.chDecimal = '.';
    b.lpszCurrency = const_cast<char*>("$");
    b.bLeadZero = 1;
    b.nDigits = 2;
    b.lpszOutput = output;
    char text[32];
    std::strcpy(text, kNumValue);
    if (NumAsciiToNumber(&b.numValue, text) <= 0) {
        std::fprintf(stderr, "operand \"%s\" does not read\n", kNumValue);
        std::exit(1);
    }
}

} // namespace oxlbench

#endif
