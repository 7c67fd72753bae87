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

// The elements of a parse as they come, before the list is made: on the
// stack for a picture or text of usual size, moved to the heap beyond it.
class Staging {
public:
    Staging() = default;
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;
    ~Staging() {
        if (m_toks != m_inlineToks) MemFree(m_toks);
        if (m_pool != m_inlinePool) MemFree(m_pool);
    }

    // The token just scanned; false when memory fails.
    bool Add(FMTDateTok tok) {
        int32_t type = ElementType(tok, gpLibState->lexValue);
        uint32_t text = 0;
        if (type == FMTDT_STRING) {
            const char* s = FMTDateScanText();
            uint32_t n = uint32_t(std::strlen(s)) + 1;
            if (!Room(m_pool, m_poolCap, m_inlinePool, m_used + n)) return false;
            std::memcpy(m_pool + m_used, s, n);
            text = m_used, m_used += n;
        }
        if (!Room(m_toks, m_cap, m_inlineToks, m_count + 1)) return false;
        m_toks[m_count++] = {type, type == FMTDT_STRING ? int32_t(text) : gpLibState->lexValue};
        return true;
    }

    // The list: its elements and their texts in one block from MemAlloc,
    // the head at the block's start; null when memory fails.
    FMTDATETOKEN* Build() const {
        size_t bytes = m_count * sizeof(FMTDATETOKEN);
        auto* list = static_cast<FMTDATETOKEN*>(MemAlloc(DWORD(bytes + m_used)));
        if (!list) return nullptr;
        char* texts = reinterpret_cast<char*>(list) + bytes;
        std::memcpy(texts, m_pool, m_used);
        for (uint32_t i = 0; i < m_count; ++i) {
            FMTDATETOKEN& e = list[i];
            e.nType = m_toks[i].type;
            if (e.nType == FMTDT_STRING) e.pszText = texts + m_toks[i].value;
            else e.lValue = m_toks[i].value;
            e.pPrev = i ? &list[i - 1] : nullptr;
            e.pNext = i + 1 < m_count ? &list[i + 1] : nullptr;
        }
        return list;
    }
    uint32_t Count() const { return m_count; }

private:
    struct Tok {
        int32_t type;
        int32_t value; // the token's value, or the offset of a string's text
    };
    // Room for `need` items of `size` bytes at `at`, moving it from the inline
    // storage or growing it on the heap.
    template <class T> static bool Room(T*& at, uint32_t& cap, const T* inlineAt, uint32_t need) {
        if (need <= cap) return true;
        uint32_t grown = cap * 2 > need ? cap * 2 : need;
        auto* bigger = static_cast<T*>(MemAlloc(DWORD(grown * sizeof(T))));
        if (!bigger) return false;
        std::memcpy(bigger, at, cap * sizeof(T));
        if (at != inlineAt) MemFree(at);
        at = bigger, cap = grown;
        return true;
    }

    static constexpr uint32_t kInlineToks = 32, kInlinePool = 512;
    Tok m_inlineToks[kInlineToks];
    char m_inlinePool[kInlinePool];
    Tok* m_toks = m_inlineToks;
    char* m_pool = m_inlinePool;
    uint32_t m_count = 0, m_cap = kInlineToks, m_used = 0, m_poolCap = kInlinePool;
};

// The list of the scan under way; null for a failed parse (an error token, a
// form that isn't alone, no element at all) or when memory fails.
FMTDATETOKEN* Parse() {
    Staging staged;
    FMTDateTok tok = FMTDateScanNext();
    if (tok == TK_FORM) return nullptr; // a form alone has no list
    for (; tok != TK_END; tok = FMTDateScanNext())
        if (tok == TK_ERROR || tok == TK_FORM || !staged.Add(tok)) return nullptr;
    return staged.Count() ? staged.Build() : nullptr;
}

// The list of `text` behind the marker of `scanMode`, in `buffer`.
FMTDATETOKEN* ParseMarked(char* buffer, int scanMode, const char* text) {
    buffer[0] = 2, buffer[1] = char(scanMode), buffer[2] = 2;
    std::strcpy(buffer + 3, text);
    FMTDateScanReset(buffer);
    return Parse();
}

} // namespace

FMTDATETOKEN* FMTParseDateText(const char* text, int32_t mode) {
    if (!text || mode < 1 || mode > FMTDATE_PARSE_PICTURE) return nullptr;
    CRSectGuard guard(gCRDatePicSect);
    size_t len = std::strlen(text);
    char local[256]; // the marked text; a longer one goes to the heap
    char* buffer = len + 8 <= sizeof local ? local : static_cast<char*>(MemAlloc(DWORD(len + 8)));
    if (!buffer) return nullptr;
    int scanMode = mode == FMTDATE_PARSE_PICTURE ? FMTDATESCAN_PICTURE : FMTDATESCAN_VALUE;
    FMTDATETOKEN* head = ParseMarked(buffer, scanMode, text);
    if (head && scanMode == FMTDATESCAN_VALUE && len == 8 && !head->pNext) {
        // Eight bytes read as one element: a date written without separators.
        FMTFreeDateTokens(head);
        char split[11] = {text[0], text[1], text[2], text[3], ' ', text[4], text[5], ' ', text[6], text[7], 0};
        head = ParseMarked(buffer, scanMode, split);
    }
    if (buffer != local) MemFree(buffer);
    return head;
}

void FMTFreeDateTokens(FMTDATETOKEN* head) { MemFree(head); }
