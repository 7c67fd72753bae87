// The printer setup dialog, device modes for a request, and the paper
// queries, over a scripted spooler and user: the rows the dialog lists, what a
// run confirms, writes and announces, and what the caller holds after; paper
// codes merged by the driver, custom sizes as forms or as sizes, the saved
// setup, the paper and bin lists, and one paper's size and printable part.
#include "print/print.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_setup.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Script = ScriptedSetup::Script;
using Form = ScriptedSetup::Form;

const char kRows[] = "row:PDF on CUPS:PDF row:Laser on LPT1: row:Laser on COM1: selected:0", kSame[] = "PDF|pdfdrv|CUPS:PDF";
// "EnableWindow:2816,N": the Setup button enabled (1) or not (0).
const char kOn[] = "EnableWindow:2816,1", kAnnounced[] = "EnableWindow:2816,1 broadcast:0,windows,3,2000";
const char kNewPrinter[] = "EnableWindow:2816,1 EnableWindow:2816,1 profile:windows,device,Laser,ldrv,LPT1:, COM1: profile:0,0,0 "
                           "broadcast:0,0,0,1000 broadcast:0,windows,3,2000";
// copies: dmCopies of the caller's device mode after the run, -1 for none.
struct DialogRow { const char* name; Script script; bool withMode; BOOL skipNone; BOOL result; const char* rows; const char* calls; const char* names; int copies; };
const DialogRow kDialog[] = {
    {"OK with no change", {}, true, 0, 0, kRows, kOn, kSame, 1},
    {"Cancel after picking another printer", {.user = {"select 1", "cancel"}}, true, 0, 0, kRows, "EnableWindow:2816,1 EnableWindow:2816,1 broadcast:0,windows,3,2000",
     kSame, 1},
    {"OK with no device mode is a change", {}, false, 0, 1, kRows, kAnnounced, kSame, -1},
    {"the driver's settings", {.user = {"setup", "ok"}}, true, 0, 1, kRows, "EnableWindow:2816,1 MessageBoxA:Settings changed,Printer Setup,64 broadcast:0,windows,3,2000",
     kSame, 7},
    {"the driver's dialog cancelled", {.user = {"setup", "ok"}, .replies = {{"DocumentPropertiesA:14", {IDCANCEL}}}}, true, 0, 0, kRows, kOn, kSame, 1},
    {"a new printer", {.user = {"select 1", "ok"}}, true, 0, 1, kRows, kNewPrinter, "Laser|ldrv|LPT1:, COM1:", -1},
    {"a double click confirms", {.user = {"double 2", "cancel"}}, true, 0, 1, kRows, kNewPrinter, "Laser|ldrv|LPT1:, COM1:", -1},
    {"a port \"None\" and an empty one left out", {.printers = {{"X", "xd", "None,  ,FILE:"}}, .user = {"cancel"}}, true, 1, 0, "row:X on FILE: selected:-1",
     "EnableWindow:2816,0", kSame, 1},
    {"a port \"None\" listed", {.printers = {{"X", "xd", "None"}}, .user = {"cancel"}}, true, 0, 0, "row:X on None selected:-1", "EnableWindow:2816,0", kSame, 1},
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
    EXPECT_EQ(setup.print.Calls("row: selected:"), row.rows) << "the rows listed and the one selected: " << row.name;
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

struct Request { WORD orientation, paper; LONG width, height; WORD bin; };
// The result "paper orientation length width bin form bytes copies", or "none".
std::string describe(HGLOBAL block) {
    const DEVMODEA* m = block ? static_cast<const DEVMODEA*>(gOsl.memory->GlobalLock(block)) : nullptr;
    if (!m) return "none";
    char text[160];
    std::snprintf(text, sizeof text, "%d %d %d %d %d %.32s %d %d", m->dmPaperSize, m->dmOrientation, m->dmPaperLength, m->dmPaperWidth,
                  m->dmDefaultSource, reinterpret_cast<const char*>(m->dmFormName), int(gOsl.memory->GlobalSize(block)), m->dmCopies);
    return gOsl.memory->GlobalUnlock(block), gOsl.memory->GlobalFree(block), text;
}
const char kAdd[] = "DeleteFormA:OxleeCustomForm AddFormA:OxleeCustomForm,215951,279466 ";
const std::vector<Form> kLetterA4 = {{"Letter", 215900, 279400}, {"A4", 210000, 297000}};
// saved: the copies of a device mode saved for the printer first, 0 for none.
struct ModeRow { const char* name; Script script; DWORD platform; short saved; Request request; const char* device; const char* mode; std::string calls; };
const ModeRow kModes[] = {
    {"paper 0: the orientation only", {}, 2, 0, {1, 0, 0, 0, 4}, "PDF", "1 2 2794 2159 7 Letter 220 1", ""},
    {"a listed paper merged", {}, 2, 0, {1, 9, 0, 0, 4}, "PDF", "9 2 2970 2100 4 A4 220 1", "DocumentPropertiesA:10"},
    {"a listed paper the default agrees with", {}, 2, 0, {0, 1, 0, 0, 7}, "PDF", "1 1 2794 2159 7 Letter 220 1", ""},
    {"a printer of one paper", {.papers = {{9, 2100, 2970, "A4"}}}, 2, 0, {1, 9, 0, 0, 4}, "PDF", "9 2 2970 2100 4 A4 220 1", "DocumentPropertiesA:10"},
    {"a paper the printer doesn't list", {}, 2, 0, {1, 70, 0, 0, 4}, "PDF", "1 1 2794 2159 7 Letter 220 1", ""},
    {"8.5 by 11 inches registers the form", {}, 2, 0, {0, 256, 8500, 11000, 4}, "PDF", "3 1 2794 2159 4 OxleeCustomForm 220 1", std::string(kAdd) + "ResetDCA:4"},
    {"the same on its side", {}, 2, 0, {0, 256, 11000, 8500, 4}, "PDF", "3 1 2159 2794 4 OxleeCustomForm 220 1", std::string(kAdd) + "ResetDCA:4"},
    {"A4 in thousandths of an inch, landscape", {}, 2, 0, {1, 256, 8270, 11690, 4}, "PDF", "3 2 2101 2970 4 OxleeCustomForm 220 1",
     "DeleteFormA:OxleeCustomForm AddFormA:OxleeCustomForm,210107,296996 ResetDCA:4"},
    {"a form of the very size", {.forms = {kLetterA4[0], kLetterA4[1], {"Mine", 215951, 279466}}}, 2, 0, {0, 256, 8500, 11000, 4}, "PDF",
     "3 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"the first form: the custom code", {.forms = {{"Mine", 215951, 279466}}}, 2, 0, {0, 256, 8500, 11000, 4}, "PDF",
     "256 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"a form that can't be added: the printer's paper", {.failAddForm = true}, 2, 0, {1, 256, 8500, 11000, 4}, "PDF", "1 2 2159 2794 4 Letter 220 1",
     std::string(kAdd) + "ResetDCA:4"},
    {"a system without forms", {}, 1, 0, {0, 256, 8500, 11000, 4}, "PDF", "256 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"no such printer", {}, 2, 0, {0, 0, 0, 0, 0}, "none", "none", ""},
    {"a driver whose device mode grows", {.replies = {{"DocumentPropertiesA:0", {300}}}}, 2, 0, {0, 0, 0, 0, 7}, "PDF", "1 1 2794 2159 7 Letter 300 1", ""},
    {"the saved setup for paper 0", {}, 2, 9, {0, 0, 0, 0, 4}, "PDF", "1 2 2794 2159 7 Letter 220 9", ""},
    {"the saved setup agrees", {}, 2, 9, {1, 1, 0, 0, 7}, "PDF", "1 2 2794 2159 7 Letter 220 9", ""},
    {"the saved setup disagrees", {}, 2, 9, {1, 9, 0, 0, 7}, "PDF", "9 2 2970 2100 7 A4 220 1", "DocumentPropertiesA:10"},
};
class PrintDevMode : public ::testing::TestWithParam<ModeRow> {};
TEST_P(PrintDevMode, Request) {
    const ModeRow& row = GetParam();
    ScriptedSetup setup(row.script);
    ScriptedSystem system(0x409, 0x409, row.platform);
    char driver[260] = "pdfdrv", port[260] = "CUPS:PDF";
    HGLOBAL saved = row.saved ? gOsl.memory->GlobalAlloc(GMEM_MOVEABLE, 220) : nullptr;
    if (LPDEVMODEA m = saved ? static_cast<LPDEVMODEA>(gOsl.memory->GlobalLock(saved)) : nullptr) {
        gOsl.graphics->DocumentPropertiesA(nullptr, nullptr, nullptr, m, nullptr, 2);
        m->dmCopies = row.saved, m->dmOrientation = 2;
        gOsl.memory->GlobalUnlock(saved);
    }
    PrtClearSaved();
    if (saved) PrintSetupStore("PDF", driver, port, saved), gOsl.memory->GlobalFree(saved);
    const Request& r = row.request;
    ScriptedHeap heap;
    EXPECT_EQ(describe(PrintGetDevMode(r.orientation, row.device, driver, port, r.paper, r.width, r.height, r.bin)), row.mode)
        << "PrintGetDevMode(" << r.orientation << ", " << r.paper << ", " << r.width << ", " << r.height << ", " << r.bin << "): " << row.name;
    EXPECT_EQ(setup.print.Calls("AddFormA DeleteFormA DocumentPropertiesA:10 ResetDCA"), row.calls) << row.name;
    EXPECT_EQ(heap.Outstanding(), 0) << "blocks left by PrintGetDevMode: " << row.name;
    auto entries = [&](const char* name) { std::string s = setup.print.Calls(name); return s.empty() ? 0 : 1 + std::count(s.begin(), s.end(), ' '); };
    EXPECT_EQ(entries("ClosePrinter"), entries("open")) << "each printer opened closed again: " << row.name;
    PrtClearSaved();
}
INSTANTIATE_TEST_SUITE_P(Table, PrintDevMode, ::testing::ValuesIn(kModes));

// The lists as "count: entry entry": papers "code WxL name", bins "number name".
std::string entries(int n, std::initializer_list<HGLOBAL*> blocks, std::initializer_list<int> kinds) {
    std::string out = std::to_string(n) + ":";
    for (int i = 0; i < n; ++i) {
        auto kind = kinds.begin();
        for (HGLOBAL* b : blocks) {
            const char* at = static_cast<const char*>(gOsl.memory->GlobalLock(*b));
            int k = *kind++; // 2 a code, 8 a size, else a name of that many bytes
            out += " " + (k == 2 ? std::to_string(reinterpret_cast<const WORD*>(at)[i]) : k == 8 ? std::to_string(reinterpret_cast<const LONG*>(at)[2 * i]) + "x" +
                          std::to_string(reinterpret_cast<const LONG*>(at)[2 * i + 1]) : std::string(at + k * i));
        }
    }
    for (HGLOBAL* b : blocks) EXPECT_EQ(n > 0 ? gOsl.memory->GlobalFree(*b) : *b, nullptr) << "a handle for each list, and only with a count";
    return out;
}
std::string papers(LPCSTR device) {
    HGLOBAL c = nullptr, s = nullptr, n = nullptr, b = nullptr, bn = nullptr;
    std::string out = entries(PrintGetPageSizes(device, nullptr, "CUPS:PDF", nullptr, &c, &s, &n), {&c, &s, &n}, {2, 8, 64});
    return out + " | " + entries(PrintGetPaperBins(device, nullptr, "CUPS:PDF", nullptr, &b, &bn), {&b, &bn}, {2, 24});
}
struct ListRow { const char* name; Script script; const char* device; const char* lists; };
const ListRow kLists[] = {
    {"papers and bins", {}, "PDF", "2: 1 2159x2794 Letter 9 2100x2970 A4 | 2: 7 Automatic 4 Manual"},
    {"no bins", {.bins = {}}, "PDF", "2: 1 2159x2794 Letter 9 2100x2970 A4 | -1:"},
    {"no such printer", {}, "none", "0: | 0:"},
};
class PrintPaperLists : public ::testing::TestWithParam<ListRow> {};
TEST_P(PrintPaperLists, Lists) {
    ScriptedSetup setup(GetParam().script);
    EXPECT_EQ(papers(GetParam().device), GetParam().lists) << "PrintGetPageSizes and PrintGetPaperBins: " << GetParam().name;
}
INSTANTIATE_TEST_SUITE_P(Table, PrintPaperLists, ::testing::ValuesIn(kLists));

// A device mode of `fields` with paper, width, length, orientation, form;
// the answer "result paper WxH left,top,right,bottom".
struct PageRow { const char* name; Script script; bool mode; DWORD fields; short paper, width, length, orientation; const char* form; const char* info; };
const DWORD kSize = 2, kForm = 0x10002;
const ScriptedPrint::Replies kOffset = {{"Escape8:13", {1}}}; // the printing offset (5, 4) in device units
const PageRow kPages[] = {
    {"a custom size", {}, true, kSize, 256, 2100, 2970, 1, "", "1 256 2100x2970 0,0,8500,11000"},
    {"a form", {}, true, kForm, 9, 0, 0, 1, "A4", "1 9 2100x2970 0,0,8500,11000"},
    {"a form the printer lacks", {}, true, kForm, 9, 0, 0, 1, "Nope", "0 9 -"},
    {"a listed code, landscape", {.replies = kOffset}, true, kSize, 9, 0, 0, 2, "", "1 9 2970x2100 40,50,8540,11050"},
    {"an unlisted code: the device's page", {.replies = kOffset}, true, kSize, 70, 0, 0, 1, "", "1 70 8500x11000 50,40,8550,11040"},
    {"no page size", {.replies = {{"Escape8:12", {0}}}}, true, kSize, 70, 0, 0, 1, "", "0 70 -"},
    {"the printer's default", {}, false, 0, 0, 0, 0, 0, "", "1 1 2159x2794 0,0,8500,11000"},
};
class PageInfo : public ::testing::TestWithParam<PageRow> {};
TEST_P(PageInfo, SizeAndPrintable) {
    const PageRow& row = GetParam();
    ScriptedSetup setup(row.script);
    DEVMODEA m = {};
    m.dmSize = sizeof m, m.dmFields = row.fields, m.dmPaperSize = row.paper, m.dmPaperWidth = row.width, m.dmPaperLength = row.length;
    m.dmOrientation = row.orientation, std::strcpy(reinterpret_cast<char*>(m.dmFormName), row.form);
    WORD paper = 0;
    SIZE size = {-1, -1};
    RECT r = {-1, -1, -1, -1};
    BOOL ok = PageGetPageInfo("pdfdrv", "PDF", "CUPS:PDF", row.mode ? &m : nullptr, &paper, &size, &r);
    std::string info = std::to_string(ok) + " " + std::to_string(paper) + " ";
    info += size.cx < 0 && r.left < 0 ? "-" : std::to_string(size.cx) + "x" + std::to_string(size.cy) + " " + std::to_string(r.left) + "," +
                                                  std::to_string(r.top) + "," + std::to_string(r.right) + "," + std::to_string(r.bottom);
    EXPECT_EQ(info, row.info) << "PageGetPageInfo: " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, PageInfo, ::testing::ValuesIn(kPages));

} // namespace
