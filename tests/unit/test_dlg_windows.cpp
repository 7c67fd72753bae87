// The window helpers over scripted windows: a 1280 by 1024 screen at 96
// pixels an inch across, 120 down.
#include "os/osl.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"
#include "ui/dlg.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

// Windows of the instance 0x40 in this thread (256 on, by 16), disabled and
// enabled again: `styles` gives each window's style, 'd' one disabled before,
// 'o' another thread's, 'i' another instance's, 'x' the one left out; a window
// disabled before stays so. Fifty windows at most. On NT a window must be of
// the instance too; elsewhere the thread decides. `chain`: each window is the
// parent of the next, and the chain from the last is disabled. `states`: each
// window's after disabling and after enabling again, 'd' for disabled.
struct EnableRow { std::string styles; DWORD platform; bool chain; std::string states; };
const EnableRow kEnables[] = {
    {"-dxo-", 2, false, "dd--d then -d---"}, {"-i", 2, false, "d- then --"}, {"-i", 1, false, "dd then --"},
    {std::string(52, '-'), 2, false, std::string(50, 'd') + "-- then " + std::string(52, '-')}, {"-d-", 2, true, "ddd then -d-"},
};
class DlgEnable : public ::testing::TestWithParam<EnableRow> {};
TEST_P(DlgEnable, DisabledBeforeStaysSo) {
    const EnableRow& row = GetParam();
    ScriptedSystem system(0x409, 0x409, row.platform);
    ScriptedPrint print;
    HINSTANCE inst = HINSTANCE(0x40);
    HWND except = nullptr, last = nullptr;
    for (char c : row.styles) last = print.AddWindow({row.chain ? last : nullptr, LONG(c == 'd' ? WS_DISABLED : 0), c == 'i' ? HINSTANCE(0x50) : inst, gOsl.sync->GetCurrentThreadId() + (c == 'o'), {}, false}), except = c == 'x' ? last : except;
    auto states = [&] { std::string s; for (size_t i = 0; i < row.styles.size(); ++i) s += print.WindowOf(HWND(256 + 16 * i)).style ? 'd' : '-'; return s; };
    HGLOBAL saved = row.chain ? DlgEnableParentChain(last, FALSE, nullptr) : DlgEnableAllWindows(inst, except, FALSE, nullptr);
    std::string disabled = states() + " then ";
    EXPECT_EQ(row.chain ? DlgEnableParentChain(last, TRUE, saved) : DlgEnableAllWindows(inst, except, TRUE, saved), nullptr) << "the record freed";
    EXPECT_EQ(disabled + states(), row.states) << (row.chain ? "DlgEnableParentChain" : "DlgEnableAllWindows") << " disabling, then enabling, over " << row.styles;
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
    BOOL moved = DlgCenterDialog(dialog);
    EXPECT_EQ(std::to_string(moved) + ", " + print.Calls("MoveWindow"), std::string("1, ") + row.move) << "DlgCenterDialog: " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgCentre, ::testing::ValuesIn(kCentres));

// Wizards: each step's procedure sets the next step from {1, 2, -1} and
// answers the row's `answer`.
INT_PTR gAnswer;
INT_PTR WINAPI step(HWND, UINT, WPARAM, LPARAM lp) { DLGWIZARD* wz = reinterpret_cast<DLGWIZARD*>(lp); return wz->DlgNext = wz->DlgCurrent < 2 ? wz->DlgCurrent + 1 : -1, gAnswer; }
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
    BOOL result = DlgDoDlgWizard(row.broken & kNullRecord ? nullptr : &wz);
    EXPECT_EQ(std::to_string(result) + ", " + print.Calls("DialogBoxParamA"), std::to_string(row.result) + ", " + row.shown) << "DlgDoDlgWizard: " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, DlgWizard, ::testing::ValuesIn(kWizards));

TEST(DlgMessageBox, FromTheStringTable) {
    ScriptedPrint print;
    int answer = DlgMessageBoxString(nullptr, nullptr, 1961, 1963, 0, 48);
    EXPECT_EQ(std::to_string(answer) + ", " + print.Calls("MessageBoxA"), "1, MessageBoxA:0,Out of Disk Space,Printing Error,48") << "DlgMessageBoxString: what it showed";
}

#ifdef _WIN32
// The same helpers on real windows of this thread and module, through the
// system's own window manager.
HWND realWindow(DWORD style) { return CreateWindowExA(0, "STATIC", "", WS_POPUP | style, 0, 0, 10, 10, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr); }
// 'd' a window disabled before, 'x' the one left out; each window's state
// after disabling and after enabling again, 'd' for disabled.
struct RealEnableRow { const char* windows; const char* states; };
const RealEnableRow kRealEnables[] = {{"-d-", "ddd then -d-"}, {"d-x-", "ddxd then d-x-"}};
class DlgEnableReal : public ::testing::TestWithParam<RealEnableRow> {};
TEST_P(DlgEnableReal, DisabledBeforeStaysSo) {
    std::vector<HWND> w;
    HWND except = nullptr;
    for (const char* c = GetParam().windows; *c; ++c) w.push_back(realWindow(*c == 'd' ? WS_DISABLED : 0)), except = *c == 'x' ? w.back() : except;
    auto states = [&] { std::string s; for (HWND h : w) s += h == except ? 'x' : IsWindowEnabled(h) ? '-' : 'd'; return s; };
    HGLOBAL saved = DlgEnableAllWindows(GetModuleHandleA(nullptr), except, FALSE, nullptr);
    std::string disabled = states() + " then ";
    EXPECT_EQ(DlgEnableAllWindows(GetModuleHandleA(nullptr), except, TRUE, saved), nullptr);
    EXPECT_EQ(disabled + states(), GetParam().states) << "DlgEnableAllWindows(FALSE), then (TRUE), over " << GetParam().windows;
    for (HWND h : w) DestroyWindow(h);
}
INSTANTIATE_TEST_SUITE_P(Table, DlgEnableReal, ::testing::ValuesIn(kRealEnables));

