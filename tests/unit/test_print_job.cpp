// The job driver over a scripted spooler: the calls it makes, in order, the
// message boxes and the status it leaves, for each way a job can go.
#include "print/print.h"
#include "tests/support/scripted_print.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

ScriptedPrint* gPrint;
enum { kHostDC = 1, kNoParent = 2, kAbortAtBand = 4, kStrayCommand = 8, kStopAtBand = 16 };
// The driver's callback as a test host: logs each code and answers NEWFRAME
// with `sheets` - 1 yeses; `how` adds a PrintAbort or a stray command while
// drawing, or a NEXTBAND answered 0.
struct Host { PagePrintInfo* info; int sheets, how, frames; };
LONG callback(HDC, int code, RECT*, void* data, LPARAM r1, LPARAM r2, LPARAM r3) {
    Host* h = static_cast<Host*>(data);
    if (r1 || r2 || r3) gPrint->Note("cb:reserved values not 0");
    gPrint->Note(std::string("cb:") + (code == PRINT_STARTDOC ? "STARTDOC" : code == PRINT_NEXTBAND ? "NEXTBAND" : code == PRINT_NEWFRAME ? "NEWFRAME" : "ENDDOC"));
    if (code == PRINT_NEXTBAND && (h->how & kAbortAtBand)) PrintAbort(gPrint->Dc());
    if (code == PRINT_NEXTBAND && (h->how & kStrayCommand)) DlgFnAbort(nullptr, WM_COMMAND, 0, 0);
    return code == PRINT_NEWFRAME ? ++h->frames < h->sheets : !(code == PRINT_NEXTBAND && (h->how & kStopAtBand));
}
HGLOBAL OXLCALLBACK enableProc(HINSTANCE, HWND, BOOL enable, HGLOBAL saved) {
    gPrint->Note(enable ? "ep:1," + std::to_string(reinterpret_cast<uintptr_t>(saved)) : std::string("ep:0"));
    return reinterpret_cast<HGLOBAL>(uintptr_t(0x77));
}
int OXLCALLBACK pageNumber(LPARAM user) { return int(user); }
void OXLCALLBACK onInit(HWND dialog) {
    gPrint->Note("hook:init");
    DlgFnAbort(dialog, WM_INITMENU, 0, 0);
    gPrint->Note("other:" + std::to_string(DlgFnAbort(dialog, 0x400, 0, 0)));
}
void OXLCALLBACK onDestroy(HWND) { gPrint->Note("hook:destroy"); }

// A job of `sheets` sheets in a scripted spooler; `set` changes the record before the run.
template <class Set> HWND run(ScriptedPrint& print, PrintJobInfo& j, DWORD flags, int sheets, int how, Set set, PagePrintInfo* info = nullptr) {
    gPrint = &print;
    HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, {}, false});
    j.Title = "Title", j.DocName = "Doc", j.TextLine1 = "Line 1", j.TextLine2 = "Line 2", j.Flags = flags, j.Status = 99, j.EnableProc = enableProc;
    j.DialogInitProc = onInit, j.DialogDestroyProc = onDestroy;
    std::strcpy(j.Device, "PDF"), std::strcpy(j.Port, "CUPS:PDF");
    if (how & kHostDC) j.hDC = print.Dc();
    set(j);
    Host host{info, sheets, how, 0};
    PrintRunJob(how & kNoParent ? nullptr : parent, &j, callback, &host);
    return parent;
}
void none(PrintJobInfo&) {}

