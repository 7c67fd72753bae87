// The default printer over a scripted common dialog, profile line and spooler.
#include "print/print.h"
#include "tests/unit/intl_env.h"
#include "tests/support/scripted_osl.h"
#include "tests/support/scripted_print.h"
#include "tests/support/scripted_profile.h"

#include <gtest/gtest.h>

namespace {

// The names the three context functions and PrintGetDefaultPrinter find,
// "driver,device,port" or null for none; `fits` when they fit the contexts'
// buffer of 84 bytes.
// The common dialog fails with an error code: the profile line is read.
#define REFUSED {{"PrintDlgA", {0}}, {"CommDlgExtendedError", {1}}}
struct NamesRow { const char* name; ScriptedPrint::Replies replies; std::vector<std::string> devNames; const char* line; const Language& language; const char* names; bool fits; };
const std::string kLong(100, 'L'), kLongNames = kLong + "," + kLong + "," + kLong;
const NamesRow kNames[] = {
    {"the dialog's DEVNAMES", {}, {"PS Printer", "PSCRIPT", "LPT1:"}, "A,B,C", kEnglish, "PSCRIPT,PS Printer,LPT1:", true},
    {"blanks after the commas go", REFUSED, {}, "  PS Printer, PSCRIPT,\t LPT1:", kEnglish, "PSCRIPT,PS Printer,LPT1:", true},
    {"one comma: no printer", REFUSED, {}, "P,D", kEnglish, nullptr, false},
    {"a refusal without an error doesn't reach the profile", {{"PrintDlgA", {0}}}, {}, "P,D,X", kEnglish, nullptr, false},
    {"a comma as trail byte is no separator", REFUSED, {}, "\x81,x,D,P", kJapanese, "D,\x81,x,P", true},
    {"names of 300 bytes: too long for a context's buffer", {}, {kLong, kLong, kLong}, "", kEnglish, kLongNames.c_str(), false},
};
TEST(PrintDefault, Names) {
    for (const NamesRow& row : kNames) {
        IntlUnder language(row.language);
        ScriptedProfile profile({{"Windows", "Device", row.line}});
        ScriptedHeap heap;
        ScriptedPrint print(row.replies, row.devNames);
        DEVMODEA mode = {};
        for (HDC dc : {PrintCreateDefaultPrinterDC(), PrintCreateDefaultPrinterDCExt(&mode), PrintCreateDefaultPrinterIC()}) gOsl.graphics->DeleteDC(dc);
        std::string names = row.names ? row.names : "untouched,untouched,untouched";
        EXPECT_EQ(print.Calls("CreateDCA CreateICA PrintDlgA:1024"), row.fits ? "PrintDlgA:1024 CreateDCA:" + names + ",null PrintDlgA:1024 CreateDCA:" + names + ",0 PrintDlgA:1024 CreateICA:" + names + ",null" : "PrintDlgA:1024 PrintDlgA:1024 PrintDlgA:1024") << "the contexts made for " << row.name;
        char buffers[3][260] = {"untouched", "untouched", "untouched"}, alone[260] = "untouched";
        EXPECT_EQ(PrintGetDefaultPrinter(buffers[0], buffers[1], buffers[2]), row.names != nullptr) << "PrintGetDefaultPrinter: " << row.name;
        PrintGetDefaultPrinter(alone, nullptr, nullptr);
        EXPECT_EQ(heap.Outstanding(), 0) << "the common dialog's blocks are freed: " << row.name;
        EXPECT_EQ(std::string(buffers[1]) + "," + buffers[0] + "," + buffers[2] + ", the device alone: " + alone, names + ", the device alone: " + buffers[0]) << "PrintGetDefaultPrinter with three buffers, with the device's alone: " << row.name;
    }
}

// A printer's driver and port, and its default device mode: the size
// DocumentPropertiesA gives, or the level 2 record's, or 156; the copy from
// DocumentPropertiesA (3 copies) or from the level 2 record (5).
struct DeviceRow { const char* name; ScriptedPrint::Replies replies; const char* device; const char* mode; };
const DeviceRow kDevices[] = {
    {"a printer", {{"dmSize", {200}}}, "1|drv|CUPS:PDF OpenPrinterA:PDF ClosePrinter:158", "220 bytes, 3 copies"},
    {"no such printer", {{"OpenPrinterA", {0}}}, "0|untouched|untouched OpenPrinterA:PDF", "220 bytes, 3 copies"},
    {"the level 2 read fails", {{"GetPrinterA", {0}}, {"DocumentPropertiesA:0", {-1}}}, "0|untouched|untouched OpenPrinterA:PDF ClosePrinter:158", "156 bytes, 3 copies"},
    {"no size: the level 2 record's", {{"dmSize", {200}}, {"DocumentPropertiesA:0", {-1}}}, "1|drv|CUPS:PDF OpenPrinterA:PDF ClosePrinter:158", "200 bytes, 3 copies"},
    {"no copy: the level 2 record's", {{"dmSize", {200}}, {"DocumentPropertiesA:2", {-1}}}, "1|drv|CUPS:PDF OpenPrinterA:PDF ClosePrinter:158", "220 bytes, 5 copies"},
};
TEST(PrintDevice, DriverPortAndMode) {
    for (const DeviceRow& row : kDevices) {
        ScriptedHeap heap;
        ScriptedPrint print(row.replies);
        char driver[260] = "untouched", port[260] = "untouched";
        BOOL found = PrintGetDevice("PDF", driver, port);
        EXPECT_EQ(std::to_string(found) + "|" + driver + "|" + port + " " + print.Calls("OpenPrinterA ClosePrinter"), row.device) << "PrintGetDevice: " << row.name;
        HGLOBAL block = nullptr;
        LPDEVMODEA mode = PrintDefaultDevMode(HANDLE(0x9E), const_cast<LPSTR>("PDF"), &block);
        ASSERT_NE(mode, nullptr) << "PrintDefaultDevMode: " << row.name;
        EXPECT_EQ(std::to_string(gOsl.memory->GlobalSize(block)) + " bytes, " + std::to_string(mode->dmCopies) + " copies", row.mode) << "PrintDefaultDevMode: " << row.name;
        gOsl.memory->GlobalUnlock(block), gOsl.memory->GlobalFree(block);
        EXPECT_EQ(heap.Outstanding(), 0) << "blocks left by " << row.name;
    }
}

} // namespace
