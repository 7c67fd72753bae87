/*
 * Input masks: pictures for text such as a telephone number, and the filter
 * that keeps an edit control true to one while the user types.
 *
 * A mask is a NUL-terminated string of placeholders and literals, one mask
 * character for one byte of text (a double-byte character is two characters
 * to a mask). Placeholders:
 *
 *   X  anything but a line feed       !  the same, stored in upper case
 *   a  a letter                       A  a letter, stored in upper case
 *   n  a letter or digit              N  the same, stored in upper case
 *   9  a digit                        *  anything (last character only)
 *
 * Every other character is literal text that the mask supplies; there is no
 * escape. A leading "^" is no part of the mask: it tells the host not to
 * unmask the field's value on a get (FMTIsPicNoUnmaskOnGets). A trailing
 * "*" makes the mask unlimited: the text may run on behind the mask's end,
 * every further character taken with no test. Letters and case are the
 * system's for the current code page.
 */
#ifndef OXLRT31_MASK_H
#define OXLRT31_MASK_H

#include "fmt.h"

/* The host's own message for setting a field's text through the filter:
 * lParam the text, put through the mask before the control sees it. */
#define FMTM_SETTEXT 1062

OXL_EXTERN_C_BEGIN

/* 1 when the mask has a character, a placeholder among its characters, and
 * no "*" but as its last character; else 0. A "^" counts as a literal here:
 * give the mask without it. */
LONG OXLAPI FMTIsValidMaskFormat(const char* mask);

/* lpszInput taken out of the mask lpszPicture (a "^" is stepped over) into
 * lpszOutput: the characters at placeholders, unchanged, without the
 * literals. A blank passes any placeholder; 9 wants a digit, n and N a
 * letter or digit; a literal must stand as itself; behind a trailing "*"
 * the rest is copied. A text may end early. 1; 0 with lpszOutput empty when
 * the text does not fit, the mask is empty or, not being unlimited, shorter
 * than the text, or a pointer is null. */
LONG OXLAPI FMTUnmaskInput(FMTCNTLBLOCK* block);

/* `text` put into `mask` (valid, without "^") as `output`: each character
 * that its placeholder refuses falls out, literals are written, and a text
 * that already holds a literal in its place keeps its place. The output is
 * as long as the text reaches, and one literal more when the walk stops on
 * one (all literals up to the next placeholder for an unlimited mask). It
 * needs the mask's length + 1 bytes, or for an unlimited mask
 * FMTCntNonMaskChars + the text's length + 1 (one more when the mask
 * begins with "^", a literal here that FMTCntNonMaskChars steps over); text
 * and output may be the same. 1; 0 for a null pointer, an invalid mask or no memory. */
LONG OXLAPI FMTMaskText(const char* text, char* output, const char* mask);

/* Placeholders ("*" included) and other characters of the mask, behind a
 * leading "^"; 0 for null. */
LONG OXLAPI FMTCntMaskChars(const char* mask);
LONG OXLAPI FMTCntNonMaskChars(const char* mask);
/* 1 when the mask begins with "^"; when it ends with "*". Else 0. */
LONG OXLAPI FMTIsPicNoUnmaskOnGets(const char* mask);
LONG OXLAPI FMTIsPicUnlimited(const char* mask);

/*
 * The edit-control filter. The host hands it every message its edit control
 * receives, before the control's own handling: hWnd, uMsg, wParam, lParam
 * of the block, the mask in lpszPicture (with or without "^"), and dwFlags
 * FMTF_EDITFILTER (text set other than by typing - WM_SETTEXT, EM_REPLACESEL,
 * WM_PASTE - is put through the mask) and FMTF_EDITNOTIFY (such text marks
 * the control modified and tells the parent EN_CHANGE; with FMTF_EDITFILTER
 * it enables FMTM_SETTEXT). 1 when the filter took the message, its result
 * in lResult; 0 when the host should let it take its ordinary way. Typing,
 * Backspace, Delete, WM_CLEAR, Home, End, Left and Right are taken; a
 * refused character beeps. A call made inside the filter's own messages to
 * the control (same thread) is declined, so the host's window procedure may
 * pass everything through.
 *
 * On 64-bit builds a pointer does not fit the 32-bit lParam: the host
 * stores the message's whole LPARAM in the 8 bytes of abReserved as well,
 * and the filter takes it from there when its low 32 bits are lParam.
 */
LONG OXLAPI FMTValidateInput(FMTCNTLBLOCK* block);

OXL_EXTERN_C_END

#endif
