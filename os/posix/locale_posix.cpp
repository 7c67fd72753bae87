// Day and month names of the user's locale from the C library's locale data,
// converted from the locale's character set to the ANSI code page.
#include "profile_posix.h"

#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

namespace {

// The locale the environment names, made once; the C locale when it can't be had.
locale_t userLocale() {
    static locale_t loc = [] {
        locale_t l = newlocale(LC_CTYPE_MASK | LC_TIME_MASK, "", nullptr);
        return l ? l : newlocale(LC_CTYPE_MASK | LC_TIME_MASK, "C", nullptr);
    }();
    return loc;
}

// The item numbers of the Win32 names: full day names Monday..Sunday from
// 0x2A, short ones from 0x31, full month names from 0x38, short from 0x44.
bool itemOf(DWORD type, nl_item* item) {
    if (type >= 0x2A && type <= 0x30) return *item = DAY_1 + nl_item((type - 0x2A + 1) % 7), true;
    if (type >= 0x31 && type <= 0x37) return *item = ABDAY_1 + nl_item((type - 0x31 + 1) % 7), true;
    if (type >= 0x38 && type <= 0x43) return *item = MON_1 + nl_item(type - 0x38), true;
    if (type >= 0x44 && type <= 0x4F) return *item = ABMON_1 + nl_item(type - 0x44), true;
    return false;
}

const char* charsetOf(UINT codePage) {
    switch (codePage) {
    case 932: return "CP932";
    case 936: return "GBK";
    case 949: return "UHC";
    case 950: return "BIG5";
    case 1255: return "CP1255";
    case 1256: return "CP1256";
    default: return "CP1252";
    }
}

// The text in the code page, NUL included, into out (room bytes); its
// length with the NUL, or 0 when it can't be converted or doesn't fit.
size_t convert(const char* text, const char* from, UINT codePage, char* out, size_t room) {
    iconv_t cd = iconv_open(charsetOf(codePage), from);
    if (cd == iconv_t(-1)) return 0;
    char* in = const_cast<char*>(text);
    size_t inLeft = std::strlen(text), outLeft = room;
    char* at = out;
    size_t r = iconv(cd, &in, &inLeft, &at, &outLeft);
    iconv_close(cd);
    if (r == size_t(-1) || outLeft == 0) return 0;
    *at = 0;
    return size_t(at - out) + 1;
}

} // namespace

int OslPosixLocaleInfo(UINT codePage, DWORD type, LPSTR data, int size) {
    nl_item item;
    locale_t loc = userLocale();
    if (!loc || !itemOf(type, &item) || size < 0) return 0;
    char text[256];
    size_t n = convert(nl_langinfo_l(item, loc), nl_langinfo_l(CODESET, loc), codePage, text, sizeof text);
    if (n == 0) return 0;
    if (size == 0) return int(n);
    if (!data || size_t(size) < n) return 0;
    std::memcpy(data, text, n);
    return int(n);
}
