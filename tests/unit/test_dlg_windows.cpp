// The window helpers over scripted windows: a 1280 by 1024 screen at 96
// pixels an inch across, 120 down.
#include "os/osl.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"
#include "ui/dlg.h"

#include <gtest/gtest.h>

namespace {

struct PixelRow { LONG length; BOOL vertical; int pixels; };
const PixelRow kPixels[] = {{1000, 0, 96}, {5, 0, 0}, {6, 0, 1}, {-6, 0, -1}, {-5, 0, 0}, {1000, 1, 120}, {15625, 0, 1500}, {0, 0, 0}};
class DlgPixels : public ::testing::TestWithParam<PixelRow> {};
TEST_P(DlgPixels, Rounded) {
    ScriptedPrint print({{"GetDeviceCaps:90", {120}}}); // LOGPIXELSY; LOGPIXELSX stays 96
    EXPECT_EQ(DlgGetScreenPixels(GetParam().length, GetParam().vertical), GetParam().pixels) << "DlgGetScreenPixels(" << GetParam().length << ", " << GetParam().vertical << ")";
    EXPECT_EQ(print.Calls("CreateICA DeleteDC"), "CreateICA:DISPLAY,null DeleteDC") << "the information context is deleted";
}
INSTANTIATE_TEST_SUITE_P(Table, DlgPixels, ::testing::ValuesIn(kPixels));

// "EnableWindow:256,flag EnableWindow:272,flag ..." for `n` windows.
std::string enables(int n, int flag) {
    std::string s;
    for (int i = 0; i < n; ++i) s += (i ? " EnableWindow:" : "EnableWindow:") + std::to_string(256 + 16 * i) + "," + std::to_string(flag);
    return s;
}
// Windows of the instance 0x40 in this thread (256 on, by 16), disabled and
// enabled again: `styles` gives each window's style, 'd' one disabled before,
// 'o' another thread's, 'i' another instance's, 'x' the one left out; a window
// disabled before stays so. Fifty windows at most. On NT a window must be of
// the instance too; elsewhere the thread decides. `chain`: each window is the
// parent of the next, and the chain from the last is disabled.
struct EnableRow { std::string styles; DWORD platform; bool chain; std::string disabled, enabled; };
const EnableRow kEnables[] = {
    {"-dxo-", 2, false, "EnableWindow:256,0 EnableWindow:320,0", "EnableWindow:256,1 EnableWindow:320,1"},
    {"-i", 2, false, "EnableWindow:256,0", "EnableWindow:256,1"},
    {"-i", 1, false, enables(2, 0), enables(2, 1)},
    {std::string(52, '-'), 2, false, enables(50, 0), enables(50, 1)},
    {"-d-", 2, true, "EnableWindow:288,0 EnableWindow:256,0", "EnableWindow:288,1 EnableWindow:256,1"},
};
class DlgEnable : public ::testing::TestWithParam<EnableRow> {};
TEST_P(DlgEnable, DisabledBeforeStaysSo) {
    const EnableRow& row = GetParam();
    ScriptedSystem system(0x409, 0x409, row.platform);
    ScriptedPrint print;
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(0x40);
    HWND except = nullptr, last = nullptr;
    for (char c : row.styles) {
        last = print.AddWindow({row.chain ? last : nullptr, LONG(c == 'd' ? WS_DISABLED : 0), c == 'i' ? reinterpret_cast<HINSTANCE>(0x50) : inst, gOsl.sync->GetCurrentThreadId() + (c == 'o'), {}, false});
        if (c == 'x') except = last;
    }
    HGLOBAL saved = row.chain ? DlgEnableParentChain(last, FALSE, nullptr) : DlgEnableAllWindows(inst, except, FALSE, nullptr);
    EXPECT_EQ(print.Calls("EnableWindow"), row.disabled) << (row.chain ? "DlgEnableParentChain" : "DlgEnableAllWindows") << "(FALSE) over " << row.styles;
    EXPECT_EQ(row.chain ? DlgEnableParentChain(last, TRUE, saved) : DlgEnableAllWindows(inst, except, TRUE, saved), nullptr) << "the record freed";
    EXPECT_EQ(print.Calls("EnableWindow:").substr(row.disabled.size() + 1), row.enabled) << "enabling again over " << row.styles;
    for (size_t i = 0; i < row.styles.size(); ++i)
        EXPECT_EQ(print.WindowOf(reinterpret_cast<HWND>(uintptr_t(256 + 16 * i))).style, LONG(row.styles[i] == 'd' ? WS_DISABLED : 0)) << "window " << i << " of " << row.styles;
    EXPECT_EQ(DlgEnableAllWindows(nullptr, nullptr, FALSE, nullptr), nullptr) << "a null instance";
    EXPECT_EQ(DlgEnableAllWindows(inst, nullptr, TRUE, nullptr), nullptr) << "enabling with no record";
}
INSTANTIATE_TEST_SUITE_P(Table, DlgEnable, ::testing::ValuesIn(kEnables));

// A 200 by 100 dialog centred on its parent, kept on the screen.
struct CentreRow { const char* name; RECT parent; bool iconic; LONG style; const char* move; };
const CentreRow kCentres[] = {
    {"in the middle", {400, 300, 800, 700}, false, 0, "MoveWindow:272,500,450,200,100,1"},
    {"top left corner: kept on the screen", {0, 0, 100, 100}, false, 0, "MoveWindow:272,0,0,200,100,1"},
    {"bottom right corner", {1200, 1000, 1280, 1024}, false, 0, "MoveWindow:272,1080,924,200,100,1"},
    {"just inside at the right", {1080, 0, 1280, 100}, false, 0, "MoveWindow:272,1080,0,200,100,1"},
    {"iconic parent: the screen's centre", {0, 0, 100, 100}, true, 0, "MoveWindow:272,540,462,200,100,1"},
    {"no parent: the desktop", {}, false, -1, "MoveWindow:272,540,462,200,100,1"},
    {"a child dialog in its parent's coordinates", {400, 300, 800, 700}, false, WS_CHILD, "MoveWindow:272,100,150,200,100,1"},
};
class DlgCentre : public ::testing::TestWithParam<CentreRow> {};
TEST_P(DlgCentre, OnScreen) {
    const CentreRow& row = GetParam();
    ScriptedPrint print;
    HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, row.parent, row.iconic});
    HWND dialog = print.AddWindow({row.style < 0 ? nullptr : parent, row.style < 0 ? 0 : row.style, nullptr, 0, {10, 10, 210, 110}, false});
    EXPECT_EQ(DlgCenterDialog(dialog), 1) << row.name;
    EXPECT_EQ(print.Calls("MoveWindow"), row.move) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgCentre, ::testing::ValuesIn(kCentres));

