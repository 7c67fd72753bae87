// The printer setup dialog, device modes and paper lists against the real
// spooler under Wine: the printer named by OXL_TEST_PRINTER (the CUPS PDF
// printer that tests/print_setup_cups.sh sets up); skipped without one.
#include "print/print.h"
#include <oxlrt31/mem.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

const char* printer() { return std::getenv("OXL_TEST_PRINTER"); }

// The device's own lists, read directly.
template <class T> std::vector<T> capability(const char* device, WORD what, size_t bytes = sizeof(T)) {
    int n = DeviceCapabilitiesA(device, nullptr, what, nullptr, nullptr);
    std::vector<T> out(n > 0 ? size_t(n) * bytes / sizeof(T) : 0);
    if (n > 0) DeviceCapabilitiesA(device, nullptr, what, reinterpret_cast<LPSTR>(out.data()), nullptr);
    return out;
}

struct MergeRow { WORD orientation, paper, bin; };
const MergeRow kMerges[] = {{0, DMPAPER_A4, 15}, {1, DMPAPER_LETTER, 15}, {0, DMPAPER_A5, 15}, {1, DMPAPER_LEGAL, 15}};
class PrintRealSpooler : public ::testing::TestWithParam<MergeRow> {};
TEST_P(PrintRealSpooler, MergesAListedPaperAsTheDeviceListsIt) {
    if (!printer()) GTEST_SKIP() << "no OXL_TEST_PRINTER";
    const MergeRow& row = GetParam();
    std::vector<WORD> codes = capability<WORD>(printer(), DC_PAPERS);
    std::vector<char> names = capability<char>(printer(), DC_PAPERNAMES, 64);
    std::vector<POINT> sizes = capability<POINT>(printer(), DC_PAPERSIZE);
    size_t i = std::find(codes.begin(), codes.end(), row.paper) - codes.begin();
    ASSERT_LT(i, codes.size()) << "the printer lists paper " << row.paper;
    char driver[260] = "", port[260] = "";
    HGLOBAL block = PrintGetDevMode(row.orientation, printer(), driver, port, row.paper, 0, 0, row.bin);
    ASSERT_NE(block, nullptr) << "PrintGetDevMode(" << row.orientation << ", " << printer() << ", " << row.paper << ")";
    const DEVMODEA* m = static_cast<const DEVMODEA*>(GlobalLock(block));
    EXPECT_EQ(m->dmPaperSize, short(row.paper)) << "dmPaperSize for paper " << row.paper;
    EXPECT_EQ(m->dmOrientation, row.orientation ? 2 : 1) << "dmOrientation for paper " << row.paper;
    std::string form = m->dmFields & DM_FORMNAME ? reinterpret_cast<const char*>(m->dmFormName) : &names[64 * i];
    EXPECT_EQ(form, &names[64 * i]) << "dmFormName of paper " << row.paper;
    EXPECT_EQ(m->dmFields & DM_PAPERWIDTH ? m->dmPaperWidth : sizes[i].x, sizes[i].x) << "dmPaperWidth of paper " << row.paper;
    EXPECT_EQ(m->dmFields & DM_PAPERLENGTH ? m->dmPaperLength : sizes[i].y, sizes[i].y) << "dmPaperLength of paper " << row.paper;
    GlobalUnlock(block), GlobalFree(block);
}
INSTANTIATE_TEST_SUITE_P(Table, PrintRealSpooler, ::testing::ValuesIn(kMerges));

// Wine's AddFormA and DeleteFormA report success and change nothing, so a
// custom size there ends on the printer's own paper, with the request's bin.
TEST(PrintRealSpoolerForms, ACustomSizeWithoutTheFormKeepsThePrintersPaper) {
    if (!printer()) GTEST_SKIP() << "no OXL_TEST_PRINTER";
    HANDLE p = nullptr;
    ASSERT_TRUE(OpenPrinterA(const_cast<LPSTR>(printer()), &p, nullptr));
    PRINTER_INFO_2A* info = PrintPrinterInfo(p);
    ClosePrinter(p);
    ASSERT_TRUE(info && info->pDevMode) << "the printer's level 2 device mode";
    char driver[260] = "", port[260] = "";
    HGLOBAL block = PrintGetDevMode(0, printer(), driver, port, DMPAPER_USER, 8500, 11000, 15);
    const DEVMODEA* m = block ? static_cast<const DEVMODEA*>(GlobalLock(block)) : nullptr;
    ASSERT_NE(m, nullptr) << "PrintGetDevMode(0, " << printer() << ", 256, 8500, 11000, 15)";
    EXPECT_EQ(m->dmPaperSize, info->pDevMode->dmPaperSize) << "the printer's paper code";
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(m->dmFormName)), reinterpret_cast<const char*>(info->pDevMode->dmFormName)) << "its form";
    EXPECT_EQ(m->dmDefaultSource, 15) << "the request's bin";
    GlobalUnlock(block), GlobalFree(block), MemFree(info);
}

