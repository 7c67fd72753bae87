// Process-wide state of the library and its entry point.
//
// LIBSTATE lies in zeroed static storage and is not locked as a whole: each
// group of fields belongs to one part of the library and is guarded by that
// part's region. Its fields are in a fixed order; later parts fill theirs.
#ifndef OXL_CORE_LIBSTATE_H
#define OXL_CORE_LIBSTATE_H

#include <oxlrt31/oxlapi.h>

#include <cstdint>

struct LIBSTATE {
    char szDateTypeKey[20];     // string 2039: the profile key of the date type
    char szShortGregorian[25];  // string 2041
    char szLongGregorian[24];   // string 2040
    char szJapanGregorian[25];  // string 2042
    char szJapanEmperor[23];    // string 2043
    char szEmpBoundryCheck[31]; // string 2044
    HINSTANCE hInstance;        // the library's module; non-zero once load has run
    WORD wPicLen;               // length of the date picture being parsed
    int32_t lexValue;           // value of the current date picture token
    int32_t bDBCS;              // the double-byte path of the string family is on
    int32_t nDBCSLanguage;      // 1 Japanese, 2 Chinese, 3 Korean, 0 none
    int32_t bBiDi;              // a right-to-left language is in use
    WORD wSystemLangId;         // GetSystemDefaultLangID
    WORD wPrimaryLangId;        // its low 10 bits
    int32_t bTextLoaded;        // the calendar text has been loaded
    int32_t bProfileStale;      // the cached profile must be read before its next use
    char aShortDays[7][16];
    char aLongDays[7][16];
    char aShortMonths[12][16];
    char aLongMonths[12][16];
    DWORD dwPlatformId; // dwPlatformId of GetVersionExA (2: NT)
};

extern LIBSTATE* const gpLibState;

// The library's static objects other than gCRMainSect (core/libstatics.cpp).
class CRSect;
class TLSSlot;
extern CRSect gCRProfileSect; // cached locale profile and calendar text
extern CRSect gCRDatePicSect; // the date picture scanner and parser
extern TLSSlot gTLSNumPicSlot; // slot 100: currency forms of number pictures
extern TLSSlot gTLSFmtSlot;    // slot 101: the formatting engine's thread item
extern TLSSlot gTLSPrintSlot;  // slot 102: the print job's thread state

// The library's entry for the platform's notifications: reason 0 process
// detach, 1 process attach, 2 thread attach, 3 thread detach. Always 1.
BOOL LibEntry(HINSTANCE instance, DWORD reason, LPVOID reserved);

#endif
