// The regional settings: reading the store, the cached copy and its reload,
// the getters, the per-thread separators and the control block.
#include "format/fmtint.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

// "a=1|b=x" as entries of the section intl; a key "X:k" is the key k of OXLEEKIT.
std::vector<ProfileEntry> Entries(const std::string& text) {
    std::vector<ProfileEntry> out;
    for (size_t at = 0, bar; at < text.size(); at = bar + 1) {
        bar = std::min(text.find('|', at), text.size());
        std::string item = text.substr(at, bar - at), key = item.substr(0, item.find('='));
        bool own = key.rfind("X:", 0) == 0;
        out.push_back({own ? "OXLEEKIT" : "intl", own ? key.substr(2) : key, item.substr(key.size() + 1)});
    }
    return out;
}

// The record as "|name=value|..." in field order: numbers in decimal, a character as itself ("\0" for 0).
std::string Read() {
    FMTPROFILEINTL p;
    std::memset(&p, 0x41, sizeof p); // a field left unwritten shows as 'A's
    FMTGetProfileIntl(&p);
    auto c = [](char ch) { return ch ? std::string(1, ch) : std::string("\\0"); };
    auto n = [](DWORD v) { return std::to_string(v); };
    return "|iCountry=" + n(p.iCountry) + "|chList=" + c(p.chList) + "|sCurrency=" + p.sCurrency + "|bCurrencySpace=" +
           n(p.bCurrencySpace) + "|bCurrencySuffix=" + n(p.bCurrencySuffix) + "|iDigits=" + n(p.iDigits) + "|chThousand=" +
           c(p.chThousand) + "|chDecimal=" + c(p.chDecimal) + "|iLzero=" + n(p.iLzero) + "|iDate=" + n(p.iDate) + "|chDate=" +
           c(p.chDate) + "|iTime=" + n(p.iTime) + "|s1159=" + p.s1159 + "|s2359=" + p.s2359 + "|sTime=" + p.sTime + "|iTLZero=" +
           n(p.iTLZero) + "|iMeasure=" + n(p.iMeasure) + "|iCurrDigits=" + n(p.iCurrDigits) + "|iNegCurr=" + n(p.iNegCurr) +
           "|sShortDate=" + p.sShortDate + "|sLongDate=" + p.sLongDate + "|sCountry=" + p.sCountry + "|sLanguage=" +
           p.sLanguage + "|iDateType=" + n(p.iDateType) + "|dwReserved=" + n(p.dwReserved) + "|iEmpDateBoundryCheck=" +
           n(p.iEmpDateBoundryCheck) + "|";
}

// Each "name=value" of `fields` stands in `got`.
void ExpectFields(const std::string& got, const std::string& fields, const std::string& what) {
    for (const ProfileEntry& f : Entries(fields))
        EXPECT_NE(got.find("|" + f.key + "=" + f.value + "|"), std::string::npos) << f.key << "=" << f.value << " of " << what << ": " << got;
}

