// The regional settings: reading the store, the cached copy and its reload,
// the getters, the per-thread separators and the control block.
#include "format/fmtint.h"
#include "core/libstate.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <map>
#include <string>
#include <thread>

namespace {

// The fields of the record as text, by name: numbers in decimal, a
// character as itself ("\0" for the byte 0).
std::map<std::string, std::string> Fields(const FMTPROFILEINTL& p) {
    auto c = [](char ch) { return ch ? std::string(1, ch) : std::string("\\0"); };
    auto n = [](DWORD v) { return std::to_string(v); };
    return {{"iCountry", n(p.iCountry)}, {"chList", c(p.chList)}, {"sCurrency", p.sCurrency},
            {"bCurrencySpace", n(p.bCurrencySpace)}, {"bCurrencySuffix", n(p.bCurrencySuffix)},
            {"iDigits", n(p.iDigits)}, {"chThousand", c(p.chThousand)}, {"chDecimal", c(p.chDecimal)},
            {"iLzero", n(p.iLzero)}, {"iDate", n(p.iDate)}, {"chDate", c(p.chDate)}, {"iTime", n(p.iTime)},
            {"s1159", p.s1159}, {"s2359", p.s2359}, {"sTime", p.sTime}, {"iTLZero", n(p.iTLZero)},
            {"iMeasure", n(p.iMeasure)}, {"iCurrDigits", n(p.iCurrDigits)}, {"iNegCurr", n(p.iNegCurr)},
            {"sShortDate", p.sShortDate}, {"sLongDate", p.sLongDate}, {"sCountry", p.sCountry},
            {"sLanguage", p.sLanguage}, {"iDateType", n(p.iDateType)}, {"dwReserved", n(p.dwReserved)},
            {"iEmpDateBoundryCheck", n(p.iEmpDateBoundryCheck)}};
}

FMTPROFILEINTL Read() {
    FMTPROFILEINTL p;
    std::memset(&p, 0x41, sizeof p); // 'A' everywhere: a field left unwritten shows
    FMTGetProfileIntl(&p);
    return p;
}

TEST(FmtProfile, EmptyStoreGivesDefaults) {
    ScriptedProfile store;
    const std::map<std::string, std::string> expected = {
        {"iCountry", "1"}, {"chList", ","}, {"sCurrency", "$"}, {"bCurrencySpace", "0"}, {"bCurrencySuffix", "0"},
        {"iDigits", "2"}, {"chThousand", ","}, {"chDecimal", "."}, {"iLzero", "0"}, {"iDate", "0"},
        {"chDate", "/"}, {"iTime", "0"}, {"s1159", "AM"}, {"s2359", "PM"}, {"sTime", ":"}, {"iTLZero", "0"},
        {"iMeasure", "1"}, {"iCurrDigits", "2"}, {"iNegCurr", "0"}, {"sShortDate", "M/d/yy"},
        {"sLongDate", "dddd, MMMM dd, yyyy"}, {"sCountry", "United States"}, {"sLanguage", "usa"},
        {"iDateType", "1"}, {"dwReserved", "1094795585"}, {"iEmpDateBoundryCheck", "0"}};
    EXPECT_EQ(Fields(Read()), expected);
}

// One row: what the store holds, and the fields that come out of it.
struct StoreRow {
    std::vector<ProfileEntry> store;
    std::map<std::string, std::string> fields;
};

TEST(FmtProfile, StoreValuesGoIntoTheRecord) {
    const StoreRow rows[] = {
        {{{"intl", "iCurrency", "3"}}, {{"bCurrencySpace", "1"}, {"bCurrencySuffix", "1"}}},
        {{{"intl", "iCurrency", "2"}}, {{"bCurrencySpace", "1"}, {"bCurrencySuffix", "0"}}},
        {{{"intl", "iCurrency", "1"}}, {{"bCurrencySpace", "0"}, {"bCurrencySuffix", "1"}}},
        {{{"intl", "iCurrency", "4"}}, {{"bCurrencySpace", "0"}, {"bCurrencySuffix", "0"}}},
        {{{"intl", "s1159", ""}, {"intl", "s2359", ""}}, {{"s1159", "AM"}, {"s2359", "PM"}}},
        {{{"intl", "s1159", "vorm."}, {"intl", "s2359", "nm"}}, {{"s1159", "vorm"}, {"s2359", "nm"}}},
        {{{"intl", "sCurrency", ""}}, {{"sCurrency", ""}}},
        {{{"intl", "sCurrency", "EURO\x80"}}, {{"sCurrency", "EURO"}}},
        {{{"intl", "sDate", ""}, {"intl", "sList", ""}}, {{"chDate", "\\0"}, {"chList", "\\0"}}},
        {{{"intl", "sDate", ".-"}, {"intl", "sDecimal", ",,"}, {"intl", "sThousand", " "}, {"intl", "sList", ";"}},
         {{"chDate", "."}, {"chDecimal", ","}, {"chThousand", " "}, {"chList", ";"}}},
        {{{"intl", "sTime", "h:m"}}, {{"sTime", "h:"}}},
        {{{"intl", "sCountry", "Canada (French)"}, {"intl", "iCountry", "2"}, {"intl", "sShortDate", "yy-MM-dd"}},
         {{"sCountry", "Canada (French"}, {"sShortDate", "yy/MM/dd"}, {"iCountry", "2"}}},
        {{{"intl", "sCountry", "Canada (French)"}, {"intl", "iCountry", "1"}, {"intl", "sShortDate", "yy-MM-dd"}},
         {{"sShortDate", "yy-MM-dd"}}},
        {{{"intl", "sCountry", "Canada (french)"}, {"intl", "iCountry", "2"}, {"intl", "sShortDate", "yy-MM-dd"}},
         {{"sShortDate", "yy-MM-dd"}}},
        {{{"intl", "sCountry", "Canada (French)"}, {"intl", "iCountry", "2"}, {"intl", "sShortDate", "yy-MM-ddd"}},
         {{"sShortDate", "yy-MM-ddd"}}},
        {{{"intl", "iCountry", "43"}, {"intl", "sShortDate", "yyyy-MM-dddd"}}, {{"sShortDate", "yyyy-MM-dd"}}},
        {{{"intl", "iCountry", "44"}, {"intl", "sShortDate", "yyyy-MM-dddd"}}, {{"sShortDate", "yyyy-MM-dddd"}}},
        {{{"intl", "iCountry", "43"}, {"intl", "sShortDate", "YYYY-MM-dddd"}}, {{"sShortDate", "YYYY-MM-dddd"}}},
        {{{"intl", "sShortDate", "dd.MM.yyyy 'short' xx"}}, {{"sShortDate", "dd.MM.yyyy 'short' "}}},
        {{{"intl", "sLongDate", "dddd', 'MMMM' 'dd', 'yyyy"}}, {{"sLongDate", "dddd, MMMM dd, yyyy"}}},
        {{{"intl", "iCountry", "358"}, {"intl", "sLongDate", "d. MMMMta yyyy"}}, {{"sLongDate", "d. MMMM'ta' yyyy"}}},
        {{{"intl", "sLanguage", "deu1"}, {"intl", "iMeasure", "0"}, {"intl", "iDate", "1"}},
         {{"sLanguage", "deu"}, {"iMeasure", "0"}, {"iDate", "1"}}},
        {{{"intl", "iDigits", "3"}, {"intl", "iCurrDigits", "0"}, {"intl", "iNegCurr", "8"}, {"intl", "iLzero", "1"}},
         {{"iDigits", "3"}, {"iCurrDigits", "0"}, {"iNegCurr", "8"}, {"iLzero", "1"}}},
        {{{"intl", "iTime", "1"}, {"intl", "iTLZero", "1"}}, {{"iTime", "1"}, {"iTLZero", "1"}}},
        {{{"OXLEEKIT", "sDateType", "japanemperor"}}, {{"iDateType", "3"}}},
        {{{"OXLEEKIT", "sDateType", "JapanGregorian"}}, {{"iDateType", "2"}}},
        {{{"OXLEEKIT", "sDateType", "LONGGREGORIAN"}}, {{"iDateType", "0"}}},
        {{{"OXLEEKIT", "sDateType", "ShortGregorian"}}, {{"iDateType", "1"}}},
        {{{"OXLEEKIT", "sDateType", "Chinese"}}, {{"iDateType", "1"}}},
        {{{"intl", "sDateType", "JapanEmperor"}}, {{"iDateType", "1"}}},
        {{{"OXLEEKIT", "iEmpDateBoundryCheck", "1"}}, {{"iEmpDateBoundryCheck", "1"}, {"iDateType", "1"}}},
    };
    for (const StoreRow& r : rows) {
        ScriptedProfile store(r.store);
        std::map<std::string, std::string> got = Fields(Read());
        std::string what = "FMTGetProfileIntl with";
        for (const ProfileEntry& e : r.store) what += " [" + e.section + "] " + e.key + "=" + Hex(e.value);
        for (const auto& [field, value] : r.fields) EXPECT_EQ(Hex(got[field]), Hex(value)) << field << " of " << what;
    }
}

TEST(FmtProfile, LongDatePictureRewrite) {
    struct Row { const char* picture; LONG country; const char* expected; } rows[] = {
        {"dddd', 'MMMM' 'dd', 'yyyy", 1, "dddd, MMMM dd, yyyy"},
        {"d'. de 'MMMM", 1, "d.' de 'MMMM"},
        {"MMMM'x'", 1, "MMMM'x'"},
        {"d 'de' MMMM", 1, "d 'de' MMMM"},
        {"''MMMM", 1, "MMMM"},
        {"'a,b'", 1, "'a','b'"},
        {"',a,'", 1, ",'a',"},
        {"'a,,b'", 1, "'a',,'b'"},
        {"'x y-'", 1, "'x y'-"},
        {"'a.b:c/d\\e-f'", 1, "'a'.'b':'c'/'d'\\'e'-'f'"},
        {"d 'x", 1, "d 'x"},
        {"'-'MMMM'x'", 1, "-MMMM'x'"},
        {"'.'d'x,'", 1, ".d'x',"},
        {"d. MMMMta yyyy", 358, "d. MMMM'ta' yyyy"},
        {"d. MMMMta yyyy", 1, "d. MMMMta yyyy"},
        {"d. MMMMt", 358, "d. MMMM't'"},
        {"d. MMMMxt", 358, "d. MMMMxt"},
        {"yyyy", 358, "yyyy"},
        {"MMMM", 358, "MMMM"},
        {"'a,b,c,d,e,f,g,h,i,j,k,l,m'", 1, "'a,b,c,d,e,f,g,h,i,j,k,l,m'"}, // 51 bytes would not fit 40
        {"'a,b,c,d,e,f,g,h,i,j'", 1, "'a','b','c','d','e','f','g','h','i','j'"}, // 39 bytes fit 40
        {"'a,b,c,d,e,f,g,h,i,jk'", 1, "'a,b,c,d,e,f,g,h,i,jk'"},                  // 40 bytes would not
    };
    for (const Row& r : rows) {
        char field[40] = {};
        std::strcpy(field, r.picture);
        FMTRewriteLongDatePic(field, sizeof field, r.country);
        EXPECT_STREQ(field, r.expected) << "FMTRewriteLongDatePic(\"" << r.picture << "\", 40, " << r.country << ")";
    }
}

// The byte 5C is a separator in a single-byte page and the trail byte of a
// double-byte character (95 5C) in code page 932.
TEST(FmtProfile, LongDatePictureRewriteStepsWholeCharacters) {
    struct Row { const Language* language; const char* picture; const char* expected; } rows[] = {
        {&kJapanese, "'\x95\x5C,a'", "'\x95\x5C','a'"},
        {&kEnglish, "'\x95\x5C,a'", "'\x95'\x5C,'a'"},
        {&kJapanese, "d. MMMMt\x95\x5C", "d. MMMM't\x95\x5C'"},
    };
    for (const Row& r : rows) {
        IntlUnder env(*r.language);
        char field[40] = {};
        std::strcpy(field, r.picture);
        FMTRewriteLongDatePic(field, sizeof field, 358);
        EXPECT_EQ(Hex(field), Hex(r.expected)) << "FMTRewriteLongDatePic(" << Hex(r.picture) << ") under " << r.language->name;
    }
}

// A fresh cached copy for each test: stale now, read from the scripted store.
struct Cached {
    explicit Cached(std::vector<ProfileEntry> entries = {}) : store(std::move(entries)) { FMTWinIniChanged(); }
    ~Cached() { FMTWinIniChanged(); }
    ScriptedProfile store;
};

TEST(FmtProfile, Getters) {
    Cached cached({{"intl", "sShortDate", "dd.MM.yy"}, {"intl", "sLongDate", "d. MMMM yyyy"}, {"intl", "sTime", "."},
                   {"intl", "s1159", "vm"}, {"intl", "s2359", "nm"}, {"intl", "sCurrency", "kr"},
                   {"intl", "sThousand", "."}, {"intl", "sDecimal", ","}, {"intl", "iTime", "1"},
                   {"intl", "iTLZero", "1"}, {"intl", "iLzero", "1"}, {"intl", "iDigits", "3"},
                   {"intl", "iCurrDigits", "4"}, {"intl", "iNegCurr", "5"}, {"OXLEEKIT", "sDateType", "JapanEmperor"},
                   {"OXLEEKIT", "iEmpDateBoundryCheck", "1"}, {"intl", "iCurrency", "2"}, {"intl", "iCountry", "46"}});
    const char* strings[] = {"dd.MM.yy", "d. MMMM yyyy", ".", "vm", "nm", "kr", ".", ","};
    for (int key = 0; key < 8; ++key) {
        const char* got = FMTProfileString(key);
        ASSERT_NE(got, nullptr) << "FMTProfileString(" << key << ")";
        EXPECT_STREQ(got, strings[key]) << "FMTProfileString(" << key << ")";
    }
    for (int key : {-1, 8, 9, 100}) EXPECT_EQ(FMTProfileString(key), nullptr) << "FMTProfileString(" << key << ")";
    const struct { int key; LONG value; } ints[] = {{0, 1},  {1, 1},  {2, 1},  {3, 3},  {4, 4},  {5, 5}, {6, 3},
                                                    {7, 1},  {8, -1}, {9, -1}, {10, 2}, {11, 46}, {12, -1}, {-1, -1}};
    for (const auto& i : ints) EXPECT_EQ(FMTProfileInt(i.key), i.value) << "FMTProfileInt(" << i.key << ")";
}

TEST(FmtProfile, CurrencyPositionRebuilt) {
    for (LONG position : {0, 1, 2, 3}) {
        Cached cached({{"intl", "iCurrency", std::to_string(position)}});
        EXPECT_EQ(FMTProfileInt(FMTPI_CURRENCY), position) << "FMTProfileInt(10) with iCurrency=" << position;
    }
}

// The store is read at the first question after a change and at no other time.
TEST(FmtProfile, ReloadReadsTheStoreOnce) {
    Cached cached({{"intl", "sShortDate", "d/M/yy"}});
    EXPECT_EQ(cached.store.Reads(), 0) << "reads before any question";
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "d/M/yy");
    int once = cached.store.Reads();
    EXPECT_GT(once, 0) << "reads at the first question";
    EXPECT_EQ(FMTProfileInt(FMTPI_DIGITS), 2);
    EXPECT_STREQ(FMTProfileString(FMTPS_THOUSAND), ",");
    EXPECT_EQ(cached.store.Reads(), once) << "reads after three questions";
    cached.store.Set("intl", "sShortDate", "yy-MM-dd");
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "d/M/yy") << "before FMTWinIniChanged";
    FMTWinIniChanged();
    EXPECT_EQ(cached.store.Reads(), once) << "reads at FMTWinIniChanged";
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "yy-MM-dd") << "after FMTWinIniChanged";
    EXPECT_EQ(FMTProfileInt(FMTPI_TIME), 0);
    EXPECT_EQ(cached.store.Reads(), 2 * once) << "reads after the second change and two questions";
}

