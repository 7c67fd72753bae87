/*
 * Printing inside the library: the job driver and its per-thread job slots,
 * the page layer's callback, and the per-process saved setup.
 */
#ifndef OXL_PRINT_PRINT_H
#define OXL_PRINT_PRINT_H

#include <oxlrt31/print.h>

/* The default printer's names, pointers into `buffer` (`size` bytes): from
 * the common dialog, or from the profile line "device,driver,port" when the
 * dialog fails with an error. 1 when found; all three null otherwise. A
 * DEVNAMES block that doesn't fit the buffer with a terminator is no printer. */
BOOL PrintDefaultNames(LPSTR buffer, DWORD size, LPSTR* device, LPSTR* driver, LPSTR* port);
/* The default device mode of the open printer `printer` named `name`, in a
 * locked movable block whose handle goes to *block; null when none. */
LPDEVMODEA PrintDefaultDevMode(HANDLE printer, LPSTR name, HGLOBAL* block);

/* Forgets the printer setup the user last chose in this process (unload). */
void PrtClearSaved(void);

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

#endif
