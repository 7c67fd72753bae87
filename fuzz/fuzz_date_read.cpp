// Reading dates on arbitrary input and pictures: FMTValidateDateTime,
// FMTUnformatDateTimeStr and FMTIsValidDateString with the block's own
// settings, under a language chosen by the input. Checked: the results are
// those the functions have; a successful read leaves fields in their ranges
// (the date a real one unless only a time was read); a failed one leaves
// the value as it stood, but for the date a Japanese reader keeps.
//
// Input: [language] [nType] [flags] [country/check] input 00 picture 00 short 00 long 00 am 00 pm
#include "fuzz_check.h"
#include "fuzz_intl.h"

#include <oxlrt31/datepic.h>

namespace {

bool InRanges(const DATDEF& d, bool dateRead) {
    if (dateRead && (d.nMonth < 1 || d.nMonth > 12 || d.nDay < 1 || d.nDay > 31)) return false;
    return d.nHour >= 0 && d.nHour <= 24 && d.nMinute >= 0 && d.nMinute <= 59 && d.nSecond >= 0 && d.nSecond <= 59 &&
           d.nMicrosecond >= 0 && d.nMicrosecond <= 999999;
}

bool SameTime(const DATDEF& a, const DATDEF& b) {
    return a.nHour == b.nHour && a.nMinute == b.nMinute && a.nSecond == b.nSecond && a.nMicrosecond == b.nMicrosecond;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 4) return 0;
    IntlUnder under(kFuzzLanguages[data[0] % std::size(kFuzzLanguages)]);
    std::vector<std::string> part = FuzzTexts(data + 4, size - 4, 6);
    std::vector<char*> texts;
    for (const std::string& s : part) texts.push_back(FuzzDup(s));
    const DATDEF unread = {-7, -7, -7, -7, -7, -7, -7};
    for (int call = 0; call < 3; ++call) {
        FMTCNTLBLOCK b;
        FMTInitCntlBlock(&b);
        b.nType = data[1] % 5, b.dwFlags = (data[2] & 0x7F) | (b.dwFlags & 0xFFFFFF00u), b.datDef = unread;
        b.iCountry = data[3] & 1 ? 1 : 2, b.bEmpBoundryCheck = data[3] >> 1 & 1;
        b.b24Hour = data[3] >> 2 & 1, b.lpszTimeSep = const_cast<char*>(data[3] & 8 ? "." : ":");
        b.lpszInput = texts[0], b.lpszPicture = texts[1], b.lpszShortPic = texts[2], b.lpszLongPic = texts[3];
        b.lpsz1159 = texts[4], b.lpsz2359 = texts[5];
        int r = call == 0 ? FMTValidateDateTime(&b) : call == 1 ? FMTUnformatDateTimeStr(&b) : FMTIsValidDateString(&b);
        FuzzRequire(b.nType == LONG(data[1] % 5));
        if (call == 2) FuzzRequire(r == 0 || r == 1 || r == 2 || r == 4);
        else if (r == 1) FuzzRequire(InRanges(b.datDef, (b.dwFlags & FMTF_HASDATE) != 0));
        else FuzzRequire(r == 0 && (SameTime(b.datDef, unread) || SameTime(b.datDef, DATDEF{0, 0, 0, 0, 0, 0, 0})));
    }
    for (char* p : texts) std::free(p);
    return 0;
}
