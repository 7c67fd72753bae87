// A custom paper size: on a system with printer forms, a form of exactly the
// size (found, or registered as "OxleeCustomForm" in place of the last one)
// named in the device mode; without forms, the size itself.
//
// Units: requests in thousandths of an inch, forms in thousandths of a
// millimetre (x 25.406), device mode lengths in tenths of a millimetre
// (x 10 / 39.36), each truncated towards zero.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

char kFormName[] = "OxleeCustomForm";
enum : DWORD { kNoForms = 1, kForms = 2 };
enum { kFormNameBytes = 32 };

LONG truncated(double v) {
    if (v >= 2147483647.0) return 2147483647;
    if (v <= -2147483648.0) return -2147483647 - 1;
    return LONG(v);
}
LONG formUnits(LONG thousandthsInch) { return truncated(double(thousandthsInch) * 2.5406 * 10.0); }
short tenthsMm(LONG thousandthsInch) { return short(truncated(double(static_cast<long long>(thousandthsInch) * 10) / 39.36)); }

// The paper fields of a device mode, as the printer's own default has them.
struct Paper { short code, length, width; BYTE name[kFormNameBytes]; };

bool printerPaper(HANDLE printer, Paper* p) {
    PRINTER_INFO_2A* info = PrintPrinterInfo(printer);
    const DEVMODEA* m = info ? info->pDevMode : nullptr;
    if (m) *p = {m->dmPaperSize, m->dmPaperLength, m->dmPaperWidth, {}}, std::memcpy(p->name, m->dmFormName, kFormNameBytes);
    MemFree(info);
    return m != nullptr;
}

// The form of cx by cy, upright, found or registered; its place in *index.
bool customForm(HANDLE printer, LONG width, LONG height, DWORD* index) {
    LONG cx = formUnits(height > width ? width : height), cy = formUnits(height > width ? height : width);
    FORM_INFO_1A form = {};
    if (PrintFindForm(printer, &form, cx, cy, index)) return true;
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    ps->DeleteFormA(printer, kFormName);
    form = {0, kFormName, {cx, cy}, {0, 0, cx, cy}};
    return ps->AddFormA(printer, 1, reinterpret_cast<LPBYTE>(&form)) && PrintFindForm(printer, &form, cx, cy, index);
}

void set(LPDEVMODEA m, DWORD field, short* at, short value) {
    if (m->dmFields & field) *at = value;
}

} // namespace

BOOL PrintFindForm(HANDLE printer, FORM_INFO_1A* form, LONG cx, LONG cy, DWORD* index) {
    const OslPrinterSetupService* ps = gOsl.printerSetup;
    *index = 0;
    PRINTER_INFO_2A* info = PrintPrinterInfo(printer);
    MemFree(info);
    DWORD needed = 0, count = 0;
    if (!info || ps->EnumFormsA(printer, 1, nullptr, 0, &needed, &count) || ps->GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return FALSE;
    LPBYTE block = needed ? static_cast<LPBYTE>(MemAlloc(needed)) : nullptr;
    if (!block || !ps->EnumFormsA(printer, 1, block, needed, &needed, &count)) return MemFree(block), FALSE;
    const FORM_INFO_1A* forms = reinterpret_cast<const FORM_INFO_1A*>(block);
    DWORD i = 0;
    while (i < count && (forms[i].Size.cx != cx || forms[i].Size.cy != cy)) ++i;
    if (i < count) *form = forms[i], form->pName = nullptr, *index = i; // the name lives in the block
    MemFree(block);
    return i < count;
}

void PrintApplyCustomSize(HANDLE printer, LPCSTR device, LPCSTR driver, LPDEVMODEA m, WORD orientation, LONG width,
                          LONG height, WORD bin) {
    bool landscape = orientation != 0;
    m->dmOrientation = landscape ? 2 : 1;
    DWORD platform = gOsl.system->GetPlatformId(), index = 0;
    bool good = platform == kNoForms || (platform == kForms && customForm(printer, width, height, &index));
    Paper kept = {m->dmPaperSize, m->dmPaperLength, m->dmPaperWidth, {}}; // other systems: the paper stays
    std::memcpy(kept.name, m->dmFormName, kFormNameBytes);
    if (!good && platform == kForms && !printerPaper(printer, &kept)) return;
    if (m->dmFields & DM_FORMNAME) {
        std::memset(m->dmFormName, 0, kFormNameBytes);
        if (good) std::memcpy(m->dmFormName, kFormName, sizeof kFormName);
        else std::memcpy(m->dmFormName, kept.name, kFormNameBytes);
    }
    set(m, DM_DEFAULTSOURCE, &m->dmDefaultSource, short(bin));
    set(m, DM_PAPERSIZE, &m->dmPaperSize, good ? short(index ? index + 1 : DMPAPER_USER) : kept.code);
    if (good) {
        set(m, DM_PAPERLENGTH, &m->dmPaperLength, tenthsMm(landscape ? width : height));
        set(m, DM_PAPERWIDTH, &m->dmPaperWidth, tenthsMm(landscape ? height : width));
    } else {
        set(m, DM_PAPERLENGTH, &m->dmPaperLength, landscape ? kept.width : kept.length);
        set(m, DM_PAPERWIDTH, &m->dmPaperWidth, landscape ? kept.length : kept.width);
    }
    HDC ic = gOsl.graphics->CreateICA(driver, device, nullptr, m);
    if (ic) gOsl.graphics->ResetDCA(ic, m), gOsl.graphics->DeleteDC(ic);
}
