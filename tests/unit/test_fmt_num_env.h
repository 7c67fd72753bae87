// Settings for the number picture tests: blocks with settings of their own
// (A and B), and the regional settings of five kinds of user written into a
// scripted profile store, with the thread's currency forms dropped so that
// they are built again from that store.
#ifndef OXL_TESTS_FMT_NUM_ENV_H
#define OXL_TESTS_FMT_NUM_ENV_H

#include "format/numpicint.h"
#include "core/libstate.h"
#include "core/tls.h"
#include "intl_env.h"
#include "../support/scripted_profile.h"

#include <string>
#include <vector>

struct Settings { const char* name; const char* symbol; DWORD iCurrency, iNegCurr; char thousand, decimal; };
constexpr Settings kA = {"A", "$", 0, 0, ',', '.'};
constexpr Settings kB = {"B", "DM", 3, 8, '.', ','};

inline FMTCNTLBLOCK BlockOf(const Settings& s, const char* picture = nullptr, char* output = nullptr, DWORD useProfile = 0) {
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszCurrency = const_cast<char*>(s.symbol), b.iCurrency = s.iCurrency, b.iNegCurr = s.iNegCurr;
    b.chThousand = s.thousand, b.chDecimal = s.decimal, b.bLeadZero = 1, b.nDigits = 2, b.bUseProfile = useProfile;
    b.lpszPicture = const_cast<char*>(picture), b.lpszOutput = output;
    return b;
}
inline FMTCNTLBLOCK ProfileBlock(const char* picture, char* output) { return BlockOf({}, picture, output, 1); }

// A user's section "intl" as that user has it.
struct Locale { const char* name; std::vector<ProfileEntry> intl; };
inline Locale User(const char* name, const char* thousand, const char* decimal, const char* symbol, const char* iCurrency,
                   const char* iNegCurr, const char* iCurrDigits) {
    return {name, {{"intl", "sThousand", thousand}, {"intl", "sDecimal", decimal}, {"intl", "sCurrency", symbol},
                   {"intl", "iCurrency", iCurrency}, {"intl", "iNegCurr", iNegCurr}, {"intl", "iCurrDigits", iCurrDigits},
                   {"intl", "iDigits", "2"}, {"intl", "iLzero", "1"}}};
}
inline const Locale kUS = User("US", ",", ".", "$", "0", "0", "2"), kGerman = User("German", ".", ",", "DM", "3", "8", "2"),
                    kFrench = User("French", " ", ",", "F", "3", "8", "2"), kSwiss = User("Swiss", "'", ".", "SFr.", "2", "2", "2"),
                    kJapan = User("Japanese", ",", ".", "\\", "0", "1", "0");

// The locale's store in force, the cached profile marked stale and the
// thread's currency forms dropped, on the way in and out.
struct LocaleUnder {
    explicit LocaleUnder(const Locale& l) : store(l.intl) { Fresh(); }
    ~LocaleUnder() { Fresh(); }
    static void Fresh() { FMTWinIniChanged(), TLS_Free(gTLSNumPicSlot.Index()); }
    ScriptedProfile store;
};

inline tagNUMBER Num(const char* text) { tagNUMBER n; return NumAsciiToNumber(&n, text), n; }
inline std::string Text(const tagNUMBER& n) { char b[128]; return NumToAscii(&n, b, 108) > 0 ? b : ""; }

#endif
