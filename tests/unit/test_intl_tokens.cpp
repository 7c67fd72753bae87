// Tokens and scans: the tokeniser and its variants, character and set
// search, the LIKE scan and the two number readers.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

#define K "\x88\x9F"

enum Variant { kPlain, kNested, kQuoted };

struct TokenCase {
    Variant variant;
    const char* input;
    const char* delims;
    WORD lead;
    int outSize;
    const char* out; // null: out is not written
    int result;
};

int getToken(const TokenCase& c, char* out, char* input) {
    char skip[] = " ";
    std::string delims = c.delims;
    switch (c.variant) {
    case kNested: return IntlStrGetTokenNestedParens(out, input, skip, delims.data(), c.lead, c.outSize);
    case kQuoted: return IntlStrGetTokenQuoted(out, input, skip, delims.data(), c.lead, '\'', c.outSize);
    default: return IntlStrGetToken(out, input, skip, delims.data(), c.lead, c.outSize);
    }
}

const char* const kVariantNames[] = {"IntlStrGetToken", "IntlStrGetTokenNestedParens", "IntlStrGetTokenQuoted"};

const TokenCase kTokenCases[] = {
    {kPlain, "  abc,def", ",", 0, 0, "abc", 5},      {kPlain, "abc", ",", 0, 0, "abc", 3},
    {kPlain, "", ",", 0, 0, "", 0},                  {kPlain, "  ", ",", 0, 0, "", 2},
    {kPlain, ",abc", ",", 0, 0, "", 0},              {kPlain, "[abc],", ",", '[', 0, "abc]", 5},
    {kPlain, "abc,", ",", '[', 0, nullptr, 0},       {kPlain, "abcdef,x", ",", 0, 4, nullptr, 0},
    {kPlain, "abc,x", ",", 0, 4, "abc", 3},          {kPlain, "abc,x", ",", 0, 3, nullptr, 0},
    {kPlain, "a;b,c", ",;", 0, 0, "a", 1},           {kPlain, "a,b", "", 0, 0, "a,b", 3},
    {kPlain, "", ",", '[', 0, nullptr, 0},           {kPlain, "  [", ",", '[', 0, "", 3},
    {kNested, "f(a,b),c", ",", 0, 0, "f(a,b)", 6},   {kNested, "f(a,(b,c)),d", ",", 0, 0, "f(a,(b,c))", 10},
    {kNested, "a),b,c", ",", 0, 0, "a)", 2},         {kNested, "f(a,b", ",", 0, 0, "f(a,b", 5},
    {kNested, "f(,", "(", 0, 0, "f(,", 3},
    {kQuoted, "'a,b',c", ",", 0, 0, "'a,b'", 5},     {kQuoted, "x'a,b'y,c", ",", 0, 0, "x'a,b'y", 7},
    {kQuoted, "'a,b", ",", 0, 0, "'a", 2},           {kQuoted, "a,'b,c'", ",", 0, 0, "a", 1},
    {kQuoted, "'a''b',c", ",", 0, 0, "'a''b'", 6},   {kQuoted, "'a,b'", ",", 0, 0, "'a,b'", 5},
    {kQuoted, "'a,b' 'c,d',e", ",", 0, 0, "'a,b' 'c,d'", 11},
};

TEST(IntlTokens, TokenTables) {
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const TokenCase& c : kTokenCases) {
            std::string input = c.input;
            char out[32] = "untouched";
            int r = getToken(c, out, input.data());
            const char* expected = c.out ? c.out : "untouched";
            EXPECT_STREQ(out, expected) << kVariantNames[c.variant] << "(\"" << c.input << "\", delims \"" << c.delims
                                        << "\", lead " << c.lead << ", size " << c.outSize << ") under " << l.name;
            EXPECT_EQ(r, c.result) << kVariantNames[c.variant] << "(\"" << c.input << "\") under " << l.name;
        }
    }
}

