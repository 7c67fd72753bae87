/*
 * tagNUMBER: the library's exact decimal number, a 25-byte record that hosts
 * keep in their own records and files, byte for byte.
 *
 * Byte 0 is the length of the data that follows (bits 0-5; 0 null, 1 zero).
 * Byte 1 holds sign and exponent E (4..124, 64 = no shift): 0x80 + E for a
 * positive value, its complement for a negative one. Then base-100 digits,
 * most significant first, each the pair of decimal digits at its position:
 *     value = sign * (d1/100 + d2/100^2 + ...) * 100^(E - 64)
 * A negative value stores 100 - d for each digit and ends in the byte 0x65.
 * Zero is 01 C0; there is no negative zero. Because of the complement and the
 * terminator, normal records sort as unsigned byte strings from byte 1 on.
 *
 * Magnitudes reach from 1E-122 (02 84 01) to just under 1E+120 (exponent
 * byte FC). "Null" is the record of length 0: every function here takes a
 * pointer to a record and dereferences it unchecked, so a NULL pointer is
 * not a null record and crashes.
 */
#ifndef OXLRT31_NUMBER_H
#define OXLRT31_NUMBER_H

#include "oxlapi.h"

#include <stddef.h>

#pragma pack(push, 1)
typedef struct tagNUMBER {
    BYTE bLength;    /* data bytes that follow; bits 6 and 7 written as 0 */
    BYTE abData[24]; /* exponent byte, digits, terminator if negative */
} tagNUMBER;
#pragma pack(pop)

OXL_STATIC_ASSERT(sizeof(tagNUMBER) == 25, "tagNUMBER is 25 bytes on every platform");

/* The OLE records the binary conversions take, as the platform lays them out. */
OXL_STATIC_ASSERT(sizeof(CY) == 8, "CY is a 64-bit integer");
OXL_STATIC_ASSERT(sizeof(DECIMAL) == 16, "DECIMAL is 16 bytes");
OXL_STATIC_ASSERT(offsetof(DECIMAL, scale) == 2 && offsetof(DECIMAL, sign) == 3, "DECIMAL scale and sign");
OXL_STATIC_ASSERT(offsetof(DECIMAL, Hi32) == 4 && offsetof(DECIMAL, Lo32) == 8 && offsetof(DECIMAL, Mid32) == 12,
                  "DECIMAL mantissa words: high, low, middle");

OXL_EXTERN_C_BEGIN

/* 0, 1..99 and -99..-1 exactly; any other value gives a record reading as 0. */
void OXLAPI NumCreateSmall(tagNUMBER* n, int value);
/* Negates in place; the new length byte, or 0 for null or an invalid length. */
int OXLAPI NumNegate(tagNUMBER* n);
/* -1, 0 or 1; null is below every value; an invalid length compares equal. */
int OXLAPI NumCompare(const tagNUMBER* a, const tagNUMBER* b);
/* 1 for zero; 0 for null, invalid lengths and every other value. */
int OXLAPI NumIsZero(const tagNUMBER* n);
/* Makes a null record zero; leaves every other record alone. */
void OXLAPI NumNullToZero(tagNUMBER* n);
/* The double form of null: any double with all 11 exponent bits set. */
int OXLAPI NumIsNullDouble(const double* d);
/* Stores the null double, the quiet NaN 0x7FF8000000000000. */
void OXLAPI NumNullDouble(double* d);

/*
 * Arithmetic. `out` may be an operand and needs room for 25 bytes; the
 * result is its length byte. Null operands act as zero and no result is
 * null. Results are rounded half up on the magnitude to 23 digits (22 when
 * negative) and their exponent clamped to the format's range with no
 * signal: the digits stay and the exponent is held at its largest or
 * smallest, so 1E100 x 1E100 gives 02 FC 01 (1E+118) and 1E-100 x 1E-100
 * gives 02 84 01 (1E-122). x / 0 gives 02 FC 01, 1E+118, with the sign of
 * x, and 0 / 0 gives 0.
 */
int OXLAPI NumAddition(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b);
int OXLAPI NumSubtract(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b);
int OXLAPI NumMultiply(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b);
int OXLAPI NumDivide(tagNUMBER* out, const tagNUMBER* a, const tagNUMBER* b);
/* Rounds half away from zero to `scale` decimal places (negative: tens...). */
int OXLAPI NumRound(tagNUMBER* out, const tagNUMBER* in, int scale);
/* Cuts in place to precision - scale integer and scale fraction places;
 * 1, or 0 for null or an invalid length (n unchanged). */
