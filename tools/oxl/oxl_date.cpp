// oxl date: reads a typed date or time as a host's field would, shows the
// DATDEF, the flags and the picture that read it, and writes the value back
// under the pictures and date styles of the same settings.
//
//   oxl date [OPTIONS] TEXT [PICTURE]
//     without PICTURE: FMTValidateDateTime (short, long, known forms, Japanese)
//     with PICTURE:    FMTUnformatDateTimeStr under it, and written back under it
//   OPTIONS give settings in place of the profile in force:
//     --short PIC  --long PIC  --24h  --sep S  --country N  --type date|time|datetime
#include "oxl_tool.h"

#include <oxlrt31/datepic.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Settings {
    FMTPROFILEINTL profile;
    LONG nType = FMT_DATETIME;
    bool given = false; // any setting given: the block carries them, not the profile
    std::string shortPic, longPic, sep;
    bool h24 = false;
    LONG country = 1;
};

// The block of the settings: the profile's own, or the given ones.
FMTCNTLBLOCK Block(Settings& s, LONG nType, bool useProfile) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.nType = nType;
    b.bUseProfile = useProfile;
    b.lpszShortPic = s.shortPic.data(), b.lpszLongPic = s.longPic.data(), b.lpszTimeSep = s.sep.data();
    b.b24Hour = s.h24, b.bTimeLeadZero = s.profile.iTLZero;
    b.lpsz1159 = s.profile.s1159, b.lpsz2359 = s.profile.s2359;
    b.iCountry = DWORD(s.country), b.bEmpBoundryCheck = s.profile.iEmpDateBoundryCheck;
    return b;
}

std::string TimePicture(const Settings& s) {
    std::string t = s.h24 ? "hhhh" : "hh";
    t += s.sep + "mm" + s.sep + "ss" + s.sep + "mmmmmm";
    return s.h24 ? t : t + " AMPM";
}

// The picture that reads `text`, in the order FMTValidateDateTime tries.
std::string WhichPicture(Settings& s, char* text) {
    static const char* const kDateForms[] = {"MMM d, yyyy",  "MMM dd, yyyy",  "MMMM d, yyyy", "MMMM dd, yyyy",
                                             "yyyy-MM-dd",   "d MMM, yyyy",   "dd MMM, yyyy", "d MMMM, yyyy",
                                             "dd MMMM, yyyy", "M/d/yyyy",     "d-MMM-yyyy"};
    static const char* const kTimeForms[] = {"hh.mm.ss.mmmmmm AMPM", "hhhh.mm.ss.mmmmmm"};
    std::string time = TimePicture(s);
    auto with = [&](const std::string& pic, const std::string& t) { return s.nType == FMT_DATETIME ? pic + " " + t : pic; };
    std::vector<std::pair<std::string, std::string>> tries;
    if (s.nType == FMT_TIME) tries = {{time, "the default time picture"}};
    else tries = {{with(s.shortPic, time), "the short picture"}, {with(s.longPic, time), "the long picture"}};
    for (auto& [picture, why] : tries) {
        FMTCNTLBLOCK b = Block(s, s.nType, false);
        b.lpszInput = text, b.lpszPicture = picture.data();
        if (FMTUnformatDateTimeStr(&b)) return "\"" + picture + "\" (" + why + ")";
    }
    for (const char* date : kDateForms)
        for (const char* t : kTimeForms) {
            std::string pic = s.nType == FMT_TIME ? t : s.nType == FMT_DATE ? date
                              : std::string(date) + (std::strcmp(date, "yyyy-MM-dd") ? " " : "-") + t;
            FMTCNTLBLOCK b = Block(s, s.nType, false);
            b.lpszInput = text, b.lpszPicture = pic.data();
            if (FMTIsValidDateString(&b) == 1) return "\"" + pic + "\" (a known form)";
        }
    if (s.nType == FMT_DATETIME) return "a 24-hour retry, or a Japanese date";
    return "a Japanese date";
}

void ShowFlags(DWORD flags) {
    std::printf("  flags    ");
    if (flags & FMTF_HASDATE) std::printf(" FMTF_HASDATE");
    if (flags & FMTF_HASTIME) std::printf(" FMTF_HASTIME");
    if (flags & FMTF_NOHOURZERO) std::printf(" FMTF_NOHOURZERO");
    std::printf("\n");
}

// Writes the value under one picture or style; Shift-JIS for the Japanese styles.
void WriteBack(Settings& s, const DATDEF& d, const char* label, LONG nType, DWORD style, const char* picture) {
    FMTCNTLBLOCK b = Block(s, nType, false);
    b.datDef = d, b.iDateType = style;
    if (picture) b.lpszLongPic = const_cast<char*>(picture), b.dwFlags &= ~DWORD(FMTF_DEFAULTTIME);
    int most = FMTGetMaxFormattedDTLen(&b, 64);
    std::vector<char> out(size_t(most > 0 ? most : 64) + 1);
    b.lpszOutput = out.data();
    int ok = FMTFormatDateTime(&b, 0);
    std::string text = out.data();
    std::printf("  %-9s %s\n", label, ok ? (style >= 2 ? OxlFromShiftJis(text) : OxlFromLibrary(text)).c_str() : "(none: before the first era)");
}

