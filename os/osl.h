/*
 * The OS layer: the one seam between the library and the operating system.
 *
 * Every call the library makes to the system goes through one of the service
 * tables below, reached through gOsl. A backend fills the tables: the Win32
 * backend with the real API (most entries are the API functions themselves),
 * the POSIX backend with what the portable engine needs on Linux. A test can
 * point an entry of gOsl at a table of its own to make the system do what no
 * real system does on demand (an allocation that fails, a fixed clock, a
 * chosen code page) without the library's code knowing.
 *
 * Entries keep the Win32 names and signatures (minus handles that are always
 * the same, such as the process heap), so the library reads like Win32 code.
 * An entry a backend cannot provide answers with the Win32 failure value.
 *
 * The tables are plain data and gOsl is constant-initialised, so the layer
 * works before any static constructor of the library has run.
 */
#ifndef OXL_OS_OSL_H
#define OXL_OS_OSL_H

#include <oxlrt31/wintypes.h>

/* Critical sections, thread slots, thread identity. */
struct OslSyncService {
    void(WINAPI* InitializeCriticalSection)(CRITICAL_SECTION*);
    void(WINAPI* DeleteCriticalSection)(CRITICAL_SECTION*);
    void(WINAPI* EnterCriticalSection)(CRITICAL_SECTION*);
    void(WINAPI* LeaveCriticalSection)(CRITICAL_SECTION*);
    DWORD(WINAPI* TlsAlloc)(void);
    BOOL(WINAPI* TlsFree)(DWORD);
    LPVOID(WINAPI* TlsGetValue)(DWORD);
    BOOL(WINAPI* TlsSetValue)(DWORD, LPVOID);
    DWORD(WINAPI* GetCurrentThreadId)(void);
};

/* The process heap and movable (global and local) memory. */
struct OslMemoryService {
    LPVOID (*HeapAlloc)(DWORD flags, SIZE_T bytes);
    LPVOID (*HeapReAlloc)(DWORD flags, LPVOID block, SIZE_T bytes);
    BOOL (*HeapFree)(LPVOID block);
    SIZE_T (*HeapSize)(const void* block);
    HGLOBAL(WINAPI* GlobalAlloc)(UINT flags, SIZE_T bytes);
    HGLOBAL(WINAPI* GlobalReAlloc)(HGLOBAL mem, SIZE_T bytes, UINT flags);
    LPVOID(WINAPI* GlobalLock)(HGLOBAL mem);
    BOOL(WINAPI* GlobalUnlock)(HGLOBAL mem);
    HGLOBAL(WINAPI* GlobalFree)(HGLOBAL mem);
    SIZE_T(WINAPI* GlobalSize)(HGLOBAL mem);
    HLOCAL(WINAPI* LocalAlloc)(UINT flags, SIZE_T bytes);
    HLOCAL(WINAPI* LocalFree)(HLOCAL mem);
};

/* A named mapping at a fixed address and a named mutex, across processes.
 * Each object exists once per machine (per prefix under Wine) while any
 * process has it open. */
struct OslSharedService {
    /* Makes `descriptor` (sizeof(SECURITY_DESCRIPTOR) bytes of the caller's)
     * one that lets every user open the object: a null DACL on Windows. */
    BOOL (*OpenToAll)(PSECURITY_DESCRIPTOR descriptor);
    /* Creates or opens the mapping; *created is 1 only for its creator. A
     * new mapping reads as zeros. Null on failure. `security` may be null. */
    HANDLE (*CreateMapping)(LPSECURITY_ATTRIBUTES security, LPCSTR name, DWORD bytes, BOOL* created);
    /* Maps the whole mapping at exactly `at`, never over an existing mapping;
     * null when that address can't be had. */
    LPVOID (*MapAt)(HANDLE mapping, LPVOID at);
    BOOL (*Unmap)(LPVOID view);
    /* Creates or opens a mutex, not owned. Recursive per thread. */
    HANDLE (*CreateMutex)(LPSECURITY_ATTRIBUTES security, LPCSTR name);
    /* WAIT_OBJECT_0; WAIT_ABANDONED when the owner died holding it (the
     * caller owns it now); WAIT_TIMEOUT or WAIT_FAILED. */
    DWORD (*WaitMutex)(HANDLE mutex, DWORD milliseconds);
    BOOL (*ReleaseMutex)(HANDLE mutex);
    BOOL (*CloseHandle)(HANDLE handle);
};

