// Time per call of date and number picture formatting and reading, ours next
// to ICU (en_US) and, for dates, the C library, on the same values:
//
//   build/bench/bin/oxl_bench_fmt --benchmark_min_time=0.1
//
// Dates: Friday, 15 March 2024 under "dddd, MMMM dd, yyyy"
// (FMTFormatDateTime; udat_format with "EEEE, MMMM dd, yyyy"; strftime with
// "%A, %B %d, %Y") and "Friday, March 15, 2024" read back
// (FMTUnformatDateTimeStr under the picture, FMTValidateDateTime; udat_parse;
// strptime). Numbers: 12345.678 under "#,##0.00" (FMTFormatNumber;
// unum_formatDouble, unum_formatDecimal), as currency under the profile in
// force (the locale's currency style for ICU), and "1,234,567.89" read back
// (FMTValidateNumber, FMTUnformatNumberStr; unum_parseDecimal). Everything is
// set up outside the timed loops. Five runs of each; quote the medians.
#include "fmt_operands.h"

#include <benchmark/benchmark.h>
#include <unicode/udat.h>
#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <clocale>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

using namespace oxlbench;

void stopOnIcuError(benchmark::State& state, UErrorCode status) {
    if (U_FAILURE(status)) state.SkipWithError(u_errorName(status));
}

// ---- dates -----------------------------------------------------------------

void Oxl_Date_Format(benchmark::State& state) {
    FMTCNTLBLOCK b;
    char out[64];
    dateBlock(b, out);
    for (auto _ : state) {
        benchmark::DoNotOptimize(FMTFormatDateTime(&b, 0));
        benchmark::ClobberMemory();
    }
}

void oxlDateRead(benchmark::State& state, int (OXLAPI* read)(FMTCNTLBLOCK*)) {
    FMTCNTLBLOCK b;
    char out[64], input[64];
    dateBlock(b, out);
    std::strcpy(input, kDateText);
    b.lpszInput = input;
    for (auto _ : state) {
        benchmark::DoNotOptimize(read(&b));
        benchmark::ClobberMemory();
    }
}
void Oxl_Date_Unformat(benchmark::State& s) { oxlDateRead(s, FMTUnformatDateTimeStr); }
void Oxl_Date_Validate(benchmark::State& s) { oxlDateRead(s, FMTValidateDateTime); }

UDateFormat* icuDateFormat(UErrorCode* status) {
    UChar pattern[32];
    u_uastrcpy(pattern, kDateIcuPattern);
    return udat_open(UDAT_PATTERN, UDAT_PATTERN, "en_US", u"UTC", -1, pattern, -1, status);
}

void Icu_Date_Format(benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    UDateFormat* f = icuDateFormat(&status);
    UChar out[64];
    for (auto _ : state) {
        benchmark::DoNotOptimize(udat_format(f, kDateIcuMillis, out, 64, nullptr, &status));
        benchmark::ClobberMemory();
    }
    stopOnIcuError(state, status);
    udat_close(f);
}

void Icu_Date_Parse(benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    UDateFormat* f = icuDateFormat(&status);
    UChar text[64];
    u_uastrcpy(text, kDateText);
    for (auto _ : state) {
        benchmark::DoNotOptimize(udat_parse(f, text, -1, nullptr, &status));
        benchmark::ClobberMemory();
    }
    stopOnIcuError(state, status);
    udat_close(f);
}

void Libc_Date_Strftime(benchmark::State& state) {
    std::setlocale(LC_TIME, "C");
    struct tm t = {};
    t.tm_year = 124, t.tm_mon = 2, t.tm_mday = 15, t.tm_wday = 5, t.tm_yday = 74;
    char out[64];
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::strftime(out, sizeof out, kDateCFormat, &t));
        benchmark::ClobberMemory();
    }
}

void Libc_Date_Strptime(benchmark::State& state) {
    std::setlocale(LC_TIME, "C");
    char input[64];
    std::strcpy(input, kDateText);
    for (auto _ : state) {
        struct tm t = {};
        benchmark::DoNotOptimize(strptime(input, kDateCFormat, &t));
        benchmark::DoNotOptimize(t);
    }
}

// ---- number pictures ---------------------------------------------------------

void oxlFormat(benchmark::State& state, LONG type, bool profile) {
    FMTCNTLBLOCK b;
    char out[128];
    numberBlock(b, out);
    b.nType = type;
    b.bUseProfile = profile;
    b.lpszPicture = const_cast<char*>(kNumPicture);
    for (auto _ : state) {
        benchmark::DoNotOptimize(FMTFormatNumber(&b));
        benchmark::ClobberMemory();
    }
}
void Oxl_Num_Picture(benchmark::State& s) { oxlFormat(s, FMT_PICTURE, false); }
void Oxl_Num_Currency(benchmark::State& s) { oxlFormat(s, FMT_CURRENCY, true); }

