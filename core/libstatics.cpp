// The library's static objects, all in this one file because their order is
// the load order: the language makes and unmakes the objects of one file in
// the order they stand, and hosts see the slot numbers that result (100, 101
// and 102, so that a host's first slot is 103). Finalisers run in reverse:
// gpCRSECTMain goes null and the thread map is emptied before gCRMainSect is
// deleted and the slot numbers are given back, so those last TLS_FreeIndex
// calls only mark their numbers free and touch no thread's items.
#include "crsect.h"
#include "libstate.h"
#include "tls.h"
#include "tlsmap.h"

namespace {
LIBSTATE sLibState; // zeroed static storage
}
LIBSTATE* const gpLibState = &sLibState;

CRSect gCRDatePicSect;  // 1
TLSSlot gTLSNumPicSlot; // 2: the first TLS_AllocIndex also takes the platform slot
CRSect gCRProfileSect;  // 3
TLSSlot gTLSFmtSlot;    // 4
TLSSlot gTLSPrintSlot;  // 5
CRSect gCRMainSect;     // 6
TLSThreadMap gTLSThreadMap; // 7

CR_SECT* gpCRSECTMain = nullptr;

namespace {

struct MainRegionPointer { // 8
    MainRegionPointer() { gpCRSECTMain = gCRMainSect.Get(); }
    ~MainRegionPointer() { gpCRSECTMain = nullptr; }
} sMainRegionPointer;

// Last: where the system has no load notification of its own, the backend
// runs the attach step here, after every initialiser above, and the detach
// step before any finaliser.
struct LoadNotification {
    LoadNotification() { OslLibraryLoaded(); }
    ~LoadNotification() { OslLibraryUnloading(); }
} sLoadNotification;

} // namespace
