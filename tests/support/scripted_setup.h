// A scripted spooler for device modes, forms and the page query, over the
// scripted print backend (its log, its replies, its device, its printers:
// any name opens, with the driver "drv" on the port "CUPS:PDF"): papers and
// forms from a script and a driver that fills a default device mode. The
// setup dialog's entries stay the backend's: the dialog is tested on a real
// spooler (test_print_setup_real.cpp).
#ifndef OXL_TESTS_SCRIPTED_SETUP_H
#define OXL_TESTS_SCRIPTED_SETUP_H

#include "tests/support/scripted_print.h"

class ScriptedSetup {
public:
    struct Paper { WORD code; LONG width, length; std::string name; }; // tenths of a millimetre
    struct Form { std::string name; LONG cx, cy; };                     // thousandths of a millimetre
    struct Script {
        // The first paper is the default device mode's.
        std::vector<Paper> papers = {{1, 2159, 2794, "Letter"}, {9, 2100, 2970, "A4"}};
        std::vector<Form> forms = {{"Letter", 215900, 279400}, {"A4", 210000, 297000}};
        bool failAddForm = false;
        // The print backend's: "DocumentPropertiesA:MODE" the driver's answers
        // (mode 0 the device mode's size), "Escape8:N" the escapes, and so on.
        ScriptedPrint::Replies replies = {};
    };
    explicit ScriptedSetup(Script script);
    ~ScriptedSetup();

private:
    OslServices m_saved;

public:
    // Its log also holds "AddFormA:NAME,CX,CY,LEFT:TOP:RIGHT:BOTTOM" and
    // "DeleteFormA:NAME".
    ScriptedPrint print;
};

#endif
