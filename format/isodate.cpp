// Dates in the fixed-position text "yyyy-mm-dd-hh.mm.ss.uuuuuu".
#include "fmtint.h"

#include <cstdlib>
#include <cstring>

namespace {

struct IsoField {
    size_t first, width; // the group's positions
    LONG DATDEF::*field;
};
constexpr IsoField kIsoFields[] = {
    {0, 4, &DATDEF::nYear},    {5, 2, &DATDEF::nMonth},   {8, 2, &DATDEF::nDay},
    {11, 2, &DATDEF::nHour},   {14, 2, &DATDEF::nMinute}, {17, 2, &DATDEF::nSecond},
    {20, 6, &DATDEF::nMicrosecond},
};

} // namespace

int OXLAPI FMTIsoToDatDef(const char* text, DATDEF* out) {
    *out = DATDEF{};
    size_t length = text ? std::strlen(text) : 0;
    for (const IsoField& f : kIsoFields) {
        if (length < f.first + f.width) break;
        char group[8] = {};
        std::memcpy(group, text + f.first, f.width);
        out->*f.field = std::atoi(group);
    }
    return 1;
}
