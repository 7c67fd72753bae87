// Runs one named operation once, for an instruction count under callgrind:
//
//   valgrind --tool=callgrind --collect-atstart=no --toggle-collect=oxl_measured
//            build/bench/bin/oxl_callgrind_number add oxl
//
// Only oxl_measured's call is collected: the operands are read and the
// operation is run a few times beforehand (lazy binding, first-use tables),
// so the count is of the one call alone. The call through oxl_measured costs
// a few instructions of its own; `empty` measures exactly that, and
// scripts/bench subtracts it. Engines: oxl (our records), boost
// (cpp_dec_float_50). `list` names the operations.
#include "operands.h"
#include <oxlrt31/number.h>

#include <boost/multiprecision/cpp_dec_float.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace oxlbench;
using Dec = boost::multiprecision::cpp_dec_float_50;

tagNUMBER gShort, gThird, gOne, gThree, gLong1, gLong2, gOut;
char gText[kTextWidth + 4];
char gShortText[64], gLongText[64];
double gDouble;
LONG gLong = kLongValue;

Dec dShort, dThird, dOne, dThree, dLong1, dLong2, dOut;
std::string dText;

void setUp() {
    gShort = fromText(kShort);
    gLong1 = fromText(kLong1);
    gLong2 = fromText(kLong2);
    NumLongToNumber(&gOne, 1);
    NumLongToNumber(&gThree, 3);
    NumDivide(&gThird, &gOne, &gThree);
    std::strcpy(gShortText, kShort);
    std::strcpy(gLongText, kLong1);

    dShort = Dec(kShort);
    dLong1 = Dec(kLong1);
    dLong2 = Dec(kLong2);
    dOne = 1;
    dThree = 3;
    dThird = dOne / dThree;
}

#define OP __attribute__((noinline)) void

OP empty() { asm volatile(""); }

OP oxlAdd() { NumAddition(&gOut, &gShort, &gThird); }
OP oxlSubtract() { NumSubtract(&gOut, &gShort, &gThird); }
OP oxlMultiply() { NumMultiply(&gOut, &gShort, &gThird); }
OP oxlMultiply46() { NumMultiply(&gOut, &gLong1, &gLong2); }
OP oxlDivide() { NumDivide(&gOut, &gOne, &gThree); }
OP oxlDivide46() { NumDivide(&gOut, &gLong1, &gLong2); }
OP oxlRound() { NumRound(&gOut, &gShort, kRoundPlaces); }
OP oxlFromText() { NumAsciiToNumber(&gOut, gShortText); }
OP oxlFromText46() { NumAsciiToNumber(&gOut, gLongText); }
OP oxlToText() { NumToAscii(&gShort, gText, kTextWidth); }
OP oxlToTextThird() { NumToAscii(&gThird, gText, kTextWidth); }
OP oxlToDouble() { NumToDouble(&gThird, &gDouble); }
OP oxlFromLong() { NumLongToNumber(&gOut, gLong); }

OP boostAdd() { dOut = dShort + dThird; }
OP boostSubtract() { dOut = dShort - dThird; }
OP boostMultiply() { dOut = dShort * dThird; }
OP boostMultiply46() { dOut = dLong1 * dLong2; }
OP boostDivide() { dOut = dOne / dThree; }
OP boostDivide46() { dOut = dLong1 / dLong2; }
OP boostRound() { dOut = boost::multiprecision::round(dShort * 100) / 100; }
OP boostFromText() { dOut = Dec(gShortText); }
OP boostFromText46() { dOut = Dec(gLongText); }
OP boostToText() { dText = dShort.str(23); }
OP boostToTextThird() { dText = dThird.str(23); }
OP boostToDouble() { gDouble = dThird.convert_to<double>(); }
OP boostFromLong() { dOut = Dec(static_cast<long>(gLong)); }

struct Operation {
    const char* name;
    void (*oxl)();
    void (*boost)();
};

const Operation kOperations[] = {
    {"empty", empty, empty},
    {"add", oxlAdd, boostAdd},
    {"subtract", oxlSubtract, boostSubtract},
    {"multiply", oxlMultiply, boostMultiply},
    {"multiply46", oxlMultiply46, boostMultiply46},
    {"divide", oxlDivide, boostDivide},
    {"divide46", oxlDivide46, boostDivide46},
    {"round", oxlRound, boostRound},
    {"fromtext", oxlFromText, boostFromText},
    {"fromtext46", oxlFromText46, boostFromText46},
    {"totext", oxlToText, boostToText},
    {"totext_third", oxlToTextThird, boostToTextThird},
    {"todouble", oxlToDouble, boostToDouble},
    {"fromlong", oxlFromLong, boostFromLong},
};

} // namespace

// The one collected call.
extern "C" __attribute__((noinline)) void oxl_measured(void (*op)()) {
    op();
}

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "list") == 0) {
        for (const Operation& o : kOperations) std::printf("%s\n", o.name);
        return 0;
    }
    if (argc != 3 || (std::strcmp(argv[2], "oxl") != 0 && std::strcmp(argv[2], "boost") != 0)) {
        std::fprintf(stderr, "usage: %s OPERATION oxl|boost, or %s list\n", argv[0], argv[0]);
        return 2;
    }
    for (const Operation& o : kOperations) {
        if (std::strcmp(argv[1], o.name) != 0) continue;
        void (*op)() = std::strcmp(argv[2], "oxl") == 0 ? o.oxl : o.boost;
        setUp();
        for (int i = 0; i < 3; ++i) op();
        oxl_measured(op);
        return 0;
    }
    std::fprintf(stderr, "unknown operation %s\n", argv[1]);
    return 2;
}
