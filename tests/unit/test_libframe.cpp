// The attach step and the character environment it settles, under chosen
// system and user languages.
#include "core/libstate.h"
#include <oxlrt31/intl.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(LibFrame, LoadHasRunAndASecondAttachLeavesItAlone) {
    LIBSTATE before = *gpLibState;
    EXPECT_NE(before.hInstance, nullptr);
    EXPECT_EQ(before.dwPlatformId, DWORD(VER_PLATFORM_WIN32_NT));
    EXPECT_EQ(before.bProfileStale, 1);
    EXPECT_EQ(before.bTextLoaded, 1) << "the calendar text is loaded at load";
    EXPECT_EQ(before.wSystemLangId, gOsl.system->GetSystemDefaultLangID());
    {
        ScriptedSystem japanese(0x0411, 0x0411, 1);
        LibEntry(reinterpret_cast<HINSTANCE>(0x1234), DLL_PROCESS_ATTACH, nullptr);
        LibEntry(nullptr, DLL_THREAD_ATTACH, nullptr);
    }
    EXPECT_EQ(gpLibState->hInstance, before.hInstance);
    EXPECT_EQ(gpLibState->dwPlatformId, before.dwPlatformId);
    EXPECT_EQ(gpLibState->bDBCS, before.bDBCS);
    EXPECT_EQ(gpLibState->wSystemLangId, before.wSystemLangId);
}

TEST(IntlInit, EnvironmentFollowsTheLanguages) {
    const struct { LANGID system; LCID user; int dbcs, language, bidi; WORD primary; } cases[] = {
        {0x0409, 0x0409, 0, 0, 0, 0x09},  // English
        {0x0411, 0x0411, 1, 1, 0, 0x11},  // Japanese
        {0x0804, 0x0804, 1, 2, 0, 0x04},  // Chinese, PRC
        {0x0404, 0x0404, 1, 2, 0, 0x04},  // Chinese, Taiwan
        {0x0412, 0x0412, 1, 3, 0, 0x12},  // Korean
        {0x0401, 0x0401, 0, 0, 1, 0x01},  // Arabic
        {0x040D, 0x0409, 0, 0, 1, 0x0D},  // Hebrew system
        {0x0429, 0x0429, 0, 0, 1, 0x29},  // Farsi
        {0x0409, 0x040D, 0, 0, 1, 0x09},  // right-to-left user on an English system
        {0x0411, 0x0401, 1, 1, 0, 0x11},  // double-byte system: the user's language is not asked
        {0x0409, 0x0411, 0, 0, 0, 0x09},  // Japanese user alone turns no double-byte path on
        {0x7C11, 0x0409, 1, 1, 0, 0x011}, // sublanguage bits are not the language
    };
    for (const auto& c : cases) {
        {
            ScriptedSystem system(c.system, c.user);
            IntlInit();
        }
        const LIBSTATE& s = *gpLibState;
        std::ostringstream what;
        what << std::hex << "IntlInit, system 0x" << c.system << " user 0x" << c.user;
        EXPECT_EQ(s.bDBCS, c.dbcs) << what.str();
        EXPECT_EQ(s.nDBCSLanguage, c.language) << what.str();
        EXPECT_EQ(s.bBiDi, c.bidi) << what.str();
        EXPECT_EQ(s.wSystemLangId, c.system) << what.str();
        EXPECT_EQ(s.wPrimaryLangId, c.primary) << what.str();
        EXPECT_EQ(IntlDBCSEnabled(), c.dbcs) << what.str();
        EXPECT_EQ(IntlIsBiDiEnabled(), c.bidi) << what.str();
    }
    IntlInit(); // back to the real system's environment
}

} // namespace
