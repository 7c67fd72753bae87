/*
 * Dialog and font utilities: whole numbers shown as decimal text in edit
 * fields, list and combo box helpers, opening a file by name with a search
 * along the path, and font lists gathered into one memory block.
 */
#ifndef OXLRT31_DLGUTIL_H
#define OXLRT31_DLGUTIL_H

#include "oxlapi.h"

#include <stddef.h>

OXL_EXTERN_C_BEGIN

/* ---- real-number fields ------------------------------------------------
 * A value is a whole number: in plain mode the number times 10^decimals
 * (decimals 0 to 3; more count as 3), in metric mode a length in thousandths
 * of an inch shown as centimetres (2.5406 cm to the inch) in steps of 0.025.
 * Field texts hold digits and "." only; buffers of 32 bytes hold every text. */

/* The field's value; *ok 1, or 0 with result 0 for an empty field or a
 * character other than a digit or ".". `reserved` has no effect. */
LONG OXLAPI DlgGetDlgItemReal(HWND dialog, int id, BOOL* ok, BOOL reserved, BOOL metric, int decimals);
/* Sets the field's text (WM_SETTEXT) to the value's text in the mode. */
void OXLAPI DlgSetDlgItemReal(HWND dialog, int id, LONG value, BOOL reserved, BOOL metric, int decimals);
/* Plain text, trailing zeros of the fraction dropped: 1500 at 3 is "1.5". */
void OXLAPI DlgSetStrRealUnits(LONG value, BOOL reserved, LPSTR buffer, int decimals);
/* Centimetres: one decimal, then "25", "5" or "75" for the quarter steps. */
void OXLAPI DlgSetStrRealMetricUnits(LONG value, BOOL reserved, LPSTR buffer);

/* ---- list and combo boxes ---------------------------------------------
 * The system's searches ignore case; these compare exactly. */

/* 1 when an entry of exactly `text` is there afterwards (added if missing);
 * 0 for a null text, a failed add or no memory. An empty text gives 1. */
BOOL OXLAPI DlgAddDistinctStringIntoListbox(HWND list, LPCSTR text);
BOOL OXLAPI DlgAddDistinctStringIntoCombo(HWND combo, LPCSTR text);
/* Index of the first entry exactly equal to `text`, else -1; 0 without memory. */
int OXLAPI DlgLocateStringInListbox(HWND list, LPCSTR text);
/* Fits the horizontal extent to the widest entry; it shrinks only to the
 * client width. For a host combo box ("CBCtrlComboBox") its inner list. */
BOOL OXLAPI DlgSetListHScroll(HWND list);
/* 1 when the name holds "*" or "?". */
BOOL OXLAPI DlgSearchSpec(LPCSTR text);

/* ---- opening a file ---------------------------------------------------- */

#ifndef OF_READ
#define OF_READ 0x0000
#define OF_WRITE 0x0001
#define OF_READWRITE 0x0002
#define OF_SHARE_EXCLUSIVE 0x0010
#define OF_SHARE_DENY_WRITE 0x0020
#define OF_SHARE_DENY_READ 0x0030
#define OF_SHARE_DENY_NONE 0x0040
#define OF_PARSE 0x0100
#define OF_DELETE 0x0200
#define OF_CREATE 0x1000
#define OF_EXIST 0x4000
#endif
#ifndef INVALID_HANDLE_VALUE
#define INVALID_HANDLE_VALUE ((HANDLE)(ptrdiff_t)-1)
#endif
/* The flags CBOpenFile takes; any other bit is refused. */
#define CBOF_ALLOWED 0x5373
/* Room CBOpenFile's full name needs, and the longest path it takes plus one. */
#define CBOF_PATHMAX 2048

/* Opens, creates (OF_CREATE), deletes (OF_DELETE) or looks for (OF_EXIST)
 * a file. A name without a directory (or any name with OF_EXIST) is searched
 * for along the system's path. The full name goes to `fullPath` (2048
 * bytes) when it is given. The handle; null for OF_PARSE, a delete or a
 * found OF_EXIST; INVALID_HANDLE_VALUE (-1) on failure, with the system's
 * last error. */
