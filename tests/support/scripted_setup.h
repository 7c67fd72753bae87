// A scripted spooler and user for the printer setup dialog, device modes,
// forms and paper queries: printers, papers, bins and forms from a script, a
// driver whose device mode is of a chosen size, a dialog driven by a list of
// user actions, and a log of the calls that matter, in order.
#ifndef OXL_TESTS_SCRIPTED_SETUP_H
#define OXL_TESTS_SCRIPTED_SETUP_H

#include "os/osl.h"

#include <string>
#include <vector>

class ScriptedSetup {
public:
    struct Printer { std::string name, driver, ports; };
    struct Paper { WORD code; LONG width, length; std::string name; }; // tenths of a millimetre
    struct Form { std::string name; LONG cx, cy; };                     // thousandths of a millimetre
    struct Script {
        std::vector<Printer> printers = {{"PDF", "pdfdrv", "CUPS:PDF"}, {"Laser", "ldrv", "LPT1:, COM1:"}};
        std::vector<Paper> papers = {{1, 2159, 2794, "Letter"}, {9, 2100, 2970, "A4"}};
        std::vector<std::pair<WORD, std::string>> bins = {{7, "Automatic"}, {4, "Manual"}};
        std::vector<Form> forms = {{"Letter", 215900, 279400}, {"A4", 210000, 297000}};
        // The default device mode: its fields, paper and size from DocumentPropertiesA
        // (mode 0), and the size of the level 2 record's (dmSize + dmDriverExtra).
        DWORD fields = 0x1020F; LONG devModeSize = 220; WORD levelTwoSize = 220;
        bool failAddForm = false;
        // The user, one action at a time: "select N", "double N", "setup", "ok",
        // "cancel"; "none": the dialog can't be shown. The driver's dialog
        // answers `driverAnswer`, setting 7 copies when it answers IDOK.
        std::vector<std::string> user = {"ok"}; LONG driverAnswer = 1;
        // The device for the page queries: escapes it supports, its page and
        // printing offset (device units, a tenth of a millimetre each), clip box.
        std::vector<int> escapes = {12, 13}; POINT page = {2159, 2794}, offset = {50, 40}; RECT clip = {0, 0, 2000, -2600};
    };
    explicit ScriptedSetup(Script script);
    ~ScriptedSetup();
    // Log entries starting with one of `prefixes`, joined by spaces: "profile:S,K,V",
    // "broadcast:SECTION,FLAGS,MS", "box:TEXT", "AddFormA:NAME,CX,CY", "DeleteFormA:NAME",
    // "DocumentPropertiesA:MODE", "setup:1|0" (the Setup button).
    std::string Calls(std::initializer_list<const char*> prefixes) const;
    std::string Rows() const; // the list box's rows joined by "|"

private:
    OslServices m_saved;
};

#endif
