// The internal error box and the version strings, through scripted window
// and version services.
#include <oxlrt31/diag.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

namespace {

// The text is "Internal Error: " and the file name with its last two
// characters cut, whatever they are, and the line run on behind in %d.
TEST(AssertBox, TextCaptionStyleAndOwner) {
    std::string longName(300, 'n');
    const struct { const char* file; DWORD line; std::string text; } cases[] = {
        {"format.xx", 120, "Internal Error: format.120"},
        {"mem.cpp", 7, "Internal Error: mem.c7"},
        {"a", 0, "Internal Error:0"},
        {"", 5, "Internal Error5"},
        {nullptr, 5, "Internal Error5"},
        {"x.c", 0xFFFFFFFF, "Internal Error: x-1"},
        // the buffer holds 200 characters: the name is cut to what leaves room for the number
        {longName.c_str(), 4294967295u - 2147483647u, "Internal Error: " + std::string(172, 'n') + "-2147483648"},
    };
    HWND active = reinterpret_cast<HWND>(0x4321);
    for (const auto& c : cases) {
        ScriptedWindow window(active);
        AssertBox(const_cast<char*>(c.file), c.line);
        std::string what = "AssertBox(\"" + std::string(c.file ? c.file : "(null)").substr(0, 12) + "\", " + std::to_string(c.line) + ")";
        ASSERT_EQ(window.Boxes().size(), 1u) << what << ": message boxes shown";
        const ScriptedWindow::Box& box = window.Boxes()[0];
        EXPECT_EQ(box.text, c.text) << what;
        EXPECT_EQ(box.caption, "Oxlee") << what;
        EXPECT_EQ(box.style, 0x1010u) << what << ": MB_ICONHAND | MB_SYSTEMMODAL";
        EXPECT_EQ(box.owner, active) << what << ": owner";
    }
#ifndef _WIN32
    testing::internal::CaptureStderr();
    AssertBox(const_cast<char*>("numpack.cpp"), 31);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Oxlee] Internal Error: numpack.c31\n") << "the POSIX box is a line on stderr";
#endif
}

const char kB0Product[] = "\\StringFileInfo\\040904b0\\ProductVersion", kE4Product[] = "\\StringFileInfo\\040904E4\\ProductVersion";
const char kB0File[] = "\\StringFileInfo\\040904b0\\FileVersion", kE4File[] = "\\StringFileInfo\\040904E4\\FileVersion";

// The Unicode translation first, then the Latin one, and nothing else; the
// buffer is left alone whenever the result is 0.
TEST(VERGetVersionString, ReadsTheFirstTranslationThatHasTheValue) {
    using Values = std::vector<std::pair<std::string, std::string>>;
    const Values both = {{kB0Product, "P-b0"}, {kE4Product, "P-E4"}, {kB0File, "F-b0"}, {kE4File, "F-E4"}};
    const Values latinOnly = {{kE4Product, "P-E4"}, {kE4File, "F-E4"}};
    const Values other = {{"\\StringFileInfo\\040704b0\\ProductVersion", "de"}, {"\\StringFileInfo\\040704b0\\FileVersion", "de"}};
    // failAlloc: the allocation that fails first, 0 none
    // product, build: the strings, or null for a result of 0 and the buffer untouched
    // queries: VerQueryValueA calls
    const struct { const char* what; ScriptedVersion::Script script; int failAlloc; const char *product, *build; size_t queries; } cases[] = {
        {"both translations", {"C:\\m.dll", true, true, both}, 0, "P-b0", "F-b0", 1},
        {"only 040904E4", {"C:\\m.dll", true, true, latinOnly}, 0, "P-E4", "F-E4", 2},
        {"neither translation", {"C:\\m.dll", true, true, other}, 0, nullptr, nullptr, 2},
        {"no version resource", {"C:\\m.dll", false, true, both}, 0, nullptr, nullptr, 0},
        {"unreadable resource", {"C:\\m.dll", true, false, both}, 0, nullptr, nullptr, 0},
        {"no module file name", {"", true, true, both}, 0, nullptr, nullptr, 0},
        {"no memory", {"C:\\m.dll", true, true, both}, 1, nullptr, nullptr, 0},
    };
    const HMODULE module = reinterpret_cast<HMODULE>(0x7000); // null is the program's: the module tests ask for it
    for (const auto& c : cases) {
        for (bool product : {true, false}) {
            std::string name = std::string(product ? "VERGetVersionString" : "VERGetBuildString") + ", " + c.what;
            const char* want = product ? c.product : c.build;
            char buffer[32] = "untouched";
            ScriptedHeap heap(c.failAlloc);
            ScriptedVersion version(c.script);
            EXPECT_EQ((product ? VERGetVersionString : VERGetBuildString)(module, buffer), want ? 1 : 0) << name;
            EXPECT_STREQ(buffer, want ? want : "untouched") << name;
            EXPECT_EQ(heap.Outstanding(), 0) << name << ": blocks left";
            EXPECT_EQ(version.AskedModule(), module) << name << ": module asked for, passed on as it is";
            EXPECT_EQ(version.AskedFile(), c.script.file.empty() ? "" : c.script.file) << name << ": file asked for";
            std::vector<std::string> paths = {product ? kB0Product : kB0File, product ? kE4Product : kE4File};
            paths.resize(c.queries);
            EXPECT_EQ(version.AskedPaths(), paths) << name << ": paths asked for";
        }
    }
    ScriptedVersion version({"m.dll", true, true, {{kB0Product, "P-b0"}}}); // a value there is, and no buffer for it
    EXPECT_EQ(VERGetVersionString(module, nullptr), 0) << "VERGetVersionString(module, null)";
}

