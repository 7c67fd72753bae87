// The walking functions of the string family on arbitrary bytes, under a
// language chosen by the first byte. Every output buffer is malloc'd to
// exactly the most its function may write, so ASan catches a byte written
// past it; the texts are exact copies too, so a read past a terminator shows.
// Checked: counts agree with the text written, and no result begins or ends
// inside a double-byte character of the text.
//
// Input: [language] [a] [b] [c lo] [c hi] text 00 other
//   a, b: signed counts and positions; c: unused (a character value once);
//   other: the insert and the set.
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "fuzz_intl.h"

namespace {

char* s; // the text
int len;
std::vector<int> kind; // IntlIsNthByteDB of each byte: 1 lead, 2 trail, 0 otherwise

// No double-byte character of s is cut at byte i.
bool Boundary(long i) { return i <= 0 || i >= len || kind[size_t(i)] != 2; }

// dst holds n bytes of s from `from`, where a half of a double-byte character becomes a space; its function gave n.
void RequireBytes(const char* dst, int from, int n, int got) {
    FuzzRequire(int(std::strlen(dst)) == n && got == n);
    for (int i = 0; i < n; ++i)
        FuzzRequire(dst[i] == ((i == 0 && !Boundary(from)) || (i == n - 1 && !Boundary(from + n)) ? ' ' : s[from + i]));
}

// dst holds `chars` whole characters of s from `from`.
void RequireWhole(const char* dst, const char* from, long chars) {
    long n = long(std::strlen(dst));
    FuzzRequire(IntlStrLen(const_cast<char*>(dst)) == chars && std::memcmp(dst, from, size_t(n)) == 0);
    FuzzRequire(Boundary(from - s) && Boundary(from - s + n));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 5) return 0;
    IntlUnder under(kFuzzLanguages[data[0] % std::size(kFuzzLanguages)]);
    int a = static_cast<signed char>(data[1]), b = static_cast<signed char>(data[2]), db = IntlDBCSEnabled();
    std::vector<std::string> texts = FuzzTexts(data + 5, size - 5, 2);
    len = int(texts[0].size());
    char *o = FuzzDup(texts[1]), *d = FuzzDup("", size_t(len) + 1), *wide = FuzzDup("", texts[1].size() + size_t(2 * len) + 1);
    s = FuzzDup(texts[0]);
    int start = std::max(a, 0), n = std::clamp(a, 0, len), mid = start > len ? 0 : std::clamp(b, 0, len - start);
    kind.assign(size_t(len) + 1, 0);
    for (int i = 0; i < len; ++i) kind[size_t(i)] = IntlIsNthByteDB(s, i);
    for (int i = 0; i < len; ++i) FuzzRequire((kind[size_t(i)] == 1) == (kind[size_t(i) + 1] == 2)); // a trail byte follows each lead byte
    RequireBytes(d, 0, n, IntlStrLeftB(d, s, a));
    RequireBytes(d, len - n, n, IntlStrRightB(d, s, a));
    RequireBytes(d, std::min(start, len), mid, IntlStrMidB(d, s, a, b));
    RequireWhole(d, s, IntlStrLeft(d, s, a));
    long right = IntlStrRight(d, s, a);
    RequireWhole(d, s + len - std::strlen(d), right);
    mid = IntlStrMid(d, s, a, b);
    if (char* from = db ? IntlStrNthChar(s, start) : start <= len ? s + start : nullptr) RequireWhole(d, from, mid);
    FuzzRequire(IntlStrTrim(d, s) == IntlStrLen(d) && IntlStripEndSpace(d, s) == d);
    RequireWhole(d, s, IntlStrLen(d));
    // The longest a replacement can be, and a full-width form.
    FuzzRequire(IntlStrReplace(wide, s, o, a, b) == IntlStrLen(wide) && IntlStrReplaceB(wide, s, o, a, b) == int(std::strlen(wide)));
    FuzzRequire(IntlStrJapanFull(wide + texts[1].size(), s) >= 0 && IntlStrJapanHalf(d, s) >= 0);
    char* at = IntlStrSearch(s, o);
    FuzzRequire((!at || (Boundary(at - s) && *at && std::strchr(o, *at))) && texts[0] == s);
    for (char* p : {s, o, d, wide}) std::free(p);
    return 0;
}