TEST(FmtProfile, SeparatorsPerThread) {
    Cached cached({{"intl", "sThousand", "'"}, {"intl", "sDecimal", ","}});
    const char* first = FMTProfileString(FMTPS_THOUSAND);
    EXPECT_STREQ(first, "'");
    const char* second = FMTProfileString(FMTPS_DECIMAL);
    EXPECT_EQ(second, first) << "one buffer per thread";
    EXPECT_STREQ(first, ",") << "the second call overwrites the first";
    const char* other = nullptr;
    std::string otherText;
    std::thread([&] {
        other = FMTProfileString(FMTPS_THOUSAND);
        otherText = other;
    }).join();
    EXPECT_NE(other, first) << "another thread's buffer";
    EXPECT_EQ(otherText, "'");
}

// Two threads read the settings while the cached copy is marked stale over
// and over; every answer is the store's.
TEST(FmtProfile, TwoThreadsReadAtOnce) {
    Cached cached({{"intl", "sShortDate", "dd.MM.yyyy"}, {"intl", "sDecimal", ","}, {"intl", "iDigits", "4"}});
    std::atomic<int> wrong{0};
    auto reader = [&] {
        for (int i = 0; i < 2000; ++i) {
            if (i % 7 == 0) FMTWinIniChanged();
            if (std::strcmp(FMTProfileString(FMTPS_SHORTDATE), "dd.MM.yyyy") != 0) ++wrong;
            if (std::strcmp(FMTProfileString(FMTPS_DECIMAL), ",") != 0) ++wrong;
            if (FMTProfileInt(FMTPI_DIGITS) != 4) ++wrong;
        }
    };
    std::thread a(reader), b(reader);
    a.join();
    b.join();
    EXPECT_EQ(wrong.load(), 0) << "answers that were not the store's";
}