/* Who and where the process runs: system version and languages, clock, module. */
struct OslSystemService {
    DWORD (*GetPlatformId)(void); /* dwPlatformId of GetVersionExA */
    LANGID(WINAPI* GetSystemDefaultLangID)(void);
    LCID(WINAPI* GetUserDefaultLCID)(void);
    void(WINAPI* GetSystemTime)(SYSTEMTIME*);
    int (*GetLocaleInfoA)(LCID locale, DWORD type, LPSTR data, int size);
    DWORD (*GetModuleFileNameA)(HMODULE module, LPSTR name, DWORD size);
    DWORD (*GetFileVersionInfoSizeA)(LPCSTR file);
    BOOL (*GetFileVersionInfoA)(LPCSTR file, DWORD size, LPVOID data);
    BOOL (*VerQueryValueA)(LPVOID block, LPCSTR path, LPVOID* value, UINT* length);
};

/* The ANSI code page: lead bytes, stepping, case and character classes. */
struct OslTextService {
    UINT(WINAPI* GetACP)(void);
    BOOL(WINAPI* IsDBCSLeadByte)(BYTE);
    LPSTR(WINAPI* CharNextA)(LPCSTR);
    LPSTR(WINAPI* CharNextExA)(WORD codePage, LPCSTR, DWORD flags);
    LPSTR(WINAPI* CharPrevExA)(WORD codePage, LPCSTR start, LPCSTR current, DWORD flags);
    LPSTR(WINAPI* CharUpperA)(LPSTR);
    LPSTR(WINAPI* CharLowerA)(LPSTR);
    DWORD(WINAPI* CharUpperBuffA)(LPSTR, DWORD);
    DWORD(WINAPI* CharLowerBuffA)(LPSTR, DWORD);
    BOOL(WINAPI* IsCharAlphaA)(CHAR);
    BOOL(WINAPI* IsCharAlphaNumericA)(CHAR);
    int(WINAPI* lstrcmpA)(LPCSTR, LPCSTR);
    int(WINAPI* lstrcmpiA)(LPCSTR, LPCSTR);
};

/* The platform's C run-time functions whose results depend on the platform. */
struct OslCrtService {
    double (*atof)(const char*);
    char* (*gcvt)(double value, int digits, char* buffer);
    char* (*setlocale)(int category, const char* locale);
};

/* The profile store and the library's string resources. */
struct OslProfileService {
    UINT (*GetProfileIntA)(LPCSTR section, LPCSTR key, int fallback);
    DWORD (*GetProfileStringA)(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR out, DWORD size);
    BOOL (*WriteProfileStringA)(LPCSTR section, LPCSTR key, LPCSTR value);
    int (*LoadStringA)(HINSTANCE module, UINT id, LPSTR out, int size);
};

/* Files, for opening by name and searching the path. */
struct OslFileService {
    HANDLE (*CreateFileA)(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD flags);
    DWORD (*SearchPathA)(LPCSTR path, LPCSTR file, LPCSTR ext, DWORD size, LPSTR out, LPSTR* part);
    BOOL (*DeleteFileA)(LPCSTR name);
    BOOL (*CloseHandle)(HANDLE file);
};

/* The window manager, graphics and the spooler. The entries are the Win32
 * API functions themselves; elsewhere they are declared only (posix/winapi.h)
 * and the POSIX backend's stand-ins answer as the API does when it fails:
 * there are no windows and no printers. A message box there writes its
 * caption and text to the standard error stream and answers IDOK. */
