// Number pictures, the private side: the settings a picture is read under,
// the four currency forms, and the helpers shared by the translations, the
// validity test, formatting and reading back.
#ifndef OXL_FORMAT_NUMPICINT_H
#define OXL_FORMAT_NUMPICINT_H

#include "fmtint.h"

#include <oxlrt31/numpic.h>

#include <cstddef>

// Longest picture, and longest section, a reader holds (with its NUL).
constexpr int FMT_PIC_MAX = 64;
// Room of one currency form: the longest, "-%s " under a 7-byte symbol, fits.
constexpr int FMT_FORM_MAX = 10;
constexpr int FMT_SYMBOL_MAX = 7;

// The four currency forms of a symbol, iCurrency and iNegCurr. The
// per-thread copy (slot 100) is made with bFormsReady 0 and built on first
// use under the profile; it is not rebuilt when the profile changes later.
struct FMTCURRFORMS {
    char szPosPrefix[FMT_FORM_MAX];
    char szPosSuffix[FMT_FORM_MAX];
    char szNegPrefix[FMT_FORM_MAX];
    char szNegSuffix[FMT_FORM_MAX];
    DWORD bFormsReady;
};

// The settings in force for one call: from the block, or from the profile.
struct FMTNUMSET {
    char chThousand; // 0: none
    char chDecimal;  // 0: none
    LONG iCurrency;
    LONG iNegCurr;
    char szSymbol[FMT_SYMBOL_MAX + 1];
    FMTCURRFORMS forms;
};

// Builds the forms; a symbol is cut to 7 bytes and a position out of range
// gives empty forms.
void FMTBuildCurrencyForms(LONG iCurrency, LONG iNegCurr, char* posPrefix, char* posSuffix, char* negPrefix,
                           char* negSuffix, const char* symbol);
// The calling thread's forms record, made on first use; null when it can't be.
FMTCURRFORMS* FMTGetCurrForms(void);
// The settings of the block (bUseProfile 0) or of the profile.
void FMTNumSettings(const FMTCNTLBLOCK* block, FMTNUMSET* set);

// "0." then any text, "E" or "e", one character, "0", any text.
bool FMTIsScientificPic(const char* picture);
// The grammar of a scientific picture: 1 valid, 0 not.
int FMTIsScientificPicValid(const char* picture);
// Section `section` (0, 1, 2) of a picture, `length` bytes at `text`;
// currencySeen runs through the sections of one picture.
int FMTIsNumberSectionValid(const FMTNUMSET& set, const char* text, size_t length, int section, bool* currencySeen);

// The translations, writing at most `room` - 1 bytes and a NUL.
void FMTpTokenize(const FMTNUMSET& set, const char* picture, char* out, size_t room);
void FMTpUnTokenize(const FMTNUMSET& set, const char* picture, char* out, size_t room);
void FMTpCnvOld(const FMTNUMSET& set, const char* picture, char* out, size_t room);

// A bounded writer: bytes past the room are dropped, the text stays ended.
struct FMTOut {
    char* p;
    size_t room; // bytes left, the NUL's included
    void Put(char c) {
        if (room > 1) {
            *p++ = c;
            --room;
            *p = 0;
        }
    }
    void Put(const char* s) {
        while (*s) Put(*s++);
    }
    void Put(const char* s, size_t n) {
        for (size_t i = 0; i < n; ++i) Put(s[i]);
    }
};

// ---- formatting ------------------------------------------------------------

// Places FMTNumToFixed writes at most, and the room its text needs.
constexpr int FMT_FIXED_PLACES_MAX = 322;
constexpr int FMT_FIXED_ROOM = 110 + FMT_FIXED_PLACES_MAX;

// What a section's text says about its digits.
struct FMTNUMPICINFO {
    LONG nFracPlaces;      // placeholders behind the decimal character
    LONG nFracZeros;       // of them "0"
    LONG nIntZeros;        // "0" placeholders ahead of it
    DWORD bGroup;          // a thousands character in the run is followed by a placeholder
    const char* pszSuffix; // the text behind the digit run, or null
};
FMTNUMPICINFO FMTAnalyzeNumberPic(const char* section, char thousand, char decimal);
// The value with exactly `places` (0 to 322) fraction digits and "." as the
// point; empty for a null number. `buffer` holds FMT_FIXED_ROOM bytes.
void FMTNumToFixed(const tagNUMBER* value, int places, char* buffer);
// The symbol and the sign round a text (which may start with "-").
void FMTAddCurrency(const char* text, const char* symbol, char* output, bool symbolBehind, bool withSpace,
                    LONG iNegCurr);
// The worker under a picture (user form); 1, or 0 for no value, a null or
// empty picture or a null output.
int FMTFormatPicture(char* output, const char* picture, char decimal, char thousand, bool useProfile,
                     const tagNUMBER* value, int hasValue);
LONG FMTMaxSectionLen(const char* section, LONG maxDigits);
// value x 10^power in steps the engine's power of ten takes; null when out of range.
void FMTScaleBy10(tagNUMBER* value, int power);

// Bytes of the character at p: 2 for a lead byte with a trail, else 1 (0 at the end).
size_t FMTCharBytes(const char* p);
// `form` is not empty and the text at p starts with it.
bool FMTFormAt(const char* p, const char* form);

#endif
