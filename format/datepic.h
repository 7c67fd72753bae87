// Date pictures and value texts as token lists.
//
// A picture ("dddd, MMMM dd, yyyy") and a typed text ("Friday, March 15,
// 2024") are both turned into a doubly linked list of FMTDATETOKEN elements;
// formatting walks a picture's list, reading matches a text's list against a
// picture's. Lists are made per operation and freed by the caller with
// FMTFreeDateTokens; nothing is cached. The scanner and parser behind them are
// single static instances held under gCRDatePicSect for the whole of each
// operation, so any thread may call.
#ifndef OXL_FORMAT_DATEPIC_H
#define OXL_FORMAT_DATEPIC_H

#include <oxlrt31/fmt.h>

#include <cstdint>

// Element types: FMTDT_NUMBER ... FMTDT_HOUR24N of <oxlrt31/fmt.h>. 4 to 13
// are date elements, 14 to 21 time elements.
inline bool FMTDTIsDate(int32_t type) { return type >= FMTDT_DAY1 && type <= FMTDT_YEAR4; }
inline bool FMTDTIsTime(int32_t type) { return type >= FMTDT_HOUR12 && type <= FMTDT_HOUR24N; }

// A NUMBER written as four digits beginning with "00" carries this mark in its
// top byte: the year was written in full ("0099" is the year 99, not 1999).
constexpr uint32_t kFMTFullYearMark = 0xFF000000u;

// One element. A list is one block from MemAlloc: its elements in order,
// the head first, then the texts of its strings.
struct FMTDATETOKEN {
    int32_t nType;
    union {
        int32_t lValue;  // number, count or character
        char* pszText;   // FMTDT_STRING: NUL-terminated, from MemAlloc
    };
    FMTDATETOKEN* pNext;
    FMTDATETOKEN* pPrev;
};

// Parse modes of FMTParseDateText: 1 to 3 read a value text (of a date, a
// time or a date-time, alike), 4 reads a picture.
enum { FMTDATE_PARSE_PICTURE = 4 };

// The head of the list of `text`, or null for a text that doesn't parse or a
// mode outside 1 to 4. An 8-byte value text of one element is read once more
// cut after its fourth and sixth byte ("19991231" as 1999 12 31).
FMTDATETOKEN* FMTParseDateText(const char* text, int32_t mode);

// Looks for a known form of a value text of nType 1 (date), 2 (time) or 3
// (date-time). When found, `picture` (35 bytes) gets the form's picture and
// the result is that picture's list; otherwise `picture` is empty and the
// result null. With bMonthFirst 0 the numeric form "M/d/yyyy" is not known.
FMTDATETOKEN* FMTMatchDateForm(const char* text, int32_t nType, char* picture, int32_t bMonthFirst);
constexpr int kFMTDateFormPicSize = 35;

// The text of a word or a literal of a list has fewer bytes than this.
constexpr int kFMTDateWordMax = 100;

// Frees every element and every element's text: the list's block, by its
// head. Null is allowed.
void FMTFreeDateTokens(FMTDATETOKEN* head);

#endif
