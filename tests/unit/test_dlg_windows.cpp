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
    EXPECT_EQ(DlgGetScreenPixels(row.length, row.vertical), row.pixels)
        << "DlgGetScreenPixels(" << row.length << ", " << row.vertical << ")";
    EXPECT_EQ(print.Calls({"DeleteDC"}), "DeleteDC") << "the information context is deleted";
}
INSTANTIATE_TEST_SUITE_P(Table, DlgPixels, ::testing::ValuesIn(kPixels));

// Four windows of this thread and instance (one disabled before, one left
// out) and one of another thread; disabled, then enabled again.
TEST(DlgEnableAll, AWindowDisabledBeforeStaysSo) {
    ScriptedPrint print({});
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40);
    DWORD me = gOsl.sync->GetCurrentThreadId();
    HWND a = print.AddWindow({nullptr, 0, inst, me, {}, false});
    HWND before = print.AddWindow({nullptr, WS_DISABLED, inst, me, {}, false});
    HWND except = print.AddWindow({nullptr, 0, inst, me, {}, false});
    HWND other = print.AddWindow({nullptr, 0, inst, me + 1, {}, false});
    HWND b = print.AddWindow({nullptr, 0, inst, me, {}, false});
    HGLOBAL saved = DlgEnableAllWindows(inst, except, FALSE, nullptr);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), "disable:256 disable:320");
    EXPECT_EQ(DlgEnableAllWindows(inst, except, TRUE, saved), nullptr);
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), "disable:256 disable:320 enable:256 enable:320");
    EXPECT_FALSE(print.WindowOf(a).style & WS_DISABLED);
    EXPECT_TRUE(print.WindowOf(before).style & WS_DISABLED);
    EXPECT_FALSE(print.WindowOf(b).style & WS_DISABLED);
    EXPECT_FALSE(print.WindowOf(other).style & WS_DISABLED);
    EXPECT_EQ(DlgEnableAllWindows(nullptr, nullptr, FALSE, nullptr), nullptr) << "a null instance";
    EXPECT_EQ(DlgEnableAllWindows(inst, nullptr, TRUE, nullptr), nullptr) << "enabling with no record";
}

// On NT a window must be of the instance too; elsewhere the thread decides.
struct PlatformRow { DWORD platform; const char* calls; };
const PlatformRow kPlatforms[] = {{2, "disable:256"}, {1, "disable:256 disable:272"}};
class DlgEnablePlatform : public ::testing::TestWithParam<PlatformRow> {};
TEST_P(DlgEnablePlatform, InstanceOnNT) {
    ScriptedSystem system(0x409, 0x409, GetParam().platform);
    ScriptedPrint print({});
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40), another = reinterpret_cast<HINSTANCE>(0x50);
    DWORD me = gOsl.sync->GetCurrentThreadId();
    print.AddWindow({nullptr, 0, inst, me, {}, false});
    print.AddWindow({nullptr, 0, another, me, {}, false});
    HGLOBAL saved = DlgEnableAllWindows(inst, nullptr, FALSE, nullptr);
    EXPECT_EQ(print.Calls({"disable:"}), GetParam().calls) << "platform " << GetParam().platform;
    DlgEnableAllWindows(inst, nullptr, TRUE, saved);
}
INSTANTIATE_TEST_SUITE_P(Table, DlgEnablePlatform, ::testing::ValuesIn(kPlatforms));

TEST(DlgEnableAll, FiftyAtMost) {
    ScriptedPrint print({});
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40);
    DWORD me = gOsl.sync->GetCurrentThreadId();
    for (int i = 0; i < 52; ++i) print.AddWindow({nullptr, 0, inst, me, {}, false});
    HGLOBAL saved = DlgEnableAllWindows(inst, nullptr, FALSE, nullptr);
    std::string calls = print.Calls({"disable:"});
    EXPECT_EQ(std::count(calls.begin(), calls.end(), ':'), 50);
    DlgEnableAllWindows(inst, nullptr, TRUE, saved);
    calls = print.Calls({"enable:"});
    EXPECT_EQ(std::count(calls.begin(), calls.end(), ':'), 50);
}

TEST(DlgEnableParentChain, ParentsAndBack) {
    ScriptedPrint print({});
    HWND top = print.AddWindow({nullptr, 0, nullptr, 0, {}, false});
    HWND middle = print.AddWindow({top, WS_DISABLED, nullptr, 0, {}, false});
    HWND child = print.AddWindow({middle, 0, nullptr, 0, {}, false});
    HGLOBAL saved = DlgEnableParentChain(child, FALSE, nullptr);
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), "disable:288 disable:256");
    DlgEnableParentChain(child, TRUE, saved);
    EXPECT_EQ(print.Calls({"disable:", "enable:"}), "disable:288 disable:256 enable:288 enable:256");
}

