// CBOpenFile on real files, in a folder of the test's own that is the
// current directory, so that the search along the path finds its files.
#include "os/osl.h"

#include <oxlrt31/dlgutil.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;
const std::string kLong = std::string(245, 'L') + ".txt"; // beyond 260 characters in its folder

// What comes back, what the full-name buffer holds, whether the handle
// writes and whether the name exists afterwards (-1: not asked). A name
// beginning "/" is made absolute in the test's folder.
enum Result { kHandle, kNull, kFailed }; enum Out { kUntouched, kFull, kAsGiven, kNone }; // kNone: no buffer given
struct OpenRow { std::string name; DWORD flags; Result result; Out out; int writable, exists; };
const OpenRow kOpens[] = {
    {"a.txt", OF_READ, kHandle, kFull, 0, 1}, {"./a.txt", OF_READ, kHandle, kAsGiven, 0, 1}, {"./a.txt", OF_EXIST, kNull, kFull, -1, 1},
    {"a.txt", OF_EXIST, kNull, kFull, -1, 1}, {"/a.txt", OF_EXIST, kNull, kFull, -1, 1}, {"missing.txt", OF_EXIST, kFailed, kUntouched, -1, 0},
    {"missing.txt", OF_READ, kFailed, kUntouched, -1, 0}, {"./missing.txt", OF_READ, kFailed, kAsGiven, -1, 0},
    {"a.txt", OF_WRITE, kHandle, kFull, 1, 1}, {"a.txt", OF_READWRITE | OF_SHARE_DENY_NONE, kHandle, kFull, 1, 1},
    {"new.txt", OF_CREATE | OF_READWRITE, kHandle, kFull, 1, 1}, {"a.txt", OF_CREATE, kHandle, kFull, 0, 1},
    {"a.txt", OF_PARSE | OF_READWRITE | OF_SHARE_EXCLUSIVE, kNull, kUntouched, -1, 1}, {"a.txt", 0x8000, kFailed, kUntouched, -1, 1},
    {"a.txt", OF_EXIST | OF_CREATE, kFailed, kUntouched, -1, 1}, {"a.txt", OF_EXIST | OF_DELETE, kFailed, kUntouched, -1, 1},
    {"a.txt", OF_DELETE | OF_CREATE, kFailed, kUntouched, -1, 1}, {"a.txt", OF_DELETE, kNull, kUntouched, -1, 0},
    {"missing.txt", OF_DELETE, kFailed, kUntouched, -1, 0}, {"/" + kLong, OF_CREATE | OF_WRITE, kHandle, kNone, 1, 1},
    {"a.txt", OF_SHARE_DENY_WRITE, kHandle, kFull, 0, 1}, {"a.txt", OF_SHARE_DENY_READ, kHandle, kFull, 0, 1},
    {"a.txt", OF_SHARE_EXCLUSIVE, kHandle, kFull, 0, 1}, {std::string(CBOF_PATHMAX, 'n'), OF_READ, kFailed, kUntouched, -1, -1},
};

bool writes(HANDLE h) {
#ifdef _WIN32
    DWORD n = 0; return WriteFile(h, "x", 1, &n, nullptr) && n == 1;
#else
    return write(int(reinterpret_cast<intptr_t>(h)), "x", 1) == 1;
#endif
}
// A file that opens for reading (through the long form when its name is long).
bool opens(const std::string& name) {
    HANDLE h = CBOpenFile(name.c_str(), nullptr, OF_READ);
    return h != INVALID_HANDLE_VALUE && gOsl.dialog->CloseHandle(h);
}

class CBOpen : public ::testing::TestWithParam<OpenRow> {
protected:
    void SetUp() override { fs::create_directories(dir), fs::current_path(dir), dir = fs::current_path(), std::ofstream("a.txt") << "abc"; }
    void TearDown() override { std::error_code ignored; fs::current_path(home, ignored), fs::remove_all(dir, ignored); }
    fs::path home = fs::current_path(), dir = fs::temp_directory_path() / ("oxl-open-" + std::to_string(gOsl.sync->GetCurrentThreadId()));
};
TEST_P(CBOpen, FlagsOnRealFiles) {
    const OpenRow& r = GetParam();
    std::string what = "CBOpenFile(\"" + r.name.substr(0, 20) + "\", flags " + std::to_string(r.flags) + ")";
    std::string full = (dir / fs::path(r.name).filename()).string(), name = r.name[0] == '/' ? full : r.name;
    char out[CBOF_PATHMAX] = "untouched";
    HANDLE h = CBOpenFile(name.c_str(), r.out == kNone ? nullptr : out, r.flags);
    Result got = h == INVALID_HANDLE_VALUE ? kFailed : h ? kHandle : kNull;
    ASSERT_EQ(got, r.result) << what << ", last error " << gOsl.dialog->GetLastError();
    EXPECT_EQ(std::string(out), r.out == kUntouched || r.out == kNone ? "untouched" : r.out == kAsGiven ? r.name : full) << what;
    EXPECT_TRUE((r.flags != OF_EXIST && r.flags != OF_DELETE) || got != kFailed || gOsl.dialog->GetLastError() == 2) << what << ": a missing file";
    EXPECT_TRUE(r.name.size() < CBOF_PATHMAX || gOsl.dialog->GetLastError() == 87) << what << ": a name too long is an invalid parameter";
    EXPECT_TRUE(r.writable < 0 || writes(h) == (r.writable == 1)) << what << ": writing to the handle";
#ifdef _WIN32
    bool shared = (r.flags & 0x70) != OF_SHARE_EXCLUSIVE && (r.flags & 0x70) != OF_SHARE_DENY_READ; // the handle shares reading
    EXPECT_TRUE(got != kHandle || opens(name) == shared) << what << ": opening again for reading while open";
#endif
    if (got == kHandle) gOsl.dialog->CloseHandle(h);
    EXPECT_TRUE(r.exists < 0 || opens(full) == (r.exists == 1)) << what << ": the file afterwards";
}
INSTANTIATE_TEST_SUITE_P(Table, CBOpen, ::testing::ValuesIn(kOpens));
// The test program is found beside itself from another folder.
TEST(CBOpenFile, FindsAFileBesideTheProgram) {
    fs::path home = fs::current_path();
    fs::current_path(fs::temp_directory_path());
#ifdef _WIN32
    const char* self = "oxl_unit_tests.exe";
#else
    const char* self = "oxl_unit_tests";
#endif
    char out[CBOF_PATHMAX] = "";
    EXPECT_EQ(CBOpenFile(self, out, OF_EXIST), nullptr) << "CBOpenFile(\"" << self << "\", OF_EXIST) from " << fs::current_path();
    EXPECT_EQ(fs::path(out).filename().string(), self) << "the full name found: " << out;
    fs::current_path(home);
}
TEST(CBOpenFile, NoName) { EXPECT_EQ(CBOpenFile(nullptr, nullptr, OF_READ), INVALID_HANDLE_VALUE) << "CBOpenFile(null, null, OF_READ)"; }

} // namespace
