// Taking a text out of its mask, and the position arithmetic between a
// masked text and its unmasked characters.
#include "maskint.h"

#include "os/osl.h"

#include <cstring>

namespace {

// What a placeholder asks of a character when a text is taken out: only
// 9, n and N look, and a blank always passes.
bool passes(char maskChar, char c) {
    if (c == ' ') return true;
    bool alnum = gOsl.text->IsCharAlphaNumericA(c);
    if (maskChar == '9') return alnum && !gOsl.text->IsCharAlphaA(c);
    return (maskChar != 'n' && maskChar != 'N') || alnum;
}

bool unmask(const char* text, char* out, const char* mask) {
    if (!*mask || (!FMTIsPicUnlimited(mask) && std::strlen(mask) < std::strlen(text))) return false;
    size_t i = 0;
    for (; text[i] && mask[i] && mask[i] != '*'; ++i) {
        if (!FMTIsMaskChar(mask[i])) {
            if (text[i] != mask[i]) return false;
        } else if (passes(mask[i], text[i])) {
            *out++ = text[i];
        } else {
            return false;
        }
    }
    if (mask[i] == '*') {
        std::strcpy(out, text + i);
        return true;
    }
    *out = 0;
    return true;
}

} // namespace

LONG OXLAPI FMTUnmaskInput(FMTCNTLBLOCK* b) {
    if (!b || !b->lpszOutput) return 0;
    if (b->lpszInput && b->lpszPicture && unmask(b->lpszInput, b->lpszOutput, FMTMaskProper(b->lpszPicture))) return 1;
    *b->lpszOutput = 0;
    return 0;
}

WORD FMTMaskIndexOfPos(const char* mask, WORD pos) {
    size_t len = std::strlen(mask), count = 0;
    for (size_t i = 0; i <= pos && i < len; ++i) count += FMTIsMaskChar(mask[i]);
    if (count) --count;
    if (FMTIsPicUnlimited(mask) && pos >= len) return WORD(count + (pos - len) + 1);
    return WORD(count);
}

bool FMTNextLiteralPos(const char* mask, WORD pos, WORD* found) {
    for (size_t i = pos, len = std::strlen(mask); i < len; ++i) {
        if (!FMTIsMaskChar(mask[i])) return *found = WORD(i), true;
    }
    return false;
}

bool FMTNextMaskPos(const char* mask, WORD pos, WORD* found) {
    for (size_t i = pos, len = std::strlen(mask); i < len; ++i) {
        if (FMTIsMaskChar(mask[i])) return *found = WORD(i), true;
    }
    return false;
}
