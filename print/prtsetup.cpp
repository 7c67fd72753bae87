// The printer setup dialog as a host calls it: one run of PRTSETUP, the test
// of whether the user changed anything, and for a change the profile's
// default printer line, the saved setup and the caller's new device mode.
#include "print/print.h"

#include "core/libstate.h"
#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

const HWND kBroadcast = reinterpret_cast<HWND>(static_cast<uintptr_t>(0xFFFF));
enum : UINT { kWinIniChange = 26, kAbortIfHung = 3 };

// The low 16 bits of the block's size, as the dialog's change test measures it.
struct Snapshot { BYTE* bytes; SIZE_T size; };

Snapshot takeSnapshot(HGLOBAL mode) {
    const OslMemoryService* mem = gOsl.memory;
    Snapshot s = {nullptr, mode ? mem->GlobalSize(mode) & 0xFFFF : 0};
    const void* in = s.size ? mem->GlobalLock(mode) : nullptr;
    s.bytes = in ? static_cast<BYTE*>(MemAlloc(DWORD(s.size))) : nullptr;
    if (s.bytes) std::memcpy(s.bytes, in, s.size);
    if (in) mem->GlobalUnlock(mode);
    return s;
}

bool sameBytes(HGLOBAL mode, const Snapshot& s) {
    const OslMemoryService* mem = gOsl.memory;
    if (!mode || mem->GlobalSize(mode) != s.size) return false;
    const void* in = mem->GlobalLock(mode);
    bool same = in && std::memcmp(in, s.bytes, s.size) == 0;
    if (in) mem->GlobalUnlock(mode);
    return same;
}

bool sameNames(const PrintSetupData& d) {
    const OslTextService* t = gOsl.text;
    return !t->lstrcmpA(d.lpDriver, d.szDriver) && !t->lstrcmpA(d.lpDevice, d.szDevice) && !t->lstrcmpA(d.lpPort, d.szPort);
}

// The profile's default printer line "device,driver,port", flushed, and
// every top-level window told.
void writeDefaultPrinter(const PrintSetupData& d) {
    size_t n = std::strlen(d.szDevice) + std::strlen(d.szDriver) + std::strlen(d.szPort) + 3;
    char* line = static_cast<char*>(MemAlloc(DWORD(n)));
    if (!line) return;
    std::strcat(std::strcat(std::strcat(std::strcat(std::strcpy(line, d.szDevice), ","), d.szDriver), ","), d.szPort);
    gOsl.profile->WriteProfileStringA("windows", "device", line);
    gOsl.profile->WriteProfileStringA(nullptr, nullptr, nullptr);
    MemFree(line);
    gOsl.window->SendMessageTimeoutA(kBroadcast, kWinIniChange, 0, 0, 0, 1000, nullptr);
}

// A confirmed change: the names and device mode go to the caller and the
// saved setup; a new printer also to the profile.
void confirm(PrintSetupData& d) {
    if (!sameNames(d)) writeDefaultPrinter(d);
    PrintSetupStore(d.szDevice, d.szDriver, d.szPort, d.hWorkDevMode);
    if (d.phDevMode) *d.phDevMode = d.hWorkDevMode;
    else if (d.hWorkDevMode) gOsl.memory->GlobalFree(d.hWorkDevMode);
    d.hWorkDevMode = nullptr;
    std::strcpy(d.lpDriver, d.szDriver), std::strcpy(d.lpDevice, d.szDevice), std::strcpy(d.lpPort, d.szPort);
    if (d.hStartDevMode) gOsl.memory->GlobalFree(d.hStartDevMode);
}

} // namespace

BOOL OXLAPI PrintPrinterSetupExt(HWND owner, HGLOBAL* devMode, LPSTR device, LPSTR driver, LPSTR port, LPCSTR,
                                 BOOL skipNone, HINSTANCE messageInstance, UINT messageId) {
    PrintSetupData* d = device && driver && port ? static_cast<PrintSetupData*>(MemAlloc(sizeof(PrintSetupData))) : nullptr;
    if (!d) return FALSE;
    *d = {nullptr, owner, devMode, devMode ? *devMode : nullptr, device, driver, port, nullptr, DWORD(skipNone != 0),
          {}, {}, {}, nullptr, nullptr, messageInstance, messageId};
    bool fetched = !d->hStartDevMode;
    if (fetched) d->hStartDevMode = PrintSetupFetch(device, driver, port);
    Snapshot snapshot = takeSnapshot(d->hStartDevMode);
    INT_PTR ended = gOsl.window->DialogBoxParamA(gpLibState->hInstance, "PRTSETUP", owner, PrintPrinterSetupDlgProc,
                                                 reinterpret_cast<LPARAM>(d));
    // A dialog that could not be shown (-1) filled in no names: nothing to confirm or announce.
    BOOL result = ended == 1;
    bool announce = ended != -1;
    if (snapshot.bytes && sameBytes(result ? d->hWorkDevMode : d->hStartDevMode, snapshot) && sameNames(*d))
        result = FALSE, announce = false;
    MemFree(snapshot.bytes);
    if (result) {
        confirm(*d);
    } else {
        if (d->hWorkDevMode) gOsl.memory->GlobalFree(d->hWorkDevMode);
        if (fetched && d->hStartDevMode) gOsl.memory->GlobalFree(d->hStartDevMode); // our copy, not the caller's
    }
    MemFree(d);
    DWORD_PTR answer = 0;
    if (announce)
        gOsl.window->SendMessageTimeoutA(kBroadcast, kWinIniChange, 0, reinterpret_cast<LPARAM>("windows"), kAbortIfHung, 2000,
                                         &answer);
    return result;
}

BOOL OXLAPI PrintPrinterSetup(HWND owner, HGLOBAL* devMode, LPSTR device, LPSTR driver, LPSTR port, LPCSTR text) {
    return PrintPrinterSetupExt(owner, devMode, device, driver, port, text, FALSE, nullptr, 0);
}

// The printer's settings can be edited when it opens; whether its device
// mode can be read doesn't enter into it.
BOOL OXLAPI PrintCanDoPrinterSetup(HWND, LPCSTR device) {
    HANDLE printer = nullptr;
    if (!gOsl.graphics->OpenPrinterA(const_cast<LPSTR>(device), &printer, nullptr)) return FALSE;
    gOsl.graphics->ClosePrinter(printer);
    return TRUE;
}
