// Reading dates: FMTValidateDateTime, FMTUnformatDateTimeStr,
// FMTIsValidDateString, FMTIsDatePicValid and Japanese dates, with
// the short picture "M/d/yy", the long "dddd, MMMM dd, yyyy", the default
// time "hh:mm:ss AMPM", country 1 and the year 2026 on the clock.
// A row with only a text and a type is a refusal: result 0, value and flags untouched.
#include "test_fmt_date_env.h"
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

DATDEF T(LONG h, LONG mi, LONG s = 0, LONG us = 0) { return {1, 1, 1900, h, mi, s, us}; } // a time alone
const DATDEF kUnread = D(77, 77, 77, 77, 77, 77, 77), kDec31 = D(12, 31, 1999);             // kUnread: before a read
constexpr DWORD kDate = FMTF_HASDATE, kTime = FMTF_HASTIME, kBoth = kDate | kTime, kNoZero = FMTF_NOHOURZERO;
constexpr DWORD kMarks = kBoth | kNoZero, kKept = 0x80000000u; // a flag bit the reads leave alone

// marks: the flags of kMarks a read leaves set; another bit named there is one it turns over.
struct ReadRow { std::string input; LONG nType; Change setup = nullptr; int result = 0; DATDEF d = kUnread; DWORD marks = 0; };

void ExpectReads(const char* what, int(OXLAPI* call)(FMTCNTLBLOCK*), std::initializer_list<ReadRow> rows) {
    for (const ReadRow& r : rows) {
        DateBlock b(r.nType, kUnread);
        b->dwFlags |= kKept | kMarks, b->lpszInput = const_cast<char*>(r.input.c_str());
        if (r.setup) r.setup(b.b);
        DWORD before = b->dwFlags;
        int got = call(&b.b);
        EXPECT_EQ(std::make_tuple(got, ShowDate(b->datDef), b->dwFlags, b->nType),
                  std::make_tuple(r.result, ShowDate(r.d), r.result == 1 ? (before & ~kMarks) ^ r.marks : before, r.nType))
            << what << "(\"" << Hex(r.input) << "\" = " << r.input << ") nType " << r.nType << " (result, datDef, flags, nType)";
    }
}

Change Flags(DWORD flags) { return [=](FMTCNTLBLOCK& b) { b.dwFlags = (b.dwFlags & ~DWORD(FMTF_DEFAULTTIME | FMTF_STRICTTIME)) | flags; }; }
Change ShortPic(DWORD flags, const char* pic) { return [=](FMTCNTLBLOCK& b) { Flags(flags)(b), b.lpszShortPic = const_cast<char*>(pic); }; }
Change Picture(const char* picture) { return [=](FMTCNTLBLOCK& b) { b.lpszPicture = const_cast<char*>(picture); }; }

TEST(FMTValidateDateTime, Texts) {
    ScriptedClock clock(2026);
    ExpectReads("FMTValidateDateTime", FMTValidateDateTime, {
        {"12/31/99", 1, {}, 1, kDec31, kDate}, {"1/1/49", 1, {}, 1, D(1, 1, 2049), kDate}, {"1/1/50", 1, {}, 1, D(1, 1, 1950), kDate},
        {"12/31/0099", 1, {}, 1, D(12, 31, 99), kDate}, {"Dec 31, 1999", 1, {}, 1, kDec31, kDate}, {"31-Dec-1999", 1, {}, 1, kDec31, kDate},
        {"1999-12-31", 1, {}, 1, kDec31, kDate}, {"friday, DEC 31, 1999", 1, {}, 1, kDec31, kDate}, {"December 31 1999", 1, {}, 1, kDec31, kDate},
        {"31 December, 1999", 1, {}, 1, kDec31, kDate}, {"12.31-1999", 1, {}, 1, kDec31, kDate}, {"2/29/2000", 1, {}, 1, D(2, 29, 2000), kDate},
        {"Saturday, December 31, 1999", 1}, {"2/29/1900", 1}, {"4/31/99", 1}, {"1/1/10000", 1}, {"1/2", 1}, {"12/31/99 x", 1}, {"", 1}, {"12/31/99", 0},
        {"12/31/99", 1, [](FMTCNTLBLOCK& b) { b.bUseProfile = 1, b.dwFlags &= ~DWORD(FMTF_DEFAULTTIME); }},
        {"1/5/2000", 1, [](FMTCNTLBLOCK& b) { b.lpszShortPic = b.lpszLongPic = nullptr; }, 1, D(1, 5, 2000), kDate},
        {"1/5/2000", 1, [](FMTCNTLBLOCK& b) { b.lpszShortPic = b.lpszLongPic = nullptr, b.iCountry = 2; }},
        // dates and times
        {"12/31/99", 3, {}, 1, kDec31, kDate}, {"12/31/99 12:30 AM", 3, {}, 1, D(12, 31, 1999, 0, 30), kBoth},
        {"12/31/99 24:00", 3, {}, 1, D(12, 31, 1999, 24, 0), kBoth}, {"1999-12-31-22.30.00.123456", 3, {}, 1, D(12, 31, 1999, 22, 30, 0, 123456), kBoth},
        {"12/31/99 22:30", 3, Flags(0), 1, D(12, 31, 1999, 22, 30), kBoth}, {"12/31/99 10:30 PM", 3, Flags(0)}, {"12/31/99 13:30 PM", 3},
        {"12/31/99 25:00", 3}, {"1999-12-31-22.30.00.1234567", 3},
        // times alone
        {"10 pm", 2, {}, 1, T(22, 0), kTime}, {"22:30:15.000007", 2, {}, 1, T(22, 30, 15, 7), kTime}, {"10:30:15:1234567", 2}, {"PM", 2},
        {"22:30", 2, Flags(FMTF_DEFAULTTIME | FMTF_STRICTTIME)}, {"10:30 PM", 2, Flags(FMTF_DEFAULTTIME | FMTF_STRICTTIME), 1, T(22, 30), kTime},
        {"7:05", 2, ShortPic(0, "h:mm"), 1, T(7, 5), kTime | kNoZero}, {"7:05", 2, ShortPic(0, "hhhh:mm"), 1, T(7, 5), kTime},
        {"7 05", 2, ShortPic(FMTF_STRICTTIME, "hhhh:mm")}, {"12/1 10:30", 2, ShortPic(0, "M/d hh:mm"), 1, D(12, 1, 1900, 10, 30), kBoth},
    });
}

