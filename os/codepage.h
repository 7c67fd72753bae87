// The ANSI code pages as tables, for a backend whose system has no notion of
// them (POSIX) and for scripted text services in tests. Plain computation: no
// call to the system.
//
// Double-byte pages: 932 (lead bytes 0x81-0x9F, 0xE0-0xFC), 936, 949 and 950
// (0x81-0xFE). Every other page is single-byte. Case changes touch single-byte
// characters only; a double-byte character is never changed.
#ifndef OXL_OS_CODEPAGE_H
#define OXL_OS_CODEPAGE_H

#include <oxlrt31/wintypes.h>

bool OslCodePageIsDBCS(UINT codePage);
bool OslCodePageLeadByte(UINT codePage, BYTE b);
// One character on, as CharNextA: stays at the terminator, moves two bytes
// on a lead byte followed by a non-zero byte, one byte otherwise.
const char* OslCodePageNext(UINT codePage, const char* s);
// The start of the character before `cur`, walking from `start`.
const char* OslCodePagePrev(UINT codePage, const char* start, const char* cur);
// Single-byte case mapping: 1252 maps its accented letters too, other pages ASCII only.
char OslCodePageUpperChar(UINT codePage, char c);
char OslCodePageLowerChar(UINT codePage, char c);
// Case change of the first n bytes, stepping by characters.
DWORD OslCodePageUpperBuff(UINT codePage, char* s, DWORD n);
DWORD OslCodePageLowerBuff(UINT codePage, char* s, DWORD n);
// The same over a whole NUL-terminated text, in place; returns the text.
char* OslCodePageUpper(UINT codePage, char* s);
char* OslCodePageLower(UINT codePage, char* s);

#endif
