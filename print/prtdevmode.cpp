// PrintGetDevMode: a device mode for a printer with the paper, orientation
// and bin a host asks for, started from the setup the user last confirmed
// for that printer or from the printer's default, the request merged field
// by field where the device mode announces the field.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

enum : WORD { kKeepPaper = 0, kCustomPaper = DMPAPER_USER };
enum : DWORD { kMerge = 10 }; // DM_COPY | DM_MODIFY
enum { kNameBytes = 64, kFormNameBytes = 32 };

struct Request { WORD orientation, paper, bin; };

bool announces(const DEVMODEA* m, DWORD field) { return (m->dmFields & field) != 0; }

// Each announced field among paper, orientation and bin equals the request.
bool agrees(const DEVMODEA* m, const Request& r) {
    return (!announces(m, DM_PAPERSIZE) || WORD(m->dmPaperSize) == r.paper) &&
           (!announces(m, DM_ORIENTATION) || m->dmOrientation - 1 == r.orientation) &&
           (!announces(m, DM_DEFAULTSOURCE) || WORD(m->dmDefaultSource) == r.bin);
}

// A saved device mode serves as it stands for paper 0 and for a listed paper it agrees with.
bool savedServes(HGLOBAL saved, const Request& r) {
    if (r.paper == kKeepPaper) return true;
    if (r.paper == kCustomPaper) return false;
    const DEVMODEA* m = static_cast<const DEVMODEA*>(gOsl.memory->GlobalLock(saved));
    bool serves = m && agrees(m, r);
    if (m) gOsl.memory->GlobalUnlock(saved);
    return serves;
}

// Paper i of the device's lists into the announced fields of `m`.
void setListedPaper(LPCSTR device, LPCSTR port, LPDEVMODEA m, const Request& r, int i, const char* names, int n) {
    if (announces(m, DM_PAPERSIZE)) m->dmPaperSize = short(r.paper);
    if (announces(m, DM_FORMNAME) && i < n) {
        std::memset(m->dmFormName, 0, kFormNameBytes);
        std::memcpy(m->dmFormName, names + size_t(i) * kNameBytes, strnlen(names + size_t(i) * kNameBytes, kFormNameBytes - 1));
    }
    if (announces(m, DM_DEFAULTSOURCE)) m->dmDefaultSource = short(r.bin);
    if (announces(m, DM_ORIENTATION)) m->dmOrientation = r.orientation ? 2 : 1;
    if (!announces(m, DM_PAPERLENGTH | DM_PAPERWIDTH)) return;
    int count = gOsl.printerSetup->DeviceCapabilitiesA(device, port, DC_PAPERSIZE, nullptr, m);
    POINT* sizes = i < count ? static_cast<POINT*>(PrintCapabilityList(device, port, DC_PAPERSIZE, count, sizeof(POINT), m)) : nullptr;
    if (sizes) m->dmPaperLength = short(sizes[i].y), m->dmPaperWidth = short(sizes[i].x);
    MemFree(sizes);
}

// A listed paper: a new block merged by the driver from `m` with the paper
// set; null when the default device mode stays the result.
HGLOBAL listedPaper(HANDLE printer, LPCSTR device, LPCSTR port, HGLOBAL block, LPDEVMODEA m, const Request& r) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    if (agrees(m, r)) return nullptr;
    int n = ps->DeviceCapabilitiesA(device, port, DC_PAPERS, nullptr, m);
    int names = ps->DeviceCapabilitiesA(device, port, DC_PAPERNAMES, nullptr, m);
    WORD* codes = n > 0 && names > 0 ? static_cast<WORD*>(PrintCapabilityList(device, port, DC_PAPERS, n, sizeof(WORD), m)) : nullptr;
    char* text = codes ? static_cast<char*>(PrintCapabilityList(device, port, DC_PAPERNAMES, names, kNameBytes, m)) : nullptr;
    int i = 0;
    while (text && i < n && codes[i] != r.paper) ++i;
    HGLOBAL fresh = text && i < n ? gOsl.memory->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, gOsl.memory->GlobalSize(block)) : nullptr;
    LPDEVMODEA out = fresh ? static_cast<LPDEVMODEA>(gOsl.memory->GlobalLock(fresh)) : nullptr;
    if (out) {
        setListedPaper(device, port, m, r, i, text, names);
        gOsl.graphics->DocumentPropertiesA(nullptr, printer, const_cast<LPSTR>(device), out, m, kMerge); // its failure isn't reported
        gOsl.memory->GlobalUnlock(fresh);
    } else if (fresh) {
        gOsl.memory->GlobalFree(fresh), fresh = nullptr;
    }
    MemFree(codes), MemFree(text);
    return fresh;
}

} // namespace

// A saved device mode that doesn't serve the request is discarded as a copy
// (the saved setup stays) and the request is merged into the printer's default.
HGLOBAL OXLAPI PrintGetDevMode(WORD orientation, LPCSTR device, LPSTR driver, LPSTR port, WORD paper, LONG width,
                               LONG height, WORD bin) {
    const Request r = {orientation, paper, bin};
    HGLOBAL saved = device ? PrintSetupFetch(device, driver, port) : nullptr;
    if (saved && savedServes(saved, r)) return saved;
    if (saved) gOsl.memory->GlobalFree(saved);
    HANDLE printer = nullptr;
    if (!device || !gOsl.graphics->OpenPrinterA(const_cast<LPSTR>(device), &printer, nullptr)) return nullptr;
    HGLOBAL block = nullptr;
    LPDEVMODEA m = PrintDefaultDevMode(printer, const_cast<LPSTR>(device), &block);
    HGLOBAL merged = nullptr;
    if (m && paper == kKeepPaper) m->dmOrientation = orientation ? 2 : 1;
    else if (m && paper == kCustomPaper) PrintApplyCustomSize(printer, device, driver, m, orientation, width, height, bin);
    else if (m) merged = listedPaper(printer, device, port, block, m, r);
    if (m) gOsl.memory->GlobalUnlock(block);
    if (merged) gOsl.memory->GlobalFree(block), block = merged;
    gOsl.graphics->ClosePrinter(printer);
    return block;
}
