// Input masks: a text put in and taken out against rows worked out from the
// mask rules; then the edit-control filter in a host's edit control, a real
// EDIT control on Windows (and under Wine), the OS layer's model elsewhere,
// both running the same rows; then a property run: random masks and random
// messages, after each of which the text still fits its mask.
#include "format/fmtint.h"
#include <oxlrt31/mask.h>
#include "tests/support/edit_host.h"
#include "tests/support/scripted_osl.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>
#include <string>
#include <vector>

namespace {

const char kPhone[] = "(999) 999-9999";

// 'T' FMTMaskText, 'U' FMTUnmaskInput.
struct TextRow { char call; const char* text; const char* mask; LONG result; const char* out; };
const TextRow kTextRows[] = {
    {'T', "5551234567", kPhone, 1, "(555) 123-4567"}, {'T', "(555) 1234567", kPhone, 1, "(555) 123-4567"}, {'T', "ab", "AA-99", 1, "AB-"},
    {'T', "123456789", "99-99", 1, "12-34"}, {'T', "abc", "X-*", 1, "a-bc"}, {'T', "a", "X-X-*", 1, "a-"}, {'T', "x", "X*X", 0, "?"},
    // what a placeholder keeps of a letter, a digit, a blank and a line feed (X and n as ! and N, uncased; a as A, uncased)
    {'T', "b7 \n", "!!!!", 1, "B7 "}, {'T', "b7 \n", "aaaa", 1, "b"}, {'T', "b7 \n", "NNNN", 1, "B7"}, {'T', "b7 \n", "9999", 1, "7"},
    {'U', "(555) 123-4567", kPhone, 1, "5551234567"}, {'U', "(   ) 123-4567", kPhone, 1, "   1234567"}, {'U', "(555 123-4567", kPhone, 0, ""},
    {'U', "(5a5) 123-4567", kPhone, 0, ""}, {'U', "ab-cdefg", "XX-*", 1, "abcdefg"}, {'U', "a-", "nN", 0, ""}, {'U', "!?", "Xa", 1, "!?"},
    {'U', "abc", "XX", 0, ""}, {'U', "x", nullptr, 0, ""},
};

TEST(FmtMask, PutInAndTakenOut) {
    for (const TextRow& r : kTextRows) {
        char out[64] = "?";
        LONG got = r.call == 'U' ? Unmask(r.text, r.mask, out) : FMTMaskText(r.text, out, r.mask);
        EXPECT_EQ(std::make_pair(got, std::string(out)), std::make_pair(r.result, std::string(r.out)))
            << (r.call == 'U' ? "FMTUnmaskInput" : "FMTMaskText") << "(\"" << r.text << "\", \"" << (r.mask ? r.mask : "(null)") << "\")";
    }
    char out[4];
    EXPECT_EQ(FMTMaskText(nullptr, out, "X") + FMTMaskText("x", nullptr, "X") + FMTMaskText("x", out, nullptr), 0) << "FMTMaskText with a null";
}

struct KeyRow { const char* mask; const char* before; WORD s, e; const char* keys; const char* after; WORD s2, e2; int beeps; };
const KeyRow kKeyRows[] = {
    {kPhone, "", 0, 0, "5551", "(555) 1", 7, 7, 0}, {"AA-99", "", 0, 0, "a1", "A", 1, 1, 1}, {"99/", "", 0, 0, "12", "12/", 3, 3, 0},
    {kPhone, "(555) 123-4567", 2, 2, "8", "(555) 123-4567", 2, 2, 1}, {kPhone, "(555) 123-4567", 2, 5, "8", "(581) 234-567", 3, 3, 0},
    {kPhone, "(555) 234-567", 2, 2, "7", "(575) 523-4567", 3, 3, 0}, {kPhone, "(555) 123-4567", 4, 6, "\x7f", "(555) 123-4567", 6, 6, 0},
    {kPhone, "(555) 123-4567", 4, 10, "\x0f", "(555) 456-7", 6, 6, 0}, {kPhone, "(555) 123-4567", 6, 6, "\x0e", "(555) 234-567", 6, 6, 0},
    {kPhone, "(555) 123-4567", 6, 6, "\b", "(551) 234-567", 3, 3, 0}, {kPhone, "(555) 123-4567", 2, 7, "\b", "(523) 456-7", 2, 2, 0},
    {kPhone, "(5", 2, 2, "\b", "", 0, 0, 0}, {kPhone, "(5", 0, 0, "\b", "(5", 0, 0, 0}, {kPhone, "(555) 123", 3, 3, "\5", "(555) 123", 3, 9, 0},
    {kPhone, "(555) 123-4567", 6, 6, "\1", "(555) 123-4567", 3, 3, 0}, {kPhone, "(555) 123-4567", 9, 9, "\3", "(555) 123-4567", 1, 1, 0},
    {kPhone, "(555) 123", 3, 7, "\6", "(555) 123", 0, 3, 0}, {"9-9/", "", 0, 0, "1-", "1-", 2, 2, 0}, {"((9", "((", 0, 1, "\x7f", "", 0, 0, 0},
    {"XX*", "abcde", 5, 5, "%!", "abcde%!", 7, 7, 0}, {"XX*", "abcde", 3, 3, "\x7f", "abce", 3, 3, 0}, {kPhone, "(5a5)", 0, 5, "\x7f", "", 0, 0, 0},
    // a text that doesn't fit: the deletion does nothing; no mask: the filter declines, and the control (real or model) deletes and types
    {kPhone, "(5a5)", 1, 3, "\x7f", "(5a5)", 1, 3, 0}, {nullptr, "abc", 1, 2, "\bz", "azc", 2, 2, 0},
};

TEST(FmtMaskEdit, KeysInAMaskedControl) {
    ASSERT_NE(FMTThreadItem(), nullptr) << "the thread's item, made before the blocks are counted";
    for (const KeyRow& r : kKeyRows) {
        EditHost host(r.mask, 0);
        host.Set(r.before, r.s, r.e);
        ScriptedHeap counted;
        for (const char* k = r.keys; *k; ++k) host.Key(*k);
        EXPECT_EQ(std::make_tuple(host.Text(), host.Sel(), host.beeps, counted.Outstanding()),
                  std::make_tuple(std::string(r.after), std::make_pair(r.s2, r.e2), r.beeps, 0))
            << "mask \"" << (r.mask ? r.mask : "(none)") << "\", text \"" << r.before << "\" selected " << r.s << " to " << r.e << ", keys "
            << ::testing::PrintToString(std::string(r.keys)) << " (text, selection, beeps, blocks left)";
    }
}

// Text from elsewhere: the flags decide whether it is put through the mask,
// and whether the control is marked modified; FMTM_SETTEXT fills the field
// and, filtered with notice, reaches the host with the control's id (7).
const DWORD kBoth = FMTF_EDITFILTER | FMTF_EDITNOTIFY;
struct SetRow { const char* mask; UINT msg; DWORD flags; const char* before; const char* text; const char* after; bool modified; };
const SetRow kSetRows[] = {
    {kPhone, OSL_WM_SETTEXT, 0, "", "5551234567", "5551234567", false}, {kPhone, OSL_WM_SETTEXT, kBoth, "", "555", "(555)", true},
    {kPhone, OSL_WM_SETTEXT, FMTF_EDITFILTER, "(5", "", "", false}, {kPhone, FMTM_SETTEXT, kBoth, "", "555", "(555)    -", false},
    {kPhone, FMTM_SETTEXT, kBoth, "(5", "", "", false}, {kPhone, FMTM_SETTEXT, FMTF_EDITFILTER, "", "555", "555", false},
    {"X-*", FMTM_SETTEXT, kBoth, "", "abcd", "a-bcd", false},
};

TEST(FmtMaskEdit, TextFromElsewhere) {
    for (const SetRow& r : kSetRows) {
        EditHost host(r.mask, r.flags);
        host.Set(r.before, 14, 14);
        host.Send(r.msg, 0, reinterpret_cast<LPARAM>(r.text));
        EXPECT_EQ(std::make_tuple(host.Text(), host.Send(OSL_EM_GETMODIFY, 0, 0) != 0, host.setTextId),
                  std::make_tuple(std::string(r.after), r.modified, WPARAM(r.msg == FMTM_SETTEXT && r.flags & FMTF_EDITNOTIFY ? 7 : 0)))
            << "message " << r.msg << " of \"" << r.text << "\" to \"" << r.mask << "\" with flags " << r.flags << " (text, modified, id)";
    }
    EditHost host(kPhone, 0);
    host.Set("(555)", 5, 5);
    char buf[8] = "x";
    EXPECT_EQ(host.Send(OSL_WM_GETTEXT, 0, reinterpret_cast<LPARAM>(buf)), 0) << "WM_GETTEXT into no room";
    EXPECT_STREQ(buf, "x") << "WM_GETTEXT into no room";
}

// Left to the control: a call made while the filter is at work (the control
// calling back into it), the filter's own mark left as found, and no block.
TEST(FmtMaskEdit, Declines) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszPicture = const_cast<char*>(kPhone), b.uMsg = OSL_WM_CHAR, b.wParam = '5';
    FMTThreadItem()->bInFilter = 1;
    EXPECT_EQ(FMTValidateInput(&b), 0) << "FMTValidateInput of '5' inside the filter";
    EXPECT_EQ(FMTThreadItem()->bInFilter, 1u) << "the filter's mark after a call inside it";
    FMTThreadItem()->bInFilter = 0;
    EXPECT_EQ(FMTValidateInput(nullptr), 0) << "FMTValidateInput(null)";
}

// Working memory that can't be had: an insertion is refused, a deletion does
// nothing.
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
