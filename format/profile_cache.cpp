// The library's one cached copy of the regional settings. It is stale after
// load and after FMTWinIniChanged, and read from the store by the first
// getter that finds it so; the profile region guards it and its mark.
#include "fmtint.h"

#include "core/crsect.h"
#include "core/libstate.h"

namespace {

FMTPROFILEINTL sProfile;
// Separators for a thread that has no item: one string per key, shared.
char sSharedSep[2][2];

const char* separator(char c, int key) {
    FMTTHREADITEM* item = FMTThreadItem();
    char* out = item ? item->chSep : sSharedSep[key - FMTPS_THOUSAND];
    out[0] = c;
    out[1] = 0;
    return out;
}

} // namespace

void FMTReloadProfile(void) {
    CRSectGuard hold(gCRProfileSect);
    if (!gpLibState->bProfileStale) return;
    gpLibState->bProfileStale = 0;
    FMTGetProfileIntl(&sProfile);
}

void OXLAPI FMTWinIniChanged(void) {
    CRSectGuard hold(gCRProfileSect);
    gpLibState->bProfileStale = 1;
}

const char* FMTProfileString(int key) {
    CRSectGuard hold(gCRProfileSect);
    FMTReloadProfile();
    switch (key) {
    case FMTPS_SHORTDATE: return sProfile.sShortDate;
    case FMTPS_LONGDATE: return sProfile.sLongDate;
    case FMTPS_TIME: return sProfile.sTime;
    case FMTPS_1159: return sProfile.s1159;
    case FMTPS_2359: return sProfile.s2359;
    case FMTPS_CURRENCY: return sProfile.sCurrency;
    case FMTPS_THOUSAND: return separator(sProfile.chThousand, key);
    case FMTPS_DECIMAL: return separator(sProfile.chDecimal, key);
    default: return nullptr;
    }
}

LONG FMTProfileInt(int key) {
    CRSectGuard hold(gCRProfileSect);
    FMTReloadProfile();
    const FMTPROFILEINTL& p = sProfile;
    switch (key) {
    case FMTPI_TIME: return LONG(p.iTime);
    case FMTPI_TLZERO: return LONG(p.iTLZero);
    case FMTPI_LZERO: return LONG(p.iLzero);
    case FMTPI_DIGITS: return LONG(p.iDigits);
    case FMTPI_CURRDIGITS: return LONG(p.iCurrDigits);
    case FMTPI_NEGCURR: return LONG(p.iNegCurr);
    case FMTPI_DATETYPE: return LONG(p.iDateType);
    case FMTPI_EMPBOUNDARY: return LONG(p.iEmpDateBoundryCheck);
    case FMTPI_CURRENCY: return LONG((p.bCurrencySpace ? 2 : 0) + (p.bCurrencySuffix ? 1 : 0));
    case FMTPI_COUNTRY: return LONG(p.iCountry);
    default: return -1;
    }
}
