// The readers of the regional settings on any input: the rewrite of a long
// date picture in its 40-byte field, the fixed-position date text, and the
// POSIX profile store's file. Input: a byte choosing language and country,
// then NUL-separated texts: picture, date text, store file, section, key.
#include "fuzz_check.h"
#include "fuzz_intl.h"
#include "format/fmtint.h"

#include <cstdio>
#include <unistd.h>

static std::string sPath; // the store file of this run, removed at exit

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    sPath = "/tmp/oxl-fuzz-profile-" + std::to_string(getpid()) + ".ini";
    std::atexit([] { std::remove(sPath.c_str()); });
    return setenv("OXLRT31_PROFILE", sPath.c_str(), 1);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    const Language& language = kFuzzLanguages[data[0] % std::size(kFuzzLanguages)];
    LONG country = data[0] & 0x80 ? 358 : 1;
    std::vector<std::string> t = FuzzTexts(data + 1, size - 1, 5);
    IntlUnder env(language);
    char field[40], out[8];
    std::snprintf(field, sizeof field, "%s", t[0].c_str());
    FMTRewriteLongDatePic(field, sizeof field, country);
    FuzzRequire(strnlen(field, sizeof field) < sizeof field);
    DATDEF d;
    char* iso = FuzzDup(t[1]);
    FuzzRequire(FMTIsoToDatDef(iso, &d) == 1 && d.nYear >= -999 && d.nMicrosecond >= -99999 && d.nMicrosecond <= 999999);
    std::free(iso);
    if (FILE* f = std::fopen(getenv("OXLRT31_PROFILE"), "wb")) std::fwrite(t[2].data(), 1, t[2].size(), f), std::fclose(f);
    std::memset(out, 0xEE, sizeof out);
    DWORD n = gOsl.profile->GetProfileStringA(t[3].c_str(), t[4].c_str(), "dflt", out, 6);
    FuzzRequire(n < 6 && std::strlen(out) == n && BYTE(out[6]) == 0xEE);
    gOsl.profile->GetProfileIntA(t[3].c_str(), t[4].c_str(), 7);
    if (!t[3].empty()) gOsl.profile->WriteProfileStringA(t[3].c_str(), t[4].empty() ? nullptr : t[4].c_str(), "v");
    return 0;
}
