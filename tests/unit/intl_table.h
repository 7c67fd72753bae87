// Tables of calls for the string family's tests. A row names its call, which
// runs on a fresh copy of the row's text, and says what dst holds afterwards
// and what came back; a table runs under each language it concerns.
#ifndef OXL_TESTS_INTL_TABLE_H
#define OXL_TESTS_INTL_TABLE_H

#include "intl_env.h"

#include <gtest/gtest.h>

#include <initializer_list>

struct Call {
    const char* what;                // the call as written, for failure messages
    long (*run)(char* dst, char* s); // s: a copy of src; dst: 64 bytes of 0xFF
    const char* src;
    long result;
    const char* dst = nullptr; // dst up to its terminator; null: not looked at; kUntouched: not written
};
// The call of a row, and its text for the message: {CALL(IntlStrLeft(dst, s, 2)), ...}.
#define CALL(expr) #expr, []([[maybe_unused]] char* dst, [[maybe_unused]] char* s) -> long { return long(expr); }

inline const char* const kUntouched = "(untouched)";

// An offset into s, or -1 for null.
inline long At(const char* p, const char* s) { return p ? long(p - s) : -1; }
// Bytes written to dst: up to the first byte still 0xFF.
inline long Written(const char* dst) { return long(static_cast<const char*>(std::memchr(dst, 0xFF, 64)) - dst); }

inline void ExpectCall(const Call& c, const char* under) {
    std::string src = c.src;
    char dst[64];
    std::memset(dst, 0xFF, sizeof dst);
    long r = c.run(dst, src.data());
    EXPECT_EQ(r, c.result) << c.what << " with s = " << Hex(c.src) << " under " << under;
    std::string got = c.dst == kUntouched ? std::string(BYTE(dst[0]) == 0xFF ? kUntouched : "(written)")
                                          : std::string(dst, strnlen(dst, sizeof dst));
    if (c.dst) {
        EXPECT_EQ(Hex(got), Hex(c.dst)) << c.what << ": dst with s = " << Hex(c.src) << " under " << under;
    }
    EXPECT_EQ(Hex(src), Hex(c.src)) << c.what << " changed s, under " << under;
}

template <class Languages, size_t N> void ExpectCalls(const Languages& langs, const Call (&calls)[N]) {
    for (const Language& l : langs) {
        IntlUnder env(l);
        for (const Call& c : calls) ExpectCall(c, l.name);
    }
}
template <size_t N> void ExpectCalls(std::initializer_list<Language> langs, const Call (&calls)[N]) {
    ExpectCalls<std::initializer_list<Language>, N>(langs, calls);
}

#endif