// The profile's short and long pictures stand behind "S", "L" and "", the long one in force.
TEST(FMTUnformatDateTimeStr, Pictures) {
    DateProfile profile({{"intl", "sShortDate", "dd.MM.yy"}, {"intl", "sLongDate", "d MMMM yyyy"}, {"OXLEEKIT", "sDateType", "LongGregorian"}});
    ScriptedClock clock(2026);
    auto micro = [](const char* pic) { return [=](FMTCNTLBLOCK& b) { Picture(pic)(b), b.dwFlags |= FMTF_MICROSECONDS; }; };
    ExpectReads("FMTUnformatDateTimeStr", FMTUnformatDateTimeStr, {
        {"Dec 31, 1999", 1, Picture("MMMM dd, yyyy"), 1, kDec31, kDate}, {"December 31, 1999", 1, Picture("MMM dd, yyyy"), 1, kDec31, kDate},
        {"19991231", 2, Picture("yyyy-MM-dd"), 1, kDec31, kDate}, {"12/31/0099", 1, Picture("M/d/yy")},
        {"12/31/1999 22:30", 2, Picture("M/d/yyyy hhhh:mm"), 1, D(12, 31, 1999, 22, 30), kBoth}, {"22-30", 1, Picture("hhhh:mm"), 1, T(22, 30), kTime},
        {"22 30", 1, Picture("hhhh'h'mm")}, {"22 H 30", 1, Picture("hhhh' h 'mm"), 1, T(22, 30), kTime}, {"Mon", 1, Picture("ddd"), 1, T(0, 0), 0},
        {"Sun", 1, Picture("ddd")}, {"31 Decemberta 1999", 1, Picture("dd MMMM'ta' yyyy"), 1, kDec31, kDate},
        {"31 December 1999", 1, Picture("dd MMMM'ta' yyyy")}, {"31 Decta 1999", 1, Picture("dd MMM'ta' yyyy"), 1, kDec31, kDate},
        {"12/31/99", 1, Picture(nullptr)}, {"31.12.99", 1, Picture("S"), 1, kDec31, kDate}, {"31 December 1999", 1, Picture(""), 1, kDec31, kDate},
        {"31.12.99", 1, Picture("")},
        // T clears FMTF_MICROSECONDS on a successful read
        {"10:30:15 PM", 1, micro("T"), 1, T(22, 30, 15), kTime | FMTF_MICROSECONDS},
    });
}

TEST(FMTIsValidDateString, Results) {
    ScriptedClock clock(2026);
    const struct { const char* input; const char* picture; LONG nType, country; int result; } rows[] = {
        {"12/31/1999", "M/d/yyyy", 1, 1, 1}, {"Dec 31, 1999", "M/d/yyyy", 1, 1, 4}, {"31.12.99", "M/d/yyyy", 1, 1, 2}, {"", "M/d/yyyy", 1, 1, 0},
        {"12/31/1999", nullptr, 1, 1, 0}, {"12/31/1999", "M/d/yyyy", 0, 1, 0}, {"12/31/1999", "M/d/yyyy", 1, 2, 2}, // outside country 1
    };
    for (const auto& r : rows) {
        DateBlock b(r.nType);
        b->lpszInput = const_cast<char*>(r.input), b->lpszPicture = const_cast<char*>(r.picture), b->iCountry = r.country;
        EXPECT_EQ(FMTIsValidDateString(&b.b), r.result)
            << "FMTIsValidDateString(\"" << r.input << "\", \"" << (r.picture ? r.picture : "null") << "\") nType " << r.nType << " country " << r.country;
    }
}

