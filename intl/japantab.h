// The Shift-JIS tables between half-width bytes and full-width codes.
#ifndef OXL_INTL_JAPANTAB_H
#define OXL_INTL_JAPANTAB_H

#include <oxlrt31/wintypes.h>

// The full-width code of a half-width byte (0x20-0x7E, 0xA0-0xDF), or 0.
// The byte 0xA0 has the code 0 as well.
WORD IntlpJapanFullOf(BYTE b);
// The full-width code of a kana byte followed by the voiced mark 0xDE or the
// semi-voiced mark 0xDF, or 0 when the pair has none.
WORD IntlpJapanMarkedOf(BYTE b, BYTE mark);
// The half-width form of a full-width code: its one or two bytes in out and
// their count, or 0 when the code has none.
int IntlpJapanHalfOf(WORD code, BYTE out[2]);

#endif
