// What the commands of oxl in other files share with oxl.cpp.
#ifndef OXL_TOOLS_OXL_TOOL_H
#define OXL_TOOLS_OXL_TOOL_H

#include <string>

// Text of the library's code page, and Shift-JIS bytes whatever the page, in
// the terminal's encoding ("?" where it can't be shown).
std::string OxlFromLibrary(const std::string& text);
std::string OxlFromShiftJis(const std::string& text);

// oxl date ARGUMENTS (tools/oxl/oxl_date.cpp).
int OxlDate(int argc, char** argv);

// oxl printers, oxl print [TEXT...] (tools/oxl/oxl_print.cpp).
int OxlPrinters(int argc, char** argv);
int OxlPrint(int argc, char** argv);

// oxl papers, oxl setup [--shot FILE.png] (tools/oxl/oxl_setup.cpp).
int OxlPapers(int argc, char** argv);
int OxlSetup(int argc, char** argv);

#endif