// What a picture holds: a valid picture, a date, a time.
TEST(FMTIsDatePicValid, Pictures) {
    const struct { const char* picture; int valid, date, time; } rows[] = {
        {"", 1, 0, 0}, {"S", 1, 0, 0}, {"L", 1, 0, 0}, {"E", 1, 0, 0}, {"T", 1, 0, 0}, {"ED", 1, 0, 0}, {"DE", 0, 0, 0}, {"EE", 0, 0, 0}, {"hh:mm", 1, 0, 1},
        {"yyy", 0, 0, 0}, {"'d' - ", 1, 0, 0}, {"d AMPM", 1, 1, 1}, {"MMMM h", 1, 1, 1}, {nullptr, 0, 0, 0},
    };
    ScriptedHeap heap;
    for (const auto& r : rows) {
        std::string what = std::string("of \"") + (r.picture ? r.picture : "null") + "\"";
        EXPECT_EQ(FMTIsDatePicValid(r.picture), r.valid) << "FMTIsDatePicValid " << what;
        EXPECT_EQ(std::make_pair(FMTDatePicHasDate(r.picture), FMTDatePicHasTime(r.picture)), std::make_pair(r.date, r.time))
            << "FMTDatePicHasDate and FMTDatePicHasTime " << what;
    }
    EXPECT_EQ(heap.Outstanding(), 0) << "blocks left by FMTIsDatePicValid, FMTDatePicHasDate and FMTDatePicHasTime";
}

// The era boundary check: 0 none, 1 an era year past its era's end refused, 2 none.
TEST(FMTValidateDateTime, JapaneseDates) {
    IntlUnder japanese(kJapanese);
    ScriptedClock clock(2026);
    auto check = [](DWORD n) { return [=](FMTCNTLBLOCK& b) { b.bEmpBoundryCheck = n; }; };
    const std::string heisei = HEISEI "1" NEN "1" GATSU "8" NICHI, withTime = heisei + " 10:30 PM", showa65 = SHOWA "65" NEN "1" GATSU "1" NICHI;
    ExpectReads("FMTValidateDateTime", FMTValidateDateTime, {
        {"  " + heisei, 1, {}, 1, D(1, 8, 1989), kDate | kNoZero}, // the Japanese reader leaves FMTF_NOHOURZERO
        {heisei + "  ", 3, {}, 1, D(1, 8, 1989), kDate | kNoZero}, {withTime, 3, {}, 1, D(1, 8, 1989, 22, 30), kBoth | kNoZero},
        {withTime, 1, {}, 0, D(1, 8, 1989)}, {heisei + " junk", 3, {}, 0, D(1, 8, 1989)}, {HEISEI "1" NEN "1" GATSU "7" NICHI, 1},
        {HEISEI "0" NEN "1" GATSU "8" NICHI, 1}, {SHOWA "64" NEN "1" GATSU "7" NICHI, 1, check(1), 1, D(1, 7, 1989), kDate | kNoZero},
        {showa65, 1, {}, 1, D(1, 1, 1990), kDate | kNoZero}, {showa65, 1, check(1)}, {showa65, 1, check(2), 1, D(1, 1, 1990), kDate | kNoZero},
        {HEISEI "40" NEN "1" GATSU "1" NICHI, 1, check(1), 1, D(1, 1, 2028), kDate | kNoZero},
        {"99" NEN "12" GATSU "31" NICHI, 1, {}, 1, kDec31, kDate | kNoZero}, {"099" NEN "1" GATSU "5" NICHI, 1, {}, 1, D(1, 5, 99), kDate | kNoZero},
        {"H1" NEN "1" GATSU "8" NICHI, 1}, {"2000" NEN "1" GATSU "5" "\x93", 1}, {"\x88\x9F\x88\x9F" "1" NEN "1" GATSU "8" NICHI, 1},
    });
    ExpectReads("FMTUnformatDateTimeStr", FMTUnformatDateTimeStr, {
        {heisei, 1, Picture("ED"), 1, D(1, 8, 1989), kDate | kNoZero}, {withTime, 1, Picture("ED"), 0, D(1, 8, 1989)},
        {withTime, 1, Picture("E"), 1, D(1, 8, 1989, 22, 30), kBoth | kNoZero}, {"2000" NEN "1" GATSU "5" NICHI, 1, Picture("E")},
    });
}

} // namespace
