// Tokens and scans: the tokeniser and its variants, character and set
// search, the LIKE scan and the two number readers.
#include "intl_table.h"

namespace {

#define K "\x88\x9F"

char kSkip[] = " ";
// The three tokenisers with the skip set " ", the quote ' and dst of 32 bytes unless size says less.
long Plain(char* dst, char* s, const char* delims, WORD lead = 0, int size = 0) {
    return IntlStrGetToken(dst, s, kSkip, const_cast<char*>(delims), lead, size);
}
long Nested(char* dst, char* s, const char* delims) {
    return IntlStrGetTokenNestedParens(dst, s, kSkip, const_cast<char*>(delims), 0, 0);
}
long Quoted(char* dst, char* s, const char* delims, WORD lead = 0) {
    return IntlStrGetTokenQuoted(dst, s, kSkip, const_cast<char*>(delims), lead, '\'', 0);
}
// IntlStrGetTokenPtr: the length, when *token is the input.
long Ptr(char* s, const char* delims) {
    char* token = nullptr;
    long n = IntlStrGetTokenPtr(&token, s, kSkip, const_cast<char*>(delims));
    return token == s ? n : -100;
}

const Call kTokens[] = {
    {CALL(Plain(dst, s, ",")), "  abc,def", 5, "abc"}, {CALL(Plain(dst, s, ",")), "abc", 3, "abc"},
    {CALL(Plain(dst, s, ",")), "", 0, ""}, {CALL(Plain(dst, s, ",")), "  ", 2, ""}, {CALL(Plain(dst, s, ",")), ",abc", 0, ""},
    {CALL(Plain(dst, s, ",", '[')), "[abc],", 5, "abc]"}, {CALL(Plain(dst, s, ",", '[')), " [", 2, ""},
    {CALL(Plain(dst, s, ",", '[')), "abc,", 0, kUntouched}, {CALL(Plain(dst, s, ",", '[')), "", 0, kUntouched},
    {CALL(Plain(dst, s, ",", 0x415B)), "[a", 2, "a"}, // only the low byte of lead counts
    // The token and its terminator must fit in size bytes.
    {CALL(Plain(dst, s, ",", 0, 4)), "abc,x", 3, "abc"}, {CALL(Plain(dst, s, ",", 0, 3)), "abc,x", 0, kUntouched},
    {CALL(Plain(dst, s, ",", 0, -1)), "abc,x", 3, "abc"}, {CALL(Plain(dst, s, ",", 0, 1)), ",", 0, ""},
    {CALL(Plain(dst, s, ",;")), "a;b,c", 1, "a"}, {CALL(Plain(dst, s, "")), "a,b", 3, "a,b"},
    {CALL(Nested(dst, s, ",")), "f(a,b),c", 6, "f(a,b)"}, {CALL(Nested(dst, s, ",")), "f(a,(b,c)),d", 10, "f(a,(b,c))"},
    {CALL(Nested(dst, s, ",")), "a),b,c", 2, "a)"}, {CALL(Nested(dst, s, ",")), "f(a,b", 5, "f(a,b"},
    {CALL(Nested(dst, s, "(")), "f(,", 3, "f(,"}, {CALL(Nested(dst, s, ")")), "f(a)b)", 5, "f(a)b"},
    {CALL(Quoted(dst, s, ",")), "'a,b',c", 5, "'a,b'"}, {CALL(Quoted(dst, s, ",")), "x'a,b'y,c", 7, "x'a,b'y"},
    {CALL(Quoted(dst, s, ",")), "'a,b", 2, "'a"}, {CALL(Quoted(dst, s, ",")), "a,'b,c'", 1, "a"},
    {CALL(Quoted(dst, s, ",")), "'a''b',c", 6, "'a''b'"}, {CALL(Quoted(dst, s, ",")), "'a,b'", 5, "'a,b'"},
    {CALL(Quoted(dst, s, ",")), "'a,b' 'c,d',e", 11, "'a,b' 'c,d'"}, {CALL(Quoted(dst, s, ",", '[')), "['a,b',c", 6, "'a,b'"},
    {CALL(Ptr(s, ",")), "  abc,def", 5}, {CALL(Ptr(s, ";")), "  abc,def", 9}, {CALL(Ptr(s, " ")), "  ab", 4},
    {CALL(IntlStrGetTokenPtr(nullptr, s, kSkip, kSkip)), "a", 0},
    {CALL(IntlStrGetToken(dst, s, nullptr, kSkip, 0, 0)), "a", 0, kUntouched},
    {CALL(IntlStrGetTokenNestedParens(dst, nullptr, kSkip, kSkip, 0, 0)), "", 0, kUntouched},
    {CALL(IntlStrGetTokenQuoted(dst, s, kSkip, nullptr, 0, '\'', 0)), "a", 0, kUntouched},
};

// A delimiter, parenthesis or quote byte inside a double-byte character is none.
const Call kTrailBytes[] = {
    {CALL(Plain(dst, s, ",")), "\x81\x2C" "a,b", 3, "\x81\x2C" "a"}, {CALL(Nested(dst, s, ",")), "\x81\x28" "a,b", 3, "\x81\x28" "a"},
    {CALL(Quoted(dst, s, ",")), "\x81\x27" "a,b'", 3, "\x81\x27" "a"}, {CALL(Plain(dst, s, ",")), "a\x81", 2, "a\x81"},
    {CALL(Plain(dst, s, " ")), "\x81\x20" "a b", 3, "\x81\x20" "a"}, {CALL(Ptr(s, ",")), "\x81\x2C,", 2},
};

TEST(IntlTokens, TokenTables) {
    ExpectCalls({kEnglish, kJapanese}, kTokens);
    ExpectCalls(kDoubleByte, kTrailBytes);
}

TEST(IntlTokens, ChrAndSearch) {
    const Call doubleByte[] = {
        {CALL(At(IntlStrChr(s, 0x889F), s)), "a" K "b", 1}, {CALL(At(IntlStrChr(s, 0x9F), s)), "a" K "b\x9F", 4},
        {CALL(At(IntlStrChr(s, 'b'), s)), "a" K "b", 3}, {CALL(At(IntlStrChr(s, 0), s)), "a" K "b", 4},
        {CALL(At(IntlStrChr(s, 0x88), s)), "a\x88", 1},
        {CALL(At(IntlStrSearch(s, (char*)"b" K), s)), "a" K "b", 1}, {CALL(At(IntlStrSearch(s, (char*)"\x9F"), s)), "a" K "b", -1},
        {CALL(At(IntlStrSearch(s, (char*)"xb"), s)), "a" K "b", 3}, {CALL(At(IntlStrSearch(s, (char*)""), s)), "a", -1},
        {CALL(At(IntlStrSearch(s, (char*)"\x88"), s)), "a\x88", 1}, {CALL(At(IntlStrSearch(s, (char*)"z"), s)), "abc", -1},
    };
    ExpectCalls(kDoubleByte, doubleByte);
    const Call singleByte[] = {
        {CALL(At(IntlStrChr(s, 0x9F), s)), "a" K "b", 2}, {CALL(At(IntlStrChr(s, 0x4162), s)), "a" K "b", 3},
        {CALL(At(IntlStrChr(s, 0), s)), "abc", 3}, {CALL(At(IntlStrSearch(s, (char*)"\x9F" "b"), s)), "a" K "b", 2},
        {CALL(At(IntlStrSearch(s, (char*)"z"), s)), "abc", -1}, {CALL(At(IntlStrChr(nullptr, 'a'), s)), "", -1},
        {CALL(At(IntlStrSearch(nullptr, s), s)), "a", -1}, {CALL(At(IntlStrSearch(s, nullptr), s)), "a", -1},
    };
    ExpectCalls({kEnglish}, singleByte);
}

// LIKE without case: % any run, _ one character, \ makes the next literal.
TEST(IntlTokens, Scan) {
    const struct { const char *s, *pattern; int at; } rows[] = {
        {"abc", "b", 1},     {"abc", "B", 1},      {"ABC", "b", 1},      {"abc", "x", -1},      {"abc", "abcd", -1},
        {"abc", "a%c", 0},   {"abc", "%c", 0},     {"abc", "%", 0},      {"abc", "_", 0},       {"a", "_", -1},
        {"abc", "_c", 1},    {"xabcabc", "bc", 2}, {"xabcabc", "c%a", 3}, {"", "", 0},         {"", "a", -1},
        {"", "%", -1},       {"a", "", -1},        {"a%b", "\\%", 1},    {"a_b", "\\_b", 1},    {"banana", "an%a", 1},
        {"banana", "nan", 2}, {"hello", "z%", -1}, {"hello", "%z", -1},  {"HeLLo", "ll", 2},    {"abab", "b%b", 1},
        {"aab", "ab", 1},    {"abcabd", "abd", 3}, {"ab", "b\\", 1},     {"a\\b", "\\\\", 1},   {"abcb", "b%x", -1},
    };
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const auto& r : rows) {
            std::string s = r.s, p = r.pattern;
            EXPECT_EQ(IntlStrScan(s.data(), p.data()), r.at) << "IntlStrScan(\"" << r.s << "\", \"" << r.pattern << "\") under " << l.name;
        }
    }
    // On the double-byte path the index counts characters, and a trail byte matches nothing.
    const Call doubleByte[] = {
        {CALL(IntlStrScan(s, (char*)"b")), INTL_S, 2}, {CALL(IntlStrScan(s, (char*)K)), INTL_S, 1},
        {CALL(IntlStrScan(s, (char*)"_b")), INTL_S, 1}, {CALL(IntlStrScan(s, (char*)"%c")), INTL_S, 0},
        {CALL(IntlStrScan(s, (char*)"\x9F" "b")), INTL_S, -1}, {CALL(IntlStrScan(s, nullptr)), "a", -1},
    };
    ExpectCalls(kDoubleByte, doubleByte);
    const Call japanese[] = {{CALL(IntlStrScan(s, (char*)"\x82\x81" "B")), "\x82\x81" "b", 0}};
    ExpectCalls({kJapanese}, japanese);
    const Call singleByte[] = {
        {CALL(IntlStrScan(s, (char*)"b")), INTL_S, 3}, {CALL(IntlStrScan(s, (char*)"\x9F" "b")), INTL_S, 2},
        {CALL(IntlStrScan(nullptr, s)), "a", -1},
    };
    ExpectCalls({kEnglish}, singleByte);
}

