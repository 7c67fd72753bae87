// The Setup button of PRTSETUP: the driver's own settings dialog on the
// working printer, its answer becoming the dialog's work device mode.
#include "print/print.h"

#include "os/osl.h"

#include <cstring>

namespace {

enum : DWORD { kPrompt = 6, kPromptWithInput = 14 };
enum : UINT { kIconInformation = 64 };

// The caller's text, when given, once the driver changed the settings.
void tellChanged(const PrintSetupData* d) {
    if (!d->hMsgInstance || !d->dwMsgId) return;
    char caption[40] = "", text[512] = "";
    gOsl.printerSetup->GetWindowTextA(d->hDialog, caption, sizeof caption);
    gOsl.profile->LoadStringA(d->hMsgInstance, d->dwMsgId, text, sizeof text);
    gOsl.window->MessageBoxA(d->hDialog, text, caption, kIconInformation);
}

LONG runDriver(PrintSetupData* d, HANDLE printer, LPDEVMODEA out, LPDEVMODEA in) {
    size_t n = std::strlen(d->szPort);
    char* colon = n && d->szPort[n - 1] == ':' ? d->szPort + n - 1 : nullptr;
    LONG r = gOsl.graphics->DocumentPropertiesA(d->hDialog, printer, d->szDevice, out, in, in ? kPromptWithInput : kPrompt);
    if (colon && !*colon) *colon = ':'; // some drivers cut the port's colon
    return r;
}

} // namespace

void PrintRunDriverSetup(PrintSetupData* d) {
    const OslMemoryService* mem = gOsl.memory;
    HANDLE printer = nullptr;
    if (!gOsl.graphics->OpenPrinterA(d->szDevice, &printer, nullptr)) return;
    LONG size = gOsl.graphics->DocumentPropertiesA(d->hDialog, printer, d->szDevice, nullptr, nullptr, 0);
    if (size < 0) size = PrintDevModeHint(printer);
    HGLOBAL block = size > 0 ? mem->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, SIZE_T(size)) : nullptr;
    LPDEVMODEA out = block ? static_cast<LPDEVMODEA>(mem->GlobalLock(block)) : nullptr;
    LPDEVMODEA in = out && d->hWorkDevMode ? static_cast<LPDEVMODEA>(mem->GlobalLock(d->hWorkDevMode)) : nullptr;
    if (out && runDriver(d, printer, out, in) == IDOK) {
        SIZE_T had = in ? mem->GlobalSize(d->hWorkDevMode) : 0;
        if (in && std::memcmp(in, out, had < SIZE_T(size) ? had : SIZE_T(size)) != 0) tellChanged(d);
        if (in) mem->GlobalUnlock(d->hWorkDevMode);
        if (d->hWorkDevMode) mem->GlobalFree(d->hWorkDevMode);
        mem->GlobalUnlock(block);
        d->hWorkDevMode = block, block = nullptr;
    } else if (in) {
        mem->GlobalUnlock(d->hWorkDevMode);
    }
    if (out && block) mem->GlobalUnlock(block);
    if (block) mem->GlobalFree(block);
    gOsl.graphics->ClosePrinter(printer);
}
