// The default printer over a scripted common dialog, profile line and spooler.
#include "print/print.h"
#include "tests/unit/intl_env.h"
#include "tests/support/scripted_print.h"
#include "tests/support/scripted_profile.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

// The names the three context functions and PrintGetDefaultPrinter find,
// "device|driver|port" or null for none; `fits` when they fit the contexts'
// buffer of 84 bytes.
struct NamesRow { const char* name; ScriptedPrint::Script script; const char* line; const Language& language; const char* names; bool fits; };
const std::string kLong(100, 'L'), kLongNames = kLong + "|" + kLong + "|" + kLong;
const NamesRow kNames[] = {
    {"the dialog's DEVNAMES", {.devNames = {"PS Printer", "PSCRIPT", "LPT1:"}}, "A,B,C", kEnglish, "PS Printer|PSCRIPT|LPT1:", true},
    {"the profile when the dialog fails with an error", {.printDlg = 0, .dialogError = 0x1008}, "PS Printer,PSCRIPT,LPT1:", kEnglish, "PS Printer|PSCRIPT|LPT1:", true},
    {"blanks after the commas go", {.printDlg = 0, .dialogError = 1}, "  PS Printer, PSCRIPT,\t LPT1:", kEnglish, "PS Printer|PSCRIPT|LPT1:", true},
    {"trailing blanks stay", {.printDlg = 0, .dialogError = 1}, "P ,D ,LPT1: ", kEnglish, "P |D |LPT1: ", true},
    {"the port keeps further commas", {.printDlg = 0, .dialogError = 1}, "P,D,FILE:,x", kEnglish, "P|D|FILE:,x", true},
    {"one comma: no printer", {.printDlg = 0, .dialogError = 1}, "P,D", kEnglish, nullptr, false},
    {"no comma", {.printDlg = 0, .dialogError = 1}, "P", kEnglish, nullptr, false},
    {"an empty line", {.printDlg = 0, .dialogError = 1}, "", kEnglish, nullptr, false},
    {"a refusal without an error doesn't reach the profile", {.printDlg = 0}, "P,D,X", kEnglish, nullptr, false},
    {"a refusal with a DEVNAMES block", {.printDlg = 0, .devNames = {"P", "D", "X"}}, "A,B,C", kEnglish, "P|D|X", true},
    {"no DEVNAMES block", {}, "P,D,X", kEnglish, nullptr, false},
    {"a comma as trail byte is no separator", {.printDlg = 0, .dialogError = 1}, "\x81,x,D,P", kJapanese, "\x81,x|D|P", true},
    {"names of 300 bytes: too long for a context's buffer", {.devNames = {kLong, kLong, kLong}}, "", kEnglish, kLongNames.c_str(), false},
};
class PrintDefault : public ::testing::TestWithParam<NamesRow> {};
TEST_P(PrintDefault, Names) {
    const NamesRow& row = GetParam();
    IntlUnder language(row.language);
    ScriptedProfile profile({{"Windows", "Device", row.line}});
    ScriptedPrint print(row.script);
    DEVMODEA mode = {};
    gOsl.graphics->DeleteDC(PrintCreateDefaultPrinterDC());
    gOsl.graphics->DeleteDC(PrintCreateDefaultPrinterDCExt(&mode));
    gOsl.graphics->DeleteDC(PrintCreateDefaultPrinterIC());
    std::string contexts, names = row.names ? row.names : "untouched|untouched|untouched";
    size_t bar = names.find('|'), bar2 = names.rfind('|');
    std::string args = names.substr(bar + 1, bar2 - bar - 1) + "," + names.substr(0, bar) + "," + names.substr(bar2 + 1);
    if (row.fits) contexts = "dc:" + args + ",0 dc:" + args + ",1 ic:" + args + ",0";
    EXPECT_EQ(print.Calls({"dc:", "ic:"}), contexts) << "the contexts made for " << row.name;
    char device[260] = "untouched", driver[260] = "untouched", port[260] = "untouched";
    EXPECT_EQ(PrintGetDefaultPrinter(device, driver, port), row.names != nullptr) << "PrintGetDefaultPrinter: " << row.name;
    EXPECT_EQ(std::string(device) + "|" + driver + "|" + port, names) << "PrintGetDefaultPrinter: " << row.name;
    std::strcpy(device, "untouched");
    PrintGetDefaultPrinter(device, nullptr, nullptr);
    EXPECT_EQ(device, names.substr(0, bar)) << "PrintGetDefaultPrinter with the device buffer only: " << row.name;
    EXPECT_EQ(print.Calls({"PrintDlgA"}).substr(0, 14), "PrintDlgA:1024") << "PD_RETURNDEFAULT asked: " << row.name;
}
INSTANTIATE_TEST_SUITE_P(Table, PrintDefault, ::testing::ValuesIn(kNames));

// A printer's driver and port, and its default device mode: the size
// DocumentPropertiesA gives, or the level 2 record's, or 156; the copy from
// DocumentPropertiesA (3 copies) or from the level 2 record (5).
struct DeviceRow { const char* name; const char* printer; ScriptedPrint::Script script; BOOL found; const char* driverPort; SIZE_T bytes; short copies; };
const DeviceRow kDevices[] = {
    {"a printer", "PDF", {.levelTwoDevMode = 200}, 1, "drv|CUPS:PDF", 220, 3},
    {"no such printer", "none", {}, 0, "untouched|untouched", 220, 3},
    {"the level 2 read fails", "PDF", {.failGetPrinter = true, .devModeSize = -1}, 0, "untouched|untouched", 156, 3},
    {"no size: the level 2 record's", "PDF", {.levelTwoDevMode = 200, .devModeSize = -1}, 1, "drv|CUPS:PDF", 200, 3},
    {"no size, no level 2 device mode: 156", "PDF", {.devModeSize = -1}, 1, "drv|CUPS:PDF", 156, 3},
    {"no copy: the level 2 record's", "PDF", {.levelTwoDevMode = 200, .devModeCopy = -1}, 1, "drv|CUPS:PDF", 220, 5},
};
class PrintDevice : public ::testing::TestWithParam<DeviceRow> {};
TEST_P(PrintDevice, DriverPortAndMode) {
    const DeviceRow& row = GetParam();
    ScriptedPrint print(row.script);
    char driver[260] = "untouched", port[260] = "untouched";
    EXPECT_EQ(PrintGetDevice(row.printer, driver, port), row.found) << "PrintGetDevice: " << row.name;
    EXPECT_EQ(std::string(driver) + "|" + port, row.driverPort) << "PrintGetDevice: " << row.name;
    EXPECT_EQ(print.Calls({"ClosePrinter"}), row.printer[0] == 'P' ? "ClosePrinter:158" : "") << row.name;
    HGLOBAL block = nullptr;
    LPDEVMODEA mode = PrintDefaultDevMode(reinterpret_cast<HANDLE>(0x9E), const_cast<LPSTR>("PDF"), &block);
    ASSERT_NE(mode, nullptr) << "PrintDefaultDevMode: " << row.name;
    EXPECT_EQ(gOsl.memory->GlobalSize(block), row.bytes) << "PrintDefaultDevMode's block: " << row.name;
    EXPECT_EQ(mode->dmCopies, row.copies) << "PrintDefaultDevMode's copies: " << row.name;
    gOsl.memory->GlobalUnlock(block), gOsl.memory->GlobalFree(block);
}
INSTANTIATE_TEST_SUITE_P(Table, PrintDevice, ::testing::ValuesIn(kDevices));

} // namespace
