// Time per call of the decimal engine's operations, next to the same
// operations on Boost's cpp_dec_float_50 (50 decimal digits, header-only).
//
//   build/bench/bin/oxl_bench_number --benchmark_min_time=0.1
//
// The operands are read once, outside the timed loops; a loop copies nothing
// but the call's own inputs. "third" is the record NumDivide gives for 1/3.
// Each runs five times; the medians are the figures to quote.
#include "operands.h"
#include <oxlrt31/number.h>

#include <benchmark/benchmark.h>
#include <boost/multiprecision/cpp_dec_float.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace oxlbench;
using Dec = boost::multiprecision::cpp_dec_float_50;

// ---- our records -------------------------------------------------------------

struct Records {
    tagNUMBER shortValue, third, one, three, long1, long2;
    Records() {
        shortValue = fromText(kShort);
        long1 = fromText(kLong1);
        long2 = fromText(kLong2);
        NumLongToNumber(&one, 1);
        NumLongToNumber(&three, 3);
        NumDivide(&third, &one, &three);
    }
};

const Records& records() {
    static const Records r;
    return r;
}

using BinaryOp = int(OXLAPI*)(tagNUMBER*, const tagNUMBER*, const tagNUMBER*);

void binary(benchmark::State& state, BinaryOp op, const tagNUMBER& a0, const tagNUMBER& b0) {
    tagNUMBER a = a0, b = b0, out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(op(&out, &a, &b));
        benchmark::ClobberMemory();
    }
}

void Oxl_Add_Short_Third(benchmark::State& s) { binary(s, NumAddition, records().shortValue, records().third); }
void Oxl_Subtract_Short_Third(benchmark::State& s) { binary(s, NumSubtract, records().shortValue, records().third); }
void Oxl_Multiply_Short_Third(benchmark::State& s) { binary(s, NumMultiply, records().shortValue, records().third); }
void Oxl_Multiply_46x46(benchmark::State& s) { binary(s, NumMultiply, records().long1, records().long2); }
void Oxl_Divide_1_3(benchmark::State& s) { binary(s, NumDivide, records().one, records().three); }
void Oxl_Divide_46_46(benchmark::State& s) { binary(s, NumDivide, records().long1, records().long2); }

void Oxl_Round_Short_2(benchmark::State& state) {
    tagNUMBER in = records().shortValue, out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(NumRound(&out, &in, kRoundPlaces));
        benchmark::ClobberMemory();
    }
}

void fromTextLoop(benchmark::State& state, const char* text) {
    std::string copy(text);
    tagNUMBER out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(NumAsciiToNumber(&out, copy.data()));
        benchmark::ClobberMemory();
    }
}
void Oxl_FromText_Short(benchmark::State& s) { fromTextLoop(s, kShort); }
void Oxl_FromText_46(benchmark::State& s) { fromTextLoop(s, kLong1); }

void toTextLoop(benchmark::State& state, const tagNUMBER& n0) {
    tagNUMBER n = n0;
    char buffer[kTextWidth + 4];
    for (auto _ : state) {
        benchmark::DoNotOptimize(NumToAscii(&n, buffer, kTextWidth));
        benchmark::ClobberMemory();
    }
}
void Oxl_ToText_Short(benchmark::State& s) { toTextLoop(s, records().shortValue); }
void Oxl_ToText_Third(benchmark::State& s) { toTextLoop(s, records().third); }

void Oxl_ToDouble_Third(benchmark::State& state) {
    tagNUMBER n = records().third;
    double d;
    for (auto _ : state) {
        NumToDouble(&n, &d);
        benchmark::DoNotOptimize(d);
        benchmark::ClobberMemory();
    }
}

void Oxl_FromLong(benchmark::State& state) {
    tagNUMBER out;
    LONG value = kLongValue;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(NumLongToNumber(&out, value));
        benchmark::ClobberMemory();
    }
}

// ---- Boost cpp_dec_float_50 ---------------------------------------------------

struct Decs {
    Dec shortValue{kShort}, long1{kLong1}, long2{kLong2}, one{1}, three{3}, third;
    Decs() { third = one / three; }
};

const Decs& decs() {
    static const Decs d;
    return d;
}

