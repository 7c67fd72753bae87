// The edit-control filter in a host's edit control: a real EDIT control on
// Windows (and under Wine), the OS layer's model elsewhere; both run the same
// rows. Then a property run: random masks and random messages, after each of
// which the text still fits its mask.
#include "format/fmtint.h"
#include "format/maskint.h"
#include "tests/support/edit_host.h"
#include "tests/support/scripted_osl.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>
#include <string>
#include <vector>

namespace {

const char kPhone[] = "(999) 999-9999";

struct KeyRow { const char* mask; const char* before; WORD s, e; const char* keys; const char* after; WORD s2, e2; int beeps; };
const KeyRow kKeyRows[] = {
    {kPhone, "", 0, 0, "5", "(5", 2, 2, 0}, {kPhone, "", 0, 0, "5551", "(555) 1", 7, 7, 0}, {kPhone, "(555", 4, 4, "x", "(555) ", 6, 6, 1},
    {kPhone, "(555", 4, 4, ")", "(555) ", 6, 6, 0}, {kPhone, "(555) 123-4567", 14, 14, "8", "(555) 123-4567", 14, 14, 1},
    {kPhone, "(555) 123-4567", 2, 2, "8", "(555) 123-4567", 2, 2, 1}, {kPhone, "(555) 123-4567", 2, 3, "8", "(585) 123-4567", 3, 3, 0},
    {kPhone, "(555) 123-4567", 2, 5, "8", "(581) 234-567", 3, 3, 0}, {kPhone, "(555) 234-567", 2, 2, "7", "(575) 523-4567", 3, 3, 0},
    {kPhone, "(555) 234-567", 4, 4, "7", "(555) 723-4567", 7, 7, 0}, {kPhone, "(555) 123-4567", 6, 6, "\x7f", "(555) 234-567", 6, 6, 0},
    {kPhone, "(555) 123-4567", 4, 6, "\x7f", "(555) 123-4567", 6, 6, 0}, {kPhone, "(555) 123-4567", 4, 7, "\x7f", "(555) 234-567", 6, 6, 0},
    {kPhone, "(555) 123-4567", 0, 14, "\x7f", "", 0, 0, 0}, {kPhone, "(555) 123-4567", 3, 6, "\x0f", "(551) 234-567", 3, 3, 0},
    {kPhone, "(555) 123-4567", 6, 6, "\x0e", "(555) 234-567", 6, 6, 0}, {kPhone, "(555) 123-4567", 7, 7, "\b", "(555) 234-567", 6, 6, 0},
    {kPhone, "(555) 123-4567", 6, 6, "\b", "(551) 234-567", 3, 3, 0}, {kPhone, "(555) 123-4567", 2, 7, "\b", "(523) 456-7", 2, 2, 0},
    {kPhone, "(5", 2, 2, "\b", "", 0, 0, 0}, {kPhone, "(", 1, 1, "\b", "(", 1, 1, 0}, {kPhone, "(5", 0, 0, "\b", "(5", 0, 0, 0},
    {kPhone, "(555) 123-4567", 3, 3, "\2", "(555) 123-4567", 6, 6, 0}, {kPhone, "(555) 123-4567", 6, 6, "\1", "(555) 123-4567", 3, 3, 0},
    {kPhone, "(555) 123-4567", 1, 1, "\1", "(555) 123-4567", 1, 1, 0}, {kPhone, "(555) 123-4567", 9, 9, "\3", "(555) 123-4567", 1, 1, 0},
    {kPhone, "(555) 123", 1, 1, "\4", "(555) 123", 9, 9, 0}, {kPhone, "(555) 123", 3, 3, "\5", "(555) 123", 3, 9, 0},
    {kPhone, "(555) 123", 3, 7, "\6", "(555) 123", 0, 3, 0}, {kPhone, "(5", 2, 2, "\t", "(5", 2, 2, 0}, {"99/", "", 0, 0, "12", "12/", 3, 3, 0},
    {"99/", "12/", 3, 3, "3", "12/", 3, 3, 1}, {"AA-99", "", 0, 0, "ab1", "AB-1", 4, 4, 0}, {"AA-99", "", 0, 0, "a1", "A", 1, 1, 1},
    {"XX*", "abcde", 1, 1, "z", "azbcde", 2, 2, 0}, {"XX*", "abcde", 5, 5, "%!", "abcde%!", 7, 7, 0}, {"^99", "", 0, 0, "1x", "1", 1, 1, 1},
    {"9-9", "1-2", 3, 3, "\1", "1-2", 2, 2, 0}, {"-9", "", 0, 0, "\3", "", 0, 0, 0}, {"9-9/", "", 0, 0, "1-", "1-", 2, 2, 0},
    {"9-9/", "", 0, 0, "1-2", "1-2/", 4, 4, 0}, {"AAjX%#", "X j %#", 3, 6, "z", "X", 1, 1, 0},  // the blanks fall out of the rebuild, and z with them
    {"((9", "((", 0, 1, "\x7f", "", 0, 0, 0},  // no placeholder in the text: literals go too
    {kPhone, "(5a5)", 0, 5, "\x7f", "", 0, 0, 0}, {kPhone, "(5a5)", 1, 3, "\x7f", "(5a5)", 1, 3, 0},  // a text that doesn't fit
    // no mask: the filter declines, and the control (real or model) does as an edit control does
    {nullptr, "abc", 3, 3, "\b", "ab", 2, 2, 0}, {nullptr, "abc", 1, 2, "\b", "ac", 1, 1, 0}, {nullptr, "abc", 1, 1, "x", "axbc", 2, 2, 0},
    {nullptr, "abc", 2, 2, "\1", "abc", 1, 1, 0}, {nullptr, "abc", 1, 1, "\2\4", "abc", 3, 3, 0}, {nullptr, "abc", 2, 2, "\3", "abc", 0, 0, 0},
    {nullptr, "abc", 1, 1, "\x7f", "ac", 1, 1, 0}, {nullptr, "abc", 0, 2, "\x0f", "c", 0, 0, 0},
};

TEST(FmtMaskEdit, KeysInAMaskedControl) {
    for (const KeyRow& r : kKeyRows) {
        EditHost host(r.mask, 0);
        host.Set(r.before, r.s, r.e);
        for (const char* k = r.keys; *k; ++k) host.Key(*k);
        EXPECT_EQ(std::make_tuple(host.Text(), host.Sel(), host.beeps), std::make_tuple(std::string(r.after), std::make_pair(r.s2, r.e2), r.beeps))
            << "mask \"" << (r.mask ? r.mask : "(none)") << "\", text \"" << r.before << "\" selected " << r.s << " to " << r.e << ", keys "
            << ::testing::PrintToString(std::string(r.keys)) << " (text, selection, beeps)";
    }
}

// Text from elsewhere: the flags decide whether it is put through the mask,
// and whether the control is marked modified; FMTM_SETTEXT fills the field
// and, filtered with notice, reaches the host with the control's id (7).
struct SetRow { const char* mask; UINT msg; DWORD flags; const char* before; const char* text; const char* after; bool modified; };
const SetRow kSetRows[] = {
    {kPhone, OSL_WM_SETTEXT, FMTF_EDITFILTER, "", "5551234567", "(555) 123-4567", false}, {kPhone, OSL_WM_SETTEXT, 0, "", "5551234567", "5551234567", false},
    {kPhone, OSL_WM_SETTEXT, FMTF_EDITFILTER | FMTF_EDITNOTIFY, "", "555", "(555)", true}, {kPhone, OSL_WM_SETTEXT, FMTF_EDITFILTER, "(5", "", "", false},
    {kPhone, OSL_EM_REPLACESEL, FMTF_EDITFILTER, "(555) ", "12x3", "(555) 123-", false},
    {kPhone, FMTM_SETTEXT, FMTF_EDITFILTER | FMTF_EDITNOTIFY, "", "555", "(555)    -", false}, {kPhone, FMTM_SETTEXT, FMTF_EDITFILTER, "", "555", "555", false},
    {"XX*", FMTM_SETTEXT, FMTF_EDITFILTER | FMTF_EDITNOTIFY, "", "abcdef", "abcdef", false},
};

TEST(FmtMaskEdit, TextFromElsewhere) {
    for (const SetRow& r : kSetRows) {
        EditHost host(r.mask, r.flags);
        host.Set(r.before, 14, 14);
        host.Send(r.msg, 0, reinterpret_cast<LPARAM>(r.text));
        EXPECT_EQ(std::make_tuple(host.Text(), host.Modified(), host.setTextId), std::make_tuple(std::string(r.after), r.modified, WPARAM(r.msg == FMTM_SETTEXT && r.flags & FMTF_EDITNOTIFY ? 7 : 0)))
            << "message " << r.msg << " of \"" << r.text << "\" to \"" << r.mask << "\" with flags " << r.flags << " (text, modified, id)";
    }
    EditHost host(kPhone, 0);
    host.Set("(555)", 5, 5);
    char buf[8] = "x";
    EXPECT_EQ(host.Send(OSL_WM_GETTEXT, 0, reinterpret_cast<LPARAM>(buf)), 0) << "WM_GETTEXT into no room";
    EXPECT_STREQ(buf, "x") << "WM_GETTEXT into no room";
    EXPECT_EQ(gOsl.edit->GetWindowLongPtrA(nullptr, OSL_GWLP_WNDPROC), 0) << "no window, no procedure";
}

// Left to the control: a call inside the filter, no mask, and messages the
// filter doesn't take; the filter's own mark is left as found.
TEST(FmtMaskEdit, Declines) {
    const struct { const char* mask; UINT msg; UINT w; BYTE inside; } rows[] = {
        {kPhone, OSL_WM_CHAR, '5', 1}, {nullptr, OSL_WM_CHAR, '5', 0}, {kPhone, OSL_WM_KEYDOWN, 38, 0}, {kPhone, OSL_WM_KEYDOWN, 40, 0},
        {kPhone, OSL_WM_CUT, 0, 0}, {kPhone, OSL_WM_PASTE, 0, 0}, {kPhone, OSL_WM_GETTEXTLENGTH, 0, 0},
    };
    for (const auto& r : rows) {
        FMTCNTLBLOCK b;
        FMTInitCntlBlock(&b);
        b.lpszPicture = const_cast<char*>(r.mask), b.uMsg = r.msg, b.wParam = r.w;
        FMTThreadItem()->bInFilter = r.inside;
        EXPECT_EQ(std::make_pair(FMTValidateInput(&b), FMTThreadItem()->bInFilter), std::make_pair(LONG(0), DWORD(r.inside)))
            << "FMTValidateInput of message " << r.msg << ", " << r.w << (r.mask ? "" : " without a mask") << (r.inside ? " inside the filter" : "") << " (result, mark)";
        FMTThreadItem()->bInFilter = 0;
    }
    EXPECT_EQ(FMTValidateInput(nullptr), 0) << "no block";
}

// Working memory that can't be had: an insertion is refused, a deletion does nothing.
TEST(FmtMaskEdit, NoMemory) {
    EditHost host(kPhone, 0);
    host.Set("(555) 234-567", 2, 2);
    ASSERT_NE(FMTThreadItem(), nullptr) << "the thread's item, made before memory runs out";
    for (int failFrom : {1, 2, 3}) {
        ScriptedHeap heap(failFrom);
        host.Key('7');
        host.Key('\x7f');
    }
    EXPECT_EQ(std::make_pair(host.Text(), host.beeps), std::make_pair(std::string("(555) 234-567"), 3)) << "text and beeps";
}

// Random masks (with and without "^" and "*") and 40 random messages each,
// driven as the fuzz target drives them (tests/support/edit_host.h).
TEST(FmtMaskEdit, PropertyTextAlwaysFitsItsMask) {
    std::mt19937 random(20261124);
    const char parts[] = "X!aAnN9()-/ .:", text[] = "a1-b2 c3(4)";
    for (int round = 0; round < 150; ++round) {
        std::vector<unsigned char> bytes{BYTE(random() % 8 | (random() % 4 ? 0 : 0x40) | (random() % 3 ? 0 : 0x80))};
        for (int n = 1 + bytes[0] % 16; n--;) bytes.push_back(BYTE(parts[random() % (sizeof parts - 1)]));
        bytes.insert(bytes.end(), text, text + sizeof text); // with its zero
        for (int n = 80; n--;) bytes.push_back(BYTE(random()));
        ASSERT_EQ(EditDrive(bytes.data(), bytes.size()), "") << "round " << round;
    }
}

} // namespace
