// The string family's tests run under chosen languages: the system's
// language and its ANSI code page are scripted, IntlInit settles the
// environment again, and the real environment comes back on the way out.
#ifndef OXL_TESTS_INTL_ENV_H
#define OXL_TESTS_INTL_ENV_H

#include <oxlrt31/intl.h>
#include "../support/scripted_osl.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

struct Language { const char* name; LANGID lang; UINT codePage; };
constexpr Language kEnglish = {"English", 0x0409, 1252};
constexpr Language kJapanese = {"Japanese", 0x0411, 932};
constexpr Language kChinese = {"Chinese", 0x0804, 936};
constexpr Language kKorean = {"Korean", 0x0412, 949};
constexpr Language kTaiwanese = {"Chinese (Taiwan)", 0x0404, 950};
constexpr Language kDoubleByte[] = {kJapanese, kChinese, kKorean, kTaiwanese};

class IntlUnder {
public:
    explicit IntlUnder(const Language& l, LCID user = 0) : m_system(l.lang, user ? user : l.lang), m_text(l.codePage) { IntlInit(); }

private:
    struct Resettle { ~Resettle() { IntlInit(); } } m_resettle; // first member: runs last, after the services are restored
    ScriptedSystem m_system;
    ScriptedText m_text;
};

// Bytes as hex, for failure messages: "61 88 9F".
inline std::string Hex(const std::string& s) {
    std::string out;
    char b[4];
    for (unsigned char c : s) out += (std::snprintf(b, sizeof b, out.empty() ? "%02X" : " %02X", c), b);
    return out.empty() ? "(empty)" : out;
}

// S of the tests: a K b K c, K being the double-byte character 88 9F (a
// lead byte in every double-byte page): 7 bytes, 5 characters.
#define INTL_S "a\x88\x9F" "b\x88\x9F" "c"

#endif
