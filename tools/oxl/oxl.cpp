// oxl: the library's playground. It loads oxlrt31 as any host does and shows
// what the library makes of what you give it.
//
//   oxl tour                 a short walk through what the library does
//   oxl small N [N ...]      the records of small integers (-99 to 99), byte by byte
//   oxl negate N             a record and its negation
//   oxl compare A B          NumCompare of two numbers
//   oxl env                  the character environment settled at load
//   oxl version              the library's product and file versions
//   oxl calc "A op B"        one operation (+ - * /) on two decimal numbers
//   oxl chars TEXT           how TEXT splits into characters, and how the
//                            cutting functions cut it (\xHH in TEXT is a byte;
//                            LC_ALL=ja_JP.UTF-8 gives a Japanese system)
//   oxl conv VALUE           a number through every binary conversion and back
//   oxl shm SIZE             the machine's shared heap, opened (or created with
//                            SIZE bytes), driven by commands read from stdin
//   oxl date TEXT [PICTURE]  a typed date read into a DATDEF and written back
//                            (options: settings in place of the profile's)
//   oxl profile              the regional settings in force (FMTGetProfileIntl)
//   oxl num SETTINGS VALUE [PICTURE]   a number as plain text, currency ("$") or
//                            under a picture, stored under one set of settings and
//                            shown under another (us/de); oxl num SETTINGS read
//                            TEXT [PICTURE] reads a typed text back (oxl_num.cpp)
//   oxl help                 what each command does
//   oxl fonts                the font faces and character sets the library finds
//   oxl open NAME [FLAGS]    what CBOpenFile does with a name
//
// Misuse is told on the error stream, with exit status 2. Numbers are read
// whole: "4096abc" is not a number. Natively the arguments come in the
// terminal's encoding and go to the library in its code page, and
// characters are shown back in the terminal's encoding, as a host on a
// UTF-8 system must do; a Windows console hands over the code page itself.
#include "oxl_tool.h"

#include <oxlrt31/diag.h>
#include <oxlrt31/fmt.h>
#include <oxlrt31/memshared.h>
#include <oxlrt31/intl.h>
#include <oxlrt31/number.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <clocale>
#include <dlfcn.h>
#include <iconv.h>
#include <langinfo.h>
#endif

