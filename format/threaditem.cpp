// The formatting engine's per-thread item, in the library's slot for it.
#include "fmtint.h"

#include "core/libstate.h"
#include "core/tls.h"

namespace {
const TLSItem<FMTTHREADITEM> sItem(gTLSFmtSlot);
}

FMTTHREADITEM* FMTThreadItem(void) { return sItem.Get(); }
