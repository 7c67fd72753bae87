// Per-thread items. The platform slot holds the calling thread's block; the
// thread map lists every block so that TLS_FreeIndex can reach the items of
// other threads. The map is guarded by the main region, reached through
// gpCRSECTMain, and used unlocked while that pointer is null (static objects
// being made or unmade). A thread's own block is touched without a lock.
#include "tls.h"

#include "crsect.h"
#include "tlsmap.h"

namespace {

struct TLS_ENTRY {
    void* value;
    TLS_DESTRUCTOR destructor;
};

constexpr DWORD kUnset = 0xFFFFFFFF;
DWORD sPlatformSlot = kUnset;
unsigned char sSlotInUse[TLS_SLOTS - TLS_FIRST_ALLOC]; // 1 = handed out

bool validIndex(int index) { return index >= 0 && index < TLS_SLOTS; }

void destroy(TLS_ENTRY& e) {
    if (e.value && e.destructor) e.destructor(e.value);
}

// The calling thread's block; made and registered when `make` is set. A
// thread whose block cannot be made or registered reads as having no items.
TLS_ENTRY* threadBlock(bool make) {
    if (sPlatformSlot == kUnset) return nullptr;
    auto* block = static_cast<TLS_ENTRY*>(gOsl.sync->TlsGetValue(sPlatformSlot));
    if (block || !make) return block;

    block = static_cast<TLS_ENTRY*>(gOsl.memory->HeapAlloc(HEAP_ZERO_MEMORY, TLS_SLOTS * sizeof(TLS_ENTRY)));
    if (!block) return nullptr;
    if (!gOsl.sync->TlsSetValue(sPlatformSlot, block)) {
        gOsl.memory->HeapFree(block);
        return nullptr;
    }
    bool registered;
    {
        CRSectGuard hold(gpCRSECTMain);
        // An identifier still in the map belonged to an ended thread that
        // never went through TLS_FreeAll; its entry is simply reused.
        registered = gTLSThreadMap.Set(gOsl.sync->GetCurrentThreadId(), block);
    }
    if (!registered) {
        gOsl.sync->TlsSetValue(sPlatformSlot, nullptr);
        gOsl.memory->HeapFree(block);
        return nullptr;
    }
    return block;
}

void freeEntryIn(void* block, void* index) {
    TLS_ENTRY& e = static_cast<TLS_ENTRY*>(block)[*static_cast<int*>(index)];
    destroy(e);
    e.value = nullptr;
    e.destructor = nullptr;
}

} // namespace

void TLSpEnsurePlatformSlot() {
    if (sPlatformSlot == kUnset) sPlatformSlot = gOsl.sync->TlsAlloc();
}

void TLSpReleasePlatformSlot() {
    if (sPlatformSlot == kUnset) return;
    gOsl.sync->TlsFree(sPlatformSlot);
    sPlatformSlot = kUnset;
}

void TLSpClearThreadMap() { gTLSThreadMap.Clear(); }

int TLSpThreadCount() {
    CRSectGuard hold(gpCRSECTMain);
    return gTLSThreadMap.Count();
}

bool TLSpMapHoldsMemory() {
    CRSectGuard hold(gpCRSECTMain);
    return gTLSThreadMap.HoldsMemory();
}

int OXLAPI TLS_AllocIndex(void) {
    TLSpEnsurePlatformSlot();
    for (int i = 0; i < TLS_SLOTS - TLS_FIRST_ALLOC; ++i) {
        if (!sSlotInUse[i]) {
            sSlotInUse[i] = 1;
            return TLS_FIRST_ALLOC + i;
        }
    }
    return -1;
}

void OXLAPI TLS_FreeIndex(int index) {
    if (!validIndex(index)) return;
    CRSectGuard hold(gpCRSECTMain);
    if (index >= TLS_FIRST_ALLOC) sSlotInUse[index - TLS_FIRST_ALLOC] = 0;
    // Destructors run here, on the calling thread, under the main region.
    gTLSThreadMap.ForEach(freeEntryIn, &index);
}

void* OXLAPI TLS_GetItem(int index) {
    if (!validIndex(index)) return nullptr;
    TLS_ENTRY* block = threadBlock(true);
    return block ? block[index].value : nullptr;
}

void OXLAPI TLS_SetItem(int index, void* value, TLS_DESTRUCTOR destructor) {
    if (!validIndex(index)) return;
    TLS_ENTRY* block = threadBlock(true);
    if (!block) return;
    // No comparison with the new value: storing the value an entry already
    // holds destroys it first, as hosts have come to expect.
    destroy(block[index]);
    block[index].value = value;
    block[index].destructor = destructor;
}

void OXLAPI TLS_Free(int index) {
    if (!validIndex(index)) return;
    if (TLS_ENTRY* block = threadBlock(false)) freeEntryIn(block, &index);
}

void OXLAPI TLS_FreeAll(void) {
    if (sPlatformSlot == kUnset) return;
    if (TLS_ENTRY* block = threadBlock(false)) {
        // Destructors run with no lock held and the block still in place, so
        // a destructor may use the thread's other items.
        for (int i = 0; i < TLS_SLOTS; ++i) destroy(block[i]);
        {
            CRSectGuard hold(gpCRSECTMain);
            gTLSThreadMap.Remove(gOsl.sync->GetCurrentThreadId());
        }
        gOsl.memory->HeapFree(block);
    }
    gOsl.sync->TlsSetValue(sPlatformSlot, nullptr);
}
