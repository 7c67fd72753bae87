// The date picture parser: the scanner's tokens into a token list.
//
//   goal: list | FORM          list: element | list element
//
// An ERROR token anywhere, a FORM that isn't alone, and an empty text are
// syntax errors; a failed parse frees what it built and has no result.
#include "datepic.h"
#include "datepic_scan.h"

#include "core/crsect.h"
#include "core/libstate.h"

#include <oxlrt31/mem.h>

#include <cstring>

namespace {

// The element type of an element token, from the token and its value.
int32_t ElementType(FMTDateTok tok, int32_t value) {
    switch (tok) {
    case TK_NUMBER: return FMTDT_NUMBER;
    case TK_STRING: return FMTDT_STRING;
    case TK_CHAR: return FMTDT_CHAR;
    case TK_BLANK: return FMTDT_BLANK;
    case TK_DAY: return 3 + value;
    case TK_MONTH: return 7 + value;
    case TK_YEAR: return value == 2 ? FMTDT_YEAR2 : FMTDT_YEAR4;
    case TK_HOUR: {
        static const int32_t kHours[] = {FMTDT_HOUR12N, FMTDT_HOUR12, FMTDT_HOUR24N, FMTDT_HOUR24};
        return kHours[value - 1];
    }
    case TK_MINUTE: return FMTDT_MINUTE;
    case TK_SECOND: return FMTDT_SECOND;
    case TK_MICROSECOND: return FMTDT_MICRO;
    default: return FMTDT_AMPM;
    }
}

// A new element behind `last` for the token just scanned; null when memory fails.
FMTDATETOKEN* Append(FMTDATETOKEN* last, FMTDateTok tok) {
    auto* e = static_cast<FMTDATETOKEN*>(MemAlloc(sizeof(FMTDATETOKEN)));
    if (!e) return nullptr;
    e->nType = ElementType(tok, gpLibState->lexValue);
    if (e->nType == FMTDT_STRING) {
        const char* text = FMTDateScanText();
        size_t n = std::strlen(text);
        e->pszText = static_cast<char*>(MemAlloc(DWORD(n + 1)));
        if (!e->pszText) {
            MemFree(e);
            return nullptr;
        }
        std::memcpy(e->pszText, text, n);
    } else {
        e->lValue = gpLibState->lexValue;
    }
    e->pPrev = last;
    if (last) last->pNext = e;
    return e;
}

FMTDATETOKEN* HeadOf(FMTDATETOKEN* last) {
    while (last && last->pPrev) last = last->pPrev;
    return last;
}

// The parse fails: what was built goes. No text of the failure is shown.
void ParseError(FMTDATETOKEN*& last) {
    FMTFreeDateTokens(HeadOf(last));
    last = nullptr;
}

struct ParseResult {
    FMTDATETOKEN* last; // the list's last element, or null
    bool form;          // the text was one known form
};

ParseResult Parse() {
    FMTDATETOKEN* last = nullptr;
    FMTDateTok tok = FMTDateScanNext();
    if (tok == TK_FORM) return {nullptr, FMTDateScanNext() == TK_END};
    for (; tok != TK_END; tok = FMTDateScanNext()) {
        if (tok == TK_ERROR || tok == TK_FORM) {
            ParseError(last);
            return {};
        }
        FMTDATETOKEN* e = Append(last, tok);
        if (!e) {
            ParseError(last);
            return {};
        }
        last = e;
    }
    return {last, false}; // an empty text has no list: a syntax error
}

// The list of `text` behind the marker of `scanMode`, in `buffer`.
FMTDATETOKEN* ParseMarked(char* buffer, int scanMode, const char* text) {
    buffer[0] = 2, buffer[1] = char(scanMode), buffer[2] = 2;
    std::strcpy(buffer + 3, text);
    FMTDateScanReset(buffer);
    return HeadOf(Parse().last);
}

} // namespace

FMTDATETOKEN* FMTParseDateText(const char* text, int32_t mode) {
    if (!text || mode < 1 || mode > FMTDATE_PARSE_PICTURE) return nullptr;
    CRSectGuard guard(gCRDatePicSect);
    size_t len = std::strlen(text);
    char* buffer = static_cast<char*>(MemAlloc(DWORD(len + 8)));
    if (!buffer) return nullptr;
    int scanMode = mode == FMTDATE_PARSE_PICTURE ? FMTDATESCAN_PICTURE : FMTDATESCAN_VALUE;
    FMTDATETOKEN* head = ParseMarked(buffer, scanMode, text);
    if (head && scanMode == FMTDATESCAN_VALUE && len == 8 && !head->pNext) {
        // Eight bytes read as one element: a date written without separators.
        FMTFreeDateTokens(head);
        char split[11] = {text[0], text[1], text[2], text[3], ' ', text[4], text[5], ' ', text[6], text[7], 0};
        head = ParseMarked(buffer, scanMode, split);
    }
    MemFree(buffer);
    return head;
}

void FMTFreeDateTokens(FMTDATETOKEN* head) {
    while (head) {
        FMTDATETOKEN* next = head->pNext;
        if (head->nType == FMTDT_STRING) MemFree(head->pszText);
        MemFree(head);
        head = next;
    }
}
