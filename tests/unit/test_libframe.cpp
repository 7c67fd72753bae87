// The attach step: what load settled, and a second attach under other
// languages leaving it alone.
#include "core/libstate.h"
#include <oxlrt31/intl.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>


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

} // namespace