// A top-level window of the test that records each WM_WININICHANGE: "0"
// without a section, "section" with one. (Wine hands the broadcast on with
// a section text that no longer holds "windows" by the time it arrives.)
std::vector<std::string> gChanges;
LRESULT CALLBACK listener(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_WININICHANGE) gChanges.push_back(lp ? "section" : "0");
    return DefWindowProcA(w, m, wp, lp);
}
HWND waitForWindow(DWORD thread, HWND except) {
    struct Find { DWORD thread; HWND except, found; } f = {thread, except, nullptr};
    for (int i = 0; i < 100 && !f.found; ++i, Sleep(100))
        EnumThreadWindows(thread, [](HWND w, LPARAM p) -> BOOL {
            Find& x = *reinterpret_cast<Find*>(p);
            char name[32] = "";
            GetClassNameA(w, name, sizeof name);
            if (w != x.except && IsWindowVisible(w) && std::string(name) == "#32770") x.found = w;
            return !x.found;
        }, reinterpret_cast<LPARAM>(&f));
    return f.found;
}
// The user: picks the printer's row, opens the driver's dialog and confirms both.
void user(DWORD thread, std::string* done) {
    HWND dialog = waitForWindow(thread, nullptr);
    if (!dialog) return void(*done = "no setup dialog");
    HWND list = GetDlgItem(dialog, 900);
    SendMessageA(list, LB_SELECTSTRING, WPARAM(-1), reinterpret_cast<LPARAM>((std::string(printer()) + " on ").c_str()));
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(900, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    *done = IsWindowEnabled(GetDlgItem(dialog, 4)) ? "" : "Setup disabled; ";
    PostMessageA(dialog, WM_COMMAND, 4, 0);
    HWND driver = waitForWindow(thread, dialog);
    *done += driver ? "driver dialog" : "no driver dialog";
    if (driver) PostMessageA(driver, WM_COMMAND, IDOK, 0);
    for (int i = 0; i < 50 && driver && IsWindow(driver); ++i) Sleep(100);
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}
TEST(PrintRealSetup, DialogDrivenWritesTheDefaultPrinterAndTellsTheWindows) {
    if (!printer()) GTEST_SKIP() << "no OXL_TEST_PRINTER";
    char before[300] = "";
    GetProfileStringA("windows", "device", "", before, sizeof before);
    WNDCLASSA c = {};
    c.lpfnWndProc = listener, c.lpszClassName = "OxlSetupListener";
    RegisterClassA(&c);
    HWND top = CreateWindowExA(0, c.lpszClassName, "listener", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    char device[260] = "", driver[260] = "", port[260] = "";
    HGLOBAL mode = nullptr;
    std::string done;
    std::thread u(user, GetCurrentThreadId(), &done);
    BOOL changed = PrintPrinterSetup(top, &mode, device, driver, port, nullptr);
    u.join();
    EXPECT_EQ(done, "driver dialog") << "the user's way through the dialogs";
    EXPECT_TRUE(changed) << "PrintPrinterSetup with no printer in hand, " << printer() << " picked";
    EXPECT_STREQ(device, printer()) << "the device chosen";
    char line[300] = "";
    GetProfileStringA("windows", "device", "", line, sizeof line);
    EXPECT_EQ(std::string(line), std::string(device) + "," + driver + "," + port) << "the profile's default printer line";
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
    EXPECT_EQ(gChanges, (std::vector<std::string>{"0", "section"})) << "WM_WININICHANGE at the test's window";
    EXPECT_NE(mode, nullptr) << "the device mode the driver's dialog gave";
    if (mode) GlobalFree(mode);
    DestroyWindow(top);
    WriteProfileStringA("windows", "device", before);
    PrtClearSaved();
}

} // namespace
