// Real-number fields in an edit control, and the list helpers on real list
// and combo boxes (Windows, under Wine).
#include "os/osl.h"

#include <oxlrt31/dlgutil.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Entries = std::vector<std::string>;
constexpr int kField = 100;

// A dialog with an edit field: real on Windows; elsewhere a field behind the seam.
#ifdef _WIN32
struct Desk {
    HWND dialog = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    HWND field = CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 99, 20, dialog, HMENU(INT_PTR(kField)), nullptr, nullptr);
    ~Desk() { DestroyWindow(dialog); }
    void SetField(const char* text) { SetWindowTextA(field, text); }
    std::string Field() { char t[32] = ""; return GetWindowTextA(field, t, 32), t; }
    // An unsorted list or combo box holding the entries, and what it holds.
    HWND List(const Entries& entries, bool combo, int extent = 0, int tab = 0) {
        HWND list = CreateWindowExA(0, combo ? "COMBOBOX" : "LISTBOX", "", WS_CHILD | WS_VSCROLL | WS_HSCROLL | (combo ? CBS_DROPDOWNLIST : 0),
                                    0, 40, 100, 200, dialog, nullptr, nullptr, nullptr);
        for (const std::string& e : entries) SendMessageA(list, combo ? CB_ADDSTRING : LB_ADDSTRING, 0, LPARAM(e.c_str()));
        return SetPropA(list, "LBTABSIZE", HANDLE(INT_PTR(tab))), SendMessageA(list, LB_SETHORIZONTALEXTENT, WPARAM(extent), 0), list;
    }
    Entries Of(HWND list, bool combo) {
        Entries out(size_t(SendMessageA(list, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0)));
        for (char text[256]; std::string& e : out) e = (SendMessageA(list, combo ? CB_GETLBTEXT : LB_GETTEXT, &e - &out[0], LPARAM(text)), text);
        return out;
    }
};
#else
std::string sField;
struct Desk {
    const OslWindowService* savedWindow = gOsl.window;
    const OslDialogService* savedDialog = gOsl.dialog;
    OslWindowService window = *gOsl.window;
    OslDialogService dialogs = *gOsl.dialog;
    HWND dialog = HWND(0x10);
    Desk() {
        window.SendMessageA = [](HWND, UINT msg, WPARAM, LPARAM text) { return LRESULT(msg == 12 && (sField = reinterpret_cast<const char*>(text), 1)); };
        dialogs.GetDlgItemTextA = [](HWND, int, LPSTR out, int n) { return UINT(std::strlen(std::strncpy(out, sField.c_str(), size_t(n)))); };
        gOsl.window = &window, gOsl.dialog = &dialogs;
    }
    ~Desk() { gOsl.window = savedWindow, gOsl.dialog = savedDialog; }
    void SetField(const char* text) { sField = text; } std::string Field() { return sField; }
};
#endif

// Metric: 2.5406 cm an inch, in quarter steps of a tenth. Plain: value / 10^decimals.
struct WriteRow { LONG value; BOOL metric; int decimals; const char* text; };
const WriteRow kWrites[] = {
    {0, 1, 0, "0.0"}, {1, 1, 0, "0.0"}, {5, 1, 0, "0.025"}, {100, 1, 0, "0.25"}, {394, 1, 0, "1.0"}, {500, 1, 0, "1.275"},
    {1000, 1, 0, "2.55"}, {3900, 1, 0, "9.9"}, {3937, 1, 0, "10.0"}, {8500, 1, 0, "21.6"}, {11000, 1, 0, "27.95"},
    {1531, 1, 0, "3.9"}, {1571, 1, 0, "4.0"}, {4, 1, 2, "0.0"}, {1500, 0, 3, "1.5"}, {1050, 0, 3, "1.05"}, {1000, 0, 3, "1"},
    {150, 0, 2, "1.5"}, {7, 0, 0, "7"}, {-7, 0, 0, "-7"}, {5, 0, 1, "0.5"}, {12345, 0, 5, "12.345"}, {10, 0, 2, "0.1"},
    {-1, 0, 2, "42949672.95"}, {7, 0, -1, "7"},
};
TEST(DlgRealWrite, TextOfValue) {
    for (const WriteRow& r : kWrites) {
        char text[32] = "unset";
        r.metric ? DlgSetStrRealMetricUnits(r.value, 0, text) : DlgSetStrRealUnits(r.value, 0, text, r.decimals);
        EXPECT_STREQ(text, r.text) << "writing " << r.value << " metric " << r.metric << " decimals " << r.decimals;
        Desk desk;
        DlgSetDlgItemReal(desk.dialog, kField, r.value, 0, r.metric, r.decimals);
        EXPECT_EQ(desk.Field(), r.text) << "DlgSetDlgItemReal(" << r.value << ") into the edit field";
    }
}

