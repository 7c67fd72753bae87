// The POSIX backend's dialog utility service, kept in a file of its own.
#ifndef OXL_OS_POSIX_DIALOG_POSIX_H
#define OXL_OS_POSIX_DIALOG_POSIX_H

#include "../osl.h"

extern const OslDialogService kOslPosixDialog;

#endif
