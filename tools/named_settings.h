// The regional settings the tools offer by name (oxl num, the SQLite
// extension's picture and date functions): a few countries' separators,
// currency and date pictures, and "profile", the profile in force. One
// table, so that oxl and SQL show a stored picture alike.
#ifndef OXL_TOOLS_NAMED_SETTINGS_H
#define OXL_TOOLS_NAMED_SETTINGS_H

#include <oxlrt31/numpic.h>

#include <string_view>

struct NamedSettings {
    const char* name;
    const char* currency;
    DWORD iCurrency, iNegCurr;
    char thousand, decimal;
    const char *shortPic, *longPic;
    DWORD h24, country;
};

// "profile" is the last entry: its fields come from the profile itself.
inline constexpr NamedSettings kNamedSettings[] = {
    {"us", "$", 0, 0, ',', '.', "M/d/yy", "dddd, MMMM dd, yyyy", 0, 1},
    {"de", "DM", 3, 8, '.', ',', "dd.MM.yyyy", "dddd, d. MMMM yyyy", 1, 49},
    {"fr", "F", 3, 8, ' ', ',', "dd/MM/yyyy", "dddd d MMMM yyyy", 1, 33},
    {"ch", "SFr.", 2, 2, '\'', '.', "dd.MM.yyyy", "dddd, d. MMMM yyyy", 1, 41},
    {"ja", "\\", 0, 1, ',', '.', "yyyy/MM/dd", "yyyy/MM/dd", 1, 81},
    {"profile", "", 0, 0, 0, 0, "", "", 0, 1},
};

// The settings of `name`; null for a name not in the table.
inline const NamedSettings* NamedSettingsOf(std::string_view name) {
    for (const NamedSettings& s : kNamedSettings)
        if (name == s.name) return &s;
    return nullptr;
}

inline bool NamedIsProfile(const NamedSettings& s) { return &s == &kNamedSettings[sizeof kNamedSettings / sizeof kNamedSettings[0] - 1]; }

// A block for numbers under the settings: two places, a leading zero.
inline void NamedNumberBlock(const NamedSettings& s, FMTCNTLBLOCK* b) {
    FMTInitCntlBlock(b);
    b->bUseProfile = NamedIsProfile(s);
    b->lpszCurrency = const_cast<char*>(s.currency);
    b->iCurrency = s.iCurrency, b->iNegCurr = s.iNegCurr;
    b->chThousand = s.thousand, b->chDecimal = s.decimal;
    b->bLeadZero = 1, b->nDigits = 2;
}

#endif
