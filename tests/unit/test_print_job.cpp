// The job driver over a scripted spooler: the calls it makes, in order, the
// message boxes, the dialog's texts, the paper bins and the status it leaves,
// for each way a job can go.
#include "print/print.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

namespace {

ScriptedPrint* gPrint;
enum { kHostDC = 1, kNoParent = 2, kAbortAtBand = 4, kStopAtBand = 16, kBins = 64, kOneBin = 128, kNoSource = 256 };
// The driver's callback as a test host: logs each code and answers NEWFRAME
// with `sheets` - 1 yeses; `how` adds a PrintAbort while drawing, or a
// NEXTBAND answered 0.
struct Host { PagePrintInfo* info; int sheets, how, frames; };
LONG callback(HDC, int code, RECT*, void* data, LPARAM r1, LPARAM r2, LPARAM r3) {
    Host* h = static_cast<Host*>(data);
    gPrint->Note(std::string(r1 || r2 || r3 ? "cb:reserved values not 0 " : "cb:") + (code == PRINT_STARTDOC ? "STARTDOC" : code == PRINT_NEXTBAND ? "NEXTBAND" : code == PRINT_NEWFRAME ? "NEWFRAME" : "ENDDOC"));
    if (code == PRINT_NEXTBAND && (h->how & kAbortAtBand)) PrintAbort(kScriptedDc);
    return code == PRINT_NEWFRAME ? ++h->frames < h->sheets : !(code == PRINT_NEXTBAND && (h->how & kStopAtBand));
}
// The host's hooks: EnableProc answers 119; the dialog's greys its close entry and tries a message it doesn't handle.
HGLOBAL OXLCALLBACK enableProc(HINSTANCE, HWND, BOOL on, HGLOBAL saved) { return gPrint->Note("ep:" + std::to_string(on) + "," + std::to_string(uintptr_t(saved))), HGLOBAL(0x77); }
void OXLCALLBACK onInit(HWND dialog) { DlgFnAbort(dialog, WM_INITMENU, 0, 0), gPrint->Note("hook:init, other message " + std::to_string(DlgFnAbort(dialog, 0x400, 0, 0))); }
void OXLCALLBACK onDestroy(HWND) { gPrint->Note("hook:destroy"); }

// `logged`: the prefixes of the calls compared; `calls`: what they were.
struct Row { const char* name; ScriptedPrint::Replies replies; int sheets; DWORD flags; int how; WORD status; const char* logged; const char* calls; };
#define JOB "hook:destroy CreateDCA DeleteDC SaveDC RestoreDC StartDocA StartPage EndPage EndDoc cb: MessageBoxA EnableWindow ep: DestroyWindow CreateDialogParamA Cancel DispatchMessageA SendMessageA"
#define BINS "EndPage EndDoc ResetDCA bin:"
#define OPEN "CreateDCA:drv,PDF,CUPS:PDF,null EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage"
#define CLOSE "cb:ENDDOC EndDoc EnableWindow:256,1 DestroyWindow hook:destroy DeleteDC"
#define CLOSED " EnableWindow:256,1 DestroyWindow hook:destroy"
#define BOX(text) " MessageBoxA:256," text ",Title,48"
#define PAGE " SetDlgItemTextA:802,Printing Page: "
const Row kJobs[] = {
    {"two sheets", {}, 2, 0, 0, 0, JOB, OPEN " cb:NEWFRAME StartPage cb:NEXTBAND EndPage cb:NEWFRAME " CLOSE},
    {"EndPage -4: disk full, reported, status by the unstored code", {{"EndPage", {-4}}}, 2, 0, 0, 7, JOB, OPEN CLOSED BOX("Out of Disk Space") " EndDoc DeleteDC"},
    {"EndPage -5", {{"EndPage", {-5}}}, 2, 0, 0, 7, JOB, OPEN CLOSED BOX("Out of Memory") " EndDoc DeleteDC"},
    {"EndPage -1", {{"EndPage", {-1}}}, 2, 0, 0, 7, JOB, OPEN CLOSED BOX("Printing Error") " EndDoc DeleteDC"},
    {"EndPage -2: silent", {{"EndPage", {-2}}}, 2, 0, 0, 7, JOB, OPEN CLOSED " EndDoc DeleteDC"},
    {"EndPage 0: no mark, no box", {{"EndPage", {0}}}, 2, 0, 0, 7, JOB, OPEN CLOSED " EndDoc DeleteDC"},
    {"first StartPage -1", {{"StartPage", {-1}}}, 1, 0, 0, 7, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage" CLOSED BOX("Printing Error") " EndDoc DeleteDC"},
    {"StartDocA 0", {{"StartDocA", {0}}}, 1, 0, 0, 3, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc" CLOSED " DeleteDC"},
    {"no device context", {{"CreateDCA", {0}}}, 1, 0, 0, 3, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null"},
    {"no parent window", {}, 1, 0, kNoParent, 2, JOB, ""},
    {"abort procedure -4 from the spooler", {{"spooler", {-4}}}, 2, 0, 0, 5, JOB, OPEN " EndDoc" CLOSED " DeleteDC"},
    {"abort procedure -2", {{"spooler", {-2}}}, 2, 0, 0, 6, JOB, OPEN " EndDoc" CLOSED " DeleteDC"},
    {"Cancel pumped by the abort procedure", {{"spooler", {0}}, {"PeekMessageA", {1}}}, 2, 0, 0, 1, JOB, OPEN " Cancel" CLOSED " EndDoc DeleteDC"},
    {"Cancel, then EndPage -1: silent", {{"EndPage", {-1}}, {"spooler", {0}}, {"PeekMessageA", {1}}}, 2, 0, 0, 1, JOB, OPEN " Cancel" CLOSED " EndDoc DeleteDC"},
    {"Cancel without an abort procedure: the sheet NEWFRAME allows still runs", {{"Escape8:9", {0}}, {"PeekMessageA", {1}}}, 3, 0, 0, 1, JOB, OPEN " Cancel" CLOSED " cb:NEWFRAME StartPage cb:NEXTBAND EndPage EndDoc DeleteDC"},
    {"no dialog, Cancel pumped goes nowhere", {{"Escape8:9", {0}}, {"PeekMessageA", {1, 0}}}, 1, PRINT_NO_DIALOG, 0, 0, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage Cancel DispatchMessageA:273 cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"the host's context", {}, 1, 0, kHostDC, 0, JOB, "SaveDC EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc" CLOSED " RestoreDC:3"},
    {"EnableProc disables and enables", {}, 1, PRINT_USE_ENABLEPROC, 0, 0, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null ep:0,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc ep:1,119 DestroyWindow hook:destroy DeleteDC"},
    {"the dialog can't be made: windows enabled at once", {{"CreateDialogParamA", {0}}}, 1, 0, 0, 0, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog EnableWindow:256,1 StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"PrintAbort from the host acts as Cancel", {}, 3, 0, kAbortAtBand, 1, JOB, "CreateDCA:drv,PDF,CUPS:PDF,null EnableWindow:256,0 CreateDialogParamA:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND SendMessageA:273,0,0" CLOSED " EndPage EndDoc DeleteDC"},
    {"NEXTBAND answered 0 ends the document normally", {}, 3, 0, kStopAtBand, 0, JOB, OPEN " " CLOSE},
    // The dialog's texts, the sheet counter in control 802 ending one past the last sheet, its hooks.
    {"texts, two sheets", {}, 2, 0, 0, 0, "hook: EnableMenuItem SetWindowTextA SetDlgItemTextA UpdateWindow DestroyWindow", "SetWindowTextA:Title SetDlgItemTextA:800,Line 1 SetDlgItemTextA:801,Line 2 SetDlgItemTextA:803,PDF on CUPS:PDF" PAGE "1 UpdateWindow:2816 EnableMenuItem:1504,61536,1 hook:init, other message 0" PAGE "2" PAGE "3 DestroyWindow hook:destroy"},
    // Paper bins: ResetDCA after the first EndPage to the other bin, back to the first at a normal end, not after an abort.
    {"two bins, two sheets", {}, 2, 0, kBins, 0, BINS, "EndPage ResetDCA:2 EndPage EndDoc ResetDCA:1 bin:1"},
    {"two bins, aborted on the first sheet", {{"spooler", {-3}}}, 2, 0, kBins, 1, BINS, "EndPage ResetDCA:2 EndDoc bin:2"},
    {"one bin", {}, 2, 0, kBins | kOneBin, 0, BINS, "EndPage EndPage EndDoc bin:4"},
    {"source not in dmFields", {}, 2, 0, kBins | kNoSource, 0, BINS, "EndPage EndPage EndDoc bin:1"},
};
TEST(PrintJob, CallsAndStatus) {
    for (const Row& row : kJobs) {
        ScriptedPrint print(row.replies);
        HWND parent = (gPrint = &print)->AddWindow({nullptr, 0, nullptr, 0, {}, false});
        PagePrintInfo info = {};
        PrintJobInfo& j = info.Job;
        j.Title = "Title", j.DocName = "Doc", j.TextLine1 = "Line 1", j.TextLine2 = "Line 2", j.Flags = row.flags, j.Status = 99, j.EnableProc = enableProc;
        j.DialogInitProc = onInit, j.DialogDestroyProc = onDestroy;
        std::strcpy(j.Device, "PDF"), std::strcpy(j.Driver, "drv"), std::strcpy(j.Port, "CUPS:PDF");
        DEVMODEA mode = {};
        mode.dmFields = row.how & kNoSource ? DM_COPIES : DM_DEFAULTSOURCE, mode.dmDefaultSource = info.FirstPageBin = row.how & kOneBin ? 4 : 1;
        info.OtherPagesBin = row.how & kOneBin ? 4 : 2, j.DevMode = row.how & kBins ? &mode : nullptr, j.hDC = row.how & kHostDC ? kScriptedDc : nullptr;
        Host host{&info, row.sheets, row.how, 0};
        PrintRunJob(row.how & kNoParent ? nullptr : parent, &j, callback, &host);
        print.Note("bin:" + std::to_string(mode.dmDefaultSource));
        EXPECT_EQ(print.Calls(row.logged) + ", status " + std::to_string(j.Status), row.calls + (", status " + std::to_string(row.status))) << "PrintRunJob: " << row.name;
        EXPECT_EQ(PrintJobSlotCount() + (gOsl.window->GetWindowLongPtrA(parent, GWL_STYLE) & WS_DISABLED), 0) << "slots left or parent disabled after " << row.name;
    }
}

// Slots of jobs on the contexts 1, 2, 3.
TEST(PrintJobSlots, GrowByTwoAndGoWhenEmpty) {
    HDC a = HDC(1), b = HDC(2), c = HDC(3);
    const int slots[] = {(PrintJobStateForDC(a)->nPage = 5, PrintJobStateForDC(b), PrintJobSlotCount()), (PrintJobStateForDC(c), PrintJobSlotCount()), PrintJobStateForDC(a)->nPage,
                         (PrintJobStateRelease(a), PrintJobStateRelease(b), PrintJobSlotCount()), (PrintJobStateRelease(c), PrintJobSlotCount()), PrintJobStateForDC(nullptr) != nullptr};
    EXPECT_EQ(std::vector<int>(slots, slots + 6), std::vector<int>({2, 4, 5, 4, 0, 0})) << "slots for two jobs, for a third, the first job's page after the move, slots with one job left, with none, a slot for no context";
    PrintJobState* without = reinterpret_cast<PrintJobState*>(1); // a thread whose state can't be made has no slot
    std::thread([&] { ScriptedHeap none(1); without = PrintJobStateForDC(a); }).join();
    EXPECT_EQ(without, nullptr) << "PrintJobStateForDC on a thread without memory";
}

} // namespace
