// Tokenised and old-form number pictures back to the user form under the
// settings in force. Untokenising moves a currency form to the side of the
// digits where the reader's settings put it.
#include "numpicint.h"

#include <cstring>

namespace {

bool copiedAsIs(const char* picture) {
    return !*picture || std::strcmp(picture, "$") == 0 || FMTIsScientificPic(picture);
}

// The first of ";", `token`, TOK_PAD (when `padStops`) or the end, from p.
char scanFor(const char* p, char token, bool padStops) {
    for (; *p; ++p)
        if (*p == ';' || *p == token || (padStops && *p == TOK_PAD)) return *p;
    return 0;
}

struct UnWalk {
    const FMTCURRFORMS& f;
    FMTOut& w;
    int section = 0;
    bool posPrefixSeen = false, negPrefixSeen = false;

    bool positiveSection() const { return section == 0 || section == 2; }

    const char* pad(const char* p) {
        char next = p[1];
        if (next == TOK_POSSUFFIX || next == TOK_NEGSUFFIX) {
            const char* mine = next == TOK_POSSUFFIX ? f.szPosSuffix : f.szNegSuffix;
            const char* other = next == TOK_POSSUFFIX ? f.szNegSuffix : f.szPosSuffix;
            if (std::strlen(mine) == 1 && !*other) w.Put('_'), w.Put(mine[0]);
            return p + 2;
        }
        w.Put('_');
        size_t n = FMTCharBytes(p + 1);
        w.Put(p + 1, n);
        return p + 1 + n;
    }

    void runStart(const char* p) {
        if (positiveSection() && !posPrefixSeen && *f.szPosPrefix) {
            if (scanFor(p, TOK_POSSUFFIX, true) == TOK_POSSUFFIX) w.Put(f.szPosPrefix);
            return;
        }
        if (section != 0 && !negPrefixSeen && *f.szNegPrefix && scanFor(p, TOK_NEGSUFFIX, true) == TOK_NEGSUFFIX)
            w.Put(f.szNegPrefix);
    }

    void runEnd(const char* p) {
        if (positiveSection() && posPrefixSeen && *f.szPosSuffix && scanFor(p, TOK_POSSUFFIX, true) != TOK_POSSUFFIX) {
            w.Put(f.szPosSuffix);
            return;
        }
        if (section != 0 && negPrefixSeen && *f.szNegSuffix && scanFor(p, TOK_NEGSUFFIX, false) != TOK_NEGSUFFIX)
            w.Put(f.szNegSuffix);
    }

    void run(const FMTNUMSET& set, const char* p) {
        while (*p) {
            switch (*p) {
            case TOK_THOUSAND: if (set.chThousand) w.Put(set.chThousand); break;
            case TOK_DECIMAL: if (set.chDecimal) w.Put(set.chDecimal); break;
            case TOK_POSPREFIX: w.Put(f.szPosPrefix), posPrefixSeen = true; break;
            case TOK_NEGPREFIX: w.Put(f.szNegPrefix), negPrefixSeen = true; break;
            case TOK_POSSUFFIX: w.Put(f.szPosSuffix); break;
            case TOK_NEGSUFFIX: w.Put(f.szNegSuffix); break;
            case TOK_RUNSTART: runStart(p + 1); break;
            case TOK_RUNEND: runEnd(p + 1); break;
            case TOK_PAD: p = pad(p); continue;
            case ';':
                w.Put(';');
                ++section;
                posPrefixSeen = negPrefixSeen = false;
                break;
            default: {
                size_t n = FMTCharBytes(p);
                w.Put(p, n);
                p += n;
                continue;
            }
            }
            ++p;
        }
    }
};

// The old form: separators are always "," and ".", literal text unquoted.
struct OldWalk {
    const FMTNUMSET& set;
    FMTOut& w;
    int section = 0;
    bool behind = false;

    const char* placeForm() const {
        const FMTCURRFORMS& f = set.forms;
        if (section == 0 || section == 2) return behind ? f.szPosSuffix : f.szPosPrefix;
        return behind ? f.szNegSuffix : f.szNegPrefix;
    }
    static bool stops(char c) { return c == ';' || c == '#' || c == '0' || c == '_' || c == '\'' || c == '"'; }

    const char* quoted(const char* p) {
        char q = *p;
        w.Put(*p++);
        while (*p && *p != q) {
            size_t n = FMTCharBytes(p);
            w.Put(p, n);
            p += n;
        }
        if (*p) w.Put(*p++);
        return p;
    }

    const char* digits(const char* p) {
        for (; *p == '#' || *p == '0' || *p == ',' || *p == '.'; ++p) {
            char c = *p == ',' ? set.chThousand : *p == '.' ? set.chDecimal : *p;
            if (c) w.Put(c);
        }
        if (*p == '%') w.Put(*p++);
        behind = true;
        return p;
    }

    const char* literal(const char* p) {
        const char* form = placeForm();
        w.Put('\'');
        size_t n = FMTCharBytes(p);
        w.Put(p, n);
        p += n;
        while (*p && !FMTFormAt(p, form) && !stops(*p) && !(*p == ' ' && stops(p[1]) && p[1])) {
            n = FMTCharBytes(p);
            w.Put(p, n);
            p += n;
        }
        w.Put('\'');
        if (FMTFormAt(p, form)) {
            w.Put(form);
            p += std::strlen(form);
        }
        return p;
    }

    void run(const char* p) {
        while (*p) {
            if (*p == '\'' || *p == '"') {
                p = quoted(p);
            } else if (*p == '#' || *p == '0') {
                p = digits(p);
            } else if (*p == ';') {
                w.Put(*p++);
                ++section;
                behind = false;
            } else if (*p == '_') {
                w.Put(*p++);
                size_t n = FMTCharBytes(p);
                w.Put(p, n);
                p += n;
            } else if (FMTFormAt(p, placeForm())) {
                const char* form = placeForm();
                w.Put(form);
                p += std::strlen(form);
            } else if (*p == ' ') {
                w.Put(*p++);
            } else {
                p = literal(p);
            }
        }
    }
};

} // namespace

void FMTpUnTokenize(const FMTNUMSET& set, const char* picture, char* out, size_t room) {
    FMTOut w{out, room};
    *out = 0;
    if (copiedAsIs(picture)) return w.Put(picture);
    UnWalk walk{set.forms, w};
    walk.run(set, picture);
}

void FMTpCnvOld(const FMTNUMSET& set, const char* picture, char* out, size_t room) {
    FMTOut w{out, room};
    *out = 0;
    if (copiedAsIs(picture)) return w.Put(picture);
    OldWalk walk{set, w};
    walk.run(picture);
}
