/*
 * Printing: the print job run on the host's behalf, with its abort dialog,
 * and the page layer that tiles a document page larger than the paper over
 * several sheets.
 *
 * The host fills a PagePrintInfo, with the job record PrintJobInfo inside it,
 * and calls PagePrint; the outcome is the job's Status. The host keeps the
 * record, its texts and its device mode alive for the whole job; its
 * procedures are called from inside PagePrint, on its thread.
 */
#ifndef OXLRT31_PRINT_H
#define OXLRT31_PRINT_H

#include "oxlapi.h"

#include <stddef.h>

OXL_EXTERN_C_BEGIN

/* Status of a job, in PrintJobInfo.Status. */
#define PRINT_STATUS_DONE 0      /* ran to its end */
#define PRINT_STATUS_USERABORT 1 /* Cancel, PrintAbort, or the spooler's user abort (-3) */
#define PRINT_STATUS_NOPARENT 2  /* no parent window; nothing happened */
#define PRINT_STATUS_NODOC 3     /* no device context, or StartDocA failed */
#define PRINT_STATUS_NOMEMORY 4  /* no job slot, or abort code -5 */
#define PRINT_STATUS_NODISK 5    /* abort code -4 */
#define PRINT_STATUS_APPABORT 6  /* abort code -2 */
#define PRINT_STATUS_ERROR 7     /* stopped with any other abort code */

/* PrintJobInfo.Flags */
#define PRINT_NO_DIALOG 0x1      /* no abort dialog, no windows disabled */
#define PRINT_USE_ENABLEPROC 0x2 /* EnableProc disables and enables the windows */

typedef int(OXLCALLBACK* PRINT_PAGENUMBERPROC)(LPARAM userData);
/* Called (parent's instance, 0, 0, 0) to disable, and (instance, 0, 1, what
 * the first call returned) to enable; DlgEnableAllWindows has this shape. */
typedef HGLOBAL(OXLCALLBACK* PRINT_ENABLEPROC)(HINSTANCE instance, HWND except, BOOL enable, HGLOBAL saved);
typedef void(OXLCALLBACK* PRINT_DIALOGPROC)(HWND dialog);
typedef BOOL(OXLCALLBACK* PRINT_YIELDPROC)(LONG value);
/* Draws the current tile of the page in thousandths of an inch (y up).
 * `band` is the physical page in device units. Set *moreAcross and
 * *moreDown (0 on entry) to keep tiles across and down. */
typedef LONG(OXLCALLBACK* PAGE_DRAWPROC)(HDC dc, int code, RECT* band, LPARAM hostData, LPARAM, LPARAM, LPARAM,
                                         LONG* moreAcross, LONG* moreDown);
/* Non-zero when a further document page follows. */
typedef BOOL(OXLCALLBACK* PAGE_NEXTPROC)(LPARAM hostData);

#pragma pack(push, 1)
typedef struct tagPrintJobInfo {
    LPARAM UserData;                  /* handed to PageNumberProc */
    LPCSTR Title;                     /* caption of the abort dialog and the job's message boxes */
    LPCSTR DocName;                   /* document name for the spooler */
    LPCSTR TextLine1;                 /* first line of the abort dialog */
    LPCSTR TextLine2;                 /* second line */
    PRINT_PAGENUMBERPROC PageNumberProc; /* null: the job's sheet counter is shown */
    PRINT_ENABLEPROC EnableProc;      /* used with PRINT_USE_ENABLEPROC */
    PRINT_DIALOGPROC DialogInitProc;  /* after the abort dialog's initialisation */
    PRINT_DIALOGPROC DialogDestroyProc; /* when the abort dialog is destroyed */
    LPARAM Reserved;
    PRINT_YIELDPROC YieldProc;        /* called with 0 after each pump; null: the library's */
    WORD Status;                      /* written at the end of the job, PRINT_STATUS_... */
    HDC hDC;                          /* the host's context, or 0 for one made from the names */
    DWORD Flags;                      /* PRINT_NO_DIALOG, PRINT_USE_ENABLEPROC */
    DEVMODEA* DevMode;                /* for CreateDCA; its dmDefaultSource changes between sheets */
    char Device[260];
    char Driver[260];
    char Port[260];
} PrintJobInfo;