// The block prepared over every byte 0xA5: each field as the preparation leaves it.
TEST(FmtProfile, InitCntlBlock) {
    FMTCNTLBLOCK b;
    std::memset(&b, 0xA5, sizeof b);
    FMTInitCntlBlock(&b);
    const DWORD kept = 0xA5A5A5A5;
    EXPECT_EQ(b.nType, FMT_NONE);
    for (char* p : {b.lpszInput, b.lpszOutput, b.lpszShortPic, b.lpszLongPic, b.lpszTimeSep, b.lpsz1159, b.lpsz2359,
                    b.lpszPicture})
        EXPECT_EQ(p, nullptr) << "a text pointer";
    const struct { const char* name; DWORD value, expected; } words[] = {
        {"b24Hour", b.b24Hour, 0},   {"bTimeLeadZero", b.bTimeLeadZero, 0}, {"bUseProfile", b.bUseProfile, 0},
        {"iDateType", b.iDateType, 0}, {"bLeadZero", b.bLeadZero, 0},      {"nDigits", b.nDigits, 0},
        {"iCountry", b.iCountry, 1}, {"bEmpBoundryCheck", b.bEmpBoundryCheck, 0}, {"hWnd", b.hWnd, 0},
        {"uMsg", b.uMsg, 0},         {"wParam", b.wParam, 0},               {"lParam", b.lParam, 0},
        {"iCurrency", b.iCurrency, kept}, {"iNegCurr", b.iNegCurr, kept},   {"dwReserved", b.dwReserved, kept},
        {"lResult", b.lResult, kept}, {"dwFlags", b.dwFlags, 0xA5A5A000 | 0x25},
    };
    for (const auto& w : words) EXPECT_EQ(w.value, w.expected) << w.name << " after FMTInitCntlBlock";
    EXPECT_EQ(b.lpszCurrency, reinterpret_cast<char*>(~uintptr_t(0) / 0xFF * 0xA5)) << "lpszCurrency is kept";
    EXPECT_EQ(b.chThousand, 0);
    EXPECT_EQ(b.chDecimal, 0);
    EXPECT_EQ(b.dblValue, 0.0);
    DATDEF zero = {};
    EXPECT_EQ(std::memcmp(&b.datDef, &zero, sizeof zero), 0) << "datDef";
    EXPECT_EQ(Hex(std::string(reinterpret_cast<char*>(&b.numValue), 2)), "01 C0") << "numValue";
    EXPECT_EQ(Hex(std::string(reinterpret_cast<char*>(b.abReserved), 8)), "A5 A5 A5 A5 A5 A5 A5 A5");
    std::memset(&b, 0, sizeof b);
    FMTInitCntlBlock(&b);
    EXPECT_EQ(b.dwFlags, DWORD(FMTF_DEFAULTTIME | FMTF_MICROSECONDS | FMTF_NUMBERVALUE)) << "dwFlags from 0";
}

