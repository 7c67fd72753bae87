// Properties of writing and reading dates together, on random valid values:
// what FMTFormatDateTime writes under a picture that names every field,
// FMTUnformatDateTimeStr and FMTValidateDateTime read back exactly, and
// FMTGetMaxFormattedDTLen is never below its length. The one exception is
// the Japanese date styles, where the length measures the time picture only
// (or gives nMinimum for a date alone): those rows check that it does so.
#include "format/fmtint.h"
#include "test_fmt_date_env.h"
#include "intl_env.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>
#include <vector>

namespace {

const char* const kFullPictures[] = {
    "M/d/yyyy hhhh:mm:ss.mmmmmm", "dd.MM.yyyy hhh.mm.ss.mmmmmm", "MMMM d, yyyy hh:mm:ss.mmmmmm AMPM", "dddd, MMM dd, yyyy h:mm:ss:mmmmmm AMPM",
    "yyyy-MM-dd-hhhh.mm.ss.mmmmmm", "d MMMM'ta' yyyy 'klo' hhhh.mm.ss,mmmmmm", "ddd d MMM yyyy  hh mm ss mmmmmm AMPM", "mmmmmm ss mm hhhh / yyyy MM d",
};

// A day drawn by its day number (the calendar test walks every one of them).
DATDEF RandomDate(std::mt19937& rng, LONG firstYear, LONG lastYear) {
    auto pick = [&](LONG lo, LONG hi) { return LONG(std::uniform_int_distribution<long>(lo, hi)(rng)); };
    LONG day[3];
    FMTJulianToDate(pick(FMTDateToJulian(1, 1, firstYear), FMTDateToJulian(12, 31, lastYear)), day);
    return {day[0], day[1], day[2], pick(0, 23), pick(0, 59), pick(0, 59), pick(0, 999999)};
}

// Two threads share the rows, writing and reading at once: each gets its own results.
TEST(FMTDateRoundTrip, EveryFieldNamed) {
    ScriptedClock clock(2026);
    std::vector<std::string> failures[2];
    auto half = [&](int n) {
        std::mt19937 rng(20261124 + n);
        for (int i = n; i < 3000; i += 2) {
            const char* picture = kFullPictures[i % std::size(kFullPictures)];
            DATDEF d = RandomDate(rng, 1, 9999);
            DateBlock w(FMT_DATETIME, d);
            w->dwFlags = 0, w->iDateType = DWORD(i >> 1 & 1), w->bTimeLeadZero = DWORD(i & 4), w->lpszShortPic = w->lpszLongPic = const_cast<char*>(picture);
            std::string what = std::string(picture) + " on " + ShowDate(d);
            if (FMTFormatDateTime(&w.b, 0) != 1) { failures[n].push_back("FMTFormatDateTime under " + what); continue; }
            std::string text = w.out;
            what += ": \"" + text + "\"";
            if (FMTGetMaxFormattedDTLen(&w.b, 0) < int(text.size())) failures[n].push_back("FMTGetMaxFormattedDTLen under " + what);
            for (auto call : {FMTUnformatDateTimeStr, FMTValidateDateTime}) {
                DateBlock r(FMT_DATETIME, {0, 0, 0, 0, 0, 0, 0});
                r->dwFlags = 0, r->lpszInput = text.data(), r->lpszPicture = r->lpszShortPic = const_cast<char*>(picture);
                if (call(&r.b) != 1 || ShowDate(r->datDef) != ShowDate(d))
                    failures[n].push_back(std::string(call == FMTValidateDateTime ? "FMTValidateDateTime" : "FMTUnformatDateTimeStr") +
                                          " read back " + ShowDate(r->datDef) + ": " + what);
            }
        }
    };
    std::thread a(half, 0), b(half, 1);
    a.join(), b.join();
    for (const auto& list : failures)
        for (size_t i = 0; i < list.size() && i < 5; ++i) ADD_FAILURE() << list[i];
}

// Under the Japanese styles the date is written but not measured; with the
// default time it reads back through the Japanese reader. Era years run to
// 99 here (the style shows two digits of an era year).
TEST(FMTDateRoundTrip, JapaneseStylesMeasureTheTimeOnly) {
    IntlUnder japanese(kJapanese);
    std::mt19937 rng(7);
    for (int i = 0; i < 1000; ++i) {
        DWORD style = 2 + (i & 1);
        DATDEF d = RandomDate(rng, style == 2 ? 1 : 1869, style == 2 ? 9999 : 2087);
        DateBlock date(FMT_DATE, d), both(FMT_DATETIME, d);
        date->iDateType = both->iDateType = style, both->dwFlags = FMTF_DEFAULTTIME | FMTF_MICROSECONDS;
        ASSERT_EQ(FMTFormatDateTime(&date.b, 0) + FMTFormatDateTime(&both.b, 0), 2) << "style " << style << " on " << ShowDate(d);
        EXPECT_EQ(std::make_pair(FMTGetMaxFormattedDTLen(&date.b, 3), FMTGetMaxFormattedDTLen(&both.b, 3)),
                  std::make_pair(3, 2 + 1 + 2 + 1 + 2 + 1 + 6 + 1 + 2)) << "FMTGetMaxFormattedDTLen of a Japanese date alone (nMinimum) and a date-time (its time)";
        DateBlock r(FMT_DATETIME, {0, 0, 0, 0, 0, 0, 0});
        r->dwFlags = FMTF_DEFAULTTIME | FMTF_MICROSECONDS, r->lpszInput = both.out;
        int got = FMTValidateDateTime(&r.b);
        EXPECT_EQ(std::make_pair(got, ShowDate(r->datDef)), std::make_pair(1, ShowDate(d))) << "FMTValidateDateTime(" << Hex(both.out) << ")";
    }
}

} // namespace
