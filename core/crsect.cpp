// The exported operations on critical regions. The library itself never
// calls them; they are for hosts that must wait while holding a region.
#include "crsect.h"

#include <cstdint>

LONG OXLAPI CR_LockCount(CR_SECT* region) {
    gOsl.sync->EnterCriticalSection(&region->section);
    long depth = region->lockCount;
    gOsl.sync->LeaveCriticalSection(&region->section);
    return depth;
}

LONG OXLAPI CR_Unwind(CR_SECT* region) {
    if (!region || reinterpret_cast<uintptr_t>(region) == UINTPTR_MAX) return 0;
    gOsl.sync->EnterCriticalSection(&region->section);
    long depth = region->lockCount;
    region->lockCount = 0;
    for (long i = 0; i <= depth; ++i) gOsl.sync->LeaveCriticalSection(&region->section);
    return depth;
}

void OXLAPI CR_Rewind(CR_SECT* region, LONG depth) {
    for (long i = 0; i < depth; ++i) CRLock(region);
}
