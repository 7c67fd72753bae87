// The Win32 backend's dialog utility service, kept in a file of its own.
#ifndef OXL_OS_WIN32_DIALOG_WIN32_H
#define OXL_OS_WIN32_DIALOG_WIN32_H

#include "../osl.h"

extern const OslDialogService kOslWin32Dialog;

#endif
