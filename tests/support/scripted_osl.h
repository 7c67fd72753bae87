// Scripted backends for the OS seam: each puts a changed copy of one service
// table in force for its scope and restores the backend on the way out.
// They keep their script in static state, so only one of a kind at a time.
#ifndef OXL_TESTS_SCRIPTED_OSL_H
#define OXL_TESTS_SCRIPTED_OSL_H

#include "os/osl.h"

#include <string>
#include <vector>

// The process heap and movable memory, counting, with the Nth allocation
// (1-based, counted from the scope's start) and every one after it failing;
// 0 fails none. Allocations are HeapAlloc, HeapReAlloc, GlobalAlloc and
// GlobalReAlloc; a reallocation moves no count, but it can fail.
class ScriptedHeap {
public:
    explicit ScriptedHeap(int failFrom = 0);
    ~ScriptedHeap();
    int Attempts() const;    // allocations tried, failed or not
    int Outstanding() const; // new blocks, heap and movable, less those freed
    int Frees() const;
    // How deep the calling thread held the main region during the last heap
    // call (HeapAlloc, HeapReAlloc, HeapFree, HeapSize); -1 when
    // gpCRSECTMain was null, -2 when no heap call was made.
    long LastDepth() const;

private:
    const OslMemoryService* m_saved;
};

// System identity: chosen languages and platform.
class ScriptedSystem {
public:
    ScriptedSystem(LANGID systemLang, LCID userLcid, DWORD platformId = VER_PLATFORM_WIN32_NT);
    ~ScriptedSystem();

private:
    const OslSystemService* m_saved;
};

// Version resources: the module's file name (empty: GetModuleFileNameA
// fails), whether it has a resource and whether it can be read, and the
// values by query path. What was asked is recorded.
class ScriptedVersion {
public:
    struct Script { std::string file; bool hasResource, readable; std::vector<std::pair<std::string, std::string>> values; };
    explicit ScriptedVersion(Script script);
    ~ScriptedVersion();
    HMODULE AskedModule() const;
    const std::string& AskedFile() const;               // of GetFileVersionInfoSizeA
    const std::vector<std::string>& AskedPaths() const; // of VerQueryValueA, in order

private:
    const OslSystemService* m_saved;
};

// The window service: message boxes are recorded, not shown, and answered
// with IDOK; the active window is `active`.
class ScriptedWindow {
public:
    struct Box { HWND owner; std::string text, caption; UINT style; };
    explicit ScriptedWindow(HWND active);
    ~ScriptedWindow();
    const std::vector<Box>& Boxes() const;

private:
    const OslWindowService* m_saved;
};

// The ANSI code page: lead bytes, stepping and case of a chosen page (932,
// 936, 949 and 950 are double-byte), whatever the system's own page is.
class ScriptedText {
public:
    explicit ScriptedText(UINT codePage);
    ~ScriptedText();

private:
    const OslTextService* m_saved;
};

// Shared memory and the named mutex: the backend's own objects under names
// with `suffix` appended, so that suites running side by side never meet,
// and failures on demand. The scripted wait results are given one per wait,
// in order, before real waits resume; WAIT_OBJECT_0 and WAIT_ABANDONED take
// the mutex for real, so that levels and releases still balance.
class ScriptedShared {
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
    ~ScriptedShared();
    const std::vector<DWORD>& WaitLimits() const; // the time limit of each wait, in order
    int Levels() const;       // mutex levels taken minus levels given back, all threads
    int Created() const;      // objects created or opened
    int OpenSecurity() const; // of them, with security that lets every user in

private:
    const OslSharedService* m_saved;
};

// The name of this process's shared objects in tests: unique per process.
std::string SharedSuffix();

#endif