int OXLAPI NumTruncate(tagNUMBER* n, int precision, int scale);
/* out = in x 10^power for power -60..60; otherwise out is null and 0. */
int OXLAPI NumPower10(tagNUMBER* out, const tagNUMBER* in, int power);
/* Compares date values: -1, 0, 1, equal within 3 x 10^-16. Cuts an operand
 * longer than 12 data bytes to 12, in the caller's record. */
int OXLAPI DateCompare(tagNUMBER* a, tagNUMBER* b);

/*
 * Binary conversions. To an integer, the fraction is cut towards zero and
 * the result is the low bits of the accumulation; null gives 0. `reply`, set
 * to 0 on entry, becomes 1 when the accumulation overflowed (the test looks
 * at the value before its last multiplication by 100, so just beyond the
 * range is not reported). From an integer the result is the length byte.
 * LONG is 32 bits on every platform.
 */
LONG OXLAPI NumToLong(const tagNUMBER* n);
DWORD OXLAPI NumToDWord(const tagNUMBER* n);
WORD OXLAPI NumToWord(const tagNUMBER* n);
LONG OXLAPI NumToLongReply(const tagNUMBER* n, LONG* reply);
DWORD OXLAPI NumToDWordReply(const tagNUMBER* n, LONG* reply);
WORD OXLAPI NumToWordReply(const tagNUMBER* n, LONG* reply);
int OXLAPI NumLongToNumber(tagNUMBER* out, LONG value);
int OXLAPI NumDWordToNumber(tagNUMBER* out, DWORD value);
int OXLAPI NumWordToNumber(tagNUMBER* out, WORD value);
/* Null or an invalid length gives the null double. */
void OXLAPI NumToDouble(const tagNUMBER* n, double* out);
/* As NumToDouble, but a length byte of 0 gives 0.0. */
void OXLAPI NumToDoubleNotNull(const tagNUMBER* n, double* out);
/* CY is read as a plain 64-bit integer, unscaled. Both write padded records. */
void OXLAPI NumLLongToNumber(tagNUMBER* out, const CY* in);
void OXLAPI NumToLLong(CY* out, const tagNUMBER* in, LONG* reply);
void OXLAPI NumDECIMALToNumber(tagNUMBER* out, const DECIMAL* in);
/* At most 28 decimal places, cut; `out` is left alone when the value can't
 * be placed at all (reply 1). A value of 2^96 or more whose digits fit the
 * 29 places is stored modulo 2^96 with reply 0: 2^96 itself gives 0. */
void OXLAPI NumToDECIMAL(DECIMAL* out, const tagNUMBER* in, LONG* reply);

/*
 * Text, plain ASCII with "." as the point.
 *
 * NumAsciiToNumber reads a number at the start of `text` (after white space):
 * decimal, scientific ("1.5e-3") or hexadecimal ("0x1F"). The result is the
 * count of characters consumed, 0 for no number, -1 for too large, -2 for
 * too small; `out` is null unless a number was read. At most 47 significant
 * digits are read, unrounded, before the record's own rounding.
 */
int OXLAPI NumAsciiToNumber(tagNUMBER* out, const char* text);
/* A hexadecimal integer (optional sign and 0x); never fails, text without
 * digits gives zero. The count of characters consumed. It never says "too
 * large": a text beyond the format's range gives a record clamped as
 * arithmetic clamps, whose digits are not the text's. */
int OXLAPI NumHexAsciiToNumber(tagNUMBER* out, const char* text);
/* At most `width` characters (sign included) and a NUL; the buffer needs
 * width + 1 bytes. Fixed or scientific form, whichever shows the value in
 * the width; a fraction that rounds to zero in the width is "0". The
 * text's length, or 0 when not even one digit fits (6 places always fit a
 * value, 7 a negative one). Null gives "" and 0. When it
 * refuses a record that isn't null (result 0) the buffer gets no NUL:
 * don't read it. The scientific form's exponent stops at E+99 and E-99: a record
 * beyond them (up to 1E+120, down to 1E-122) is written as if it were
 * 9.99...E+99 or 9.99...E-99, and that text reads back as another record. */
int OXLAPI NumToAscii(const tagNUMBER* n, char* buffer, WORD width);
/* NumWordToNumber with its arguments the other way round; returns out. */
tagNUMBER* OXLAPI NumGet(WORD value, tagNUMBER* out);
/* A double to a record through its text of 15 significant digits: 1, or 0
 * when the value lies outside the format's range. The null double gives a
 * null record. */
int OXLAPI NumDoubleToNumber(tagNUMBER* out, double value);
/* The text of a double (15 significant digits, "." as the point) that
 * NumDoubleToNumber reads back; sets the process's numeric locale to "C". */
char* OXLAPI FMTgcvt(double value, char* buffer);

OXL_EXTERN_C_END

#endif
