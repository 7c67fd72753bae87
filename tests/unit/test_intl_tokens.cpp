// Tokens and scans: the tokeniser and its variants, character and set
// search, the LIKE scan and the two number readers.
#include "intl_table.h"

namespace {

#define K "\x88\x9F"

char kSkip[] = " ";
// The three tokenisers with the skip set " " and the quote ', and IntlStrGetTokenPtr's length when *token is s.
long Plain(char* o, char* s, const char* d, WORD l = 0, int n = 0) { return IntlStrGetToken(o, s, kSkip, std::string(d).data(), l, n); }
long Nested(char* dst, char* s, const char* d) { return IntlStrGetTokenNestedParens(dst, s, kSkip, std::string(d).data(), 0, 0); }
long Quoted(char* dst, char* s, const char* d, WORD lead = 0) {
    return IntlStrGetTokenQuoted(dst, s, kSkip, std::string(d).data(), lead, '\'', 0);
}
long Ptr(char* s, const char* d) {
    char* token = nullptr;
    long n = IntlStrGetTokenPtr(&token, s, kSkip, std::string(d).data());
    return token == s ? n : -100;
}
// IntlStrChr and IntlStrSearch as offsets into s, -1 for null.
long Chr(char* s, WORD c) { return At(IntlStrChr(s, c), s); }
long Search(char* s, const char* set) { return At(IntlStrSearch(s, std::string(set).data()), s); }

// Lead 415B demands "[": only the low byte counts. With size, the token and its terminator must fit.
const Call kTokens[] = {
    {TO(Plain, ","), "  abc,def", 5, "abc"}, {TO(Plain, ","), "abc", 3, "abc"}, {TO(Plain, ","), "", 0, ""},
    {TO(Plain, ","), "  ", 2, ""}, {TO(Plain, ","), ",abc", 0, ""}, {TO(Plain, ",;"), "a;b,c", 1, "a"}, {TO(Plain, ""), "a,b", 3, "a,b"},
    {TO(Plain, ",", '['), "[abc],", 5, "abc]"}, {TO(Plain, ",", '['), " [", 2, ""}, {TO(Plain, ",", '['), "abc,", 0, kUntouched},
    {TO(Plain, ",", '['), "", 0, kUntouched}, {TO(Plain, ",", 0x415B), "[a", 2, "a"}, {TO(Plain, ",", 0, 4), "abc,x", 3, "abc"},
    {TO(Plain, ",", 0, 3), "abc,x", 0, kUntouched}, {TO(Plain, ",", 0, -1), "abc,x", 3, "abc"}, {TO(Plain, ",", 0, 1), ",", 0, ""}, {TO(Plain, ",", 0, 1), "a,", 0, kUntouched},
    {TO(Nested, ","), "f(a,b),c", 6, "f(a,b)"}, {TO(Nested, ","), "f(a,(b,c)),d", 10, "f(a,(b,c))"}, {TO(Nested, ","), "a),b,c", 2, "a)"},
    {TO(Nested, ","), "f(a,b", 5, "f(a,b"}, {CALL(Nested(dst, s, "(")), "f(,", 3, "f(,"}, {CALL(Nested(dst, s, ")")), "f(a)b)", 5, "f(a)b"},
    {TO(Quoted, ","), "'a,b',c", 5, "'a,b'"}, {TO(Quoted, ","), "x'a,b'y,c", 7, "x'a,b'y"}, {TO(Quoted, ","), "'a,b", 2, "'a"},
    {TO(Quoted, ","), "a,'b,c'", 1, "a"}, {TO(Quoted, ","), "'a''b',c", 6, "'a''b'"}, {TO(Quoted, ","), "'a,b'", 5, "'a,b'"},
    {TO(Quoted, ","), "'a,b' 'c,d',e", 11, "'a,b' 'c,d'"}, {TO(Quoted, ",", '['), "['a,b',c", 6, "'a,b'"}, {OF(Ptr, ","), "  abc,def", 5},
    {OF(Ptr, ";"), "  abc,def", 9}, {OF(Ptr, " "), "  ab", 4},
    {CALL(IntlStrGetTokenPtr(nullptr, s, kSkip, kSkip) + IntlStrGetToken(dst, s, nullptr, kSkip, 0, 0)), "a", 0, kUntouched},
    {CALL(IntlStrGetTokenNestedParens(dst, nullptr, s, s, 0, 0) + IntlStrGetTokenQuoted(dst, s, s, nullptr, 0, 0, 0)), "a", 0, kUntouched},
};


TEST(IntlTokens, TokenTables) {
    ExpectCalls({kEnglish, kJapanese}, kTokens);
}

TEST(IntlTokens, ChrAndSearch) {
    const Call doubleByte[] = {
        // A delimiter, parenthesis or quote byte inside a double-byte character is none.
    {TO(Plain, ","), "\x81\x2C" "a,b", 3, "\x81\x2C" "a"}, {TO(Nested, ","), "\x81\x28" "a,b", 3, "\x81\x28" "a"},
    {TO(Quoted, ","), "\x81\x27" "a,b'", 3, "\x81\x27" "a"}, {TO(Plain, ","), "a\x81", 2, "a\x81"},
    {TO(Plain, " "), "\x81\x20" "a b", 3, "\x81\x20" "a"}, {OF(Ptr, ","), "\x81\x2C,", 2},
        {OF(Chr, 0x889F), "a" K "b", 1}, {OF(Chr, 0x9F), "a" K "b\x9F", 4}, {OF(Chr, 'b'), "a" K "b", 3}, {OF(Chr, 0), "a" K "b", 4},
        {OF(Chr, 0x88), "a\x88", 1}, {OF(Search, "b" K), "a" K "b", 1}, {OF(Search, "\x9F"), "a" K "b", -1},
        {OF(Search, "xb"), "a" K "b", 3}, {OF(Search, ""), "a", -1}, {OF(Search, "\x88"), "a\x88", 1}, {OF(Search, "z"), "abc", -1},
    };
    ExpectCalls(kDoubleByte, doubleByte);
    const Call singleByte[] = {
        {OF(Chr, 0x9F), "a" K "b", 2}, {OF(Chr, 0x4162), "a" K "b", 3}, {OF(Chr, 0), "abc", 3}, {OF(Search, "\x9F" "b"), "a" K "b", 2},
        {OF(Search, "z"), "abc", -1}, {CALL(Chr(nullptr, 'a') + Search(nullptr, "a") + At(IntlStrSearch(s, nullptr), s)), "a", -3},
    };
    ExpectCalls({kEnglish}, singleByte);
}

// IntlStrScan with a pattern given as a literal.
long Scan(char* s, const char* pattern) { return IntlStrScan(s, std::string(pattern).data()); }

// LIKE without case: % any run, _ one character, \ makes the next literal.
const Call kScans[] = {
    {OF(Scan, "b"), "abc", 1}, {OF(Scan, "B"), "abc", 1}, {OF(Scan, "b"), "ABC", 1}, {OF(Scan, "x"), "abc", -1},
    {OF(Scan, "abcd"), "abc", -1}, {OF(Scan, "a%c"), "abc", 0}, {OF(Scan, "%c"), "abc", 0}, {OF(Scan, "%"), "abc", 0},
    {OF(Scan, "_"), "abc", 0}, {OF(Scan, "_"), "a", -1}, {OF(Scan, "_c"), "abc", 1}, {OF(Scan, "bc"), "xabcabc", 2},
    {OF(Scan, "c%a"), "xabcabc", 3}, {OF(Scan, ""), "", 0}, {OF(Scan, "a"), "", -1}, {OF(Scan, "%"), "", -1}, {OF(Scan, ""), "a", -1},
    {OF(Scan, "\\%"), "a%b", 1}, {OF(Scan, "\\_b"), "a_b", 1}, {OF(Scan, "an%a"), "banana", 1}, {OF(Scan, "nan"), "banana", 2},
    {OF(Scan, "z%"), "hello", -1}, {OF(Scan, "%z"), "hello", -1}, {OF(Scan, "ll"), "HeLLo", 2}, {OF(Scan, "b%b"), "abab", 1},
    {OF(Scan, "ab"), "aab", 1}, {OF(Scan, "abd"), "abcabd", 3}, {OF(Scan, "b\\"), "ab", 1}, {OF(Scan, "\\\\"), "a\\b", 1},
    {OF(Scan, "b%x"), "abcb", -1}, {CALL(IntlStrScan(nullptr, s)), "a", -1}, {OF(IntlStrScan, nullptr), "a", -1},
};

TEST(IntlTokens, Scan) {
    ExpectCalls({kEnglish, kJapanese}, kScans);
    // On the double-byte path the index counts characters, and a trail byte matches nothing.
    const Call doubleByte[] = {
        {OF(Scan, "b"), INTL_S, 2}, {OF(Scan, K), INTL_S, 1}, {OF(Scan, "_b"), INTL_S, 1}, {OF(Scan, "%c"), INTL_S, 0},
        {OF(Scan, "\x9F" "b"), INTL_S, -1}, {OF(Scan, "\x82\x81" "B"), "\x82\x81" "b", 0},
    };
    ExpectCalls(kDoubleByte, doubleByte);
    const Call singleByte[] = {{OF(Scan, "b"), INTL_S, 3}, {OF(Scan, "\x9F" "b"), INTL_S, 2}};
    ExpectCalls({kEnglish}, singleByte);
}

TEST(IntlTokens, FetchNumbers) {
    const std::string k99(99, '1'), k100(100, '1'); // the longest number read, and one more
    const struct { bool real; const char* text; int result; const char* value; } rows[] = { // value 77: *out left alone
        {0, "123", 3, "123"}, {0, " -45x", 4, "-45"}, {0, "+7", 2, "7"}, {0, "", 0, "77"}, {0, "-", 0, "77"}, {0, "- 5", 0, "77"},
        {0, "\t\n 0", 4, "0"}, {0, "2147483647", 10, "2147483647"}, {0, "2147483648", 0, "77"}, {0, "-2147483648", 0, "77"},
        {0, "99999999999", 0, "77"}, {0, "4294967306", 0, "77"}, {1, "0.0e5", 5, "0"}, {1, ".5", 2, "0.5"}, {1, ".", 0, "77"},
        {1, "1e", 0, "77"}, {1, "1e+", 0, "77"}, {1, "1e-999", -1, "77"}, {1, "-2.5E+2x", 7, "-250"}, {1, "-.0e9", 5, "0"},
        // atof reads no hexadecimal, and a zero is known by its form: " 0x77" and " 0" do not read as zero; 4294967306 wraps to 10
        {1, " 1x7", 2, "1"}, {1, " 0x77", -1, "77"}, {1, " 0X77", -1, "77"}, {1, " 0", -1, "77"},
        {1, k99.c_str(), 99, "1.11111e+98"}, {1, k100.c_str(), -1, "77"},
    };
    for (const auto& r : rows) {
        std::string text = r.text, what = (r.real ? "IntlFetchNextNumDouble(\"" : "IntlFetchNextNumLong(\"") + text + "\")";
        LONG l = 77;
        double d = 77;
        char value[32];
        EXPECT_EQ(r.real ? IntlFetchNextNumDouble(&d, text.data()) : IntlFetchNextNumLong(&l, text.data()), r.result) << what;
        r.real ? std::snprintf(value, sizeof value, "%g", d) : std::snprintf(value, sizeof value, "%ld", long(l));
        EXPECT_STREQ(value, r.value) << what;
    }
    EXPECT_EQ(IntlFetchNextNumLong(nullptr, const_cast<char*>("1")) + IntlFetchNextNumDouble(nullptr, const_cast<char*>("1")), 0);
}

} // namespace
