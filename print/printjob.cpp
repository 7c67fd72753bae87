// The job driver: one print job as a state machine over the spooler and
// window calls. Preparing (context, slot) -> Opening (StartDocA) -> sheets
// (StartPage, NEXTBAND, EndPage, bin change, NEWFRAME) -> Closing (ENDDOC,
// EndDoc, first bin, dialog closed) or Aborted (EndDoc) -> Ended (Status,
// slot released, context finished).
//
// A pumped message or a callback may start another job in this thread and
// move the slot array, so the slot is fetched again by context after each.
#include "print/print.h"

#include "core/libstate.h"
#include "os/osl.h"
#include "ui/dlg.h"

namespace {

enum { kQueryEscSupport = 8, kSetAbortProc = 9, kGetPhysPageSize = 12 };

bool supports(HDC dc, int escape) {
    return gOsl.graphics->Escape(dc, kQueryEscSupport, sizeof escape, reinterpret_cast<LPCSTR>(&escape), nullptr) > 0;
}

RECT physicalPage(HDC dc) {
    POINT size = {};
    if (supports(dc, kGetPhysPageSize)) {
        gOsl.graphics->Escape(dc, kGetPhysPageSize, 0, nullptr, &size);
        if (size.y < 0) size.y = -size.y;
    } else {
        size = {gOsl.graphics->GetDeviceCaps(dc, PHYSICALWIDTH), gOsl.graphics->GetDeviceCaps(dc, PHYSICALHEIGHT)};
    }
    return {0, 0, size.x, size.y};
}

bool empty(const RECT& r) { return r.right <= r.left || r.bottom <= r.top; }

// After an EndPage: every later sheet comes from OtherPagesBin (or, at the
// end, the first again).
void selectBin(HDC dc, DEVMODEA* mode, WORD bin) {
    if (!mode || !(mode->dmFields & DM_DEFAULTSOURCE) || WORD(mode->dmDefaultSource) == bin) return;
    mode->dmDefaultSource = short(bin);
    gOsl.graphics->ResetDCA(dc, mode);
}

WORD statusOf(const PrintJobState* s) {
    if (!s || !s->bAbort) return PRINT_STATUS_DONE;
    switch (s->nAbortCode) {
    case -5: return PRINT_STATUS_NOMEMORY;
    case -4: return PRINT_STATUS_NODISK;
    case -3: return PRINT_STATUS_USERABORT;
    case -2: return PRINT_STATUS_APPABORT;
    default: return PRINT_STATUS_ERROR;
    }
}

// The parts of the job that belong to its context, made or lent.
struct Context {
    HDC dc = nullptr;
    int saved = 0; // the host's level; 0 for a context made here
    bool made = false;
    void Finish() const {
        if (made) gOsl.graphics->DeleteDC(dc);
        else gOsl.graphics->RestoreDC(dc, saved);
    }
};

void openDialog(PrintJobState* s, HWND parent, HINSTANCE parentInstance) {
    if (s->job.Flags & PRINT_USE_ENABLEPROC) {
        s->hDisabled = s->job.EnableProc ? s->job.EnableProc(parentInstance, nullptr, FALSE, nullptr) : nullptr;
    } else {
        s->hDisabled = DlgEnableParentChain(parent, FALSE, nullptr);
    }
    HDC dc = s->hDC;
    HWND dialog = gOsl.window->CreateDialogParamA(s->hInstance, "PrintAbortDialog", parent, DlgFnAbort,
                                                  reinterpret_cast<LPARAM>(s));
    s = PrintJobStateForDC(dc);
    if (!s) return;
    s->hAbortDialog = dialog;
    // With no dialog none of the closings would enable the windows: do it now.
    if (!dialog) {
        if (s->job.Flags & PRINT_USE_ENABLEPROC) {
            if (s->job.EnableProc) s->job.EnableProc(parentInstance, nullptr, TRUE, s->hDisabled);
        } else {
            DlgEnableParentChain(parent, TRUE, s->hDisabled);
        }
    }
}

// Serves the queue while the device has no abort procedure to do it.
void pump(HDC dc) {
    const OslWindowService* win = gOsl.window;
    MSG msg;
    for (PrintJobState* s = PrintJobStateForDC(dc); s && !s->bAbort; s = PrintJobStateForDC(dc)) {
        if (!win->PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) return;
        if (!s->hDialog || !win->IsDialogMessageA(s->hDialog, &msg)) {
            win->TranslateMessage(&msg);
            win->DispatchMessageA(&msg);
        }
    }
}

bool aborted(HDC dc) { return PrintJobStateForDC(dc)->bAbort != 0; }

// The sheets, from the first StartPage to the end of the document. Each
// sheet is StartPage, NEXTBAND, EndPage, bin change, then NEWFRAME asks for
// the next. Returns whether the job ran to its end (not aborted).
bool runSheets(HWND parent, HDC dc, const RECT& page, PRINT_JOBCALLBACK callback, void* data, const PagePrintInfo* ppi) {
    const OslGraphicsService* gdi = gOsl.graphics;
    DEVMODEA* mode = PrintJobStateForDC(dc)->job.DevMode;
    bool open = false, goOn = true;
    RECT band = page;
    int r = gdi->StartPage(dc);
    if (r > 0) open = true;
    else PrintJobReport(parent, dc, r);
    if (aborted(dc)) return false;
    for (;;) {
        if (empty(band)) { // every pass but the first
            PrintJobShowPage(PrintJobStateForDC(dc));
            if (!goOn) return true;
            band = page;
            if (!PrintJobStateForDC(dc)->bHasAbortProc) pump(dc);
            RECT frame = page;
            if (!callback(dc, PRINT_NEWFRAME, &frame, data, 0, 0, 0)) {
                if (open) gdi->EndPage(dc);
                return !aborted(dc);
            }
            gdi->StartPage(dc);
            open = true;
        }
        goOn = callback(dc, PRINT_NEXTBAND, &band, data, 0, 0, 0) != 0;
        r = gdi->EndPage(dc);
        if (ppi) selectBin(dc, mode, ppi->OtherPagesBin);
        open = false;
        band = {};
        if (r <= 0) PrintJobReport(parent, dc, r);
        if (aborted(dc)) return false;
    }
}

// The end of a document: on a normal end ENDDOC, the first bin again and
// the dialog closed; aborted, EndDoc only.
void endDocument(HDC dc, bool normal, const RECT& page, PRINT_JOBCALLBACK callback, void* data, const PagePrintInfo* ppi) {
    if (!normal || aborted(dc)) {
        gOsl.graphics->EndDoc(dc);
        return;
    }
    RECT frame = page;
    callback(dc, PRINT_ENDDOC, &frame, data, 0, 0, 0);
    gOsl.graphics->EndDoc(dc);
    if (ppi) selectBin(dc, PrintJobStateForDC(dc)->job.DevMode, ppi->FirstPageBin);
    PrintJobCloseDialog(PrintJobStateForDC(dc));
}

} // namespace

