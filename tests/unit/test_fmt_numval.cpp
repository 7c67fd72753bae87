// Reading typed numbers back: FMTValidateNumber as a number and as a
// currency amount, FMTUnformatNumberStr under pictures, and the property
// that what FMTFormatNumber writes reads back as the picture rounded it.
#include "test_fmt_num_env.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace {

// Each text read as `type`: its value as plain text, or "invalid".
void CheckValidate(const Settings& s, LONG type, std::initializer_list<std::pair<const char*, const char*>> rows) {
    for (const auto& [text, value] : rows) {
        FMTCNTLBLOCK b = BlockOf(s);
        b.nType = type, b.lpszInput = const_cast<char*>(text), b.numValue.bLength = 0;
        EXPECT_EQ(FMTValidateNumber(&b) ? Text(b.numValue) : "invalid", value)
            << "FMTValidateNumber(\"" << text << "\") as type " << type << " under " << s.name;
    }
}

TEST(FmtNumValidate, NumbersAndCurrency) {
    CheckValidate(kA, FMT_NUMBER, {
        {"1,234,567.5", "1234567.5"}, {"-.5", "-.5"}, {"+5", "5"}, {"5-", "-5"}, {"  7  ", "7"}, {"1e5", "100000"}, {"1e-5", ".00001"},
        {"1e", "1"}, {",123", "123"}, {"-", "0"}, {"-0", "0"}, {"123,456", "123456"}, {"1234,567", "invalid"},
        {"1,23", "invalid"}, {"1.2.3", "invalid"}, {"1.2,3", "invalid"}, {"12a", "invalid"}, {"1E709", "invalid"},
        {"", "invalid"}, {"1e5x", "invalid"},
    });
    CheckValidate({"thousands blank", "", 0, 0, ' ', ','}, FMT_NUMBER, {{"1.5", "1.5"}, {"1 234,5", "1234.5"}});
    CheckValidate({"no separators", "", 0, 0, 0, 0}, FMT_NUMBER, {{"1234.5", "1234.5"}, {"1,234", "invalid"}});
    CheckValidate(kA, FMT_CURRENCY, {
        {"$1,234.50", "1234.5"}, {"($1,234.50)", "-1234.5"}, {"-$1,234.50", "-1234.5"}, {"$1,234.50-", "-1234.5"},
        {"(1,234.50$)", "-1234.5"}, {"5$", "invalid"}, {"--5", "invalid"}, {"(-5-)", "invalid"}});
    CheckValidate(kB, FMT_CURRENCY, {{"-1.234,50 DM", "-1234.5"}, {"(5 DM)", "-5"}, {"DM 5", "invalid"}, {"5 DM-", "-5"}});
    CheckValidate(kA, FMT_PICTURE, {{"5", "invalid"}}); // no number type
}

struct UnformatRow { const char* picture; const char* text; const char* value; };

void CheckUnformat(const Settings& s, std::initializer_list<UnformatRow> rows) {
    for (const UnformatRow& r : rows) {
        char out[128] = "Z";
        FMTCNTLBLOCK b = BlockOf(s, r.picture, out);
        b.lpszInput = const_cast<char*>(r.text);
        LONG result = FMTUnformatNumberStr(&b);
        std::string got = result ? Text(b.numValue) : "invalid";
        EXPECT_EQ(got, r.value) << "FMTUnformatNumberStr(\"" << r.picture << "\", \"" << r.text << "\") under " << s.name;
        EXPECT_EQ(std::string(out), result ? got : "") << "output of FMTUnformatNumberStr(\"" << r.picture << "\", \"" << r.text << "\")";
    }
}

// Inputs the read-back property below never makes: missing or odd literal
// text, sections that are empty or stand for zero, scientific texts.
TEST(FmtNumUnformat, PicturesAndRefusals) {
    CheckUnformat(kA, {
        {"$#,##0.00", "1,234.50", "1234.5"}, {"0.00%", "12.34", "12.34"}, {"#,##0.00;(#,##0.00)", "5", "5"},
        {"$", "($1,234.50)", "-1234.5"}, {"0;-0;\"zero \"0", "zero 5", "0"}, {"0;-0;\"zero\"", "zero", "invalid"},
        {"#;", "-5", "-5"}, {"#;", "x", "invalid"}, {";#", "5", "-5"}, {";;#", "5", "0"}, {"#;;", "x", "invalid"},
        {"'ab'#'cd'", "5", "5"}, {"'a''b'#", "a'b5", "5"}, {"\"a\\\"\"#", "a\"5", "5"}, {"#' kg'_)", "5 kg ", "5"},
        {"0.00E+00", "1.5E+03", "1500"}, {"0.00E+00", "1.5", "1.5"}, {"0.00e-00", "1.5e-2", ".015"}, {"0.00E+00", "-2E2", "-200"},
        {"0.00E+00", "1.5e2e", "invalid"}, {"0.00E+00", "1x5E2", "invalid"}, {"0.00E+00", "1.5E+", "1.5"},
        {"0.00E+00", "1E+4294967298", "100"}, {"0.00E+00", "1E-2147483648", ""}, {"x#", "x5", "5"}, {"x", "5", "5"},
        {"#", "abc", "invalid"}, {"#\"%\"", "50%", "50"},
    });
    CheckUnformat(kB, {{"\x03\x0F#\x01##0\x02" "00\x10", "1.234,50 DM", "1234.5"}});
    char out[16], text[] = "5", empty[] = "", picture[] = "#";
    FMTCNTLBLOCK b = BlockOf(kA, picture, out);
    const struct { DWORD flags; char *input, *picture, *output; } rows[] = {
        {0, text, picture, out}, {FMTF_NUMBERVALUE, nullptr, picture, out}, {FMTF_NUMBERVALUE, empty, picture, out},
        {FMTF_NUMBERVALUE, text, nullptr, out}, {FMTF_NUMBERVALUE, text, empty, out}, {FMTF_NUMBERVALUE, text, picture, nullptr}};
    for (const auto& r : rows) { // the first three are FMTValidateNumber's refusals too
        std::strcpy(out, "Z");
        b.dwFlags = r.flags, b.lpszInput = r.input, b.lpszPicture = r.picture, b.lpszOutput = r.output, b.nType = FMT_NUMBER;
        EXPECT_EQ(&r - rows < 3 ? FMTValidateNumber(&b) : 0, 0) << "FMTValidateNumber refusal " << (&r - rows);
        EXPECT_EQ(FMTUnformatNumberStr(&b), 0) << "refusal " << (&r - rows);
        EXPECT_STREQ(out, r.output ? "" : "Z") << "output after refusal " << (&r - rows);
    }
}