bool Option(Settings& s, int& i, int argc, char** argv) {
    std::string o = argv[i];
    auto value = [&]() -> const char* { return i + 1 < argc ? argv[++i] : nullptr; };
    const char* v = nullptr;
    if (o == "--24h") s.h24 = true;
    else if (o == "--short" && (v = value())) s.shortPic = v;
    else if (o == "--long" && (v = value())) s.longPic = v;
    else if (o == "--sep" && (v = value())) s.sep = v;
    else if (o == "--country" && (v = value())) s.country = std::atol(v);
    else if (o == "--type" && (v = value())) {
        std::string t = v;
        s.nType = t == "date" ? FMT_DATE : t == "time" ? FMT_TIME : t == "datetime" ? FMT_DATETIME : 0;
        if (!s.nType) std::fprintf(stderr, "oxl date: --type is date, time or datetime, not '%s'\n", v);
        return s.nType != 0;
    } else {
        bool known = o == "--short" || o == "--long" || o == "--sep" || o == "--country" || o == "--type";
        std::fprintf(stderr, known ? "oxl date: %s needs a value\n" : "oxl date: no option %s\n", o.c_str());
        return false;
    }
    s.given = s.given || o != "--type";
    return true;
}

} // namespace

int OxlDate(int argc, char** argv) {
    Settings s;
    FMTGetProfileIntl(&s.profile);
    s.shortPic = s.profile.sShortDate, s.longPic = s.profile.sLongDate, s.sep = s.profile.sTime;
    s.h24 = s.profile.iTime != 0, s.country = LONG(s.profile.iCountry);
    int i = 0;
    for (; i < argc && !std::strncmp(argv[i], "--", 2); ++i)
        if (!Option(s, i, argc, argv)) return 2;
    if (argc - i < 1 || argc - i > 2) {
        std::fprintf(stderr, "oxl date: takes TEXT and perhaps a PICTURE after the options\n"
                             "usage: oxl date [--short PIC] [--long PIC] [--24h] [--sep S] [--country N] [--type date|time|datetime] TEXT [PICTURE]\n");
        return 2;
    }
    char* text = argv[i];
    char* picture = argc - i == 2 ? argv[i + 1] : nullptr;
    FMTCNTLBLOCK b = Block(s, s.nType, !s.given);
    b.lpszInput = text, b.lpszPicture = picture;
    const char* kinds[] = {"", "date", "time", "date-time"};
    int ok = picture ? FMTUnformatDateTimeStr(&b) : FMTValidateDateTime(&b);
    if (!ok) {
        std::fprintf(stderr, "oxl date: \"%s\" is no %s under %s\n", OxlFromLibrary(text).c_str(), kinds[s.nType],
                     picture ? ("the picture \"" + std::string(picture) + "\"").c_str()
                             : s.given ? "the settings given" : "the profile's settings");
        return 2;
    }
    std::printf("settings  %s: short \"%s\", long \"%s\", time \"%s\", country %ld\n", s.given ? "given" : "the profile's",
                s.shortPic.c_str(), s.longPic.c_str(), TimePicture(s).c_str(), long(s.country));
    if (picture) std::printf("FMTUnformatDateTimeStr(\"%s\"): 1\n", OxlFromLibrary(text).c_str());
    else std::printf("FMTValidateDateTime(\"%s\") as a %s: 1\n", OxlFromLibrary(text).c_str(), kinds[s.nType]);
    std::printf("  picture   %s\n", picture ? ("\"" + std::string(picture) + "\"").c_str() : WhichPicture(s, text).c_str());
    const DATDEF& d = b.datDef;
    std::printf("  DATDEF    month %ld, day %ld, year %ld, hour %ld, minute %ld, second %ld, microsecond %ld\n", long(d.nMonth),
                long(d.nDay), long(d.nYear), long(d.nHour), long(d.nMinute), long(d.nSecond), long(d.nMicrosecond));
    ShowFlags(b.dwFlags);
    std::printf("written back by FMTFormatDateTime:\n");
    if (picture) {
        WriteBack(s, d, "picture", FMT_DATETIME, 0, picture);
        return 0;
    }
    WriteBack(s, d, "short", FMT_DATE, 1, nullptr);
    WriteBack(s, d, "long", FMT_DATE, 0, nullptr);
    WriteBack(s, d, "date-time", FMT_DATETIME, 1, nullptr);
    WriteBack(s, d, "Japanese", FMT_DATE, 2, nullptr);
    WriteBack(s, d, "era", FMT_DATE, 3, nullptr);
    return 0;
}
