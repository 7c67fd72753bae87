// FMTValidateNumber: whether a typed text is a number or a currency amount
// under the settings in force, and its value. The text is cleaned to plain
// digits with "." as the point and read by the engine's own reader.
#include "numvalint.h"

#include <oxlrt31/intl.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

bool endsWith(const char* t, const char* s) {
    size_t n = std::strlen(t), m = std::strlen(s);
    return m <= n && std::strcmp(t + n - m, s) == 0;
}

// Takes one sign from either end; true when it was "-".
bool takeSign(char* t) {
    size_t n = std::strlen(t);
    if (n && (t[0] == '+' || t[0] == '-')) {
        bool minus = t[0] == '-';
        std::memmove(t, t + 1, n);
        return minus;
    }
    if (n && (t[n - 1] == '+' || t[n - 1] == '-')) {
        bool minus = t[n - 1] == '-';
        t[n - 1] = 0;
        return minus;
    }
    return false;
}

// The groups of three from the point leftward; the separators go.
bool checkGroups(char* t, char thousand, char decimal) {
    char* point = decimal ? std::strchr(t, decimal) : nullptr;
    char* p = point ? point : t + std::strlen(t);
    for (;;) {
        char* sep = p;
        while (sep > t && sep[-1] != thousand) --sep;
        if (sep == t) { // ahead of the leftmost separator
            if (p - t > 3) return false;
            break;
        }
        if (p - sep != 3) return false;
        p = sep - 1;
    }
    char* out = t;
    for (char* q = t; *q; ++q)
        if (*q != thousand) *out++ = *q;
    *out = 0;
    return true;
}

bool digitsTo(const char*& p) {
    while (*p >= '0' && *p <= '9') ++p;
    return true;
}

// Digits and points, then optionally "e" or "E", digits, and a signed tail.
bool plainForm(const char* t) {
    const char* p = t + std::strspn(t, ".0123456789");
    if (!*p) return true;
    if (*p != 'e' && *p != 'E') return false;
    ++p;
    digitsTo(p);
    if (!*p) return true;
    if (*p != '+' && *p != '-') return false;
    ++p;
    digitsTo(p);
    return *p == 0;
}

bool readClean(char* t, const FMTNUMVALSET& s, tagNUMBER* value) {
    IntlStrStripSpace(t);
    bool negative = takeSign(t);
    char* point = s.chDecimal ? std::strchr(t, s.chDecimal) : nullptr;
    if (point && (std::strchr(point + 1, s.chDecimal) || (s.chThousand && std::strchr(point + 1, s.chThousand))))
        return false;
    if (s.chThousand && std::strchr(t, s.chThousand) && !checkGroups(t, s.chThousand, s.chDecimal)) return false;
    if (point && s.chDecimal != '.') *std::strchr(t, s.chDecimal) = '.';
    if (!plainForm(t)) return false;
    if (t[std::strspn(t, ".0")] == 0) {
        NumWordToNumber(value, 0);
    } else if (NumAsciiToNumber(value, t) <= 0) {
        return false;
    }
    if (negative) NumNegate(value);
    return true;
}

} // namespace

void FMTNumValSettings(const FMTCNTLBLOCK* b, FMTNUMVALSET* s) {
    if (b->bUseProfile) {
        s->chThousand = FMTProfileString(FMTPS_THOUSAND)[0];
        s->chDecimal = FMTProfileString(FMTPS_DECIMAL)[0];
        s->pszSymbol = FMTProfileString(FMTPS_CURRENCY);
        s->iCurrency = FMTProfileInt(FMTPI_CURRENCY);
    } else {
        s->chThousand = b->chThousand;
        s->chDecimal = b->chDecimal;
        s->pszSymbol = b->lpszCurrency ? b->lpszCurrency : "";
        s->iCurrency = LONG(b->iCurrency);
    }
}

void FMTStripCurrency(const char* text, const char* symbol, char* output, bool symbolBehind) {
    std::strcpy(output, text);
    char* t = output;
    IntlStrStripSpace(t);
    size_t n = std::strlen(t);
    bool negative = false;
    auto dropEnds = [&] {
        t[n - 1] = 0;
        std::memmove(t, t + 1, n - 1);
        negative = true;
    };
    bool parens = n >= 2 && t[0] == '(' && t[n - 1] == ')';
    if (n && (t[0] == '-' || t[n - 1] == '-')) {
        char* minus = std::strchr(t, '-');
        if (!std::strchr(minus + 1, '-')) {
            std::memmove(minus, minus + 1, std::strlen(minus));
            negative = true;
        } else if (parens) {
            dropEnds();
        }
    } else if (parens) {
        dropEnds();
    }
    size_t m = std::strlen(symbol);
    if (m) {
        if (symbolBehind) {
            if (endsWith(t, symbol)) t[std::strlen(t) - m] = 0;
        } else if (std::strncmp(t, symbol, m) == 0) {
            std::memmove(t, t + m, std::strlen(t + m) + 1);
        }
    }
    if (negative) {
        if (m && endsWith(t, symbol)) t[std::strlen(t) - m] = 0;
        std::memmove(t + 1, t, std::strlen(t) + 1);
        t[0] = '-';
    }
}

LONG OXLAPI FMTValidateNumber(FMTCNTLBLOCK* b) {
    if (!(b->dwFlags & FMTF_NUMBERVALUE) || (b->nType != FMT_NUMBER && b->nType != FMT_CURRENCY)) return 0;
    if (!b->lpszInput || !*b->lpszInput) return 0;
    FMTNUMVALSET s;
    FMTNumValSettings(b, &s);
    size_t len = std::strlen(b->lpszInput);
    char* t = static_cast<char*>(MemAlloc(DWORD(len + 2)));
    if (!t) return 0;
    if (b->nType == FMT_CURRENCY)
        FMTStripCurrency(b->lpszInput, s.pszSymbol, t, s.iCurrency == 1 || s.iCurrency == 3);
    else
        std::strcpy(t, b->lpszInput);
    tagNUMBER value;
    bool ok = readClean(t, s, &value);
    MemFree(t);
    if (ok) b->numValue = value;
    return ok ? 1 : 0;
}
