// Device modes for a request and the page query over a scripted spooler:
// paper codes merged by the driver, custom sizes as forms or as sizes, the
// saved setup, and one paper's size and printable part; the setup dialog's
// row text. (The dialog itself and the paper and bin lists are tested on a
// real printer under Wine: test_print_setup_real.cpp and
// tests/print_setup_cups.sh.)
#include "print/print.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_setup.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Script = ScriptedSetup::Script;
const ScriptedPrint::Replies kNoPrinter = {{"OpenPrinterA", {0}}}; // no printer opens

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
const char kAdd[] = "DeleteFormA:OxleeCustomForm AddFormA:OxleeCustomForm,215951,279466,0:0:215951:279466 ";
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
     "DeleteFormA:OxleeCustomForm AddFormA:OxleeCustomForm,210107,296996,0:0:210107:296996 ResetDCA:4"},
    {"a form of the very size", {.forms = {{"Letter", 215900, 279400}, {"A4", 210000, 297000}, {"Mine", 215951, 279466}}}, 2, 0, {0, 256, 8500, 11000, 4}, "PDF",
     "3 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"the first form: the custom code", {.forms = {{"Mine", 215951, 279466}}}, 2, 0, {0, 256, 8500, 11000, 4}, "PDF",
     "256 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"a form that can't be added: the printer's paper", {.failAddForm = true, .replies = {{"dmSize", {176}}}}, 2, 0, {1, 256, 8500, 11000, 4}, "PDF",
     "1 2 2159 2794 4 Letter 220 1", std::string(kAdd) + "ResetDCA:4"},
    {"a system without forms", {}, 1, 0, {0, 256, 8500, 11000, 4}, "PDF", "256 1 2794 2159 4 OxleeCustomForm 220 1", "ResetDCA:4"},
    {"no such printer", {.replies = kNoPrinter}, 2, 0, {0, 0, 0, 0, 0}, "none", "none", ""},
    {"a driver whose device mode grows", {.replies = {{"DocumentPropertiesA:0", {300}}}}, 2, 0, {0, 0, 0, 0, 7}, "PDF", "1 1 2794 2159 7 Letter 300 1", ""},
    {"the saved setup for paper 0", {}, 2, 9, {0, 0, 0, 0, 4}, "PDF", "1 2 2794 2159 7 Letter 220 9", ""},
    {"the saved setup disagrees", {}, 2, 9, {1, 9, 0, 0, 7}, "PDF", "9 2 2970 2100 7 A4 220 1", "DocumentPropertiesA:10"},
};
class PrintDevMode : public ::testing::TestWithParam<ModeRow> {};
TEST_P(PrintDevMode, Request) {
    const ModeRow& row = GetParam();
    ScriptedSetup setup(row.script);
    ScriptedSystem system(0x409, 0x409, row.platform);
    char driver[260] = "drv", port[260] = "CUPS:PDF";
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
    EXPECT_EQ(entries("ClosePrinter"), row.script.replies.count("OpenPrinterA") ? 0 : entries("OpenPrinterA")) << "each printer opened closed again: " << row.name;
    PrtClearSaved();
}
INSTANTIATE_TEST_SUITE_P(Table, PrintDevMode, ::testing::ValuesIn(kModes));

// A device mode of `fields` with paper, width, length, orientation, form;
// the answer "result paper WxH left,top,right,bottom".
struct PageRow { const char* name; Script script; bool mode; DWORD fields; short paper, width, length, orientation; const char* form; const char* info; };
const DWORD kSize = 2, kForm = 0x10002;
const ScriptedPrint::Replies kOffset = {{"Escape8:13", {1}}, {"GetDeviceCaps:112", {5}}, {"GetDeviceCaps:113", {4}}}; // a printing offset of (5, 4)
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
    BOOL ok = PageGetPageInfo("drv", "PDF", "CUPS:PDF", row.mode ? &m : nullptr, &paper, &size, &r);
    std::string info = std::to_string(ok) + " " + std::to_string(paper) + " ";
    info += size.cx < 0 && r.left < 0 ? "-" : std::to_string(size.cx) + "x" + std::to_string(size.cy) + " " + std::to_string(r.left) + "," +
                                                  std::to_string(r.top) + "," + std::to_string(r.right) + "," + std::to_string(r.bottom);
    EXPECT_EQ(info, row.info) << "PageGetPageInfo: " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, PageInfo, ::testing::ValuesIn(kPages));

// The setup dialog's row text: the format's two "%s" filled, cut to the buffer.
TEST(PrintSetupRow, FormatPairFillsAndCuts) {
    char row[64], cut[8];
    PrintFormatPair(row, sizeof row, "%s on %s", "PDF", "CUPS:PDF");
    PrintFormatPair(cut, sizeof cut, "%s on %s", "PDF", "CUPS:PDF");
    EXPECT_EQ(std::string(row) + "|" + cut, "PDF on CUPS:PDF|PDF on ") << "PrintFormatPair(\"%s on %s\", \"PDF\", \"CUPS:PDF\") into 64 and 8 bytes";
}

} // namespace