HANDLE OXLAPI CBOpenFile(LPCSTR path, LPSTR fullPath, DWORD flags);

/* ---- fonts --------------------------------------------------------------
 * Lists come in a movable, zero-filled block (unlocked, the caller's to
 * GlobalFree): a 16-bit count and the entries behind it, packed. */

#ifndef _WIN32
/* The system's font records, laid out as on Windows. */
typedef struct tagLOGFONTA {
    LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
    BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet;
    BYTE lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
    CHAR lfFaceName[32];
} LOGFONTA;
typedef struct tagTEXTMETRICA {
    LONG tmHeight, tmAscent, tmDescent, tmInternalLeading, tmExternalLeading;
    LONG tmAveCharWidth, tmMaxCharWidth, tmWeight, tmOverhang, tmDigitizedAspectX, tmDigitizedAspectY;
    BYTE tmFirstChar, tmLastChar, tmDefaultChar, tmBreakChar;
    BYTE tmItalic, tmUnderlined, tmStruckOut, tmPitchAndFamily, tmCharSet;
} TEXTMETRICA;
#endif
OXL_STATIC_ASSERT(sizeof(LOGFONTA) == 60, "LOGFONTA: 60 bytes");
OXL_STATIC_ASSERT(offsetof(TEXTMETRICA, tmCharSet) == 52, "TEXTMETRICA: 53 bytes of fields");

/* Entry sizes of the three lists. */
#define FON_FACE_ENTRY 32     /* lfFaceName */
#define FON_SIZE_ENTRY 113    /* LOGFONTA, the 53 bytes of TEXTMETRICA */
#define FON_METRICS_ENTRY 115 /* the same and the 16-bit font type */

/* The record an enumeration callback fills. Packed. */
#pragma pack(push, 1)
typedef struct tagFontEnumRecord {
    short nCount;   /* entries so far, as at the head of the block */
    WORD wFlags;    /* GMEM_MOVEABLE | GMEM_ZEROINIT */
    HGLOBAL hBlock; /* the list; null when memory ran out */
} FontEnumRecord;
#pragma pack(pop)
OXL_STATIC_ASSERT(offsetof(FontEnumRecord, nCount) == 0, "FontEnumRecord.nCount");
OXL_STATIC_ASSERT(offsetof(FontEnumRecord, wFlags) == 2, "FontEnumRecord.wFlags");
OXL_STATIC_ASSERT(offsetof(FontEnumRecord, hBlock) == 4, "FontEnumRecord.hBlock");
OXL_STATIC_ASSERT(sizeof(FontEnumRecord) == 4 + sizeof(void*), "FontEnumRecord: 8 bytes on i686, 12 on 64-bit");

/* The faces of the context: entries of FON_FACE_ENTRY bytes. Null when no
 * font came or memory ran out. */
HGLOBAL OXLAPI FonGetFontFaces(HDC dc);
/* The fonts of one face (null face: one per face): FON_SIZE_ENTRY bytes. */
HGLOBAL OXLAPI FonGetFontSizes(HDC dc, LPCSTR face);
/* One per face with its font type: FON_METRICS_ENTRY bytes. */
HGLOBAL OXLAPI FonGetFontFaceMetrics(HDC dc);
/* The callbacks of the three lists, for EnumFontsA with a FontEnumRecord*:
 * each adds its entry and returns 1, or 0 (and a null block) without memory. */
int OXLCALLBACK FontEnumFaces(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record);
int OXLCALLBACK FontEnumSizes(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record);
int OXLCALLBACK FontEnumMetrics(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record);
/* lfCharSet (lfPitchAndFamily) of the face's first font into *out; left as
 * it was when the face has no font. 0 for a null context, else 1. */
BOOL OXLAPI FonGetFontCharSet(HDC dc, LPCSTR face, BYTE* out);
BOOL OXLAPI FonGetFontPitchAndFamily(HDC dc, LPCSTR face, BYTE* out);
/* Sets lfPitchAndFamily and lfCharSet of `font` from the first font of its
 * lfFaceName, nothing else. 0 for a null context, else 1. */
BOOL OXLAPI FonFixLogfont(HDC dc, LOGFONTA* font);

OXL_EXTERN_C_END

#endif
