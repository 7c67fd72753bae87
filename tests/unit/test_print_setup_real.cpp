// The setup dialog and device modes against the real spooler under Wine: the
// printer named by OXL_TEST_PRINTER (the CUPS PDF printer that
// tests/print_setup_cups.sh sets up); skipped without one.
#include "print/print.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

const char* printer() { return std::getenv("OXL_TEST_PRINTER"); }

// Letter asked for on its side (never the printer's default as it stands,
// so the driver merges it): code, orientation, form name and size as the
// device's own lists give them.
TEST(PrintRealSpooler, MergesAListedPaperAsTheDeviceListsIt) {
    if (!printer()) GTEST_SKIP() << "no OXL_TEST_PRINTER";
    int n = DeviceCapabilitiesA(printer(), nullptr, DC_PAPERS, nullptr, nullptr);
    std::vector<WORD> codes(size_t(n > 0 ? n : 0));
    std::vector<char> names(codes.size() * 64);
    std::vector<POINT> sizes(codes.size());
    for (auto [what, list] : {std::pair<WORD, void*>{DC_PAPERS, codes.data()}, {DC_PAPERNAMES, names.data()}, {DC_PAPERSIZE, sizes.data()}})
        DeviceCapabilitiesA(printer(), nullptr, what, static_cast<LPSTR>(list), nullptr);
    size_t i = std::find(codes.begin(), codes.end(), DMPAPER_LETTER) - codes.begin();
    char driver[260] = "", port[260] = "";
    HGLOBAL block = i < codes.size() ? PrintGetDevMode(1, printer(), driver, port, DMPAPER_LETTER, 0, 0, 15) : nullptr;
    const DEVMODEA* m = block ? static_cast<const DEVMODEA*>(GlobalLock(block)) : nullptr;
    ASSERT_NE(m, nullptr) << "PrintGetDevMode(1, " << printer() << ", DMPAPER_LETTER) of a listed paper";
    std::string got = std::to_string(m->dmPaperSize) + " " + std::to_string(m->dmOrientation) + " " + reinterpret_cast<const char*>(m->dmFormName) + " " +
                      std::to_string(m->dmPaperWidth) + "x" + std::to_string(m->dmPaperLength);
    EXPECT_EQ(got, "1 2 " + std::string(&names[64 * i]) + " " + std::to_string(sizes[i].x) + "x" + std::to_string(sizes[i].y))
        << "PrintGetDevMode(1, " << printer() << ", DMPAPER_LETTER): paper, orientation, form, size";
    GlobalUnlock(block), GlobalFree(block);
}

// A top-level window of the test that records each WM_WININICHANGE: "0"
// without a section, "section" with one. (Wine hands the broadcast on with
// a section text that no longer holds "windows" by the time it arrives.)
std::vector<std::string> gChanges;
LRESULT CALLBACK listener(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_WININICHANGE) gChanges.push_back(lp ? "section" : "0");
    return DefWindowProcA(w, m, wp, lp);
}
// A visible top-level dialog other than `except`, within 10 s.
HWND dialogOf(HWND except) {
    HWND found = nullptr;
    for (int i = 0; i < 100 && !found; ++i, Sleep(100))
        for (HWND w = FindWindowExA(nullptr, nullptr, "#32770", nullptr); w && !found; w = FindWindowExA(nullptr, w, "#32770", nullptr))
            if (w != except && IsWindowVisible(w)) found = w;
    return found;
}
// The user: picks the printer's row, opens the driver's dialog and confirms both.
void user(std::string* done) {
    HWND dialog = dialogOf(nullptr), list = GetDlgItem(dialog, 900);
    SendMessageA(list, LB_SELECTSTRING, WPARAM(-1), reinterpret_cast<LPARAM>((std::string(printer()) + " on ").c_str()));
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(900, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    PostMessageA(dialog, WM_COMMAND, 4, 0);
    HWND driver = dialogOf(dialog);
    *done = driver ? "driver dialog" : "no driver dialog";
    for (int i = 0; i < 50 && driver && IsWindow(driver); ++i) PostMessageA(driver, WM_COMMAND, IDOK, 0), Sleep(100);
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}
TEST(PrintRealSetup, DialogDrivenWritesTheDefaultPrinterAndTellsTheWindows) {
    if (!printer()) GTEST_SKIP() << "no OXL_TEST_PRINTER";
    char before[300] = "", line[300] = "", device[260] = "", driver[260] = "", port[260] = "";
    GetProfileStringA("windows", "device", "", before, sizeof before);
    WNDCLASSA c = {};
    c.lpfnWndProc = listener, c.lpszClassName = "OxlSetupListener";
    RegisterClassA(&c);
    HWND top = CreateWindowExA(0, c.lpszClassName, "listener", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    HGLOBAL mode = nullptr;
    std::string done;
    std::thread u(user, &done);
    BOOL changed = PrintPrinterSetup(top, &mode, device, driver, port, nullptr);
    u.join();
    EXPECT_EQ(done, "driver dialog") << "the user's way through the dialogs";
    EXPECT_TRUE(changed && mode) << "PrintPrinterSetup with no printer in hand, " << printer() << " picked: a change and a device mode";
    EXPECT_STREQ(device, printer()) << "the device chosen";
    GetProfileStringA("windows", "device", "", line, sizeof line);
    EXPECT_EQ(std::string(line), std::string(device) + "," + driver + "," + port) << "the profile's default printer line";
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
    EXPECT_EQ(gChanges, (std::vector<std::string>{"0", "section"})) << "WM_WININICHANGE at the test's window";
    GlobalFree(mode), DestroyWindow(top), WriteProfileStringA("windows", "device", before), PrtClearSaved();
}

} // namespace
