// Date pictures and value texts as token lists, and the known text forms.
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

TEST(FMTParseDateText, Pictures) {
    ExpectLists(4, {
        {"dddd, MMMM dd, yyyy", "dddd <,> _1 MMMM _1 dd <,> _1 yyyy"},
        {"d dd ddd dddd M MM MMM MMMM", "d _1 dd _1 ddd _1 dddd _1 M _1 MM _1 MMM _1 MMMM"}, {"h hh hhh hhhh", "h _1 hh _1 hhh _1 hhhh"},
        {"hh:mm:ss AMPM", "hh <:> mm <:> ss _1 AMPM"}, {"hhhh.mm.ss.mmmmmm", "hhhh <.> mm <.> ss <.> mmmmmm"}, {"yy-yyyy", "yy <-> yyyy"},
        {"yyyyyy", "yyyy yy"}, {"mmmm", "mm mm"}, {"ssss", "ss ss"}, {"AMPMAMPM", "AMPM AMPM"}, {",-./:\\", "<,> <-> <.> </> <:> <\\>"},
        {"M  \t\nd", "M _4 d"}, {"MMMM'ta' yyyy", "MMMM 'ta' _1 yyyy"}, {"''", "''"}, {"'a b,c'd", "'a b,c' d"},
        {"yyyy'\x94\x4E'M'\x8C\x8E'd'\x93\xFA'", "yyyy '\x94\x4E' M '\x8C\x8E' d '\x93\xFA'"}, {"dd\xFFyyyy", "dd"},
        {"dd\x02\x01\x02" "12", "dd #12"}, // a marker switches to the value mode
        {"'" + k97 + "'dd", "'" + k97 + "' dd"}, // a token of 99 bytes
        {"dd '" + k98 + "'", "dd _1"}, // of 100: the input ends before it
        {"dd" + std::string(100, ' ') + "M", "dd"},
    });
}

TEST(FMTParseDateText, InvalidPictures) {
    for (const std::string& p : std::initializer_list<std::string>{"ddddd", "MMMMM", "hhhhh", "y", "yyy", "m", "mmm", "mmmmm", "mmmmmmm", "s", "AM", "AMP",
                                 "Q", "1", "'abc", "D", "Y", "H", "S", "", "\xFF", "dd\x02\x06\x02", "yyyy\x94\x4EM",
                                 "dd\x01", "'" + k98 + "'dd", "dd MMMM yyyy x"})
        EXPECT_EQ(Parsed(p, 4), "null") << "FMTParseDateText(\"" << p << "\", 4)";
}

TEST(FMTParseDateText, ValueTexts) {
    for (int mode : {1, 2, 3})
        ExpectLists(mode, {
            {"12/31/99", "#12 </> #31 </> #99"}, {"Jan 5, 2000", "'Jan' _1 #5 <,> _1 #2000"}, {"10:30 PM", "#10 <:> #30 _1 'PM'"}, {"0099", "#99!"},
            {"0000", "#0!"}, {"099", "#99"}, {"00099", "#99"}, {"1099", "#1099"}, {"12\n31", "#12 _1 #31"}, {"19991231", "#1999 _1 #12 _1 #31"},
            {"December", "'Dece' _1 'mb' _1 'er'"}, {"1999123", "#1999123"}, {"199912310", "#199912310"}, {"Dec 31", "'Dec' _1 #31"},
            {"'a,b'x", "'a,b' 'x'"}, {"dd", "'dd'"}, {"99999999999", "#2147483647"},
            {"\x95\xBD\x90\xAC" "1\x94\x4E", "'\x95\xBD\x90\xAC' #1 '\x94\x4E'"}, {"\x95\x5C", "'\x95\x5C'"}, // a backslash as a trail byte
            {"\x81\x81\x40-", "'\x81\x81\x40' <->"}, // a lead taken as a trail, then a lead and its trail
            {"a\xFD\xFE\xA5", "'a\xFD\xFE\xA5'"}, {std::string(99, '1'), "#2147483647"}, {"1 " + std::string(100, '2'), "#1 _1"},
        });
}

TEST(FMTParseDateText, InvalidValueTexts) {
    for (const std::string& t : std::initializer_list<std::string>{"", "'abc", "@", "a\x80", "1\x01", "12;31", "\x02\x03\x02Jan 5, 2000", std::string(100, '1')})
        EXPECT_EQ(Parsed(t, 1), "null") << "FMTParseDateText(\"" << t << "\", 1)";
    for (int mode : {-1, 0, 5})
        EXPECT_EQ(Parsed("12/31/99", mode), "null") << "FMTParseDateText(\"12/31/99\", " << mode << ")";
    EXPECT_EQ(FMTParseDateText(nullptr, 4), nullptr);
}

struct FormRow { const char* text; int nType, monthFirst; const char* picture; };

