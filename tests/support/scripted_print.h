// A scripted spooler, device and window manager behind the OS seam's window
// and graphics tables. Every entry logs its call as "Name:arg,arg" (the
// context and the abort dialog left out, strings as text) and answers from a
// table of replies by name, in turn, the last one repeating; an entry with no
// replies gives the answer of a working system. Windows exist as records; on
// Windows DialogBoxParamA shows the module's abort dialog for any template.
#ifndef OXL_TESTS_SCRIPTED_PRINT_H
#define OXL_TESTS_SCRIPTED_PRINT_H

#include "os/osl.h"

#include <map>
#include <string>
#include <vector>

inline const HDC kScriptedDc = reinterpret_cast<HDC>(0xD00); // the context CreateDCA makes

class ScriptedPrint {
public:
    // Besides the entries' own names: "Escape8:N" whether escape N is
    // supported (9 and 12 are; escapes 12 and 13 answer the paper's size and
    // the printing offset from the capabilities), "GetDeviceCaps:N" a
    // capability (96 pixels an inch on a 1280 by 1024 screen, Letter paper at
    // 100 pixels an inch),
    // "GetClipBox" its rectangle (all four values), "spooler" the code the
    // spooler calls the abort procedure with at each EndPage (1: none),
    // "PeekMessageA" 1 when a removing peek brings the dialog a Cancel,
    // "dmSize" the device mode in GetPrinterA's level 2 record (0: none).
    using Replies = std::map<std::string, std::vector<long long>>;
    struct Window { HWND parent; LONG style; HINSTANCE instance; DWORD thread; RECT rect; bool iconic; };

    // `devNames`: the default printer's names in PrintDlgA's DEVNAMES block.
    explicit ScriptedPrint(Replies replies = {}, std::vector<std::string> devNames = {});
    ~ScriptedPrint();
    // The log's entries that start with one of the space-separated `prefixes`.
    std::string Calls(const std::string& prefixes) const;
    void Note(const std::string& entry); // for the test's callbacks
    HWND AddWindow(Window w);            // top-level windows, 256 on by 16
};

#endif
