/*
 * International strings: the character environment and the string family.
 *
 * The environment is settled once at load from the system's language and
 * does not change afterwards, so every function reads it without a lock.
 *
 * Text is NUL-terminated bytes in the ANSI code page. With the double-byte
 * path on, a lead byte and the byte after it are one character, and no
 * function cuts one in two; a lead byte just before the terminator is a
 * single-byte character of its own. A character value is the byte, or lead
 * byte x 256 + trail byte. Output buffers are the caller's, large enough by
 * contract: no function takes their size.
 */
#ifndef OXLRT31_INTL_H
#define OXLRT31_INTL_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

/* ---- the environment ---- */

/* Settles the environment from the system and user languages (at load). */
void OXLAPI IntlInit(void);
/* The double-byte path is on (Chinese, Japanese or Korean system language). */
int OXLAPI IntlDBCSEnabled(void);
/* A right-to-left language is in use, as system or user language. */
int OXLAPI IntlIsBiDiEnabled(void);

/* ---- characters ---- */

int OXLAPI IntlIsDBChar(const char* p);
/* Bytes of the character at p: 0 at the terminator, else 1 or 2. */
int OXLAPI IntlBytesInNextChar(const char* p);
/* The first double-byte character at or after s, or null. */
char* OXLAPI IntlNextDBCInStr(const char* s);
/* Character n (from 0) is double-byte: 0 with the path off or n out of range. */
int OXLAPI IntlIsNthCharDB(const char* s, int n);
/* Byte n (from 0): 1 a lead byte, 2 a trail byte, 0 otherwise. */
int OXLAPI IntlIsNthByteDB(const char* s, int n);
/* Character n; n equal to the length gives the terminator, beyond it null. */
char* OXLAPI IntlStrNthChar(const char* s, int n);
/* The first and the last character's value; a lone single byte is widened signed. */
short OXLAPI IntlStrFirstChar(const char* s);
short OXLAPI IntlStrLastChar(const char* s);
/* The double-byte blank of the language: 0x8140, 0xA140, 0xA1A1, or 0. */
WORD OXLAPI IntlDBCSBlank(void);
/* The value of the character at p, a single byte unsigned; 0 for null. */
WORD OXLAPI IntlDBCSChar(const char* p);
int OXLAPI IntlCharIsHexDigit(WORD c);
/* White space: 9 to 13 and 32, and on the double-byte path the double-byte blank. */
char* OXLAPI IntlStripStartSpace(const char* s);
/* Skips the space 32 and, on the double-byte path, the double-byte blank. */
char* OXLAPI IntlStripStartBlank(const char* s);
int OXLAPI IntlStrIsNextChSpace(const char* p);

/* ---- Japanese characters (Shift-JIS) ---- */

/* A lead byte of the double-byte path. */
int OXLAPI IntlIsKanji(BYTE c);
/* A half-width katakana byte, under Japanese. */
int OXLAPI IntlIsKatakana(BYTE c);
/* Half-width to full-width and back; dst holds twice src plus one and is not src.
 * The length of dst in characters, or -1 for a null argument. */
int OXLAPI IntlStrJapanFull(char* dst, const char* src);
int OXLAPI IntlStrJapanHalf(char* dst, const char* src);

/* ---- string operations ----
 * Counts in characters never divide a double-byte character; the functions
 * ending in B count bytes and put a space where their count would leave half
 * a character. With the double-byte path off the two sets are the same.
 * Counts out of range are limited: a negative count is 0, one past the end
 * means as far as the text goes. */

int OXLAPI IntlStrLen(const char* s);
int OXLAPI IntlStrLenB(const char* s);
int OXLAPI IntlStrLeft(char* dst, const char* src, int n);
int OXLAPI IntlStrRight(char* dst, const char* src, int n);
int OXLAPI IntlStrMid(char* dst, const char* src, int start, int n);
int OXLAPI IntlStrLeftB(char* dst, const char* src, int n);
int OXLAPI IntlStrRightB(char* dst, const char* src, int n);
int OXLAPI IntlStrMidB(char* dst, const char* src, int start, int n);
/* src with n characters (bytes) from pos replaced by insert; the length of dst. */
int OXLAPI IntlStrReplace(char* dst, const char* src, const char* insert, int pos, int n);
int OXLAPI IntlStrReplaceB(char* dst, const char* src, const char* insert, int pos, int n);
/* strncpy by characters: no terminator when src has n characters or more. */
char* OXLAPI IntlStrnCpy(char* dst, const char* src, WORD n);
char* OXLAPI IntlStrUpper(char* s);
char* OXLAPI IntlStrLower(char* s);
/* Lower case with each word's first character in upper case. */
int OXLAPI IntlStrProper(char* dst, const char* src);
/* Drops leading and trailing blanks and makes each inner run one space. */
int OXLAPI IntlStrTrim(char* dst, const char* src);
LONG OXLAPI IntlStrTrimTrailing(char* s);
char* OXLAPI IntlStripEndSpace(char* dst, const char* src);
void OXLAPI IntlStrStripSpace(char* s);
int OXLAPI IntlIsStrEqual(const char* a, const char* b);
int OXLAPI IntlIsStrnEqual(const char* a, const char* b, WORD n);

/* ---- tokens and scans ----
 * The tokenisers skip the bytes of `skip`, demand the low byte of `lead`
 * when it is not 0, and copy the token up to the first byte of `delims` into
 * out (outSize bytes; 0 or below: no limit). They give the index in input
 * just behind the token, or 0 when no token could be made (out untouched).
 * A delimiter is never found inside a double-byte character. */

int OXLAPI IntlStrGetToken(char* out, char* input, const char* skip, const char* delims, WORD lead, int outSize);
/* Delimiters inside parentheses do not count. */
int OXLAPI IntlStrGetTokenNestedParens(char* out, char* input, const char* skip, const char* delims, WORD lead, int outSize);
/* Delimiters between a pair of `quote` bytes do not count; the quotes stay. */
int OXLAPI IntlStrGetTokenQuoted(char* out, char* input, const char* skip, const char* delims, WORD lead, BYTE quote,
                                 int outSize);
/* *token = input; the length from input to the first delimiter behind the skipped bytes. */
int OXLAPI IntlStrGetTokenPtr(char** token, char* input, const char* skip, const char* delims);
/* The first character of value c in s (0 finds the terminator), or null. */
char* OXLAPI IntlStrChr(const char* s, WORD c);
/* The first character of s that is in set, or null. */
char* OXLAPI IntlStrSearch(const char* s, const char* set);
/* Where pattern matches in s, in the manner of LIKE without case: % any run,
 * _ one character, \ makes the next one literal. An index (bytes on the
 * single-byte path, characters on the double-byte path), or -1. */
int OXLAPI IntlStrScan(const char* s, const char* pattern);
/* A signed 32-bit integer behind white space: bytes consumed, or 0. */
int OXLAPI IntlFetchNextNumLong(LONG* out, const char* text);
/* A decimal number with fraction and exponent: bytes consumed, 0 for none,
 * -1 for one over 99 bytes or one that underflows. */
int OXLAPI IntlFetchNextNumDouble(double* out, const char* text);

OXL_EXTERN_C_END

#endif
