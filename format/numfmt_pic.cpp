// Writing a number under a user-form picture: the section is chosen by the
// value's sign, its digit run analysed, the value rounded on the record and
// its digits laid out with the section's literal text. Nothing passes
// through floating point.
#include "numpicint.h"

#include <cstring>

namespace {

bool isPlaceholder(char c) { return c == '#' || c == '0'; }
bool inRun(char c, char thousand, char decimal) {
    return isPlaceholder(c) || (thousand && c == thousand) || (decimal && c == decimal);
}

// Literal text of a prefix or a suffix; in a suffix "_" writes a blank in
// the place of the next character.
void writeLiteral(FMTOut& w, const char* p, bool suffix) {
    char quote = 0;
    while (*p) {
        size_t n = FMTCharBytes(p);
        if (!quote && (*p == '\'' || *p == '"')) {
            quote = *p++;
        } else if (!quote && suffix && *p == '_') {
            w.Put(' ');
            ++p;
            p += FMTCharBytes(p);
        } else if (quote && ((*p == quote && p[1] == quote) || (*p == '\\' && p[1] == quote))) {
            w.Put(quote);
            p += 2;
        } else if (quote && *p == quote) {
            quote = 0;
            ++p;
        } else {
            w.Put(p, n);
            p += n;
        }
    }
}

bool onlyPointAndZeros(const char* t) {
    for (; *t; ++t)
        if (*t != '.' && *t != '0') return false;
    return true;
}

// The sections of a picture, cut at its first two ";" (a picture is held
// in 64 bytes).
struct Sections {
    char text[FMT_PIC_MAX];
    const char* s[3] = {"", "", ""};
    int count = 1;
    explicit Sections(const char* picture) {
        std::strncpy(text, picture, FMT_PIC_MAX - 1);
        text[FMT_PIC_MAX - 1] = 0;
        s[0] = text;
        for (char* p = text; *p && count < 3; ++p)
            if (*p == ';') {
                *p = 0;
                s[count++] = p + 1;
            }
        if (count == 3)
            if (char* semi = std::strchr(const_cast<char*>(s[2]), ';')) *semi = 0;
    }
    bool HasSemicolon() const { return count > 1; }
};

// Integer digits, fraction and suffix of one section for digit text t.
void writeSection(FMTOut& w, const char* section, FMTNUMPICINFO info, char* t, char thousand, char decimal) {
    int len = int(std::strlen(t));
    int I = info.nFracPlaces == 0 ? len : len - info.nFracPlaces - 1;
    if (I < 0) I = 0;
    while (info.nFracPlaces > info.nFracZeros && len > I && t[len - 1] == '0') {
        t[--len] = 0;
        if (--info.nFracPlaces == 0 && len > I && t[len - 1] == '.') t[--len] = 0;
    }
    char prefix[FMT_PIC_MAX];
    size_t runAt = std::strcspn(section, "#0");
    std::memcpy(prefix, section, runAt);
    prefix[runAt] = 0;
    writeLiteral(w, prefix, false);
    int n = I > info.nIntZeros ? I : int(info.nIntZeros);
    for (int pos = n; pos >= 1; --pos) {
        if (info.bGroup && pos % 3 == 0 && pos != n && thousand) w.Put(thousand);
        w.Put(pos > I ? '0' : t[I - pos]);
    }
    for (const char* r = t + I; *r; ++r) w.Put(*r == '.' && decimal ? decimal : *r);
    if (info.pszSuffix) writeLiteral(w, info.pszSuffix, true);
}

// The digits of a positive record: its count of integer digits when it is 1
// or more; for a fraction, minus the place of its first digit behind the
// point (.00123 gives -2). The record holds base-100 digits d1 d2 ... with
// value 0.d1d2... x 100^(E - 64); positive records keep E + 0x80.
int decimalExponent(const tagNUMBER& n) {
    int e = int(n.abData[0]) - 0x80 - 64;
    return 2 * e - (n.abData[1] < 10 ? 1 : 0);
}

void writeScientific(FMTOut& w, const char* picture, tagNUMBER mag, bool sign, char decimal) {
    FMTNUMPICINFO info = FMTAnalyzeNumberPic(picture, ',', '.');
    const char* e = std::strpbrk(picture, "Ee");
    info.pszSuffix = e;
    int x;
    if (NumIsZero(&mag) || decimalExponent(mag) >= 1) {
        tagNUMBER whole;
        NumRound(&whole, &mag, 0);
        int digits = NumIsZero(&whole) ? 1 : decimalExponent(whole);
        if (digits > 1) FMTScaleBy10(&mag, 1 - digits);
        x = 1 - digits;
    } else {
        x = 1 - decimalExponent(mag);
        FMTScaleBy10(&mag, x);
    }
    char m[FMT_FIXED_ROOM + 1];
    m[0] = '0';
    FMTNumToFixed(&mag, int(info.nFracPlaces), m + 1);
    char* t = m[1] == '.' ? m : m + 1;
    if (sign) w.Put('-');
    int len = int(std::strlen(t));
    if (len > 2 && t[2] == '.') { // rounding made "10.00"
        t[2] = t[1];
        t[1] = '.';
        t[--len] = 0;
        --x;
    }
    while (info.nFracPlaces > info.nFracZeros && len > 0 && t[len - 1] == '0') {
        t[--len] = 0;
        --info.nFracPlaces;
    }
    char* point = std::strchr(t, '.');
    if (point && decimal) *point = decimal;
    w.Put(t);
    if (!e) return;
    w.Put(e[0]);
    if (x >= 1) w.Put('-');
    else if (e[1] == '+') w.Put('+');
    if (!e[1]) return;
    tagNUMBER power;
    NumLongToNumber(&power, x < 0 ? -x : x);
    FMTFormatPicture(w.p, e + 2, '.', ',', false, &power, 1);
}

} // namespace

