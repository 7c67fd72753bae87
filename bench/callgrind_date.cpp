// Runs one date operation once, for an instruction count under callgrind,
// as oxl_callgrind_number does for numbers:
//
//   valgrind --tool=callgrind --collect-atstart=no --toggle-collect=oxl_measured
//            build/bench/bin/oxl_callgrind_date format oxl
//
// The same value on three engines: ours (FMTFormatDateTime, and reading with
// FMTUnformatDateTimeStr under the picture or FMTValidateDateTime under the
// short and long pictures), ICU (udat_format, udat_parse; en_US, the pattern
// "EEEE, MMMM dd, yyyy") and the C library (strftime, strptime with
// "%A, %B %d, %Y"). Value: Friday, 15 March 2024.
#include <oxlrt31/datepic.h>

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

constexpr const char* kPicture = "dddd, MMMM dd, yyyy";
constexpr const char* kText = "Friday, March 15, 2024";
constexpr const char* kFormat = "%A, %B %d, %Y";

FMTCNTLBLOCK gBlock;
char gOut[64], gInput[64];
UDateFormat* gIcu;
UChar gIcuOut[64], gIcuText[64];
UDate gIcuDate;
struct tm gTm;

void setUp() {
    FMTInitCntlBlock(&gBlock);
    gBlock.nType = FMT_DATE;
    gBlock.lpszLongPic = gBlock.lpszPicture = const_cast<char*>(kPicture);
    gBlock.lpszShortPic = const_cast<char*>("M/d/yy");
    gBlock.datDef = DATDEF{3, 15, 2024, 0, 0, 0, 0};
    gBlock.lpszOutput = gOut;
    std::strcpy(gInput, kText);
    UErrorCode status = U_ZERO_ERROR;
    UChar pattern[32];
    u_uastrcpy(pattern, "EEEE, MMMM dd, yyyy");
    gIcu = udat_open(UDAT_PATTERN, UDAT_PATTERN, "en_US", u"UTC", -1, pattern, -1, &status);
    u_uastrcpy(gIcuText, kText);
    gIcuDate = 1710460800000.0; // 2024-03-15 00:00 UTC
    std::setlocale(LC_TIME, "C");
    gTm = {};
    gTm.tm_year = 124, gTm.tm_mon = 2, gTm.tm_mday = 15, gTm.tm_wday = 5, gTm.tm_yday = 74;
}

#define OP __attribute__((noinline)) void

OP empty() { asm volatile(""); }
OP oxlFormat() { FMTFormatDateTime(&gBlock, 0); }
OP oxlUnformat() {
    gBlock.lpszInput = gInput;
    FMTUnformatDateTimeStr(&gBlock);
}
OP oxlValidate() {
    gBlock.lpszInput = gInput;
    FMTValidateDateTime(&gBlock);
}
OP icuFormat() {
    UErrorCode status = U_ZERO_ERROR;
    udat_format(gIcu, gIcuDate, gIcuOut, 64, nullptr, &status);
}
OP icuParse() {
    UErrorCode status = U_ZERO_ERROR;
    gIcuDate = udat_parse(gIcu, gIcuText, -1, nullptr, &status);
}
OP libcFormat() { std::strftime(gOut, sizeof gOut, kFormat, &gTm); }
OP libcParse() {
    struct tm t = {};
    strptime(gInput, kFormat, &t);
    gTm.tm_mday = t.tm_mday;
}

struct Operation {
    const char* name;
    void (*oxl)();
    void (*icu)();
    void (*libc)();
};

const Operation kOperations[] = {
    {"empty", empty, empty, empty},
    {"format", oxlFormat, icuFormat, libcFormat},
    {"read", oxlUnformat, icuParse, libcParse},
    {"validate", oxlValidate, icuParse, libcParse},
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
    const char* engines[] = {"oxl", "icu", "libc"};
    int engine = -1;
    for (int i = 0; argc == 3 && i < 3; ++i)
        if (std::strcmp(argv[2], engines[i]) == 0) engine = i;
    if (engine < 0) {
        std::fprintf(stderr, "usage: %s OPERATION oxl|icu|libc, or %s list\n", argv[0], argv[0]);
        return 2;
    }
    for (const Operation& o : kOperations) {
        if (std::strcmp(argv[1], o.name) != 0) continue;
        void (*op)() = engine == 0 ? o.oxl : engine == 1 ? o.icu : o.libc;
        setUp();
        for (int i = 0; i < 3; ++i) op();
        oxl_measured(op);
        if (std::getenv("OXL_SHOW")) std::printf("%s | %d/%d/%d\n", gOut, int(gBlock.datDef.nMonth), int(gBlock.datDef.nDay), int(gBlock.datDef.nYear));
        return 0;
    }
    std::fprintf(stderr, "unknown operation %s\n", argv[1]);
    return 2;
}