typedef struct tagPagePrintInfo {
    LONG DraftMode;   /* for the DRAFTMODE escape */
    LONG Copies;      /* copies wanted, at least 1 */
    LONG PageLeft;    /* position of the page on the paper, thousandths of an inch */
    LONG PageTop;
    LONG PageWidth;   /* size of the page, same unit; corrected to the paper in place */
    LONG PageHeight;
    LONG AllPages;    /* the host's; the library selects no pages */
    LONG FirstPage;
    LONG LastPage;
    LONG PageCount;   /* raised to 1 in place */
    LONG DrawFrame;   /* non-zero: a frame round the page */
    LONG SnapToPaper;
    LONG SplitAcross; /* either set: a page larger than the paper is tiled */
    LONG SplitDown;
    BYTE Reserved1[60];
    WORD FirstPageBin;  /* paper source of the first sheet, restored at the end */
    WORD OtherPagesBin; /* paper source of every later sheet */
    BYTE Reserved2[4];
    PrintJobInfo Job;
    PAGE_DRAWPROC DrawPage;
    PAGE_NEXTPROC NextPage; /* null: no page follows */
    LPARAM HostData;        /* handed to DrawPage and NextPage */
} PagePrintInfo;
#pragma pack(pop)

/* Layout: pointers, handles and LPARAMs are 4 bytes on i686, 8 on 64-bit. */
#define OXL_PRT_P (sizeof(void*))
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Title) == OXL_PRT_P, "PrintJobInfo.Title");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, DocName) == 2 * OXL_PRT_P, "PrintJobInfo.DocName");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, TextLine1) == 3 * OXL_PRT_P, "PrintJobInfo.TextLine1");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, TextLine2) == 4 * OXL_PRT_P, "PrintJobInfo.TextLine2");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, PageNumberProc) == 5 * OXL_PRT_P, "PrintJobInfo.PageNumberProc");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, EnableProc) == 6 * OXL_PRT_P, "PrintJobInfo.EnableProc");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, DialogInitProc) == 7 * OXL_PRT_P, "PrintJobInfo.DialogInitProc");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, DialogDestroyProc) == 8 * OXL_PRT_P, "PrintJobInfo.DialogDestroyProc");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Reserved) == 9 * OXL_PRT_P, "PrintJobInfo.Reserved");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, YieldProc) == 10 * OXL_PRT_P, "PrintJobInfo.YieldProc");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Status) == 11 * OXL_PRT_P, "PrintJobInfo.Status");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, hDC) == 11 * OXL_PRT_P + 2, "PrintJobInfo.hDC");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Flags) == 12 * OXL_PRT_P + 2, "PrintJobInfo.Flags");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, DevMode) == 12 * OXL_PRT_P + 6, "PrintJobInfo.DevMode");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Device) == 13 * OXL_PRT_P + 6, "PrintJobInfo.Device");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Driver) == 13 * OXL_PRT_P + 266, "PrintJobInfo.Driver");
OXL_STATIC_ASSERT(offsetof(PrintJobInfo, Port) == 13 * OXL_PRT_P + 526, "PrintJobInfo.Port");
OXL_STATIC_ASSERT(sizeof(PrintJobInfo) == (OXL_PRT_P == 4 ? 838 : 890), "PrintJobInfo: 838 bytes on i686, 890 on 64-bit");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, Copies) == 4 && offsetof(PagePrintInfo, PageLeft) == 8, "PagePrintInfo.Copies");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, PageTop) == 12 && offsetof(PagePrintInfo, PageWidth) == 16, "PagePrintInfo.PageTop");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, PageHeight) == 20 && offsetof(PagePrintInfo, AllPages) == 24, "PagePrintInfo.PageHeight");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, FirstPage) == 28 && offsetof(PagePrintInfo, LastPage) == 32, "PagePrintInfo.FirstPage");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, PageCount) == 36 && offsetof(PagePrintInfo, DrawFrame) == 40, "PagePrintInfo.PageCount");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, SnapToPaper) == 44 && offsetof(PagePrintInfo, SplitAcross) == 48, "PagePrintInfo.SnapToPaper");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, SplitDown) == 52 && offsetof(PagePrintInfo, Reserved1) == 56, "PagePrintInfo.SplitDown");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, FirstPageBin) == 116 && offsetof(PagePrintInfo, OtherPagesBin) == 118, "PagePrintInfo bins");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, Reserved2) == 120 && offsetof(PagePrintInfo, Job) == 124, "PagePrintInfo.Job");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, DrawPage) == 124 + sizeof(PrintJobInfo), "PagePrintInfo.DrawPage");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, NextPage) == 124 + sizeof(PrintJobInfo) + OXL_PRT_P, "PagePrintInfo.NextPage");
OXL_STATIC_ASSERT(offsetof(PagePrintInfo, HostData) == 124 + sizeof(PrintJobInfo) + 2 * OXL_PRT_P, "PagePrintInfo.HostData");
OXL_STATIC_ASSERT(sizeof(PagePrintInfo) == (OXL_PRT_P == 4 ? 974 : 1038), "PagePrintInfo: 974 bytes on i686, 1038 on 64-bit");

/* Contexts on the user's default printer, 0 when there is none. The caller
 * deletes them. */
HDC OXLAPI PrintCreateDefaultPrinterDC(void);
HDC OXLAPI PrintCreateDefaultPrinterDCExt(const DEVMODEA* mode);
HDC OXLAPI PrintCreateDefaultPrinterIC(void);
/* Copies the default printer's device, driver and port names into the
 * buffers that are not null (260 bytes each); 0, buffers untouched, when
 * there is no default printer. */
