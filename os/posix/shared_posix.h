// The POSIX backend's shared memory and mutex, kept in a file of their own.
#ifndef OXL_OS_POSIX_SHARED_POSIX_H
#define OXL_OS_POSIX_SHARED_POSIX_H

#include "../osl.h"

extern const OslSharedService kOslPosixShared;

#endif
