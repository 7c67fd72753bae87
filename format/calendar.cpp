// Month and day names: loaded once from the library's string table, kept in
// number order for printing and in alphabetical order for reading.
//
// All of it is guarded by the profile region. Once the loaded mark is set the
// text never changes again, so a getter may hand out a pointer into it and
// leave the region.
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"
#include "os/osl.h"

#include <cstring>

namespace {

constexpr int kNameRoom = 14; // bytes a name is read with, NUL included
constexpr int kDays = 7;
constexpr int kMonths = 12;

struct NameEntry {
    char text[16];
    LONG number;
};
// Both forms of every name, sorted without regard to case once loaded.
NameEntry sDaySearch[2 * kDays];
NameEntry sMonthSearch[2 * kMonths];

// String ids: day 1 is Saturday, whose names are the sixth of the table's
// week that starts on Monday.
UINT dayShortId(int day) { return 2025 + UINT((day + 4) % kDays); }
UINT monthShortId(int month) { return 2000 + UINT(month); }
constexpr UINT kDayLongOffset = 7;
constexpr UINT kMonthLongOffset = 12;

bool loadString(UINT id, char* out, int size) {
    return gOsl.profile->LoadStringA(gpLibState->hInstance, id, out, size) > 0;
}

// Reads the short and full name of items 1..count next to each other.
bool loadNames(NameEntry* table, int count, UINT (*shortId)(int), UINT longOffset) {
    for (int n = 1; n <= count; ++n) {
        NameEntry* pair = table + 2 * (n - 1);
        if (!loadString(shortId(n), pair[0].text, kNameRoom)) return false;
        if (!loadString(shortId(n) + longOffset, pair[1].text, kNameRoom)) return false;
        pair[0].number = pair[1].number = n;
    }
    return true;
}

void copyNames(const NameEntry* table, int count, char (*shortNames)[16], char (*longNames)[16]) {
    for (int n = 0; n < count; ++n) {
        std::memcpy(shortNames[n], table[2 * n].text, 16);
        std::memcpy(longNames[n], table[2 * n + 1].text, 16);
    }
}

int compareNames(const char* a, const char* b) { return gOsl.text->lstrcmpiA(a, b); }

// Shell's sort: gaps n/2, n/4 ... 1, insertion by swapping whole entries.
void sortNames(NameEntry* table, int n) {
    for (int gap = n / 2; gap > 0; gap /= 2)
        for (int i = gap; i < n; ++i)
            for (int j = i - gap; j >= 0 && compareNames(table[j].text, table[j + gap].text) > 0; j -= gap) {
                NameEntry t = table[j];
                table[j] = table[j + gap];
                table[j + gap] = t;
            }
}

bool loadKeys() {
    LIBSTATE& s = *gpLibState;
    return loadString(2039, s.szDateTypeKey, sizeof s.szDateTypeKey) &&
           loadString(2041, s.szShortGregorian, sizeof s.szShortGregorian) &&
           loadString(2040, s.szLongGregorian, sizeof s.szLongGregorian) &&
           loadString(2042, s.szJapanGregorian, sizeof s.szJapanGregorian) &&
           loadString(2043, s.szJapanEmperor, sizeof s.szJapanEmperor) &&
           loadString(2044, s.szEmpBoundryCheck, sizeof s.szEmpBoundryCheck);
}

// The caller holds the profile region.
bool textReady() { return gpLibState->bTextLoaded || FMTLoadCalendarText(); }

LONG searchNames(const NameEntry* table, int n, const char* name) {
    if (!name) return 0;
    CRSectGuard hold(gCRProfileSect);
    if (!textReady()) return 0;
    int low = 0, high = n - 1;
    while (low <= high) {
        int middle = (low + high) / 2;
        int order = compareNames(name, table[middle].text);
        if (order == 0) return table[middle].number;
        if (order < 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return 0;
}

const char* nameOf(const char (*names)[16], int count, int n) {
    CRSectGuard hold(gCRProfileSect);
    if (n < 1 || n > count || !textReady()) return "";
    return names[n - 1];
}

} // namespace

int FMTLoadCalendarText(void) {
    CRSectGuard hold(gCRProfileSect);
    LIBSTATE& s = *gpLibState;
    s.bTextLoaded = 0; // the tables are rewritten from here on
    if (!loadNames(sDaySearch, kDays, dayShortId, kDayLongOffset)) return 0;
    if (!loadNames(sMonthSearch, kMonths, monthShortId, kMonthLongOffset)) return 0;
    copyNames(sDaySearch, kDays, s.aShortDays, s.aLongDays);
    copyNames(sMonthSearch, kMonths, s.aShortMonths, s.aLongMonths);
    sortNames(sDaySearch, 2 * kDays);
    sortNames(sMonthSearch, 2 * kMonths);
    if (!loadKeys()) return 0;
    s.bTextLoaded = 1;
    return 1;
}

int FMTMonthFromName(const char* name) { return searchNames(sMonthSearch, 2 * kMonths, name); }
int FMTDayFromName(const char* name) { return searchNames(sDaySearch, 2 * kDays, name); }

const char* FMTDayShortName(int n) { return nameOf(gpLibState->aShortDays, kDays, n); }
const char* FMTDayLongName(int n) { return nameOf(gpLibState->aLongDays, kDays, n); }
const char* FMTMonthShortName(int n) { return nameOf(gpLibState->aShortMonths, kMonths, n); }
const char* FMTMonthLongName(int n) { return nameOf(gpLibState->aLongMonths, kMonths, n); }
