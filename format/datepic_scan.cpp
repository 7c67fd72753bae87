// The date picture scanner: a deterministic automaton over byte classes, one
// table step per byte, longest match. The table is built at compile time from
// the rules of each mode below; at run time a token is a walk from the mode's
// start state that remembers the last accepting state it passed.
#include "datepic_scan.h"
#include "datepic.h"

#include "core/libstate.h"

#include <cstring>

namespace {

// ---- byte classes --------------------------------------------------------

enum Cls : uint8_t {
    C_END,     // 00 and FF
    C_OTHER,   // anything no rule names
    C_NL,      // newline: a blank, dropped between form tokens
    C_BLANK,   // tab, space
    C_COMMA, C_MINUS, C_DOT, C_SLASH, C_COLON, C_BSLASH, // separators
    C_QUOTE,
    C_DIGIT,
    C_y, C_M, C_d, C_h, C_m, C_s, C_A, C_P, C_LETTER, // letters, the picture's apart
    C_SINGLE,  // A0..DF: a single, also a trail
    C_SINGLEX, // FD, FE: a single, no trail
    C_LEAD,    // 81..9F, E0..FC: also a trail
    C_TRAIL,   // trail only: 40, 5B, 5D..60, 7B..7E, 80
    kClasses
};

constexpr uint8_t ClassOf(int b) {
    if (b == 0 || b == 0xFF) return C_END;
    if (b == '\n') return C_NL;
    if (b == '\t' || b == ' ') return C_BLANK;
    switch (b) {
    case ',': return C_COMMA;
    case '-': return C_MINUS;
    case '.': return C_DOT;
    case '/': return C_SLASH;
    case ':': return C_COLON;
    case '\\': return C_BSLASH;
    case '\'': return C_QUOTE;
    case 'y': return C_y;
    case 'M': return C_M;
    case 'd': return C_d;
    case 'h': return C_h;
    case 'm': return C_m;
    case 's': return C_s;
    case 'A': return C_A;
    case 'P': return C_P;
    default: break;
    }
    if (b >= '0' && b <= '9') return C_DIGIT;
    if ((b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z')) return C_LETTER;
    if (b >= 0xA0 && b <= 0xDF) return C_SINGLE;
    if (b == 0xFD || b == 0xFE) return C_SINGLEX;
    if ((b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC)) return C_LEAD;
    if (b == 0x40 || b == 0x5B || (b >= 0x5D && b <= 0x60) || (b >= 0x7B && b <= 0x7E) || b == 0x80) return C_TRAIL;
    return C_OTHER;
}

struct ClassTable { uint8_t of[256]; };
constexpr ClassTable BuildClasses() {
    ClassTable t{};
    for (int b = 0; b < 256; ++b) t.of[b] = ClassOf(b);
    return t;
}
constexpr ClassTable kClass = BuildClasses();

// Sets of classes, as bit masks.
using Set = uint32_t;
constexpr Set Of(Cls c) { return Set(1) << c; }
constexpr Set kSep = Of(C_COMMA) | Of(C_MINUS) | Of(C_DOT) | Of(C_SLASH) | Of(C_COLON) | Of(C_BSLASH);
constexpr Set kBlank = Of(C_NL) | Of(C_BLANK);
constexpr Set kLetter = Of(C_y) | Of(C_M) | Of(C_d) | Of(C_h) | Of(C_m) | Of(C_s) | Of(C_A) | Of(C_P) | Of(C_LETTER);
constexpr Set kSingle = kLetter | Of(C_SINGLE) | Of(C_SINGLEX);
constexpr Set kTrail = kLetter | Of(C_BSLASH) | Of(C_SINGLE) | Of(C_LEAD) | Of(C_TRAIL);
constexpr Set kAll = (Set(1) << kClasses) - 1;
constexpr Set kDigit = Of(C_DIGIT);
constexpr Set kTimeSep = Of(C_COMMA) | Of(C_DOT) | Of(C_COLON);

// ---- the automaton ---------------------------------------------------------

// What an accepting state gives.
enum Rule : uint8_t {
    R_NONE, R_CHAR, R_QUOTED, R_BLANK, R_YEAR, R_MONTH, R_DAY, R_HOUR, R_MINUTE, R_SECOND, R_MICRO,
    R_AMPM, R_NUMBER, R_WORD, R_NUMERIC, R_MONTHFIRST, R_DAYFIRST, R_DMY, R_TIME,
};

constexpr int kMaxStates = 128;
struct Automaton {
    uint8_t next[kMaxStates][kClasses]; // 0: no way on
    uint8_t rule[kMaxStates];
    uint8_t start[6];                   // by mode; mode 0 is the initial one
    int count;

    constexpr int New(Rule r = R_NONE) {
        rule[count] = r;
        return count++;
    }
    constexpr void On(int from, Set set, int to) {
        for (int c = 0; c < kClasses; ++c)
            if (set & Of(Cls(c))) next[from][c] = uint8_t(to);
    }
    // A run of `set` from `from`, accepting with `r`; the run's state.
    constexpr int Run(int from, Set set, Rule r) {
        int s = New(r);
        On(from, set, s);
        On(s, set, s);
        return s;
    }
    // A fixed sequence of one class, each state accepting as `rules` says.
    constexpr int Chain(int from, const Cls* seq, const Rule* rules, int n) {
        for (int i = 0; i < n; ++i) {
            int s = New(rules[i]);
            On(from, Of(seq[i]), s);
            from = s;
        }
        return from;
    }
};

// The rules every text mode shares: a separator, a quoted run, blanks.
constexpr void Literals(Automaton& a, int start, int& quote) {
    a.On(start, kSep, a.New(R_CHAR));
    if (!quote) {
        quote = a.New();
        a.On(quote, kAll & ~Of(C_END) & ~Of(C_QUOTE), quote);
        a.On(quote, Of(C_QUOTE), a.New(R_QUOTED));
    }
    a.On(start, Of(C_QUOTE), quote);
    a.Run(start, kBlank, R_BLANK);
}

constexpr void PictureRules(Automaton& a, int s, int& quote) {
    Literals(a, s, quote);
    const Cls y[] = {C_y, C_y, C_y, C_y};
    const Rule yr[] = {R_NONE, R_YEAR, R_NONE, R_YEAR};
    a.Chain(s, y, yr, 4);
    a.Run(s, Of(C_M), R_MONTH);
    a.Run(s, Of(C_d), R_DAY);
    a.Run(s, Of(C_h), R_HOUR);
    const Cls m[] = {C_m, C_m, C_m, C_m, C_m, C_m};
    const Rule mr[] = {R_NONE, R_MINUTE, R_NONE, R_NONE, R_NONE, R_MICRO};
    a.Chain(s, m, mr, 6);
    const Cls sec[] = {C_s, C_s};
    const Rule sr[] = {R_NONE, R_SECOND};
    a.Chain(s, sec, sr, 2);
    const Cls ampm[] = {C_A, C_M, C_P, C_M};
    const Rule ar[] = {R_NONE, R_NONE, R_NONE, R_AMPM};
    a.Chain(s, ampm, ar, 4);
}

constexpr void ValueRules(Automaton& a, int s, int& quote) {
    Literals(a, s, quote);
    a.Run(s, kDigit, R_NUMBER);
    // A word is items of a single, a lead, or a lead and its trail. After a
    // lead every trail byte goes on, and a lead again may be either.
    int word = a.New(R_WORD), lead = a.New(R_WORD);
    const int froms[] = {s, word};
    for (int from : froms) {
        a.On(from, kSingle, word);
        a.On(from, Of(C_LEAD), lead);
    }
    a.On(lead, kTrail | kSingle, word);
    a.On(lead, Of(C_LEAD), lead);
}

// The date forms; with `dateTime` each may end in blanks, the numeric one in
// a "-" and blanks.
constexpr void DateFormRules(Automaton& a, int s, bool dateTime) {
    auto tail = [&](int last, Rule r, bool minus) {
        if (!dateTime) return;
        int blanks = a.New(r);
        a.On(last, kBlank, blanks);
        a.On(blanks, kBlank, blanks);
        if (minus) {
            int m = a.New(r);
            a.On(last, Of(C_MINUS), m);
            a.On(m, kBlank, blanks);
        }
    };
    // D S D S D and D S A S D
    int d1 = a.Run(s, kDigit, R_NONE), d1s = a.New();
    a.On(d1, kSep, d1s);
    int d2 = a.Run(d1s, kDigit, R_NONE), d2s = a.New();
    a.On(d2, kSep, d2s);
    int d3 = a.Run(d2s, kDigit, R_NUMERIC);
    tail(d3, R_NUMERIC, true);
    int w = a.Run(d1s, kLetter, R_NONE), ws = a.New();
    a.On(w, kSep, ws);
    tail(a.Run(ws, kDigit, R_DMY), R_DMY, false);
    // D B A K D
    int d1b = a.Run(d1, kBlank, R_NONE);
    int dw = a.Run(d1b, kLetter, R_NONE);
    int dwk = a.Run(dw, kBlank | Of(C_COMMA), R_NONE);
    tail(a.Run(dwk, kDigit, R_DAYFIRST), R_DAYFIRST, false);
    // A B D K D
    int aw = a.Run(s, kLetter, R_NONE);
    int awb = a.Run(aw, kBlank, R_NONE);
    int ad = a.Run(awb, kDigit, R_NONE);
    int adk = a.Run(ad, kBlank | Of(C_COMMA), R_NONE);
    tail(a.Run(adk, kDigit, R_MONTHFIRST), R_MONTHFIRST, false);
}

// One or two digits; up to three groups of a comma, full stop or colon and
// digits (one or two, one or two, one to six); blanks, letters, blanks.
constexpr void TimeFormRules(Automaton& a, int s) {
    const int widths[4] = {2, 2, 2, 6}; // the hour, then the three groups
    int ends[12] = {}, n = 0, from = s;
    for (int group = 0; group < 4; ++group) {
        int first = n;
        for (int i = 0; i < widths[group]; ++i) {
            int d = a.New(R_TIME);
            a.On(i ? ends[n - 1] : from, kDigit, d);
            ends[n++] = d;
        }
        if (group == 3) break;
        from = a.New(); // the separator before the next group
        for (int i = first; i < n; ++i) a.On(ends[i], kTimeSep, from);
    }
    int blanks = a.New(R_TIME), letters = a.New(R_TIME), after = a.New(R_TIME);
    for (int i = 0; i < n; ++i) {
        a.On(ends[i], kBlank, blanks);
        a.On(ends[i], kLetter, letters);
    }
    a.On(blanks, kBlank, blanks);
    a.On(blanks, kLetter, letters);
    a.On(letters, kLetter, letters);
    a.On(letters, kBlank, after);
    a.On(after, kBlank, after);
}

constexpr Automaton Build() {
    Automaton a{};
    a.New(); // state 0: no way on
    int quote = 0;
    a.start[0] = 0; // the initial mode accepts nothing
    a.start[FMTDATESCAN_VALUE] = uint8_t(a.New());
    ValueRules(a, a.start[FMTDATESCAN_VALUE], quote);
    a.start[FMTDATESCAN_PICTURE] = uint8_t(a.New());
    PictureRules(a, a.start[FMTDATESCAN_PICTURE], quote);
    a.start[FMTDATESCAN_DATEFORM] = uint8_t(a.New());
    DateFormRules(a, a.start[FMTDATESCAN_DATEFORM], false);
    a.start[FMTDATESCAN_TIMEFORM] = uint8_t(a.New());
    TimeFormRules(a, a.start[FMTDATESCAN_TIMEFORM]);
    a.start[FMTDATESCAN_DATETIMEFORM] = uint8_t(a.New());
    DateFormRules(a, a.start[FMTDATESCAN_DATETIMEFORM], true);
    return a;
}
constexpr Automaton kAuto = Build();
static_assert(kAuto.count <= kMaxStates, "the automaton fits its table");

// ---- the scanner's state --------------------------------------------------

struct Scanner {
    const unsigned char* pos;
    int mode;
    bool ended;
    int dateClass, timeClass;
    char text[kFMTDateTokenMax];
};
Scanner sScan;

// The runs of digits or letters of a form's text: where each starts, its length.
struct Groups {
    int start[3], len[3];
    bool letters[3];
};
Groups GroupsOf(const char* t, int n) {
    Groups g{};
    int k = -1;
    for (int i = 0; i < n; ++i) {
        uint8_t c = kClass.of[BYTE(t[i])];
        bool digit = c == C_DIGIT, letter = (kLetter & Of(Cls(c))) != 0;
        if (!digit && !letter) continue;
        if (k < 0 || g.start[k] + g.len[k] != i || g.letters[k] != letter) {
            if (++k == 3) break;
            g.start[k] = i, g.letters[k] = letter;
        }
        ++g.len[k];
    }
    return g;
}

bool OneOrTwo(int len) { return len == 1 || len == 2; }

// The class test of a date form; -1 when it fails.
int DateClass(Rule r, const char* t, int n) {
    Groups g = GroupsOf(t, n);
    switch (r) {
    case R_NUMERIC:
        if (g.len[0] == 4)
            return t[g.start[0] + 4] == '-' && t[g.start[1] + g.len[1]] == '-' && OneOrTwo(g.len[1]) && OneOrTwo(g.len[2]) ? 4 : -1;
        return OneOrTwo(g.len[0]) && OneOrTwo(g.len[1]) && g.len[2] == 4 ? 9 : -1;
    case R_MONTHFIRST:
    case R_DAYFIRST: {
        int word = r == R_MONTHFIRST ? 0 : 1, day = r == R_MONTHFIRST ? 1 : 0;
        if (g.len[word] < 3 || !OneOrTwo(g.len[day]) || g.len[2] != 4) return -1;
        return (r == R_MONTHFIRST ? 0 : 5) + (g.len[word] > 3 ? 2 : 0) + (g.len[day] == 2 ? 1 : 0);
    }
    default: // R_DMY
        return OneOrTwo(g.len[0]) && g.len[1] == 3 && (g.len[2] == 4 || g.len[2] == 2) ? 10 : -1;
    }
}

// The decimal value of a run of digits as atol takes it, held at LONG_MAX.
int32_t NumberOf(const char* t, int n) {
    uint64_t v = 0;
    for (int i = 0; i < n && v <= 0x7FFFFFFFu; ++i) v = v * 10 + uint64_t(t[i] - '0');
    uint32_t value = v > 0x7FFFFFFFu ? 0x7FFFFFFFu : uint32_t(v);
    if (n == 4 && t[0] == '0' && t[1] == '0') value |= kFMTFullYearMark;
    return int32_t(value);
}

// A run of "d", "M" or "h" longer than four is no element.
FMTDateTok Repeated(FMTDateTok tok, int n) {
    gpLibState->lexValue = n;
    return n <= 4 ? tok : TK_ERROR;
}

// The token of an accepted text of n bytes at sScan.text; TK_END when a date
// form of a date-time text leaves its time to be read.
FMTDateTok Action(Rule r, int n) {
    const char* t = sScan.text;
    LIBSTATE* st = gpLibState;
    st->lexValue = 0;
    switch (r) {
    case R_CHAR: st->lexValue = BYTE(t[0]); return TK_CHAR;
    case R_QUOTED:
        std::memmove(sScan.text, t + 1, size_t(n - 2));
        sScan.text[n - 2] = 0;
        return TK_STRING;
    case R_WORD: return TK_STRING;
    case R_BLANK: st->lexValue = n; return TK_BLANK;
    case R_YEAR: st->lexValue = n; return TK_YEAR;
    case R_MONTH: return Repeated(TK_MONTH, n);
    case R_DAY: return Repeated(TK_DAY, n);
    case R_HOUR: return Repeated(TK_HOUR, n);
    case R_MINUTE: return TK_MINUTE;
    case R_SECOND: return TK_SECOND;
    case R_MICRO: return TK_MICROSECOND;
    case R_AMPM: return TK_AMPM;
    case R_NUMBER: st->lexValue = NumberOf(t, n); return TK_NUMBER;
    case R_TIME: sScan.timeClass = kLetter & Of(Cls(kClass.of[BYTE(t[n - 1])])) ? 0 : 1; return TK_FORM;
    default: break;
    }
    int cls = DateClass(r, t, n);
    if (cls < 0) return TK_ERROR;
    sScan.dateClass = cls;
    if (sScan.mode == FMTDATESCAN_DATETIMEFORM && n < st->wPicLen) {
        sScan.mode = FMTDATESCAN_TIMEFORM; // the time follows
        return TK_END;
    }
    sScan.ended = true;
    return TK_FORM;
}

bool IsMarker(const unsigned char* p) { return p[0] == 2 && p[1] >= 1 && p[1] <= 5 && p[2] == 2; }

} // namespace

void FMTDateScanReset(const char* input) {
    sScan.pos = reinterpret_cast<const unsigned char*>(input);
    sScan.mode = 0;
    sScan.ended = false;
    sScan.dateClass = sScan.timeClass = 0;
    sScan.text[0] = 0;
    gpLibState->lexValue = 0;
}

FMTDateTok FMTDateScanNext() {
    for (;;) {
        const unsigned char* p = sScan.pos;
        if (sScan.ended || kClass.of[*p] == C_END) {
            sScan.ended = true;
            return TK_END;
        }
        if (IsMarker(p)) {
            sScan.mode = p[1];
            sScan.pos += 3;
            continue;
        }
        if (*p == '\n' && sScan.mode >= FMTDATESCAN_DATEFORM) {
            ++sScan.pos;
            continue;
        }
        int state = kAuto.start[sScan.mode], n = 0, accepted = 0;
        Rule rule = R_NONE;
        while ((state = kAuto.next[state][kClass.of[p[n]]]) != 0) {
            if (++n >= kFMTDateTokenMax) { // the token buffer is full: the input ends here
                sScan.ended = true;
                return TK_END;
            }
            if (kAuto.rule[state]) rule = Rule(kAuto.rule[state]), accepted = n;
        }
        if (!rule) { // no rule starts with this byte: an error token of one byte
            ++sScan.pos;
            return TK_ERROR;
        }
        std::memcpy(sScan.text, p, size_t(accepted));
        sScan.text[accepted] = 0;
        sScan.pos += accepted;
        FMTDateTok tok = Action(rule, accepted);
        if (tok != TK_END) return tok;
    }
}

const char* FMTDateScanText() { return sScan.text; }

void FMTDateScanClasses(int* dateClass, int* timeClass) {
    *dateClass = sScan.dateClass;
    *timeClass = sScan.timeClass;
}
