// The internal error box and the version strings, through scripted window
// and version services.
#include <oxlrt31/diag.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(AssertBox, TextCaptionStyleAndOwner) {
    std::string longName(300, 'n');
    const struct {
        const char* file;
        DWORD line;
        std::string text;
    } cases[] = {
        {"format.xx", 120, "Internal Error: format.120"},
        {"mem.cpp", 7, "Internal Error: mem.c7"},
        {"a", 0, "Internal Error:0"},
        {"", 5, "Internal Error5"},
        {nullptr, 5, "Internal Error5"},
        {"x.c", 0xFFFFFFFF, "Internal Error: x-1"},
        {longName.c_str(), 4294967295u - 2147483647u, "Internal Error: " + std::string(172, 'n') + "-2147483648"},
    };
    HWND active = reinterpret_cast<HWND>(0x4321);
    for (const auto& c : cases) {
        ScriptedWindow window(active);
        AssertBox(const_cast<char*>(c.file), c.line);
        std::string what = std::string("AssertBox(\"") + std::string(c.file ? c.file : "(null)").substr(0, 12) + "\", " +
                           std::to_string(c.line) + ")";
        ASSERT_EQ(window.Boxes().size(), 1u) << what << ": message boxes shown";
        const ScriptedWindow::Box& box = window.Boxes()[0];
        EXPECT_EQ(box.text, c.text) << what;
        EXPECT_LT(box.text.size(), 200u) << what;
        EXPECT_EQ(box.caption, "Oxlee") << what;
        EXPECT_EQ(box.style, 0x1010u) << what << ": MB_ICONHAND | MB_SYSTEMMODAL";
        EXPECT_EQ(box.owner, active) << what << ": owner";
    }
}

#ifndef _WIN32
TEST(AssertBox, PosixWritesTheBoxToStandardError) {
    testing::internal::CaptureStderr();
    AssertBox(const_cast<char*>("numpack.cpp"), 31);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Oxlee] Internal Error: numpack.c31\n");
}
#endif

const char kB0Product[] = "\\StringFileInfo\\040904b0\\ProductVersion";
const char kE4Product[] = "\\StringFileInfo\\040904E4\\ProductVersion";
const char kB0File[] = "\\StringFileInfo\\040904b0\\FileVersion";
const char kE4File[] = "\\StringFileInfo\\040904E4\\FileVersion";

TEST(VERGetVersionString, ReadsTheFirstTranslationThatHasTheValue) {
    using Values = std::vector<std::pair<std::string, std::string>>;
    const Values both = {{kB0Product, "P-b0"}, {kE4Product, "P-E4"}, {kB0File, "F-b0"}, {kE4File, "F-E4"}};
    const Values latinOnly = {{kE4Product, "P-E4"}, {kE4File, "F-E4"}};
    const Values other = {{"\\StringFileInfo\\040704b0\\ProductVersion", "de"}, {"\\StringFileInfo\\040704b0\\FileVersion", "de"}};
    const struct {
        const char* what;
        ScriptedVersion::Script script;
        int failAlloc; // ScriptedHeap: the allocation that fails first
        const char *product, *build; // null: 0 and the buffer untouched
    } cases[] = {
        {"both translations", {"C:\\m.dll", true, true, both}, 0, "P-b0", "F-b0"},
        {"only 040904E4", {"C:\\m.dll", true, true, latinOnly}, 0, "P-E4", "F-E4"},
        {"neither translation", {"C:\\m.dll", true, true, other}, 0, nullptr, nullptr},
        {"no version resource", {"C:\\m.dll", false, true, both}, 0, nullptr, nullptr},
        {"unreadable resource", {"C:\\m.dll", true, false, both}, 0, nullptr, nullptr},
        {"no module file name", {"", true, true, both}, 0, nullptr, nullptr},
        {"no memory", {"C:\\m.dll", true, true, both}, 1, nullptr, nullptr},
    };
    HMODULE module = reinterpret_cast<HMODULE>(0x7000);
    for (const auto& c : cases) {
        for (bool product : {true, false}) {
            const char* name = product ? "VERGetVersionString" : "VERGetBuildString";
            const char* want = product ? c.product : c.build;
            char buffer[32] = "untouched";
            ScriptedHeap heap(c.failAlloc);
            ScriptedVersion version(c.script);
            int got = (product ? VERGetVersionString : VERGetBuildString)(module, buffer);
            EXPECT_EQ(got, want ? 1 : 0) << name << ", " << c.what;
            EXPECT_STREQ(buffer, want ? want : "untouched") << name << ", " << c.what;
            EXPECT_EQ(heap.Outstanding(), 0) << name << ", " << c.what << ": blocks left";
            EXPECT_EQ(version.AskedModule(), module) << name << ", " << c.what << ": module asked for";
            if (!c.script.file.empty()) {
                EXPECT_EQ(version.AskedFile(), c.script.file) << name << ", " << c.what << ": file asked for";
            }
        }
    }
}

TEST(VERGetVersionString, AsksUnicodeThenLatinAndNothingElse) {
    ScriptedVersion version({"m.dll", true, true, {}});
    char buffer[8];
    EXPECT_EQ(VERGetBuildString(nullptr, buffer), 0);
    ASSERT_EQ(version.AskedPaths().size(), 2u) << "VERGetBuildString: VerQueryValueA calls";
    EXPECT_EQ(version.AskedPaths()[0], kB0File);
    EXPECT_EQ(version.AskedPaths()[1], kE4File);
    EXPECT_EQ(version.AskedModule(), nullptr) << "a null module is passed on as it is";
    EXPECT_EQ(VERGetVersionString(reinterpret_cast<HMODULE>(0x7000), nullptr), 0) << "VERGetVersionString(module, null)";
}

} // namespace