FMTNUMPICINFO FMTAnalyzeNumberPic(const char* section, char thousand, char decimal) {
    FMTNUMPICINFO info = {0, 0, 0, 0, nullptr};
    const char* run = std::strpbrk(section, "#0");
    if (!run) return info;
    const char* p = run;
    const char* point = nullptr;
    bool zero = false;
    const char* lastHash = nullptr;
    for (; inRun(*p, thousand, decimal); ++p) {
        if (thousand && *p == thousand && isPlaceholder(p[1])) info.bGroup = 1;
        if (decimal && *p == decimal && !point) point = p;
        if (*p == '0') zero = true;
        if (*p == '#') lastHash = p;
        if (!point && *p == '0') ++info.nIntZeros;
    }
    const char* suffix;
    if (point) {
        for (suffix = point + 1; isPlaceholder(*suffix); ++suffix) {
            ++info.nFracPlaces;
            if (*suffix == '0') ++info.nFracZeros;
        }
    } else if (!zero && !info.bGroup) {
        suffix = lastHash + 1;
    } else {
        for (suffix = p; thousand && *suffix == thousand; ++suffix) {
        }
    }
    info.pszSuffix = *suffix ? suffix : nullptr;
    return info;
}

void FMTScaleBy10(tagNUMBER* value, int power) {
    while (power != 0 && value->bLength) {
        int step = power > 60 ? 60 : power < -60 ? -60 : power;
        NumPower10(value, value, step);
        power -= step;
    }
}

void FMTNumToFixed(const tagNUMBER* value, int places, char* buffer) {
    buffer[0] = 0;
    if (value->bLength == 0) return;
    if (places < 0) places = 0;
    if (places > FMT_FIXED_PLACES_MAX) places = FMT_FIXED_PLACES_MAX;
    tagNUMBER rounded;
    NumRound(&rounded, value, places);
    if (NumToAscii(&rounded, buffer, 108) <= 0 || places == 0) return;
    char* point = std::strchr(buffer, '.');
    size_t len = std::strlen(buffer);
    if (!point) {
        buffer[len] = '.';
        point = buffer + len++;
    }
    while (len - size_t(point - buffer) - 1 < size_t(places)) buffer[len++] = '0';
    buffer[len] = 0;
}

int FMTFormatPicture(char* output, const char* picture, char decimal, char thousand, bool useProfile,
                     const tagNUMBER* value, int hasValue) {
    (void)useProfile; // the separators come in resolved
    if (output) output[0] = 0;
    if (!hasValue || !picture || !*picture || !output) return 0;
    if (value->bLength == 0) return 1;
    FMTOut w{output, size_t(-1)};
    tagNUMBER zero, mag = *value;
    NumWordToNumber(&zero, 0);
    bool sign = NumCompare(value, &zero) < 0;
    if (sign) NumNegate(&mag);
    if (FMTIsScientificPic(picture)) {
        writeScientific(w, picture, mag, sign, decimal);
        return 1;
    }
    Sections sec(picture);
    const char* section = sec.s[0];
    if (sec.HasSemicolon() && sign) section = sec.s[1];
    else if (sec.count == 3 && NumIsZero(&mag)) section = sec.s[2];
    if (!*section) return 1;
    FMTNUMPICINFO info = FMTAnalyzeNumberPic(section, thousand, decimal);
    if (info.pszSuffix && *info.pszSuffix == '%') FMTScaleBy10(&mag, 2);
    char t[FMT_FIXED_ROOM];
    FMTNumToFixed(&mag, int(info.nFracPlaces), t);
    if (!*t) return 1;
    if (onlyPointAndZeros(t)) { // shown as zero, whatever it was
        if (sign) {
            sign = false;
            if (sec.HasSemicolon()) section = sec.s[sec.count == 3 ? 2 : 0];
        } else if (sec.count == 3) {
            section = sec.s[2];
        }
        if (!*section) return 1;
        info = FMTAnalyzeNumberPic(section, thousand, decimal);
        FMTNumToFixed(&zero, int(info.nFracPlaces), t);
    }
    if (sign && !sec.HasSemicolon()) w.Put('-');
    writeSection(w, section, info, t, thousand, decimal);
    return 1;
}
