// The walking functions of the string family on arbitrary bytes, under a
// language chosen by the first byte. Every output buffer is malloc'd to
// exactly the size its result needs, so ASan catches a byte written past
// it; the texts are exact copies too, so a read past a terminator shows.
// Results are checked against a small model built on CharNextA, the one
// stepping primitive the family rests on.
//
// Input: [language] [a] [b] [c lo] [c hi] text 00 other
//   a, b: signed counts and positions; c: a character value; other: the
//   insert, the set and the second text of the comparisons.
#include "fuzz_check.h"

#include <oxlrt31/intl.h>
#include "os/osl.h"
#include "fuzz_intl.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

char* Buffer(size_t n) {
    char* p = static_cast<char*>(std::malloc(n ? n : 1));
    std::memset(p, 0xEE, n ? n : 1);
    return p;
}

const char* Next(const char* p) { return gOsl.text->CharNextA(p); }
bool DB() { return IntlDBCSEnabled() != 0; }
const char* Step(const char* p) { return DB() ? Next(p) : (*p ? p + 1 : p); }
WORD Value(const char* p) {
    const char* n = Next(p);
    return n - p > 1 ? WORD(BYTE(p[0]) << 8 | BYTE(p[1])) : BYTE(p[0]);
}

// Where each step of the path in force begins, and the end.
std::vector<int> Offsets(const char* s) {
    std::vector<int> off;
    const char* p = s;
    for (; *p; p = Step(p)) off.push_back(int(p - s));
    off.push_back(int(p - s));
    return off;
}
int Count(const std::string& s) { return int(Offsets(s.c_str()).size()) - 1; }

// Byte kinds as IntlIsNthByteDB gives them: 1 lead, 2 trail, 0 otherwise.
std::vector<int> Kinds(const char* s, int len) {
    std::vector<int> kind(size_t(len) + 2, 0);
    if (!DB()) return kind;
    for (const char* p = s; *p;) {
        const char* n = Next(p);
        if (n - p > 1) kind[size_t(p - s)] = 1, kind[size_t(p - s) + 1] = 2;
        p = n;
    }
    return kind;
}

// White space of the character at p, stepping with `next`.
bool WhiteBy(const char* p, const char* n) {
    if (n - p > 1) return DB() && Value(p) == IntlDBCSBlank();
    BYTE b = BYTE(*p);
    return b == ' ' || (b >= 9 && b <= 13);
}
bool WhiteChar(const char* p) { return WhiteBy(p, Next(p)); }
bool WhiteStep(const char* p) { return WhiteBy(p, Step(p)); }

