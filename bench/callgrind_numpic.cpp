// Runs one number picture operation once, for an instruction count under
// callgrind, as oxl_callgrind_number does for the decimal engine:
//
//   valgrind --tool=callgrind --collect-atstart=no --toggle-collect=oxl_measured
//            build/bench/bin/oxl_callgrind_numpic format oxl
//
// The same values on two engines. Ours: FMTFormatNumber (12345.678 under
// "#,##0.00" in its user and its stored, tokenised form; the same value as
// currency under the profile in force), FMTValidateNumber and
// FMTUnformatNumberStr reading "1,234,567.89" back. ICU (en_US):
// unum_formatDouble and unum_formatDecimal under the pattern "#,##0.00", the
// same two under the locale's currency style, and unum_parseDecimal of the
// text under the pattern and under the locale's decimal style.
// OXL_SHOW=1 prints what the measured call wrote.
#include "fmt_operands.h"

#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace oxlbench;

FMTCNTLBLOCK gBlock;
char gOut[128], gInput[64], gTokens[64];
tagNUMBER gValue;
UNumberFormat *gIcuPicture, *gIcuCurrency, *gIcuDecimal;
UChar gIcuOut[64], gIcuTyped[64];
char gIcuDigits[64];
double gDouble = kNumDouble;

// The block a host fills for a number under a picture: US separators given
// in the block, not the profile. The currency block takes the profile.
void setUp() {
    numberBlock(gBlock, gOut);
    gValue = gBlock.numValue;
    gBlock.lpszPicture = const_cast<char*>(kNumPicture);
    gBlock.lpszOutput = gTokens;
    FMTTokenizeNumberPic(&gBlock);
    gBlock.lpszOutput = gOut;
    std::strcpy(gInput, kNumTyped);

    UErrorCode status = U_ZERO_ERROR;
    UChar pattern[32];
    u_uastrcpy(pattern, kNumPicture);
    gIcuPicture = unum_open(UNUM_PATTERN_DECIMAL, pattern, -1, "en_US", nullptr, &status);
    gIcuCurrency = unum_open(UNUM_CURRENCY, nullptr, 0, "en_US", nullptr, &status);
    gIcuDecimal = unum_open(UNUM_DECIMAL, nullptr, 0, "en_US", nullptr, &status);
    if (U_FAILURE(status)) {
        std::fprintf(stderr, "ICU: %s\n", u_errorName(status));
        std::exit(1);
    }
    u_uastrcpy(gIcuTyped, kNumTyped);
}

#define OP __attribute__((noinline)) void

OP empty() { asm volatile(""); }
OP formatWith(const char* picture) {
    gBlock.nType = FMT_PICTURE;
    gBlock.bUseProfile = 0;
    gBlock.lpszPicture = const_cast<char*>(picture);
    gBlock.numValue = gValue;
    FMTFormatNumber(&gBlock);
}
OP oxlFormat() { formatWith(kNumPicture); }
OP oxlFormatStored() { formatWith(gTokens); }
OP oxlCurrency() {
    gBlock.nType = FMT_CURRENCY;
    gBlock.bUseProfile = 1;
    gBlock.numValue = gValue;
    FMTFormatNumber(&gBlock);
}
OP oxlValidate() {
    gBlock.nType = FMT_NUMBER;
    gBlock.bUseProfile = 0;
    gBlock.lpszInput = gInput;
    FMTValidateNumber(&gBlock);
}
OP oxlUnformat() {
    gBlock.nType = FMT_PICTURE;
    gBlock.bUseProfile = 0;
    gBlock.lpszInput = gInput;
    gBlock.lpszPicture = const_cast<char*>(kNumPicture);
    FMTUnformatNumberStr(&gBlock);
}

OP icuFormatDouble(UNumberFormat* f) {
    UErrorCode status = U_ZERO_ERROR;
    unum_formatDouble(f, gDouble, gIcuOut, 64, nullptr, &status);
}
OP icuFormatDecimal(UNumberFormat* f) {
    UErrorCode status = U_ZERO_ERROR;
    unum_formatDecimal(f, kNumValue, -1, gIcuOut, 64, nullptr, &status);
}
OP icuParse(UNumberFormat* f) {
    UErrorCode status = U_ZERO_ERROR;
    unum_parseDecimal(f, gIcuTyped, -1, nullptr, gIcuDigits, sizeof gIcuDigits, &status);
}
OP icuFormat() { icuFormatDouble(gIcuPicture); }
OP icuFormatDec() { icuFormatDecimal(gIcuPicture); }
OP icuCurrency() { icuFormatDouble(gIcuCurrency); }
OP icuCurrencyDec() { icuFormatDecimal(gIcuCurrency); }
OP icuParsePicture() { icuParse(gIcuPicture); }
OP icuParseDecimal() { icuParse(gIcuDecimal); }

struct Operation {
    const char* name;
    void (*oxl)();
    void (*icu)();
};

// Each of ours beside its nearest ICU call; the *_decimal rows give ICU the
// value as digits, as our records are.
const Operation kOperations[] = {
    {"empty", empty, empty},
    {"format", oxlFormat, icuFormat},
    {"format_decimal", oxlFormat, icuFormatDec},
    {"format_stored", oxlFormatStored, icuFormat},
    {"currency", oxlCurrency, icuCurrency},
    {"currency_decimal", oxlCurrency, icuCurrencyDec},
    {"validate", oxlValidate, icuParseDecimal},
    {"unformat", oxlUnformat, icuParsePicture},
};

void show(bool icu) {
    if (icu) {
        char text[64];
        u_austrcpy(text, gIcuOut);
        std::printf("%s | %s\n", text, gIcuDigits);
        return;
    }
    char text[64];
    NumToAscii(&gBlock.numValue, text, 40);
    std::printf("%s | %s\n", gOut, text);
}

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
    if (argc != 3 || (std::strcmp(argv[2], "oxl") != 0 && std::strcmp(argv[2], "icu") != 0)) {
        std::fprintf(stderr, "usage: %s OPERATION oxl|icu, or %s list\n", argv[0], argv[0]);
        return 2;
    }
    bool icu = std::strcmp(argv[2], "icu") == 0;
    for (const Operation& o : kOperations) {
        if (std::strcmp(argv[1], o.name) != 0) continue;
        void (*op)() = icu ? o.icu : o.oxl;
        setUp();
        for (int i = 0; i < 3; ++i) op();
        gOut[0] = 0;
        oxl_measured(op);
        if (std::getenv("OXL_SHOW")) show(icu);
        return 0;
    }
    std::fprintf(stderr, "unknown operation %s\n", argv[1]);
    return 2;
}
