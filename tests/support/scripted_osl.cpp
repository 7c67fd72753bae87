#include "scripted_osl.h"

#include <atomic>

namespace {

struct HeapScript {
    const OslMemoryService* real;
    OslMemoryService table;
    std::atomic<int> calls, allocations, frees;
    int failFrom;
} sHeap;

LPVOID scriptedAlloc(DWORD flags, SIZE_T bytes) {
    int n = ++sHeap.calls;
    if (sHeap.failFrom && n >= sHeap.failFrom) return nullptr;
    LPVOID p = sHeap.real->HeapAlloc(flags, bytes);
    if (p) ++sHeap.allocations;
    return p;
}

BOOL scriptedFree(LPVOID block) {
    if (block) ++sHeap.frees;
    return sHeap.real->HeapFree(block);
}

struct SystemScript {
    OslSystemService table;
    LANGID lang;
    LCID lcid;
    DWORD platform;
} sSystem;

LANGID WINAPI scriptedLang() { return sSystem.lang; }
LCID WINAPI scriptedLcid() { return sSystem.lcid; }
DWORD scriptedPlatform() { return sSystem.platform; }

} // namespace

ScriptedHeap::ScriptedHeap(int failFrom) : m_saved(gOsl.memory) {
    sHeap.real = m_saved;
    sHeap.table = *m_saved;
    sHeap.table.HeapAlloc = scriptedAlloc;
    sHeap.table.HeapFree = scriptedFree;
    sHeap.calls = sHeap.allocations = sHeap.frees = 0;
    sHeap.failFrom = failFrom;
    gOsl.memory = &sHeap.table;
}
ScriptedHeap::~ScriptedHeap() { gOsl.memory = m_saved; }
int ScriptedHeap::Allocations() const { return sHeap.allocations; }
int ScriptedHeap::Frees() const { return sHeap.frees; }

ScriptedSystem::ScriptedSystem(LANGID systemLang, LCID userLcid, DWORD platformId) : m_saved(gOsl.system) {
    sSystem.table = *m_saved;
    sSystem.table.GetSystemDefaultLangID = scriptedLang;
    sSystem.table.GetUserDefaultLCID = scriptedLcid;
    sSystem.table.GetPlatformId = scriptedPlatform;
    sSystem.lang = systemLang;
    sSystem.lcid = userLcid;
    sSystem.platform = platformId;
    gOsl.system = &sSystem.table;
}
ScriptedSystem::~ScriptedSystem() { gOsl.system = m_saved; }
