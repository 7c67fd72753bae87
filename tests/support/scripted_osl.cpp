#include "scripted_osl.h"

#include "core/crsect.h"
#include "os/codepage.h"


#include <atomic>
#include <cstring>
#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

struct HeapScript {
    const OslMemoryService* real;
    OslMemoryService table;
    std::atomic<int> calls, allocations, frees;
    std::atomic<long> depth;
    int failFrom;
} sHeap;

bool allowed() {
    int n = ++sHeap.calls;
    return !sHeap.failFrom || n < sHeap.failFrom;
}
void noteDepth() { sHeap.depth = gpCRSECTMain ? CR_LockCount(gpCRSECTMain) : -1; }
template <class T>
T counted(T p) {
    if (p) ++sHeap.allocations;
    return p;
}

LPVOID scriptedAlloc(DWORD flags, SIZE_T bytes) {
    noteDepth();
    return allowed() ? counted(sHeap.real->HeapAlloc(flags, bytes)) : nullptr;
}
LPVOID scriptedReAlloc(DWORD flags, LPVOID block, SIZE_T bytes) {
    noteDepth();
    return allowed() ? sHeap.real->HeapReAlloc(flags, block, bytes) : nullptr;
}
BOOL scriptedFree(LPVOID block) {
    noteDepth();
    if (block) ++sHeap.frees;
    return sHeap.real->HeapFree(block);
}
SIZE_T scriptedSize(LPVOID block) {
    noteDepth();
    return sHeap.real->HeapSize(block);
}
HGLOBAL WINAPI scriptedGlobalAlloc(UINT flags, SIZE_T bytes) {
    return allowed() ? counted(sHeap.real->GlobalAlloc(flags, bytes)) : nullptr;
}
HGLOBAL WINAPI scriptedGlobalReAlloc(HGLOBAL mem, SIZE_T bytes, UINT flags) {
    return allowed() ? sHeap.real->GlobalReAlloc(mem, bytes, flags) : nullptr;
}
HGLOBAL WINAPI scriptedGlobalFree(HGLOBAL mem) {
    HGLOBAL left = sHeap.real->GlobalFree(mem);
    if (mem && !left) ++sHeap.frees;
    return left;
}

struct VersionScript {
    OslSystemService table;
    ScriptedVersion::Script script;
    HMODULE module;
    std::string file;
    std::vector<std::string> paths;
} sVersion;

DWORD scriptedModuleFileName(HMODULE module, LPSTR name, DWORD size) {
    sVersion.module = module;
    const std::string& f = sVersion.script.file;
    if (f.empty() || f.size() >= size) return 0;
    std::memcpy(name, f.c_str(), f.size() + 1);
    return DWORD(f.size());
}
DWORD scriptedVersionSize(LPCSTR file) {
    sVersion.file = file;
    return sVersion.script.hasResource ? 64 : 0;
}
BOOL scriptedVersionInfo(LPCSTR, DWORD, LPVOID data) {
    if (sVersion.script.readable) std::memset(data, 0xEE, 64);
    return sVersion.script.readable;
}
BOOL scriptedVerQuery(LPVOID, LPCSTR path, LPVOID* value, UINT* length) {
    sVersion.paths.push_back(path);
    for (auto& [key, text] : sVersion.script.values) {
        if (key == path) {
            *value = const_cast<char*>(text.c_str());
            *length = UINT(text.size() + 1);
            return 1;
        }
    }
    return 0;
}

struct WindowScript {
    OslWindowService table;
    HWND active;
    int answer;
    std::vector<ScriptedWindow::Box> boxes;
} sWindow;

int WINAPI scriptedMessageBox(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    sWindow.boxes.push_back({owner, text ? text : "(null)", caption ? caption : "(null)", style});
    return sWindow.answer;
}
HWND WINAPI scriptedActiveWindow() { return sWindow.active; }

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
LPSTR WINAPI scriptedUpper(LPSTR s) { return OslCodePageUpper(sText.page, s); }
LPSTR WINAPI scriptedLower(LPSTR s) { return OslCodePageLower(sText.page, s); }

struct SharedScript {
    const OslSharedService* real;
    OslSharedService table;
    ScriptedShared::Script script;
    size_t nextWait;
    std::vector<DWORD> limits;
    std::atomic<int> levels, created, open;
} sShared;

std::string suffixed(LPCSTR name) { return std::string(name ? name : "") + sShared.script.suffix; }
void noteCreated(HANDLE h, LPSECURITY_ATTRIBUTES sa) {
    if (!h) return;
    ++sShared.created;
    auto* sd = sa ? static_cast<SECURITY_DESCRIPTOR*>(sa->lpSecurityDescriptor) : nullptr;
    if (sd && !sd->Dacl) ++sShared.open;
}

