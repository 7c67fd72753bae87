// Replacing a range of a text by another text, counted in characters or bytes.
#include "intlpriv.h"

namespace {

// dst = the first `head` bytes of src, then insert, then tail (a pointer into
// src). The moves are ordered so that a dst overlapping src, at, below or
// above it, reads each part before it is overwritten. Gives the bytes written.
int splice(char* dst, const char* src, int head, const char* insert, const char* tail) {
    size_t ins = std::strlen(insert), rest = std::strlen(tail);
    if (dst <= src) {
        std::memmove(dst, src, size_t(head));
        std::memmove(dst + head + ins, tail, rest + 1);
    } else {
        std::memmove(dst + head + ins, tail, rest + 1);
        std::memmove(dst, src, size_t(head));
    }
    std::memmove(dst + head, insert, ins);
    return int(head + ins + rest);
}

int replaceBytes(char* dst, const char* src, const char* insert, int pos, int n) {
    int len = IntlpLen(src);
    pos = pos < 0 ? 0 : pos > len ? len : pos;
    n = n < 0 ? 0 : n > len - pos ? len - pos : n;
    return splice(dst, src, pos, insert, src + pos + n);
}

int replaceChars(char* dst, const char* src, const char* insert, int pos, int n) {
    int count = IntlpCount(src);
    pos = pos < 0 ? 0 : pos > count ? count : pos;
    n = n < 0 ? 0 : n > count - pos ? count - pos : n;
    const char* at = IntlpNth(src, pos);
    splice(dst, src, int(at - src), insert, IntlpNth(at, n));
    return IntlpCount(dst);
}

// The byte cut divides double-byte characters at pos and at pos + n: each half
// that stays in dst becomes a space.
int replaceBytesDB(char* dst, const char* src, const char* insert, int pos, int n) {
    int len = IntlpLen(src);
    pos = pos < 0 ? 0 : pos > len ? len : pos;
    n = n < 0 ? 0 : n > len - pos ? len - pos : n;
    char* s = const_cast<char*>(src);
    bool headCut = IntlIsNthByteDB(s, pos) == 2;
    bool tailCut = pos + n < len && IntlIsNthByteDB(s, pos + n) == 2;
    int written = splice(dst, src, pos, insert, src + pos + n);
    if (headCut) dst[pos - 1] = ' ';
    if (tailCut) dst[written - (len - pos - n)] = ' ';
    return written;
}

} // namespace

int OXLAPI IntlStrReplace(char* dst, const char* src, const char* insert, int pos, int n) {
    if (!dst) return 0;
    const char *text = IntlpText(src), *with = IntlpText(insert);
    return IntlpDBCS() ? replaceChars(dst, text, with, pos, n) : replaceBytes(dst, text, with, pos, n);
}

int OXLAPI IntlStrReplaceB(char* dst, const char* src, const char* insert, int pos, int n) {
    if (!dst) return 0;
    const char *text = IntlpText(src), *with = IntlpText(insert);
    return IntlpDBCS() ? replaceBytesDB(dst, text, with, pos, n) : replaceBytes(dst, text, with, pos, n);
}
