/*
 * Printing inside the library: the job driver and its per-thread job slots,
 * the page layer's callback, and the per-process saved setup.
 */
#ifndef OXL_PRINT_PRINT_H
#define OXL_PRINT_PRINT_H

#include <oxlrt31/print.h>

#include "os/osl.h" /* the spooler's records */

/* The default printer's names, pointers into `buffer` (`size` bytes): from
 * the common dialog, or from the profile line "device,driver,port" when the
 * dialog fails with an error. 1 when found; all three null otherwise. A
 * DEVNAMES block that doesn't fit the buffer with a terminator is no printer. */
BOOL PrintDefaultNames(LPSTR buffer, DWORD size, LPSTR* device, LPSTR* driver, LPSTR* port);
/* The default device mode of the open printer `printer` named `name`, in a
 * locked movable block whose handle goes to *block; null when none. */
LPDEVMODEA PrintDefaultDevMode(HANDLE printer, LPSTR name, HGLOBAL* block);


/* The driver's callback, by the platform's old escape numbers. */
enum { PRINT_NEWFRAME = 1, PRINT_NEXTBAND = 3, PRINT_STARTDOC = 10, PRINT_ENDDOC = 11 };
typedef LONG (*PRINT_JOBCALLBACK)(HDC dc, int code, RECT* rect, void* data, LPARAM, LPARAM, LPARAM);

/* One job of this thread, keyed by its device context; 0 is a free slot. */
struct PrintJobState {
    HDC hDC;
    HINSTANCE hInstance;   /* the library's: dialog template and strings */
    LONG bAbort;
    short nAbortCode;
    HWND hParent;
    HWND hDialog;          /* the open abort dialog, 0 when none */
    HMENU hSysMenu;
    HGLOBAL hDisabled;     /* what disabling the windows returned */
    PrintJobInfo job;      /* the host's record as it was at the start */
    LONG bHasAbortProc;
    LONG nPage;            /* sheets announced */
    HWND hAbortDialog;     /* the dialog as created, for PrintAbort */
};

/* The slot of `dc` in this thread, taken or grown on first use; null for a
 * null context or when memory is out. Moves when the array grows: fetch it
 * again after anything that may start another job. */
PrintJobState* PrintJobStateForDC(HDC dc);
PrintJobState* PrintJobStateForDialog(HWND dialog);
void PrintJobStateRelease(HDC dc);
/* Slots in this thread's array, 0 when it has none (for tests). */
int PrintJobSlotCount(void);
/* This thread is inside StartDocA: a Cancel then is dropped. */
void PrintJobSetInStartDoc(BOOL inside);
BOOL PrintJobInStartDoc(void);

/* Runs the job of `job`, calling `callback` with `data` for every step.
 * `data`, when not null, begins with a pointer to the job's PagePrintInfo,
 * whose two paper bins the driver reads. */
void PrintRunJob(HWND parent, PrintJobInfo* job, PRINT_JOBCALLBACK callback, void* data);
/* Reports a failed spooler call of the job on `dc`, closing its dialog. */
void PrintJobReport(HWND parent, HDC dc, int code);
void PrintJobShowPage(PrintJobState* s);
/* Enables the windows the job disabled and closes its dialog, if open. */
void PrintJobCloseDialog(PrintJobState* s);
BOOL OXLCALLBACK PrintJobYield(LONG value);

/* ---- the printer setup dialog, device modes, forms, paper queries ---- */

enum { PRINT_NAME_BYTES = 260 };

/* The printer's level 2 record in a block of the library's heap (MemFree);
 * null when it can't be read. */
PRINTER_INFO_2A* PrintPrinterInfo(HANDLE printer);
/* The device's list `what` of `count` entries of `bytes` each, in a block of
 * the library's heap (MemFree); null when it can't be had or the device fills
 * another number of entries than it announced. */
void* PrintCapabilityList(LPCSTR device, LPCSTR port, WORD what, int count, size_t bytes, const DEVMODEA* m);
/* dmSize + dmDriverExtra of the printer's level 2 device mode, 156 when it
 * has none or can't be read. */
LONG PrintDevModeHint(HANDLE printer);
/* A new movable block with the bytes of `from`; null when `from` is null or
 * memory is out. */
HGLOBAL PrintCopyBlock(HGLOBAL from);
/* Copies `name` into a buffer of PRINT_NAME_BYTES, cut to fit; null out or
 * name do nothing and nothing, respectively. */
void PrintCopyName(LPSTR out, LPCSTR name);

/* The setup the user last confirmed in this process, under the main region:
 * stored with the driver and port the spooler gives for `device` (written
 * into `driver` and `port`), fetched as a new copy of its device mode when
 * all three names match; PrtClearSaved forgets it (unload). */
void PrintSetupStore(LPCSTR device, LPSTR driver, LPSTR port, HGLOBAL mode);
HGLOBAL PrintSetupFetch(LPCSTR device, LPSTR driver, LPSTR port);

/* One run of the setup dialog; found from the dialog by its property. */
struct PrintSetupData {
    HWND hDialog;
    HWND hOwner;
    HGLOBAL* phDevMode;     /* the caller's handle */
    HGLOBAL hStartDevMode;  /* the caller's, or a copy of the saved setup's */
    LPSTR lpDevice, lpDriver, lpPort;
    HGLOBAL hWorkDevMode;   /* the dialog's own; 0 once another printer is picked */
    DWORD bSkipNone;
    char szDevice[PRINT_NAME_BYTES], szDriver[PRINT_NAME_BYTES], szPort[PRINT_NAME_BYTES];
    HWND hList, hSetup;
    HINSTANCE hMsgInstance; /* source of the message after a changed driver dialog */
    DWORD dwMsgId;
};
/* The spooler's printers at `level` in a new block of the library's heap
 * (*out, *size bytes): their count; 0 when the spooler has none; -1 when
 * they can't be read. */
int PrintEnumPrinters(DWORD flags, LPSTR name, DWORD level, LPBYTE* out, DWORD* size);
/* "FORMAT" with its first two "%s" replaced by a and b, any other byte
 * copied as it stands, cut to `size` bytes. */
void PrintFormatPair(LPSTR out, size_t size, LPCSTR format, LPCSTR a, LPCSTR b);
/* Calls `part` for each port of a spooler's port list: cut at commas (never
 * a trail byte), blanks after a comma skipped, empty ports and, when `none`
 * is given, ports equal to it left out. */
void PrintEachPort(LPCSTR ports, LPCSTR none, void (*part)(LPCSTR port, void* data), void* data);
void PrintFillPrinterList(PrintSetupData* d);
BOOL PrintSelectedPrinter(PrintSetupData* d);
void PrintRunDriverSetup(PrintSetupData* d);

/* 1 when `printer` has a form of exactly cx by cy thousandths of a
 * millimetre: its record in *form, its place in the list in *index (0 when
 * none). */
BOOL PrintFindForm(HANDLE printer, FORM_INFO_1A* form, LONG cx, LONG cy, DWORD* index);
/* The custom size of a request on the open printer's device mode `mode`. */
void PrintApplyCustomSize(HANDLE printer, LPCSTR device, LPCSTR driver, LPDEVMODEA mode, WORD orientation,
                          LONG width, LONG height, WORD bin);

#endif