namespace {

std::string fromLibrary(const std::string& text);

std::string hex(const tagNUMBER& n) {
    std::string s;
    char b[4];
    int len = n.bLength & 0x3F;
    std::snprintf(b, sizeof b, "%02X", n.bLength);
    s += b;
    for (int i = 0; i < len && i < 24; ++i) {
        std::snprintf(b, sizeof b, " %02X", n.abData[i]);
        s += b;
    }
    return s;
}

bool parseInt(const char* text, int* value) {
    char* end = nullptr;
    long v = std::strtol(text, &end, 10);
    if (!*text || *end || v < -2147483647L - 1 || v > 2147483647L) {
        std::fprintf(stderr, "oxl: '%s' is not an integer\n", text);
        return false;
    }
    *value = int(v);
    return true;
}

void showSmall(int v) {
    tagNUMBER n;
    NumCreateSmall(&n, v);
    std::printf("%6d  %-16s%s\n", v, hex(n).c_str(),
                v < -99 || v > 99 ? "  (outside -99 to 99: a record that reads as zero)" : "");
}

int cmdSmall(int argc, char** argv) {
    std::vector<int> values(argc);
    for (int i = 0; i < argc; ++i)
        if (!parseInt(argv[i], &values[i])) return 2;
    std::printf(" value  record (length byte first, hex)\n");
    for (int v : values) showSmall(v);
    return 0;
}

// The text of a record in 48 characters: every digit of a record fits, and
// values far from 1 go to the scientific form.
std::string text(tagNUMBER& n) {
    char buffer[49];
    NumToAscii(&n, buffer, 48);
    return buffer;
}

// Reads a number where *p points and moves past it.
bool readNumber(const char** p, tagNUMBER* n, const char* what) {
    int r = NumAsciiToNumber(n, *p);
    if (r <= 0) {
        std::fprintf(stderr, "oxl: %s: %s\n", what,
                     r == 0 ? "no number" : r == -1 ? "too large for a NUMBER" : "too small for a NUMBER");
        return false;
    }
    *p += r;
    return true;
}

// A whole argument as a number (decimal, scientific or 0x hexadecimal), with
// nothing after it.
bool parseNumber(const char* arg, tagNUMBER* n) {
    const char* p = arg;
    if (!readNumber(&p, n, arg)) return false;
    if (*p) {
        std::fprintf(stderr, "oxl: '%s' is not a number: '%s' after it\n", arg, p);
        return false;
    }
    return true;
}

void showNegate(tagNUMBER n) {
    std::string before = text(n) + "  " + hex(n);
    int r = NumNegate(&n);
    std::printf("-(%s)  ->  %s  %s   (NumNegate gives %d)\n", before.c_str(), text(n).c_str(), hex(n).c_str(), r);
}

void showCompare(tagNUMBER a, tagNUMBER b) {
    static const char* const rel[] = {"<", "=", ">"};
    int c = NumCompare(&a, &b);
    std::printf("%s %s %s   (NumCompare gives %d)\n", text(a).c_str(), rel[c + 1], text(b).c_str(), c);
}

tagNUMBER small(int v) {
    tagNUMBER n;
    NumCreateSmall(&n, v);
    return n;
}

int cmdNegate(int, char** argv) {
    tagNUMBER n;
    if (!parseNumber(argv[0], &n)) return 2;
    showNegate(n);
    return 0;
}

int cmdCompare(int, char** argv) {
    tagNUMBER a, b;
    if (!parseNumber(argv[0], &a) || !parseNumber(argv[1], &b)) return 2;
    showCompare(a, b);
    return 0;
}

int cmdCalc(int argc, char** argv) {
    std::string expr;
    for (int i = 0; i < argc; ++i) expr += std::string(i ? " " : "") + argv[i];
    const char* p = expr.c_str();
    tagNUMBER a, b, out;
    if (!readNumber(&p, &a, "first operand")) return 2;
    while (*p == ' ') ++p;
    static const struct {
        char op;
        int(OXLAPI* run)(tagNUMBER*, const tagNUMBER*, const tagNUMBER*);
    } kOps[] = {{'+', NumAddition}, {'-', NumSubtract}, {'*', NumMultiply}, {'/', NumDivide}};
    auto op = std::find_if(std::begin(kOps), std::end(kOps), [&](const auto& o) { return o.op == *p; });
    if (op == std::end(kOps)) {
        std::fprintf(stderr, "oxl: expected one of + - * / after the first operand\n");
        return 2;
    }
    ++p;
    if (!readNumber(&p, &b, "second operand")) return 2;
    while (*p == ' ') ++p;
    if (*p) {
        std::fprintf(stderr, "oxl: unexpected '%s' after the second operand\n", p);
        return 2;
    }
    op->run(&out, &a, &b);
    std::printf("  %-48s %s\n", text(a).c_str(), hex(a).c_str());
    std::printf("%c %-48s %s\n", op->op, text(b).c_str(), hex(b).c_str());
    std::printf("= %-48s %s\n", text(out).c_str(), hex(out).c_str());
    return 0;
}

// ---- binary conversions --------------------------------------------------

void showBack(const char* what, tagNUMBER& back) {
    std::printf("    back from %-8s %-40s %s\n", what, text(back).c_str(), hex(back).c_str());
}

// One value through each binary conversion: what the record becomes, the
// overflow reply, and the record that the converted value gives back.
int cmdConv(int, char** argv) {
    tagNUMBER n, back;
    if (!parseNumber(argv[0], &n)) return 2;
    std::printf("record           %-40s %s\n", text(n).c_str(), hex(n).c_str());

    LONG reply = 0;
    LONG l = NumToLongReply(&n, &reply);
    std::printf("long             %-11ld reply %ld\n", long(l), long(reply));
    NumLongToNumber(&back, l);
    showBack("long", back);
    DWORD dw = NumToDWordReply(&n, &reply);
    std::printf("dword            %-11lu reply %ld\n", (unsigned long)dw, long(reply));
    NumDWordToNumber(&back, dw);
    showBack("dword", back);
    WORD w = NumToWordReply(&n, &reply);
    std::printf("word             %-11u reply %ld\n", unsigned(w), long(reply));
    NumWordToNumber(&back, w);
    showBack("word", back);

    double d = 0;
    char g[64];
    NumToDouble(&n, &d);
    std::printf("double           %-24s (%s)\n", FMTgcvt(d, g), NumIsNullDouble(&d) ? "the null double" : "a value");
    int ok = NumDoubleToNumber(&back, d);
    showBack(ok ? "double" : "double: 0", back);

    CY cy = {};
    NumToLLong(&cy, &n, &reply);
    std::printf("CY (64-bit)      %-24lld reply %ld\n", (long long)cy.int64, long(reply));
    NumLLongToNumber(&back, &cy);
    showBack("CY", back);

    DECIMAL dec = {};
    NumToDECIMAL(&dec, &n, &reply);
    std::printf("DECIMAL          scale %u, sign 0x%02X, mantissa 0x%08lX%08lX%08lX, reply %ld\n", unsigned(dec.scale),
                unsigned(dec.sign), (unsigned long)dec.Hi32, (unsigned long)dec.Mid32, (unsigned long)dec.Lo32,
                long(reply));
    NumDECIMALToNumber(&back, &dec);
    showBack("DECIMAL", back);
    return 0;
}

int cmdEnv(int, char**) {
    std::printf("double-byte path: %s\nright-to-left:    %s\n", IntlDBCSEnabled() ? "on" : "off",
                IntlIsBiDiEnabled() ? "yes" : "no");
    return 0;
}

std::string quoted(const char* text) { return "\"" + fromLibrary(text) + "\""; }
std::string quoted(char c) { return c ? quoted(std::string(1, c).c_str()) : "(none)"; }

int cmdProfile(int, char**) {
    FMTPROFILEINTL p;
    FMTGetProfileIntl(&p);
    static const char* const kStyles[] = {"LongGregorian", "ShortGregorian", "JapanGregorian", "JapanEmperor"};
    const char* style = p.iDateType < 4 ? kStyles[p.iDateType] : "?";
    std::printf("country          %lu %s, language %s\n", (unsigned long)p.iCountry, quoted(p.sCountry).c_str(),
                quoted(p.sLanguage).c_str());
    std::printf("short date       %s\nlong date        %s\n", quoted(p.sShortDate).c_str(), quoted(p.sLongDate).c_str());
    std::printf("date separator   %s, order iDate %lu\n", quoted(p.chDate).c_str(), (unsigned long)p.iDate);
    std::printf("time             separator %s, %s-hour clock, hour leading zero %lu, markers %s %s\n",
                quoted(p.sTime).c_str(), p.iTime ? "24" : "12", (unsigned long)p.iTLZero, quoted(p.s1159).c_str(),
                quoted(p.s2359).c_str());
    std::printf("numbers          decimal %s, thousands %s, list %s, %lu digits, leading zero %lu, measure %lu\n",
                quoted(p.chDecimal).c_str(), quoted(p.chThousand).c_str(), quoted(p.chList).c_str(),
                (unsigned long)p.iDigits, (unsigned long)p.iLzero, (unsigned long)p.iMeasure);
    std::printf("currency         %s, %s%s, %lu digits, negative form %lu\n", quoted(p.sCurrency).c_str(),
                p.bCurrencySuffix ? "after the number" : "before the number", p.bCurrencySpace ? " with a space" : "",
                (unsigned long)p.iCurrDigits, (unsigned long)p.iNegCurr);
    std::printf("date style       %lu %s, era boundary check %lu\n", (unsigned long)p.iDateType, style,
                (unsigned long)p.iEmpDateBoundryCheck);
    return 0;
}

// The library as its version functions know it: its module handle on
// Windows, an address inside it elsewhere.
HMODULE library() {
#ifdef _WIN32
    return GetModuleHandleA("oxlrt31.dll");
#else
    Dl_info info;
    return dladdr(reinterpret_cast<void*>(&VERGetVersionString), &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
#endif
}

int cmdVersion(int, char**) {
    char product[128], build[128];
    if (!VERGetVersionString(library(), product) || !VERGetBuildString(library(), build)) {
        std::fprintf(stderr, "oxl: the library has no version strings\n");
        return 1;
    }
    std::printf("product version: %s\nfile version:    %s\n", product, build);
    return 0;
}

// TEXT with each \xHH replaced by the byte HH.
std::string unescape(const char* text) {
    std::string out;
    for (const char* p = text; *p; ++p) {
        if (p[0] == '\\' && p[1] == 'x' && std::isxdigit(BYTE(p[2])) && std::isxdigit(BYTE(p[3]))) {
            const char digits[3] = {p[2], p[3], '\0'};
            out += char(std::strtoul(digits, nullptr, 16));
            p += 3;
        } else {
            out += *p;
        }
    }
    return out;
}

std::string hexBytes(const char* s) {
    std::string out;
    char b[4];
    for (; *s; ++s) {
        std::snprintf(b, sizeof b, out.empty() ? "%02X" : " %02X", BYTE(*s));
        out += b;
    }
    return "[" + out + "]";
}

void showCuts(char* text, int n) {
    char left[256], leftB[256], right[256], rightB[256];
    IntlStrLeft(left, text, n);
    IntlStrLeftB(leftB, text, n);
    IntlStrRight(right, text, n);
    IntlStrRightB(rightB, text, n);
    std::printf("%3d  %-26s %-26s %-26s %s\n", n, hexBytes(left).c_str(), hexBytes(leftB).c_str(),
                hexBytes(right).c_str(), hexBytes(rightB).c_str());
}

int cmdChars(int, char** argv) {
    std::string text = unescape(argv[0]);
    if (text.size() > 60) {
        std::fprintf(stderr, "oxl: at most 60 bytes, please\n");
        return 2;
    }
    std::printf("%s: %d bytes, %d characters (double-byte path %s)\ncharacters:", hexBytes(text.c_str()).c_str(),
                IntlStrLenB(text.data()), IntlStrLen(text.data()), IntlDBCSEnabled() ? "on" : "off");
    for (char* p = text.data(); *p; p += IntlBytesInNextChar(p)) {
        char one[3] = {p[0], IntlBytesInNextChar(p) > 1 ? p[1] : '\0', '\0'};
        std::printf(" %s %s", hexBytes(one).c_str(), fromLibrary(one).c_str());
    }
    std::printf("\n\n  n  %-26s %-26s %-26s %s\n", "IntlStrLeft", "IntlStrLeftB", "IntlStrRight", "IntlStrRightB");
    for (int n = 0; n <= IntlStrLenB(text.data()); ++n) showCuts(text.data(), n);
    return 0;
}

// ---- shared heap ---------------------------------------------------------

uint32_t word(uint32_t at) {
    uint32_t v;
    std::memcpy(&v, reinterpret_cast<const void*>(uintptr_t(at)), 4);
    return v;
}

// One list of the heap, from its head: each block's address, payload size
// and whether its signatures hold.
void showList(const char* name, uint32_t head) {
    std::printf("%s list:", name);
    if (!head) std::printf(" empty");
    uint32_t at = head;
    for (int n = 0; at && n < 64; ++n) {
        std::printf("\n  block 0x%08X  payload 0x%08X  %u bytes%s", at, at + 20, word(at + 12),
                    MemSharedCheck(reinterpret_cast<void*>(uintptr_t(at + 20))) ? "" : "  DAMAGED");
        at = word(at + 4);
        if (at == head) break;
    }
    std::printf("\n");
}

// The header and both lists, read under the heap's own mutex, as a host
// guards what it keeps in the block.
void showHeap(uint32_t base) {
    if (!MemAcquireMutex()) {
        std::printf("the mutex could not be had\n");
        return;
    }
    std::printf("heap at 0x%08X: %u bytes, next free byte 0x%08X, end 0x%08X\n", word(base + 8), word(base + 4),
                word(base + 12), word(base + 16));
    showList("used", word(base + 24));
    showList("free", word(base + 20));
    MemReleaseMutex();
}

int cmdShm(int, char** argv) {
    int parsed = 0;
    if (!parseInt(argv[0], &parsed)) return 2;
    if (parsed < 64 || parsed > 0x1000000) {
        std::fprintf(stderr, "oxl shm: SIZE from 64 to 16777216 bytes, not %d\n", parsed);
        return 2;
    }
    unsigned long size = unsigned(parsed);
    LONG created = 0;
    void* view = MemSharedInit(&created, DWORD(size));
    if (!view) {
        std::fprintf(stderr, "MemSharedInit(%lu) gave 0: no block, or not at its address\n", size);
        return 1;
    }
    // A block made by another process has that process's size; the heap's
    // own header says it.
    DWORD heapSize = created ? DWORD(size) : word(uint32_t(reinterpret_cast<uintptr_t>(view)) + 4);
    if (!MemSharedInitHeap(view, heapSize, created)) {
        std::fprintf(stderr, "MemSharedInitHeap gave 0: the heap in the block is damaged\n");
        MemSharedTerminate();
        return 1;
    }
    std::printf("%s the shared block at %p; heap of %lu bytes\n", created ? "created" : "opened", view,
                (unsigned long)heapSize);
    std::printf("commands: alloc N | free ADDR | check ADDR | checkall | show | quit\n");
    uint32_t base = uint32_t(reinterpret_cast<uintptr_t>(view));
    char line[256], verb[32];
    while (std::printf("> "), std::fflush(stdout), std::fgets(line, sizeof line, stdin)) {
        long long value = 0;
        int n = std::sscanf(line, "%31s %lli", verb, &value);
        auto arg = static_cast<unsigned long>(value);
        if (n < 1) continue;
        void* p = reinterpret_cast<void*>(uintptr_t(arg));
        if (!std::strcmp(verb, "quit")) break;
        else if (!std::strcmp(verb, "show")) showHeap(base);
        else if (!std::strcmp(verb, "checkall")) std::printf("MemSharedCheckAll: %d\n", MemSharedCheckAll());
        else if (n < 2) std::printf("%s needs a number\n", verb);
        else if (!std::strcmp(verb, "alloc")) std::printf("MemSharedAlloc(%lu): %p\n", arg, MemSharedAlloc(DWORD(arg)));
        else if (!std::strcmp(verb, "free")) MemSharedFree(p), std::printf("freed %p\n", p);
        else if (!std::strcmp(verb, "check")) std::printf("MemSharedCheck(%p): %d\n", p, MemSharedCheck(p));
        else std::printf("unknown command: %s\n", verb);
    }
    MemSharedTerminate();
    return 0;
}

int cmdTour(int, char**) {
    std::printf("== NUMBER records: a length byte, an exponent byte, base-100 digits ==\n");
    for (int v : {0, 1, 2, 42, 99, -1, -42, -99, 100, -100}) showSmall(v);
    std::printf("\n== Negation flips the sign; negative digits are stored as 100 - d, ending in 65 ==\n");
    for (int v : {1, -1, 42, 0}) showNegate(small(v));
    std::printf("\n== Comparison: records order as their values ==\n");
    showCompare(small(-5), small(3));
    showCompare(small(7), small(7));
    showCompare(small(-1), small(-99));
    tagNUMBER null = {}, one;
    NumCreateSmall(&one, 1);
    std::printf("null vs 1: NumCompare gives %d (null is below every value)\n", NumCompare(&null, &one));
    std::printf("\n== Character environment ==\n");
    return cmdEnv(0, nullptr);
}

// Each command with the arguments it takes: at least `min`, at most `max`
// (-1: any number more).
struct Command {
    const char* name;
    int (*run)(int argc, char** argv);
    int min, max;
    const char* args;
    const char* what;
};
int cmdHelp(int, char**);
} // namespace
int OxlNum(int argc, char** argv); // oxl_num.cpp
int OxlFonts(int argc, char** argv); // oxl_fonts.cpp
int OxlOpen(int argc, char** argv);  // oxl_fonts.cpp
int OxlMask(int argc, char** argv); // oxl_mask.cpp
namespace {
constexpr Command kCommands[] = {
    {"tour", cmdTour, 0, 0, "", "a short walk through what the library does"},
    {"small", cmdSmall, 1, -1, "N...", "the records NumCreateSmall makes of integers (-99 to 99), byte by byte"},
    {"negate", cmdNegate, 1, 1, "N", "a record and its negation"},
    {"compare", cmdCompare, 2, 2, "A B", "NumCompare of two numbers"},
    {"env", cmdEnv, 0, 0, "", "the character environment settled at load"},
    {"version", cmdVersion, 0, 0, "", "the library's product and file versions"},
    {"profile", cmdProfile, 0, 0, "", "the regional settings in force, as FMTGetProfileIntl reads them"},
    {"calc", cmdCalc, 1, -1, "\"A op B\"", "one operation (+ - * /) on two numbers, e.g. \"1/3\""},
    {"chars", cmdChars, 1, 1, "TEXT",
     "how TEXT splits into characters and how the cutting functions cut it;\n"
     "                  \\xHH is a byte (LC_ALL=ja_JP.UTF-8: a Japanese system)"},
    {"conv", cmdConv, 1, 1, "VALUE", "a number through the long, dword, word, double, CY and DECIMAL\n"
                                      "                  conversions, and back"},
    {"shm", cmdShm, 1, 1, "SIZE",
     "the machine's shared heap (created with SIZE bytes when new); commands on\n"
     "                  stdin: alloc N, free ADDR, check ADDR, checkall, show, quit"},
    {"date", OxlDate, 1, -1, "TEXT...",
     "[OPTIONS] TEXT [PICTURE]: a typed date or time read as a host reads it (the\n"
     "                  DATDEF, its flags, the picture that read it) and written back;\n"
     "                  OPTIONS give settings in place of the profile's: --short PIC\n"
     "                  --long PIC --24h --sep S --country N --type date|time|datetime"},
    {"num", OxlNum, 2, 4, "SET ...",
     "SETTINGS VALUE [PICTURE] or SETTINGS read TEXT [PICTURE]: a number as plain\n"
     "                  text, currency (\"$\") or under a picture, and read back; SETTINGS us,\n"
     "                  de, fr, ch, ja or profile, or us/de: stored under us, shown under de"},
    // input masks
    {"mask", OxlMask, 3, 3, "MASK ...",
     "put|take|keys TEXT: a text put into the mask and taken out, or taken out;\n"
     "                  keys: typed into a masked edit control (Windows), text and\n"
     "                  caret after each key; \\L \\R \\H \\E \\D \\B: Left Right Home End Delete Backspace"},
    {"help", cmdHelp, 0, 0, "", "this text"},
    // dialog and font utilities (oxl_fonts.cpp)
    {"fonts", OxlFonts, 0, 0, "", "the font faces the library finds, with their character sets"},
    {"open", OxlOpen, 1, -1, "NAME ...",
     "NAME [FLAGS]: what CBOpenFile does with a name (FLAGS: read write readwrite\n"
     "                  exclusive denywrite denyread denynone parse delete create exist, or a number)"},
    // printing
    {"printers", OxlPrinters, 0, 0, "", "the default printer as the library finds it: names, driver, port, paper"},
    {"print", OxlPrint, 0, -1, "[TEXT...]",
     "a sample document through PagePrint to the default printer (a page of 15\n"
     "                  by 21 inches tiled over the sheets, framed, two copies), or lines of TEXT"},
    // the printer setup dialog and paper queries (oxl_setup.cpp)
    {"papers", OxlPapers, 0, 0, "", "the default printer's papers and bins with their sizes, and its default paper"},
    {"setup", OxlSetup, 0, 2, "[--shot F]", "the printer setup dialog on the default printer (Windows); --shot FILE.png:\n"
                                            "                  the dialog saved as a picture, then cancelled"},
};

void usage(FILE* to) {
    std::fprintf(to, "usage: oxl COMMAND [ARGUMENTS]\n"
                     "Numbers are decimal, scientific (1.5e3) or hexadecimal (0xFF), from 1E-128 to 1E+118.\n\n");
    for (const Command& c : kCommands) std::fprintf(to, "  %-7s %-8s %s\n", c.name, c.args, c.what);
}

int cmdHelp(int, char**) {
    usage(stdout);
    return 0;
}

// The arguments in the library's code page. Natively they come in the
// terminal's encoding (the locale's codeset, UTF-8 as a rule); the library's
// ANSI code page follows the same locale, as it does under Windows, and is
// named here as a host would know it. A Windows console hands them over in
// the code page already.
#ifndef _WIN32
struct PageOfLocale {
    const char* prefix;
    const char* page;
};
constexpr PageOfLocale kPages[] = {{"ja", "CP932"},    {"zh_CN", "CP936"}, {"zh_SG", "CP936"}, {"zh_TW", "CP950"},
                                   {"zh_HK", "CP950"}, {"ko", "CP949"},    {"ar", "CP1256"},   {"he", "CP1255"}};

const char* libraryPage() {
    const char* name = std::setlocale(LC_CTYPE, nullptr);
    for (const PageOfLocale& p : kPages)
        if (name && std::strncmp(name, p.prefix, std::strlen(p.prefix)) == 0) return p.page;
    return "CP1252";
}

// `text` from one encoding to another; false when it has a sequence that
// the target can't hold.
bool convert(const char* to, const char* from, const std::string& text, std::string* out) {
    iconv_t cd = iconv_open(to, from);
    if (cd == iconv_t(-1)) return false;
    std::string result(text.size() * 4 + 4, '\0');
    char* in = const_cast<char*>(text.data());
    char* at = result.data();
    size_t inLeft = text.size(), outLeft = result.size();
    bool ok = iconv(cd, &in, &inLeft, &at, &outLeft) != size_t(-1);
    iconv_close(cd);
    result.resize(result.size() - outLeft);
    *out = result;
    return ok;
}

bool toLibrary(int argc, char** argv, std::vector<std::string>* held) {
    const char* terminal = nl_langinfo(CODESET);
    held->reserve(size_t(argc)); // argv points into the strings: they must not move
    for (int i = 0; i < argc; ++i) {
        held->emplace_back();
        if (!convert(libraryPage(), terminal, argv[i], &held->back())) {
            std::fprintf(stderr, "oxl: argument %d has characters that code page %s can't hold\n", i + 1,
                         libraryPage() + 2);
            return false;
        }
        argv[i] = held->back().data();
    }
    return true;
}

std::string fromLibrary(const std::string& text) {
    std::string out;
    return convert(nl_langinfo(CODESET), libraryPage(), text, &out) ? out : "?";
}
std::string fromShiftJis(const std::string& text) {
    std::string out;
    return convert(nl_langinfo(CODESET), "CP932", text, &out) ? out : "?";
}
#else
bool toLibrary(int, char**, std::vector<std::string>*) { return true; }
std::string fromLibrary(const std::string& text) { return text; }
std::string fromShiftJis(const std::string& text) { return text; }
#endif

} // namespace

std::string OxlFromLibrary(const std::string& text) { return fromLibrary(text); }
std::string OxlFromShiftJis(const std::string& text) { return fromShiftJis(text); }

int main(int argc, char** argv) {
#ifndef _WIN32
    std::setlocale(LC_ALL, "");
#endif
    if (argc < 2) {
        usage(stderr);
        return 2;
    }
    if (!std::strcmp(argv[1], "-h") || !std::strcmp(argv[1], "--help")) return cmdHelp(0, nullptr);
    for (const Command& c : kCommands) {
        if (std::strcmp(argv[1], c.name) != 0) continue;
        int n = argc - 2;
        if (n < c.min || (c.max >= 0 && n > c.max)) {
            std::fprintf(stderr, "oxl %s: %s, got %d\nusage: oxl %s%s%s\n", c.name,
                         c.max == 0 ? "takes no arguments" : c.min == c.max ? (c.min == 1 ? "takes one argument" : "takes two arguments")
                                                                            : "takes at least one argument",
                         n, c.name, *c.args ? " " : "", c.args);
            return 2;
        }
        std::vector<std::string> held;
        if (!toLibrary(n, argv + 2, &held)) return 2;
        return c.run(n, argv + 2);
    }
    std::fprintf(stderr, "oxl: no command '%s'\n", argv[1]);
    usage(stderr);
    return 2;
}
