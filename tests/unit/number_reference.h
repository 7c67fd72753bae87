// What the number tests measure the library against: records written as hex
// strings, and an exact decimal worked out here on strings of decimal digits,
// with nothing of the library in it. `Ref::record` turns an exact value into
// the bytes a record of it must have: base-100 digits aligned on the decimal
// point, rounded half up on the magnitude to 23 digits (22 negative), the
// exponent held to 4..124.
#ifndef OXL_TESTS_NUMBER_REFERENCE_H
#define OXL_TESTS_NUMBER_REFERENCE_H

#include <oxlrt31/number.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace numtest {

inline std::string hex(const tagNUMBER& n, int bytes = -1) {
    if (bytes < 0) bytes = 1 + (n.bLength & 0x3F);
    if (bytes > 25) bytes = 25;
    std::string s;
    char b[4];
    for (int i = 0; i < bytes; ++i) {
        std::snprintf(b, sizeof b, i ? " %02X" : "%02X", reinterpret_cast<const BYTE*>(&n)[i]);
        s += b;
    }
    return s;
}

inline int bytesIn(const std::string& hexText) { return int(hexText.size() + 1) / 3; }

inline tagNUMBER fromHex(const std::string& text) {
    tagNUMBER n;
    std::memset(&n, 0xEE, sizeof n); // bytes past the length are not ours to read
    BYTE* p = reinterpret_cast<BYTE*>(&n);
    for (size_t i = 0; i < text.size(); i += 3) p[i / 3] = BYTE(std::stoul(text.substr(i, 2), nullptr, 16));
    return n;
}

// Non-negative integers as decimal strings without leading zeros ("" is 0).
namespace big {
inline std::string trim(std::string s) {
    size_t i = s.find_first_not_of('0');
    return i == std::string::npos ? "" : s.substr(i);
}
inline int cmp(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a < b ? -1 : (a > b ? 1 : 0);
}
inline std::string add(const std::string& a, const std::string& b) {
    std::string r;
    int carry = 0;
    for (size_t i = 0; i < a.size() || i < b.size() || carry; ++i) {
        int s = carry + (i < a.size() ? a[a.size() - 1 - i] - '0' : 0) + (i < b.size() ? b[b.size() - 1 - i] - '0' : 0);
        r.insert(r.begin(), char('0' + s % 10));
        carry = s / 10;
    }
    return trim(r);
}
inline std::string sub(const std::string& a, const std::string& b) { // a >= b
    std::string r = a;
    int borrow = 0;
    for (size_t i = 0; i < r.size(); ++i) {
        int s = (r[r.size() - 1 - i] - '0') - borrow - (i < b.size() ? b[b.size() - 1 - i] - '0' : 0);
        borrow = s < 0;
        r[r.size() - 1 - i] = char('0' + s + (borrow ? 10 : 0));
    }
    return trim(r);
}
inline std::string mul(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty()) return "";
    std::string r(a.size() + b.size(), 0);
    for (size_t i = a.size(); i-- > 0;)
        for (size_t j = b.size(); j-- > 0;) {
            int t = r[i + j + 1] + (a[i] - '0') * (b[j] - '0');
            r[i + j + 1] = char(t % 10);
            r[i + j] = char(r[i + j] + t / 10);
        }
    for (char& c : r) c = char(c + '0');
    return trim(r);
}
inline std::string div(const std::string& a, const std::string& b) { // floor(a / b), b > 0
    std::string q, rem;
    for (char c : a) {
        rem = trim(rem + c);
        int digit = 0;
        while (cmp(rem, b) >= 0) {
            rem = sub(rem, b);
            ++digit;
        }
        q += char('0' + digit);
    }
    return trim(q);
}
} // namespace big

// sign * mag * 10^exp10, exactly.
struct Ref {
    bool negative = false;
    std::string mag; // "" is zero
    int exp10 = 0;

    static Ref parse(const std::string& text) {
        Ref r;
        size_t i = 0;
        if (text[0] == '-') r.negative = true, i = 1;
        size_t e = text.find_first_of("eE");
        std::string body = text.substr(i, e == std::string::npos ? std::string::npos : e - i);
        size_t dot = body.find('.');
        if (dot != std::string::npos) {
            r.exp10 = -int(body.size() - dot - 1);
            body.erase(dot, 1);
        }
        if (e != std::string::npos) r.exp10 += std::stoi(text.substr(e + 1));
        r.mag = big::trim(body);
        if (r.mag.empty()) r.negative = false;
        return r;
    }
    bool zero() const { return mag.empty(); }
    // Brought to the exponent `to` (at most exp10) without changing the value.
    std::string at(int to) const { return zero() ? "" : mag + std::string(exp10 - to, '0'); }
    // Cut towards zero to a multiple of 10^place.
    Ref cut(int place) const {
        Ref r = *this;
        if (zero() || exp10 >= place) return r;
        int drop = place - exp10;
        r.mag = drop >= int(mag.size()) ? "" : big::trim(mag.substr(0, mag.size() - drop));
        r.exp10 = place;
        if (r.mag.empty()) r.negative = false;
        return r;
    }
    // Rounded half away from zero to a multiple of 10^place.
    Ref round(int place) const {
        if (zero() || exp10 >= place) return *this;
        Ref r = cut(place);
        int drop = place - exp10;
        char first = drop > int(mag.size()) ? '0' : mag[mag.size() - drop];
        if (first >= '5') {
            r.mag = big::add(r.mag, "1");
            r.negative = negative;
        }
        return r;
    }
    // The base-100 place of the first digit: value < 100^(p + 1), E = p + 65.
    int place100() const {
        int top = exp10 + int(mag.size()) - 1; // decimal place of the first digit
        return top >= 0 ? top / 2 : -((-top + 1) / 2);
    }
    int compareMagnitude(const Ref& o) const {
        if (zero() || o.zero()) return int(!zero()) - int(!o.zero());
        int low = exp10 < o.exp10 ? exp10 : o.exp10;
        return big::cmp(at(low), o.at(low));
    }
    friend Ref operator+(const Ref& a, const Ref& b) {
        if (a.zero()) return b;
        if (b.zero()) return a;
        int low = a.exp10 < b.exp10 ? a.exp10 : b.exp10;
        Ref r;
        r.exp10 = low;
        if (a.negative == b.negative) {
            r.mag = big::add(a.at(low), b.at(low));
            r.negative = a.negative;
        } else if (big::cmp(a.at(low), b.at(low)) >= 0) {
            r.mag = big::sub(a.at(low), b.at(low));
            r.negative = a.negative;
        } else {
            r.mag = big::sub(b.at(low), a.at(low));
            r.negative = b.negative;
        }
        if (r.mag.empty()) r.negative = false;
        return r;
    }
    Ref operator-() const {
        Ref r = *this;
        r.negative = !zero() && !negative;
        return r;
    }
    friend Ref operator*(const Ref& a, const Ref& b) {
        Ref r;
        r.mag = big::mul(a.mag, b.mag);
        r.exp10 = a.exp10 + b.exp10;
        r.negative = !r.mag.empty() && a.negative != b.negative;
        return r;
    }

