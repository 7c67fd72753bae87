// The window helpers over scripted windows: a 1280 by 1024 screen at 96
// pixels an inch across, 120 down.
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"
#include "ui/dlg.h"

#include <gtest/gtest.h>


namespace {

struct PixelRow { LONG length; BOOL vertical; int pixels; };
const PixelRow kPixels[] = {{1000, 0, 96}, {5, 0, 0}, {6, 0, 1}, {-6, 0, -1}, {-5, 0, 0}, {1000, 1, 120}, {15625, 0, 1500}, {0, 0, 0}};
TEST(DlgPixels, Rounded) {
    for (const PixelRow& row : kPixels) {
        ScriptedPrint print({{"GetDeviceCaps:90", {120}}}); // LOGPIXELSY; LOGPIXELSX stays 96
        EXPECT_EQ(DlgGetScreenPixels(row.length, row.vertical), row.pixels) << "DlgGetScreenPixels(" << row.length << ", " << row.vertical << ")";
        EXPECT_EQ(print.Calls("CreateICA DeleteDC"), "CreateICA:DISPLAY,null DeleteDC") << "the information context is deleted";
    }
}

// Windows of the instance 0x40 in this thread (256 on, by 16), disabled and
// enabled again: `styles` gives each window's style, 'd' one disabled before,
// 'o' another thread's, 'i' another instance's, 'x' the one left out; a window
// disabled before stays so. Fifty windows at most. On NT a window must be of
// the instance too; elsewhere the thread decides. `chain`: each window is the
// parent of the next, and the chain from the last is disabled. `states`: each
// window's after disabling and after enabling again, 'd' for disabled.
// On Windows each row with fewer than 50 windows, none of another thread,
// runs again over real windows of this thread and module.
struct EnableRow { std::string styles; DWORD platform; bool chain; std::string states; };
const EnableRow kEnables[] = {
    {"-dxo-", 2, false, "dd--d then -d---"}, {"d-x-", 2, false, "dd-d then d---"}, {"-i", 2, false, "d- then --"}, {"-i", 1, false, "dd then --"},
    {std::string(52, '-'), 2, false, std::string(50, 'd') + "-- then " + std::string(52, '-')}, {"-d-", 2, true, "ddd then -d-"},
};
// The row over windows that `make` makes of a style letter and a parent, of the instance `inst`.
template <class Make> void expectStates(const EnableRow& row, HINSTANCE inst, Make make, const char* kind) {
    std::vector<HWND> w;
    HWND except = nullptr;
    for (char c : row.styles) w.push_back(make(c, row.chain && !w.empty() ? w.back() : nullptr)), except = c == 'x' ? w.back() : except;
    auto states = [&] { std::string s; for (HWND h : w) s += gOsl.window->GetWindowLongPtrA(h, GWL_STYLE) & WS_DISABLED ? 'd' : '-'; return s; };
    HGLOBAL saved = row.chain ? DlgEnableParentChain(w.back(), FALSE, nullptr) : DlgEnableAllWindows(inst, except, FALSE, nullptr);
    std::string off = states() + " then ";
    EXPECT_EQ(row.chain ? DlgEnableParentChain(w.back(), TRUE, saved) : DlgEnableAllWindows(inst, except, TRUE, saved), nullptr) << "the record freed";
    EXPECT_EQ(off + states(), row.states) << (row.chain ? "DlgEnableParentChain" : "DlgEnableAllWindows") << " disabling, then enabling, " << kind << " windows " << row.styles;
}
TEST(DlgEnable, DisabledBeforeStaysSo) {
    for (const EnableRow& row : kEnables) {
        ScriptedSystem system(0x409, 0x409, row.platform);
        { // the scripted windows go before any real one is made
            ScriptedPrint print;
            HINSTANCE inst = HINSTANCE(0x40);
            expectStates(row, inst, [&](char c, HWND parent) { return print.AddWindow({parent, LONG(c == 'd' ? WS_DISABLED : 0), c == 'i' ? HINSTANCE(0x50) : inst, gOsl.sync->GetCurrentThreadId() + (c == 'o'), {}, false}); }, "scripted");
            EXPECT_EQ(DlgEnableAllWindows(nullptr, nullptr, FALSE, nullptr), nullptr) << "a null instance";
            EXPECT_EQ(DlgEnableAllWindows(inst, nullptr, TRUE, nullptr), nullptr) << "enabling with no record";
        }
#ifdef _WIN32
        std::vector<HWND> made;
        if (row.styles.size() < 50 && row.styles.find('o') == std::string::npos) expectStates(row, GetModuleHandleA(nullptr), [&](char c, HWND parent) { return made.push_back(CreateWindowExA(0, "STATIC", "", (parent ? WS_CHILD : WS_POPUP) | (c == 'd' ? WS_DISABLED : 0), 0, 0, 9, 9, parent, nullptr, GetModuleHandleA(c == 'i' ? "kernel32.dll" : nullptr), nullptr)), made.back(); }, "real");
        for (HWND h : made) DestroyWindow(h);
#endif
    }
}

// A 200 by 100 dialog centred on its parent, kept on the 1280 by 1024 screen.
// On Windows each row with a plain parent, or none, runs again with the abort
// dialog made 200 by 100 on a real parent: the rectangle read back must be
// where the scripted one moved to (the test display is 1280 by 1024 too).
struct CentreRow { const char* name; RECT parent; bool iconic; LONG style; const char* move; };
const CentreRow kCentres[] = {
    {"in the middle", {400, 300, 800, 700}, false, 0, "MoveWindow:272,500,450,200,100,1"},
    {"top left corner: kept on the screen", {0, 0, 100, 100}, false, 0, "MoveWindow:272,0,0,200,100,1"},
    {"bottom right corner", {1200, 1000, 1280, 1024}, false, 0, "MoveWindow:272,1080,924,200,100,1"},
    {"iconic parent: the screen's centre", {0, 0, 100, 100}, true, 0, "MoveWindow:272,540,462,200,100,1"},
    {"no parent: the desktop", {}, false, -1, "MoveWindow:272,540,462,200,100,1"},
    {"a child dialog in its parent's coordinates", {400, 300, 800, 700}, false, WS_CHILD, "MoveWindow:272,100,150,200,100,1"},
};
TEST(DlgCentre, OnScreen) {
    for (const CentreRow& row : kCentres) {
        std::string moved;
        { // the scripted windows go before any real one is made
            ScriptedPrint print;
            HWND parent = print.AddWindow({nullptr, 0, nullptr, 0, row.parent, row.iconic});
            moved = std::to_string(DlgCenterDialog(print.AddWindow({row.style < 0 ? nullptr : parent, row.style < 0 ? 0 : row.style, nullptr, 0, {10, 10, 210, 110}, false})));
            moved += ", " + print.Calls("MoveWindow");
        }
        EXPECT_EQ(moved, std::string("1, ") + row.move) << "DlgCenterDialog: " << row.name;
#ifdef _WIN32
        if (row.iconic || row.style > 0) continue;
        RECT d = {}, p = row.parent;
        HWND parent = row.style < 0 ? nullptr : CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, p.left, p.top, p.right - p.left, p.bottom - p.top, nullptr, nullptr, nullptr, nullptr);
        HWND dialog = CreateDialogParamA(GetModuleHandleA(nullptr), "PrintAbortDialog", parent, nullptr, 0);
        BOOL done = MoveWindow(dialog, 10, 10, 200, 100, FALSE) && DlgCenterDialog(dialog) && GetWindowRect(dialog, &d);
        EXPECT_EQ(std::to_string(done) + ", MoveWindow:272," + std::to_string(d.left) + "," + std::to_string(d.top) + "," + std::to_string(d.right - d.left) + "," + std::to_string(d.bottom - d.top) + ",1", moved) << "DlgCenterDialog on real windows: " << row.name;
        DestroyWindow(dialog), DestroyWindow(parent);
#endif
    }
}

