// The number picture targets' input: settings of a block, then a picture,
// then (for the readers) a text, separated by NUL bytes. Settings are drawn
// from the ranges a host keeps to; the texts are any bytes.
#ifndef OXL_FUZZ_NUMPIC_H
#define OXL_FUZZ_NUMPIC_H

#include "fuzz_check.h"

#include <oxlrt31/numpic.h>

#include <string>

struct FuzzNumInput {
    FMTCNTLBLOCK block;
    std::string symbol, picture, text;
};

// Three bytes of settings, then symbol, picture and text, each ended by NUL.
inline bool FuzzNumSplit(const unsigned char* data, size_t size, FuzzNumInput& in) {
    static const char kThousand[] = {',', '.', ' ', '\'', 0};
    static const char kDecimal[] = {'.', ',', 0};
    if (size < 3) return false;
    std::string rest(reinterpret_cast<const char*>(data + 3), size - 3);
    size_t a = rest.find('\0'), b = a == std::string::npos ? a : rest.find('\0', a + 1);
    in.symbol = rest.substr(0, a).substr(0, 7);
    in.picture = a == std::string::npos ? "" : rest.substr(a + 1, b == std::string::npos ? b : b - a - 1);
    in.text = b == std::string::npos ? "" : rest.substr(b + 1);
    FMTCNTLBLOCK& k = in.block;
    std::memset(&k, 0, sizeof k);
    FMTInitCntlBlock(&k);
    k.chThousand = kThousand[data[0] % 5], k.chDecimal = kDecimal[data[0] / 5 % 3];
    if (k.chDecimal == k.chThousand) k.chThousand = 0;
    k.iCurrency = data[1] % 4, k.iNegCurr = data[1] / 4 % 11, k.bLeadZero = data[2] & 1, k.nDigits = data[2] >> 1;
    k.lpszCurrency = const_cast<char*>(in.symbol.c_str()), k.lpszPicture = const_cast<char*>(in.picture.c_str());
    return true;
}

#endif