int Clamp(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

// Bytes [from, from + n) of s; a trail byte first or a lead byte last, whose
// other half is left behind, becomes a space.
std::string CutBytes(const std::string& s, const std::vector<int>& kind, int from, int n) {
    std::string out = s.substr(size_t(from), size_t(n));
    if (n > 0 && kind[size_t(from)] == 2) out[0] = ' ';
    if (n > 0 && kind[size_t(from + n - 1)] == 1) out[size_t(n) - 1] = ' ';
    return out;
}

// Calls f(dst) with dst of exactly expected.size() + 1 bytes; the text must
// come out as expected and the result as wanted.
template <class F> void Cut(const std::string& expected, int wanted, F f) {
    char* dst = Buffer(expected.size() + 1);
    int got = f(dst);
    FuzzRequire(got == wanted);
    FuzzRequire(std::memcmp(dst, expected.c_str(), expected.size() + 1) == 0);
    std::free(dst);
}

void Walk(const std::string& text, const std::string& other, int a, int b, WORD c) {
    const int len = int(text.size());
    char* s = FuzzDup(text);
    char* t = FuzzDup(other);
    const std::vector<int> off = Offsets(s);
    const int count = int(off.size()) - 1;
    const std::vector<int> kind = Kinds(s, len);

    // Measuring and stepping.
    FuzzRequire(IntlStrLen(s) == count);
    FuzzRequire(IntlStrLenB(s) == len);
    int chars = 0; // by CharNextA, whichever path is on
    for (const char* p = s;; p = Next(p)) {
        int bytes = IntlBytesInNextChar(const_cast<char*>(p));
        FuzzRequire(bytes == int(Next(p) - p));
        FuzzRequire(IntlIsDBChar(const_cast<char*>(p)) == (bytes == 2));
        FuzzRequire(IntlStrIsNextChSpace(const_cast<char*>(p)) == (*p && WhiteChar(p)));
        if (!*p) break;
        ++chars;
    }
    char* db = IntlNextDBCInStr(s);
    FuzzRequire(!db || (db >= s && db < s + len && IntlIsDBChar(db)));
    for (int i = -1; i <= chars + 1; ++i) {
        char* nth = IntlStrNthChar(s, i);
        FuzzRequire((nth != nullptr) == (i >= 0 && i <= chars));
        FuzzRequire(!nth || (nth >= s && nth <= s + len && (i != chars || nth == s + len)));
        int isDB = IntlIsNthCharDB(s, i);
        FuzzRequire(isDB == (DB() && nth && *nth && Next(nth) - nth == 2));
    }
    for (int i = -1; i <= len + 1; ++i) FuzzRequire(IntlIsNthByteDB(s, i) == (i < 0 ? 0 : kind[size_t(i)]));
    if (len) {
        short first = IntlStrFirstChar(s), last = IntlStrLastChar(s);
        FuzzRequire(first == (Next(s) - s > 1 ? short(Value(s)) : short(static_cast<signed char>(*s))));
        const char* l = s;
        for (const char* p = s; *p; p = Next(p)) l = p;
        FuzzRequire(last == (Next(l) - l > 1 ? short(Value(l)) : short(static_cast<signed char>(*l))));
        FuzzRequire(IntlDBCSChar(s) == Value(s));
    } else {
        FuzzRequire(IntlStrFirstChar(s) == 0 && IntlStrLastChar(s) == 0);
    }
    char* sp = IntlStripStartSpace(s);
    char* bl = IntlStripStartBlank(s);
    FuzzRequire(sp >= s && sp <= s + len && bl >= s && bl <= s + len);
    for (const char* p = s; p < sp; p = Next(p)) FuzzRequire(*p && WhiteChar(p));

    // Cutting, by characters (steps of the path) and by bytes.
    {
        int k = Clamp(a, 0, count);
        Cut(text.substr(0, size_t(off[size_t(k)])), k, [&](char* d) { return IntlStrLeft(d, s, a); });
        int r = a < 1 || count == 0 ? 0 : a > count ? count : a;
        Cut(text.substr(size_t(off[size_t(count - r)])), r, [&](char* d) { return IntlStrRight(d, s, a); });
        int st = a < 0 ? 0 : a;
        if (st > count || b < 0) {
            Cut("", 0, [&](char* d) { return IntlStrMid(d, s, a, b); });
        } else {
            int m = b > count - st ? count - st : b;
            Cut(text.substr(size_t(off[size_t(st)]), size_t(off[size_t(st + m)] - off[size_t(st)])), m,
                [&](char* d) { return IntlStrMid(d, s, a, b); });
        }
    }
    {
        int k = Clamp(a, 0, len);
        Cut(CutBytes(text, kind, 0, k), k, [&](char* d) { return IntlStrLeftB(d, s, a); });
        int r = a < 1 || len == 0 ? 0 : a > len ? len : a;
        Cut(CutBytes(text, kind, len - r, r), r, [&](char* d) { return IntlStrRightB(d, s, a); });
        int st = a < 0 ? 0 : a;
        if (st > len || b < 0) {
            Cut("", 0, [&](char* d) { return IntlStrMidB(d, s, a, b); });
        } else {
            int m = b > len - st ? len - st : b;
            Cut(CutBytes(text, kind, st, m), m, [&](char* d) { return IntlStrMidB(d, s, a, b); });
        }
    }
    {
        int pos = Clamp(a, 0, count);
        int n = Clamp(b, 0, count - pos);
        std::string out = text.substr(0, size_t(off[size_t(pos)])) + other + text.substr(size_t(off[size_t(pos + n)]));
        Cut(out, Count(out), [&](char* d) { return IntlStrReplace(d, s, t, a, b); });
        pos = Clamp(a, 0, len);
        n = Clamp(b, 0, len - pos);
        std::string head = text.substr(0, size_t(pos)), tail = text.substr(size_t(pos + n));
        if (pos < len && kind[size_t(pos)] == 2) head.back() = ' ';
        if (pos + n < len && kind[size_t(pos + n)] == 2) tail[0] = ' ';
        out = head + other + tail;
        Cut(out, int(out.size()), [&](char* d) { return IntlStrReplaceB(d, s, t, a, b); });
    }
    {
        // strncpy by steps: k whole steps, then one zero byte for each step short.
        WORD n = WORD(BYTE(b) % 48);
        int k = n < count ? n : count;
        size_t bytes = size_t(off[size_t(k)]);
        size_t size = bytes + size_t(n - k);
        char* d = Buffer(size);
        FuzzRequire(IntlStrnCpy(d, s, n) == d);
        FuzzRequire(std::memcmp(d, s, bytes) == 0);
        for (size_t i = bytes; i < size; ++i) FuzzRequire(d[i] == 0);
        std::free(d);
    }

    // Case, in place and into dst.
    {
        char* u = FuzzDup(text);
        FuzzRequire(IntlStrUpper(u) == u && std::strlen(u) == size_t(len));
        FuzzRequire(IntlStrLower(u) == u && std::strlen(u) == size_t(len));
        std::free(u);
        char* d = Buffer(size_t(len) + 1);
        int n = IntlStrProper(d, s);
        FuzzRequire(std::strlen(d) == size_t(len) && n == Count(d));
        std::free(d);
    }

    // Trimming.
    {
        char* d = Buffer(size_t(len) + 1);
        int n = IntlStrTrim(d, s);
        size_t dl = std::strlen(d);
        FuzzRequire(dl <= size_t(len) && n == Count(d));
        // Blanks are gone but for single spaces between words.
        for (const char* p = d; *p; p = Step(p)) {
            const char* nx = Step(p);
            BYTE v = BYTE(*p);
            if (nx - p == 1) {
                FuzzRequire(v != 9 && v != 11 && v != 12);
                if (v == ' ') FuzzRequire(p > d && *nx && *nx != ' ');
            } else {
                FuzzRequire(!DB() || Value(p) != IntlDBCSBlank());
            }
        }
        std::free(d);

        char* in = FuzzDup(text);
        long kept = IntlStrTrimTrailing(in);
        size_t il = std::strlen(in);
        FuzzRequire(il <= size_t(len) && std::memcmp(in, s, il) == 0);
        FuzzRequire(kept == Count(in) && (len == 0 || il > 0));
        std::free(in);

        d = Buffer(size_t(len) + 1);
        FuzzRequire(IntlStripEndSpace(d, s) == d);
        dl = std::strlen(d);
        FuzzRequire(dl <= size_t(len) && std::memcmp(d, s, dl) == 0);
        // What went is white space, and what stays does not end in it.
        std::vector<int> doff = Offsets(s);
        bool seen = false;
        for (size_t i = 0; i + 1 < doff.size(); ++i) {
            if (doff[i] == int(dl)) seen = true;
            if (doff[i] >= int(dl)) FuzzRequire(WhiteStep(s + doff[i]));
            else if (doff[i + 1] == int(dl)) FuzzRequire(!WhiteStep(s + doff[i]));
        }
        FuzzRequire(seen || dl == size_t(len));
        std::free(d);

        in = FuzzDup(text);
        IntlStrStripSpace(in);
        FuzzRequire(std::strstr(s, in) != nullptr);
        std::free(in);
    }

    // Japanese forms: dst holds twice src plus one.
    {
        char* d = Buffer(2 * size_t(len) + 1);
        int n = IntlStrJapanFull(d, s);
        FuzzRequire(n >= 0 && n <= 2 * len && std::strlen(d) <= 2 * size_t(len));
        std::free(d);
        d = Buffer(2 * size_t(len) + 1);
        n = IntlStrJapanHalf(d, s);
        FuzzRequire(n >= 0 && n <= 2 * len && std::strlen(d) <= size_t(len));
        std::free(d);
        FuzzRequire(IntlIsKanji(BYTE(c)) <= 1 && IntlIsKatakana(BYTE(c)) <= 1);
        if (!DB()) FuzzRequire(IntlIsKanji(BYTE(c)) == 0);
    }

    // Comparing.
    FuzzRequire(IntlIsStrEqual(s, t) == (std::strcmp(s, t) == 0));
    FuzzRequire(IntlIsStrnEqual(s, t, WORD(a & 0xFF)) == (std::strncmp(s, t, size_t(a & 0xFF)) == 0));

    // Search: a given value, the value of one of the text's own characters,
    // and a set.
    {
        WORD values[3] = {c, 0, 0};
        if (count) values[1] = Value(s + off[size_t(Clamp(b, 0, count - 1))]);
        for (WORD v : values) {
            char* got = IntlStrChr(s, v);
            const char* want = nullptr;
            if (!DB()) {
                want = std::strchr(s, char(v & 0xFF));
            } else {
                for (const char* p = s;; p = Next(p)) {
                    if (!*p) {
                        if (v == 0) want = p;
                        break;
                    }
                    if (Value(p) == v) {
                        want = p;
                        break;
                    }
                }
            }
            FuzzRequire(got == want);
        }
        char* got = IntlStrSearch(s, t);
        const char* want = nullptr;
        if (!*t) {
            want = nullptr;
        } else if (!DB()) {
            want = std::strpbrk(s, t);
        } else {
            for (const char* p = s; *p && !want; p = Next(p))
                for (const char* q = t; *q; q = Next(q))
                    if (Value(p) == Value(q)) {
                        want = p;
                        break;
                    }
        }
        FuzzRequire(got == want);
    }

    // Nothing above that takes src wrote to it.
    FuzzRequire(std::memcmp(s, text.c_str(), size_t(len) + 1) == 0);
    FuzzRequire(std::memcmp(t, other.c_str(), other.size() + 1) == 0);
    std::free(s);
    std::free(t);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    unsigned char head[5] = {0, 0, 0, 0, 0};
    std::memcpy(head, data, size < 5 ? size : 5);
    const unsigned char* rest = data + (size < 5 ? size : 5);
    size_t restSize = size < 5 ? 0 : size - 5;
    const unsigned char* zero = static_cast<const unsigned char*>(std::memchr(rest, 0, restSize));
    std::string text(reinterpret_cast<const char*>(rest), zero ? size_t(zero - rest) : restSize);
    std::string other;
    if (zero) {
        const char* o = reinterpret_cast<const char*>(zero + 1);
        other.assign(o, strnlen(o, restSize - size_t(zero - rest) - 1));
    }
    IntlUnder under(kFuzzLanguages[head[0] % (sizeof kFuzzLanguages / sizeof kFuzzLanguages[0])]);
    Walk(text, other, static_cast<signed char>(head[1]), static_cast<signed char>(head[2]),
         WORD(head[3] | head[4] << 8));
    return 0;
}