TEST(IntlTokens, FetchNumbers) {
    const struct { const char* text; int result; long value; } longs[] = { // 77: *out left alone
        {"123", 3, 123},       {" -45x", 4, -45},       {"+7", 2, 7},           {"", 0, 77},     {"abc", 0, 77},
        {"-", 0, 77},          {"99999999999", 0, 77},  {"2147483647", 10, 2147483647L}, {"2147483648", 0, 77},
        {"-2147483648", 0, 77}, {"\t\n 0", 4, 0},       {"- 5", 0, 77},         {"4294967306", 0, 77},
    };
    for (const auto& r : longs) {
        long v = 77;
        std::string t = r.text;
        EXPECT_EQ(IntlFetchNextNumLong(&v, t.data()), r.result) << "IntlFetchNextNumLong(\"" << r.text << "\")";
        EXPECT_EQ(v, r.value) << "IntlFetchNextNumLong(\"" << r.text << "\")";
    }
    const struct { const char* text; int result; double value; } doubles[] = {
        {"0.0e5", 5, 0.0}, {".5", 2, 0.5},   {".", 0, 77},  {"1e", 0, 77},  {"1e-999", -1, 77}, {"-2.5E+2x", 7, -250},
        {"12", 2, 12},     {"", 0, 77},      {"+.e", 0, 77}, {"3.", 2, 3},  {"-0", 2, 0.0},     {"1e+", 0, 77},
        // atof reads no hexadecimal: " 0x77" is a zero that doesn't look like one
        {" 1x7", 2, 1},    {" 0x77", -1, 77}, {"\t-0X1p4", -1, 77}, {" 0", -1, 77}, {"-.0e9", 5, 0.0},
    };
    for (const auto& r : doubles) {
        double v = 77;
        std::string t = r.text;
        EXPECT_EQ(IntlFetchNextNumDouble(&v, t.data()), r.result) << "IntlFetchNextNumDouble(\"" << r.text << "\")";
        EXPECT_EQ(v, r.value) << "IntlFetchNextNumDouble(\"" << r.text << "\")";
    }
    std::string hundred(100, '1');
    double v = 77;
    EXPECT_EQ(IntlFetchNextNumDouble(&v, hundred.data()), -1) << "IntlFetchNextNumDouble of 100 digits";
    hundred.resize(99);
    EXPECT_EQ(IntlFetchNextNumDouble(&v, hundred.data()), 99) << "IntlFetchNextNumDouble of 99 digits";
    EXPECT_EQ(IntlFetchNextNumLong(nullptr, hundred.data()) + IntlFetchNextNumDouble(&v, nullptr), 0);
}

} // namespace