// A delimiter or parenthesis byte inside a double-byte character is no delimiter.
TEST(IntlTokens, TrailBytesAreNeverDelimiters) {
    const struct {
        Variant variant;
        const char* input;
        const char* out;
        int result;
    } cases[] = {
        {kPlain, "\x81\x2C" "a,b", "\x81\x2C" "a", 3},
        {kNested, "\x81\x28" "a,b", "\x81\x28" "a", 3},
        {kQuoted, "\x81\x27" "a,b'", "\x81\x27" "a", 3},
        {kPlain, "a\x81", "a\x81", 2}, // a trailing half
    };
    for (const Language& l : kDoubleByte) {
        IntlUnder env(l);
        for (const auto& c : cases) {
            std::string input = c.input;
            char out[32] = "";
            TokenCase t = {c.variant, c.input, ",", 0, 0, c.out, c.result};
            EXPECT_EQ(getToken(t, out, input.data()), c.result) << kVariantNames[c.variant] << "(" << Hex(input) << ") under " << l.name;
            EXPECT_EQ(Hex(out), Hex(c.out)) << kVariantNames[c.variant] << "(" << Hex(input) << ") under " << l.name;
        }
    }
}

TEST(IntlTokens, TokenPtrIncludesTheSkippedBytes) {
    char input[] = "  abc,def", skip[] = " ", delims[] = ",", none[] = ";";
    char* token = nullptr;
    EXPECT_EQ(IntlStrGetTokenPtr(&token, input, skip, delims), 5) << "IntlStrGetTokenPtr(\"  abc,def\")";
    EXPECT_EQ(token, input);
    EXPECT_EQ(IntlStrGetTokenPtr(&token, input, skip, none), 9) << "no delimiter: the whole length";
    token = nullptr;
    EXPECT_EQ(IntlStrGetTokenPtr(&token, nullptr, skip, delims), 0);
    EXPECT_EQ(token, nullptr) << "*token is not written for a null argument";
    char out[8] = "x";
    EXPECT_EQ(IntlStrGetToken(out, input, nullptr, delims, 0, 0), 0);
    EXPECT_STREQ(out, "x");
}

TEST(IntlTokens, ChrAndSearch) {
    const struct {
        Language lang;
        const char* s;
        WORD c;
        const char* set;
        int chr, search; // offsets, -1 for null
    } cases[] = {
        {kJapanese, "a" K "b", 0x889F, "b" K, 1, 1}, {kJapanese, "a" K "b", 0x9F, "\x9F", -1, -1},
        {kJapanese, "a" K "b", 'b', "xb", 3, 3},     {kJapanese, "a" K "b", 0, "", 4, -1},
        {kJapanese, "a\x88", 0x88, "\x88", 1, 1},    {kKorean, "\xB0\xA1" "a", 'a', "\xB0\xA1", 2, 0},
        {kEnglish, "a" K "b", 0x9F, "\x9F", 2, 2},   {kEnglish, "a" K "b", 0x4162, "cb", 3, 3},
        {kEnglish, "abc", 0, "z", 3, -1},
    };
    for (const auto& c : cases) {
        IntlUnder env(c.lang);
        std::string s = c.s, set = c.set;
        char* chr = IntlStrChr(s.data(), c.c);
        char* found = IntlStrSearch(s.data(), set.data());
        EXPECT_EQ(chr ? chr - s.data() : -1, c.chr) << std::hex << "IntlStrChr(" << Hex(s) << ", 0x" << c.c << ") under " << c.lang.name;
        EXPECT_EQ(found ? found - s.data() : -1, c.search) << "IntlStrSearch(" << Hex(s) << ", " << Hex(set) << ") under " << c.lang.name;
    }
    EXPECT_EQ(IntlStrChr(nullptr, 'a'), nullptr);
    EXPECT_EQ(IntlStrSearch(nullptr, const_cast<char*>("a")), nullptr);
}