void PrintRunJob(HWND parent, PrintJobInfo* job, PRINT_JOBCALLBACK callback, void* data) {
    if (!job) return;
    if (!parent) {
        job->Status = PRINT_STATUS_NOPARENT;
        return;
    }
    const OslGraphicsService* gdi = gOsl.graphics;
    HINSTANCE parentInstance = reinterpret_cast<HINSTANCE>(gOsl.window->GetWindowLongPtrA(parent, GWLP_HINSTANCE));
    Context ctx;
    if (job->hDC) {
        ctx.dc = job->hDC;
        ctx.saved = gdi->SaveDC(ctx.dc);
    } else {
        ctx.dc = gdi->CreateDCA(job->Driver, job->Device, job->Port, job->DevMode);
        ctx.made = true;
    }
    if (!ctx.dc) {
        job->Status = PRINT_STATUS_NODOC;
        return;
    }
    HDC dc = ctx.dc;
    PrintJobState* s = PrintJobStateForDC(dc);
    if (!s) {
        ctx.Finish();
        job->Status = PRINT_STATUS_NOMEMORY;
        return;
    }
    s->job = *job;
    if (!s->job.YieldProc) s->job.YieldProc = PrintJobYield;
    s->hDialog = nullptr;
    s->hParent = parent;
    s->hInstance = gpLibState->hInstance;
    if (!(job->Flags & PRINT_NO_DIALOG)) openDialog(s, parent, parentInstance);
    s = PrintJobStateForDC(dc);
    if (s) {
        s->bHasAbortProc = supports(dc, kSetAbortProc);
        if (s->bHasAbortProc) gdi->SetAbortProc(dc, AbortTest);
    }
    DOCINFOA doc = {};
    doc.cbSize = sizeof doc;
    doc.lpszDocName = job->DocName;
    PrintJobSetInStartDoc(TRUE);
    int r = gdi->StartDocA(dc, &doc);
    PrintJobSetInStartDoc(FALSE);
    if (r <= 0) {
        PrintJobReport(parent, dc, r);
        job->Status = PRINT_STATUS_NODOC;
    } else {
        RECT page = physicalPage(dc), frame = page;
        callback(dc, PRINT_STARTDOC, &frame, data, 0, 0, 0);
        const PagePrintInfo* ppi = data ? *static_cast<PagePrintInfo* const*>(data) : nullptr;
        endDocument(dc, runSheets(parent, dc, page, callback, data, ppi), page, callback, data, ppi);
        s = PrintJobStateForDC(dc);
        // A dialog still open here (the job stopped through AbortTest) must
        // not outlive its slot.
        if (s) PrintJobCloseDialog(s);
        job->Status = statusOf(s);
    }
    PrintJobStateRelease(dc);
    ctx.Finish();
}
