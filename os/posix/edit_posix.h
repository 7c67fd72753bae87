// The POSIX backend's windows: a model of single-line edit controls.
#ifndef OXL_OS_POSIX_EDIT_POSIX_H
#define OXL_OS_POSIX_EDIT_POSIX_H

#include "../osl.h"

extern const OslEditService kOslPosixEdit;

#endif
