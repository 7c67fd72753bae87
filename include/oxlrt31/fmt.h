/*
 * The formatting engine's records: a date value (DATDEF), the regional
 * settings (FMTPROFILEINTL) and the control block a host fills and passes to
 * every date and number operation (FMTCNTLBLOCK).
 *
 * The three records are packed (one-byte alignment): a 32-bit field may stand
 * at an odd offset, and hosts compile the layout into their own records, so
 * the field order and widths below are fixed. Pointers are the only fields
 * whose width differs between builds; the checks below hold both layouts.
 *
 * Text is NUL-terminated bytes in the process's ANSI or double-byte code page.
 */
#ifndef OXLRT31_FMT_H
#define OXLRT31_FMT_H

#include "number.h"

#include <stddef.h>

/* nType of a control block: the kind of value. FMTInitCntlBlock writes
 * FMT_NONE, which every operation refuses until the host sets a kind. */
#define FMT_NONE (-1)
#define FMT_DATE 1
#define FMT_TIME 2
#define FMT_DATETIME 3
#define FMT_NUMBER 4
#define FMT_CURRENCY 5
#define FMT_PICTURE 6 /* a number under a picture */

/* dwFlags of a control block. "out" marks are written by a successful read. */
#define FMTF_DEFAULTTIME 0x0001    /* date-time values take the default time picture */
#define FMTF_STRICTTIME 0x0002     /* time text is read under the caller's picture only */
#define FMTF_MICROSECONDS 0x0004   /* the default time picture ends in microseconds */
#define FMTF_ALLDIGITS 0x0008      /* numbers print every digit of the record */
#define FMTF_NUMBERVALUE 0x0020    /* number operations work on numValue */
#define FMTF_OMITZEROMICRO 0x0040  /* a zero microseconds field goes with the character before it */
#define FMTF_HASDATE 0x0080        /* out: the text held a date part */
#define FMTF_EDITFILTER 0x0100     /* option of the input filter */
#define FMTF_EDITNOTIFY 0x0200     /* option of the input filter */
#define FMTF_LONGDATE 0x0400       /* with the profile: the long date picture, whatever the style */
#define FMTF_HASTIME 0x0800        /* out: the text held a time part */
#define FMTF_NOHOURZERO 0x1000     /* out: the hour field takes no leading zero */

/* Date styles (iDateType): what a date without a picture looks like. */
#define FMT_DATETYPE_LONG 0     /* the long date picture */
#define FMT_DATETYPE_SHORT 1    /* the short date picture */
#define FMT_DATETYPE_JAPAN 2    /* Western year with the Japanese year, month and day signs */
#define FMT_DATETYPE_EMPEROR 3  /* era name and era year */

/* Elements of a date picture or a value text. 4 to 13 are date elements,
 * 14 to 21 time elements. */
#define FMTDT_NUMBER 0     /* value text: a run of digits */
#define FMTDT_STRING 1     /* a quoted literal, or a word of a value text */
#define FMTDT_CHAR 2       /* a separator */
#define FMTDT_BLANK 3      /* a run of blanks */
#define FMTDT_DAY1 4       /* d */
#define FMTDT_DAY2 5       /* dd */
#define FMTDT_DAYSHORT 6   /* ddd */
#define FMTDT_DAYLONG 7    /* dddd */
#define FMTDT_MONTH1 8     /* M */
#define FMTDT_MONTH2 9     /* MM */
#define FMTDT_MONTHSHORT 10 /* MMM */
#define FMTDT_MONTHLONG 11 /* MMMM */
#define FMTDT_YEAR2 12     /* yy */
#define FMTDT_YEAR4 13     /* yyyy */
#define FMTDT_HOUR12 14    /* hh */
#define FMTDT_HOUR24 15    /* hhhh */
#define FMTDT_MINUTE 16    /* mm */
#define FMTDT_SECOND 17    /* ss */
#define FMTDT_MICRO 18     /* mmmmmm */
#define FMTDT_AMPM 19      /* AMPM */
#define FMTDT_HOUR12N 20   /* h */
#define FMTDT_HOUR24N 21   /* hhh */

#pragma pack(push, 1)

/* A date and time of the Gregorian calendar: the engine's only date form. It
 * has no null value and no epoch. */
typedef struct DATDEF {
    LONG nMonth;       /* 1 to 12 */
    LONG nDay;         /* 1 to 31 */
    LONG nYear;        /* four digits */
    LONG nHour;        /* 0 to 23 */
    LONG nMinute;      /* 0 to 59 */
    LONG nSecond;      /* 0 to 59 */
    LONG nMicrosecond; /* 0 to 999999 */
} DATDEF;

/* The regional settings: the profile store's section "intl" and the
 * library's section "OXLEEKIT". Text fields are NUL-terminated, cut to fit. */
