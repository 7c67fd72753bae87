// The tokeniser and its variants. Sets are single bytes: on the double-byte
// path only single-byte characters are tested against them, so a delimiter
// is never found inside a double-byte character.
#include "intlpriv.h"

namespace {

bool inSet(const char* p, const char* next, const char* set) {
    return next - p == 1 && std::strchr(set, *p) != nullptr;
}

const char* skipSet(const char* p, const char* skip) {
    for (const char* next; *p && inSet(p, next = IntlpStep(p), skip);) p = next;
    return p;
}

// The first delimiter from p, or the terminator.
const char* firstDelim(const char* p, const char* delims) {
    for (const char* next; *p && !inSet(p, next = IntlpStep(p), delims);) p = next;
    return p;
}

// The first single-byte `quote` from p, or null.
const char* findQuote(const char* p, BYTE quote) {
    for (const char* next; quote && *p; p = next) {
        next = IntlpStep(p);
        if (next - p == 1 && BYTE(*p) == quote) return p;
    }
    return nullptr;
}

using EndRule = const char* (*)(const char* start, const char* delims, BYTE quote);

const char* plainEnd(const char* start, const char* delims, BYTE) { return firstDelim(start, delims); }

// "(" counts before its character is tested and ")" after, so "(" never ends
// a token and ")" only outside all parentheses (or past a stray one).
const char* nestedEnd(const char* p, const char* delims, BYTE) {
    int depth = 0;
    for (const char* next; *p; p = next) {
        next = IntlpStep(p);
        bool single = next - p == 1;
        if (single && *p == '(') ++depth;
        if (depth < 1 && inSet(p, next, delims)) break;
        if (single && *p == ')') --depth;
    }
    return p;
}

const char* quotedEnd(const char* cursor, const char* delims, BYTE quote) {
    for (;;) {
        const char* open = findQuote(cursor, quote);
        const char* close = open ? findQuote(IntlpStep(open), quote) : nullptr;
        const char* delim = firstDelim(cursor, delims);
        if (!close || !*delim || delim < open) return delim; // no pair, none behind, or before it
        cursor = close + 1;
    }
}

int getToken(char* out, char* input, const char* skip, const char* delims, WORD lead, int outSize, EndRule rule,
             BYTE quote) {
    if (!out || !input || !skip || !delims) return 0;
    const char* start = skipSet(input, skip);
    if (lead) {
        if (!*start || BYTE(*start) != BYTE(lead)) return 0;
        ++start;
    }
    const char* end = rule(start, delims, quote);
    size_t len = size_t(end - start);
    if (outSize > 0 && len + 1 > size_t(outSize)) return 0;
    std::memmove(out, start, len);
    out[len] = 0;
    return int(end - input);
}

} // namespace

int OXLAPI IntlStrGetToken(char* out, char* input, const char* skip, const char* delims, WORD lead, int outSize) {
    return getToken(out, input, skip, delims, lead, outSize, plainEnd, 0);
}

int OXLAPI IntlStrGetTokenNestedParens(char* out, char* input, const char* skip, const char* delims, WORD lead, int outSize) {
    return getToken(out, input, skip, delims, lead, outSize, nestedEnd, 0);
}

int OXLAPI IntlStrGetTokenQuoted(char* out, char* input, const char* skip, const char* delims, WORD lead, BYTE quote,
                                 int outSize) {
    return getToken(out, input, skip, delims, lead, outSize, quotedEnd, quote);
}

int OXLAPI IntlStrGetTokenPtr(char** token, char* input, const char* skip, const char* delims) {
    if (!token || !input || !skip || !delims) return 0;
    *token = input;
    return int(firstDelim(skipSet(input, skip), delims) - input);
}
