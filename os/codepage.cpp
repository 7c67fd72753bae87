#include "codepage.h"

#include <cstring>

namespace {

void mapBuff(UINT cp, char* s, DWORD n, char (*map)(UINT, char)) {
    for (DWORD i = 0; i < n;) {
        if (OslCodePageLeadByte(cp, BYTE(s[i])) && i + 1 < n && s[i + 1]) {
            i += 2;
            continue;
        }
        s[i] = map(cp, s[i]);
        ++i;
    }
}

} // namespace

bool OslCodePageIsDBCS(UINT cp) { return cp == 932 || cp == 936 || cp == 949 || cp == 950; }

bool OslCodePageLeadByte(UINT cp, BYTE b) {
    if (cp == 932) return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
    return OslCodePageIsDBCS(cp) && b >= 0x81 && b <= 0xFE;
}

const char* OslCodePageNext(UINT cp, const char* s) {
    if (!*s) return s;
    return OslCodePageLeadByte(cp, BYTE(*s)) && s[1] ? s + 2 : s + 1;
}

const char* OslCodePagePrev(UINT cp, const char* start, const char* cur) {
    const char* prev = start;
    for (const char* p = start; p < cur && *p;) {
        prev = p;
        p = OslCodePageNext(cp, p);
    }
    return prev;
}

char OslCodePageUpperChar(UINT cp, char c) {
    BYTE u = BYTE(c);
    if (u >= 'a' && u <= 'z') return char(u - 0x20);
    if (cp == 1252 && u >= 0xE0 && u <= 0xFE && u != 0xF7) return char(u - 0x20);
    return c;
}

char OslCodePageLowerChar(UINT cp, char c) {
    BYTE u = BYTE(c);
    if (u >= 'A' && u <= 'Z') return char(u + 0x20);
    if (cp == 1252 && u >= 0xC0 && u <= 0xDE && u != 0xD7) return char(u + 0x20);
    return c;
}

DWORD OslCodePageUpperBuff(UINT cp, char* s, DWORD n) {
    mapBuff(cp, s, n, OslCodePageUpperChar);
    return n;
}

DWORD OslCodePageLowerBuff(UINT cp, char* s, DWORD n) {
    mapBuff(cp, s, n, OslCodePageLowerChar);
    return n;
}

char* OslCodePageUpper(UINT codePage, char* s) {
    OslCodePageUpperBuff(codePage, s, DWORD(std::strlen(s)));
    return s;
}

char* OslCodePageLower(UINT codePage, char* s) {
    OslCodePageLowerBuff(codePage, s, DWORD(std::strlen(s)));
    return s;
}
