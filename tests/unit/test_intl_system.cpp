// The string family on the system's own code page and language, with no
// scripted service: the suite runs once as the machine is set up and once
// more under a Japanese locale (tests/CMakeLists.txt), where the platform's
// CharNextA walks Shift-JIS.
#include "intl_env.h"

#include <gtest/gtest.h>

TEST(IntlSystem, StringsFollowTheSystemCodePage) {
    UINT acp = gOsl.text->GetACP();
    bool db = acp == 932 || acp == 936 || acp == 949 || acp == 950;
    LANGID primary = gOsl.system->GetSystemDefaultLangID() & 0x3FF;
    ASSERT_EQ(db, primary == 0x04 || primary == 0x11 || primary == 0x12) << "code page " << acp << ", language 0x" << std::hex << primary;
    char s[] = INTL_S, tail[] = "a\x88", dst[16], full[16];
    EXPECT_EQ(IntlDBCSEnabled(), int(db)) << "IntlDBCSEnabled under code page " << acp;
    EXPECT_EQ(IntlStrLen(s), db ? 5 : 7) << "IntlStrLen(S) under code page " << acp;
    EXPECT_EQ(Hex((IntlStrLeftB(dst, s, 2), dst)), Hex(db ? "a " : "a\x88")) << "IntlStrLeftB(S, 2) under code page " << acp;
    EXPECT_EQ(Hex((IntlStrRightB(dst, s, 5), dst)), Hex(db ? " b\x88\x9F" "c" : "\x9F" "b\x88\x9F" "c")) << "IntlStrRightB(S, 5), code page " << acp;
    EXPECT_EQ(IntlIsNthByteDB(s, 2), db ? 2 : 0) << "IntlIsNthByteDB(S, 2) under code page " << acp;
    EXPECT_EQ(IntlStrScan(s, const_cast<char*>("b")), db ? 2 : 3) << "IntlStrScan(S, b) under code page " << acp;
    EXPECT_EQ(IntlStrLen(tail), 2) << "a trailing lead byte is one character, code page " << acp;
    if (acp == 932) {
        EXPECT_EQ(IntlStrJapanFull(full, const_cast<char*>("\xB6\xDE")), 1);
        EXPECT_EQ(Hex(full), Hex("\x83\x4B")) << "IntlStrJapanFull(B6 DE) under the system's Japanese";
        EXPECT_EQ(IntlDBCSBlank(), 0x8140);
    }
}
