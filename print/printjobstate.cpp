// The job slots of a thread: a movable, zero-filled array of PrintJobState
// kept locked while any slot is in use, growing by 2, freed when the last
// job of the thread ends.
#include "print/print.h"

#include "core/libstate.h"
#include "core/tls.h"
#include "os/osl.h"

#include <cstring>

namespace {

struct PrintThreadState {
    HGLOBAL hSlots;
    PrintJobState* pSlots;
    int nSlots;
    LONG bInStartDoc;
};

constexpr int kGrowBy = 2;

PrintThreadState* threadState() {
    static const TLSItem<PrintThreadState> item(gTLSPrintSlot);
    return item.Get();
}

PrintJobState* takeFree(PrintThreadState* t, HDC dc) {
    for (int i = 0; i < t->nSlots; ++i)
        if (!t->pSlots[i].hDC) {
            std::memset(&t->pSlots[i], 0, sizeof(PrintJobState));
            t->pSlots[i].hDC = dc;
            return &t->pSlots[i];
        }
    return nullptr;
}

bool grow(PrintThreadState* t) {
    const OslMemoryService* mem = gOsl.memory;
    SIZE_T bytes = SIZE_T(t->nSlots + kGrowBy) * sizeof(PrintJobState);
    if (!t->hSlots) {
        HGLOBAL h = mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
        void* p = h ? mem->GlobalLock(h) : nullptr;
        if (!p) {
            if (h) mem->GlobalFree(h);
            return false;
        }
        *t = {h, static_cast<PrintJobState*>(p), kGrowBy, t->bInStartDoc};
        return true;
    }
    mem->GlobalUnlock(t->hSlots);
    HGLOBAL h = mem->GlobalReAlloc(t->hSlots, bytes, GMEM_MOVEABLE | GMEM_ZEROINIT);
    if (!h) {
        t->pSlots = static_cast<PrintJobState*>(mem->GlobalLock(t->hSlots));
        return false;
    }
    void* p = mem->GlobalLock(h);
    if (!p) {
        mem->GlobalFree(h);
        *t = {nullptr, nullptr, 0, t->bInStartDoc};
        return false;
    }
    t->hSlots = h;
    t->pSlots = static_cast<PrintJobState*>(p);
    t->nSlots += kGrowBy;
    return true;
}

} // namespace

PrintJobState* PrintJobStateForDC(HDC dc) {
    if (!dc) return nullptr;
    PrintThreadState* t = threadState();
    if (!t) return nullptr;
    if (!t->hSlots && !grow(t)) return nullptr;
    for (int i = 0; i < t->nSlots; ++i)
        if (t->pSlots[i].hDC == dc) return &t->pSlots[i];
    if (PrintJobState* s = takeFree(t, dc)) return s;
    return grow(t) ? takeFree(t, dc) : nullptr;
}

PrintJobState* PrintJobStateForDialog(HWND dialog) {
    PrintThreadState* t = threadState();
    if (!t || !dialog) return nullptr;
    for (int i = 0; i < t->nSlots; ++i)
        if (t->pSlots[i].hDialog == dialog) return &t->pSlots[i];
    return nullptr;
}

void PrintJobStateRelease(HDC dc) {
    PrintThreadState* t = threadState();
    if (!t || !t->hSlots) return;
    bool inUse = false;
    for (int i = 0; i < t->nSlots; ++i) {
        if (t->pSlots[i].hDC == dc) std::memset(&t->pSlots[i], 0, sizeof(PrintJobState));
        inUse = inUse || t->pSlots[i].hDC;
    }
    if (inUse) return;
    gOsl.memory->GlobalUnlock(t->hSlots);
    gOsl.memory->GlobalFree(t->hSlots);
    *t = {nullptr, nullptr, 0, t->bInStartDoc};
}

int PrintJobSlotCount(void) {
    PrintThreadState* t = threadState();
    return t ? t->nSlots : 0;
}

void PrintJobSetInStartDoc(BOOL inside) {
    if (PrintThreadState* t = threadState()) t->bInStartDoc = inside;
}
BOOL PrintJobInStartDoc(void) {
    PrintThreadState* t = threadState();
    return t && t->bInStartDoc;
}