BOOL scriptedOpenToAll(PSECURITY_DESCRIPTOR sd) {
    return !sShared.script.failSecurity && sShared.real->OpenToAll(sd);
}
HANDLE scriptedCreateMapping(LPSECURITY_ATTRIBUTES sa, LPCSTR name, DWORD bytes, BOOL* created) {
    if (sShared.script.failMapping) return nullptr;
    HANDLE h = sShared.real->CreateMapping(sa, suffixed(name).c_str(), bytes, created);
    noteCreated(h, sa);
    return h;
}
HANDLE scriptedCreateMutex(LPSECURITY_ATTRIBUTES sa, LPCSTR name) {
    if (sShared.script.failMutex) return nullptr;
    HANDLE h = sShared.real->CreateMutex(sa, suffixed(name).c_str());
    noteCreated(h, sa);
    return h;
}
DWORD scriptedWait(HANDLE mutex, DWORD ms) {
    sShared.limits.push_back(ms);
    DWORD result;
    if (sShared.nextWait < sShared.script.waits.size()) {
        result = sShared.script.waits[sShared.nextWait++];
        if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) sShared.real->WaitMutex(mutex, ms);
    } else {
        result = sShared.real->WaitMutex(mutex, ms);
    }
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) ++sShared.levels;
    return result;
}
BOOL scriptedRelease(HANDLE mutex) {
    BOOL ok = sShared.real->ReleaseMutex(mutex);
    if (ok) --sShared.levels;
    return ok && !sShared.script.failRelease;
}

} // namespace

ScriptedHeap::ScriptedHeap(int failFrom) : m_saved(gOsl.memory) {
    sHeap.real = m_saved;
    sHeap.table = *m_saved;
    sHeap.table.HeapAlloc = scriptedAlloc;
    sHeap.table.HeapReAlloc = scriptedReAlloc;
    sHeap.table.HeapFree = scriptedFree;
    sHeap.table.HeapSize = scriptedSize;
    sHeap.table.GlobalAlloc = scriptedGlobalAlloc;
    sHeap.table.GlobalReAlloc = scriptedGlobalReAlloc;
    sHeap.table.GlobalFree = scriptedGlobalFree;
    sHeap.calls = sHeap.allocations = sHeap.frees = 0;
    sHeap.depth = -2;
    sHeap.failFrom = failFrom;
    gOsl.memory = &sHeap.table;
}
ScriptedHeap::~ScriptedHeap() { gOsl.memory = m_saved; }
int ScriptedHeap::Attempts() const { return sHeap.calls; }
int ScriptedHeap::Allocations() const { return sHeap.allocations; }
long ScriptedHeap::LastDepth() const { return sHeap.depth; }
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

ScriptedWindow::ScriptedWindow(HWND active, int answer) : m_saved(gOsl.window) {
    sWindow.table = *m_saved;
    sWindow.table.MessageBoxA = scriptedMessageBox;
    sWindow.table.GetActiveWindow = scriptedActiveWindow;
    sWindow.active = active;
    sWindow.answer = answer;
    sWindow.boxes.clear();
    gOsl.window = &sWindow.table;
}
ScriptedWindow::~ScriptedWindow() { gOsl.window = m_saved; }
const std::vector<ScriptedWindow::Box>& ScriptedWindow::Boxes() const { return sWindow.boxes; }

ScriptedVersion::ScriptedVersion(Script script) : m_saved(gOsl.system) {
    sVersion.table = *m_saved;
    sVersion.table.GetModuleFileNameA = scriptedModuleFileName;
    sVersion.table.GetFileVersionInfoSizeA = scriptedVersionSize;
    sVersion.table.GetFileVersionInfoA = scriptedVersionInfo;
    sVersion.table.VerQueryValueA = scriptedVerQuery;
    sVersion.script = std::move(script);
    sVersion.module = reinterpret_cast<HMODULE>(-1);
    sVersion.file.clear();
    sVersion.paths.clear();
    gOsl.system = &sVersion.table;
}
ScriptedVersion::~ScriptedVersion() { gOsl.system = m_saved; }
HMODULE ScriptedVersion::AskedModule() const { return sVersion.module; }
const std::string& ScriptedVersion::AskedFile() const { return sVersion.file; }
const std::vector<std::string>& ScriptedVersion::AskedPaths() const { return sVersion.paths; }
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

ScriptedShared::ScriptedShared(Script script) : m_saved(gOsl.shared) {
    sShared.real = m_saved;
    sShared.table = *m_saved;
    sShared.table.OpenToAll = scriptedOpenToAll;
    sShared.table.CreateMapping = scriptedCreateMapping;
    sShared.table.CreateMutex = scriptedCreateMutex;
    sShared.table.WaitMutex = scriptedWait;
    sShared.table.ReleaseMutex = scriptedRelease;
    sShared.script = std::move(script);
    sShared.nextWait = 0;
    sShared.limits.clear();
    sShared.levels = sShared.created = sShared.open = 0;
    gOsl.shared = &sShared.table;
}
ScriptedShared::~ScriptedShared() { gOsl.shared = m_saved; }
const std::vector<DWORD>& ScriptedShared::WaitLimits() const { return sShared.limits; }
int ScriptedShared::Levels() const { return sShared.levels; }
int ScriptedShared::Created() const { return sShared.created; }
int ScriptedShared::OpenSecurity() const { return sShared.open; }

std::string SharedSuffix() {
#ifdef _WIN32
    return "_" + std::to_string(GetCurrentProcessId());
#else
    return "_" + std::to_string(getpid());
#endif
}
