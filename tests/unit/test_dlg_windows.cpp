// The window helpers over scripted windows: a 1280 by 1024 screen at 96
// pixels an inch.
#include "os/osl.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"
#include "ui/dlg.h"

#include <gtest/gtest.h>

namespace {

struct PixelRow { LONG length; BOOL vertical; int pixels; };
const PixelRow kPixels[] = {{1000, 0, 96}, {5, 0, 0}, {6, 0, 1}, {-6, 0, -1}, {-5, 0, 0}, {1000, 1, 96}, {15625, 0, 1500}, {0, 0, 0}};
class DlgPixels : public ::testing::TestWithParam<PixelRow> {};
TEST_P(DlgPixels, Rounded) {
    const PixelRow& row = GetParam();
    ScriptedPrint print({});
    EXPECT_EQ(DlgGetScreenPixels(row.length, row.vertical), row.pixels) << "DlgGetScreenPixels(" << row.length << ", " << row.vertical << ")";
    EXPECT_EQ(print.Calls({"DeleteDC"}), "DeleteDC") << "the information context is deleted";
}
INSTANTIATE_TEST_SUITE_P(Table, DlgPixels, ::testing::ValuesIn(kPixels));

// Windows of the instance 0x40 in this thread (0x100 on), disabled and enabled
// again: `styles` gives each window's style, 'd' one disabled before, 'o'
// another thread's, 'i' another instance's, 'x' the one left out; a window
// disabled before stays so. Fifty windows at most. On NT a window must be of
// the instance too; elsewhere the thread decides.
struct EnableRow { const char* styles; DWORD platform; const char* disabled; const char* enabled; };
const EnableRow kEnables[] = {
    {"-dxo-", 2, "disable:256 disable:320", "enable:256 enable:320"},
    {"-i", 2, "disable:256", "enable:256"},
    {"-i", 1, "disable:256 disable:272", "enable:256 enable:272"},
};
class DlgEnableAll : public ::testing::TestWithParam<EnableRow> {};
TEST_P(DlgEnableAll, DisabledBeforeStaysSo) {
    const EnableRow& row = GetParam();
    ScriptedSystem system(0x409, 0x409, row.platform);
    ScriptedPrint print({});
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40);
    DWORD me = gOsl.sync->GetCurrentThreadId();
    HWND except = nullptr;
    for (const char* c = row.styles; *c; ++c) {
        HWND w = print.AddWindow({nullptr, LONG(*c == 'd' ? WS_DISABLED : 0), *c == 'i' ? reinterpret_cast<HINSTANCE>(0x50) : inst, me + (*c == 'o'), {}, false});
        if (*c == 'x') except = w;
    }
    HGLOBAL saved = DlgEnableAllWindows(inst, except, FALSE, nullptr);
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), row.disabled) << "DlgEnableAllWindows(FALSE) over " << row.styles;
    EXPECT_EQ(DlgEnableAllWindows(inst, except, TRUE, saved), nullptr) << "the record freed";
    EXPECT_EQ(print.Calls({"enable:"}), row.enabled) << "DlgEnableAllWindows(TRUE) over " << row.styles;
    for (int i = 0; row.styles[i]; ++i)
        EXPECT_EQ(print.WindowOf(reinterpret_cast<HWND>(uintptr_t(0x100 + 0x10 * i))).style & WS_DISABLED, LONG(row.styles[i] == 'd' ? WS_DISABLED : 0))
            << "window " << i << " of " << row.styles;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgEnableAll, ::testing::ValuesIn(kEnables));

TEST(DlgEnableAllLimits, FiftyAtMostAndNoRecord) {
    ScriptedPrint print({});
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40);
    for (int i = 0; i < 52; ++i) print.AddWindow({nullptr, 0, inst, gOsl.sync->GetCurrentThreadId(), {}, false});
    DlgEnableAllWindows(inst, nullptr, TRUE, DlgEnableAllWindows(inst, nullptr, FALSE, nullptr));
    std::string calls = print.Calls({"disable:", "enable:"});
    EXPECT_EQ(std::count(calls.begin(), calls.end(), ':'), 100) << "50 disabled and 50 enabled of 52 windows";
    EXPECT_EQ(DlgEnableAllWindows(nullptr, nullptr, FALSE, nullptr), nullptr) << "a null instance";
    EXPECT_EQ(DlgEnableAllWindows(inst, nullptr, TRUE, nullptr), nullptr) << "enabling with no record";
}

TEST(DlgEnableParentChain, ParentsAndBack) {
    ScriptedPrint print({});
    HWND top = print.AddWindow({nullptr, 0, nullptr, 0, {}, false});
    HWND middle = print.AddWindow({top, WS_DISABLED, nullptr, 0, {}, false});
    HWND child = print.AddWindow({middle, 0, nullptr, 0, {}, false});
    DlgEnableParentChain(child, TRUE, DlgEnableParentChain(child, FALSE, nullptr));
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), "disable:288 disable:256 enable:288 enable:256");
}

