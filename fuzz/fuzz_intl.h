// What the string family's fuzz targets share: the languages an input can
// choose with its first byte, and copies in buffers of exactly their size.
#ifndef OXL_FUZZ_INTL_H
#define OXL_FUZZ_INTL_H

#include "tests/unit/intl_env.h"

#include <cstdlib>
#include <cstring>
#include <string>

// The four double-byte languages, English, and two mismatched pairs
// (English on a double-byte page, Japanese on 1252).
inline const Language kFuzzLanguages[] = {
    kEnglish, kJapanese, kChinese, kKorean, kTaiwanese, {"English on 932", 0x0409, 932}, {"Japanese on 1252", 0x0411, 1252},
};

// A copy in a buffer of exactly its size, terminator included (ASan guards the end).
inline char* FuzzDup(const std::string& s) {
    char* p = static_cast<char*>(std::malloc(s.size() + 1));
    std::memcpy(p, s.c_str(), s.size() + 1);
    return p;
}

#endif