INT_PTR WINAPI quiet(HWND, UINT, WPARAM, LPARAM) { return FALSE; }
// The abort dialog centred on a 400 by 300 parent whose corner is `at`, a
// fraction of the work area's size (negative: off its left or top edge).
struct RealCentreRow { double x, y; const char* where; };
const RealCentreRow kRealCentres[] = {{0.3, 0.3, "centred, centred"}, {-0.3, -0.3, "left edge, top edge"}, {0.95, 0.95, "right edge, bottom edge"}, {0.9, 0.1, "right edge, centred"}};
class DlgCentreReal : public ::testing::TestWithParam<RealCentreRow> {};
TEST_P(DlgCentreReal, KeptOnTheWorkArea) {
    RECT work, d, p;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    HWND parent = realWindow(WS_VISIBLE);
    MoveWindow(parent, work.left + LONG(GetParam().x * (work.right - work.left)), work.top + LONG(GetParam().y * (work.bottom - work.top)), 400, 300, TRUE);
    HWND dialog = CreateDialogParamA(GetModuleHandleA(nullptr), "PrintAbortDialog", parent, quiet, 0);
    EXPECT_NE(DlgCenterDialog(dialog), 0);
    GetWindowRect(dialog, &d), GetWindowRect(parent, &p);
    auto along = [](LONG lo, LONG hi, LONG workLo, LONG workHi, LONG centre, std::string edges) { return lo == workLo ? edges.substr(0, edges.find('|')) : hi == workHi ? edges.substr(edges.find('|') + 1) : std::abs((lo + hi) / 2 - centre) <= 1 ? "centred" : "elsewhere"; };
    std::string where = along(d.left, d.right, work.left, work.right, (p.left + p.right) / 2, "left edge|right edge") + ", " + along(d.top, d.bottom, work.top, work.bottom, (p.top + p.bottom) / 2, "top edge|bottom edge");
    EXPECT_EQ(where + (d.left >= work.left && d.top >= work.top && d.right <= work.right && d.bottom <= work.bottom ? "" : ", not inside"), GetParam().where) << "DlgCenterDialog on a parent at " << GetParam().x << ", " << GetParam().y;
    DestroyWindow(dialog), DestroyWindow(parent);
}
INSTANTIATE_TEST_SUITE_P(Table, DlgCentreReal, ::testing::ValuesIn(kRealCentres));

// A three-step wizard of abort dialogs: each step, once shown, posts itself
// the test's next move, 'n' next, 'b' back or 'c' Cancel, and sets DlgNext by it.
const char* gMoves;
std::string gShown;
INT_PTR WINAPI realStep(HWND dialog, UINT message, WPARAM wp, LPARAM lp) {
    if (message == WM_INITDIALOG) return SetWindowLongPtrA(dialog, DWLP_USER, lp), gShown += char('0' + reinterpret_cast<DLGWIZARD*>(lp)->DlgCurrent), PostMessageA(dialog, WM_COMMAND, *gMoves++, 0);
    DLGWIZARD* wz = reinterpret_cast<DLGWIZARD*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (message != WM_COMMAND || std::string("nbc").find(char(LOWORD(wp))) == std::string::npos) return FALSE;
    wz->DlgNext = LOWORD(wp) == 'b' ? wz->DlgCurrent - 1 : wz->DlgCurrent + 1 < wz->DlgCount ? wz->DlgCurrent + 1 : -1;
    return EndDialog(dialog, LOWORD(wp) == 'c' ? IDCANCEL : IDOK);
}
struct RealWizardRow { const char* moves; const char* shown; };
const RealWizardRow kRealWizards[] = {{"nnn", "012, 1"}, {"nbnnn", "01012, 1"}, {"nnbbb", "01210, 1"}, {"nc", "01, 0"}};
class DlgWizardReal : public ::testing::TestWithParam<RealWizardRow> {};
TEST_P(DlgWizardReal, DrivenByPostedMoves) {
    DLGPROC procs[3] = {realStep, realStep, realStep};
    DLGWIZARD wz = {nullptr, 0, GetModuleHandleA(nullptr), "PrintAbortDialog\0PrintAbortDialog\0PrintAbortDialog\0", procs, 3, -1, 0};
    gMoves = GetParam().moves, gShown.clear();
    BOOL result = DlgDoDlgWizard(&wz);
    EXPECT_EQ(gShown + ", " + std::to_string(result), GetParam().shown) << "DlgDoDlgWizard with the moves " << GetParam().moves << ": the steps shown, the result";
}
INSTANTIATE_TEST_SUITE_P(Table, DlgWizardReal, ::testing::ValuesIn(kRealWizards));
#endif

} // namespace
