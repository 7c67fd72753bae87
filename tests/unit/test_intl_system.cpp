// The string family on the system's own code page and language, with no
// scripted service: the suite runs once as the machine is set up and once
// more under a Japanese locale (tests/CMakeLists.txt), where the platform's
// CharNextA walks Shift-JIS.
#include "intl_env.h"

#include <gtest/gtest.h>

namespace {

TEST(IntlSystem, StringsFollowTheSystemCodePage) {
    UINT acp = gOsl.text->GetACP();
    bool doubleByte = acp == 932 || acp == 936 || acp == 949 || acp == 950;
    LANGID primary = gOsl.system->GetSystemDefaultLangID() & 0x3FF;
    bool cjk = primary == 0x04 || primary == 0x11 || primary == 0x12;
    ASSERT_EQ(doubleByte, cjk) << "code page " << acp << " and language 0x" << std::hex << primary << " disagree";
    EXPECT_EQ(IntlDBCSEnabled(), int(doubleByte)) << "IntlDBCSEnabled under code page " << acp;
    char s[] = INTL_S;
    char dst[16];
    EXPECT_EQ(IntlStrLen(s), doubleByte ? 5 : 7) << "IntlStrLen(S) under code page " << acp;
    EXPECT_EQ(IntlStrLeftB(dst, s, 2), 2);
    EXPECT_EQ(Hex(dst), Hex(doubleByte ? "a " : "a\x88")) << "IntlStrLeftB(S, 2) under code page " << acp;
    EXPECT_EQ(IntlStrRightB(dst, s, 5), 5);
    EXPECT_EQ(Hex(dst), Hex(doubleByte ? " b\x88\x9F" "c" : "\x9F" "b\x88\x9F" "c")) << "IntlStrRightB(S, 5) under code page " << acp;
    EXPECT_EQ(IntlIsNthByteDB(s, 2), doubleByte ? 2 : 0) << "IntlIsNthByteDB(S, 2) under code page " << acp;
    EXPECT_EQ(IntlStrScan(s, const_cast<char*>("b")), doubleByte ? 2 : 3) << "IntlStrScan(S, b) under code page " << acp;
    char tail[] = "a\x88";
    EXPECT_EQ(IntlStrLen(tail), 2) << "a trailing lead byte is one character, code page " << acp;
    if (acp == 932) {
        char full[16];
        EXPECT_EQ(IntlStrJapanFull(full, const_cast<char*>("\xB6\xDE")), 1);
        EXPECT_EQ(Hex(full), Hex("\x83\x4B")) << "IntlStrJapanFull(B6 DE) under the system's Japanese";
        EXPECT_EQ(IntlDBCSBlank(), 0x8140);
    }
}

} // namespace
