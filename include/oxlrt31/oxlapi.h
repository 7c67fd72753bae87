/*
 * How oxlrt31 meets its hosts.
 *
 * Calling convention: every exported function and every callback the library
 * accepts is __stdcall (the Win32 WINAPI/CALLBACK convention). On x86_64 and on
 * other systems there is only one convention and the macros are empty.
 *
 * Exported data (gCRMainSect, gpCRSECTMain) must be declared dllimport in a
 * host that links the DLL; the library itself builds with OXLRT31_BUILD, and a
 * program that links the library's objects directly defines OXLRT31_STATIC.
 */
#ifndef OXLRT31_OXLAPI_H
#define OXLRT31_OXLAPI_H

#include "wintypes.h"

#ifdef _WIN32
#define OXLAPI WINAPI
#define OXLCALLBACK CALLBACK
#else
#define OXLAPI
#define OXLCALLBACK
#endif

#if defined(_WIN32) && !defined(OXLRT31_BUILD) && !defined(OXLRT31_STATIC)
#define OXLDATA __declspec(dllimport)
#else
#define OXLDATA
#endif

#ifdef __cplusplus
#define OXL_EXTERN_C_BEGIN extern "C" {
#define OXL_EXTERN_C_END }
#else
#define OXL_EXTERN_C_BEGIN
#define OXL_EXTERN_C_END
#endif

/* Layout checks that hold in C and C++ alike. */
#ifdef __cplusplus
#define OXL_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define OXL_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#else /* C99: an array whose size is negative when the condition fails */
#define OXL_ASSERT_NAME2(line) oxl_static_assert_##line
#define OXL_ASSERT_NAME(line) OXL_ASSERT_NAME2(line)
#define OXL_STATIC_ASSERT(cond, msg) typedef char OXL_ASSERT_NAME(__COUNTER__)[(cond) ? 1 : -1]
#endif

#endif