// Wizards: each step's procedure sets the next step from {1, 2, -1} and
// answers the row's `answer`.
INT_PTR gAnswer;
INT_PTR WINAPI step(HWND, UINT, WPARAM, LPARAM lp) {
    DLGWIZARD* wz = reinterpret_cast<DLGWIZARD*>(lp);
    wz->DlgNext = wz->DlgCurrent < 2 ? wz->DlgCurrent + 1 : -1;
    return gAnswer;
}
enum { kNullProc = 1, kNullNames = 2, kNullProcs = 4, kNullInstance = 8, kNullRecord = 16 };
struct WizardRow { const char* name; const char* names; LONG start; INT_PTR answer; int broken; BOOL result; const char* shown; };
const WizardRow kWizards[] = {
    {"three steps in order", "A\0B\0C\0", 0, 1, 0, 1, "DialogBoxParamA:A DialogBoxParamA:B DialogBoxParamA:C"},
    {"DlgNext equal to DlgCount", "A\0B\0C\0", 3, 1, 0, 0, ""},
    {"negative at the start", "A\0B\0C\0", -1, 1, 0, 1, ""},
    {"Cancel", "A\0B\0C\0", 0, IDCANCEL, 0, 0, "DialogBoxParamA:A"},
    {"the dialog fails", "A\0B\0C\0", 1, -1, 0, 0, "DialogBoxParamA:B"},
    {"names run out", "A\0\0", 0, 1, 0, 0, "DialogBoxParamA:A"},
    {"a null procedure on the way", "A\0B\0C\0", 2, 1, kNullProc, 0, ""},
    {"step 2 to the end", "A\0B\0C\0", 2, 1, 0, 1, "DialogBoxParamA:C"},
    {"null templates", "A\0B\0C\0", -1, 1, kNullNames, 0, ""},
    {"null procedures", "A\0B\0C\0", -1, 1, kNullProcs, 0, ""},
    {"null instance", "A\0B\0C\0", -1, 1, kNullInstance, 0, ""},
    {"null record", "A\0B\0C\0", -1, 1, kNullRecord, 0, ""},
};
class DlgWizard : public ::testing::TestWithParam<WizardRow> {};
TEST_P(DlgWizard, Steps) {
    const WizardRow& row = GetParam();
    ScriptedPrint print;
    gAnswer = row.answer;
    DLGPROC procs[3] = {step, row.broken & kNullProc ? nullptr : step, step};
    DLGWIZARD wz = {nullptr, 0, reinterpret_cast<HINSTANCE>(row.broken & kNullInstance ? 0 : 0x40), row.broken & kNullNames ? nullptr : row.names,
                    row.broken & kNullProcs ? nullptr : procs, 3, -7, row.start};
    EXPECT_EQ(DlgDoDlgWizard(row.broken & kNullRecord ? nullptr : &wz), row.result) << row.name;
    EXPECT_EQ(print.Calls("DialogBoxParamA"), row.shown) << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgWizard, ::testing::ValuesIn(kWizards));

TEST(DlgMessageBox, FromTheStringTable) {
    ScriptedPrint print;
    EXPECT_EQ(DlgMessageBoxString(nullptr, nullptr, 1961, 1963, 0, 48), IDOK);
    EXPECT_EQ(print.Calls("MessageBoxA"), "MessageBoxA:0,Out of Disk Space,Printing Error,48");
}

} // namespace
