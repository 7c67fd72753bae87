// How long a number's text under a picture can get: an upper estimate from
// the picture's text and the count of integer digits the host allows.
#include "numpicint.h"

#include <cstring>

namespace {

LONG count(const char* begin, const char* end, char c) {
    LONG n = 0;
    for (; begin < end; ++begin) n += *begin == c;
    return n;
}

// A scientific section: "0.", the mantissa's placeholders ("#" no more
// than the digits allow), the exponent's letter and sign, its placeholders.
LONG scientificLen(const char* section, LONG maxDigits) {
    const char* e = std::strpbrk(section, "Ee");
    const char* end = e ? e : section + std::strlen(section);
    LONG zeros = count(section + 2, end, '0'), hashes = count(section + 2, end, '#');
    LONG room = maxDigits - zeros < 0 ? 0 : maxDigits - zeros;
    LONG len = 2 + zeros + (hashes < room ? hashes : room) + 2;
    const char* exponent = e ? std::strpbrk(e, "#0") : nullptr;
    return len + (exponent ? LONG(std::strlen(exponent)) : 0);
}

// The profile's plain currency.
LONG currencyLen(LONG maxDigits) {
    LONG pos = FMTProfileInt(FMTPI_CURRENCY), places = FMTProfileInt(FMTPI_CURRDIGITS);
    LONG neg = FMTProfileInt(FMTPI_NEGCURR);
    return maxDigits + (maxDigits - 1) / 3 + LONG(std::strlen(FMTProfileString(FMTPS_CURRENCY))) +
           (pos == 2 || pos == 3) + places + (places != 0) + (neg == 0 || neg == 4);
}

} // namespace

LONG FMTMaxSectionLen(const char* section, LONG maxDigits) {
    if (FMTIsScientificPic(section)) return scientificLen(section, maxDigits);
    if (std::strcmp(section, "$") == 0) return currencyLen(maxDigits);
    char thousand = FMTProfileString(FMTPS_THOUSAND)[0];
    char decimal = FMTProfileString(FMTPS_DECIMAL)[0];
    FMTNUMPICINFO info = FMTAnalyzeNumberPic(section, thousand, decimal);
    LONG m = maxDigits > info.nIntZeros ? maxDigits : info.nIntZeros;
    LONG len = LONG(std::strcspn(section, "#0")) + info.nFracPlaces + (info.nFracPlaces != 0) + m;
    if (info.bGroup) len += (m - 1) / 3;
    if (const char* s = info.pszSuffix) {
        const char* pad = std::strchr(s, '_');
        len += (*s == '%' ? 2 : 0) + LONG(std::strlen(s)) - (pad && pad[1] ? 1 : 0);
    }
    return len;
}

LONG OXLAPI FMTGetMaxFormattedNumLen(char* picture, LONG maxDigits, LONG minLength) {
    const char* p = picture ? picture : "";
    LONG len;
    if (!std::strchr(p, ';')) {
        len = FMTMaxSectionLen(p, maxDigits) + 1;
    } else {
        char section[FMT_PIC_MAX];
        len = 0;
        for (;;) {
            size_t n = std::strcspn(p, ";");
            size_t kept = n < sizeof section ? n : sizeof section - 1;
            std::memcpy(section, p, kept);
            section[kept] = 0;
            LONG l = FMTMaxSectionLen(section, maxDigits);
            if (l > len) len = l;
            if (!p[n]) break;
            p += n + 1;
        }
    }
    return len > minLength ? len : minLength;
}
