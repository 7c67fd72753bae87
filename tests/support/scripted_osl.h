// Scripted backends for the OS seam: each puts a changed copy of one service
// table in force for its scope and restores the backend on the way out.
// They keep their script in static state, so only one of a kind at a time.
#ifndef OXL_TESTS_SCRIPTED_OSL_H
#define OXL_TESTS_SCRIPTED_OSL_H

#include "os/osl.h"

// The process heap, counting, with the Nth allocation (1-based, counted from
// the scope's start) and every one after it failing; 0 fails none.
class ScriptedHeap {
public:
    explicit ScriptedHeap(int failFrom = 0);
    ~ScriptedHeap();
    int Allocations() const; // successful ones
    int Frees() const;
    int Outstanding() const { return Allocations() - Frees(); }

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

// The ANSI code page: lead bytes, stepping and case of a chosen page (932,
// 936, 949 and 950 are double-byte), whatever the system's own page is.
class ScriptedText {
public:
    explicit ScriptedText(UINT codePage);
    ~ScriptedText();

private:
    const OslTextService* m_saved;
};

#endif