// ---- property: what is written reads back --------------------------------------

// A tokenised picture of one or two sections, with the places and the "%"
// of each; a currency form behind the run would stand before a "%", so the
// two don't meet. Under a blank thousands character (`point`) a currency
// behind a run without a point loses its blank to the run and can't be
// read back, so every run has a point there.
struct Generated { std::string picture; int places; bool percent[2]; };
Generated Generate(std::mt19937& rng, bool point) {
    auto pick = [&](std::initializer_list<const char*> list) { return list.begin()[rng() % list.size()]; };
    const char* fraction = pick({"\x02" "0", "\x02" "00", "\x02##", "\x02" "0#", ""});
    if (point && !*fraction) fraction = "\x02" "0";
    const char *suffix = pick({"", "%", "' kg'", "_)", "%' x'"}), *prefix = pick({"", "'ab '", "\x03"});
    if (*prefix == '\x03' && *suffix == '%') suffix = "";
    std::string run = std::string("\x0F") + pick({"#", "0", "#\x01##0", "##0", "#\x01###", "00"}) + fraction + "\x10";
    Generated g{prefix + run + suffix, int(std::strlen(fraction)) - (*fraction ? 1 : 0), {*suffix == '%', false}};
    const char* negative[] = {"", ";(#)", ";-'ab '#" , ";\x05#\x06"}; // "#" stands for the run
    std::string second = negative[rng() % 4];
    if (size_t at = second.find('#'); at != std::string::npos) second.replace(at, 1, run + (second[1] == '-' ? suffix : ""));
    g.percent[1] = second[1] == '-' && *suffix == '%';
    g.picture += second;
    return g;
}

tagNUMBER RandomValue(std::mt19937& rng) {
    std::string text = rng() % 2 ? "-" : "";
    for (int i = int(rng() % 7); i > 0; --i) text += char('0' + rng() % 10);
    text += ".0";
    for (int i = int(rng() % 5); i > 0; --i) text += char('0' + rng() % 10);
    return Num(text.c_str());
}

TEST(FmtNumProperty, WhatIsWrittenReadsBackAsThePictureRoundedIt) {
    std::mt19937 rng(20261124);
    for (const Locale* locale : {&kUS, &kGerman, &kFrench, &kSwiss, &kJapan}) {
        LocaleUnder l(*locale);
        for (int i = 0; i < 1500; ++i) {
            Generated g = Generate(rng, locale == &kFrench);
            tagNUMBER v = RandomValue(rng), expected = v;
            char text[128], user[128], plain[160];
            FMTCNTLBLOCK b = ProfileBlock(g.picture.c_str(), user);
            FMTUnTokenizeNumberPic(&b);
            b.nType = FMT_PICTURE, b.lpszOutput = text, b.numValue = v;
            ASSERT_EQ(FMTFormatNumber(&b), 1);
            std::string where = "picture \"" + std::string(user) + "\" under " + locale->name + ", value " + Text(v) + ", text \"" + text + "\"";
            EXPECT_GE(FMTGetMaxFormattedNumLen(user, 7, 0), LONG(std::strlen(text))) << where;
            // As the section rounds it: to its places, after the factor 100 of a "%".
            bool percent = g.percent[Text(v)[0] == '-' && g.picture.find(';') != std::string::npos];
            NumPower10(&expected, &expected, percent ? 2 : 0);
            NumRound(&expected, &expected, g.places);
            NumPower10(&expected, &expected, percent ? -2 : 0);
            b.lpszInput = text, b.lpszOutput = plain, b.numValue.bLength = 0;
            ASSERT_EQ(FMTUnformatNumberStr(&b), 1) << where;
            EXPECT_EQ(NumCompare(&b.numValue, &expected), 0) << where << ": read " << Text(b.numValue) << ", expected " << Text(expected);
        }
    }
}

} // namespace