// A row: the store, and fields that must come out of it (every field for an empty store).
TEST(FmtProfile, StoreValuesGoIntoTheRecord) {
    const struct { const char *store, *fields; } rows[] = {
        {"", "iCountry=1|chList=,|sCurrency=$|bCurrencySpace=0|bCurrencySuffix=0|iDigits=2|chThousand=,|chDecimal=.|iLzero=0|iDate=0"
             "|chDate=/|iTime=0|s1159=AM|s2359=PM|sTime=:|iTLZero=0|iMeasure=1|iCurrDigits=2|iNegCurr=0|sShortDate=M/d/yy"
             "|sLongDate=dddd, MMMM dd, yyyy|sCountry=United States|sLanguage=usa|iDateType=1|dwReserved=1094795585|iEmpDateBoundryCheck=0"},
        {"iCurrency=3", "bCurrencySpace=1|bCurrencySuffix=1"}, {"iCurrency=2", "bCurrencySpace=1|bCurrencySuffix=0"},
        {"iCurrency=1", "bCurrencySpace=0|bCurrencySuffix=1"},
        {"s1159=|s2359=|sCurrency=|sDate=|sList=", "s1159=AM|s2359=PM|sCurrency=|chDate=\\0|chList=\\0"},
        {"s1159=vorm.|s2359=nm|sCurrency=EURO\x80|sDate=.-|sDecimal=,,|sThousand= |sList=;|sTime=h:m",
         "s1159=vorm|s2359=nm|sCurrency=EURO|chDate=.|chDecimal=,|chThousand= |chList=;|sTime=h:"},
        {"sCountry=Canada (French)|iCountry=2|sShortDate=yy-MM-dd", "sCountry=Canada (French|sShortDate=yy/MM/dd|iCountry=2"},
        {"sCountry=Canada (French)|iCountry=1|sShortDate=yy-MM-dd", "sShortDate=yy-MM-dd"},
        {"iCountry=43|sShortDate=yyyy-MM-dddd", "sShortDate=yyyy-MM-dd"}, {"iCountry=44|sShortDate=yyyy-MM-dddd", "sShortDate=yyyy-MM-dddd"},
        {"sShortDate=dd.MM.yyyy 'short' xx", "sShortDate=dd.MM.yyyy 'short' "},
        {"iCountry=358|sLongDate=d. MMMMta yyyy", "sLongDate=d. MMMM'ta' yyyy"}, // the long date picture rewritten for its country
        {"sLanguage=deu1|iMeasure=0|iDate=1|iDigits=3|iCurrDigits=0|iNegCurr=8|iLzero=1|iTime=1|iTLZero=1",
         "sLanguage=deu|iMeasure=0|iDate=1|iDigits=3|iCurrDigits=0|iNegCurr=8|iLzero=1|iTime=1|iTLZero=1"},
        {"X:sDateType=japanemperor", "iDateType=3"}, {"X:sDateType=JapanGregorian", "iDateType=2"}, {"X:sDateType=LONGGREGORIAN", "iDateType=0"},
        {"sDateType=JapanEmperor|X:iEmpDateBoundryCheck=1", "iDateType=1|dwReserved=1094795585|iEmpDateBoundryCheck=1"}};
    for (const auto& r : rows) {
        ScriptedProfile store(Entries(r.store));
        ExpectFields(Read(), r.fields, "FMTGetProfileIntl with " + Hex(r.store));
    }
}

TEST(FmtProfile, LongDatePictureRewrite) {
    struct Row { const Language* language; const char* picture; LONG country; const char* expected; } rows[] = {
        {&kEnglish, "dddd', 'MMMM' 'dd', 'yyyy", 1, "dddd, MMMM dd, yyyy"}, {&kEnglish, "d'. de 'MMMM", 1, "d.' de 'MMMM"},
        {&kEnglish, "MMMM'x'", 1, "MMMM'x'"}, {&kEnglish, "d 'x", 1, "d 'x"}, {&kEnglish, "d. MMMMxt", 358, "d. MMMMxt"},
        {&kEnglish, "d. MMMMt", 358, "d. MMMM't'"}, {&kEnglish, "d. MMMMta yyyy", 1, "d. MMMMta yyyy"},
        {&kEnglish, "'a,b,c,d,e,f,g,h,i,j'", 1, "'a','b','c','d','e','f','g','h','i','j'"}, // 39 bytes fit the 40
        {&kEnglish, "'a,b,c,d,e,f,g,h,i,jk'", 1, "'a,b,c,d,e,f,g,h,i,jk'"},                  // 40 would not
        // 5C is a separator in a single-byte page, the trail byte of 95 5C in code page 932
        {&kJapanese, "'\x95\x5C,a'", 1, "'\x95\x5C','a'"}, {&kEnglish, "'\x95\x5C,a'", 1, "'\x95'\x5C,'a'"},
        {&kJapanese, "d. MMMMt\x95\x5C", 358, "d. MMMM't\x95\x5C'"}};
    for (const Row& r : rows) {
        IntlUnder env(*r.language);
        char field[40] = {};
        FMTRewriteLongDatePic(std::strcpy(field, r.picture), sizeof field, r.country);
        EXPECT_EQ(Hex(field), Hex(r.expected)) << "FMTRewriteLongDatePic(\"" << r.picture << "\", 40, " << r.country << ") under " << r.language->name;
    }
}

