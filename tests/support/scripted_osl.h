// Scripted backends for the OS seam: each puts a changed copy of one service
// table in force for its scope and restores the backend on the way out.
// They keep their script in static state, so only one of a kind at a time.
#ifndef OXL_TESTS_SCRIPTED_OSL_H
#define OXL_TESTS_SCRIPTED_OSL_H

#include "os/osl.h"

#include <string>
#include <vector>

// Each scripted backend is a scope: the services in force when it begins are
// in force again when it ends.
class ScriptedScope {
public:
    ScriptedScope() : m_saved(gOsl) {}
    ~ScriptedScope() { gOsl = m_saved; }
    ScriptedScope(const ScriptedScope&) = delete;
    ScriptedScope& operator=(const ScriptedScope&) = delete;

private:
    OslServices m_saved;
};

// The process heap and movable memory, counting, with the Nth allocation
// (1-based, counted from the scope's start) and every one after it failing;
// 0 fails none. Allocations are HeapAlloc, HeapReAlloc, GlobalAlloc and
// GlobalReAlloc; a reallocation moves no count, but it can fail.
class ScriptedHeap : ScriptedScope {
public:
    explicit ScriptedHeap(int failFrom = 0);
    int Attempts() const;    // allocations tried, failed or not
    int Outstanding() const; // new blocks, heap and movable, less those freed
    int Frees() const;
    // How deep the calling thread held the main region during the last heap
    // call (HeapAlloc, HeapReAlloc, HeapFree, HeapSize); -1 when
    // gpCRSECTMain was null, -2 when no heap call was made.
    long LastDepth() const;
};

// System identity: chosen languages and platform.
class ScriptedSystem : ScriptedScope {
public:
    ScriptedSystem(LANGID systemLang, LCID userLcid, DWORD platformId = VER_PLATFORM_WIN32_NT);
};

// Version resources: the module's file name (empty: GetModuleFileNameA
// fails), whether it has a resource and whether it can be read, and the
// values by query path. What was asked is recorded.
class ScriptedVersion : ScriptedScope {
public:
    struct Script { std::string file; bool hasResource, readable; std::vector<std::pair<std::string, std::string>> values; };
    explicit ScriptedVersion(Script script);
    HMODULE AskedModule() const;
    const std::string& AskedFile() const;               // of GetFileVersionInfoSizeA
    const std::vector<std::string>& AskedPaths() const; // of VerQueryValueA, in order
};

// The window service: message boxes are recorded, not shown, and answered
// with IDOK; the active window is `active`.
class ScriptedWindow : ScriptedScope {
public:
    struct Box { HWND owner; std::string text, caption; UINT style; };
    explicit ScriptedWindow(HWND active);
    const std::vector<Box>& Boxes() const;
};

// The ANSI code page: lead bytes, stepping and case of a chosen page (932,
// 936, 949 and 950 are double-byte), whatever the system's own page is.
class ScriptedText : ScriptedScope {
public:
    explicit ScriptedText(UINT codePage);
};

// Shared memory and the named mutex: the backend's own objects under names
// with `suffix` appended, so that suites running side by side never meet,
// and failures on demand. The scripted wait results are given one per wait,
// in order, before real waits resume; WAIT_OBJECT_0 and WAIT_ABANDONED take
// the mutex for real, so that levels and releases still balance.
class ScriptedShared : ScriptedScope {
public:
    struct Script {
        std::string suffix;
        bool failSecurity = false; // OpenToAll fails
        bool failMutex = false;    // CreateMutex fails
        bool failMapping = false;  // CreateMapping fails
        bool failRelease = false;  // ReleaseMutex releases but reports failure
        std::vector<DWORD> waits = {};
    };
    explicit ScriptedShared(Script script);
    const std::vector<DWORD>& WaitLimits() const; // the time limit of each wait, in order
    int Levels() const;       // mutex levels taken minus levels given back, all threads
    int Created() const;      // objects created or opened
    int OpenSecurity() const; // of them, with security that lets every user in
};

// The name of this process's shared objects in tests: unique per process.
std::string SharedSuffix();

#endif