struct ReadRow { const char* text; BOOL metric; int decimals; BOOL ok; LONG value; };
const ReadRow kReads[] = {
    {"1", 1, 0, 1, 394}, {"2.54", 1, 0, 1, 1000}, {"2.55", 1, 0, 1, 1004}, {"21.59", 1, 0, 1, 8498}, {"0.025", 1, 0, 1, 10},
    {"12a", 1, 0, 0, 0}, {"12a", 0, 2, 0, 0}, {"-1", 0, 0, 0, 0}, {"-1", 1, 0, 0, 0}, {"", 0, 0, 0, 0}, {"", 1, 0, 0, 0},
    {" 1", 0, 0, 0, 0}, {".5", 0, 1, 1, 5}, {"12.7", 0, 0, 1, 12}, {"1.5", 0, 2, 1, 150}, {"1.567", 0, 2, 1, 156},
    {"1.5", 0, 5, 1, 1500}, {"7", 0, -1, 1, 7}, {"12.", 0, 2, 1, 1200}, {"0.05", 0, 1, 1, 0}, {"1.25", 0, 1, 1, 12},
    {"3000000", 0, 3, 1, 2147483647}, {"9999999", 1, 0, 1, 2147483647}, {"2.5", 0, 3, 1, 2500},
};
TEST(DlgRealRead, ValueOfText) {
    for (const ReadRow& r : kReads) {
        Desk desk;
        desk.SetField(r.text);
        BOOL ok = 7;
        LONG value = DlgGetDlgItemReal(desk.dialog, kField, &ok, 0, r.metric, r.decimals);
        EXPECT_TRUE(ok == r.ok && value == r.value) << "reading \"" << r.text << "\" metric " << r.metric << " decimals " << r.decimals << ": " << value;
    }
}

#ifdef _WIN32
// Real list and combo boxes.
// Adding a text only when no entry has it exactly, with the system's search that ignores case.
struct AddRow { Entries before; const char* text; BOOL result; Entries after; };
const AddRow kAdds[] = {
    {{"abc"}, "ABC", 1, {"abc", "ABC"}}, {{"abc"}, "abc", 1, {"abc"}}, {{"aBC", "abc"}, "abc", 1, {"aBC", "abc"}},
    {{"ABC", "abc"}, "abc", 1, {"ABC", "abc", "abc"}}, {{}, "x", 1, {"x"}}, {{"x"}, "", 1, {"x"}},
    {{"x"}, nullptr, 0, {"x"}}, {{"aBc", "aBC", "abc"}, "abc", 1, {"aBc", "aBC", "abc"}},
};
TEST(DlgAddDistinct, ListAndCombo) {
    for (const AddRow& r : kAdds) {
        for (bool combo : {false, true}) {
            Desk desk;
            HWND list = desk.List(r.before, combo);
            BOOL got = combo ? DlgAddDistinctStringIntoCombo(list, r.text) : DlgAddDistinctStringIntoListbox(list, r.text);
            EXPECT_TRUE(got == r.result && desk.Of(list, combo) == r.after) << "adding \"" << (r.text ? r.text : "(null)") << "\", combo " << combo;
        }
    }
}

struct LocateRow { Entries entries; const char* text; int index; };
const LocateRow kLocates[] = {
    {{"abc", "ABC"}, "ABC", 1}, {{"abc", "ABC"}, "abc", 0}, {{"abc"}, "Abc", -1}, {{}, "a", -1},
    {{"a"}, "", -1}, {{"a"}, nullptr, -1}, {{"a", "", "b"}, "b", -1}, {{"a", "b", "c"}, "c", 2},
};
TEST(DlgLocate, ExactIndex) {
    for (const LocateRow& r : kLocates) {
        Desk desk;
        EXPECT_EQ(DlgLocateStringInListbox(desk.List(r.entries, false), r.text), r.index) << "locating \"" << (r.text ? r.text : "(null)") << "\"";
    }
}

// The extent grows to the widest entry and shrinks only to the client width
// (100 pixels; 40 "W" are wider, "a<tab>b" too with a tab stop of 400).
enum Extent { kGrown, kClientWidth, kAsBefore };
struct ScrollRow { Entries entries; int before, tab; Extent extent; };
const std::string kW40(40, 'W');
const ScrollRow kScrolls[] = {
    {{"a", "bb"}, 5000, 0, kClientWidth}, {{kW40}, 0, 0, kGrown}, {{kW40}, 9000, 0, kAsBefore}, {{"a"}, 50, 0, kAsBefore},
    {{"a\tb"}, 0, 400, kGrown}, {{"a\tb"}, 0, 0, kAsBefore}, {{"a", kW40}, 0, 0, kGrown}, {{}, 300, 0, kClientWidth},
};
TEST(DlgHScroll, ExtentOfEntries) {
    for (const ScrollRow& r : kScrolls) {
        Desk desk;
        HWND list = desk.List(r.entries, false, r.before, r.tab);
        DlgSetListHScroll(list);
        RECT client;
        GetClientRect(list, &client);
        int extent = int(SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0));
        bool right = r.extent == kGrown ? extent > client.right : extent == (r.extent == kClientWidth ? client.right : r.before);
        EXPECT_TRUE(right) << "DlgSetListHScroll on " << r.entries.size() << " entries, extent " << r.before << ", width " << client.right << ": " << extent;
    }
}
#endif

TEST(DlgSearchSpec, Wildcards) {
    for (auto [text, pattern] : {std::pair<const char*, BOOL>{"a*.txt", 1}, {"a?", 1}, {"a.txt", 0}, {"", 0}, {"dir\\x?y", 1}, {nullptr, 0}})
        EXPECT_EQ(DlgSearchSpec(text), pattern) << "DlgSearchSpec(\"" << (text ? text : "(null)") << "\")";
}

} // namespace