// The platform's own store (the private Wine prefix's win.ini, or the file
// OXLRT31_PROFILE names natively): the test writes its sections, reads them
// through FMTGetProfileIntl and puts back what was there.
class OwnSections {
public:
    OwnSections(std::vector<ProfileEntry> entries) : m_entries(std::move(entries)) {
        for (const ProfileEntry& e : m_entries) {
            char old[256];
            gOsl.profile->GetProfileStringA(e.section.c_str(), e.key.c_str(), "\x01", old, sizeof old);
            m_saved.push_back(old);
            gOsl.profile->WriteProfileStringA(e.section.c_str(), e.key.c_str(), e.value.c_str());
        }
    }
    ~OwnSections() {
        for (size_t i = m_entries.size(); i-- > 0;) {
            const ProfileEntry& e = m_entries[i];
            const char* old = m_saved[i] == "\x01" ? nullptr : m_saved[i].c_str();
            gOsl.profile->WriteProfileStringA(e.section.c_str(), e.key.c_str(), old);
        }
    }

private:
    std::vector<ProfileEntry> m_entries;
    std::vector<std::string> m_saved;
};

TEST(FmtProfile, PlatformStore) {
    OwnSections sections({{"intl", "iCountry", "49"}, {"intl", "sShortDate", "dd.MM.yyyy"},
                          {"intl", "sLongDate", "dddd', 'd'. 'MMMM yyyy"}, {"intl", "sDecimal", ","},
                          {"intl", "sThousand", "."}, {"intl", "iCurrency", "3"}, {"intl", "s1159", ""},
                          {"intl", "sCurrency", "EUR"}, {"OXLEEKIT", "sDateType", "LongGregorian"},
                          {"OXLEEKIT", "iEmpDateBoundryCheck", "1"}});
    const std::map<std::string, std::string> expected = {
        {"iCountry", "49"}, {"sShortDate", "dd.MM.yyyy"}, {"sLongDate", "dddd, d. MMMM yyyy"}, {"chDecimal", ","},
        {"chThousand", "."}, {"bCurrencySpace", "1"}, {"bCurrencySuffix", "1"}, {"s1159", "AM"},
        {"sCurrency", "EUR"}, {"iDateType", "0"}, {"iEmpDateBoundryCheck", "1"}};
    std::map<std::string, std::string> got = Fields(Read());
    for (const auto& [field, value] : expected) EXPECT_EQ(got[field], value) << field << " from the platform's store";
}

