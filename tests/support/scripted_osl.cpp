#include "scripted_osl.h"

#include "os/codepage.h"

#include <cstring>

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

struct TextScript {
    OslTextService table;
    UINT page;
} sText;

UINT pageOf(WORD codePage) { return codePage ? codePage : sText.page; }
UINT WINAPI scriptedAcp() { return sText.page; }
BOOL WINAPI scriptedLead(BYTE b) { return OslCodePageLeadByte(sText.page, b); }
LPSTR WINAPI scriptedNext(LPCSTR s) { return const_cast<LPSTR>(OslCodePageNext(sText.page, s)); }
LPSTR WINAPI scriptedNextEx(WORD cp, LPCSTR s, DWORD) { return const_cast<LPSTR>(OslCodePageNext(pageOf(cp), s)); }
LPSTR WINAPI scriptedPrevEx(WORD cp, LPCSTR start, LPCSTR cur, DWORD) {
    return const_cast<LPSTR>(OslCodePagePrev(pageOf(cp), start, cur));
}
DWORD WINAPI scriptedUpperBuff(LPSTR s, DWORD n) { return OslCodePageUpperBuff(sText.page, s, n); }
DWORD WINAPI scriptedLowerBuff(LPSTR s, DWORD n) { return OslCodePageLowerBuff(sText.page, s, n); }
LPSTR WINAPI scriptedUpper(LPSTR s) {
    scriptedUpperBuff(s, DWORD(std::strlen(s)));
    return s;
}
LPSTR WINAPI scriptedLower(LPSTR s) {
    scriptedLowerBuff(s, DWORD(std::strlen(s)));
    return s;
}

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

ScriptedText::ScriptedText(UINT codePage) : m_saved(gOsl.text) {
    sText.table = *m_saved;
    sText.table.GetACP = scriptedAcp;
    sText.table.IsDBCSLeadByte = scriptedLead;
    sText.table.CharNextA = scriptedNext;
    sText.table.CharNextExA = scriptedNextEx;
    sText.table.CharPrevExA = scriptedPrevEx;
    sText.table.CharUpperA = scriptedUpper;
    sText.table.CharLowerA = scriptedLower;
    sText.table.CharUpperBuffA = scriptedUpperBuff;
    sText.table.CharLowerBuffA = scriptedLowerBuff;
    sText.page = codePage;
    gOsl.text = &sText.table;
}
ScriptedText::~ScriptedText() { gOsl.text = m_saved; }
