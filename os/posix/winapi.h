// The Win32 window, graphics and printing calls, declared (never defined) so
// that the OS layer's tables have the same entries on every system. The
// POSIX backend fills them with stand-ins that answer as Win32 fails.
#ifndef OXL_OS_POSIX_WINAPI_H
#define OXL_OS_POSIX_WINAPI_H

#include <oxlrt31/wintypes.h>

int WINAPI MessageBoxA(HWND, LPCSTR, LPCSTR, UINT);
BOOL WINAPI MessageBeep(UINT);
HWND WINAPI GetActiveWindow(void);
LRESULT WINAPI SendMessageA(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI SendMessageTimeoutA(HWND, UINT, WPARAM, LPARAM, UINT, UINT, PDWORD_PTR);
LONG_PTR WINAPI GetWindowLongPtrA(HWND, int);
HWND WINAPI GetWindow(HWND, UINT);
HWND WINAPI GetParent(HWND);
HWND WINAPI FindWindowA(LPCSTR, LPCSTR);
BOOL WINAPI EnableWindow(HWND, BOOL);
BOOL WINAPI IsWindow(HWND);
DWORD WINAPI GetWindowThreadProcessId(HWND, LPDWORD);
HWND WINAPI GetDesktopWindow(void);
BOOL WINAPI GetWindowRect(HWND, LPRECT);
HDC WINAPI GetDC(HWND);
int WINAPI ReleaseDC(HWND, HDC);
BOOL WINAPI IsIconic(HWND);
BOOL WINAPI ScreenToClient(HWND, LPPOINT);
BOOL WINAPI MoveWindow(HWND, int, int, int, int, BOOL);
INT_PTR WINAPI DialogBoxParamA(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM);
HWND WINAPI CreateDialogParamA(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM);
BOOL WINAPI DestroyWindow(HWND);
BOOL WINAPI PeekMessageA(LPMSG, HWND, UINT, UINT, UINT);
BOOL WINAPI IsDialogMessageA(HWND, LPMSG);
BOOL WINAPI TranslateMessage(const MSG*);
LRESULT WINAPI DispatchMessageA(const MSG*);
BOOL WINAPI SetWindowTextA(HWND, LPCSTR);
BOOL WINAPI SetDlgItemTextA(HWND, int, LPCSTR);
HWND WINAPI GetDlgItem(HWND, int);
BOOL WINAPI UpdateWindow(HWND);
HWND WINAPI SetFocus(HWND);
HMENU WINAPI GetSystemMenu(HWND, BOOL);
BOOL WINAPI EnableMenuItem(HMENU, UINT, UINT);

HDC WINAPI CreateDCA(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*);
HDC WINAPI CreateICA(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*);
BOOL WINAPI DeleteDC(HDC);
int WINAPI SaveDC(HDC);
BOOL WINAPI RestoreDC(HDC, int);
HDC WINAPI ResetDCA(HDC, const DEVMODEA*);
int WINAPI StartDocA(HDC, const DOCINFOA*);
int WINAPI StartPage(HDC);
int WINAPI EndPage(HDC);
int WINAPI EndDoc(HDC);
int WINAPI SetAbortProc(HDC, ABORTPROC);
int WINAPI Escape(HDC, int, int, LPCSTR, LPVOID);
int WINAPI GetDeviceCaps(HDC, int);
int WINAPI SetMapMode(HDC, int);
int WINAPI GetClipBox(HDC, LPRECT);
BOOL WINAPI DPtoLP(HDC, LPPOINT, int);
BOOL WINAPI LPtoDP(HDC, LPPOINT, int);
BOOL WINAPI SetWindowOrgEx(HDC, int, int, LPPOINT);
BOOL WINAPI SetViewportOrgEx(HDC, int, int, LPPOINT);
BOOL WINAPI SetWindowExtEx(HDC, int, int, LPSIZE);
BOOL WINAPI SetViewportExtEx(HDC, int, int, LPSIZE);
int WINAPI SetBkMode(HDC, int);
BOOL WINAPI Rectangle(HDC, int, int, int, int);

BOOL WINAPI PrintDlgA(LPPRINTDLGA);
DWORD WINAPI CommDlgExtendedError(void);
BOOL WINAPI OpenPrinterA(LPSTR, LPHANDLE, LPPRINTER_DEFAULTSA);
BOOL WINAPI ClosePrinter(HANDLE);
BOOL WINAPI GetPrinterA(HANDLE, DWORD, LPBYTE, DWORD, LPDWORD);
LONG WINAPI DocumentPropertiesA(HWND, HANDLE, LPSTR, LPDEVMODEA, LPDEVMODEA, DWORD);

/* The printer setup dialog, device modes, forms and paper queries. */
typedef HANDLE HCURSOR;
#define ERROR_INSUFFICIENT_BUFFER 122
#define PRINTER_ENUM_LOCAL 0x00000002
#define PRINTER_ENUM_CONNECTIONS 0x00000004
#define LOWORD(l) ((WORD)((DWORD_PTR)(l) & 0xffff))
#define HIWORD(l) ((WORD)(((DWORD_PTR)(l) >> 16) & 0xffff))
#define DM_ORIENTATION 0x00000001
#define DM_PAPERSIZE 0x00000002
#define DM_PAPERLENGTH 0x00000004
#define DM_PAPERWIDTH 0x00000008
#define DM_FORMNAME 0x00010000
#define DMPAPER_USER 256
#define DC_PAPERS 2
#define DC_PAPERSIZE 3
#define DC_BINS 6
#define DC_BINNAMES 12
#define DC_PAPERNAMES 16
#define MM_LOMETRIC 2
#define QUERYESCSUPPORT 8
#define GETPHYSPAGESIZE 12
#define GETPRINTINGOFFSET 13
typedef struct _SIZEL { LONG cx, cy; } SIZEL;
typedef struct _RECTL { LONG left, top, right, bottom; } RECTL;
typedef struct _FORM_INFO_1A {
    DWORD Flags;
    LPSTR pName;
    SIZEL Size;
    RECTL ImageableArea;
} FORM_INFO_1A;
BOOL WINAPI EnumPrintersA(DWORD, LPSTR, DWORD, LPBYTE, DWORD, LPDWORD, LPDWORD);
int WINAPI DeviceCapabilitiesA(LPCSTR, LPCSTR, WORD, LPSTR, const DEVMODEA*);
BOOL WINAPI EnumFormsA(HANDLE, DWORD, LPBYTE, DWORD, LPDWORD, LPDWORD);
BOOL WINAPI GetFormA(HANDLE, LPSTR, DWORD, LPBYTE, DWORD, LPDWORD);
BOOL WINAPI AddFormA(HANDLE, DWORD, LPBYTE);
BOOL WINAPI DeleteFormA(HANDLE, LPSTR);
DWORD WINAPI GetLastError(void);
BOOL WINAPI EndDialog(HWND, INT_PTR);
BOOL WINAPI SetPropA(HWND, LPCSTR, HANDLE);
HANDLE WINAPI GetPropA(HWND, LPCSTR);
HANDLE WINAPI RemovePropA(HWND, LPCSTR);
HCURSOR WINAPI SetCursor(HCURSOR);
HCURSOR WINAPI LoadCursorA(HINSTANCE, LPCSTR);
int WINAPI GetWindowTextA(HWND, LPSTR, int);

#endif