// A 200 by 100 dialog centred on its parent, kept on the screen.
struct CentreRow { const char* name; RECT parent; bool iconic; LONG style; const char* move; };
const CentreRow kCentres[] = {
    {"in the middle", {400, 300, 800, 700}, false, 0, "move:500,450,200,100"},
    {"top left corner: kept on the screen", {0, 0, 100, 100}, false, 0, "move:0,0,200,100"},
    {"bottom right corner", {1200, 1000, 1280, 1024}, false, 0, "move:1080,924,200,100"},
    {"just inside at the right", {1080, 0, 1280, 100}, false, 0, "move:1080,0,200,100"},
    {"iconic parent: the screen's centre", {0, 0, 100, 100}, true, 0, "move:540,462,200,100"},
    {"no parent: the desktop", {}, false, -1, "move:540,462,200,100"},
    {"a child dialog in its parent's coordinates", {400, 300, 800, 700}, false, WS_CHILD, "move:100,150,200,100"},
};
class DlgCentre : public ::testing::TestWithParam<CentreRow> {};
TEST_P(DlgCentre, OnScreen) {
    const CentreRow& row = GetParam();
    ScriptedPrint print({});
    HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, row.parent, row.iconic});
    HWND dialog = print.AddWindow({row.style < 0 ? nullptr : parent, row.style < 0 ? 0 : row.style, nullptr, 0, {10, 10, 210, 110}, false});
    EXPECT_EQ(DlgCenterDialog(dialog), 1) << row.name;
    EXPECT_EQ(print.Calls({"move:"}), row.move) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgCentre, ::testing::ValuesIn(kCentres));

// Wizards: each step's procedure sets the next step from the row's table.
std::vector<LONG> gNext = {1, 2, -1};
INT_PTR gAnswer;
INT_PTR WINAPI step(HWND, UINT, WPARAM, LPARAM lp) {
    DLGWIZARD* wz = reinterpret_cast<DLGWIZARD*>(lp);
    wz->DlgNext = gNext[size_t(wz->DlgCurrent)];
    return gAnswer;
}
enum { kNullProc = 1, kNullNames = 2, kNullProcs = 4, kNullInstance = 8, kNullRecord = 16 };
struct WizardRow { const char* name; const char* names; LONG start; INT_PTR answer; int broken; BOOL result; const char* shown; };
const WizardRow kWizards[] = {
    {"three steps in order", "A\0B\0C\0", 0, 1, 0, 1, "dialogbox:A dialogbox:B dialogbox:C"},
    {"DlgNext equal to DlgCount", "A\0B\0C\0", 3, 1, 0, 0, ""},
    {"negative at the start", "A\0B\0C\0", -1, 1, 0, 1, ""},
    {"Cancel", "A\0B\0C\0", 0, IDCANCEL, 0, 0, "dialogbox:A"},
    {"the dialog fails", "A\0B\0C\0", 1, -1, 0, 0, "dialogbox:B"},
    {"names run out", "A\0\0", 0, 1, 0, 0, "dialogbox:A"},
    {"a null procedure on the way", "A\0B\0C\0", 2, 1, kNullProc, 0, ""},
    {"step 2 to the end", "A\0B\0C\0", 2, 1, 0, 1, "dialogbox:C"},
    {"null templates", "A\0B\0C\0", -1, 1, kNullNames, 0, ""},
    {"null procedures", "A\0B\0C\0", -1, 1, kNullProcs, 0, ""},
    {"null instance", "A\0B\0C\0", -1, 1, kNullInstance, 0, ""},
    {"null record", "A\0B\0C\0", -1, 1, kNullRecord, 0, ""},
};
class DlgWizard : public ::testing::TestWithParam<WizardRow> {};
TEST_P(DlgWizard, Steps) {
    const WizardRow& row = GetParam();
    ScriptedPrint print({});
    gAnswer = row.answer;
    DLGPROC procs[3] = {step, row.broken & kNullProc ? nullptr : step, step};
    DLGWIZARD wz = {nullptr, 0, reinterpret_cast<HINSTANCE>(row.broken & kNullInstance ? 0 : 0x40), row.broken & kNullNames ? nullptr : row.names,
                    row.broken & kNullProcs ? nullptr : procs, 3, -7, row.start};
    EXPECT_EQ(DlgDoDlgWizard(row.broken & kNullRecord ? nullptr : &wz), row.result) << row.name;
    EXPECT_EQ(print.Calls({"dialogbox:"}), row.shown) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgWizard, ::testing::ValuesIn(kWizards));

TEST(DlgMessageBox, FromTheStringTable) {
    ScriptedPrint print({});
    EXPECT_EQ(DlgMessageBoxString(nullptr, nullptr, 1961, 1963, 0, 48), IDOK);
    EXPECT_EQ(print.Calls({"box:"}), "box:Out of Disk Space,Printing Error,48");
}

} // namespace
