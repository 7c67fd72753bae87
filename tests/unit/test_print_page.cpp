// The page layer over a scripted device of 100 pixels an inch (a device unit
// is 10 thousandths of an inch) with Letter paper, 8500 by 11000 logical.
#include "print/print.h"
#include "tests/support/scripted_print.h"

#include <gtest/gtest.h>

namespace {

// The host: logs each DrawPage and answers with `flags` in turn (MoreAcross,
// MoreDown; the last repeats), and NextPage yes until `pages` pages.
struct Draw { ScriptedPrint* print; std::vector<std::pair<LONG, LONG>> flags; int pages, calls, asked, badArgs; };
LONG OXLCALLBACK drawPage(HDC, int code, RECT* band, LPARAM data, LPARAM r1, LPARAM r2, LPARAM r3, LONG* across, LONG* down) {
    Draw* d = reinterpret_cast<Draw*>(data);
    d->badArgs += r1 || r2 || r3;
    d->print->Note("draw:" + std::to_string(code) + "," + std::to_string(band->right) + "," + std::to_string(band->bottom) + "," + std::to_string(*across) + std::to_string(*down));
    size_t i = std::min(size_t(d->calls++), d->flags.size() - 1);
    *across = d->flags[i].first, *down = d->flags[i].second;
    return 0;
}
BOOL OXLCALLBACK nextPage(LPARAM data) { Draw* d = reinterpret_cast<Draw*>(data); return d->print->Note("next"), ++d->asked < d->pages; }

// sheets: times DrawPage was called; then the page's size at the end.
// A device whose printable area starts 25 by 50 pixels in, with copies and the printing offset.
#define OFFSET(...) {{"Escape8:13", {1}}, {"Escape8:17", {1}}, {"GetDeviceCaps:112", {25}}, {"GetDeviceCaps:113", {50}}, {"GetClipBox", {__VA_ARGS__}}}
// `calls`, when given: the origins, frames, DrawPage's arguments and the copies asked.
struct Row { const char* name; LONG width, height, left, top, splitAcross, splitDown, snap; ScriptedPrint::Replies script; LONG copies; short dmCopies;
             std::vector<std::pair<LONG, LONG>> flags; int pages, sheets; LONG endWidth, endHeight; const char* calls = nullptr; };
const Row kTiles[] = {
    {"a page equal to the paper", 8500, 11000, 0, 0, 1, 1, 1, {}, 1, 0, {{1, 1}}, 1, 1, 8500, 11000},
    {"20 wider, split set: cut", 8520, 11000, 0, 0, 1, 0, 1, {}, 1, 0, {{1, 1}}, 1, 1, 8500, 11000},
    {"21 wider, split set: two columns", 8521, 11000, 0, 0, 1, 0, 1, {}, 1, 0, {{1, 1}}, 1, 2, 8521, 11000},
    {"17000 wide at left 1: three", 17000, 11000, 1, 0, 1, 0, 1, {}, 1, 0, {{1, 1}}, 1, 3, 17000, 11000},
    {"top 1 pushes 22000 into three rows", 8500, 22000, 0, 1, 0, 1, 1, {}, 1, 0, {{1, 1}}, 1, 3, 8500, 22000},
    {"MoreDown cleared on the second tile: Tiles 2", 17000, 22000, 0, 0, 1, 1, 1, {}, 1, 0, {{1, 1}, {1, 0}}, 1, 2, 17000, 22000},
    {"MoreAcross 0: a column of rows", 17000, 22000, 0, 0, 1, 1, 1, {}, 1, 0, {{0, 1}}, 1, 2, 17000, 22000},
    {"3 copies by the device", 8500, 11000, 0, 0, 0, 0, 1, {{"Escape8:17", {1}}}, 3, 0, {{1, 1}}, 1, 1, 8500, 11000},
    {"3 copies in software", 8500, 11000, 0, 0, 0, 0, 1, {}, 3, 1, {{1, 1}}, 1, 3, 8500, 11000},
    {"dmCopies 2: the driver copies", 8500, 11000, 0, 0, 0, 0, 1, {}, 3, 2, {{1, 1}}, 1, 1, 8500, 11000},
    {"2 columns, 2 copies, 2 pages", 17000, 11000, 0, 0, 1, 0, 1, {}, 2, 0, {{1, 1}}, 2, 8, 17000, 11000},
    {"draft mode when the device has it", 8500, 11000, 0, 0, 0, 0, 1, {{"Escape8:7", {1}}}, 1, 0, {{1, 1}}, 1, 1, 8500, 11000, "Escape:7,3 SetWindowOrgEx:0,0,0 SetViewportOrgEx:0,0,0 SetBkMode:1 Rectangle:0,0,8500,-11000 draw:3,850,1100,00 next"},
    {"snapped to the device's grid", 8005, 10996, 0, 0, 0, 0, 0, {}, 1, 0, {{1, 1}}, 1, 1, 8000, 10990},
    {"paper size from the capabilities", 17000, 11000, 0, 0, 1, 0, 1, {{"Escape8:12", {0}}}, 1, 0, {{1, 1}}, 1, 2, 17000, 11000},
    {"width cut, snap: clip short of the height keeps it", 9000, 10000, 0, 0, 0, 0, 1, {{"GetDeviceCaps:113", {50}}, {"GetClipBox", {0, 0, 8500, -10000}}}, 1, 0, {{1, 1}}, 1, 1, 8500, 10000},
    {"width cut, snap: clip far short of the height makes it the paper's", 9000, 10000, 0, 0, 0, 0, 1, {{"GetDeviceCaps:113", {50}}, {"GetClipBox", {0, -100, 8500, -9099}}}, 1, 0, {{1, 1}}, 1, 1, 8500, 11000},
    {"height cut, snap: clip far short of the width", 8000, 12000, 0, 0, 0, 0, 1, {{"GetDeviceCaps:112", {25}}, {"GetClipBox", {0, 0, 7499, -11000}}}, 1, 0, {{1, 1}}, 1, 1, 8500, 11000},
    {"an empty clip box: no drawing", 8500, 11000, 0, 0, 0, 0, 1, {{"GetClipBox", {0, 0, 0, -11000}}}, 1, 0, {{1, 1}}, 1, 0, 8500, 11000},
    // Where each tile of a framed page in two copies made by the device lands: window and viewport origins, the frame, what DrawPage is given;
    // the third row and column show the step between tiles.
    {"1 by 3 with the printing offset: the third row", 8000, 31000, 0, 0, 1, 0, 1, OFFSET(0, 0, 8000, -10000), 2, 0, {{1, 1}}, 1, 3, 8000, 31000, "Escape:17,2 SetWindowOrgEx:0,0,0 SetViewportOrgEx:-25,-50,0 SetBkMode:1 Rectangle:0,0,8000,-31000 draw:3,850,1100,00 SetWindowOrgEx:0,-11500,0 SetViewportOrgEx:-25,0,0 SetBkMode:1 Rectangle:0,-11500,8000,-42500 draw:3,850,1100,00 SetWindowOrgEx:0,-22500,0 SetViewportOrgEx:-25,0,0 SetBkMode:1 Rectangle:0,-22500,8000,-53500 draw:3,850,1100,00 next"},
    {"an offset but no printing-offset escape: margins 0", 17000, 11000, 0, 0, 1, 0, 1, {{"GetDeviceCaps:112", {25}}, {"GetDeviceCaps:113", {50}}, {"Escape8:17", {1}}}, 2, 0, {{1, 1}}, 1, 2, 17000, 11000, "Escape:17,2 SetWindowOrgEx:0,0,0 SetViewportOrgEx:0,0,0 SetBkMode:1 Rectangle:0,0,17000,-11000 draw:3,850,1100,00 SetWindowOrgEx:8500,0,0 SetViewportOrgEx:0,0,0 SetBkMode:1 Rectangle:8500,0,25500,-11000 draw:3,850,1100,00 next"},
    {"3 by 1 with the printing offset: the third column", 25000, 10000, 0, 0, 1, 0, 1, OFFSET(0, 0, 8000, -10000), 2, 0, {{1, 1}}, 1, 3, 25000, 10000, "Escape:17,2 SetWindowOrgEx:0,0,0 SetViewportOrgEx:-25,-50,0 SetBkMode:1 Rectangle:0,0,25000,-10000 draw:3,850,1100,00 SetWindowOrgEx:8250,0,0 SetViewportOrgEx:0,-50,0 SetBkMode:1 Rectangle:8250,0,33250,-10000 draw:3,850,1100,00 SetWindowOrgEx:16750,0,0 SetViewportOrgEx:0,-50,0 SetBkMode:1 Rectangle:16750,0,41750,-10000 draw:3,850,1100,00 next"},
};
TEST(PageTiles, SheetsAndSize) {
    for (const Row& row : kTiles) {
        ScriptedPrint print(row.script);
        Draw draw{&print, row.flags, row.pages, 0, 0, 0};
        PagePrintInfo info = {};
        DEVMODEA mode = {};
        info.PageWidth = row.width, info.PageHeight = row.height, info.Copies = row.copies, info.Job.Flags = PRINT_NO_DIALOG, info.Job.DevMode = &mode, mode.dmCopies = row.dmCopies;
        info.PageLeft = row.left, info.PageTop = row.top, info.SplitAcross = row.splitAcross, info.SplitDown = row.splitDown, info.SnapToPaper = row.snap, info.DrawFrame = 1, info.DraftMode = 3;
        info.DrawPage = drawPage, info.NextPage = nextPage, info.HostData = reinterpret_cast<LPARAM>(&draw);
        BOOL result = PagePrint(print.AddWindow({}), &info);
        auto outcome = [](int sheets, LONG width, LONG height, int asked, int zero) { return std::to_string(sheets) + " sheets, " + std::to_string(width) + " by " + std::to_string(height) + ", NextPage " + std::to_string(asked) + ", " + std::to_string(zero) + " for PagePrint's 1, PageCount 1, DrawPage's reserved values and the status"; };
        EXPECT_EQ(outcome(draw.calls, info.PageWidth, info.PageHeight, draw.asked, (result - 1) + (info.PageCount - 1) + draw.badArgs + info.Job.Status), outcome(row.sheets, row.endWidth, row.endHeight, row.pages, 0)) << "PagePrint: " << row.name;
        EXPECT_EQ(row.calls ? print.Calls("Escape:7 Escape:17 SetWindowOrgEx SetViewportOrgEx SetBkMode Rectangle draw: next") : "", row.calls ? row.calls : "") << row.name;
    }
}

} // namespace