TEST(FMTMatchDateForm, Forms) {
    const FormRow rows[] = {
        {"1/5/2000", 1, 1, "M/d/yyyy"}, {"1/5/2000", 1, 0, ""}, {"12.31-1999", 1, 1, "M/d/yyyy"}, {"1/5/99", 1, 1, ""}, {"123/5/2000", 1, 1, ""},
        {"1/5/20000", 1, 1, ""}, {"2000-1-5", 1, 0, "yyyy-MM-dd"}, {"2000-01-05", 1, 1, "yyyy-MM-dd"}, {"2000/1/5", 1, 1, ""}, {"2000-1/5", 1, 1, ""},
        {"2000-123-5", 1, 1, ""}, {"2000-1-123", 1, 1, ""}, {"Jan 5, 2000", 1, 0, "MMM d, yyyy"}, {"Jan 05, 2000", 1, 0, "MMM dd, yyyy"},
        {"January 5, 2000", 1, 0, "MMMM d, yyyy"}, {"Sept 5, 2000", 1, 0, "MMMM d, yyyy"}, {"January 05 2000", 1, 0, "MMMM dd, yyyy"},
        {"Ja 5, 2000", 1, 0, ""}, {"Jan 123, 2000", 1, 0, ""}, {"Jan 5, 99", 1, 0, ""}, {"Jan 5,, 02000", 1, 0, ""},
        {"5 Jan, 2000", 1, 0, "d MMM, yyyy"}, {"05 Jan 2000", 1, 0, "dd MMM, yyyy"}, {"5 January, 2000", 1, 0, "d MMMM, yyyy"},
        {"5 Sept, 2000", 1, 0, "d MMMM, yyyy"}, {"05 January, 2000", 1, 0, "dd MMMM, yyyy"}, {"005 Jan, 2000", 1, 0, ""}, {"5 Ja, 2000", 1, 0, ""},
        {"5-Jan-99", 1, 0, "d-MMM-yyyy"}, {"05.Jan.2000", 1, 0, "d-MMM-yyyy"}, {"5-January-2000", 1, 0, ""}, {"5-Jan-199", 1, 0, ""},
        {"123-Jan-99", 1, 0, ""}, {"  Jan 5, 2000 \t\n", 1, 0, "MMM d, yyyy"}, {"\nJan 5, 2000", 1, 0, "MMM d, yyyy"},
        {"Jan 5, 2000x", 1, 0, "MMM d, yyyy"}, // the form ends the scan
        {"Jan", 1, 0, ""}, {"\x02\x01\x02" "12", 1, 1, ""}, {"10:30", 2, 0, "hhhh.mm.ss.mmmmmm"}, {"10:30 PM", 2, 0, "hh.mm.ss.mmmmmm AMPM"},
        {"10 PM", 2, 0, "hh.mm.ss.mmmmmm AMPM"}, {"1.2,3:123456", 2, 0, "hhhh.mm.ss.mmmmmm"}, {"10:30:15:1234567", 2, 0, ""}, {"10:300", 2, 0, ""},
        {"123", 2, 0, ""}, {"10-30", 2, 0, ""}, {"10:30 PM x", 2, 0, ""}, {"PM", 2, 0, ""},
        {"2000-01-05-10.30.00", 3, 0, "yyyy-MM-dd-hhhh.mm.ss.mmmmmm"}, {"1/5/2000 10:30 PM", 3, 1, "M/d/yyyy hh.mm.ss.mmmmmm AMPM"},
        {"1/5/2000-22:30", 3, 1, "M/d/yyyy hhhh.mm.ss.mmmmmm"}, {"Jan 5, 2000 22:30", 3, 0, "MMM d, yyyy hhhh.mm.ss.mmmmmm"},
        {"5 Jan, 2000 10 AM", 3, 0, "d MMM, yyyy hh.mm.ss.mmmmmm AMPM"}, {"5-Jan-2000 10", 3, 0, "d-MMM-yyyy hhhh.mm.ss.mmmmmm"},
        {"1/5/2000", 3, 1, "M/d/yyyy hh.mm.ss.mmmmmm AMPM"}, {"2000-01-05", 3, 0, "yyyy-MM-dd-hh.mm.ss.mmmmmm AMPM"}, {"  1/5/2000", 3, 1, ""},
        {"1/5/2000 10:30 PM", 3, 0, ""}, {"1/5/2000 x", 3, 1, ""}, {"1/5/2000", 0, 1, ""}, {"1/5/2000", 4, 1, ""},
    };
    for (const FormRow& r : rows) {
        char picture[kFMTDateFormPicSize];
        std::memset(picture, 'Z', sizeof picture);
        FMTDATETOKEN* list = FMTMatchDateForm(r.text, r.nType, picture, r.monthFirst);
        EXPECT_EQ(std::make_pair(std::string(picture), Show(list)), std::make_pair(std::string(r.picture), *r.picture ? Parsed(r.picture, 4) : "null"))
            << "FMTMatchDateForm(\"" << r.text << "\", " << r.nType << ", picture, " << r.monthFirst << ") (picture, list)";
        FMTFreeDateTokens(list);
    }
}

// Many elements and long texts, and every allocation failing in turn: no
// list or a whole one, and nothing left behind.
TEST(FMTParseDateText, AllocationFailures) {
    std::string many, manyList, words, wordsList, k99(99, 'w');
    for (int i = 0; i < 40; ++i) many += "d ", manyList += "d _1 ";
    for (int i = 0; i < 6; ++i) words += k99 + " ", wordsList += "'" + k99 + "' _1 ";
    manyList.pop_back(), wordsList.pop_back();
    const struct { std::string text; int mode; std::string list; } rows[] = {
        {"'ab' dd", 4, "'ab' _1 dd"}, {many, 4, manyList}, {words, 1, wordsList}};
    for (int failFrom = 0; failFrom <= 6; ++failFrom) {
        ScriptedHeap heap(failFrom);
        for (const auto& r : rows) {
            std::string list = Parsed(r.text, r.mode);
            EXPECT_TRUE(list == r.list || (failFrom && list == "null")) << r.text << " with allocation " << failFrom << " failing: " << list;
        }
        char picture[kFMTDateFormPicSize];
        FMTFreeDateTokens(FMTMatchDateForm("Jan 5, 2000", 1, picture, 0));
        FMTFreeDateTokens(FMTParseDateText("19991231", 1)); // read twice, the first list freed
        EXPECT_EQ(heap.Outstanding(), 0) << "allocation " << failFrom << " failing";
    }
}

} // namespace
