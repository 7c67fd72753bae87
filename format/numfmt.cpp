// FMTFormatNumber: a number as plain text or a currency amount by the
// settings in force, or under a picture (either form).
#include "numpicint.h"

#include "os/osl.h"

#include <oxlrt31/mem.h>

#include <cstring>

namespace {

struct NumberSettings {
    FMTNUMSET set;
    bool leadZero;
    int decimals;
};

NumberSettings settingsOf(const FMTCNTLBLOCK* b, LONG type) {
    NumberSettings s;
    FMTNumSettings(b, &s.set);
    LONG decimals;
    if (b->bUseProfile) {
        s.leadZero = FMTProfileInt(FMTPI_LZERO) != 0;
        decimals = FMTProfileInt(type == FMT_CURRENCY ? FMTPI_CURRDIGITS : FMTPI_DIGITS);
    } else {
        s.leadZero = b->bLeadZero != 0;
        decimals = b->nDigits > DWORD(FMT_FIXED_PLACES_MAX) ? FMT_FIXED_PLACES_MAX : LONG(b->nDigits);
    }
    s.decimals = decimals < 0 ? 0 : decimals > FMT_FIXED_PLACES_MAX ? FMT_FIXED_PLACES_MAX : int(decimals);
    return s;
}

// Strictly between -1 and 1.
bool belowOne(const tagNUMBER* v) {
    tagNUMBER one, minusOne;
    NumWordToNumber(&one, 1);
    minusOne = one;
    NumNegate(&minusOne);
    return NumCompare(v, &one) < 0 && NumCompare(v, &minusOne) > 0;
}

// The digit text dressed: leading zero, decimal character, groups of three.
void dress(const char* text, char* out, const NumberSettings& s, int decimals, const tagNUMBER* v) {
    FMTOut w{out, size_t(-1)};
    const char* p = text;
    if (*p == '-') w.Put(*p++);
    if (s.leadZero && *p == '.' && belowOne(v)) w.Put('0');
    size_t digits = std::strcspn(p, ".");
    for (size_t i = 0; i < digits; ++i) {
        if (i > 0 && (digits - i) % 3 == 0 && s.set.chThousand) w.Put(s.set.chThousand);
        w.Put(p[i]);
    }
    for (p += digits; *p; ++p) w.Put(*p == '.' && decimals > 0 && s.set.chDecimal ? s.set.chDecimal : *p);
}

LONG plainOrCurrency(FMTCNTLBLOCK* b, LONG type) {
    NumberSettings s = settingsOf(b, type);
    char text[FMT_FIXED_ROOM];
    int decimals = s.decimals;
    if (b->dwFlags & FMTF_ALLDIGITS) {
        if (NumToAscii(&b->numValue, text, 108) <= 0) text[0] = 0;
        const char* point = std::strchr(text, '.');
        decimals = point ? int(std::strlen(point + 1)) : 0;
    } else {
        FMTNumToFixed(&b->numValue, decimals, text);
    }
    if (!*text) return 1;
    size_t len = std::strlen(text);
    size_t room = len + len / 3 + 7 + (type == FMT_CURRENCY ? std::strlen(s.set.szSymbol) : 0);
    char* work = static_cast<char*>(MemAlloc(DWORD(room)));
    if (!work) return 0;
    dress(text, work, s, decimals, &b->numValue);
    if (type == FMT_CURRENCY) {
        LONG pos = s.set.iCurrency;
        FMTAddCurrency(work, s.set.szSymbol, b->lpszOutput, pos == 1 || pos == 3, pos == 2 || pos == 3, s.set.iNegCurr);
    } else {
        std::strcpy(b->lpszOutput, work);
    }
    MemFree(work);
    return 1;
}

} // namespace

void FMTAddCurrency(const char* text, const char* symbol, char* output, bool symbolBehind, bool withSpace,
                    LONG iNegCurr) {
    // Negative forms: "%" the symbol, "#" the text.
    static const char* const kNegative[11] = {"(%#)", "-%#", "%-#", "%#-", "(#%)", "-#%",
                                              "#-%",  "#%-", "-# %", "-% #", "# %-"};
    FMTOut w{output, size_t(-1)};
    *output = 0;
    const char* form;
    if (*text == '-') {
        ++text;
        form = iNegCurr >= 0 && iNegCurr <= 10 ? kNegative[iNegCurr] : kNegative[1];
    } else {
        form = symbolBehind ? (withSpace ? "# %" : "#%") : (withSpace ? "% #" : "%#");
    }
    for (; *form; ++form)
        if (*form == '%')
            w.Put(symbol);
        else if (*form == '#')
            w.Put(text);
        else
            w.Put(*form);
}

LONG OXLAPI FMTFormatNumber(FMTCNTLBLOCK* b) {
    if (!(b->dwFlags & FMTF_NUMBERVALUE)) return 0;
    LONG type = b->nType;
    const char* picture = b->lpszPicture;
    if (type == FMT_PICTURE) {
        if (!picture || !*picture) type = FMT_NUMBER;
        else if (std::strcmp(picture, "$") == 0) type = FMT_CURRENCY;
    }
    if (type != FMT_NUMBER && type != FMT_CURRENCY && type != FMT_PICTURE) return 0;
    b->lpszOutput[0] = 0;
    if (type != FMT_PICTURE) return plainOrCurrency(b, type);
    FMTNUMSET set;
    FMTNumSettings(b, &set);
    char user[FMT_PIC_MAX];
    if (FMTIsNumberPicTokenized(picture)) {
        FMTpUnTokenize(set, picture, user, sizeof user);
        picture = user;
    }
    return FMTFormatPicture(b->lpszOutput, picture, set.chDecimal, set.chThousand, b->bUseProfile != 0,
                            &b->numValue, 1);
}

LONG OXLAPI FMTStrToNumber(FMTCNTLBLOCK* b) {
    if (b->lpszInput && *b->lpszInput) {
        b->dblValue = gOsl.crt->atof(b->lpszInput);
    } else {
        unsigned char bytes[sizeof(double)];
        std::memcpy(bytes, &b->dblValue, sizeof bytes);
        bytes[7] = 0x7F; // little-endian: the top 16 bits are bytes 6 and 7
        bytes[6] = 0xF8;
        std::memcpy(&b->dblValue, bytes, sizeof bytes);
    }
    return 1;
}
