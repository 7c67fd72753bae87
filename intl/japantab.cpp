// The tables are constant data. The reverse table is derived from the forward
// ones at compile time, so that it is their exact inverse, plus three codes
// that have a half-width form without being one.
#include "japantab.h"

#include <algorithm>
#include <array>

namespace {

struct Pair {
    BYTE byte;
    WORD code;
};

// Punctuation of 0x20-0x7E; digits and letters follow a rule.
constexpr Pair kAsciiPunct[] = {
    {0x20, 0x8140}, {0x21, 0x8149}, {0x22, 0x8168}, {0x23, 0x8194}, {0x24, 0x8190}, {0x25, 0x8193},
    {0x26, 0x8195}, {0x27, 0x8166}, {0x28, 0x8169}, {0x29, 0x816A}, {0x2A, 0x8196}, {0x2B, 0x817B},
    {0x2C, 0x8143}, {0x2D, 0x817C}, {0x2E, 0x8144}, {0x2F, 0x815E}, {0x3A, 0x8146}, {0x3B, 0x8147},
    {0x3C, 0x8183}, {0x3D, 0x8181}, {0x3E, 0x8184}, {0x3F, 0x8148}, {0x40, 0x8197}, {0x5B, 0x816D},
    {0x5C, 0x818F}, {0x5D, 0x816E}, {0x5E, 0x814F}, {0x5F, 0x8151}, {0x60, 0x8165}, {0x7B, 0x816F},
    {0x7C, 0x8162}, {0x7D, 0x8170}, {0x7E, 0x8160},
};

// 0xA0 to 0xDF; 0xA0 has no full-width form.
constexpr WORD kKana[64] = {
    0x0000, 0x8142, 0x8175, 0x8176, 0x8141, 0x8145, 0x8392, 0x8340, // A0
    0x8342, 0x8344, 0x8346, 0x8348, 0x8383, 0x8385, 0x8387, 0x8362, // A8
    0x815B, 0x8341, 0x8343, 0x8345, 0x8347, 0x8349, 0x834A, 0x834C, // B0
    0x834E, 0x8350, 0x8352, 0x8354, 0x8356, 0x8358, 0x835A, 0x835C, // B8
    0x835E, 0x8360, 0x8363, 0x8365, 0x8367, 0x8369, 0x836A, 0x836B, // C0
    0x836C, 0x836D, 0x836E, 0x8371, 0x8374, 0x8377, 0x837A, 0x837D, // C8
    0x837E, 0x8380, 0x8381, 0x8382, 0x8384, 0x8386, 0x8388, 0x8389, // D0
    0x838A, 0x838B, 0x838C, 0x838D, 0x838F, 0x8393, 0x814A, 0x814B, // D8
};

// A base byte followed by 0xDE, sorted by base byte.
constexpr Pair kVoiced[] = {
    {0xB3, 0x8394}, {0xB6, 0x834B}, {0xB7, 0x834D}, {0xB8, 0x834F}, {0xB9, 0x8351}, {0xBA, 0x8353},
    {0xBB, 0x8355}, {0xBC, 0x8357}, {0xBD, 0x8359}, {0xBE, 0x835B}, {0xBF, 0x835D}, {0xC0, 0x835F},
    {0xC1, 0x8361}, {0xC2, 0x8364}, {0xC3, 0x8366}, {0xC4, 0x8368}, {0xCA, 0x836F}, {0xCB, 0x8372},
    {0xCC, 0x8375}, {0xCD, 0x8378}, {0xCE, 0x837B},
};

// A base byte followed by 0xDF.
constexpr Pair kSemiVoiced[] = {{0xCA, 0x8370}, {0xCB, 0x8373}, {0xCC, 0x8376}, {0xCD, 0x8379}, {0xCE, 0x837C}};

constexpr WORD asciiFull(BYTE b) {
    if (b >= '0' && b <= '9') return WORD(0x824F + (b - '0'));
    if (b >= 'A' && b <= 'Z') return WORD(0x8260 + (b - 'A'));
    if (b >= 'a' && b <= 'z') return WORD(0x8281 + (b - 'a'));
    for (const Pair& p : kAsciiPunct)
        if (p.byte == b) return p.code;
    return 0;
}

struct Reverse {
    WORD code;
    BYTE bytes[2]; // the second is 0 for a one-byte form
};

constexpr size_t kReverseRows = 187;
constexpr WORD kFirstCode = 0x8140, kLastCode = 0x8396;

constexpr std::array<Reverse, kReverseRows> buildReverse() {
    std::array<Reverse, kReverseRows> t{};
    size_t n = 0;
    for (int b = 0x20; b <= 0x7E; ++b) t[n++] = {asciiFull(BYTE(b)), {BYTE(b), 0}};
    for (int b = 0xA1; b <= 0xDF; ++b) t[n++] = {kKana[b - 0xA0], {BYTE(b), 0}};
    for (const Pair& p : kVoiced) t[n++] = {p.code, {p.byte, 0xDE}};
    for (const Pair& p : kSemiVoiced) t[n++] = {p.code, {p.byte, 0xDF}};
    // Codes with a half-width form of their own that no half-width form converts to.
    t[n++] = {0x838E, {0xDC, 0}};
    t[n++] = {0x8395, {0xB6, 0}};
    t[n++] = {0x8396, {0xB9, 0}};
    std::sort(t.begin(), t.end(), [](const Reverse& a, const Reverse& b) { return a.code < b.code; });
    return t;
}

constexpr std::array<Reverse, kReverseRows> kReverse = buildReverse();

constexpr bool reverseIsWellFormed() {
    for (size_t i = 0; i < kReverseRows; ++i) {
        if (kReverse[i].code < kFirstCode || kReverse[i].code > kLastCode) return false;
        if (i && kReverse[i - 1].code >= kReverse[i].code) return false; // sorted, no code twice
    }
    return true;
}
static_assert(reverseIsWellFormed(), "the reverse table is sorted, unique and within 8140-8396");

} // namespace

WORD IntlpJapanFullOf(BYTE b) {
    if (b >= 0x20 && b <= 0x7E) return asciiFull(b);
    if (b >= 0xA0 && b <= 0xDF) return kKana[b - 0xA0];
    return 0;
}

WORD IntlpJapanMarkedOf(BYTE b, BYTE mark) {
    const Pair* first = mark == 0xDE ? kVoiced : mark == 0xDF ? kSemiVoiced : nullptr;
    if (!first) return 0;
    const Pair* last = mark == 0xDE ? std::end(kVoiced) : std::end(kSemiVoiced);
    const Pair* p = std::lower_bound(first, last, b, [](const Pair& row, BYTE v) { return row.byte < v; });
    return p != last && p->byte == b ? p->code : 0;
}

int IntlpJapanHalfOf(WORD code, BYTE out[2]) {
    if (code < kFirstCode || code > kLastCode) return 0;
    size_t lo = 0, hi = kReverseRows; // bisection over [lo, hi)
    while (lo < hi) {
        size_t mid = lo + (hi - lo) / 2;
        if (kReverse[mid].code < code) lo = mid + 1;
        else hi = mid;
    }
    if (lo == kReverseRows || kReverse[lo].code != code) return 0;
    out[0] = kReverse[lo].bytes[0];
    out[1] = kReverse[lo].bytes[1];
    return out[1] ? 2 : 1;
}
