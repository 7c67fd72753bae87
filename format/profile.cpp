// Reading the regional settings from the profile store: the section "intl"
// and the library's own section, whose key names come from the string table.
#include "fmtint.h"

#include "core/libstate.h"
#include "os/osl.h"

#include <cstring>

namespace {

const char kIntl[] = "intl";
const char kOwnSection[] = "OXLEEKIT";

DWORD readInt(const char* section, const char* key, int fallback) {
    return gOsl.profile->GetProfileIntA(section, key, fallback);
}
DWORD readText(const char* key, const char* fallback, char* out, DWORD size) {
    return gOsl.profile->GetProfileStringA(kIntl, key, fallback, out, size);
}
// A one-character key: read into two bytes; an empty value stores a 0 byte.
char readChar(const char* key, const char* fallback) {
    char text[2];
    readText(key, fallback, text, sizeof text);
    return text[0];
}
// A marker that reads as nothing at all takes its default.
void readMarker(const char* key, const char* fallback, char (&out)[5]) {
    if (readText(key, fallback, out, sizeof out) == 0) std::strcpy(out, fallback);
}

void readNumbers(FMTPROFILEINTL* p) {
    p->iCountry = readInt(kIntl, "iCountry", 1);
    readText("sCountry", "United States", p->sCountry, sizeof p->sCountry);
    readText("sLanguage", "usa", p->sLanguage, sizeof p->sLanguage);
    DWORD currency = readInt(kIntl, "iCurrency", 0);
    p->bCurrencySpace = currency == 2 || currency == 3;
    p->bCurrencySuffix = currency == 1 || currency == 3;
    p->iCurrDigits = readInt(kIntl, "iCurrDigits", 2);
    p->iNegCurr = readInt(kIntl, "iNegCurr", 0);
    p->iDate = readInt(kIntl, "iDate", 0);
    p->iDigits = readInt(kIntl, "iDigits", 2);
    p->iTime = readInt(kIntl, "iTime", 0);
    p->iLzero = readInt(kIntl, "iLzero", 0);
    p->iTLZero = readInt(kIntl, "iTLZero", 0);
}

// Two short date pictures that some systems store wrongly for their country.
void readShortDate(FMTPROFILEINTL* p) {
    readText("sShortDate", "M/d/yy", p->sShortDate, sizeof p->sShortDate);
    if (p->iCountry == 43 && std::strcmp(p->sShortDate, "yyyy-MM-dddd") == 0)
        std::strcpy(p->sShortDate, "yyyy-MM-dd");
    if (p->iCountry == 2 && std::strcmp(p->sCountry, "Canada (French") == 0 &&
        std::strcmp(p->sShortDate, "yy-MM-dd") == 0)
        std::strcpy(p->sShortDate, "yy/MM/dd");
}

// The date style word, without regard to case; anything else is the short style.
DWORD dateTypeOf(const char* word) {
    const LIBSTATE& s = *gpLibState;
    if (gOsl.text->lstrcmpiA(word, s.szLongGregorian) == 0) return FMT_DATETYPE_LONG;
    if (gOsl.text->lstrcmpiA(word, s.szJapanGregorian) == 0) return FMT_DATETYPE_JAPAN;
    if (gOsl.text->lstrcmpiA(word, s.szJapanEmperor) == 0) return FMT_DATETYPE_EMPEROR;
    return FMT_DATETYPE_SHORT;
}

// Without the key names of the string table the section can't be read: its
// settings keep their defaults.
void readOwnSection(FMTPROFILEINTL* p) {
    p->iDateType = FMT_DATETYPE_SHORT;
    p->iEmpDateBoundryCheck = 0;
    if (!gpLibState->bTextLoaded && !FMTLoadCalendarText()) return;
    const LIBSTATE& s = *gpLibState;
    char word[25];
    gOsl.profile->GetProfileStringA(kOwnSection, s.szDateTypeKey, s.szShortGregorian, word, sizeof word);
    p->iDateType = dateTypeOf(word);
    p->iEmpDateBoundryCheck = readInt(kOwnSection, s.szEmpBoundryCheck, 0);
}

} // namespace

void OXLAPI FMTGetProfileIntl(FMTPROFILEINTL* p) {
    readNumbers(p);
    readShortDate(p);
    readText("sLongDate", "dddd, MMMM dd, yyyy", p->sLongDate, sizeof p->sLongDate);
    FMTRewriteLongDatePic(p->sLongDate, sizeof p->sLongDate, LONG(p->iCountry));
    readMarker("s1159", "AM", p->s1159);
    readMarker("s2359", "PM", p->s2359);
    readText("sCurrency", "$", p->sCurrency, sizeof p->sCurrency);
    p->chDate = readChar("sDate", "/");
    p->chDecimal = readChar("sDecimal", ".");
    p->chList = readChar("sList", ",");
    p->chThousand = readChar("sThousand", ",");
    readText("sTime", ":", p->sTime, sizeof p->sTime);
    p->iMeasure = readInt(kIntl, "iMeasure", 1);
    readOwnSection(p);
}
