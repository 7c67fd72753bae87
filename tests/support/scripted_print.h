// A scripted spooler, device and window manager behind the OS seam's window
// and graphics tables: a printer whose calls answer from a script, windows
// that exist as records, and a log of what the library called, in order.
#ifndef OXL_TESTS_SCRIPTED_PRINT_H
#define OXL_TESTS_SCRIPTED_PRINT_H

#include "os/osl.h"

#include <map>
#include <string>
#include <vector>

class ScriptedPrint {
public:
    struct Script {
        bool failCreateDC = false;
        int startDoc = 1, startPage = 1;        // StartDocA's and the first StartPage's results
        std::vector<int> endPage = {};          // EndPage's results in turn; 1 after them
        std::map<int, int> abortAtEndPage = {}; // at the Nth EndPage the spooler calls the abort procedure with this code
        std::vector<int> escapes = {9, 12};     // escapes QUERYESCSUPPORT affirms
        int cancelAtPeek = 0;                   // the Nth removing peek brings the dialog a Cancel
        bool failDialog = false;                // CreateDialogParamA fails
        // The device: 100 pixels an inch, so a device unit is 10 logical ones.
        LONG paperWidth = 850, paperHeight = 1100, offsetX = 0, offsetY = 0; // device units
        RECT clip = {0, 0, 8500, -11000};                                    // GetClipBox, logical
        int saveLevel = 3;                                                   // SaveDC's result
        // The default printer: PrintDlgA's result and the names of its DEVNAMES
        // block (none when empty), CommDlgExtendedError's code.
        BOOL printDlg = 1; std::vector<std::string> devNames = {}; DWORD dialogError = 0;
        // Any printer but "none": GetPrinterA's level 2 record (driver, port, a
        // device mode of these bytes with 5 copies, none for 0) and
        // DocumentPropertiesA's results for its size and its copy (3 copies).
        bool failGetPrinter = false; WORD levelTwoDevMode = 0; LONG devModeSize = 220, devModeCopy = 1;
    };
    struct Window { HWND parent; LONG style; HINSTANCE instance; DWORD thread; RECT rect; bool iconic; };

    explicit ScriptedPrint(Script script);
    ~ScriptedPrint();
    // The log's entries ("StartPage", "ResetDCA:2", "box:Out of Disk Space,Title,48",
    // "802:Printing Page: 2", ...) that start with one of `prefixes`, joined by spaces.
    std::string Calls(std::initializer_list<const char*> prefixes) const;
    void Note(const std::string& entry); // for the test's callbacks
    HDC Dc() const;                      // the context CreateDCA makes
    HWND AddWindow(Window w);            // top-level windows, in order of creation
    Window& WindowOf(HWND w);

private:
    const OslWindowService* m_window;
    const OslGraphicsService* m_graphics;
};

#endif
