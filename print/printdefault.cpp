// The user's default printer: its names from the common dialog or the profile
// line, contexts on it, and any printer's driver, port and device mode.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/intl.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

enum : DWORD { kNameBytes = 260, kProfileBytes = 81 };
const WORD kDefaultDevModeBytes = 156;

// The next field of the profile line: leading blanks skipped, cut at the
// next comma (a whole character, never a trail byte), *rest after it.
LPSTR field(LPSTR at, LPSTR* rest) {
    LPSTR start = IntlStripStartSpace(at);
    LPSTR comma = IntlStrChr(start, ',');
    if (!comma) return nullptr;
    *comma = 0;
    *rest = comma + 1;
    return start;
}

BOOL fromProfile(LPSTR buffer, DWORD size, LPSTR* device, LPSTR* driver, LPSTR* port) {
    gOsl.profile->GetProfileStringA("Windows", "Device", "", buffer, size < kProfileBytes ? size : kProfileBytes);
    LPSTR rest = buffer, d = *buffer ? field(rest, &rest) : nullptr, r = d ? field(rest, &rest) : nullptr;
    if (!r) return FALSE;
    *device = d, *driver = r, *port = IntlStripStartSpace(rest);
    return TRUE;
}

// The common dialog's DEVNAMES block copied whole into the buffer.
BOOL fromDevNames(HGLOBAL names, LPSTR buffer, DWORD size, LPSTR* device, LPSTR* driver, LPSTR* port) {
    const void* block = gOsl.memory->GlobalLock(names);
    if (!block) return FALSE;
    SIZE_T bytes = gOsl.memory->GlobalSize(names);
    DEVNAMES n = {};
    BOOL fits = bytes >= sizeof n && bytes < size;
    if (fits) {
        std::memcpy(buffer, block, bytes);
        buffer[bytes] = 0;
        std::memcpy(&n, block, sizeof n);
        fits = n.wDeviceOffset < bytes && n.wDriverOffset < bytes && n.wOutputOffset < bytes;
    }
    gOsl.memory->GlobalUnlock(names);
    if (fits) *device = buffer + n.wDeviceOffset, *driver = buffer + n.wDriverOffset, *port = buffer + n.wOutputOffset;
    return fits;
}

DWORD devModeBytes(const DEVMODEA* mode) { return mode ? DWORD(mode->dmSize) + mode->dmDriverExtra : 0; }

HDC open(bool information, const DEVMODEA* mode) {
    char buffer[84];
    LPSTR device, driver, port;
    PrintDefaultNames(buffer, sizeof buffer, &device, &driver, &port);
    if (!device || !driver || !port) return nullptr;
    return (information ? gOsl.graphics->CreateICA : gOsl.graphics->CreateDCA)(driver, device, port, mode);
}

} // namespace

PRINTER_INFO_2A* PrintPrinterInfo(HANDLE printer) {
    DWORD bytes = 0;
    gOsl.graphics->GetPrinterA(printer, 2, nullptr, 0, &bytes);
    void* block = bytes ? MemAlloc(bytes) : nullptr;
    if (block && gOsl.graphics->GetPrinterA(printer, 2, static_cast<LPBYTE>(block), bytes, &bytes)) return static_cast<PRINTER_INFO_2A*>(block);
    MemFree(block);
    return nullptr;
}

LONG PrintDevModeHint(HANDLE printer) {
    PRINTER_INFO_2A* info = PrintPrinterInfo(printer);
    DWORD hint = info ? devModeBytes(info->pDevMode) : 0;
    MemFree(info);
    return LONG(hint ? hint : kDefaultDevModeBytes);
}

void PrintCopyName(LPSTR out, LPCSTR name) {
    if (!out) return;
    size_t n = std::strlen(name ? name : "");
    n = n < kNameBytes ? n : kNameBytes - 1;
    std::memcpy(out, name ? name : "", n);
    out[n] = 0;
}

BOOL PrintDefaultNames(LPSTR buffer, DWORD size, LPSTR* device, LPSTR* driver, LPSTR* port) {
    *device = *driver = *port = nullptr;
    PRINTDLGA dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.Flags = PD_RETURNDEFAULT;
    if (!gOsl.graphics->PrintDlgA(&dialog) && gOsl.graphics->CommDlgExtendedError())
        return fromProfile(buffer, size, device, driver, port);
    BOOL found = FALSE;
    if (dialog.hDevNames) {
        found = fromDevNames(dialog.hDevNames, buffer, size, device, driver, port);
        gOsl.memory->GlobalFree(dialog.hDevNames);
    }
    if (dialog.hDevMode) gOsl.memory->GlobalFree(dialog.hDevMode);
    return found;
}

LPDEVMODEA PrintDefaultDevMode(HANDLE printer, LPSTR name, HGLOBAL* block) {
    LONG hint = PrintDevModeHint(printer);
    LONG bytes = gOsl.graphics->DocumentPropertiesA(nullptr, printer, name, nullptr, nullptr, 0);
    if (bytes < 0) bytes = hint;
    PRINTER_INFO_2A* info;
    *block = gOsl.memory->GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, SIZE_T(bytes));
    LPDEVMODEA mode = *block ? static_cast<LPDEVMODEA>(gOsl.memory->GlobalLock(*block)) : nullptr;
    if (!mode) {
        if (*block) gOsl.memory->GlobalFree(*block);
        *block = nullptr;
        return nullptr;
    }
    if (gOsl.graphics->DocumentPropertiesA(nullptr, printer, name, mode, nullptr, DM_OUT_BUFFER) < 0 && (info = PrintPrinterInfo(printer))) {
        DWORD have = devModeBytes(info->pDevMode);
        std::memcpy(mode, info->pDevMode, have < DWORD(bytes) ? have : DWORD(bytes));
        MemFree(info);
    }
    return mode;
}

HDC OXLAPI PrintCreateDefaultPrinterDC(void) { return open(false, nullptr); }
HDC OXLAPI PrintCreateDefaultPrinterDCExt(const DEVMODEA* mode) { return open(false, mode); }
HDC OXLAPI PrintCreateDefaultPrinterIC(void) { return open(true, nullptr); }

BOOL OXLAPI PrintGetDefaultPrinter(LPSTR device, LPSTR driver, LPSTR port) {
    char buffer[3 * kNameBytes];
    LPSTR d, r, p;
    if (!PrintDefaultNames(buffer, sizeof buffer, &d, &r, &p)) return FALSE;
    PrintCopyName(device, d), PrintCopyName(driver, r), PrintCopyName(port, p);
    return TRUE;
}

BOOL OXLAPI PrintGetDevice(LPCSTR name, LPSTR driver, LPSTR port) {
    HANDLE printer = nullptr;
    if (!gOsl.graphics->OpenPrinterA(const_cast<LPSTR>(name), &printer, nullptr)) return FALSE;
    PRINTER_INFO_2A* info = PrintPrinterInfo(printer);
    if (info) PrintCopyName(driver, info->pDriverName), PrintCopyName(port, info->pPortName);
    MemFree(info);
    gOsl.graphics->ClosePrinter(printer);
    return info != nullptr;
}
