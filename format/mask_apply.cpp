// Putting a text into a mask: typed or pasted text repaired to fit
// (FMTMaskText, FMTMaskApply), and a field set by program filled out to its
// width (FMTMaskFill).
#include "maskint.h"

#include <oxlrt31/mem.h>

#include <cstring>

namespace {

// The walk both share: text index *t and output position, which is also the
// mask position, over at most `limit` positions. A refused character falls
// out; a literal is written, and with skipLiterals the same character of the
// text goes with it. Returns the position reached.
size_t walk(const char* text, size_t* t, char* out, const char* mask, size_t limit, bool skipLiterals) {
    size_t pos = 0;
    while (text[*t] && pos < limit && mask[pos]) {
        char c = text[*t];
        if (!FMTIsMaskChar(mask[pos])) {
            out[pos] = mask[pos];
            *t += skipLiterals && c == mask[pos];
            ++pos;
        } else {
            ++*t;
            if (FMTMaskCharAccept(mask[pos], &c)) out[pos++] = c;
        }
    }
    return pos;
}

// The end of an unlimited mask's walk: the rest of the text with no test,
// or, when the text is used up, the literals up to the next placeholder.
size_t endUnlimited(const char* rest, char* out, const char* mask, size_t pos) {
    if (*rest) {
        size_t n = std::strlen(rest);
        std::memcpy(out + pos, rest, n);
        return pos + n;
    }
    for (; pos < std::strlen(mask) && !FMTIsMaskChar(mask[pos]); ++pos) out[pos] = mask[pos];
    return pos;
}

} // namespace

LONG FMTMaskApply(const char* text, char* output, const char* mask, bool skipLiterals) {
    if (!text || !output || !mask || !FMTIsValidMaskFormat(mask)) return 0;
    bool unlimited = FMTIsPicUnlimited(mask);
    size_t room = unlimited ? FMTCountLiterals(mask) + std::strlen(text) + 1 : std::strlen(mask) + 1;
    char* buf = static_cast<char*>(MemAlloc(DWORD(room)));
    if (!buf) return 0;
    size_t t = 0, pos = walk(text, &t, buf, mask, room, skipLiterals);
    if (unlimited) {
        pos = endUnlimited(text + t, buf, mask, pos);
    } else if (mask[pos] && !FMTIsMaskChar(mask[pos])) {
        buf[pos] = mask[pos];
        ++pos;
    }
    buf[pos] = 0;
    std::memcpy(output, buf, pos + 1);
    MemFree(buf);
    return 1;
}

LONG OXLAPI FMTMaskText(const char* text, char* output, const char* mask) {
    return FMTMaskApply(text, output, mask, true);
}

void FMTMaskFill(const char* mask, DWORD width, char* output, const char* text) {
    *output = 0;
    if (!*text) return;
    size_t t = 0, pos = walk(text, &t, output, mask, width, true);
    if (FMTIsPicUnlimited(mask)) {
        pos = endUnlimited(text + t, output, mask, pos);
    } else {
        for (; pos < width && mask[pos]; ++pos) output[pos] = FMTIsMaskChar(mask[pos]) ? ' ' : mask[pos];
    }
    output[pos] = 0;
    FMTTrimBlanks(output);
}

DWORD FMTMaskedLength(const char* mask, const char* text) {
    return DWORD(FMTCountLiterals(mask) + std::strlen(text));
}