// A fresh cached copy for each test: stale now, read from the scripted store.
struct Cached {
    explicit Cached(const std::string& entries) : store(Entries(entries)) { FMTWinIniChanged(); }
    ~Cached() { FMTWinIniChanged(); }
    ScriptedProfile store;
};

// The store is read at the first question after a change and at no other time.
TEST(FmtProfile, ReloadReadsTheStoreOnce) {
    Cached cached("sShortDate=d/M/yy");
    EXPECT_EQ(cached.store.Reads(), 0) << "reads before any question";
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "d/M/yy");
    int once = cached.store.Reads();
    EXPECT_EQ(FMTProfileInt(FMTPI_DIGITS) + std::string(FMTProfileString(FMTPS_THOUSAND)).size() + cached.store.Reads(), 3 + once);
    cached.store.Set({"intl", "sShortDate", "yy-MM-dd"});
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "d/M/yy") << "before FMTWinIniChanged";
    FMTWinIniChanged();
    EXPECT_EQ(cached.store.Reads(), once) << "reads at FMTWinIniChanged";
    EXPECT_STREQ(FMTProfileString(FMTPS_SHORTDATE), "yy-MM-dd") << "after FMTWinIniChanged";
    EXPECT_EQ(FMTProfileInt(FMTPI_TIME) + cached.store.Reads(), 2 * once) << "reads after the second change and two questions";
}

// Two threads read while the cached copy is marked stale over and over: every answer is the store's,
// and each thread has its own separator buffer, overwritten by its next call.
TEST(FmtProfile, TwoThreadsReadAtOnce) {
    Cached cached("sShortDate=dd.MM.yyyy|sThousand='|sDecimal=,|iDigits=4");
    std::atomic<int> wrong{0};
    const char* buffers[2] = {};
    auto reader = [&](int n) {
        for (int i = 0; i < 2000; ++i, i % 7 ? void() : FMTWinIniChanged()) {
            const char *thousand = FMTProfileString(FMTPS_THOUSAND), *separator = FMTProfileString(FMTPS_DECIMAL);
            wrong += thousand != separator || std::strcmp(separator, ",") || std::strcmp(FMTProfileString(FMTPS_SHORTDATE), "dd.MM.yyyy") ||
                     FMTProfileInt(FMTPI_DIGITS) != 4 || std::strcmp(FMTProfileString(FMTPS_THOUSAND), "'");
            buffers[n] = separator;
        }
    };
    std::thread a(reader, 0), b(reader, 1);
    a.join(), b.join();
    EXPECT_EQ(wrong.load(), 0) << "answers that were not the store's";
    EXPECT_NE(buffers[0], buffers[1]) << "the two threads' separator buffers";
}

// The block prepared over every byte 0xA5: zero but for the initial values,
// with the host's fields (currency symbol and forms), the reserved words, the
// message result and dwFlags bits 13 to 31 as they were.
TEST(FmtProfile, InitCntlBlock) {
    FMTCNTLBLOCK b, want = {};
    std::memset(&b, 0xA5, sizeof b);
    FMTInitCntlBlock(&b);
    std::string bytes(reinterpret_cast<const char*>(&b), sizeof b);
    EXPECT_EQ(Hex(bytes.substr(offsetof(FMTCNTLBLOCK, numValue), 2)), "01 C0") << "numValue after FMTInitCntlBlock";
    want.nType = FMT_NONE;
    want.iCountry = 1;
    want.dwFlags = 0xA5A5A000 | FMTF_DEFAULTTIME | FMTF_MICROSECONDS | FMTF_NUMBERVALUE;
    want.numValue = b.numValue;
    std::memset(&want.lpszCurrency, 0xA5, sizeof want.lpszCurrency);
    want.iCurrency = want.iNegCurr = want.dwReserved = want.lResult = 0xA5A5A5A5;
    std::memset(want.abReserved, 0xA5, sizeof want.abReserved);
    EXPECT_EQ(Hex(bytes), Hex(std::string(reinterpret_cast<const char*>(&want), sizeof want))) << "FMTInitCntlBlock over bytes 0xA5";
}