#ifndef _WIN32
// The POSIX backend knows a module by any address inside it; an address in no
// module has no file name.
TEST(VERGetVersionString, PosixModuleFileNames) {
    char name[520];
    const struct { const char* what; HMODULE module; bool named; } rows[] = {
        {"null (the program)", nullptr, true}, {"an address in the program", reinterpret_cast<HMODULE>(&AssertBox), true},
        {"an address in no module", reinterpret_cast<HMODULE>(0x10), false}};
    for (const auto& r : rows) EXPECT_EQ(gOsl.system->GetModuleFileNameA(r.module, name, sizeof name) != 0, r.named) << "GetModuleFileNameA(" << r.what << ")";
    EXPECT_EQ(gOsl.system->GetFileVersionInfoSizeA("/no/such/module.so"), 0u) << "GetFileVersionInfoSizeA of a file that is not the library";
}

// The rest of the POSIX system and profile services: every field of the time
// is filled in, and a default longer than the buffer is cut to fit.
TEST(PosixBackend, SystemTimeAndProfileDefaults) {
    SYSTEMTIME st;
    std::memset(&st, 0xFF, sizeof st);
    gOsl.system->GetSystemTime(&st);
    const struct { const char* field; WORD got, low, high; } fields[] = {
        {"wYear", st.wYear, 2000, 9999}, {"wMonth", st.wMonth, 1, 12}, {"wDayOfWeek", st.wDayOfWeek, 0, 6}, {"wDay", st.wDay, 1, 31},
        {"wHour", st.wHour, 0, 23}, {"wMinute", st.wMinute, 0, 59}, {"wSecond", st.wSecond, 0, 60}, {"wMilliseconds", st.wMilliseconds, 0, 999},
    };
    for (const auto& f : fields) EXPECT_TRUE(f.got >= f.low && f.got <= f.high) << "GetSystemTime's " << f.field << " is " << f.got;
    char out[4] = "xxx";
    EXPECT_EQ(gOsl.profile->GetProfileStringA("intl", "sDate", "abcdef", out, sizeof out), 3u) << "GetProfileStringA with \"abcdef\" into 4 bytes";
    EXPECT_STREQ(out, "abc");
    char name[64] = "";
    EXPECT_EQ(gOsl.system->GetLocaleInfoA(0x400, 0x50, name, sizeof name), 0) << "GetLocaleInfoA of a type the locale has no name for: " << name;
    DWORD slot = gOsl.sync->TlsAlloc(); // a slot given back can't be given back twice, and is handed out again
    BOOL first = gOsl.sync->TlsFree(slot), second = gOsl.sync->TlsFree(slot);
    EXPECT_EQ(std::make_tuple(first, second, gOsl.sync->TlsAlloc()), std::make_tuple(1, 0, slot)) << "TlsFree twice";
    gOsl.sync->TlsFree(slot);
}
#endif

} // namespace