void oxlRead(benchmark::State& state, LONG type, LONG(OXLAPI* read)(FMTCNTLBLOCK*)) {
    FMTCNTLBLOCK b;
    char out[128], input[64];
    numberBlock(b, out);
    b.nType = type;
    b.lpszPicture = const_cast<char*>(kNumPicture);
    std::strcpy(input, kNumTyped);
    b.lpszInput = input;
    for (auto _ : state) {
        benchmark::DoNotOptimize(read(&b));
        benchmark::ClobberMemory();
    }
}
void Oxl_Num_Validate(benchmark::State& s) { oxlRead(s, FMT_NUMBER, FMTValidateNumber); }
void Oxl_Num_Unformat(benchmark::State& s) { oxlRead(s, FMT_PICTURE, FMTUnformatNumberStr); }

UNumberFormat* icuNumberFormat(UNumberFormatStyle style, UErrorCode* status) {
    UChar pattern[32];
    u_uastrcpy(pattern, kNumPicture);
    bool withPattern = style == UNUM_PATTERN_DECIMAL;
    return unum_open(style, withPattern ? pattern : nullptr, withPattern ? -1 : 0, "en_US", nullptr, status);
}

void icuFormat(benchmark::State& state, UNumberFormatStyle style, bool digits) {
    UErrorCode status = U_ZERO_ERROR;
    UNumberFormat* f = icuNumberFormat(style, &status);
    UChar out[64];
    for (auto _ : state) {
        if (digits)
            benchmark::DoNotOptimize(unum_formatDecimal(f, kNumValue, -1, out, 64, nullptr, &status));
        else
            benchmark::DoNotOptimize(unum_formatDouble(f, kNumDouble, out, 64, nullptr, &status));
        benchmark::ClobberMemory();
    }
    stopOnIcuError(state, status);
    unum_close(f);
}
void Icu_Num_Picture_Double(benchmark::State& s) { icuFormat(s, UNUM_PATTERN_DECIMAL, false); }
void Icu_Num_Picture_Decimal(benchmark::State& s) { icuFormat(s, UNUM_PATTERN_DECIMAL, true); }
void Icu_Num_Currency_Double(benchmark::State& s) { icuFormat(s, UNUM_CURRENCY, false); }
void Icu_Num_Currency_Decimal(benchmark::State& s) { icuFormat(s, UNUM_CURRENCY, true); }

void icuParse(benchmark::State& state, UNumberFormatStyle style) {
    UErrorCode status = U_ZERO_ERROR;
    UNumberFormat* f = icuNumberFormat(style, &status);
    UChar text[64];
    char digits[64];
    u_uastrcpy(text, kNumTyped);
    for (auto _ : state) {
        benchmark::DoNotOptimize(unum_parseDecimal(f, text, -1, nullptr, digits, sizeof digits, &status));
        benchmark::ClobberMemory();
    }
    stopOnIcuError(state, status);
    unum_close(f);
}
void Icu_Num_ParseDecimal(benchmark::State& s) { icuParse(s, UNUM_DECIMAL); }
void Icu_Num_ParsePicture(benchmark::State& s) { icuParse(s, UNUM_PATTERN_DECIMAL); }

} // namespace

BENCHMARK(Oxl_Date_Format);
BENCHMARK(Icu_Date_Format);
BENCHMARK(Libc_Date_Strftime);
BENCHMARK(Oxl_Date_Unformat);
BENCHMARK(Oxl_Date_Validate);
BENCHMARK(Icu_Date_Parse);
BENCHMARK(Libc_Date_Strptime);
BENCHMARK(Oxl_Num_Picture);
BENCHMARK(Icu_Num_Picture_Double);
BENCHMARK(Icu_Num_Picture_Decimal);
BENCHMARK(Oxl_Num_Currency);
BENCHMARK(Icu_Num_Currency_Double);
BENCHMARK(Icu_Num_Currency_Decimal);
BENCHMARK(Oxl_Num_Validate);
BENCHMARK(Oxl_Num_Unformat);
BENCHMARK(Icu_Num_ParseDecimal);
BENCHMARK(Icu_Num_ParsePicture);

// Five runs of each, reported as their mean, median and spread, unless the
// caller asks otherwise (as oxl_bench_number does).
int main(int argc, char** argv) {
    std::vector<char*> args(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5", aggregates = "--benchmark_report_aggregates_only=true";
    auto given = [&](const char* flag) {
        for (int i = 1; i < argc; ++i)
            if (std::strncmp(argv[i], flag, std::strlen(flag)) == 0) return true;
        return false;
    };
    if (!given("--benchmark_repetitions")) args.insert(args.begin() + 1, repetitions.data());
    if (!given("--benchmark_report_aggregates_only")) args.insert(args.begin() + 1, aggregates.data());
    int count = int(args.size());
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data())) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
