// A user-form number picture to its tokenised form: the separators inside
// each digit run and the currency forms become single-byte tokens, so that
// the stored picture follows the settings of whoever reads it.
#include "numpicint.h"

#include <cstring>

namespace {

bool isPlaceholder(char c) { return c == '#' || c == '0'; }

// Copies quoted text from its opening quote up to and including the closing
// one; a doubled quote or one behind a backslash does not close.
const char* copyQuoted(const char* p, FMTOut& w) {
    char q = *p;
    w.Put(*p++);
    while (*p) {
        size_t n = FMTCharBytes(p);
        if ((*p == q && p[1] == q) || (*p == '\\' && p[1] == q)) n = 2;
        else if (*p == q) {
            w.Put(*p);
            return p + 1;
        }
        w.Put(p, n);
        p += n;
    }
    return p;
}

// A digit run: TOK_RUNSTART, the placeholders with their separators as
// tokens, TOK_RUNEND. A thousands character not followed by a placeholder
// stays in the input; a decimal character is taken and may end the run.
const char* tokenizeRun(const FMTNUMSET& set, const char* p, FMTOut& w) {
    w.Put(char(TOK_RUNSTART));
    for (;;) {
        if (isPlaceholder(*p)) {
            w.Put(*p++);
        } else if (set.chThousand && *p == set.chThousand) {
            if (!isPlaceholder(p[1])) break;
            w.Put(char(TOK_THOUSAND));
            ++p;
        } else if (set.chDecimal && *p == set.chDecimal) {
            w.Put(char(TOK_DECIMAL));
            if (!isPlaceholder(*++p)) break;
        } else {
            break;
        }
    }
    w.Put(char(TOK_RUNEND));
    return p;
}

struct Walk {
    const FMTNUMSET& set;
    FMTOut& w;
    int section = 0;
    bool behind = false;     // the walk is behind the section's digit run
    bool parenTaken = false; // section 1 took a literal "("
    long minusAt = -1;       // output offset of the last "-" form token of section 1
    bool negPrefixTaken = false, negSuffixTaken = false;
    char* start = nullptr;

    // Writes the token of a form standing at p; the length stepped over, or 0.
    size_t form(const char* p, const char* text, int token) {
        if (!FMTFormAt(p, text)) return 0;
        if (section == 1 && (token == TOK_NEGPREFIX || token == TOK_NEGSUFFIX)) {
            if (std::strcmp(text, "-") == 0) minusAt = long(w.p - start);
            (token == TOK_NEGPREFIX ? negPrefixTaken : negSuffixTaken) = true;
        }
        w.Put(char(token));
        return std::strlen(text);
    }

    const char* pad(const char* p) {
        const FMTCURRFORMS& f = set.forms;
        w.Put(char(TOK_PAD));
        if (!*++p) return p;
        if (section == 0 || section == 2) {
            if (FMTFormAt(p, f.szNegSuffix)) return w.Put(char(TOK_NEGSUFFIX)), p + std::strlen(f.szNegSuffix);
            if (section == 2 && FMTFormAt(p, f.szPosSuffix))
                return w.Put(char(TOK_POSSUFFIX)), p + std::strlen(f.szPosSuffix);
        } else if (FMTFormAt(p, f.szPosSuffix)) {
            return w.Put(char(TOK_POSSUFFIX)), p + std::strlen(f.szPosSuffix);
        }
        size_t n = FMTCharBytes(p);
        w.Put(p, n);
        return p + n;
    }

    const char* other(const char* p) {
        const FMTCURRFORMS& f = set.forms;
        size_t n = 0;
        if (section == 0 || section == 2)
            n = behind ? form(p, f.szPosSuffix, TOK_POSSUFFIX) : form(p, f.szPosPrefix, TOK_POSPREFIX);
        if (!n && !(section == 1 && behind && parenTaken))
            n = behind ? form(p, f.szNegSuffix, TOK_NEGSUFFIX) : form(p, f.szNegPrefix, TOK_NEGPREFIX);
        if (n) return p + n;
        if (section == 1 && (set.iNegCurr == 0 || set.iNegCurr == 4) && *p == '(') parenTaken = true;
        n = FMTCharBytes(p);
        w.Put(p, n);
        return p + n;
    }

    void run(const char* p) {
        while (*p) {
            if (*p == ';') {
                w.Put(*p++);
                ++section;
                behind = false;
            } else if (*p == '\'' || *p == '"') {
                p = copyQuoted(p, w);
            } else if (isPlaceholder(*p)) {
                p = tokenizeRun(set, p, w);
                behind = true;
            } else if (*p == '_') {
                p = pad(p);
            } else {
                p = other(p);
            }
        }
        // A lone "-" form of the negative section is a plain minus: only the
        // pair of both tokens reads as the currency form.
        if (minusAt >= 0 && negPrefixTaken != negSuffixTaken && start + minusAt < w.p) start[minusAt] = '-';
    }
};

} // namespace

void FMTpTokenize(const FMTNUMSET& set, const char* picture, char* out, size_t room) {
    FMTOut w{out, room};
    *out = 0;
    if (!*picture || std::strcmp(picture, "$") == 0 || FMTIsScientificPic(picture)) return w.Put(picture);
    Walk walk{set, w};
    walk.start = out;
    walk.run(picture);
}
