// The shared block and its mutex: creating, opening, mapping at the agreed
// address, and the waits on the mutex.
//
// Lock order: the named mutex first, then the main region. The main region
// guards the creation and release of the mutex handle but is never held
// while waiting for the mutex, so a process stalled on the mutex never
// stalls the other threads of its own process.
#include <oxlrt31/memshared.h>

#include "crsect.h"
#include <oxlrt31/mem.h>
#include "memstate.h"

MEMSTATE gMemState;

namespace {

constexpr char kMappingName[] = "MORVEL_SHARED_MEM";
constexpr char kMutexName[] = "MORVEL_SHARED_MEM_MUTEX";
constexpr DWORD kWaitMs = 20000;          // bounds how long a hung process stalls the others
constexpr DWORD kAbandonedWaitMs = 10000; // the second wait after taking over a dead owner's mutex

// The heap's lists hold absolute addresses, so the address is part of the
// format: one address per platform, and nothing else is tried.
void* MappingAddress() {
    DWORD platform = gOsl.system->GetPlatformId();
    return reinterpret_cast<void*>(uintptr_t(platform == VER_PLATFORM_WIN32_NT ? 0x40000000u : 0xA0000000u));
}

// Security that lets processes of any user open the objects: a descriptor
// with a null DACL. When it can't be made the objects get default security.
class OpenSecurity {
public:
    OpenSecurity() : m_descriptor(MemAlloc(sizeof(SECURITY_DESCRIPTOR))) {
        m_attributes = {sizeof m_attributes, m_descriptor, 1}; // inherited by child processes
    }
    ~OpenSecurity() { MemFree(m_descriptor); }
    OpenSecurity(const OpenSecurity&) = delete;
    OpenSecurity& operator=(const OpenSecurity&) = delete;

    LPSECURITY_ATTRIBUTES Get() {
        bool made = m_descriptor && gOsl.shared->OpenToAll(static_cast<PSECURITY_DESCRIPTOR>(m_descriptor));
        return made ? &m_attributes : nullptr;
    }

private:
    void* m_descriptor;
    SECURITY_ATTRIBUTES m_attributes;
};

HANDLE OpenMutex() {
    CRSectGuard hold(gpCRSECTMain);
    if (!gMemState.hMutex) {
        OpenSecurity security;
        gMemState.hMutex = gOsl.shared->CreateMutex(security.Get(), kMutexName);
    }
    return gMemState.hMutex;
}

} // namespace

int OXLAPI MemAcquireMutex(void) {
    HANDLE mutex = OpenMutex();
    if (!mutex) return 0;
    DWORD result = gOsl.shared->WaitMutex(mutex, kWaitMs);
    if (result == WAIT_OBJECT_0) return 1;
    if (result != WAIT_ABANDONED) return 0;
    // The previous owner died holding the mutex, which is now ours at one
    // level. The second wait takes a second level; one is given back so the
    // caller holds exactly one, as after a plain wait, and one
    // MemReleaseMutex lets the other processes in again.
    result = gOsl.shared->WaitMutex(mutex, kAbandonedWaitMs);
    gOsl.shared->ReleaseMutex(mutex);
    return result == WAIT_OBJECT_0;
}

int OXLAPI MemReleaseMutex(void) {
    CRSectGuard hold(gpCRSECTMain);
    return gMemState.hMutex && gOsl.shared->ReleaseMutex(gMemState.hMutex);
}

void* OXLAPI MemSharedInit(LONG* created, DWORD size) {
    if (!MemAcquireMutex()) return nullptr;
    if (!gMemState.lpView) {
        BOOL isNew = 0;
        {
            OpenSecurity security;
            gMemState.hMapping = gOsl.shared->CreateMapping(security.Get(), kMappingName, size, &isNew);
        }
        if (gMemState.hMapping) {
            void* at = MappingAddress();
            gMemState.lpView = gOsl.shared->MapAt(gMemState.hMapping, at);
            if (gMemState.lpView != at) {
                MemSharedTerminate();
            } else if (created) {
                *created = isNew ? 1 : 0;
            }
        }
    } else if (created) {
        *created = 0;
    }
    return MemReleaseMutex() ? gMemState.lpView : nullptr;
}

void OXLAPI MemSharedTerminate(void) {
    if (gMemState.lpView) {
        gOsl.shared->Unmap(gMemState.lpView);
        gMemState.lpView = nullptr;
        gMemState.lpHeap = nullptr;
        gMemState.dwHeapSize = 0;
    }
    if (gMemState.hMapping) {
        gOsl.shared->CloseHandle(gMemState.hMapping);
        gMemState.hMapping = nullptr;
    }
}
