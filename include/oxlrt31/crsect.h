/*
 * Critical regions: a recursive lock with a count of the levels its owner holds.
 *
 * lockCount is read and written only by the thread that owns the section, so
 * it needs no atomic access; it is 0 when nobody holds the region and never
 * negative. CR_Unwind and CR_Rewind let a host give up all its levels while it
 * waits for something that may itself need the region, and take them back.
 */
#ifndef OXLRT31_CRSECT_H
#define OXLRT31_CRSECT_H

#include "oxlapi.h"

#pragma pack(push, 1)
typedef struct CR_SECT {
    CRITICAL_SECTION section;
    LONG lockCount;
} CR_SECT;
#pragma pack(pop)

#ifdef _WIN32
#ifdef _WIN64
OXL_STATIC_ASSERT(sizeof(CR_SECT) == 44, "CR_SECT is a 40-byte CRITICAL_SECTION and a count");
#else
OXL_STATIC_ASSERT(sizeof(CR_SECT) == 28, "CR_SECT is a 24-byte CRITICAL_SECTION and a count");
#endif
#endif
OXL_STATIC_ASSERT(sizeof(CR_SECT) == sizeof(CRITICAL_SECTION) + 4, "CR_SECT holds nothing else");

OXL_EXTERN_C_BEGIN

/* Enters, reads the depth, leaves: the caller's own depth, or 0 once the owner let go. */
LONG OXLAPI CR_LockCount(CR_SECT* region);
/* Gives up every level the caller holds; returns how many. Null or all-ones: 0. */
LONG OXLAPI CR_Unwind(CR_SECT* region);
/* Takes `depth` levels again; nothing for depth <= 0. */
void OXLAPI CR_Rewind(CR_SECT* region, LONG depth);

/* The main region, and the pointer through which the runtime core reaches it:
 * null before its static initialiser and after its finaliser. */
#ifndef OXL_CRSECT_CLASS /* the library's own C++ code knows it as a CRSect */
OXLDATA extern CR_SECT gCRMainSect;
#endif
OXLDATA extern CR_SECT* gpCRSECTMain;

OXL_EXTERN_C_END

#endif