typedef struct FMTPROFILEINTL {
    DWORD iCountry;
    char chList;
    char sCurrency[5];
    DWORD bCurrencySpace;  /* iCurrency 2 or 3 */
    DWORD bCurrencySuffix; /* iCurrency 1 or 3 */
    DWORD iDigits;
    char chThousand;
    char chDecimal;
    DWORD iLzero;
    DWORD iDate;
    char chDate;
    DWORD iTime;
    char s1159[5];
    char s2359[5];
    char sTime[3];
    DWORD iTLZero;
    DWORD iMeasure;
    DWORD iCurrDigits;
    DWORD iNegCurr;
    char sShortDate[20];
    char sLongDate[40];
    char sCountry[15];
    char sLanguage[4];
    DWORD iDateType; /* FMT_DATETYPE_... */
    DWORD dwReserved; /* never written by the library */
    DWORD iEmpDateBoundryCheck;
} FMTPROFILEINTL;

/* The control block. Pointers stay the caller's; the engine writes only
 * lpszOutput, datDef, dblValue, numValue, lResult and dwFlags. The regional
 * fields are read only when bUseProfile is 0. */
typedef struct FMTCNTLBLOCK {
    LONG nType; /* FMT_DATE ... FMT_PICTURE */
    char* lpszInput;
    char* lpszOutput;
    char* lpszShortPic;
    char* lpszLongPic;
    DWORD b24Hour;
    char* lpszTimeSep;
    DWORD bTimeLeadZero;
    char* lpsz1159;
    char* lpsz2359;
    DWORD bUseProfile;
    DATDEF datDef;
    DWORD iDateType;
    char* lpszPicture;
    char chThousand;
    char chDecimal;
    double dblValue;
    DWORD bLeadZero;
    DWORD nDigits;
    char* lpszCurrency;
    DWORD iCurrency;
    DWORD iNegCurr;
    DWORD iCountry;
    DWORD bEmpBoundryCheck;
    DWORD dwReserved; /* neither read nor written */
    DWORD dwFlags;    /* FMTF_... */
    tagNUMBER numValue;
    DWORD hWnd; /* of FMTValidateInput: the edit control, as 32 bits */
    DWORD uMsg;
    DWORD wParam;
    DWORD lParam;
    DWORD lResult;
    BYTE abReserved[8]; /* neither read nor written */
} FMTCNTLBLOCK;

#pragma pack(pop)

OXL_STATIC_ASSERT(sizeof(DATDEF) == 28, "DATDEF is seven 32-bit fields");
OXL_STATIC_ASSERT(offsetof(DATDEF, nMonth) == 0 && offsetof(DATDEF, nDay) == 4 && offsetof(DATDEF, nYear) == 8,
                  "DATDEF month, day, year");
OXL_STATIC_ASSERT(offsetof(DATDEF, nHour) == 12 && offsetof(DATDEF, nMinute) == 16 &&
                      offsetof(DATDEF, nSecond) == 20 && offsetof(DATDEF, nMicrosecond) == 24,
                  "DATDEF hour, minute, second, microsecond");

OXL_STATIC_ASSERT(offsetof(FMTPROFILEINTL, iCountry) == 0 && offsetof(FMTPROFILEINTL, chList) == 4 &&
                      offsetof(FMTPROFILEINTL, sCurrency) == 5 && offsetof(FMTPROFILEINTL, bCurrencySpace) == 10 &&
                      offsetof(FMTPROFILEINTL, bCurrencySuffix) == 14 && offsetof(FMTPROFILEINTL, iDigits) == 18,
                  "FMTPROFILEINTL country, list and currency fields");
OXL_STATIC_ASSERT(offsetof(FMTPROFILEINTL, chThousand) == 22 && offsetof(FMTPROFILEINTL, chDecimal) == 23 &&
                      offsetof(FMTPROFILEINTL, iLzero) == 24 && offsetof(FMTPROFILEINTL, iDate) == 28 &&
                      offsetof(FMTPROFILEINTL, chDate) == 32 && offsetof(FMTPROFILEINTL, iTime) == 33,
                  "FMTPROFILEINTL separators, date order and clock");
OXL_STATIC_ASSERT(offsetof(FMTPROFILEINTL, s1159) == 37 && offsetof(FMTPROFILEINTL, s2359) == 42 &&
                      offsetof(FMTPROFILEINTL, sTime) == 47 && offsetof(FMTPROFILEINTL, iTLZero) == 50 &&
                      offsetof(FMTPROFILEINTL, iMeasure) == 54 && offsetof(FMTPROFILEINTL, iCurrDigits) == 58 &&
                      offsetof(FMTPROFILEINTL, iNegCurr) == 62,
                  "FMTPROFILEINTL time markers and number settings");
OXL_STATIC_ASSERT(offsetof(FMTPROFILEINTL, sShortDate) == 66 && offsetof(FMTPROFILEINTL, sLongDate) == 86 &&
                      offsetof(FMTPROFILEINTL, sCountry) == 126 && offsetof(FMTPROFILEINTL, sLanguage) == 141 &&
                      offsetof(FMTPROFILEINTL, iDateType) == 145 && offsetof(FMTPROFILEINTL, dwReserved) == 149 &&
                      offsetof(FMTPROFILEINTL, iEmpDateBoundryCheck) == 153,
                  "FMTPROFILEINTL pictures, names and date style");