struct Row { const char* name; ScriptedPrint::Script script; int sheets; DWORD flags; int how; WORD status; const char* calls; };
#define OPEN "CreateDCA disable:256 dialog:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage"
#define CLOSE "cb:ENDDOC EndDoc enable:256 destroy DeleteDC"
const Row kJobs[] = {
    {"one sheet", {}, 1, 0, 0, 0, OPEN " cb:NEWFRAME " CLOSE},
    {"two sheets", {}, 2, 0, 0, 0, OPEN " cb:NEWFRAME StartPage cb:NEXTBAND EndPage cb:NEWFRAME " CLOSE},
    {"EndPage -4: disk full, reported, status by the unstored code", {.endPage = {-4}}, 2, 0, 0, 7, OPEN " enable:256 destroy box:Out of Disk Space,Title,48 EndDoc DeleteDC"},
    {"EndPage -5", {.endPage = {-5}}, 2, 0, 0, 7, OPEN " enable:256 destroy box:Out of Memory,Title,48 EndDoc DeleteDC"},
    {"EndPage -1", {.endPage = {-1}}, 2, 0, 0, 7, OPEN " enable:256 destroy box:Printing Error,Title,48 EndDoc DeleteDC"},
    {"EndPage -2: silent", {.endPage = {-2}}, 2, 0, 0, 7, OPEN " enable:256 destroy EndDoc DeleteDC"},
    {"EndPage -3: silent", {.endPage = {-3}}, 2, 0, 0, 7, OPEN " enable:256 destroy EndDoc DeleteDC"},
    {"EndPage 0: no mark, no box", {.endPage = {0}}, 2, 0, 0, 7, OPEN " enable:256 destroy EndDoc DeleteDC"},
    {"second EndPage -4", {.endPage = {1, -4}}, 3, 0, 0, 7, OPEN " cb:NEWFRAME StartPage cb:NEXTBAND EndPage enable:256 destroy box:Out of Disk Space,Title,48 EndDoc DeleteDC"},
    {"first StartPage -1", {.startPage = -1}, 1, 0, 0, 7, "CreateDCA disable:256 dialog:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage enable:256 destroy box:Printing Error,Title,48 EndDoc DeleteDC"},
    {"StartDocA -1", {.startDoc = -1}, 1, 0, 0, 3, "CreateDCA disable:256 dialog:PrintAbortDialog StartDocA:Doc enable:256 destroy box:Printing Error,Title,48 DeleteDC"},
    {"StartDocA 0", {.startDoc = 0}, 1, 0, 0, 3, "CreateDCA disable:256 dialog:PrintAbortDialog StartDocA:Doc enable:256 destroy DeleteDC"},
    {"no device context", {.failCreateDC = true}, 1, 0, 0, 3, "CreateDCA"},
    {"no parent window", {}, 1, 0, kNoParent, 2, ""},
    {"abort procedure -4 from the spooler", {.abortAtEndPage = {{1, -4}}}, 2, 0, 0, 5, OPEN " EndDoc enable:256 destroy DeleteDC"},
    {"abort procedure -5", {.abortAtEndPage = {{1, -5}}}, 2, 0, 0, 4, OPEN " EndDoc enable:256 destroy DeleteDC"},
    {"abort procedure -3", {.abortAtEndPage = {{1, -3}}}, 2, 0, 0, 1, OPEN " EndDoc enable:256 destroy DeleteDC"},
    {"abort procedure -2", {.abortAtEndPage = {{1, -2}}}, 2, 0, 0, 6, OPEN " EndDoc enable:256 destroy DeleteDC"},
    {"abort procedure -1", {.abortAtEndPage = {{1, -1}}}, 2, 0, 0, 7, OPEN " EndDoc enable:256 destroy DeleteDC"},
    {"abort procedure 0 goes on", {.abortAtEndPage = {{1, 0}}}, 1, 0, 0, 0, OPEN " cb:NEWFRAME " CLOSE},
    {"Cancel pumped by the abort procedure", {.abortAtEndPage = {{1, 0}}, .cancelAtPeek = 1}, 2, 0, 0, 1, OPEN " cancel enable:256 destroy EndDoc DeleteDC"},
    {"Cancel, then EndPage -1: silent", {.endPage = {-1}, .abortAtEndPage = {{1, 0}}, .cancelAtPeek = 1}, 2, 0, 0, 1, OPEN " cancel enable:256 destroy EndDoc DeleteDC"},
    {"Cancel without an abort procedure: the sheet NEWFRAME allows still runs", {.escapes = {12}, .cancelAtPeek = 1}, 3, 0, 0, 1, OPEN " cancel enable:256 destroy cb:NEWFRAME StartPage cb:NEXTBAND EndPage EndDoc DeleteDC"},
    {"no dialog", {}, 1, PRINT_NO_DIALOG, 0, 0, "CreateDCA StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"no dialog, Cancel pumped goes nowhere", {.escapes = {12}, .cancelAtPeek = 1}, 1, PRINT_NO_DIALOG, 0, 0, "CreateDCA StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cancel dispatch cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"no dialog, a message pumped by the abort procedure", {.abortAtEndPage = {{1, 0}}, .cancelAtPeek = 1}, 1, PRINT_NO_DIALOG, 0, 0, "CreateDCA StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cancel dispatch cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"the host's context", {}, 1, 0, kHostDC, 0, "SaveDC disable:256 dialog:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc enable:256 destroy RestoreDC:3"},
    {"the host's context, StartDocA fails", {.startDoc = -1}, 1, 0, kHostDC, 3, "SaveDC disable:256 dialog:PrintAbortDialog StartDocA:Doc enable:256 destroy box:Printing Error,Title,48 RestoreDC:3"},
    {"the host's context, no device context made", {.failCreateDC = true}, 1, PRINT_NO_DIALOG, kHostDC, 0, "SaveDC StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc RestoreDC:3"},
    {"EnableProc disables and enables", {}, 1, PRINT_USE_ENABLEPROC, 0, 0, "CreateDCA ep:0 dialog:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc ep:1,119 destroy DeleteDC"},
    {"the dialog can't be made: windows enabled at once", {.failDialog = true}, 1, 0, 0, 0, "CreateDCA disable:256 dialog:PrintAbortDialog enable:256 StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
    {"PrintAbort from the host acts as Cancel", {}, 3, 0, kAbortAtBand, 1,
     "CreateDCA disable:256 dialog:PrintAbortDialog StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND send:273,0,0 enable:256 destroy EndPage EndDoc DeleteDC"},
    {"NEXTBAND answered 0 ends the document normally", {}, 3, 0, kStopAtBand, 0, OPEN " " CLOSE},
    {"a command for no dialog stops nothing", {}, 1, PRINT_NO_DIALOG, kStrayCommand, 0,
     "CreateDCA StartDocA:Doc cb:STARTDOC StartPage cb:NEXTBAND EndPage cb:NEWFRAME cb:ENDDOC EndDoc DeleteDC"},
};
class PrintJob : public ::testing::TestWithParam<Row> {};
TEST_P(PrintJob, CallsAndStatus) {
    const Row& row = GetParam();
    ScriptedPrint print(row.script);
    PrintJobInfo job = {};
    HWND parent = run(print, job, row.flags, row.sheets, row.how, none);
    EXPECT_EQ(print.Calls({"CreateDCA", "DeleteDC", "SaveDC", "RestoreDC", "StartDocA", "StartPage", "EndPage", "EndDoc", "ResetDCA", "cb:",
                           "box:", "disable:", "enable:", "ep:", "destroy", "dialog:", "cancel", "dispatch", "send:"}), row.calls)
        << "PrintRunJob: " << row.name;
    EXPECT_EQ(job.Status, row.status) << "PrintRunJob: " << row.name;
    EXPECT_EQ(PrintJobSlotCount() + (print.WindowOf(parent).style & WS_DISABLED), 0) << "slots left or parent disabled after " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, PrintJob, ::testing::ValuesIn(kJobs));

// The dialog's texts, with the sheet counter in control 802 ending one past
// the last sheet, and its hooks: the close entry greyed, other messages not handled.
struct PageRow { const char* name; int sheets; PRINT_PAGENUMBERPROC proc; const char* texts; };
#define TEXTS "caption:Title 800:Line 1 801:Line 2 803:PDF on CUPS:PDF 802:Printing Page: "
#define HOOK " hook:init menu:1504,61536,1 other:0 802:Printing Page: "
const PageRow kPages[] = {
    {"one sheet", 1, nullptr, TEXTS "1" HOOK "2 destroy hook:destroy"},
    {"three sheets", 3, nullptr, TEXTS "1" HOOK "2 802:Printing Page: 3 802:Printing Page: 4 destroy hook:destroy"},
    {"the host's number", 2, pageNumber, TEXTS "7" HOOK "7 802:Printing Page: 7 destroy hook:destroy"},
};
class PrintJobPages : public ::testing::TestWithParam<PageRow> {};
TEST_P(PrintJobPages, DialogTexts) {
    ScriptedPrint print({});
    PrintJobInfo job = {};
    run(print, job, 0, GetParam().sheets, 0, [&](PrintJobInfo& j) { j.PageNumberProc = GetParam().proc, j.UserData = 7; });
    EXPECT_EQ(print.Calls({"hook:", "menu:", "other:", "caption:", "80", "destroy"}), GetParam().texts) << GetParam().name;
}
INSTANTIATE_TEST_SUITE_P(Table, PrintJobPages, ::testing::ValuesIn(kPages));

// Paper bins: ResetDCA after the first EndPage to the other bin, back to the
// first at a normal end, not after an abort.
struct BinRow { const char* name; ScriptedPrint::Script script; WORD first, other; DWORD fields; const char* calls; short endBin; };
const BinRow kBins[] = {
    {"two bins, two sheets", {}, 1, 2, DM_DEFAULTSOURCE, "EndPage ResetDCA:2 EndPage EndDoc ResetDCA:1", 1},
    {"two bins, aborted on the first sheet", {.abortAtEndPage = {{1, -3}}}, 1, 2, DM_DEFAULTSOURCE, "EndPage ResetDCA:2 EndDoc", 2},
    {"one bin", {}, 4, 4, DM_DEFAULTSOURCE, "EndPage EndPage EndDoc", 4},
    {"source not in dmFields", {}, 1, 2, DM_COPIES, "EndPage EndPage EndDoc", 1},
};
class PrintJobBins : public ::testing::TestWithParam<BinRow> {};
TEST_P(PrintJobBins, ResetBetweenSheets) {
    const BinRow& row = GetParam();
    ScriptedPrint print(row.script);
    PagePrintInfo info = {};
    DEVMODEA mode = {};
    mode.dmFields = row.fields, mode.dmDefaultSource = short(row.first), info.FirstPageBin = row.first, info.OtherPagesBin = row.other;
    run(print, info.Job, 0, 2, 0, [&](PrintJobInfo& j) { j.DevMode = &mode; }, &info);
    EXPECT_EQ(print.Calls({"EndPage", "EndDoc", "ResetDCA"}), row.calls) << row.name;
    EXPECT_EQ(mode.dmDefaultSource, row.endBin) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, PrintJobBins, ::testing::ValuesIn(kBins));

TEST(PrintJobSlots, ArrayGrowsByTwoAndGoesWhenEmpty) {
    HDC a = reinterpret_cast<HDC>(1), b = reinterpret_cast<HDC>(2), c = reinterpret_cast<HDC>(3);
    EXPECT_EQ(PrintJobStateForDC(nullptr), nullptr);
    PrintJobStateForDC(a)->nPage = 5;
    PrintJobStateForDC(b);
    EXPECT_EQ(PrintJobSlotCount(), 2);
    PrintJobStateForDC(c);
    EXPECT_EQ(PrintJobSlotCount(), 4) << "a third job grows the array from 2 to 4";
    EXPECT_EQ(PrintJobStateForDC(a)->nPage, 5) << "the first job's slot survives the move";
    PrintJobStateRelease(a), PrintJobStateRelease(b);
    EXPECT_EQ(PrintJobSlotCount(), 4);
    PrintJobStateRelease(c);
    EXPECT_EQ(PrintJobSlotCount(), 0) << "the last release frees the array";
}

TEST(PrintJobSlots, AbortTestAndPrintAbortOutsideAJob) {
    HDC dc = reinterpret_cast<HDC>(9);
    EXPECT_EQ(AbortTest(nullptr, -4), 1) << "AbortTest(null, -4)";
    EXPECT_EQ(PrintAbort(dc), 1) << "PrintAbort on a context with no dialog";
    EXPECT_EQ(AbortTest(dc, 0), 1) << "AbortTest(dc, 0) on a fresh slot";
    EXPECT_EQ(AbortTest(dc, -2), 0) << "AbortTest(dc, -2)";
    EXPECT_EQ(PrintJobStateForDC(dc)->nAbortCode, -2);
    EXPECT_EQ(AbortTest(dc, 0), 0) << "the flag stays";
    PrintJobStateRelease(dc);
}

} // namespace