#ifdef _WIN32
#include <commdlg.h>
#include <winspool.h>
#else
#include "os/posix/winapi.h"
#endif
#define OSL_API(name) decltype(&::name) name
struct OslWindowService {
    OSL_API(MessageBoxA);
    OSL_API(MessageBeep);
    OSL_API(GetActiveWindow);
    OSL_API(SendMessageA);
    OSL_API(SendMessageTimeoutA);
    /* dialogs, windows and the message pump, for the dialog helpers and the
     * print job's abort dialog */
    OSL_API(GetWindowLongPtrA);
    OSL_API(GetWindow);
    OSL_API(GetParent);
    OSL_API(FindWindowA);
    OSL_API(EnableWindow);
    OSL_API(IsWindow);
    OSL_API(GetWindowThreadProcessId);
    OSL_API(GetDesktopWindow);
    OSL_API(GetWindowRect);
    OSL_API(GetDC);
    OSL_API(ReleaseDC);
    OSL_API(IsIconic);
    OSL_API(ScreenToClient);
    OSL_API(MoveWindow);
    OSL_API(DialogBoxParamA);
    OSL_API(CreateDialogParamA);
    OSL_API(DestroyWindow);
    OSL_API(PeekMessageA);
    OSL_API(IsDialogMessageA);
    OSL_API(TranslateMessage);
    OSL_API(DispatchMessageA);
    OSL_API(SetWindowTextA);
    OSL_API(SetDlgItemTextA);
    OSL_API(GetDlgItem);
    OSL_API(UpdateWindow);
    OSL_API(SetFocus);
    OSL_API(GetSystemMenu);
    OSL_API(EnableMenuItem);
};
struct OslGraphicsService {
    OSL_API(CreateDCA);
    OSL_API(CreateICA);
    OSL_API(DeleteDC);
    OSL_API(StartDocA);
    OSL_API(StartPage);
    OSL_API(EndPage);
    OSL_API(EndDoc);
    OSL_API(SetAbortProc);
    OSL_API(Escape);
    OSL_API(GetDeviceCaps);
    /* the print job and the page layer */
    OSL_API(SaveDC);
    OSL_API(RestoreDC);
    OSL_API(ResetDCA);
    OSL_API(SetMapMode);
    OSL_API(GetClipBox);
    OSL_API(DPtoLP);
    OSL_API(LPtoDP);
    OSL_API(SetWindowOrgEx);
    OSL_API(SetViewportOrgEx);
    OSL_API(SetWindowExtEx);
    OSL_API(SetViewportExtEx);
    OSL_API(SetBkMode);
    OSL_API(Rectangle);
    /* the default printer and any printer's names and device mode */
    OSL_API(PrintDlgA);
    OSL_API(CommDlgExtendedError);
    OSL_API(OpenPrinterA);
    OSL_API(ClosePrinter);
    OSL_API(GetPrinterA);
    OSL_API(DocumentPropertiesA);
};
#undef OSL_API

/* The dialog utilities: edit fields, list and combo boxes, fonts, and files
 * opened by name. Windows and fonts exist on Windows only: the POSIX backend
 * answers those entries as Win32 fails (no text, no class, no font). Files
 * are real on both: the POSIX backend opens, searches and deletes them with
 * the system's calls, a handle being a file descriptor. */
#include <oxlrt31/dlgutil.h>
typedef int(OXLCALLBACK* OslFontEnumProc)(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM);
struct OslDialogService {
    UINT(WINAPI* GetDlgItemTextA)(HWND dialog, int id, LPSTR out, int size);
    int(WINAPI* GetClassNameA)(HWND window, LPSTR out, int size);
    BOOL(WINAPI* GetClientRect)(HWND window, LPRECT rect);
    HANDLE(WINAPI* SelectObject)(HDC dc, HANDLE object);
    HANDLE(WINAPI* GetPropA)(HWND window, LPCSTR name);
    DWORD(WINAPI* GetTabbedTextExtentA)(HDC dc, LPCSTR text, int count, int tabs, const int* stops);
    int(WINAPI* EnumFontsA)(HDC dc, LPCSTR face, OslFontEnumProc proc, LPARAM data);
    DWORD(WINAPI* GetLastError)(void);
    void(WINAPI* SetLastError)(DWORD error);
    /* The C run-time's: the parts of a path (each buffer as long as the
     * path), and its absolute form in `size` bytes (null when it can't be made). */
    void (*splitpath)(const char* path, char* drive, char* dir, char* name, char* ext);
    char* (*fullpath)(char* out, const char* path, size_t size);
    DWORD (*SearchPathA)(LPCSTR path, LPCSTR file, LPCSTR ext, DWORD size, LPSTR out, LPSTR* part);
    BOOL (*DeleteFileA)(LPCSTR name);
    /* No security, no template; INVALID_HANDLE_VALUE on failure. */
    HANDLE (*CreateFileA)(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD attributes);
    /* The same for a name of the long form "\\?\" + full name: Windows opens
     * it with CreateFileW, the name converted in the ANSI code page. */
    HANDLE (*CreateFileLongA)(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD attributes);
    BOOL (*CloseHandle)(HANDLE file);
};
/* Edit controls, for the input filter: the calls it makes to a control and
 * its parent, and those a host makes to set one up. On Windows they are the
 * API functions; the POSIX backend answers them from a model of windows and
 * single-line edit controls (os/posix/edit_posix.cpp): a control of the
 * class "EDIT" keeps a text, a selection with its caret end and a modified
 * flag, and takes the messages of OslEditMsg; any other class makes a
 * window that takes none. Windows there are subclassed as on Windows, by
 * SetWindowLongPtrA(GWLP_WNDPROC), and messages reach the procedure in
 * force. There is no sound, no keyboard (no key is down) and no clipboard. */
