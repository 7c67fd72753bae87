// oxl printers and oxl print: the default printer as the library finds it,
// and a document printed on it through PagePrint as a host prints: a page of
// 15 by 21 inches tiled over the sheets (along a row, then down), framed, in
// two copies, with a label in each tile; or lines of text given on the
// command line, on one framed page. Drawing needs the Windows GDI; elsewhere
// the library finds no printer and the commands say so.
#include "oxl_tool.h"

#include <oxlrt31/print.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

const char* const kStatus[] = {"done", "cancelled", "no parent window", "no document could be started", "out of memory",
                               "out of disk space", "stopped by the application", "printing error"};

struct Document { std::vector<std::string> lines; int sheets; };

#ifdef _WIN32
// Labels at one inch into each tile of two by two tiles of Letter or A4
// paper; text lines from the top. The page is in thousandths of an inch,
// y growing upwards, as the library maps it for every tile.
std::vector<std::pair<POINT, std::string>> labels(const Document& d) {
    std::vector<std::pair<POINT, std::string>> out;
    for (size_t i = 0; i < d.lines.size(); ++i) out.push_back({{1000, -1000 - 700 * LONG(i)}, d.lines[i]});
    if (d.lines.empty())
        for (int row = 0; row < 2; ++row)
            for (int col = 0; col < 2; ++col)
                out.push_back({{1000 + 8000 * col, -1000 - 11500 * row}, std::string("Tile ") + char('A' + col) + char('1' + row)});
    return out;
}
#endif

LONG OXLCALLBACK drawPage(HDC dc, int, RECT*, LPARAM data, LPARAM, LPARAM, LPARAM, LONG* across, LONG* down) {
    Document* d = reinterpret_cast<Document*>(data);
    ++d->sheets;
#ifdef _WIN32
    HFONT font = CreateFontA(-500, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
    HGDIOBJ old = SelectObject(dc, font);
    for (const auto& [at, text] : labels(*d)) TextOutA(dc, at.x, at.y, text.c_str(), int(text.size()));
    DeleteObject(SelectObject(dc, old));
#else
    (void)dc;
#endif
    *across = *down = 1; // every tile of the grid
    return 0;
}

bool defaultPrinter(char* device, char* driver, char* port) {
    if (PrintGetDefaultPrinter(device, driver, port)) return true;
    std::printf("No printer: the library finds no default printer.\n");
    return false;
}

} // namespace

int OxlPrinters(int, char**) {
    char device[260], driver[260], port[260];
    if (!defaultPrinter(device, driver, port)) return 0;
    std::printf("default printer  %s\ndriver           %s\nport             %s\n", device, driver, port);
    if (PrintGetDevice(device, driver, port)) std::printf("its spooler says driver %s, port %s\n", driver, port);
    HDC ic = PrintCreateDefaultPrinterIC();
#ifdef _WIN32
    if (ic)
        std::printf("paper            %d by %d dots at %d dpi\n", GetDeviceCaps(ic, PHYSICALWIDTH), GetDeviceCaps(ic, PHYSICALHEIGHT),
                    GetDeviceCaps(ic, LOGPIXELSX)), DeleteDC(ic);
#endif
    if (!ic) std::printf("no information context could be opened on it\n");
    return 0;
}

int OxlPrint(int argc, char** argv) {
    PagePrintInfo info = {};
    if (!defaultPrinter(info.Job.Device, info.Job.Driver, info.Job.Port)) return 1;
    Document doc{std::vector<std::string>(argv, argv + argc), 0};
    bool sample = doc.lines.empty();
    info.PageWidth = sample ? 15000 : 8000, info.PageHeight = sample ? 21000 : 10500;
    info.Copies = sample ? 2 : 1, info.DrawFrame = 1, info.SnapToPaper = 1, info.SplitAcross = info.SplitDown = sample;
    info.Job.Title = "oxl print", info.Job.DocName = sample ? "oxl sample" : "oxl text";
    info.Job.TextLine1 = "Printing", info.Job.TextLine2 = info.Job.DocName;
    info.DrawPage = drawPage, info.HostData = reinterpret_cast<LPARAM>(&doc);
    HWND parent = nullptr;
#ifdef _WIN32
    parent = CreateWindowExA(0, "STATIC", "oxl print", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
#endif
    PagePrint(parent, &info);
#ifdef _WIN32
    DestroyWindow(parent);
#endif
    WORD status = info.Job.Status;
    std::printf("%s: %d sheet%s of a %ld by %ld page (thousandths of an inch, %ld cop%s) went to %s on %s; status %u, %s\n",
                info.Job.DocName, doc.sheets, doc.sheets == 1 ? "" : "s", long(info.PageWidth), long(info.PageHeight), long(info.Copies),
                info.Copies == 1 ? "y" : "ies", info.Job.Device, info.Job.Port, status, status < 8 ? kStatus[status] : "?");
    return status == PRINT_STATUS_DONE ? 0 : 1;
}
