// What the string family's fuzz targets share: the languages an input can
// choose with its first byte, its texts, and copies in buffers of exactly their size.
#ifndef OXL_FUZZ_INTL_H
#define OXL_FUZZ_INTL_H

#include "tests/unit/intl_env.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

// The four double-byte languages, English, and two mismatched pairs
// (English on a double-byte page, Japanese on 1252).
inline const Language kFuzzLanguages[] = {
    kEnglish, kJapanese, kChinese, kKorean, kTaiwanese, {"English on 932", 0x0409, 932}, {"Japanese on 1252", 0x0411, 1252},
};

// The first n texts of data separated by zero bytes; those missing are empty.
inline std::vector<std::string> FuzzTexts(const unsigned char* data, size_t size, int n) {
    std::vector<std::string> texts;
    const char *p = reinterpret_cast<const char*>(data), *end = p + size;
    for (; int(texts.size()) < n; p = std::min(p + texts.back().size() + 1, end)) texts.emplace_back(p, strnlen(p, size_t(end - p)));
    return texts;
}

// A buffer of exactly n bytes (at least 1), starting with s and its terminator as far as they fit; the rest is 0xEE.
inline char* FuzzDup(const std::string& s, size_t n = 0) {
    void* p = std::memset(std::malloc(n ? n : s.size() + 1), 0xEE, n ? n : s.size() + 1);
    return static_cast<char*>(std::memcpy(p, s.c_str(), n ? std::min(n, s.size() + 1) : s.size() + 1));
}

#endif