// A 200 by 100 dialog centred on its parent.
struct CentreRow { const char* name; RECT parent; bool iconic; const char* move; };
const CentreRow kCentres[] = {
    {"in the middle", {400, 300, 800, 700}, false, "move:500,450,200,100"},
    {"top left corner: kept on the screen", {0, 0, 100, 100}, false, "move:0,0,200,100"},
    {"bottom right corner", {1200, 1000, 1280, 1024}, false, "move:1080,924,200,100"},
    {"just inside at the right", {1080, 0, 1280, 100}, false, "move:1080,0,200,100"},
    {"iconic parent: the screen's centre", {0, 0, 100, 100}, true, "move:540,462,200,100"},
};
class DlgCentre : public ::testing::TestWithParam<CentreRow> {};
TEST_P(DlgCentre, OnScreen) {
    const CentreRow& row = GetParam();
    ScriptedPrint print({});
    HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, row.parent, row.iconic});
    HWND dialog = print.AddWindow({parent, 0, nullptr, 0, {10, 10, 210, 110}, false});
    EXPECT_EQ(DlgCenterDialog(dialog), 1);
    EXPECT_EQ(print.Calls({"move:"}), row.move) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgCentre, ::testing::ValuesIn(kCentres));

TEST(DlgCentre, NoParentNoOwnerTheDesktop) {
    ScriptedPrint print({});
    HWND dialog = print.AddWindow({nullptr, 0, nullptr, 0, {0, 0, 200, 100}, false});
    DlgCenterDialog(dialog);
    EXPECT_EQ(print.Calls({"move:"}), "move:540,462,200,100");
}

TEST(DlgCentre, ChildDialogInParentCoordinates) {
    ScriptedPrint print({});
    HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, {400, 300, 800, 700}, false});
    HWND dialog = print.AddWindow({parent, WS_CHILD, nullptr, 0, {0, 0, 200, 100}, false});
    DlgCenterDialog(dialog);
    EXPECT_EQ(print.Calls({"move:"}), "move:100,150,200,100");
}

// Wizards: each step's procedure sets the next step from its table.
std::vector<LONG> gNext;
INT_PTR gAnswer;
INT_PTR WINAPI step(HWND, UINT, WPARAM, LPARAM lp) {
    DLGWIZARD* wz = reinterpret_cast<DLGWIZARD*>(lp);
    wz->DlgNext = gNext[size_t(wz->DlgCurrent)];
    return gAnswer;
}
struct WizardRow { const char* name; const char* names; LONG count, start; std::vector<LONG> next; INT_PTR answer; BOOL nullProc; BOOL result; const char* shown; };
const WizardRow kWizards[] = {
    {"three steps in order", "A\0B\0C\0", 3, 0, {1, 2, -1}, 1, false, 1, "dialogbox:A dialogbox:B dialogbox:C"},
    {"DlgNext equal to DlgCount", "A\0B\0C\0", 3, 3, {1, 2, -1}, 1, false, 0, ""},
    {"negative at the start", "A\0B\0C\0", 3, -1, {1, 2, -1}, 1, false, 1, ""},
    {"Cancel", "A\0B\0C\0", 3, 0, {1, 2, -1}, IDCANCEL, false, 0, "dialogbox:A"},
    {"the dialog fails", "A\0B\0C\0", 3, 1, {1, 2, -1}, -1, false, 0, "dialogbox:B"},
    {"names run out", "A\0\0", 3, 0, {1, 2, -1}, 1, false, 0, "dialogbox:A"},
    {"a null procedure on the way", "A\0B\0C\0", 3, 2, {1, 2, -1}, 1, true, 0, ""},
    {"step 2 to the end", "A\0B\0C\0", 3, 2, {1, 2, -1}, 1, false, 1, "dialogbox:C"},
};
class DlgWizard : public ::testing::TestWithParam<WizardRow> {};
TEST_P(DlgWizard, Steps) {
    const WizardRow& row = GetParam();
    ScriptedPrint print({});
    gNext = row.next;
    gAnswer = row.answer;
    DLGPROC procs[3] = {step, row.nullProc ? nullptr : step, step};
    DLGWIZARD wz = {nullptr, 0, reinterpret_cast<HINSTANCE>(0x40), row.names, procs, row.count, -7, row.start};
    EXPECT_EQ(DlgDoDlgWizard(&wz), row.result) << row.name;
    EXPECT_EQ(print.Calls({"dialogbox:"}), row.shown) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgWizard, ::testing::ValuesIn(kWizards));

TEST(DlgWizardNull, MissingPartsReturn0) {
    DLGPROC procs[1] = {step};
    DLGWIZARD wz = {nullptr, 0, reinterpret_cast<HINSTANCE>(0x40), "A\0", procs, 1, 0, -1};
    EXPECT_EQ(DlgDoDlgWizard(nullptr), 0);
    DLGWIZARD w = wz;
    w.DlgTemplates = nullptr;
    EXPECT_EQ(DlgDoDlgWizard(&w), 0) << "null templates";
    w = wz;
    w.DlgProcs = nullptr;
    EXPECT_EQ(DlgDoDlgWizard(&w), 0) << "null procedures";
    w = wz;
    w.DlgInstance = nullptr;
    EXPECT_EQ(DlgDoDlgWizard(&w), 0) << "null instance";
    EXPECT_EQ(DlgDoDlgWizard(&wz), 1) << "complete, negative start";
}

TEST(DlgMessageBox, FromTheStringTable) {
    ScriptedPrint print({});
    EXPECT_EQ(DlgMessageBoxString(nullptr, nullptr, 1961, 1963, 0, 48), IDOK);
    EXPECT_EQ(print.Calls({"box:"}), "box:Out of Disk Space|Printing Error|48");
}

} // namespace
