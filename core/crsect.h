// The library's own face of its critical regions: the CRSect object that
// the static regions are, and the guard that holds one for a scope. Hosts
// see the C record and functions of <oxlrt31/crsect.h> only.
#ifndef OXL_CORE_CRSECT_H
#define OXL_CORE_CRSECT_H

#define OXL_CRSECT_CLASS
#include <oxlrt31/crsect.h>

#include "os/osl.h"


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