BOOL OXLAPI PrintGetDefaultPrinter(LPSTR device, LPSTR driver, LPSTR port);
/* The driver and port of the printer `name` (260 bytes each); 0, buffers
 * untouched, when the printer can't be opened or read. */
BOOL OXLAPI PrintGetDevice(LPCSTR name, LPSTR driver, LPSTR port);

/* Runs one print job of the host's document page by page; always 1, the
 * outcome is in info->Job.Status. */
BOOL OXLAPI PagePrint(HWND parent, PagePrintInfo* info);
/* The abort procedure of a job, also open to the host: 1 while the job on
 * `dc` may go on, 0 once it is to stop. A negative code stops the job. */
BOOL OXLAPI AbortTest(HDC dc, int code);
/* Acts as Cancel in the abort dialog of the job on `dc`; 0 when no job slot
 * could be had. Without a dialog it does nothing. */
BOOL OXLAPI PrintAbort(HDC dc);
/* The dialog procedure of the abort dialog PrintAbortDialog. */
INT_PTR OXLAPI DlgFnAbort(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

/* ---- the printer setup dialog, device modes, paper queries ----
 * Lengths: thousandths of an inch in requests, tenths of a millimetre in
 * device modes and in the paper queries' answers. Memory handles returned
 * are unlocked movable blocks that the caller frees with GlobalFree. */

/* PrintPrinterSetupExt(owner, devMode, device, driver, port, text, 0, 0, 0). */
BOOL OXLAPI PrintPrinterSetup(HWND owner, HGLOBAL* devMode, LPSTR device, LPSTR driver, LPSTR port, LPCSTR text);
/* Lets the user pick a printer, a port and the driver's settings in the
 * dialog PRTSETUP. device, driver, port: buffers of 260 bytes, read and
 * written. Non-zero when the user confirmed a change: *devMode is then a new
 * handle (the old one freed), the names are the chosen ones, and the process
 * starts later setups for that printer from the choice. skipNone: ports
 * named "None" are not listed; messageId, from messageInstance: a text shown
 * when the driver's dialog changed the settings. `text` has no effect. */
BOOL OXLAPI PrintPrinterSetupExt(HWND owner, HGLOBAL* devMode, LPSTR device, LPSTR driver, LPSTR port, LPCSTR text,
                                 BOOL skipNone, HINSTANCE messageInstance, UINT messageId);
/* The dialog procedure of PRTSETUP. */
INT_PTR OXLAPI PrintPrinterSetupDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
/* 1 when the printer `device` can be opened (its settings can be edited). */
BOOL OXLAPI PrintCanDoPrinterSetup(HWND ignored, LPCSTR device);
/* Forgets the setup the user last confirmed in this process. */
void OXLAPI PrtClearSaved(void);

/* A device mode for the printer `device` with the paper asked for:
 * orientation 0 portrait, other landscape; paper 0 keeps the paper, 256 is
 * a custom size of width by height thousandths of an inch (registered as
 * the printer form "OxleeCustomForm" where the system has forms), another
 * value a paper code of the printer; bin: the paper source. Starts from the
 * setup last confirmed for that printer, else from its default; driver and
 * port (260 bytes) are overwritten with the spooler's. 0 when the printer
 * can't be opened. */
HGLOBAL OXLAPI PrintGetDevMode(WORD orientation, LPCSTR device, LPSTR driver, LPSTR port, WORD paper, LONG width,
                               LONG height, WORD bin);

/* The papers of a printer under `mode` (null: its default): codes (WORD
 * each), sizes (two LONGs each: width, length) and names (64 bytes each).
 * The count; -1 when the lists can't be had; 0 when the printer can't be
 * opened. No handle is stored unless the count is above 0. */
int OXLAPI PrintGetPageSizes(LPCSTR device, LPCSTR ignored, LPCSTR port, const DEVMODEA* mode, HGLOBAL* codes,
                             HGLOBAL* sizes, HGLOBAL* names);
/* The paper bins the same way: numbers (WORD each, dmDefaultSource values)
 * and names (24 bytes each). */
int OXLAPI PrintGetPaperBins(LPCSTR device, LPCSTR ignored, LPCSTR port, const DEVMODEA* mode, HGLOBAL* numbers,
                             HGLOBAL* names);
/* The paper of `mode` (null: the default) on the printer: its code into
 * *paper when it has one, its size, and its printable rectangle, y counted
 * downwards. 1, or 0 with no size and no rectangle stored. */
BOOL OXLAPI PageGetPageInfo(LPCSTR driver, LPCSTR device, LPCSTR port, const DEVMODEA* mode, WORD* paper,
                            SIZE* size, RECT* printable);

OXL_EXTERN_C_END

#endif