#ifndef _WIN32
typedef LRESULT(WINAPI* WNDPROC)(HWND, UINT, WPARAM, LPARAM);
typedef short SHORT;
#endif
struct OslEditService {
    LONG_PTR(WINAPI* GetWindowLongPtrA)(HWND, int);
    LONG_PTR(WINAPI* SetWindowLongPtrA)(HWND, int, LONG_PTR);
    LRESULT(WINAPI* SendMessageA)(HWND, UINT, WPARAM, LPARAM);
    LRESULT(WINAPI* CallWindowProcA)(WNDPROC, HWND, UINT, WPARAM, LPARAM);
    int(WINAPI* GetWindowTextLengthA)(HWND);
    int(WINAPI* GetWindowTextA)(HWND, LPSTR, int);
    HWND(WINAPI* GetParent)(HWND);
    BOOL(WINAPI* MessageBeep)(UINT);
    SHORT(WINAPI* GetKeyState)(int);
    HWND(WINAPI* CreateWindowExA)(DWORD, LPCSTR, LPCSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE, LPVOID);
    BOOL(WINAPI* DestroyWindow)(HWND);
};
/* The messages, keys and window words of an edit control, by their Win32
 * numbers, named apart from the system headers' macros. */
enum OslEditMsg : UINT {
    OSL_WM_SETTEXT = 12, OSL_WM_GETTEXT = 13, OSL_WM_GETTEXTLENGTH = 14, OSL_WM_KEYDOWN = 256, OSL_WM_CHAR = 258,
    OSL_WM_COMMAND = 273, OSL_WM_CUT = 768, OSL_WM_PASTE = 770, OSL_WM_CLEAR = 771, OSL_EM_GETSEL = 176,
    OSL_EM_SETSEL = 177, OSL_EM_GETMODIFY = 184, OSL_EM_SETMODIFY = 185, OSL_EM_REPLACESEL = 194,
};
enum OslEditKey : UINT { OSL_VK_SHIFT = 16, OSL_VK_END = 35, OSL_VK_HOME = 36, OSL_VK_LEFT = 37, OSL_VK_RIGHT = 39, OSL_VK_DELETE = 46 };
enum OslWindowWord : int { OSL_GWLP_WNDPROC = -4, OSL_GWLP_ID = -12 };
#define OSL_EN_CHANGE 0x0300

/* The printer setup dialog, device modes, custom forms and paper queries:
 * the list of printers, a device's capabilities, a printer's forms, and the
 * few window calls of the setup dialog (its end, its property, the cursor,
 * a caption). On Windows the entries are the API functions; POSIX has no
 * printers and no windows, and its entries answer as the API fails. */
#define OSL_API(name) decltype(&::name) name
struct OslPrinterSetupService {
    OSL_API(EnumPrintersA);
    OSL_API(DeviceCapabilitiesA);
    OSL_API(EnumFormsA);
    OSL_API(GetFormA);
    OSL_API(AddFormA);
    OSL_API(DeleteFormA);
    OSL_API(GetLastError);
    OSL_API(EndDialog);
    OSL_API(SetPropA);
    OSL_API(GetPropA);
    OSL_API(RemovePropA);
    OSL_API(SetCursor);
    OSL_API(LoadCursorA);
    OSL_API(GetWindowTextA);
};
#undef OSL_API

/* The backend in force, one table per service. */
struct OslServices {
    const OslSyncService* sync;
    const OslMemoryService* memory;
    const OslSharedService* shared;
    const OslSystemService* system;
    const OslTextService* text;
    const OslCrtService* crt;
    const OslProfileService* profile;
    const OslFileService* file;
    const OslWindowService* window;
    const OslGraphicsService* graphics;
    /* the dialog utilities */
    const OslDialogService* dialog;
    /* the input filter's edit controls */
    const OslEditService* edit;
    /* the printer setup dialog, device modes, forms and paper queries */
    const OslPrinterSetupService* printerSetup;
};

extern OslServices gOsl;

/* The backend's own tables, for a test that changes one entry of a copy. */
extern const OslServices gOslNative;

/*
 * Notifications from the system to the library. A backend calls LibEntry
 * (core/libstate.h) for load, unload and thread exit; these two hooks run
 * from the library's last static object, after its static initialisers and
 * before its finalisers, for backends whose system has no load notification.
 */
void OslLibraryLoaded(void);
void OslLibraryUnloading(void);

#endif
