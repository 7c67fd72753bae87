/*
 * The Win32 type names that the library's interfaces are written in.
 *
 * On Windows this is <windows.h> itself. Elsewhere it defines the few names
 * the portable engine needs, with the same widths, so that a record has one
 * layout on every system; a CRITICAL_SECTION there is a recursive mutex.
 */
#ifndef OXLRT31_WINTYPES_H
#define OXLRT31_WINTYPES_H

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#include <wtypes.h> /* CY and DECIMAL, the OLE currency and decimal records */
#else
#include <pthread.h>
#include <stddef.h>
#include <stdint.h>

#define WINAPI
#define CALLBACK

typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef int BOOL;
typedef unsigned int UINT;
typedef size_t SIZE_T;
typedef uint16_t LANGID;
typedef DWORD LCID;
typedef char CHAR;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef void* LPVOID;
typedef void* HANDLE;
typedef HANDLE HINSTANCE;
typedef HANDLE HMODULE;
typedef HANDLE HGLOBAL;
typedef HANDLE HLOCAL;
typedef HANDLE HWND;

typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;

/* The OLE currency and decimal records, laid out as on Windows (checked in
 * <oxlrt31/number.h>). Anonymous members as in the Windows headers, marked
 * as an extension (as the Windows headers of GCC do) so that C99 and C++
 * hosts compiling with -pedantic see no warning. */
#ifdef __GNUC__
#define OXL_NAMELESS __extension__
#else
#define OXL_NAMELESS
#endif
#pragma pack(push, 1)
typedef union tagCY {
    OXL_NAMELESS struct {
        DWORD Lo;
        LONG Hi;
    };
    LONGLONG int64;
} CY;

typedef struct tagDEC {
    WORD wReserved;
    OXL_NAMELESS union {
        OXL_NAMELESS struct {
            BYTE scale; /* decimal places, 0 to 28 */
            BYTE sign;  /* 0x80 negative */
        };
        WORD signscale;
    };
    DWORD Hi32;
    OXL_NAMELESS union {
        OXL_NAMELESS struct {
            DWORD Lo32;
            DWORD Mid32;
        };
        ULONGLONG Lo64;
    };
} DECIMAL;
#pragma pack(pop)

typedef struct _SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay;
    WORD wHour, wMinute, wSecond, wMilliseconds;
} SYSTEMTIME;

/* Recursive per thread, as on Windows. */
typedef struct _CRITICAL_SECTION {
    pthread_mutex_t mutex;
} CRITICAL_SECTION;

/* Laid out as Windows lays them out, so a descriptor that the library
 * allocates by size fits either backend. */
typedef struct _SECURITY_DESCRIPTOR {
    BYTE Revision, Sbz1;
    WORD Control;
    void *Owner, *Group, *Sacl, *Dacl;
} SECURITY_DESCRIPTOR, *PSECURITY_DESCRIPTOR;
typedef struct _SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
} SECURITY_ATTRIBUTES, *LPSECURITY_ATTRIBUTES;

#define WAIT_OBJECT_0 0x00000000
#define WAIT_ABANDONED 0x00000080
#define WAIT_TIMEOUT 0x00000102
#define WAIT_FAILED ((DWORD)0xFFFFFFFF)
#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define TLS_OUT_OF_INDEXES ((DWORD)0xFFFFFFFF)
#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3
#define HEAP_ZERO_MEMORY 0x00000008
#define VER_PLATFORM_WIN32_NT 2
#define GMEM_FIXED 0x0000
#define GMEM_MOVEABLE 0x0002
#define GMEM_ZEROINIT 0x0040
#define MB_OK 0x00000000
#define MB_ICONHAND 0x00000010
#define MB_SYSTEMMODAL 0x00001000
#define IDOK 1

/* Windows, device contexts and the print job, for the printing and dialog
 * records; the values are Win32's. */
