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
#endif

#endif
