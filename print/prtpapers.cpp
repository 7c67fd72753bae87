// The paper and bin lists of a printer, as blocks of fixed-size entries that
// the host owns: what the device's capability lists say under a device mode.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

struct List { WORD what; SIZE_T entry; };
const List kPapers[] = {{DC_PAPERS, 2}, {DC_PAPERSIZE, 8}, {DC_PAPERNAMES, 64}};
const List kBins[] = {{DC_BINS, 2}, {DC_BINNAMES, 24}};
enum { kMostLists = 3 };

void freeAll(HGLOBAL* blocks, int n) {
    for (int i = 0; i < n; ++i)
        if (blocks[i]) gOsl.memory->GlobalFree(blocks[i]);
}

// The `n` lists of `count` entries filled; false, nothing left, when memory is out.
bool fill(LPCSTR device, LPCSTR port, const DEVMODEA* m, const List* lists, int n, int count, HGLOBAL* blocks) {
    const OslMemoryService* mem = gOsl.memory;
    for (int i = 0; i < n; ++i) blocks[i] = mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, SIZE_T(count) * lists[i].entry);
    for (int i = 0; i < n; ++i) {
        LPSTR out = blocks[i] ? static_cast<LPSTR>(mem->GlobalLock(blocks[i])) : nullptr;
        if (!out) return freeAll(blocks, n), false;
        gOsl.printerSetup->DeviceCapabilitiesA(device, port, lists[i].what, out, m);
        mem->GlobalUnlock(blocks[i]);
    }
    return true;
}

// The count of the first list, its blocks in *out[]; -1 without a device
// mode or lists, 0 when the printer can't be opened.
int capabilityLists(LPCSTR device, LPCSTR port, const DEVMODEA* given, const List* lists, int n, HGLOBAL** out) {
    HANDLE printer = nullptr;
    if (!device || !gOsl.graphics->OpenPrinterA(const_cast<LPSTR>(device), &printer, nullptr)) return 0;
    HGLOBAL own = nullptr;
    const DEVMODEA* m = given ? given : PrintDefaultDevMode(printer, const_cast<LPSTR>(device), &own);
    int count = m ? gOsl.printerSetup->DeviceCapabilitiesA(device, port, lists[0].what, nullptr, m) : -1;
    HGLOBAL blocks[kMostLists] = {};
    if (count < 1 || !fill(device, port, m, lists, n, count, blocks)) count = -1;
    if (own) gOsl.memory->GlobalUnlock(own), gOsl.memory->GlobalFree(own);
    for (int i = 0; count > 0 && i < n; ++i) *out[i] = blocks[i];
    gOsl.graphics->ClosePrinter(printer);
    return count;
}

} // namespace

void* PrintCapabilityList(LPCSTR device, LPCSTR port, WORD what, int count, size_t bytes, const DEVMODEA* m) {
    void* list = count > 0 ? MemAlloc(DWORD(size_t(count) * bytes)) : nullptr;
    if (list && gOsl.printerSetup->DeviceCapabilitiesA(device, port, what, static_cast<LPSTR>(list), m) != count) MemFree(list), list = nullptr;
    return list;
}

int OXLAPI PrintGetPageSizes(LPCSTR device, LPCSTR, LPCSTR port, const DEVMODEA* mode, HGLOBAL* codes, HGLOBAL* sizes,
                             HGLOBAL* names) {
    HGLOBAL* out[] = {codes, sizes, names};
    if (!codes || !sizes || !names) return -1;
    return capabilityLists(device, port, mode, kPapers, 3, out);
}

int OXLAPI PrintGetPaperBins(LPCSTR device, LPCSTR, LPCSTR port, const DEVMODEA* mode, HGLOBAL* numbers, HGLOBAL* names) {
    HGLOBAL* out[] = {numbers, names};
    if (!numbers || !names) return -1;
    return capabilityLists(device, port, mode, kBins, 2, out);
}
