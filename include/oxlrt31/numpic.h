/*
 * Number pictures: the text that says how a tagNUMBER is written, in its
 * three forms (the user form a person types, the tokenised form a host
 * stores, the old form of earlier versions), and the operations that format
 * a number under one, test it and read a typed text back.
 *
 * Every function takes a control block (FMTCNTLBLOCK, <oxlrt31/fmt.h>)
 * except FMTIsNumberPicTokenized and FMTGetMaxFormattedNumLen. With
 * bUseProfile set, the separators and currency forms are the user's regional
 * settings; with it clear they are the block's chThousand, chDecimal,
 * lpszCurrency (at most 7 bytes), iCurrency (0 to 3) and iNegCurr (0 to 10).
 *
 * A picture has at most 63 bytes and up to three sections separated by ";"
 * (positive and zero, negative, zero). Output buffers are the caller's and
 * their size is not passed: FMTGetMaxFormattedNumLen tells the room a
 * formatted number needs; a tokenised picture is at most two bytes per
 * section longer than its user form.
 */
#ifndef OXLRT31_NUMPIC_H
#define OXLRT31_NUMPIC_H

#include "fmt.h"

/* Bytes of the tokenised form; every other byte stands for itself. */
#define TOK_THOUSAND 1   /* thousands character inside a digit run */
#define TOK_DECIMAL 2    /* decimal character inside a digit run */
#define TOK_POSPREFIX 3  /* positive currency form ahead of the digits */
#define TOK_POSSUFFIX 4  /* positive currency form behind the digits */
#define TOK_NEGPREFIX 5  /* negative currency form ahead of the digits */
#define TOK_NEGSUFFIX 6  /* negative currency form behind the digits */
#define TOK_PAD 14       /* the "_" of a pad */
#define TOK_RUNSTART 15  /* start of a digit run: marks a picture as tokenised */
#define TOK_RUNEND 16    /* end of a digit run */

OXL_EXTERN_C_BEGIN

/* 1 when lpszPicture (user or tokenised form; null counts as empty) is a
 * valid picture under the settings in force, else 0. */
LONG OXLAPI FMTIsNumberPicValid(FMTCNTLBLOCK* block);
/* lpszPicture in its tokenised, user and new user form (from the old form)
 * to lpszOutput. 1; 0 for a null lpszPicture, with lpszOutput emptied.
 * Nothing is judged: what is not valid is carried through as text. */
LONG OXLAPI FMTTokenizeNumberPic(FMTCNTLBLOCK* block);
LONG OXLAPI FMTUnTokenizeNumberPic(FMTCNTLBLOCK* block);
LONG OXLAPI FMTCnvOldNumberPic(FMTCNTLBLOCK* block);
/* 1 when the text holds the byte TOK_RUNSTART, else 0 (also for null). */
LONG OXLAPI FMTIsNumberPicTokenized(const char* picture);

/* numValue as text to lpszOutput: nType FMT_NUMBER, FMT_CURRENCY or
 * FMT_PICTURE (lpszPicture, either form). 1, also for a null number and for
 * an empty section (empty text); 0 when FMTF_NUMBERVALUE is clear, for any
 * other nType or when working memory can't be had (empty text). */
LONG OXLAPI FMTFormatNumber(FMTCNTLBLOCK* block);
/* An upper bound, without the NUL, of the text a user-form picture writes
 * for a value of up to maxDigits integer digits; never below minLength. */
LONG OXLAPI FMTGetMaxFormattedNumLen(char* picture, LONG maxDigits, LONG minLength);
/* dblValue from lpszInput by the run-time's atof; an empty text makes its
 * top 16 bits 0x7FF8 (a quiet NaN). Always 1. */
LONG OXLAPI FMTStrToNumber(FMTCNTLBLOCK* block);

/* lpszInput read as nType FMT_NUMBER or FMT_CURRENCY into numValue: 1, or 0
 * for an invalid text, FMTF_NUMBERVALUE clear, another nType, a null or
 * empty text, or no memory. */
LONG OXLAPI FMTValidateNumber(FMTCNTLBLOCK* block);
/* lpszInput read under lpszPicture into numValue, and the number's plain
 * text ("." as the point, no separators) to lpszOutput, which must hold the
 * longer of the input and that text. 1, or 0 with lpszOutput empty. */
LONG OXLAPI FMTUnformatNumberStr(FMTCNTLBLOCK* block);

OXL_EXTERN_C_END

#endif