template <typename F>
void decBinary(benchmark::State& state, F op, const Dec& a0, const Dec& b0) {
    Dec a = a0, b = b0, out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        out = op(a, b);
        benchmark::DoNotOptimize(out);
    }
}

auto decAdd = [](const Dec& a, const Dec& b) { return Dec(a + b); };
auto decSub = [](const Dec& a, const Dec& b) { return Dec(a - b); };
auto decMul = [](const Dec& a, const Dec& b) { return Dec(a * b); };
auto decDiv = [](const Dec& a, const Dec& b) { return Dec(a / b); };

void Boost_Add_Short_Third(benchmark::State& s) { decBinary(s, decAdd, decs().shortValue, decs().third); }
void Boost_Subtract_Short_Third(benchmark::State& s) { decBinary(s, decSub, decs().shortValue, decs().third); }
void Boost_Multiply_Short_Third(benchmark::State& s) { decBinary(s, decMul, decs().shortValue, decs().third); }
void Boost_Multiply_46x46(benchmark::State& s) { decBinary(s, decMul, decs().long1, decs().long2); }
void Boost_Divide_1_3(benchmark::State& s) { decBinary(s, decDiv, decs().one, decs().three); }
void Boost_Divide_46_46(benchmark::State& s) { decBinary(s, decDiv, decs().long1, decs().long2); }

// cpp_dec_float has no rounding to places: scale, round half away, scale back.
void Boost_Round_Short_2(benchmark::State& state) {
    Dec in = decs().shortValue, out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(in);
        out = Dec(boost::multiprecision::round(in * 100) / 100);
        benchmark::DoNotOptimize(out);
    }
}

void decFromTextLoop(benchmark::State& state, const char* text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        Dec out(text);
        benchmark::DoNotOptimize(out);
    }
}
void Boost_FromText_Short(benchmark::State& s) { decFromTextLoop(s, kShort); }
void Boost_FromText_46(benchmark::State& s) { decFromTextLoop(s, kLong1); }

void decToTextLoop(benchmark::State& state, const Dec& v0) {
    Dec v = v0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(v);
        std::string text = v.str(23);
        benchmark::DoNotOptimize(text.data());
    }
}
void Boost_ToText_Short(benchmark::State& s) { decToTextLoop(s, decs().shortValue); }
void Boost_ToText_Third(benchmark::State& s) { decToTextLoop(s, decs().third); }

void Boost_ToDouble_Third(benchmark::State& state) {
    Dec v = decs().third;
    for (auto _ : state) {
        benchmark::DoNotOptimize(v);
        double d = v.convert_to<double>();
        benchmark::DoNotOptimize(d);
    }
}

void Boost_FromLong(benchmark::State& state) {
    long value = kLongValue;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Dec out(value);
        benchmark::DoNotOptimize(out);
    }
}

} // namespace

BENCHMARK(Oxl_Add_Short_Third);
BENCHMARK(Boost_Add_Short_Third);
BENCHMARK(Oxl_Subtract_Short_Third);
BENCHMARK(Boost_Subtract_Short_Third);
BENCHMARK(Oxl_Multiply_Short_Third);
BENCHMARK(Boost_Multiply_Short_Third);
BENCHMARK(Oxl_Multiply_46x46);
BENCHMARK(Boost_Multiply_46x46);
BENCHMARK(Oxl_Divide_1_3);
BENCHMARK(Boost_Divide_1_3);
BENCHMARK(Oxl_Divide_46_46);
BENCHMARK(Boost_Divide_46_46);
BENCHMARK(Oxl_Round_Short_2);
BENCHMARK(Boost_Round_Short_2);
BENCHMARK(Oxl_FromText_Short);
BENCHMARK(Boost_FromText_Short);
BENCHMARK(Oxl_FromText_46);
BENCHMARK(Boost_FromText_46);
BENCHMARK(Oxl_ToText_Short);
BENCHMARK(Boost_ToText_Short);
BENCHMARK(Oxl_ToText_Third);
BENCHMARK(Boost_ToText_Third);
BENCHMARK(Oxl_ToDouble_Third);
BENCHMARK(Boost_ToDouble_Third);
BENCHMARK(Oxl_FromLong);
BENCHMARK(Boost_FromLong);

// Five runs of each, reported as their mean, median and spread (the README
// quotes the medians); the caller's own --benchmark_repetitions or
// --benchmark_report_aggregates_only wins.
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
