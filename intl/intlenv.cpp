// The character environment, from the system's language: the double-byte
// path looks at the system language alone, right-to-left also at the user's.
#include <oxlrt31/intl.h>

#include "../core/libstate.h"
#include "../os/osl.h"

namespace {

enum : WORD {
    LANG_ARABIC_ = 0x01,
    LANG_CHINESE_ = 0x04,
    LANG_HEBREW_ = 0x0D,
    LANG_JAPANESE_ = 0x11,
    LANG_KOREAN_ = 0x12,
    LANG_FARSI_ = 0x29,
};

bool rightToLeft(unsigned primary) {
    return primary == LANG_ARABIC_ || primary == LANG_HEBREW_ || primary == LANG_FARSI_;
}

} // namespace

void OXLAPI IntlInit(void) {
    LIBSTATE& s = *gpLibState;
    s.bDBCS = s.nDBCSLanguage = s.bBiDi = 0;
    s.wSystemLangId = gOsl.system->GetSystemDefaultLangID();
    s.wPrimaryLangId = s.wSystemLangId & 0x3FF;
    switch (s.wPrimaryLangId) {
    case LANG_JAPANESE_: s.nDBCSLanguage = 1; break;
    case LANG_CHINESE_: s.nDBCSLanguage = 2; break;
    case LANG_KOREAN_: s.nDBCSLanguage = 3; break;
    default:
        s.bBiDi = rightToLeft(s.wPrimaryLangId) || rightToLeft(gOsl.system->GetUserDefaultLCID() & 0xFF);
        break;
    }
    s.bDBCS = s.nDBCSLanguage != 0;
}

int OXLAPI IntlDBCSEnabled(void) { return gpLibState->bDBCS; }

int OXLAPI IntlIsBiDiEnabled(void) { return gpLibState->bBiDi; }