TEST(IntlTokens, Scan) {
    const struct {
        const char *s, *pattern;
        int result;
    } cases[] = {
        {"abc", "b", 1},       {"abc", "B", 1},         {"abc", "x", -1},        {"abc", "abcd", -1},
        {"abc", "a%c", 0},     {"abc", "%c", 0},        {"abc", "%", 0},         {"abc", "_", 0},
        {"a", "_", -1},        {"abc", "_c", 1},        {"xabcabc", "bc", 2},    {"xabcabc", "c%a", 3},
        {"", "", 0},           {"", "a", -1},           {"", "%", -1},           {"a", "", -1},
        {"a%b", "\\%", 1},     {"a_b", "\\_b", 1},      {"banana", "an%a", 1},   {"banana", "nan", 2},
        {"hello", "z%", -1},   {"hello", "%z", -1},     {"HeLLo", "ll", 2},      {"abab", "b%b", 1},
        {"aab", "ab", 1},      {"abcabd", "abd", 3},
    };
    for (const Language& l : {kEnglish, kJapanese}) {
        IntlUnder env(l);
        for (const auto& c : cases) {
            std::string s = c.s, p = c.pattern;
            EXPECT_EQ(IntlStrScan(s.data(), p.data()), c.result)
                << "IntlStrScan(\"" << c.s << "\", \"" << c.pattern << "\") under " << l.name;
        }
    }
    EXPECT_EQ(IntlStrScan(nullptr, const_cast<char*>("a")), -1);
}

TEST(IntlTokens, ScanCountsCharactersOnTheDoubleBytePath) {
    const struct {
        Language lang;
        const char *s, *pattern;
        int result;
    } cases[] = {
        {kJapanese, INTL_S, "b", 2},       {kJapanese, INTL_S, K, 1},      {kJapanese, INTL_S, "_b", 1},
        {kJapanese, INTL_S, "%c", 0},      {kJapanese, INTL_S, "\x9F" "b", -1},
        {kJapanese, "\x82\x81" "b", "\x82\x81" "B", 0},
        {kEnglish, INTL_S, "b", 3},        {kEnglish, INTL_S, "\x9F" "b", 2},
    };
    for (const auto& c : cases) {
        IntlUnder env(c.lang);
        std::string s = c.s, p = c.pattern;
        EXPECT_EQ(IntlStrScan(s.data(), p.data()), c.result) << "IntlStrScan(" << Hex(s) << ", " << Hex(p) << ") under " << c.lang.name;
    }
}

TEST(IntlTokens, FetchNumbers) {
    const struct {
        const char* text;
        int result;
        long value; // 77: *out left alone
    } longs[] = {
        {"123", 3, 123},   {" -45x", 4, -45},       {"+7", 2, 7},           {"", 0, 77},
        {"abc", 0, 77},    {"-", 0, 77},            {"99999999999", 0, 77}, {"2147483647", 10, 2147483647L},
        {"2147483648", 0, 77}, {"-2147483648", 0, 77}, {"\t\n 0", 4, 0},   {"- 5", 0, 77},
    };
    for (const auto& c : longs) {
        LONG v = 77;
        std::string t = c.text;
        EXPECT_EQ(IntlFetchNextNumLong(&v, t.data()), c.result) << "IntlFetchNextNumLong(\"" << c.text << "\")";
        EXPECT_EQ(v, c.value) << "IntlFetchNextNumLong(\"" << c.text << "\")";
    }
    const struct {
        const char* text;
        int result;
        double value; // 77: *out left alone
    } doubles[] = {
        {"0.0e5", 5, 0.0}, {".5", 2, 0.5},       {".", 0, 77},    {"1e", 0, 77},         {"1e-999", -1, 77},
        {"-2.5E+2x", 7, -250}, {"12", 2, 12},    {"", 0, 77},     {" 0", -1, 77},        {"+.e", 0, 77},
        {"3.", 2, 3},      {"-0", 2, 0.0},
        // atof reads no hexadecimal: " 0x77" is a zero that doesn't look like one
        {" 1x7", 2, 1},    {" 0x77", -1, 77},       {"\t-0X1p4", -1, 77},
    };
    for (const auto& c : doubles) {
        double v = 77;
        std::string t = c.text;
        EXPECT_EQ(IntlFetchNextNumDouble(&v, t.data()), c.result) << "IntlFetchNextNumDouble(\"" << c.text << "\")";
        EXPECT_EQ(v, c.value) << "IntlFetchNextNumDouble(\"" << c.text << "\")";
    }
    std::string hundred(100, '1');
    double v = 77;
    EXPECT_EQ(IntlFetchNextNumDouble(&v, hundred.data()), -1) << "100 digits";
    hundred.resize(99);
    EXPECT_EQ(IntlFetchNextNumDouble(&v, hundred.data()), 99) << "99 digits";
    EXPECT_EQ(IntlFetchNextNumLong(nullptr, hundred.data()), 0);
}

} // namespace
