// Time per call of our decimal operations (through oxlrt31.dll) next to
// oleaut32's DECIMAL functions on the same values, in one process:
//
//   wine build/win64-bench/bin/oxl_wine_timing.exe
//
// Each figure is the median of several runs of many calls, timed with
// QueryPerformanceCounter; the two sides of a pair run alternately. A DECIMAL
// keeps 28 or 29 digits in 96 bits, so the long operands here are 28 digits
// (1.2345...678 and 9.8765...432) on both sides, not 46.
#include "operands.h"
#include <oxlrt31/number.h>

#include <oleauto.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace oxlbench;

constexpr int kRuns = 7;
constexpr int kCalls = 20000;
constexpr LCID kLocale = 0x0409; // "." is the point

// ---- operands, both forms ---------------------------------------------------

tagNUMBER nShort, nThird, nOne, nThree, nLong1, nLong2, nOut;
DECIMAL dShort, dThird, dOne, dThree, dLong1, dLong2, dOut;
char textShort[64], textLong[64], textOut[kTextWidth + 4];
std::wstring wideShort, wideLong;
double gDouble;
volatile LONG gLong = kLongValue;

std::wstring widen(const char* s) {
    return std::wstring(s, s + std::strlen(s));
}

void readBoth(const char* text, tagNUMBER& n, DECIMAL& d) {
    std::string copy(text);
    std::wstring wide = widen(text);
    HRESULT hr = VarDecFromStr(wide.data(), kLocale, 0, &d);
    if (NumAsciiToNumber(&n, copy.data()) <= 0 || FAILED(hr)) {
        std::fprintf(stderr, "operand %s does not read (oleaut32: 0x%08lx)\n", text, static_cast<unsigned long>(hr));
        std::exit(1);
    }
}

void setUp() {
    readBoth(kShort, nShort, dShort);
    readBoth(kLong1Decimal, nLong1, dLong1);
    readBoth(kLong2Decimal, nLong2, dLong2);
    NumLongToNumber(&nOne, 1);
    NumLongToNumber(&nThree, 3);
    NumDivide(&nThird, &nOne, &nThree);
    VarDecFromI4(1, &dOne);
    VarDecFromI4(3, &dThree);
    VarDecDiv(&dOne, &dThree, &dThird);
    std::strcpy(textShort, kShort);
    std::strcpy(textLong, kLong1Decimal);
    wideShort = widen(kShort);
    wideLong = widen(kLong1Decimal);
}

// ---- the operations -----------------------------------------------------------

void oxlAdd() { NumAddition(&nOut, &nShort, &nThird); }
void oxlSubtract() { NumSubtract(&nOut, &nShort, &nThird); }
void oxlMultiply() { NumMultiply(&nOut, &nShort, &nThird); }
void oxlMultiply46() { NumMultiply(&nOut, &nLong1, &nLong2); }
void oxlDivide() { NumDivide(&nOut, &nOne, &nThree); }
void oxlDivide46() { NumDivide(&nOut, &nLong1, &nLong2); }
void oxlRound() { NumRound(&nOut, &nShort, kRoundPlaces); }
void oxlFromText() { NumAsciiToNumber(&nOut, textShort); }
void oxlFromText46() { NumAsciiToNumber(&nOut, textLong); }
void oxlToText() { NumToAscii(&nShort, textOut, kTextWidth); }
void oxlToTextThird() { NumToAscii(&nThird, textOut, kTextWidth); }
void oxlToDouble() { NumToDouble(&nThird, &gDouble); }
void oxlFromLong() { NumLongToNumber(&nOut, gLong); }