// Wizards: each dialog shown takes the row's next move as it opens, 'n' next,
// 'b' back, 'c' Cancel, 'f' the dialog fails, and sets DlgNext by it. On
// Windows the scripted DialogBoxParamA shows real dialogs, each ended as it opens.
const char* gMoves;
std::string gShown;
DLGWIZARD* gWizard;
INT_PTR WINAPI step([[maybe_unused]] HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return FALSE;
    char move = *gMoves++;
    gShown += char('0' + gWizard->DlgCurrent);
    gWizard->DlgNext = move == 'b' ? gWizard->DlgCurrent - 1 : gWizard->DlgCurrent + 1 < gWizard->DlgCount ? gWizard->DlgCurrent + 1 : -1;
    INT_PTR result = move == 'c' ? IDCANCEL : move == 'f' ? -1 : IDOK;
#ifdef _WIN32
    if (dialog) return EndDialog(dialog, result);
#endif
    return result;
}
enum { kNullProc = 1, kNullNames = 2, kNullProcs = 4, kNullRecord = 8 };
// `shown`: the steps shown, then the result.
struct WizardRow { const char* name; const char* names; LONG start; const char* moves; int broken; std::string shown; };
const WizardRow kWizards[] = {
    {"back and forth", "A\0B\0C\0", 0, "nbnnbnn", 0, "0101212, 1"},
    {"Cancel", "A\0B\0C\0", 0, "nc", 0, "01, 0"},
    {"the dialog fails", "A\0B\0C\0", 1, "f", 0, "1, 0"},
    {"names run out", "A\0\0", 0, "n", 0, "0, 0"},
    {"a null procedure on the way", "A\0B\0C\0", 2, "", kNullProc, ", 0"},
    {"null templates", "A\0B\0C\0", 0, "", kNullNames, ", 0"},
    {"null procedures", "A\0B\0C\0", 0, "", kNullProcs, ", 0"},
    {"null record", "A\0B\0C\0", -1, "", kNullRecord, ", 0"},
};
TEST(DlgWizard, Steps) {
    for (const WizardRow& row : kWizards) {
        ScriptedPrint print;
        DLGPROC procs[3] = {step, row.broken & kNullProc ? nullptr : step, step};
        DLGWIZARD wz = {nullptr, 0, HINSTANCE(0x40), row.broken & kNullNames ? nullptr : row.names, row.broken & kNullProcs ? nullptr : procs, 3, -7, row.start};
        gMoves = row.moves, gShown.clear(), gWizard = &wz;
        std::string outcome = std::to_string(DlgDoDlgWizard(row.broken & kNullRecord ? nullptr : &wz)), names; // names: the templates asked for, step N's the letter A + N
        for (char c : row.shown.substr(0, row.shown.find(','))) names += std::string(names.empty() ? "" : " ") + "DialogBoxParamA:" + char('A' + c - '0');
        EXPECT_EQ(gShown + ", " + outcome + ", " + print.Calls("DialogBoxParamA"), row.shown + ", " + names) << "DlgDoDlgWizard: " << row.name;
    }
}

TEST(DlgMessageBox, FromTheStringTable) {
    ScriptedPrint print;
    int answer = DlgMessageBoxString(nullptr, nullptr, 1961, 1963, 0, 48);
    EXPECT_EQ(std::to_string(answer) + ", " + print.Calls("MessageBoxA"), "1, MessageBoxA:0,Out of Disk Space,Printing Error,48") << "DlgMessageBoxString: what it showed";
}

} // namespace
