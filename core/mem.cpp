// The library's heap. The process heap itself is the OS layer's business:
// its entries address the process heap, so no handle is kept here.
#include <oxlrt31/mem.h>

#include "crsect.h"

void* OXLAPI MemAlloc(DWORD size) {
    if (size == 0) return nullptr; // before the lock: nothing to serialise
    CRSectGuard hold(gpCRSECTMain);
    return gOsl.memory->HeapAlloc(HEAP_ZERO_MEMORY, size);
}

void* OXLAPI MemRealloc(void* block, DWORD size) {
    if (!block) return MemAlloc(size);
    if (size == 0) {
        MemFree(block);
        return nullptr;
    }
    CRSectGuard hold(gpCRSECTMain);
    return gOsl.memory->HeapReAlloc(HEAP_ZERO_MEMORY, block, size);
}

void OXLAPI MemFree(void* block) {
    if (!block) return;
    CRSectGuard hold(gpCRSECTMain);
    gOsl.memory->HeapFree(block);
}

DWORD OXLAPI MemSize(const void* block) {
    if (!block) return 0;
    CRSectGuard hold(gpCRSECTMain);
    return DWORD(gOsl.memory->HeapSize(block));
}

int OXLAPI MemCheck(const void*) { return 0; }

int OXLAPI MemCheckAll(void) { return 0; }
