// Time per call of our decimal operations (through oxlrt31.dll) next to
// oleaut32's DECIMAL functions on the same values, in one process:
//
//   wine build/win64-bench/bin/oxl_wine_timing.exe
//
// Each figure is the median of several runs of many calls, timed with
// QueryPerformanceCounter; the two sides of a pair run alternately. A DECIMAL
// keeps 28 or 29 digits in 96 bits, so the long operands here are 28 digits
// (1.2345...678 and 9.8765...432) on both sides, not 46.
//
// Dates and number pictures, on the values of fmt_operands.h: Friday,
// 15 March 2024 under "dddd, MMMM dd, yyyy" (FMTFormatDateTime; VarFormat of
// a VT_DATE under the same format) and "Friday, March 15, 2024" read back
// (FMTUnformatDateTimeStr, FMTValidateDateTime; VarDateFromStr); 12345.678
// under "#,##0.00" (FMTFormatNumber; VarFormat of a VT_R8), as a plain
// number and as currency under the profile in force (VarFormatNumber,
// VarFormatCurrency with the locale's defaults), and "1,234,567.89" read back
// (FMTValidateNumber, FMTUnformatNumberStr; VarDecFromStr). What each side
// writes is shown before the table.
#include "fmt_operands.h"
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

// ---- dates and number pictures -------------------------------------------------

FMTCNTLBLOCK bDate, bNumber;
char dateOut[64], dateInput[64], numberOut[128], numberInput[64];
tagNUMBER nPictureValue;
VARIANT vDate, vNumber;
std::wstring wideDatePicture, wideDateText, wideNumPicture, wideNumTyped;
BSTR oleText;
DATE oleDate;

void setUpFormatting() {
    dateBlock(bDate, dateOut);
    std::strcpy(dateInput, kDateText);
    numberBlock(bNumber, numberOut);
    nPictureValue = bNumber.numValue;
    std::strcpy(numberInput, kNumTyped);
    VariantInit(&vDate);
    vDate.vt = VT_DATE;
    vDate.date = 45366.0; // days from 30 December 1899 to 15 March 2024
    VariantInit(&vNumber);
    vNumber.vt = VT_R8;
    vNumber.dblVal = kNumDouble;
    wideDatePicture = widen(kDatePicture);
    wideDateText = widen(kDateText);
    wideNumPicture = widen(kNumPicture);
    wideNumTyped = widen(kNumTyped);
}

void oxlDateFormat() { FMTFormatDateTime(&bDate, 0); }
void oxlDateUnformat() {
    bDate.lpszInput = dateInput;
    FMTUnformatDateTimeStr(&bDate);
}
void oxlDateValidate() {
    bDate.lpszInput = dateInput;
    FMTValidateDateTime(&bDate);
}
void oxlNumber(LONG type, bool profile) {
    bNumber.nType = type;
    bNumber.bUseProfile = profile;
    bNumber.lpszPicture = const_cast<char*>(kNumPicture);
    bNumber.lpszOutput = numberOut;
    bNumber.numValue = nPictureValue;
    FMTFormatNumber(&bNumber);
}
void oxlNumPicture() { oxlNumber(FMT_PICTURE, false); }
void oxlNumPlain() { oxlNumber(FMT_NUMBER, true); }
void oxlNumCurrency() { oxlNumber(FMT_CURRENCY, true); }
void oxlNumValidate() {
    bNumber.nType = FMT_NUMBER;
    bNumber.bUseProfile = 0;
    bNumber.lpszInput = numberInput;
    FMTValidateNumber(&bNumber);
}
void oxlNumUnformat() {
    bNumber.nType = FMT_PICTURE;
    bNumber.bUseProfile = 0;
    bNumber.lpszInput = numberInput;
    bNumber.lpszPicture = const_cast<char*>(kNumPicture);
    bNumber.lpszOutput = numberOut;
    FMTUnformatNumberStr(&bNumber);
}

// The text of the last call stays in oleText until the next one, so that it
// can be shown.
template <typename Call>
HRESULT keep(Call call) {
    BSTR text = nullptr;
    HRESULT hr = call(&text);
    SysFreeString(oleText);
    oleText = SUCCEEDED(hr) ? text : nullptr;
    return hr;
}
HRESULT oleDateFormat() {
    return keep([](BSTR* t) { return VarFormat(&vDate, wideDatePicture.data(), 0, 0, 0, t); });
}
HRESULT oleDateRead() { return VarDateFromStr(wideDateText.data(), kLocale, 0, &oleDate); }
HRESULT oleNumPicture() {
    return keep([](BSTR* t) { return VarFormat(&vNumber, wideNumPicture.data(), 0, 0, 0, t); });
}
HRESULT oleNumPlain() { return keep([](BSTR* t) { return VarFormatNumber(&vNumber, -1, -2, -2, -2, 0, t); }); }
HRESULT oleNumCurrency() {
    return keep([](BSTR* t) { return VarFormatCurrency(&vNumber, -1, -2, -2, -2, 0, t); });
}
HRESULT oleNumRead() { return VarDecFromStr(wideNumTyped.data(), kLocale, 0, &dOut); }