// The platform's store itself, as the engine relies on it: names without
// regard to case, a missing key giving its default, reads cut to the room.
TEST(FmtProfile, PlatformStoreReadsAndWrites) {
    OwnSections sections({{"OxlTestSection", "Key", "value"}, {"OxlTestSection", "Number", "42"},
                          {"OxlTestSection", "Text", "12abc"}});
    const OslProfileService& s = *gOsl.profile;
    char out[8];
    const struct { const char* section; const char* key; DWORD size; DWORD length; const char* text; } reads[] = {
        {"OxlTestSection", "Key", 8, 5, "value"}, {"oxltestsection", "KEY", 8, 5, "value"},
        {"OxlTestSection", "Key", 4, 3, "val"},   {"OxlTestSection", "Missing", 8, 3, "def"},
        {"NoSuchSection", "Key", 8, 3, "def"},
    };
    for (const auto& r : reads) {
        EXPECT_EQ(s.GetProfileStringA(r.section, r.key, "def", out, r.size), r.length) << "[" << r.section << "] " << r.key;
        EXPECT_STREQ(out, r.text) << "[" << r.section << "] " << r.key << " in " << r.size << " bytes";
    }
    EXPECT_EQ(s.GetProfileIntA("OxlTestSection", "Number", 7), 42u);
    EXPECT_EQ(s.GetProfileIntA("OxlTestSection", "Text", 7), 12u);
    EXPECT_EQ(s.GetProfileIntA("OxlTestSection", "Key", 7), 0u);
    EXPECT_EQ(s.GetProfileIntA("OxlTestSection", "Missing", 7), 7u);
    EXPECT_TRUE(s.WriteProfileStringA("OxlTestSection", "Key", nullptr));
    EXPECT_EQ(s.GetProfileStringA("OxlTestSection", "Key", "def", out, sizeof out), 3u) << "a removed key";
    EXPECT_EQ(s.GetProfileIntA("OxlTestSection", "Number", 7), 42u) << "a key beside the removed one";
}

} // namespace
