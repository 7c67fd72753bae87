// The known text forms of dates and times: a typed text that has one gets
// the picture of its form, so that it can be read without the caller's
// pictures.
#include "datepic.h"
#include "datepic_scan.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <oxlrt31/mem.h>

#include <cstring>

namespace {

// By the date form class the scanner finds.
const char* const kDateForms[] = {
    "MMM d, yyyy",  "MMM dd, yyyy", "MMMM d, yyyy", "MMMM dd, yyyy", "yyyy-MM-dd", "d MMM, yyyy",
    "dd MMM, yyyy", "d MMMM, yyyy", "dd MMMM, yyyy", "M/d/yyyy",     "d-MMM-yyyy",
};
constexpr int kNumericForm = 9;
constexpr int kIsoForm = 4;
// By the time form class: 0 a 12-hour text, 1 a 24-hour text.
const char* const kTimeForms[] = {"hh.mm.ss.mmmmmm AMPM", "hhhh.mm.ss.mmmmmm"};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }

// The scan of `text` in the form mode of nType: true when it was one form.
bool ScanForm(const char* text, int32_t nType, char* buffer) {
    static const int kModes[] = {FMTDATESCAN_DATEFORM, FMTDATESCAN_TIMEFORM, FMTDATESCAN_DATETIMEFORM};
    while (IsBlank(*text)) ++text;
    size_t n = std::strlen(text);
    while (n && IsBlank(text[n - 1])) --n;
    buffer[0] = 2, buffer[1] = char(kModes[nType - 1]), buffer[2] = 2;
    std::memcpy(buffer + 3, text, n);
    buffer[n + 3] = 0;
    FMTDateScanReset(buffer);
    FMTDateTok tok = FMTDateScanNext();
    if (tok == TK_FORM) return FMTDateScanNext() == TK_END;
    // A marker inside the text can lead the scan elsewhere: no form either way.
    for (; tok != TK_END && tok != TK_ERROR; tok = FMTDateScanNext()) {}
    return false;
}

} // namespace

FMTDATETOKEN* FMTMatchDateForm(const char* text, int32_t nType, char* picture, int32_t bMonthFirst) {
    picture[0] = 0;
    if (!text || nType < 1 || nType > 3) return nullptr;
    CRSectGuard guard(gCRDatePicSect);
    size_t len = std::strlen(text);
    char* buffer = static_cast<char*>(MemAlloc(DWORD(len + 4)));
    if (!buffer) return nullptr;
    gpLibState->wPicLen = WORD(len < 0xFFFF ? len : 0xFFFF);
    bool form = ScanForm(text, nType, buffer);
    MemFree(buffer);
    int dateClass = 0, timeClass = 0;
    FMTDateScanClasses(&dateClass, &timeClass);
    if (!form || (!bMonthFirst && dateClass == kNumericForm)) return nullptr;
    if (nType != 2) std::strcpy(picture, kDateForms[dateClass]);
    if (nType == 3) std::strcat(picture, dateClass == kIsoForm ? "-" : " ");
    if (nType != 1) std::strcat(picture, kTimeForms[timeClass]);
    return FMTParseDateText(picture, FMTDATE_PARSE_PICTURE);
}