const Pair kFormatPairs[] = {
    {"format dddd, MMMM dd, yyyy", oxlDateFormat, oleDateFormat, "VarFormat"},
    {"read Friday, March 15, 2024", oxlDateUnformat, oleDateRead, "VarDateFromStr"},
    {"validate Friday, March 15, 2024", oxlDateValidate, oleDateRead, "VarDateFromStr"},
    {"12345.678 under #,##0.00", oxlNumPicture, oleNumPicture, "VarFormat"},
    {"12345.678 as a number", oxlNumPlain, oleNumPlain, "VarFormatNumber"},
    {"12345.678 as currency", oxlNumCurrency, oleNumCurrency, "VarFormatCurrency"},
    {"validate 1,234,567.89", oxlNumValidate, oleNumRead, "VarDecFromStr"},
    {"unformat 1,234,567.89", oxlNumUnformat, oleNumRead, "VarDecFromStr"},
};

// What both sides of a pair wrote (or read), once.
void show(const Pair& p) {
    p.oxl();
    oleText = nullptr;
    oleDate = 0;
    dOut = DECIMAL{};
    HRESULT hr = p.ole();
    char ours[128], theirs[128] = "";
    bool date = p.oxl == oxlDateUnformat || p.oxl == oxlDateValidate;
    bool number = p.oxl == oxlNumValidate || p.oxl == oxlNumUnformat;
    const FMTCNTLBLOCK& b = date ? bDate : bNumber;
    if (date) {
        std::snprintf(ours, sizeof ours, "%d/%d/%d", int(b.datDef.nMonth), int(b.datDef.nDay), int(b.datDef.nYear));
        std::snprintf(theirs, sizeof theirs, "%.1f", oleDate);
    } else if (number) {
        NumToAscii(&b.numValue, ours, kTextWidth);
        BSTR t = nullptr;
        if (SUCCEEDED(VarBstrFromDec(&dOut, kLocale, 0, &t)))
            for (int i = 0; t[i] && i < 127; ++i) theirs[i] = char(t[i]), theirs[i + 1] = 0;
        SysFreeString(t);
    } else {
        std::strcpy(ours, (p.oxl == oxlDateFormat ? dateOut : numberOut));
        for (int i = 0; oleText && oleText[i] && i < 127; ++i) theirs[i] = char(oleText[i]), theirs[i + 1] = 0;
    }
    std::printf("%-32s ours \"%s\", %s \"%s\" (0x%08lx)\n", p.name, ours, p.oleName, theirs,
                static_cast<unsigned long>(hr));
}

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

void table(const Pair* pairs, size_t count) {
    std::printf("%-32s %10s %10s  %-17s %7s\n", "operation", "ours ns", "ole ns", "oleaut32", "ratio");
    for (const Pair* q = pairs; q != pairs + count; ++q) {
        const Pair& p = *q;
        for (int i = 0; i < 1000; ++i) { p.oxl(); p.ole(); }
        std::vector<double> ours, ole;
        for (int r = 0; r < kRuns; ++r) {
            ours.push_back(run(p.oxl));
            ole.push_back(run(p.ole));
        }
        double a = median(ours), b = median(ole);
        HRESULT hr = p.ole();
        std::printf("%-32s %10.1f %10.1f  %-17s %7.2f", p.name, a, b, p.oleName, a / b);
        if (FAILED(hr)) std::printf("  (%s fails: 0x%08lx)", p.oleName, static_cast<unsigned long>(hr));
        std::printf("\n");
    }
}

} // namespace

// Decimal operations, then dates and number pictures ("fmt" alone: only
// those).
int main(int argc, char** argv) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    ticksPerNs = static_cast<double>(frequency.QuadPart) / 1e9;
    setUp();
    setUpFormatting();
    bool formattingOnly = argc > 1 && std::strcmp(argv[1], "fmt") == 0;
    if (!formattingOnly) table(kPairs, sizeof kPairs / sizeof kPairs[0]);
    std::printf("\ndates and number pictures; what each side gives:\n");
    for (const Pair& p : kFormatPairs) show(p);
    table(kFormatPairs, sizeof kFormatPairs / sizeof kFormatPairs[0]);
    std::printf("ratio: ours / oleaut32 (below 1: ours is faster)\n");
    return 0;
}
