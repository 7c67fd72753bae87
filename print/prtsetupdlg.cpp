// The dialog PRTSETUP: a row for every printer and each of its ports, the
// printer of the selected row as the working choice, and the driver's own
// settings dialog behind the Setup button.
//
// The spooler's list lives from the list's filling to WM_DESTROY in the two
// statics below; one setup dialog is open in a process at a time.
#include "print/print.h"

#include "core/libstate.h"
#include "os/osl.h"
#include "ui/dlg.h"
#include <oxlrt31/intl.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

const char kProperty[] = "DlgPrinterSetupData";
enum { kIdOk = 1, kIdCancel = 2, kIdSetup = 4, kIdList = 900 };
enum { kStrOn = 1964, kStrRow = 1966, kStrNone = 1967 };
enum : UINT { kLbAddString = 384, kLbGetCurSel = 392, kLbGetText = 393, kLbSelectString = 396 };
enum : UINT { kSelChange = 1, kDoubleClick = 2, kCallerHook = 33791, kWaitCursor = 32514, kIconInformation = 64 };
enum { kRowBytes = 2 * PRINT_NAME_BYTES + 64 };

LPBYTE sEnum;
int sEnumCount;

const PRINTER_INFO_2A* printers() { return reinterpret_cast<const PRINTER_INFO_2A*>(sEnum); }

HINSTANCE library() { return gpLibState->hInstance; }

struct RowMaker { const PrintSetupData* d; LPCSTR format, printer; };
void addRow(LPCSTR port, void* data) {
    const RowMaker& m = *static_cast<const RowMaker*>(data);
    char row[kRowBytes];
    PrintFormatPair(row, sizeof row, m.format, m.printer, port);
    gOsl.window->SendMessageA(m.d->hList, kLbAddString, 0, reinterpret_cast<LPARAM>(row));
}

void enableSetup(const PrintSetupData* d, bool enable) { gOsl.window->EnableWindow(d->hSetup, enable); }

// `n` characters into `s`, a double-byte character counting once.
char* charactersIn(char* s, int n) {
    for (; n > 0 && *s; --n) s += IntlIsDBChar(s) && s[1] ? 2 : 1;
    return s;
}

INT_PTR initDialog(HWND dialog, PrintSetupData* d) {
    if (!d) return 0;
    gOsl.printerSetup->SetPropA(dialog, kProperty, d);
    d->hDialog = dialog;
    d->hList = gOsl.window->GetDlgItem(dialog, kIdList);
    d->hSetup = gOsl.window->GetDlgItem(dialog, kIdSetup);
    PrintFillPrinterList(d);
    gOsl.window->SetFocus(d->hList);
    DlgCenterDialog(dialog);
    return 0;
}

INT_PTR listNotice(PrintSetupData* d, UINT notice) {
    if (notice != kSelChange && notice != kDoubleClick) return 1;
    bool found = PrintSelectedPrinter(d);
    if (found && d->hWorkDevMode) gOsl.memory->GlobalFree(d->hWorkDevMode); // a new printer starts from nothing
    if (found) d->hWorkDevMode = nullptr;
    enableSetup(d, found && PrintCanDoPrinterSetup(nullptr, d->szDevice));
    if (notice == kDoubleClick) gOsl.window->SendMessageA(d->hDialog, WM_COMMAND, kIdOk, 0);
    return 1;
}

INT_PTR command(PrintSetupData* d, UINT id, UINT notice) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    switch (id) {
    case kIdOk: {
        HCURSOR old = ps->SetCursor(ps->LoadCursorA(nullptr, MAKEINTRESOURCEA(kWaitCursor)));
        ps->EndDialog(d->hDialog, 1);
        ps->SetCursor(old);
        return 1;
    }
    case kIdCancel: return ps->EndDialog(d->hDialog, 0), 1;
    case kIdSetup: return PrintRunDriverSetup(d), 1;
    case kIdList: return listNotice(d, notice);
    default: return 0;
    }
}

} // namespace

int PrintEnumPrinters(DWORD flags, LPSTR name, DWORD level, LPBYTE* out, DWORD* size) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    DWORD needed = 0, count = 0;
    *out = nullptr, *size = 0;
    if (ps->EnumPrintersA(flags, name, level, nullptr, 0, &needed, &count)) return 0;
    if (ps->GetLastError() != ERROR_INSUFFICIENT_BUFFER || !needed) return -1;
    LPBYTE block = static_cast<LPBYTE>(MemAlloc(needed));
    if (!block || !ps->EnumPrintersA(flags, name, level, block, needed, &needed, &count) || !count) {
        MemFree(block);
        return block && !count ? 0 : -1;
    }
    *out = block, *size = needed;
    return int(count);
}