HRESULT oleAdd() { return VarDecAdd(&dShort, &dThird, &dOut); }
HRESULT oleSubtract() { return VarDecSub(&dShort, &dThird, &dOut); }
HRESULT oleMultiply() { return VarDecMul(&dShort, &dThird, &dOut); }
HRESULT oleMultiply46() { return VarDecMul(&dLong1, &dLong2, &dOut); }
HRESULT oleDivide() { return VarDecDiv(&dOne, &dThree, &dOut); }
HRESULT oleDivide46() { return VarDecDiv(&dLong1, &dLong2, &dOut); }
HRESULT oleRound() { return VarDecRound(&dShort, kRoundPlaces, &dOut); }
HRESULT oleFromText() { return VarDecFromStr(wideShort.data(), kLocale, 0, &dOut); }
HRESULT oleFromText46() { return VarDecFromStr(wideLong.data(), kLocale, 0, &dOut); }
HRESULT oleToTextOf(DECIMAL* d) {
    BSTR text = nullptr;
    HRESULT hr = VarBstrFromDec(d, kLocale, 0, &text);
    if (SUCCEEDED(hr)) SysFreeString(text);
    return hr;
}
HRESULT oleToText() { return oleToTextOf(&dShort); }
HRESULT oleToTextThird() { return oleToTextOf(&dThird); }
HRESULT oleToDouble() { return VarR8FromDec(&dThird, &gDouble); }
HRESULT oleFromLong() { return VarDecFromI4(gLong, &dOut); }

struct Pair {
    const char* name;
    void (*oxl)();
    HRESULT (*ole)();
    const char* oleName;
};

const Pair kPairs[] = {
    {"add 12345.678 + 1/3", oxlAdd, oleAdd, "VarDecAdd"},
    {"subtract 12345.678 - 1/3", oxlSubtract, oleSubtract, "VarDecSub"},
    {"multiply 12345.678 x 1/3", oxlMultiply, oleMultiply, "VarDecMul"},
    {"multiply 28 x 28 digits", oxlMultiply46, oleMultiply46, "VarDecMul"},
    {"divide 1 / 3", oxlDivide, oleDivide, "VarDecDiv"},
    {"divide 28 / 28 digits", oxlDivide46, oleDivide46, "VarDecDiv"},
    {"round 12345.678 to 2 places", oxlRound, oleRound, "VarDecRound"},
    {"text to number 12345.678", oxlFromText, oleFromText, "VarDecFromStr"},
    {"text to number, 28 digits", oxlFromText46, oleFromText46, "VarDecFromStr"},
    {"number to text 12345.678", oxlToText, oleToText, "VarBstrFromDec"},
    {"number to text 1/3", oxlToTextThird, oleToTextThird, "VarBstrFromDec"},
    {"to double 1/3", oxlToDouble, oleToDouble, "VarR8FromDec"},
    {"from long 123456789", oxlFromLong, oleFromLong, "VarDecFromI4"},
};

double ticksPerNs;

// Nanoseconds per call of one run.
template <typename Op>
double run(Op op) {
    LARGE_INTEGER start, stop;
    QueryPerformanceCounter(&start);
    for (int i = 0; i < kCalls; ++i) op();
    QueryPerformanceCounter(&stop);
    return static_cast<double>(stop.QuadPart - start.QuadPart) / ticksPerNs / kCalls;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    ticksPerNs = static_cast<double>(frequency.QuadPart) / 1e9;
    setUp();

    std::printf("%-30s %10s %10s  %-15s %7s\n", "operation", "ours ns", "ole ns", "oleaut32", "ratio");
    for (const Pair& p : kPairs) {
        for (int i = 0; i < 1000; ++i) { p.oxl(); p.ole(); }
        std::vector<double> ours, ole;
        for (int r = 0; r < kRuns; ++r) {
            ours.push_back(run(p.oxl));
            ole.push_back(run(p.ole));
        }
        double a = median(ours), b = median(ole);
        HRESULT hr = p.ole();
        std::printf("%-30s %10.1f %10.1f  %-15s %7.2f", p.name, a, b, p.oleName, a / b);
        if (FAILED(hr)) std::printf("  (%s fails: 0x%08lx)", p.oleName, static_cast<unsigned long>(hr));
        std::printf("\n");
    }
    std::printf("ratio: ours / oleaut32 (below 1: ours is faster)\n");
    return 0;
}
