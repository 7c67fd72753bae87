// A scripted spooler and user for the printer setup dialog, device modes,
// forms and paper queries, over the scripted print backend (its log, its
// replies, its device): printers, papers, bins and forms from a script, a
// driver that fills a default device mode, and a dialog driven by a list of
// user actions.
#ifndef OXL_TESTS_SCRIPTED_SETUP_H
#define OXL_TESTS_SCRIPTED_SETUP_H

#include "tests/support/scripted_print.h"

class ScriptedSetup {
public:
    struct Printer { std::string name, driver, ports; };
    struct Paper { WORD code; LONG width, length; std::string name; }; // tenths of a millimetre
    struct Form { std::string name; LONG cx, cy; };                     // thousandths of a millimetre
    struct Script {
        std::vector<Printer> printers = {{"PDF", "pdfdrv", "CUPS:PDF"}, {"Laser", "ldrv", "LPT1:, COM1:"}};
        // The first paper is the default device mode's.
        std::vector<Paper> papers = {{1, 2159, 2794, "Letter"}, {9, 2100, 2970, "A4"}};
        std::vector<std::pair<WORD, std::string>> bins = {{7, "Automatic"}, {4, "Manual"}};
        std::vector<Form> forms = {{"Letter", 215900, 279400}, {"A4", 210000, 297000}};
        bool failAddForm = false;
        // The user, one action at a time: "select N", "double N", "setup", "ok",
        // "cancel"; "none": the dialog can't be shown. The driver's dialog sets
        // 7 copies when it answers IDOK.
        std::vector<std::string> user = {"ok"};
        // The print backend's: "DocumentPropertiesA:MODE" the driver's answers
        // (mode 0 the device mode's size), "Escape8:N" the escapes, and so on.
        ScriptedPrint::Replies replies = {};
    };
    explicit ScriptedSetup(Script script);
    ~ScriptedSetup();

private:
    OslServices m_saved;

public:
    // Its log also holds "row:TEXT" for each row the list box gets,
    // "selected:N" for the row found by the start of its text,
    // "profile:S,K,V", "broadcast:WPARAM,SECTION,FLAGS,MS", "AddFormA:NAME,CX,CY"
    // and "DeleteFormA:NAME".
    ScriptedPrint print;
};

#endif
