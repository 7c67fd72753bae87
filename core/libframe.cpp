// Load, thread exit and unload. The static objects (core/libstatics.cpp) are
// made before the attach step and unmade after the detach step.
#include "libstate.h"

#include "../format/fmtint.h"
#include <oxlrt31/intl.h>
#include "../os/osl.h"
#include "../print/print.h"
#include "tls.h"

namespace {

void processAttach(HINSTANCE instance) {
    LIBSTATE& s = *gpLibState;
    if (!s.hInstance) { // load work runs once per process
        s.hInstance = instance;
        s.dwPlatformId = gOsl.system->GetPlatformId();
        IntlInit();
        FMTLoadCalendarText(); // on failure, the name lookups retry
        s.bProfileStale = 1;   // the profile is read by its first user
    }
    TLSpEnsurePlatformSlot();
}

void processDetach() {
    TLS_FreeAll();
    TLSpReleasePlatformSlot();
    PrtClearSaved();
}

} // namespace

BOOL LibEntry(HINSTANCE instance, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH: processAttach(instance); break;
    case DLL_THREAD_DETACH: TLS_FreeAll(); break;
    case DLL_PROCESS_DETACH: processDetach(); break;
    default: break; // a thread gets its block at its first use of an item
    }
    return 1;
}
