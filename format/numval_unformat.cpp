// FMTUnformatNumberStr: a text shaped by a number picture read back to its
// record. What the picture added is taken away where it stands, and may as
// well have been left out; the sections are tried in turn.
#include "numvalint.h"

#include <oxlrt31/intl.h>

#include <cstring>

namespace {

constexpr size_t kLiteralRoom = 92;

// The literal text of a prefix or a suffix. In a suffix "_" adds nothing:
// it strips the blanks now at the end of `text` and swallows the next character.
void readLiteral(const char* p, const char* end, char* literal, char* text, bool suffix) {
    FMTOut w{literal, kLiteralRoom};
    *literal = 0;
    char quote = 0;
    while (p < end && *p) {
        size_t n = FMTCharBytes(p);
        if (!quote && (*p == '\'' || *p == '"')) {
            quote = *p++;
        } else if (!quote && suffix && *p == '_') {
            IntlStripEndSpace(text, text);
            ++p;
            p += FMTCharBytes(p);
        } else if (quote && ((*p == quote && p[1] == quote) || (*p == '\\' && p[1] == quote))) {
            w.Put(quote);
            p += 2;
        } else if (quote && *p == quote) {
            quote = 0;
            ++p;
        } else {
            w.Put(p, n);
            p += n;
        }
    }
}

// A private block of the caller's settings, to read `text` as `type`.
FMTCNTLBLOCK readerOf(const FMTCNTLBLOCK* b, LONG type, char* text, bool withCurrency) {
    FMTCNTLBLOCK v;
    std::memset(&v, 0, sizeof v);
    FMTInitCntlBlock(&v);
    v.nType = type;
    v.lpszInput = text;
    v.bUseProfile = b->bUseProfile;
    v.dwFlags = (v.dwFlags & ~DWORD(FMTF_NUMBERVALUE)) | (b->dwFlags & FMTF_NUMBERVALUE);
    if (!b->bUseProfile) {
        v.chThousand = b->chThousand;
        v.chDecimal = b->chDecimal;
        if (withCurrency) {
            v.lpszCurrency = b->lpszCurrency;
            v.iCurrency = b->iCurrency;
        }
    }
    return v;
}

// One section tried on a fresh copy of the input: 1 read, 0 not read, -1
// the section has no digit run. A whole picture (keepMinus) is read
// whether it has a run or not.
int trySection(const FMTCNTLBLOCK* b, const char* section, bool keepMinus, const FMTNUMVALSET& s, tagNUMBER* value) {
    char* text = b->lpszOutput;
    std::strcpy(text, b->lpszInput);
    bool percent = false;
    if (!FMTStripPicText(text, section, &percent, keepMinus, s.chThousand, s.chDecimal) && !keepMinus) return -1;
    FMTCNTLBLOCK v = readerOf(b, FMT_NUMBER, text, false);
    if (!FMTValidateNumber(&v)) return 0;
    *value = v.numValue;
    if (percent) NumPower10(value, value, -2);
    return 1;
}

// Up to three sections, each cut at the next ";".
bool readSections(const FMTCNTLBLOCK* b, const char* picture, const FMTNUMVALSET& s, tagNUMBER* value) {
    char text[FMT_PIC_MAX];
    std::strncpy(text, picture, sizeof text - 1);
    text[sizeof text - 1] = 0;
    const char* sec[3] = {text, "", ""};
    int count = 1;
    for (char* p = text; *p; ++p)
        if (*p == ';') {
            *p = 0;
            if (count == 3) break;
            sec[count++] = p + 1;
        }
    if (*sec[0]) {
        int r = trySection(b, sec[0], false, s, value);
        if (r != 0) return r > 0;
    }
    if (*sec[1]) {
        int r = trySection(b, sec[1], false, s, value);
        if (r > 0) NumNegate(value);
        if (r != 0) return r > 0;
    } else if (count < 3) {
        return false;
    }
    if (count < 3 || !*sec[2] || trySection(b, sec[2], false, s, value) != 1) return false;
    NumWordToNumber(value, 0);
    return true;
}

bool readPicture(FMTCNTLBLOCK* b, const char* picture, tagNUMBER* value) {
    FMTNUMVALSET s;
    FMTNumValSettings(b, &s);
    if (std::strcmp(picture, "$") == 0) {
        FMTCNTLBLOCK v = readerOf(b, FMT_CURRENCY, b->lpszInput, true);
        if (!FMTValidateNumber(&v)) return false;
        *value = v.numValue;
        return true;
    }
    if (std::strchr(picture, ';')) return readSections(b, picture, s, value);
    if (FMTIsScientificPic(picture) && FMTUnformatScientific(b)) {
        *value = b->numValue;
        return true;
    }
    return trySection(b, picture, true, s, value) > 0;
}

} // namespace

