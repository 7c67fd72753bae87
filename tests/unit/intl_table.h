// Tables of calls for the string family's tests. A row names its call, which
// runs on a fresh copy of the row's text, and says what came back and what
// dst holds afterwards; a table runs under each language it concerns.
#ifndef OXL_TESTS_INTL_TABLE_H
#define OXL_TESTS_INTL_TABLE_H

#include "intl_env.h"

#include <gtest/gtest.h>

// what: the call as written; run: the call on s, a copy of src, and dst, 64 bytes of 0xFF; result: what comes back;
// dst: what dst holds up to its terminator (null: not looked at; kUntouched: not written).
struct Call { const char* what; long (*run)(char* dst, char* s); const char* src; long result; const char* dst = nullptr; };
// The call of a row, and its text for the message: {CALL(IntlStrLeft(dst, s, 2)), ...}.
#define CALL(expr) #expr, []([[maybe_unused]] char* dst, [[maybe_unused]] char* s) -> long { return long(expr); }
// The same for f(dst, s, args...) and f(s, args...): {TO(IntlStrLeft, 2), ...}, {OF(IntlStrLen), ...}.
#define TO(f, ...) CALL_AS(#f "(dst, s" __VA_OPT__(", " #__VA_ARGS__) ")", f(dst, s __VA_OPT__(, ) __VA_ARGS__))
#define OF(f, ...) CALL_AS(#f "(s" __VA_OPT__(", " #__VA_ARGS__) ")", f(s __VA_OPT__(, ) __VA_ARGS__))
#define CALL_AS(text, expr) text, []([[maybe_unused]] char* dst, [[maybe_unused]] char* s) -> long { return long(expr); }
inline const char* const kUntouched = "(untouched)";

// An offset into s, or -1 for null; the bytes written to dst, up to the first still 0xFF.
inline long At(const char* p, const char* s) { return p ? long(p - s) : -1; }
inline long Written(const char* dst) { return At(static_cast<const char*>(std::memchr(dst, 0xFF, 64)), dst); }

template <class Languages, size_t N> void ExpectCalls(const Languages& langs, const Call (&calls)[N]) {
    for (const Language& l : langs) {
        IntlUnder env(l);
        for (const Call& c : calls) {
            std::string src = c.src, what = std::string(c.what) + " with s = " + Hex(c.src) + " under " + l.name;
            char dst[64];
            std::memset(dst, 0xFF, sizeof dst);
            EXPECT_EQ(c.run(dst, src.data()), c.result) << what;
            std::string got = c.dst != kUntouched ? std::string(dst, strnlen(dst, sizeof dst)) : BYTE(dst[0]) == 0xFF ? kUntouched : "";
            EXPECT_EQ(c.dst ? Hex(got) : "", c.dst ? Hex(c.dst) : "") << "dst of " << what;
            EXPECT_EQ(Hex(src), Hex(c.src)) << "s after " << what;
        }
    }
}
template <size_t N> void ExpectCalls(std::initializer_list<Language> l, const Call (&c)[N]) { ExpectCalls<decltype(l), N>(l, c); }

#endif