// The platform's own store (the private Wine prefix's win.ini, or natively the
// file OXLRT31_PROFILE names): the test writes its keys, reads them through
// FMTGetProfileIntl and puts back what was there (a missing key is removed
// again). Names of another case, numbers with a sign or letters behind them, and a value
// in quotes in the library's own section (the system keeps "intl" elsewhere
// than in win.ini, and takes its values as they stand). Then sections
// removed. One test, as the store is one file for every process.
TEST(FmtProfile, PlatformStore) {
    std::vector<ProfileEntry> entries = Entries("iCountry=49|sShortDate=dd.MM.yyyy|sLongDate=dddd', 'd'. 'MMMM yyyy|sThousand=."
        "|iCurrency=3|s1159=|sCurrency=kr|iDigits=3x|iCurrDigits=+4|iNegCurr=-2|X:sDateType=\"JapanEmperor\"|X:iEmpDateBoundryCheck=1");
    entries.push_back({"INTL", "SDECIMAL", ","});
    std::vector<std::string> saved;
    for (const ProfileEntry& e : entries) {
        char old[256];
        gOsl.profile->GetProfileStringA(e.section.c_str(), e.key.c_str(), "\x01", old, sizeof old);
        saved.push_back(old);
        for (const char* first : {static_cast<const char*>(nullptr), "stale"}) // none, then one there to replace
            gOsl.profile->WriteProfileStringA(e.section.c_str(), e.key.c_str(), first);
        EXPECT_TRUE(gOsl.profile->WriteProfileStringA(e.section.c_str(), e.key.c_str(), e.value.c_str())) << e.key;
        gOsl.profile->GetProfileStringA(e.section.c_str(), e.key.c_str(), "", old, sizeof old);
        EXPECT_STRNE(old, "stale") << e.key << " replaced";
    }
    std::string got = Read();
    for (size_t i = entries.size(); i-- > 0;)
        gOsl.profile->WriteProfileStringA(entries[i].section.c_str(), entries[i].key.c_str(), saved[i] == "\x01" ? nullptr : saved[i].c_str());
    ExpectFields(got, "iCountry=49|sShortDate=dd.MM.yyyy|sLongDate=dddd, d. MMMM yyyy|chThousand=.|chDecimal=,|bCurrencySpace=1"
                      "|bCurrencySuffix=1|iDigits=3|iCurrDigits=4|iNegCurr=4294967294|s1159=AM|sCurrency=kr|iDateType=3|iEmpDateBoundryCheck=1",
                 "the platform's store");
    // Sections removed: an emptied one goes alone, up to the next one's header.
    auto put = [](const char* s, const char* k, const char* v) { gOsl.profile->WriteProfileStringA(s, k, v); };
    auto get = [](const char* s) { char v[8]; gOsl.profile->GetProfileStringA(s, "k", "-", v, sizeof v); return std::string(v); };
    put("oxlA", "k", "1"), put("oxlB", "k", "2"), put("oxlA", "k", nullptr), put("oxlA", nullptr, nullptr);
    EXPECT_EQ(get("oxlA") + get("oxlB"), "-2") << "[oxlA] emptied and removed, [oxlB] after it";
    put("oxlB", nullptr, nullptr);
    EXPECT_EQ(get("oxlB"), "-") << "[oxlB] removed";
}

} // namespace
