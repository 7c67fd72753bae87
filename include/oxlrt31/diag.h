/*
 * Diagnostics for hosts: a message box that reports an internal error by
 * source file and line, and the version strings of a module.
 */
#ifndef OXLRT31_DIAG_H
#define OXLRT31_DIAG_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

/* Shows "Internal Error: " + file, less its last two characters, + line in a
 * system-modal box captioned Oxlee, owned by the active window; returns when
 * it is closed. A file name too long for the box's 200 characters is cut. */
void OXLAPI AssertBox(const char* file, DWORD line);
/* The ProductVersion (FileVersion) string of the module's version resource,
 * English with the Unicode code page or else with Windows Latin, copied into
 * buffer, which must hold it: 1. 0, with buffer untouched, when the module
 * has no such string. A null module is the program's own file; on Linux a
 * module is known by any address inside it (dladdr), and only the library
 * itself has version strings, those of its build. */
int OXLAPI VERGetVersionString(HMODULE module, char* buffer);
int OXLAPI VERGetBuildString(HMODULE module, char* buffer);

OXL_EXTERN_C_END

#endif