typedef HANDLE HDC;
typedef HANDLE HMENU;
typedef uintptr_t WPARAM;
typedef intptr_t LPARAM;
typedef intptr_t LRESULT;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef uintptr_t DWORD_PTR, *PDWORD_PTR;
typedef intptr_t LONG_PTR;
typedef BYTE* LPBYTE;
typedef DWORD* LPDWORD;
typedef struct tagRECT {
    LONG left, top, right, bottom;
} RECT, *LPRECT;
typedef struct tagPOINT {
    LONG x, y;
} POINT, *LPPOINT;
typedef struct tagSIZE {
    LONG cx, cy;
} SIZE, *LPSIZE;
typedef struct tagMSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
} MSG, *LPMSG;
typedef INT_PTR(WINAPI* DLGPROC)(HWND, UINT, WPARAM, LPARAM);
typedef BOOL(WINAPI* ABORTPROC)(HDC, int);
typedef struct _DOCINFOA {
    int cbSize;
    LPCSTR lpszDocName, lpszOutput, lpszDatatype;
    DWORD fwType;
} DOCINFOA;
/* The printer fields of the device mode, where Win32 has them. */
typedef struct _devicemodeA {
    BYTE dmDeviceName[32];
    WORD dmSpecVersion, dmDriverVersion, dmSize, dmDriverExtra;
    DWORD dmFields;
    short dmOrientation, dmPaperSize, dmPaperLength, dmPaperWidth, dmScale, dmCopies, dmDefaultSource, dmPrintQuality;
    short dmColor, dmDuplex, dmYResolution, dmTTOption, dmCollate;
    BYTE dmFormName[32];
    WORD dmLogPixels;
    DWORD dmBitsPerPel, dmPelsWidth, dmPelsHeight, dmNup, dmDisplayFrequency;
    DWORD dmICMMethod, dmICMIntent, dmMediaType, dmDitherType, dmReserved1, dmReserved2, dmPanningWidth, dmPanningHeight;
} DEVMODEA, *LPDEVMODEA;
/* The default printer: the common dialog's answer and the spooler's records. */
typedef HANDLE* LPHANDLE;
typedef struct tagPD {
    DWORD lStructSize;
    HWND hwndOwner;
    HGLOBAL hDevMode, hDevNames;
    HDC hDC;
    DWORD Flags;
} PRINTDLGA, *LPPRINTDLGA;
typedef struct tagDEVNAMES {
    WORD wDriverOffset, wDeviceOffset, wOutputOffset, wDefault;
} DEVNAMES;
typedef struct _PRINTER_DEFAULTSA {
    LPSTR pDatatype;
    LPDEVMODEA pDevMode;
    DWORD DesiredAccess;
} PRINTER_DEFAULTSA, *LPPRINTER_DEFAULTSA;
typedef struct _PRINTER_INFO_2A {
    LPSTR pServerName, pPrinterName, pShareName, pPortName, pDriverName, pComment, pLocation;
    LPDEVMODEA pDevMode;
} PRINTER_INFO_2A;
#define PD_RETURNDEFAULT 0x00000400
#define DM_OUT_BUFFER 2
#define DM_COPIES 0x00000100
#define DM_DEFAULTSOURCE 0x00000200
#define MAKEINTRESOURCEA(i) ((LPSTR)(uintptr_t)(WORD)(i))
#define WM_DESTROY 0x0002
#define WM_INITDIALOG 0x0110
#define WM_COMMAND 0x0111
#define WM_INITMENU 0x0116
#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001
#define GWLP_HINSTANCE (-6)
#define GWL_STYLE (-16)
#define GW_HWNDFIRST 0
#define GW_HWNDNEXT 2
#define GW_OWNER 4
#define WS_DISABLED 0x08000000L
#define WS_CHILD 0x40000000L
#define IDCANCEL 2
#define MB_ICONEXCLAMATION 0x00000030
#define MF_BYCOMMAND 0x00000000
#define MF_GRAYED 0x00000001
#define SC_CLOSE 0xF060
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define HORZRES 8
#define VERTRES 10
#define PHYSICALWIDTH 110
#define PHYSICALHEIGHT 111
#define PHYSICALOFFSETX 112
#define PHYSICALOFFSETY 113
#define MM_HIENGLISH 5
#define TRANSPARENT 1
#endif

#endif
