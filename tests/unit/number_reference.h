// What the number tests measure the library against: records written as hex
// text, and exact values on Boost's cpp_int (a signed integer times a power
// of ten) with nothing of the library in them. `Ref::record` gives the bytes
// a record of an exact value must have: base-100 digits aligned on the
// decimal point, rounded half up on the magnitude to 23 digits (22 when
// negative), the exponent held to 4..124.
#ifndef OXL_TESTS_NUMBER_REFERENCE_H
#define OXL_TESTS_NUMBER_REFERENCE_H

#include <oxlrt31/number.h>

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace numtest {

using Int = boost::multiprecision::cpp_int;

inline std::string hex(const tagNUMBER& n, int bytes = -1) {
    if (bytes < 0) bytes = 1 + (n.bLength & 0x3F);
    std::string s;
    char b[4];
    for (int i = 0; i < bytes && i < 25; ++i) {
        std::snprintf(b, sizeof b, i ? " %02X" : "%02X", reinterpret_cast<const BYTE*>(&n)[i]);
        s += b;
    }
    return s;
}
inline std::string rep(const char* byte, int times) { return times ? " " + std::string(byte) + rep(byte, times - 1) : ""; }
inline int bytesIn(const std::string& hexText) { return int(hexText.size() + 1) / 3; }
inline tagNUMBER fromHex(const std::string& text) {
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n); // bytes past the length are not ours to read
    for (size_t i = 0; i < text.size(); i += 3) (&n.bLength)[i / 3] = BYTE(std::stoul(text.substr(i, 2), nullptr, 16));
    return n;
}

inline Int pow10(int k) { return boost::multiprecision::pow(Int(10), unsigned(k)); }

struct Ref {
    Int v;         // signed
    int exp10 = 0; // value = v x 10^exp10

    static Ref parse(const std::string& text) { // [-]digits[.digits][e[-]digits]
        Ref r;
        bool point = false;
        size_t i = text[0] == '-' || text[0] == '+';
        for (; i < text.size() && text[i] != 'e'; ++i) {
            if (text[i] == '.') point = true;
            else r.v = r.v * 10 + (text[i] - '0'), r.exp10 -= point;
        }
        if (i < text.size()) r.exp10 += std::stoi(text.substr(i + 1));
        if (text[0] == '-') r.v = -r.v;
        return r;
    }
    // The value of a record's bytes as the format defines them; null, zero
    // and invalid lengths are 0.
    static Ref of(const tagNUMBER& n) {
        Ref r;
        int len = n.bLength & 0x3F;
        if (len < 2 || len > 24) return r;
        int negative = !(n.abData[0] & 0x80), count = len - 1 - negative;
        for (int i = 1; i <= count; ++i) r.v = r.v * 100 + (negative ? 100 - n.abData[i] : n.abData[i]);
        r.exp10 = 2 * (((negative ? ~n.abData[0] : n.abData[0]) & 0x7F) - 64 - count);
        if (negative) r.v = -r.v;
        return r;
    }
    bool negative() const { return v < 0; }
    Int mag() const { return v < 0 ? Int(-v) : v; }
    // Towards zero at 10^place; half away from zero when `round`.
    Ref at(int place, bool round = false) const {
        if (exp10 >= place) return *this;
        Int unit = pow10(place - exp10), q = mag() / unit;
        if (round && (mag() % unit) * 2 >= unit) ++q;
        return {negative() ? Int(-q) : q, place};
    }
    Ref operator-() const { return {-v, exp10}; }
    Ref operator+(const Ref& b) const {
        int e = std::min(exp10, b.exp10);
        return {v * pow10(exp10 - e) + b.v * pow10(b.exp10 - e), e};
    }
    Ref operator*(const Ref& b) const { return {v * b.v, exp10 + b.exp10}; }
    // The base-100 digits of the exact value, most significant first; *e is
    // the record's exponent for them (64 + the digits before the point).
    std::vector<int> digits(int* e) const {
        Int m = mag();
        int place = exp10; // of the last decimal
        if (place % 2) m *= 10, --place;
        std::vector<int> d;
        for (; m > 0; m /= 100) d.insert(d.begin(), int(Int(m % 100)));
        *e = 64 + int(d.size()) + place / 2;
        return d;
    }
    std::string record() const {
        int e, limit = negative() ? 22 : 23;
        std::vector<int> d = digits(&e);
        if (int(d.size()) > limit) d = at(2 * (e - 64 - limit), true).digits(&e);
        while (!d.empty() && d.back() == 0) d.pop_back();
        if (d.empty()) return "01 C0";
        e = std::max(4, std::min(124, e));
        tagNUMBER n;
        n.bLength = BYTE(d.size() + 1 + negative());
        n.abData[0] = BYTE(negative() ? ~(0x80 + e) : 0x80 + e);
        for (size_t i = 0; i < d.size(); ++i) n.abData[1 + i] = BYTE(negative() ? 100 - d[i] : d[i]);
        if (negative()) n.abData[n.bLength - 1] = 0x65;
        return hex(n);
    }
    tagNUMBER rec() const { return fromHex(record()); }
    std::string text() const { return v.str() + "e" + std::to_string(exp10); }
};

inline std::string want(const std::string& text) { return Ref::parse(text).record(); }
// Decimal text, or "#" and the record's bytes.
inline tagNUMBER rec(const std::string& text) { return text[0] == '#' ? fromHex(text.substr(1)) : Ref::parse(text).rec(); }

// A record of up to `digits` decimal digits, many of them 9 and 0 (carries
// and borrows run through them), at a decimal exponent within +-spread.
inline tagNUMBER randomRecord(std::mt19937& rng, int digits, int spread) {
    Int m;
    for (int k = 1 + int(rng() % digits); k > 0; --k) {
        unsigned style = rng() % 10;
        m = m * 10 + (style < 3 ? 9 : style < 5 ? 0 : int(rng() % 10));
    }
    Ref r{rng() % 2 ? Int(-m) : m, int(rng() % (2 * spread + 1)) - spread - digits / 2};
    return r.rec();
}

} // namespace numtest

#endif