int FMTStripPicText(char* text, const char* section, bool* percentFound, bool keepLeadingMinus, char thousand,
                    char decimal) {
    *percentFound = false;
    char* start = keepLeadingMinus && *text == '-' ? text + 1 : text;
    const char* run = IntlStrSearch(section, "0#");
    if (!run) return 0;
    char literal[kLiteralRoom];
    if (run > section) {
        readLiteral(section, run, literal, text, false);
        size_t n = std::strlen(literal);
        if (std::strncmp(start, literal, n) == 0) std::memmove(start, start + n, std::strlen(start + n) + 1);
    }
    const char* p = run;
    while (*p == '#' || *p == '0' || (decimal && *p == decimal) ||
           (thousand && *p == thousand && (p[1] == '#' || p[1] == '0')))
        ++p;
    if (*p) {
        if (*p == '%' && std::strchr(text, '%')) *percentFound = true;
        readLiteral(p, p + std::strlen(p), literal, text, true);
        size_t n = std::strlen(literal), len = std::strlen(text);
        if (n <= len && std::strcmp(text + len - n, literal) == 0) text[len - n] = 0;
    }
    return 1;
}

int FMTUnformatScientific(FMTCNTLBLOCK* b) {
    FMTNUMVALSET s;
    FMTNumValSettings(b, &s);
    char decimal = s.chDecimal ? s.chDecimal : '.';
    char* t = b->lpszOutput;
    std::strcpy(t, b->lpszInput);
    IntlStrStripSpace(t);
    for (const char* p = t; *p; ++p)
        if (!(*p >= '0' && *p <= '9') && !std::strchr("-+eE", *p) && *p != decimal) return 0;
    char* mark = std::strchr(t, 'e');
    if (!mark) mark = std::strchr(t, 'E');
    if (!mark || std::strchr(mark + 1, *mark)) return 0;
    bool negative = false, negativeExponent = false;
    if (*t == '+' || *t == '-') negative = *t++ == '-';
    *mark = 0;
    char* exponent = mark + 1;
    if (*exponent == '+' || *exponent == '-') negativeExponent = *exponent++ == '-';
    FMTCNTLBLOCK mantissa = readerOf(b, FMT_NUMBER, t, false);
    FMTCNTLBLOCK power = readerOf(b, FMT_NUMBER, exponent, false);
    if (!FMTValidateNumber(&mantissa) || !FMTValidateNumber(&power)) return 0;
    // The exponent wraps as NumToLong wraps; negated without overflow, so
    // -2147483648 stays itself and is out of range.
    LONG e = NumToLong(&power.numValue);
    if (negativeExponent) e = LONG(0u - DWORD(e));
    NumPower10(&b->numValue, &mantissa.numValue, e);
    if (negative) NumNegate(&b->numValue);
    return 1;
}

LONG OXLAPI FMTUnformatNumberStr(FMTCNTLBLOCK* b) {
    char* out = b->lpszOutput;
    const char* picture = b->lpszPicture;
    if (!(b->dwFlags & FMTF_NUMBERVALUE) || !b->lpszInput || !*b->lpszInput || !out || !picture || !*picture) {
        if (out) *out = 0;
        return 0;
    }
    char user[FMT_PIC_MAX];
    if (FMTIsNumberPicTokenized(picture)) {
        FMTNUMSET set;
        FMTNumSettings(b, &set);
        FMTpUnTokenize(set, picture, user, sizeof user);
        picture = user;
    }
    std::strcpy(out, b->lpszInput);
    tagNUMBER value;
    if (!readPicture(b, picture, &value)) {
        *out = 0;
        return 0;
    }
    b->numValue = value;
    if (NumToAscii(&value, out, 108) <= 0) *out = 0;
    return 1;
}
