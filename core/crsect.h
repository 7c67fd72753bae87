/*
 * Critical regions: a recursive lock with a count of the levels its owner holds.
 *
 * lockCount is read and written only by the thread that owns the section, so
 * it needs no atomic access; it is 0 when nobody holds the region and never
 * negative. CR_Unwind and CR_Rewind let a host give up all its levels while it
 * waits for something that may itself need the region, and take them back.
 */
#ifndef OXL_CORE_CRSECT_H
#define OXL_CORE_CRSECT_H

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
long OXLAPI CR_LockCount(CR_SECT* region);
/* Gives up every level the caller holds; returns how many. Null or all-ones: 0. */
long OXLAPI CR_Unwind(CR_SECT* region);
/* Takes `depth` levels again; nothing for depth <= 0. */
void OXLAPI CR_Rewind(CR_SECT* region, long depth);

/* The main region, and the pointer through which the runtime core reaches it:
 * null before its static initialiser and after its finaliser. */
#ifndef __cplusplus
OXLDATA extern CR_SECT gCRMainSect;
#endif
OXLDATA extern CR_SECT* gpCRSECTMain;

OXL_EXTERN_C_END

#ifdef __cplusplus
#include "../os/osl.h"

// Region entry and exit as the library does it everywhere: the level count
// moves with the lock, inside it.
inline void CRLock(CR_SECT* r) {
    gOsl.sync->EnterCriticalSection(&r->section);
    ++r->lockCount;
}
inline void CRUnlock(CR_SECT* r) {
    --r->lockCount;
    gOsl.sync->LeaveCriticalSection(&r->section);
}

// A region with static storage. Layout-identical to CR_SECT, so that the
// exported gCRMainSect is a CR_SECT to C hosts.
class CRSect {
public:
    CRSect() {
        gOsl.sync->InitializeCriticalSection(&m_sect.section);
        m_sect.lockCount = 0;
    }
    ~CRSect() { gOsl.sync->DeleteCriticalSection(&m_sect.section); }
    CRSect(const CRSect&) = delete;
    CRSect& operator=(const CRSect&) = delete;

    void Lock() { CRLock(&m_sect); }
    void Unlock() { CRUnlock(&m_sect); }
    CR_SECT* Get() { return &m_sect; }

private:
    CR_SECT m_sect;
};
static_assert(sizeof(CRSect) == sizeof(CR_SECT), "CRSect is its CR_SECT");

// Holds a region for a scope and lets go on every way out. A null region is
// not locked: the runtime core reaches the main region through gpCRSECTMain,
// which is null while static objects are made and unmade.
class CRSectGuard {
public:
    explicit CRSectGuard(CR_SECT* region) : m_region(region) {
        if (m_region) CRLock(m_region);
    }
    explicit CRSectGuard(CRSect& region) : CRSectGuard(region.Get()) {}
    ~CRSectGuard() {
        if (m_region) CRUnlock(m_region);
    }
    CRSectGuard(const CRSectGuard&) = delete;
    CRSectGuard& operator=(const CRSectGuard&) = delete;

private:
    CR_SECT* m_region;
};

extern "C" {
OXLDATA extern CRSect gCRMainSect;
}
#endif

#endif
