// oxl papers and oxl setup: the default printer's papers and bins with their
// sizes, and its default paper's printable part, as a host asking before it
// prints sees them; and the printer setup dialog over the default printer,
// with what the user chose. Windows only: elsewhere there is no printer.
//   oxl setup [--shot FILE.png]   with --shot: the dialog is saved as a
//                                 picture once shown, and cancelled
#include "oxl_tool.h"

#include <oxlrt31/print.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdio>
#include <cstring>
#include <string>

#ifdef _WIN32
void SaveWindowPng(HWND window, const char* file); // demo/mask_demo_png.cpp
#endif

namespace {

bool defaultPrinter(char* device, char* driver, char* port) {
    if (PrintGetDefaultPrinter(device, driver, port)) return true;
    std::printf("No printer: the library finds no default printer.\n");
    return false;
}

#ifdef _WIN32
template <class T> const T* entry(HGLOBAL block, int i, size_t bytes = sizeof(T)) {
    return reinterpret_cast<const T*>(static_cast<const char*>(GlobalLock(block)) + size_t(i) * bytes);
}
void release(std::initializer_list<HGLOBAL> blocks) {
    for (HGLOBAL b : blocks) GlobalUnlock(b), GlobalFree(b);
}

void listPapers(const char* device, const char* port) {
    HGLOBAL codes, sizes, names;
    int n = PrintGetPageSizes(device, nullptr, port, nullptr, &codes, &sizes, &names);
    std::printf("%d papers (code, size in millimetres, name)%s\n", n > 0 ? n : 0, n < 0 ? ": no paper list" : "");
    for (int i = 0; i < n; ++i)
        std::printf("  %5u  %6.1f x %6.1f  %s\n", *entry<WORD>(codes, i), entry<LONG>(sizes, i, 8)[0] / 10.0,
                    entry<LONG>(sizes, i, 8)[1] / 10.0, entry<char>(names, i, 64));
    if (n > 0) release({codes, sizes, names});
    HGLOBAL bins, binNames;
    n = PrintGetPaperBins(device, nullptr, port, nullptr, &bins, &binNames);
    std::printf("%d bins (number, name)%s\n", n > 0 ? n : 0, n < 0 ? ": no bin list" : "");
    for (int i = 0; i < n; ++i) std::printf("  %5u  %s\n", *entry<WORD>(bins, i), entry<char>(binNames, i, 24));
    if (n > 0) release({bins, binNames});
}

// Saves the setup dialog once it is shown, and cancels it.
DWORD WINAPI shoot(LPVOID file) {
    HWND dialog = nullptr;
    for (int i = 0; i < 100 && !(dialog = FindWindowA("#32770", "Printer Setup")); ++i) Sleep(100);
    if (!dialog) return 1;
    Sleep(500); // painted
    SaveWindowPng(dialog, static_cast<const char*>(file));
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    return 0;
}
#endif

} // namespace

int OxlPapers(int, char**) {
    char device[260], driver[260], port[260];
    if (!defaultPrinter(device, driver, port)) return 0;
    std::printf("default printer %s on %s\n", device, port);
#ifdef _WIN32
    listPapers(device, port);
    WORD paper = 0;
    SIZE size;
    RECT r;
    if (PageGetPageInfo(driver, device, port, nullptr, &paper, &size, &r))
        std::printf("default paper %u: %.1f x %.1f mm, printable from (%.1f, %.1f) to (%.1f, %.1f)\n", paper, size.cx / 10.0,
                    size.cy / 10.0, r.left / 10.0, r.top / 10.0, r.right / 10.0, r.bottom / 10.0);
#endif
    return 0;
}

int OxlSetup(int argc, char** argv) {
    char device[260] = "", driver[260] = "", port[260] = "";
    PrintGetDefaultPrinter(device, driver, port);
    HGLOBAL mode = nullptr;
    std::printf("printer setup starts from \"%s\" (%s, %s)\n", device, driver, port);
#ifdef _WIN32
    if (argc == 2 && std::strcmp(argv[0], "--shot") == 0) CloseHandle(CreateThread(nullptr, 0, shoot, argv[1], 0, nullptr));
#else
    (void)argc, (void)argv;
#endif
    BOOL changed = PrintPrinterSetup(nullptr, &mode, device, driver, port, nullptr);
    std::printf("%s: \"%s\" (%s, %s)\n", changed ? "changed" : "nothing changed", device, driver, port);
#ifdef _WIN32
    const DEVMODEA* m = mode ? static_cast<const DEVMODEA*>(GlobalLock(mode)) : nullptr;
    if (m) std::printf("device mode: paper %d, %s, %d cop%s\n", m->dmPaperSize, m->dmOrientation == 2 ? "landscape" : "portrait",
                       m->dmCopies, m->dmCopies == 1 ? "y" : "ies");
    if (mode) GlobalUnlock(mode), GlobalFree(mode);
#endif
    return 0;
}
