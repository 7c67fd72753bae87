// The long date picture as the profile store holds it may quote separators
// together with words ("d'. de 'MMMM"). The picture grammar wants separators
// bare, so each quoted run is rewritten: separators stand bare and every
// stretch between them keeps quotes of its own ("d.' de 'MMMM").
//
// The result is built in a work buffer; a result that would not fit the
// caller's room leaves the picture as it was.
#include "fmtint.h"

#include <oxlrt31/intl.h>

#include <cstring>

namespace {

constexpr size_t kWorkRoom = 256;

bool isSeparator(char c) { return c != 0 && std::strchr(".-/:\\,", c) != nullptr; }
bool isBlank(char c) { return c == ' '; }

// Bytes of the character at p, which ends before `end`: two for a lead
// byte with its trail in double-byte mode, else one.
size_t charLength(const char* p, const char* end) {
    return IntlDBCSEnabled() && IntlIsKanji(BYTE(*p)) && p + 1 < end && p[1] ? 2 : 1;
}

struct Writer {
    char text[kWorkRoom];
    size_t length = 0;
    size_t room;
    bool overflow = false;

    void Put(const char* p, size_t n) {
        if (length + n >= room) {
            overflow = true;
            return;
        }
        std::memcpy(text + length, p, n);
        length += n;
    }
    void Put(char c) { Put(&c, 1); }
};

// A quoted run [begin, end), its quotes not included.
void rewriteRun(Writer& out, const char* begin, const char* end) {
    bool separators = false, words = false;
    for (const char* p = begin; p < end; p += charLength(p, end)) {
        if (isSeparator(*p))
            separators = true;
        else if (!isBlank(*p))
            words = true;
    }
    if (!words) return out.Put(begin, size_t(end - begin));
    if (!separators) return out.Put(begin - 1, size_t(end - begin) + 2);
    bool quoted = false;
    for (const char* p = begin; p < end; p += charLength(p, end)) {
        if (isSeparator(*p) == quoted) {
            out.Put('\'');
            quoted = !quoted;
        }
        out.Put(p, charLength(p, end));
    }
    if (quoted) out.Put('\'');
}

// Country 358 writes a suffix after the month name unquoted ("MMMMta"):
// the "t" after the first run of "M" and the character after it get quotes.
void quoteMonthSuffix(Writer& out) {
    out.text[out.length] = 0;
    const char* m = IntlStrChr(out.text, 'M');
    if (!m) return;
    while (*m == 'M') ++m;
    if (*m != 't') return;
    size_t n = 1 + (m[1] ? charLength(m + 1, m + std::strlen(m)) : 0);
    char tail[kWorkRoom];
    std::strcpy(tail, m);
    out.length = size_t(m - out.text);
    out.Put('\'');
    out.Put(tail, n);
    out.Put('\'');
    out.Put(tail + n, std::strlen(tail + n));
}

} // namespace

void FMTRewriteLongDatePic(char* picture, size_t size, LONG iCountry) {
    Writer out;
    out.room = size < kWorkRoom ? size : kWorkRoom;
    const char* p = picture;
    while (const char* open = IntlStrChr(p, '\'')) {
        const char* close = IntlStrChr(open + 1, '\'');
        if (!close) break;
        out.Put(p, size_t(open - p));
        rewriteRun(out, open + 1, close);
        p = close + 1;
    }
    out.Put(p, std::strlen(p));
    if (iCountry == 358 && !out.overflow) quoteMonthSuffix(out);
    if (out.overflow) return;
    std::memcpy(picture, out.text, out.length);
    picture[out.length] = 0;
}
