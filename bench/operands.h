// The operands every benchmark program uses, as text, so that each engine
// (ours, Boost's cpp_dec_float_50, oleaut32's DECIMAL) reads the same values.
#ifndef OXL_BENCH_OPERANDS_H
#define OXL_BENCH_OPERANDS_H

#include <oxlrt31/number.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace oxlbench {

// A short value with a fraction, and two with 46 significant digits.
inline constexpr const char* kShort = "12345.678";
inline constexpr const char* kLong1 = "1234567890123456789012345678901234567890123456";
inline constexpr const char* kLong2 = "9876543210987654321098765432109876543210987654";
// The longest operands a 96-bit DECIMAL takes from text: the first 28 of
// those digits, scaled down (oleaut32 refuses more digits than it keeps).
inline constexpr const char* kLong1Decimal = "1.234567890123456789012345678";
inline constexpr const char* kLong2Decimal = "9.876543210987654321098765432";
inline constexpr int kRoundPlaces = 2;
inline constexpr long kLongValue = 123456789;
// Room for the widest text of a record; NumToAscii needs width + 1 bytes.
inline constexpr unsigned short kTextWidth = 40;

// An operand as our record; an operand that does not read ends the program.
inline tagNUMBER fromText(const char* text) {
    tagNUMBER n;
    std::string copy(text);
    if (NumAsciiToNumber(&n, copy.data()) <= 0) {
        std::fprintf(stderr, "operand \"%s\" does not read\n", text);
        std::exit(1);
    }
    return n;
}

} // namespace oxlbench

#endif
