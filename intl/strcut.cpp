// Measuring and cutting: the character-counted functions, their byte-counted
// forms, and strncpy by characters. The single-byte paths use memmove, so
// any overlap is safe; the double-byte paths copy forwards, so a dst at or
// below src is.
#include "intlpriv.h"

namespace {

int clamp(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

int terminate(char* dst, int bytes, int result) {
    dst[bytes] = 0;
    return result;
}

// Bytes [start, start + n) of src, limited to the text; a negative n gives "".
int midBytes(char* dst, const char* src, int start, int n) {
    int len = IntlpLen(src);
    start = start < 0 ? 0 : start;
    if (start > len || n < 0) return terminate(dst, 0, 0);
    n = n > len - start ? len - start : n;
    std::memmove(dst, src + start, size_t(n));
    return terminate(dst, n, n);
}

int rightBytesSB(char* dst, const char* src, int n) {
    int len = IntlpLen(src);
    return n < 1 ? terminate(dst, 0, 0) : midBytes(dst, src, len - clamp(n, 0, len), n);
}

// The first n bytes of src by characters; a double-byte character that the
// count would cut leaves a space in its place, so exactly n bytes are written.
void copyBytesWhole(char* dst, const char* src, int n) {
    while (n > 0 && *src) {
        const char* next = IntlpNext(src);
        if (next - src > n) {
            *dst = ' ';
            return;
        }
        n -= int(next - src);
        while (src < next) *dst++ = *src++;
    }
}

int leftDB(char* dst, const char* src, int n) {
    int bytes = 0;
    int chars = IntlpCopyChars(dst, src, n < 0 ? 0 : n, &bytes);
    return terminate(dst, bytes, chars);
}

int rightDB(char* dst, const char* src, int n) {
    int count = IntlpCount(src);
    if (n < 1 || count == 0) return terminate(dst, 0, 0);
    n = n > count ? count : n;
    const char* from = IntlpNth(src, count - n);
    std::memmove(dst, from, std::strlen(from) + 1);
    return n;
}

int midDB(char* dst, const char* src, int start, int n) {
    const char* from = IntlpNth(src, start < 0 ? 0 : start);
    if (!from || n < 0) return terminate(dst, 0, 0);
    return leftDB(dst, from, n);
}

int leftBytesDB(char* dst, const char* src, int n) {
    n = clamp(n, 0, IntlpLen(src));
    copyBytesWhole(dst, src, n);
    return terminate(dst, n, n);
}

int rightBytesDB(char* dst, const char* src, int n) {
    int len = IntlpLen(src);
    if (n < 1 || len == 0) return terminate(dst, 0, 0);
    n = n > len ? len : n;
    const char* keep = src + (len - n);
    const char* p = src;
    while (p < keep) {
        const char* next = IntlpNext(p);
        if (next > keep) break; // a double-byte character straddles the cut
        p = next;
    }
    bool straddles = p < keep;
    std::memmove(dst, keep, size_t(n) + 1);
    if (straddles) dst[0] = ' '; // its trail byte, now first
    return n;
}

int midBytesDB(char* dst, const char* src, int start, int n) {
    int len = IntlpLen(src);
    start = start < 0 ? 0 : start;
    if (start > len || n < 0) return terminate(dst, 0, 0);
    n = n > len - start ? len - start : n;
    int result = n;
    char* out = dst;
    int kind = n > 0 ? IntlIsNthByteDB(const_cast<char*>(src), start) : 0;
    if (kind == 2 || (kind == 1 && n < 2)) { // a half at the start
        *out++ = ' ';
        --n;
        ++start;
    }
    copyBytesWhole(out, src + start, n);
    return terminate(out, n, result);
}

} // namespace

int IntlpCopyChars(char* dst, const char* src, int n, int* bytes) {
    int chars = 0;
    char* out = dst;
    for (; chars < n && *src; ++chars) {
        const char* next = IntlpNext(src);
        while (src < next) *out++ = *src++;
    }
    *bytes = int(out - dst);
    return chars;
}

int OXLAPI IntlStrLen(const char* s) { return IntlpDBCS() ? IntlpCount(s) : IntlpLen(s); }

int OXLAPI IntlStrLenB(const char* s) { return IntlpLen(s); }

int OXLAPI IntlStrLeft(char* dst, const char* src, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? leftDB(dst, IntlpText(src), n) : midBytes(dst, IntlpText(src), 0, n < 0 ? 0 : n);
}

int OXLAPI IntlStrRight(char* dst, const char* src, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? rightDB(dst, IntlpText(src), n) : rightBytesSB(dst, IntlpText(src), n);
}

int OXLAPI IntlStrMid(char* dst, const char* src, int start, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? midDB(dst, IntlpText(src), start, n) : midBytes(dst, IntlpText(src), start, n);
}

int OXLAPI IntlStrLeftB(char* dst, const char* src, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? leftBytesDB(dst, IntlpText(src), n) : midBytes(dst, IntlpText(src), 0, n < 0 ? 0 : n);
}

int OXLAPI IntlStrRightB(char* dst, const char* src, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? rightBytesDB(dst, IntlpText(src), n) : rightBytesSB(dst, IntlpText(src), n);
}

int OXLAPI IntlStrMidB(char* dst, const char* src, int start, int n) {
    if (!dst) return 0;
    return IntlpDBCS() ? midBytesDB(dst, IntlpText(src), start, n) : midBytes(dst, IntlpText(src), start, n);
}

char* OXLAPI IntlStrnCpy(char* dst, const char* src, WORD n) {
    if (!dst) return dst;
    if (!IntlpDBCS()) return std::strncpy(dst, IntlpText(src), n);
    int bytes = 0;
    int chars = IntlpCopyChars(dst, IntlpText(src), n, &bytes);
    std::memset(dst + bytes, 0, size_t(n - chars)); // the terminator, then one zero byte a character
    return dst;
}
