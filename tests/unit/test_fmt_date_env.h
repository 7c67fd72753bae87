// What the date tests share: the clock and a profile store of their own
// (scripted_profile.h), and the block the tables start from.
#ifndef OXL_TESTS_FMT_DATE_ENV_H
#define OXL_TESTS_FMT_DATE_ENV_H

#include "os/osl.h"
#include "../support/scripted_profile.h"

#include <oxlrt31/datepic.h>

#include <cstring>
#include <functional>
#include <string>
#include <tuple>

// A profile store of the test's own, the cached settings read again from it
// at the next question and again from the real store after the test.
struct DateProfile {
    ScriptedProfile store;
    explicit DateProfile(std::vector<ProfileEntry> entries) : store(std::move(entries)) { FMTWinIniChanged(); }
    ~DateProfile() { FMTWinIniChanged(); }
};

// What a table row changes in a block before the call.
using Change = std::function<void(FMTCNTLBLOCK&)>;

// A block of the test's own settings: the short picture "M/d/yy", the long
// one "dddd, MMMM dd, yyyy", a 12-hour clock with ":" and no leading zero,
// "AM" and "PM", country 1, the long date style; flags FMTF_DEFAULTTIME.
// The output is filled with '~' to its last byte, a zero.
struct DateBlock {
    FMTCNTLBLOCK b;
    char out[256];
    DateBlock(LONG nType, const DATDEF& d = {1, 1, 2000, 0, 0, 0, 0}) {
        FMTInitCntlBlock(&b);
        b.nType = nType, b.lpszShortPic = const_cast<char*>("M/d/yy"), b.lpszLongPic = const_cast<char*>("dddd, MMMM dd, yyyy");
        b.lpszTimeSep = const_cast<char*>(":"), b.lpsz1159 = const_cast<char*>("AM"), b.lpsz2359 = const_cast<char*>("PM");
        b.dwFlags = FMTF_DEFAULTTIME, b.datDef = d, b.lpszOutput = out;
        std::memset(out, 0x7E, sizeof out), out[sizeof out - 1] = 0;
    }
    FMTCNTLBLOCK* operator->() { return &b; }
};

// Japanese texts are Shift-JIS bytes: two era names and the year, month and day marks.
#define HEISEI "\x95\xBD\x90\xAC"
#define SHOWA "\x8F\xBA\x98\x61"
#define NEN "\x94\x4E"
#define GATSU "\x8C\x8E"
#define NICHI "\x93\xFA"

inline DATDEF D(LONG m, LONG d, LONG y, LONG h = 0, LONG mi = 0, LONG s = 0, LONG us = 0) { return {m, d, y, h, mi, s, us}; }

inline std::string ShowDate(const DATDEF& d) {
    return std::to_string(d.nMonth) + "/" + std::to_string(d.nDay) + "/" + std::to_string(d.nYear) + " " + std::to_string(d.nHour) + ":" +
           std::to_string(d.nMinute) + ":" + std::to_string(d.nSecond) + "." + std::to_string(d.nMicrosecond);
}

#endif