    // The record of this value (see the head of this file).
    std::string record() const {
        if (zero()) return "01 C0";
        int e;
        std::string digits = pairs(&e);
        int limit = negative ? 22 : 23;
        if (int(digits.size()) > 2 * limit) {
            bool up = digits[2 * limit] >= '5';
            digits.resize(2 * limit);
            if (up) {
                std::string bumped = big::add(digits, "1");
                if (bumped.size() > digits.size()) { // 99..99 + 1: the digit 1 one place higher
                    digits = "01";
                    ++e;
                } else {
                    digits = std::string(digits.size() - bumped.size(), '0') + bumped;
                }
            }
        }
        while (digits.size() >= 2 && digits.compare(digits.size() - 2, 2, "00") == 0) digits.resize(digits.size() - 2);
        e = e < 4 ? 4 : (e > 124 ? 124 : e);
        int count = int(digits.size()) / 2;
        char b[4];
        std::string s;
        std::snprintf(b, sizeof b, "%02X", negative ? count + 2 : count + 1);
        s += b;
        std::snprintf(b, sizeof b, " %02X", negative ? BYTE(~(0x80 + e)) : 0x80 + e);
        s += b;
        for (int i = 0; i < count; ++i) {
            int d = (digits[2 * i] - '0') * 10 + digits[2 * i + 1] - '0';
            std::snprintf(b, sizeof b, " %02X", negative ? 100 - d : d);
            s += b;
        }
        if (negative) s += " 65";
        return s;
    }
    // The value a normal record stands for, read from its bytes.
    static Ref ofRecord(const tagNUMBER& n) {
        Ref r;
        int len = n.bLength & 0x3F;
        if (len < 2) return r;
        r.negative = !(n.abData[0] & 0x80);
        int e = (r.negative ? BYTE(~n.abData[0]) : n.abData[0]) & 0x7F;
        int count = r.negative ? len - 2 : len - 1;
        for (int i = 0; i < count; ++i) {
            int d = r.negative ? 100 - n.abData[1 + i] : n.abData[1 + i];
            r.mag += char('0' + d / 10);
            r.mag += char('0' + d % 10);
        }
        r.exp10 = 2 * (e - 64 - count);
        r.mag = big::trim(r.mag);
        if (r.mag.empty()) r.negative = false;
        return r;
    }
    // Base-100 digits as decimal pairs, first pair non-zero, no trailing
    // zero pair; *e receives E.
    std::string pairs(int* e) const {
        int low = exp10 % 2 ? exp10 - 1 : exp10;
        std::string digits = at(low);
        if (digits.size() % 2) digits.insert(0, "0");
        *e = 64 + (low + int(digits.size())) / 2;
        while (digits.size() >= 2 && digits.compare(digits.size() - 2, 2, "00") == 0) digits.resize(digits.size() - 2);
        return digits;
    }
    std::string text() const {
        std::string s = negative ? "-" : "";
        return s + (zero() ? "0" : mag) + "e" + std::to_string(exp10);
    }
};

// A record made by the reference from decimal text.
inline tagNUMBER rec(const std::string& text) { return fromHex(Ref::parse(text).record()); }

// Random values of up to `digits` significant decimal digits around 10^0,
// spread over `spread` decimal places either side, a few zeros among them.
inline Ref randomRef(std::mt19937& rng, int digits, int spread) {
    std::uniform_int_distribution<int> len(1, digits), dig(0, 9), exp(-spread, spread), coin(0, 9);
    Ref r;
    if (coin(rng) == 0) return r;
    int n = len(rng);
    for (int i = 0; i < n; ++i) r.mag += char('0' + (coin(rng) < 2 ? (coin(rng) < 5 ? 0 : 9) : dig(rng)));
    r.mag = big::trim(r.mag);
    r.exp10 = exp(rng) - n / 2;
    r.negative = !r.mag.empty() && coin(rng) < 5;
    return r;
}

} // namespace numtest

#endif
