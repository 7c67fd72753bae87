// oxl: the library's playground. It loads oxlrt31 as any host does and shows
// what the library makes of what you give it.
//
//   oxl tour                 a short walk through what the library does
//   oxl small N [N ...]      the records of small integers, byte by byte
//   oxl negate N             a record and its negation
//   oxl compare A B          NumCompare of two small integers
//   oxl env                  the character environment settled at load
//   oxl chars TEXT           how TEXT splits into characters, and how the
//                            cutting functions cut it (\xHH in TEXT is a byte;
//                            LC_ALL=ja_JP.UTF-8 gives a Japanese system)
#include "intl/intl.h"
#include "number/number.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

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
    std::printf("%6d  %-16s%s\n", v, hex(n).c_str(), NumIsZero(&n) ? "  (reads as zero)" : "");
}

void showNegate(int v) {
    tagNUMBER n;
    NumCreateSmall(&n, v);
    std::string before = hex(n);
    int r = NumNegate(&n);
    std::printf("-(%d): %s  ->  %s   (NumNegate gives %d)\n", v, before.c_str(), hex(n).c_str(), r);
}

void showCompare(int a, int b) {
    tagNUMBER x, y;
    NumCreateSmall(&x, a);
    NumCreateSmall(&y, b);
    static const char* const rel[] = {"<", "=", ">"};
    std::printf("%d %s %d   (NumCompare gives %d)\n", a, rel[NumCompare(&x, &y) + 1], b, NumCompare(&x, &y));
}

int cmdSmall(int argc, char** argv) {
    std::printf(" value  record (length byte first, hex)\n");
    for (int i = 0; i < argc; ++i) {
        int v;
        if (!parseInt(argv[i], &v)) return 2;
        showSmall(v);
    }
    return 0;
}

int cmdNegate(int argc, char** argv) {
    int v;
    if (argc != 1 || !parseInt(argv[0], &v)) return 2;
    showNegate(v);
    return 0;
}

int cmdCompare(int argc, char** argv) {
    int a, b;
    if (argc != 2 || !parseInt(argv[0], &a) || !parseInt(argv[1], &b)) return 2;
    showCompare(a, b);
    return 0;
}

int cmdEnv(int, char**) {
    std::printf("double-byte path: %s\nright-to-left:    %s\n", IntlDBCSEnabled() ? "on" : "off",
                IntlIsBiDiEnabled() ? "yes" : "no");
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

int cmdChars(int argc, char** argv) {
    if (argc != 1) return 2;
    std::string text = unescape(argv[0]);
    if (text.size() > 60) {
        std::fprintf(stderr, "oxl: at most 60 bytes, please\n");
        return 2;
    }
    std::printf("%s: %d bytes, %d characters (double-byte path %s)\ncharacters:", hexBytes(text.c_str()).c_str(),
                IntlStrLenB(text.data()), IntlStrLen(text.data()), IntlDBCSEnabled() ? "on" : "off");
    for (char* p = text.data(); *p; p += IntlBytesInNextChar(p)) {
        char one[3] = {p[0], IntlBytesInNextChar(p) > 1 ? p[1] : '\0', '\0'};
        std::printf(" %s", hexBytes(one).c_str());
    }
    std::printf("\n\n  n  %-26s %-26s %-26s %s\n", "IntlStrLeft", "IntlStrLeftB", "IntlStrRight", "IntlStrRightB");
    for (int n = 0; n <= IntlStrLenB(text.data()); ++n) showCuts(text.data(), n);
    return 0;
}

int cmdTour(int, char**) {
    std::printf("== NUMBER records: a length byte, an exponent byte, base-100 digits ==\n");
    for (int v : {0, 1, 2, 42, 99, -1, -42, -99, 100, -100}) showSmall(v);
    std::printf("\n== Negation flips the sign; negative digits are stored as 100 - d, ending in 65 ==\n");
    for (int v : {1, -1, 42, 0}) showNegate(v);
    std::printf("\n== Comparison: records order as their values ==\n");
    showCompare(-5, 3);
    showCompare(7, 7);
    showCompare(-1, -99);
    tagNUMBER null = {}, one;
    NumCreateSmall(&one, 1);
    std::printf("null vs 1: NumCompare gives %d (null is below every value)\n", NumCompare(&null, &one));
    std::printf("\n== Character environment ==\n");
    return cmdEnv(0, nullptr);
}

struct Command {
    const char* name;
    int (*run)(int argc, char** argv);
};
constexpr Command kCommands[] = {
    {"tour", cmdTour}, {"small", cmdSmall}, {"negate", cmdNegate}, {"compare", cmdCompare}, {"env", cmdEnv},
    {"chars", cmdChars},
};

int usage() {
    std::fprintf(stderr,
                 "usage: oxl tour | small N... | negate N | compare A B | env | chars TEXT\n"
                 "  tour     a short walk through what the library does\n"
                 "  small    the records of small integers, byte by byte\n"
                 "  negate   a record and its negation\n"
                 "  compare  NumCompare of two small integers\n"
                 "  env      the character environment settled at load\n"
                 "  chars    how TEXT splits into characters and how the cutting functions\n"
                 "           cut it; \\xHH is a byte (LC_ALL=ja_JP.UTF-8: a Japanese system)\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage();
    for (const Command& c : kCommands)
        if (std::strcmp(argv[1], c.name) == 0) return c.run(argc - 2, argv + 2);
    return usage();
}
