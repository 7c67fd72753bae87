// The printer setup the user last confirmed in this process: its three names
// and a private copy of its device mode. Later setup dialogs and
// PrintGetDevMode start from it when they ask for the same printer. The main
// region guards it; callers only ever get copies.
#include "print/print.h"

#include "core/crsect.h"
#include "os/osl.h"

#include <cstring>

namespace {

struct PrintSavedSetup {
    HGLOBAL hDevMode; // the copy, 0 when none
    char szDevice[PRINT_NAME_BYTES], szDriver[PRINT_NAME_BYTES], szPort[PRINT_NAME_BYTES];
};
// The record lives in one movable block, held locked while it exists; both
// are null when there is none.
HGLOBAL sSavedBlock;
PrintSavedSetup* sSaved;

LPCSTR text(LPCSTR s) { return s ? s : ""; }

PrintSavedSetup* savedRecord() {
    const OslMemoryService* mem = gOsl.memory;
    if (sSaved) return sSaved;
    sSavedBlock = mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(PrintSavedSetup));
    sSaved = sSavedBlock ? static_cast<PrintSavedSetup*>(mem->GlobalLock(sSavedBlock)) : nullptr;
    if (!sSaved && sSavedBlock) mem->GlobalFree(sSavedBlock), sSavedBlock = nullptr;
    return sSaved;
}

} // namespace

HGLOBAL PrintCopyBlock(HGLOBAL from) {
    const OslMemoryService* mem = gOsl.memory;
    SIZE_T bytes = from ? mem->GlobalSize(from) : 0;
    HGLOBAL to = bytes ? mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes) : nullptr;
    void* out = to ? mem->GlobalLock(to) : nullptr;
    const void* in = out ? mem->GlobalLock(from) : nullptr;
    if (in) std::memcpy(out, in, bytes), mem->GlobalUnlock(from);
    if (out) mem->GlobalUnlock(to);
    if (to && !in) mem->GlobalFree(to), to = nullptr;
    return to;
}

void PrintSetupStore(LPCSTR device, LPSTR driver, LPSTR port, HGLOBAL mode) {
    PrintGetDevice(device, driver, port);
    CRSectGuard hold(gCRMainSect);
    if (sSaved && sSaved->hDevMode) gOsl.memory->GlobalFree(sSaved->hDevMode), sSaved->hDevMode = nullptr;
    PrintSavedSetup* s = savedRecord();
    if (!s) return;
    PrintCopyName(s->szDevice, device), PrintCopyName(s->szDriver, driver), PrintCopyName(s->szPort, port);
    s->hDevMode = PrintCopyBlock(mode);
}

HGLOBAL PrintSetupFetch(LPCSTR device, LPSTR driver, LPSTR port) {
    PrintGetDevice(device, driver, port);
    CRSectGuard hold(gCRMainSect);
    const OslTextService* t = gOsl.text;
    if (!sSaved || !sSaved->hDevMode || t->lstrcmpA(text(device), sSaved->szDevice) ||
        t->lstrcmpA(text(driver), sSaved->szDriver) || t->lstrcmpA(text(port), sSaved->szPort))
        return nullptr;
    return PrintCopyBlock(sSaved->hDevMode);
}

void OXLAPI PrtClearSaved(void) {
    CRSectGuard hold(gCRMainSect);
    if (!sSaved) return;
    const OslMemoryService* mem = gOsl.memory;
    if (sSaved->hDevMode) mem->GlobalFree(sSaved->hDevMode);
    mem->GlobalUnlock(sSavedBlock), mem->GlobalFree(sSavedBlock);
    sSavedBlock = nullptr, sSaved = nullptr;
}
