// Date pictures and value texts as token lists (the known text forms are
// read through FMTValidateDateTime).
// A list is written as its elements with blanks between: a date or time
// element as its picture letters, #n a number (#n! with the full-year mark),
// 'text' a string, <c> a separator, _n a run of n blanks; null for no list.
#include "format/datepic.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string Show(FMTDATETOKEN* head) {
    static const char* const kLetters[] = {"d", "dd", "ddd", "dddd", "M", "MM", "MMM", "MMMM", "yy", "yyyy",
                                           "hh", "hhhh", "mm", "ss", "mmmmmm", "AMPM", "h", "hhh"};
    if (!head) return "null";
    std::string out;
    for (FMTDATETOKEN* e = head; e; e = e->pNext) {
        if (e->pNext && e->pNext->pPrev != e) return "broken links";
        if (!out.empty()) out += ' ';
        bool full = uint32_t(e->lValue) >> 24 == 0xFF; // a number with the full-year mark
        switch (e->nType) {
        case FMTDT_NUMBER: out += '#' + std::to_string(full ? e->lValue & 0xFFFFFF : e->lValue) + (full ? "!" : ""); break;
        case FMTDT_STRING: out += "'" + std::string(e->pszText) + "'"; break;
        case FMTDT_CHAR: out += "<" + std::string(1, char(e->lValue)) + ">"; break;
        case FMTDT_BLANK: out += "_" + std::to_string(e->lValue); break;
        default: out += e->nType >= 4 && e->nType <= 21 ? kLetters[e->nType - 4] : "?" + std::to_string(e->nType);
        }
    }
    return head->pPrev ? "not the head: " + out : out;
}

std::string Parsed(const std::string& text, int mode) {
    FMTDATETOKEN* head = FMTParseDateText(text.c_str(), mode);
    std::string out = Show(head);
    FMTFreeDateTokens(head);
    return out;
}

struct Row { std::string text, list; };

void ExpectLists(int mode, std::initializer_list<Row> rows) {
    for (const Row& r : rows)
        EXPECT_EQ(Parsed(r.text, mode), r.list) << "FMTParseDateText(\"" << r.text << "\", " << mode << ")";
}

const std::string k98(98, 'x'), k97(97, 'x');

// null: no list.
TEST(FMTParseDateText, Pictures) {
    ExpectLists(4, {
        {"dddd, MMMM dd, yyyy", "dddd <,> _1 MMMM _1 dd <,> _1 yyyy"}, {"yyyyyy", "yyyy yy"}, {"mmmm", "mm mm"}, {"M  \t\nd", "M _4 d"}, {"''", "''"},
        {"yyyy'\x94\x4E'M'\x8C\x8E'd'\x93\xFA'", "yyyy '\x94\x4E' M '\x8C\x8E' d '\x93\xFA'"}, {"dd\xFFyyyy", "dd"},
        {"dd\x02\x01\x02" "12", "dd #12"}, // a marker switches to the value mode
        {"'" + k97 + "'dd", "'" + k97 + "' dd"}, // a token of 99 bytes
        {"dd '" + k98 + "'", "dd _1"}, // of 100: the input ends before it
        {"ddddd", "null"}, {"mmmmm", "null"}, {"yyy", "null"}, {"AMP", "null"}, {"Q", "null"}, {"'abc", "null"}, {"", "null"}, {"dd\x02\x06\x02", "null"},
        {"yyyy\x94\x4EM", "null"}, {"'" + k98 + "'dd", "null"},
    });
}

TEST(FMTParseDateText, ValueTexts) {
    ExpectLists(1, {
        {"12/31/99", "#12 </> #31 </> #99"}, {"Jan 5, 2000", "'Jan' _1 #5 <,> _1 #2000"}, {"0099", "#99!"}, {"00099", "#99"},
        {"19991231", "#1999 _1 #12 _1 #31"}, {"'a,b'x", "'a,b' 'x'"}, {"99999999999", "#2147483647"},
        {"\x95\x5C", "'\x95\x5C'"}, // a backslash as a trail byte
        {"\x81\x81\x40-", "'\x81\x81\x40' <->"}, // a lead taken as a trail, then a lead and its trail
        {"a\xFD\xFE\xA5", "'a\xFD\xFE\xA5'"}, {"", "null"}, {"@", "null"}, {"a\x80", "null"}, {"12;31", "null"}, {"\x02\x03\x02Jan 5, 2000", "null"},
        {std::string(100, '1'), "null"},
    });
    for (int mode : {0, 5})
        EXPECT_EQ(Parsed("12/31/99", mode), "null") << "FMTParseDateText(\"12/31/99\", " << mode << ")";
}

std::string Times(const std::string& s, int n) { return n ? s + Times(s, n - 1) : ""; }

// Many elements and long texts, and every allocation failing in turn: no
// list or a whole one, and nothing left behind.
TEST(FMTParseDateText, AllocationFailures) {
    const std::string w(99, 'w');
    const struct { std::string text; int mode; std::string list; } rows[] = {
        {Times("d ", 40), 4, Times("d _1 ", 39) + "d _1"}, {Times(w + " ", 6), 1, Times("'" + w + "' _1 ", 5) + "'" + w + "' _1"}};
    for (int failFrom = 0; failFrom <= 6; ++failFrom) {
        ScriptedHeap heap(failFrom);
        for (const auto& r : rows) {
            std::string list = Parsed(r.text, r.mode);
            EXPECT_TRUE(list == r.list || (failFrom && list == "null")) << r.text << " with allocation " << failFrom << " failing: " << list;
        }
        FMTFreeDateTokens(FMTParseDateText("19991231", 1)); // read twice, the first list freed
        EXPECT_EQ(heap.Outstanding(), 0) << "allocation " << failFrom << " failing";
    }
}

} // namespace
