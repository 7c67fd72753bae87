// Writing dates on arbitrary pictures, settings and DATDEFs. The output is
// malloc'd to what any picture of the input's size can make, so a write past
// it shows under ASan. When every field lies in its range, the long or short
// picture is in force and the library's own names are used, the text is no
// longer than FMTGetMaxFormattedDTLen says. Left out of that check, since the
// length measures less there: the Japanese styles (their date), and the era
// keyword "E" (the microseconds it writes when FMTF_MICROSECONDS is set).
//
// Input: [nType] [flags] [settings] [style] DATDEF (28 bytes) picture 00 am 00 pm 00 separator
#include "fuzz_check.h"
#include "fuzz_intl.h"

#include <oxlrt31/datepic.h>

namespace {

// The value with each field brought into its range.
DATDEF InRange(const DATDEF& d) {
    auto fold = [](LONG v, LONG lo, LONG hi) { return lo + LONG((uint32_t(v) % uint32_t(hi - lo + 1))); };
    return {fold(d.nMonth, 1, 12), fold(d.nDay, 1, 31), fold(d.nYear, 0, 9999), fold(d.nHour, 0, 23), fold(d.nMinute, 0, 59),
            fold(d.nSecond, 0, 59), fold(d.nMicrosecond, 0, 999999)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 4 + sizeof(DATDEF)) return 0;
    DATDEF raw;
    std::memcpy(&raw, data + 4, sizeof raw);
    std::vector<std::string> part = FuzzTexts(data + 4 + sizeof raw, size - 4 - sizeof raw, 4);
    char* texts[4] = {FuzzDup(part[0]), FuzzDup(part[1]), FuzzDup(part[2]), FuzzDup(part[3])};
    size_t room = 16 * (part[0].size() + part[1].size() + part[2].size() + 64);
    for (bool ranged : {false, true}) {
        char* out = static_cast<char*>(std::memset(std::malloc(room), 0xEE, room));
        FMTCNTLBLOCK b;
        FMTInitCntlBlock(&b);
        b.nType = data[0] % 5, b.dwFlags = (data[1] & 0x7F) | (data[1] & 0x80 ? FMTF_LONGDATE : 0), b.iDateType = data[3] % 5;
        b.bUseProfile = data[2] & 1, b.b24Hour = data[2] >> 1 & 1, b.bTimeLeadZero = data[2] >> 2 & 1;
        b.lpszShortPic = b.lpszLongPic = texts[0], b.lpsz1159 = texts[1], b.lpsz2359 = texts[2], b.lpszTimeSep = texts[3];
        b.datDef = ranged ? InRange(raw) : raw, b.lpszOutput = out;
        FMTCNTLBLOCK measured = b;
        int localeNames = data[2] >> 3 & 1, r = FMTFormatDateTime(&b, localeNames);
        bool kind = b.nType >= FMT_DATE && b.nType <= FMT_DATETIME; // else the output stays untouched
        FuzzRequire((r == 0 || r == 1) && (kind ? std::memchr(out, 0, room) != nullptr : BYTE(out[0]) == 0xEE));
        int most = FMTGetMaxFormattedDTLen(&measured, 0);
        bool western = b.iDateType == 0 || b.iDateType == 1 || b.nType == FMT_TIME;
        bool era = part[0] == "E"; // measured without its microseconds, which it may write
        if (ranged && r == 1 && !localeNames && !b.bUseProfile && western && !era) FuzzRequire(std::strlen(out) <= size_t(most));
        std::free(out);
    }
    for (char* p : texts) std::free(p);
    return 0;
}