OXL_STATIC_ASSERT(sizeof(FMTPROFILEINTL) == 157, "FMTPROFILEINTL is 157 bytes on every platform");

/* Offsets of the control block: P is the width of a pointer (4 on i686, 8 on
 * x86_64); 9 pointers make it 179 or 215 bytes. */
#define OXL_FMTCB_P ((size_t)sizeof(char*))
OXL_STATIC_ASSERT(offsetof(FMTCNTLBLOCK, nType) == 0 && offsetof(FMTCNTLBLOCK, lpszInput) == 4 &&
                      offsetof(FMTCNTLBLOCK, lpszOutput) == 4 + OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpszShortPic) == 4 + 2 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpszLongPic) == 4 + 3 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, b24Hour) == 4 + 4 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpszTimeSep) == 8 + 4 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, bTimeLeadZero) == 8 + 5 * OXL_FMTCB_P,
                  "FMTCNTLBLOCK kind, texts and pictures");
OXL_STATIC_ASSERT(offsetof(FMTCNTLBLOCK, lpsz1159) == 12 + 5 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpsz2359) == 12 + 6 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, bUseProfile) == 12 + 7 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, datDef) == 16 + 7 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, iDateType) == 44 + 7 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpszPicture) == 48 + 7 * OXL_FMTCB_P,
                  "FMTCNTLBLOCK markers, profile switch, date value and picture");
OXL_STATIC_ASSERT(offsetof(FMTCNTLBLOCK, chThousand) == 48 + 8 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, chDecimal) == 49 + 8 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, dblValue) == 50 + 8 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, bLeadZero) == 58 + 8 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, nDigits) == 62 + 8 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lpszCurrency) == 66 + 8 * OXL_FMTCB_P,
                  "FMTCNTLBLOCK number settings");
OXL_STATIC_ASSERT(offsetof(FMTCNTLBLOCK, iCurrency) == 66 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, iNegCurr) == 70 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, iCountry) == 74 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, bEmpBoundryCheck) == 78 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, dwReserved) == 82 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, dwFlags) == 86 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, numValue) == 90 + 9 * OXL_FMTCB_P,
                  "FMTCNTLBLOCK currency, country, flags and number value");
OXL_STATIC_ASSERT(offsetof(FMTCNTLBLOCK, hWnd) == 115 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, uMsg) == 119 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, wParam) == 123 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lParam) == 127 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, lResult) == 131 + 9 * OXL_FMTCB_P &&
                      offsetof(FMTCNTLBLOCK, abReserved) == 135 + 9 * OXL_FMTCB_P,
                  "FMTCNTLBLOCK message words of the input filter");
OXL_STATIC_ASSERT(sizeof(FMTCNTLBLOCK) == 143 + 9 * OXL_FMTCB_P, "FMTCNTLBLOCK is 143 bytes and nine pointers");
#if defined(_WIN64) || defined(__x86_64__)
OXL_STATIC_ASSERT(sizeof(FMTCNTLBLOCK) == 215, "FMTCNTLBLOCK is 215 bytes on x86_64");
#elif defined(_WIN32) || defined(__i386__)
OXL_STATIC_ASSERT(sizeof(FMTCNTLBLOCK) == 179, "FMTCNTLBLOCK is 179 bytes on i686");
#endif

OXL_EXTERN_C_BEGIN

/* Prepares a block: nType FMT_NONE; the texts, pictures, regional fields,
 * date value, double and message words 0; bUseProfile 0 (so no regional
 * settings at all until the caller chooses); iCountry 1; numValue the number
 * 0; dwFlags FMTF_DEFAULTTIME | FMTF_MICROSECONDS | FMTF_NUMBERVALUE with
 * bits 13 to 31 kept. lpszCurrency, iCurrency, iNegCurr, dwReserved and
 * lResult keep what they held. */
void OXLAPI FMTInitCntlBlock(FMTCNTLBLOCK* block);

/* Reads the profile store afresh into `profile`; a key that is missing gives
 * its default. Takes no lock and leaves the library's cached copy alone. */
void OXLAPI FMTGetProfileIntl(FMTPROFILEINTL* profile);

/* Marks the library's copy of the regional settings stale: it is read again
 * at the next question that needs it, not now. Call it when the user's
 * settings changed. */
void OXLAPI FMTWinIniChanged(void);

/* Reads "yyyy-mm-dd-hh.mm.ss.uuuuuu" by fixed positions into `out`: each field
 * only when the text reaches the end of its group, the rest 0. The
 * characters between groups are not looked at and no value is checked. 1. */
int OXLAPI FMTIsoToDatDef(const char* text, DATDEF* out);

OXL_EXTERN_C_END

#endif
