// The settings a number picture is read under: separators, currency
// position and the four currency forms, from the block or from the profile
// (whose forms each thread builds once and keeps in slot 100).
#include "numpicint.h"

#include "core/libstate.h"
#include "core/tls.h"

#include <oxlrt31/intl.h>

#include <cstring>

namespace {

const TLSItem<FMTCURRFORMS> sForms(gTLSNumPicSlot);

// The forms as patterns, "%" standing for the symbol.
const char* const kPosForms[4][2] = {{"%", ""}, {"", "%"}, {"% ", ""}, {"", " %"}};
const char* const kNegForms[11][2] = {{"(%", ")"}, {"-%", ""},  {"%-", ""},  {"%", "-"},   {"(", "%)"}, {"-", "%"},
                                      {"", "-%"},  {"", "%-"}, {"-", " %"}, {"-% ", ""}, {"", " %-"}};

void expand(char* out, const char* pattern, const char* symbol) {
    FMTOut w{out, FMT_FORM_MAX};
    *out = 0;
    for (; *pattern; ++pattern)
        if (*pattern == '%')
            w.Put(symbol);
        else
            w.Put(*pattern);
}

} // namespace

void FMTBuildCurrencyForms(LONG iCurrency, LONG iNegCurr, char* posPrefix, char* posSuffix, char* negPrefix,
                           char* negSuffix, const char* symbol) {
    char s[FMT_SYMBOL_MAX + 1] = {};
    if (symbol) std::strncpy(s, symbol, FMT_SYMBOL_MAX);
    bool pos = iCurrency >= 0 && iCurrency <= 3, neg = iNegCurr >= 0 && iNegCurr <= 10;
    expand(posPrefix, pos ? kPosForms[iCurrency][0] : "", s);
    expand(posSuffix, pos ? kPosForms[iCurrency][1] : "", s);
    expand(negPrefix, neg ? kNegForms[iNegCurr][0] : "", s);
    expand(negSuffix, neg ? kNegForms[iNegCurr][1] : "", s);
}

FMTCURRFORMS* FMTGetCurrForms(void) { return sForms.Get(); }

void FMTNumSettings(const FMTCNTLBLOCK* b, FMTNUMSET* set) {
    FMTCURRFORMS& f = set->forms;
    if (!b->bUseProfile) {
        set->chThousand = b->chThousand;
        set->chDecimal = b->chDecimal;
        set->iCurrency = LONG(b->iCurrency);
        set->iNegCurr = LONG(b->iNegCurr);
        std::memset(set->szSymbol, 0, sizeof set->szSymbol);
        if (b->lpszCurrency) std::strncpy(set->szSymbol, b->lpszCurrency, FMT_SYMBOL_MAX);
        FMTBuildCurrencyForms(set->iCurrency, set->iNegCurr, f.szPosPrefix, f.szPosSuffix, f.szNegPrefix,
                              f.szNegSuffix, set->szSymbol);
        return;
    }
    set->chThousand = FMTProfileString(FMTPS_THOUSAND)[0];
    set->chDecimal = FMTProfileString(FMTPS_DECIMAL)[0];
    set->iCurrency = FMTProfileInt(FMTPI_CURRENCY);
    set->iNegCurr = FMTProfileInt(FMTPI_NEGCURR);
    std::memset(set->szSymbol, 0, sizeof set->szSymbol);
    std::strncpy(set->szSymbol, FMTProfileString(FMTPS_CURRENCY), FMT_SYMBOL_MAX);
    // Without a record of its own the thread gets forms built for this call.
    FMTCURRFORMS* kept = FMTGetCurrForms();
    FMTCURRFORMS& forms = kept ? *kept : f;
    if (!kept || !kept->bFormsReady) {
        FMTBuildCurrencyForms(set->iCurrency, set->iNegCurr, forms.szPosPrefix, forms.szPosSuffix,
                              forms.szNegPrefix, forms.szNegSuffix, set->szSymbol);
        forms.bFormsReady = 1;
    }
    if (kept) f = *kept;
}

LONG OXLAPI FMTIsNumberPicTokenized(const char* picture) {
    return picture && std::strchr(picture, TOK_RUNSTART) ? 1 : 0;
}

bool FMTIsScientificPic(const char* p) {
    return p && p[0] == '0' && (IntlStrScan(p, "0.%E_0%") == 0 || IntlStrScan(p, "0.%e_0%") == 0);
}

namespace {
// "0" placeholders then "#" placeholders, at least one; p moves behind them.
bool placeholders(const char*& p) {
    const char* start = p;
    while (*p == '0') ++p;
    while (*p == '#') ++p;
    return p > start;
}
} // namespace

int FMTIsScientificPicValid(const char* p) {
    if (!p || p[0] != '0' || p[1] != '.') return 0;
    p += 2;
    if (!placeholders(p) || (*p != 'E' && *p != 'e')) return 0;
    ++p;
    if (*p != '+' && *p != '-') return 0;
    ++p;
    return placeholders(p) && *p == 0 ? 1 : 0;
}

size_t FMTCharBytes(const char* p) {
    if (!*p) return 0;
    return IntlIsKanji(BYTE(*p)) && p[1] ? 2 : 1;
}

bool FMTFormAt(const char* p, const char* form) {
    size_t n = std::strlen(form);
    return n > 0 && std::strncmp(p, form, n) == 0;
}