void PrintFormatPair(LPSTR out, size_t size, LPCSTR format, LPCSTR a, LPCSTR b) {
    size_t n = 0;
    int used = 0;
    for (const char* f = format; *f && n + 1 < size; ++f) {
        if (f[0] != '%' || f[1] != 's' || used == 2) {
            out[n++] = *f;
            continue;
        }
        for (const char* s = used++ ? b : a; *s && n + 1 < size; ++s) out[n++] = *s;
        ++f;
    }
    out[n] = 0;
}

void PrintEachPort(LPCSTR ports, LPCSTR none, void (*part)(LPCSTR port, void* data), void* data) {
    char port[PRINT_NAME_BYTES];
    for (const char* at = ports; at && *at;) {
        const char* comma = IntlStrChr(at, ',');
        size_t n = comma ? size_t(comma - at) : std::strlen(at);
        n = n < sizeof port ? n : sizeof port - 1;
        std::memcpy(port, at, n);
        port[n] = 0;
        if (*port && !(none && IntlIsStrEqual(port, none))) part(port, data);
        at = comma ? IntlStripStartSpace(comma + 1) : nullptr;
    }
}

void PrintFillPrinterList(PrintSetupData* d) {
    const OslProfileService* res = gOsl.profile;
    DWORD size = 0;
    sEnumCount = PrintEnumPrinters(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 2, &sEnum, &size);
    char format[PRINT_NAME_BYTES] = "", none[PRINT_NAME_BYTES] = "";
    res->LoadStringA(library(), kStrRow, format, sizeof format);
    res->LoadStringA(library(), kStrNone, none, sizeof none);
    for (int i = 0; i < sEnumCount; ++i) {
        RowMaker maker = {d, format, printers()[i].pPrinterName};
        PrintEachPort(printers()[i].pPortName, d->bSkipNone ? none : nullptr, addRow, &maker);
    }
    if (*d->lpDevice) {
        char start[kRowBytes];
        PrintFormatPair(start, sizeof start, format, d->lpDevice, "");
        gOsl.window->SendMessageA(d->hList, kLbSelectString, WPARAM(-1), reinterpret_cast<LPARAM>(start));
        PrintCopyName(d->szDevice, d->lpDevice), PrintCopyName(d->szDriver, d->lpDriver), PrintCopyName(d->szPort, d->lpPort);
    }
    enableSetup(d, *d->szDriver && PrintCanDoPrinterSetup(nullptr, d->szDevice));
    if (d->hStartDevMode) d->hWorkDevMode = PrintCopyBlock(d->hStartDevMode);
}

BOOL PrintSelectedPrinter(PrintSetupData* d) {
    const OslWindowService* win = gOsl.window;
    char row[kRowBytes] = "", on[16] = "";
    LRESULT selected = win->SendMessageA(d->hList, kLbGetCurSel, 0, 0);
    if (selected < 0 || win->SendMessageA(d->hList, kLbGetText, WPARAM(selected), reinterpret_cast<LPARAM>(row)) < 0) return FALSE;
    gOsl.profile->LoadStringA(library(), kStrOn, on, sizeof on);
    int at = *on ? IntlStrScan(row, on) : -1;
    if (at < 0) return FALSE;
    *charactersIn(row, at) = 0;
    PrintCopyName(d->szDevice, row);
    for (int i = 0; i < sEnumCount; ++i) {
        const PRINTER_INFO_2A& p = printers()[i];
        if (!p.pPrinterName || gOsl.text->lstrcmpiA(p.pPrinterName, d->szDevice)) continue;
        PrintCopyName(d->szDriver, p.pDriverName), PrintCopyName(d->szPort, p.pPortName);
        return TRUE;
    }
    return FALSE;
}

INT_PTR OXLAPI PrintPrinterSetupDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return initDialog(dialog, reinterpret_cast<PrintSetupData*>(lParam));
    PrintSetupData* d = static_cast<PrintSetupData*>(gOsl.printerSetup->GetPropA(dialog, kProperty));
    switch (message) {
    case WM_COMMAND: return d ? command(d, LOWORD(wParam), HIWORD(wParam)) : 0;
    case WM_DESTROY:
        MemFree(sEnum), sEnum = nullptr, sEnumCount = 0;
        gOsl.printerSetup->RemovePropA(dialog, kProperty);
        return 1;
    case kCallerHook:
        if (lParam) reinterpret_cast<void(OXLCALLBACK*)(int, int)>(lParam)(1, 170);
        return 1;
    default: return 0;
    }
}
