// The printer setup dialog over a scripted spooler and user: the rows it
// lists, what a run confirms, writes and announces, and what the caller holds after.
#include "print/print.h"
#include "tests/support/scripted_setup.h"

#include <gtest/gtest.h>

namespace {

using Script = ScriptedSetup::Script;
const char kRows[] = "row:PDF on CUPS:PDF row:Laser on LPT1: row:Laser on COM1:", kSame[] = "PDF|pdfdrv|CUPS:PDF";
// "EnableWindow:2816,N": the Setup button enabled (1) or not (0).
const char kOn[] = "EnableWindow:2816,1", kAnnounced[] = "EnableWindow:2816,1 broadcast:windows,3,2000";
const char kNewPrinter[] = "EnableWindow:2816,1 EnableWindow:2816,1 profile:windows,device,Laser,ldrv,LPT1:, COM1: profile:0,0,0 "
                           "broadcast:0,0,1000 broadcast:windows,3,2000";
// copies: dmCopies of the caller's device mode after the run, -1 for none.
struct DialogRow { const char* name; Script script; bool withMode; BOOL skipNone; BOOL result; const char* rows; const char* calls; const char* names; int copies; };
const DialogRow kDialog[] = {
    {"OK with no change", {}, true, 0, 0, kRows, kOn, kSame, 1},
    {"Cancel after picking another printer", {.user = {"select 1", "cancel"}}, true, 0, 0, kRows, "EnableWindow:2816,1 EnableWindow:2816,1 broadcast:windows,3,2000",
     kSame, 1},
    {"OK with no device mode is a change", {}, false, 0, 1, kRows, kAnnounced, kSame, -1},
    {"the driver's settings", {.user = {"setup", "ok"}}, true, 0, 1, kRows, "EnableWindow:2816,1 MessageBoxA:Settings changed,Printer Setup,64 broadcast:windows,3,2000",
     kSame, 7},
    {"the driver's dialog cancelled", {.user = {"setup", "ok"}, .replies = {{"DocumentPropertiesA:14", {IDCANCEL}}}}, true, 0, 0, kRows, kOn, kSame, 1},
    {"a new printer", {.user = {"select 1", "ok"}}, true, 0, 1, kRows, kNewPrinter, "Laser|ldrv|LPT1:, COM1:", -1},
    {"a double click confirms", {.user = {"double 2", "cancel"}}, true, 0, 1, kRows, kNewPrinter, "Laser|ldrv|LPT1:, COM1:", -1},
    {"a port \"None\" and an empty one left out", {.printers = {{"X", "xd", "None,  ,FILE:"}}, .user = {"cancel"}}, true, 1, 0, "row:X on FILE:",
     "EnableWindow:2816,0", kSame, 1},
    {"a port \"None\" listed", {.printers = {{"X", "xd", "None"}}, .user = {"cancel"}}, true, 0, 0, "row:X on None", "EnableWindow:2816,0", kSame, 1},
    {"the dialog can't be shown", {.user = {"none"}}, true, 0, 0, "", "", kSame, 1},
};
class PrintSetupDialog : public ::testing::TestWithParam<DialogRow> {};
TEST_P(PrintSetupDialog, Run) {
    const DialogRow& row = GetParam();
    ScriptedSetup setup(row.script);
    PrtClearSaved();
    HGLOBAL mode = row.withMode ? gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, 220) : nullptr;
    if (mode) gOsl.graphics->DocumentPropertiesA(nullptr, nullptr, nullptr, static_cast<LPDEVMODEA>(gOsl.memory->GlobalLock(mode)), nullptr, 2), gOsl.memory->GlobalUnlock(mode);
    char device[260] = "PDF", driver[260] = "pdfdrv", port[260] = "CUPS:PDF";
    BOOL result = PrintPrinterSetupExt(nullptr, &mode, device, driver, port, "ignored", row.skipNone, reinterpret_cast<HINSTANCE>(0x4D5), 77);
    EXPECT_EQ(result, row.result) << "PrintPrinterSetupExt: " << row.name;
    EXPECT_EQ(setup.print.Calls("row:"), row.rows) << "the rows listed: " << row.name;
    EXPECT_EQ(setup.print.Calls("profile broadcast MessageBoxA EnableWindow"), row.calls) << "written, announced, shown: " << row.name;
    EXPECT_EQ(std::string(device) + "|" + driver + "|" + port, row.names) << "the caller's names after: " << row.name;
    const DEVMODEA* m = mode ? static_cast<const DEVMODEA*>(gOsl.memory->GlobalLock(mode)) : nullptr;
    EXPECT_EQ(m ? m->dmCopies : -1, row.copies) << "the caller's device mode after: " << row.name;
    if (mode) gOsl.memory->GlobalUnlock(mode), gOsl.memory->GlobalFree(mode);
    HGLOBAL saved = PrintSetupFetch(device, driver, port);
    EXPECT_EQ(saved != nullptr, row.result && row.copies > 0) << "the process keeps the confirmed device mode: " << row.name;
    PrtClearSaved();
    EXPECT_EQ(PrintSetupFetch(device, driver, port), nullptr) << "PrtClearSaved forgets it: " << row.name;
    EXPECT_FALSE(saved && gOsl.memory->GlobalLock(saved) && gOsl.memory->GlobalUnlock(saved)) << "the fetched copy comes unlocked: " << row.name;
    if (saved) gOsl.memory->GlobalFree(saved);
}
INSTANTIATE_TEST_SUITE_P(Table, PrintSetupDialog, ::testing::ValuesIn(kDialog));

} // namespace
