// Whether a number picture is valid under the settings in force.
#include "numpicint.h"

#include <cstring>

namespace {

struct SectionCheck {
    const FMTNUMSET& set;
    const char* p;
    const char* end;
    int section;
    bool* currencySeen;
    bool run = false, hashInFraction = false, zeroInInteger = false;
    bool minus = false, open = false, close = false;
    long decimalAt = -1, thousandAt = -1;
    const char* start = p;

    bool parensAllowed() const { return set.iNegCurr == 0 || set.iNegCurr == 4; }
    bool placeholderAt(const char* q) const { return q < end && (*q == '#' || *q == '0'); }

    // Steps over quoted text; false when it has no closing quote.
    bool quoted() {
        char q = *p++;
        while (p < end) {
            if ((*p == q || *p == '\\') && p + 1 < end && p[1] == q) p += 2;
            else if (*p == q) return ++p, true;
            else p += FMTCharBytes(p) > 1 && p + 1 < end ? 2 : 1;
        }
        return false;
    }

    bool digitRun() {
        if (run) return false; // one digit run a section
        run = true;
        while (p < end) {
            long at = long(p - start);
            char c = *p;
            if (c == '#') {
                if (decimalAt < 0 && zeroInInteger) return false;
                if (decimalAt >= 0) hashInFraction = true;
            } else if (c == '0') {
                if (decimalAt >= 0 && hashInFraction) return false;
                if (decimalAt < 0) zeroInInteger = true;
            } else if (set.chDecimal && c == set.chDecimal) {
                if (decimalAt >= 0 || (thousandAt >= 0 && at - thousandAt != 4)) return false;
                decimalAt = at;
            } else if (set.chThousand && c == set.chThousand && placeholderAt(p + 1)) {
                if (thousandAt >= 0 && at - thousandAt != 4) return false;
                thousandAt = at;
            } else if (set.chThousand && c == set.chThousand) {
                return c == ' ' || c == '\''; // read again as text
            } else {
                if (c == '%') ++p;
                return true;
            }
            ++p;
        }
        return true;
    }

    // The currency form of `text` standing at p.
    int form(const char* text) {
        if (!FMTFormAt(p, text) || size_t(end - p) < std::strlen(text)) return 0;
        if (minus || open) return -1;
        p += std::strlen(text);
        *currencySeen = true;
        return 1;
    }

    bool other() {
        const FMTCURRFORMS& f = set.forms;
        char c = *p;
        if (section == 1 && open && run && parensAllowed() && c == ')') {
            if (close) return false;
            close = true;
            ++p;
            return true;
        }
        const char* mine = section == 1 ? (run ? f.szNegSuffix : f.szNegPrefix) : (run ? f.szPosSuffix : f.szPosPrefix);
        if (int r = form(mine)) return r > 0;
        if (section == 2)
            if (int r = form(run ? f.szNegSuffix : f.szNegPrefix)) return r > 0;
        if (section == 1 && parensAllowed() && c == '(') {
            if (*currencySeen || run || minus || open) return false;
            open = true;
        } else if (section == 1 && c == '-') {
            if (*currencySeen || open || close || minus) return false;
            minus = true;
        } else if (c != ' ') {
            return false;
        }
        ++p;
        return true;
    }

    bool check() {
        while (p < end) {
            char c = *p;
            bool ok;
            if (c == '\'' || c == '"') ok = quoted();
            else if (c == '#' || c == '0') ok = digitRun();
            else if (c == '_') return end - p == 2;
            else ok = other();
            if (!ok) return false;
        }
        return !open || close;
    }
};

} // namespace

int FMTIsNumberSectionValid(const FMTNUMSET& set, const char* text, size_t length, int section, bool* currencySeen) {
    SectionCheck s{set, text, text + length, section, currencySeen};
    return s.check() ? 1 : 0;
}

LONG OXLAPI FMTIsNumberPicValid(FMTCNTLBLOCK* block) {
    const char* picture = block->lpszPicture ? block->lpszPicture : "";
    if (!*picture || std::strcmp(picture, "$") == 0) return 1;
    if (FMTIsScientificPic(picture)) return FMTIsScientificPicValid(picture);
    FMTNUMSET set;
    FMTNumSettings(block, &set);
    char user[FMT_PIC_MAX];
    if (FMTIsNumberPicTokenized(picture)) {
        FMTpUnTokenize(set, picture, user, sizeof user);
        picture = user;
    }
    if (std::strlen(picture) >= size_t(FMT_PIC_MAX)) return 0;
    bool currencySeen = false;
    int section = 0;
    for (const char* part = picture;; ++section) {
        const char* semi = std::strchr(part, ';');
        size_t length = semi ? size_t(semi - part) : std::strlen(part);
        if (section > 2) return 0;
        if (length && !FMTIsNumberSectionValid(set, part, length, section, &currencySeen)) return 0;
        if (!semi) return 1;
        part = semi + 1;
    }
}
