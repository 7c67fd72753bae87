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

LPVOID heapAlloc(DWORD flags, SIZE_T n) { return noteDepth(), allowed() ? counted(sHeap.real->HeapAlloc(flags, n)) : nullptr; }
LPVOID heapReAlloc(DWORD flags, LPVOID b, SIZE_T n) { return noteDepth(), allowed() ? sHeap.real->HeapReAlloc(flags, b, n) : nullptr; }
SIZE_T heapSize(const void* b) { return noteDepth(), sHeap.real->HeapSize(b); }
BOOL heapFree(LPVOID b) {
    noteDepth();
    if (b) ++sHeap.frees;
    return sHeap.real->HeapFree(b);
}
HGLOBAL WINAPI globalAlloc(UINT f, SIZE_T n) { return allowed() ? counted(sHeap.real->GlobalAlloc(f, n)) : nullptr; }
HGLOBAL WINAPI globalReAlloc(HGLOBAL m, SIZE_T n, UINT f) { return allowed() ? sHeap.real->GlobalReAlloc(m, n, f) : nullptr; }
HGLOBAL WINAPI globalFree(HGLOBAL m) {
    HGLOBAL left = sHeap.real->GlobalFree(m);
    if (m && !left) ++sHeap.frees;
    return left;
}

struct VersionScript {
    OslSystemService table;
    ScriptedVersion::Script script;
    HMODULE module;
    std::string file;
    std::vector<std::string> paths;
} sVersion;

DWORD moduleFileName(HMODULE module, LPSTR name, DWORD size) {
    sVersion.module = module;
    const std::string& f = sVersion.script.file;
    if (f.empty() || f.size() >= size) return 0;
    std::memcpy(name, f.c_str(), f.size() + 1);
    return DWORD(f.size());
}
DWORD versionSize(LPCSTR file) { return sVersion.file = file, sVersion.script.hasResource ? 64 : 0; }
BOOL versionInfo(LPCSTR, DWORD, LPVOID data) {
    if (sVersion.script.readable) std::memset(data, 0xEE, 64);
    return sVersion.script.readable;
}
BOOL verQuery(LPVOID, LPCSTR path, LPVOID* value, UINT* length) {
    sVersion.paths.push_back(path);
    for (auto& [key, text] : sVersion.script.values) {
        if (key != path) continue;
        *value = const_cast<char*>(text.c_str());
        *length = UINT(text.size() + 1);
        return 1;
    }
    return 0;
}

struct WindowScript { OslWindowService table; HWND active; std::vector<ScriptedWindow::Box> boxes; } sWindow;

int WINAPI messageBox(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    sWindow.boxes.push_back({owner, text ? text : "(null)", caption ? caption : "(null)", style});
    return IDOK;
}
HWND WINAPI activeWindow() { return sWindow.active; }

struct SystemScript { OslSystemService table; LANGID lang; LCID lcid; DWORD platform; } sSystem;

LANGID WINAPI langOf() { return sSystem.lang; }
LCID WINAPI lcidOf() { return sSystem.lcid; }
DWORD platformOf() { return sSystem.platform; }

struct TextScript { OslTextService table; UINT page; } sText;

UINT pageOf(WORD codePage) { return codePage ? codePage : sText.page; }
UINT WINAPI acp() { return sText.page; }
BOOL WINAPI lead(BYTE b) { return OslCodePageLeadByte(sText.page, b); }
LPSTR WINAPI next(LPCSTR s) { return const_cast<LPSTR>(OslCodePageNext(sText.page, s)); }
LPSTR WINAPI nextEx(WORD cp, LPCSTR s, DWORD) { return const_cast<LPSTR>(OslCodePageNext(pageOf(cp), s)); }
LPSTR WINAPI prevEx(WORD cp, LPCSTR start, LPCSTR cur, DWORD) { return const_cast<LPSTR>(OslCodePagePrev(pageOf(cp), start, cur)); }
DWORD WINAPI upperBuff(LPSTR s, DWORD n) { return OslCodePageUpperBuff(sText.page, s, n); }
DWORD WINAPI lowerBuff(LPSTR s, DWORD n) { return OslCodePageLowerBuff(sText.page, s, n); }
LPSTR WINAPI upper(LPSTR s) { return OslCodePageUpper(sText.page, s); }
LPSTR WINAPI lower(LPSTR s) { return OslCodePageLower(sText.page, s); }

struct SharedScript {
    const OslSharedService* real;
    OslSharedService table;
    ScriptedShared::Script script;
    size_t nextWait;
    std::vector<DWORD> limits;
    std::atomic<int> levels, created, open;
} sShared;

std::string suffixed(LPCSTR name) { return std::string(name ? name : "") + sShared.script.suffix; }
HANDLE noteCreated(HANDLE h, LPSECURITY_ATTRIBUTES sa) {
    auto* sd = sa ? static_cast<SECURITY_DESCRIPTOR*>(sa->lpSecurityDescriptor) : nullptr;
    if (h) ++sShared.created, sShared.open += sd && !sd->Dacl;
    return h;
}
BOOL openToAll(PSECURITY_DESCRIPTOR sd) { return !sShared.script.failSecurity && sShared.real->OpenToAll(sd); }
HANDLE createMapping(LPSECURITY_ATTRIBUTES sa, LPCSTR name, DWORD bytes, BOOL* created) {
    if (sShared.script.failMapping) return nullptr;
    return noteCreated(sShared.real->CreateMapping(sa, suffixed(name).c_str(), bytes, created), sa);
}
HANDLE createMutex(LPSECURITY_ATTRIBUTES sa, LPCSTR name) {
    return sShared.script.failMutex ? nullptr : noteCreated(sShared.real->CreateMutex(sa, suffixed(name).c_str()), sa);
}
DWORD waitMutex(HANDLE mutex, DWORD ms) {
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
BOOL releaseMutex(HANDLE mutex) {
    BOOL ok = sShared.real->ReleaseMutex(mutex);
    if (ok) --sShared.levels;
    return ok && !sShared.script.failRelease;
}

} // namespace

ScriptedHeap::ScriptedHeap(int failFrom) {
    sHeap.real = gOsl.memory;
    sHeap.table = *gOsl.memory;
    sHeap.table.HeapAlloc = heapAlloc; sHeap.table.HeapReAlloc = heapReAlloc; sHeap.table.HeapFree = heapFree;
    sHeap.table.HeapSize = heapSize; sHeap.table.GlobalAlloc = globalAlloc; sHeap.table.GlobalReAlloc = globalReAlloc;
    sHeap.table.GlobalFree = globalFree;
    sHeap.calls = sHeap.allocations = sHeap.frees = 0;
    sHeap.depth = -2;
    sHeap.failFrom = failFrom;
    gOsl.memory = &sHeap.table;
}
int ScriptedHeap::Attempts() const { return sHeap.calls; }
int ScriptedHeap::Outstanding() const { return sHeap.allocations - sHeap.frees; }
int ScriptedHeap::Frees() const { return sHeap.frees; }
long ScriptedHeap::LastDepth() const { return sHeap.depth; }

ScriptedSystem::ScriptedSystem(LANGID systemLang, LCID userLcid, DWORD platformId) {
    sSystem = {*gOsl.system, systemLang, userLcid, platformId};
    sSystem.table.GetSystemDefaultLangID = langOf; sSystem.table.GetUserDefaultLCID = lcidOf;
    sSystem.table.GetPlatformId = platformOf;
    gOsl.system = &sSystem.table;
}

ScriptedWindow::ScriptedWindow(HWND active) {
    sWindow.table = *gOsl.window;
    sWindow.table.MessageBoxA = messageBox; sWindow.table.GetActiveWindow = activeWindow;
    sWindow.active = active;
    sWindow.boxes.clear();
    gOsl.window = &sWindow.table;
}
const std::vector<ScriptedWindow::Box>& ScriptedWindow::Boxes() const { return sWindow.boxes; }

ScriptedVersion::ScriptedVersion(Script script) {
    sVersion.table = *gOsl.system;
    sVersion.table.GetModuleFileNameA = moduleFileName; sVersion.table.GetFileVersionInfoSizeA = versionSize;
    sVersion.table.GetFileVersionInfoA = versionInfo; sVersion.table.VerQueryValueA = verQuery;
    sVersion.script = std::move(script);
    sVersion.module = reinterpret_cast<HMODULE>(-1);
    sVersion.file.clear();
    sVersion.paths.clear();
    gOsl.system = &sVersion.table;
}
HMODULE ScriptedVersion::AskedModule() const { return sVersion.module; }
const std::string& ScriptedVersion::AskedFile() const { return sVersion.file; }
const std::vector<std::string>& ScriptedVersion::AskedPaths() const { return sVersion.paths; }

ScriptedText::ScriptedText(UINT codePage) {
    sText = {*gOsl.text, codePage};
    sText.table.GetACP = acp; sText.table.IsDBCSLeadByte = lead; sText.table.CharNextA = next; sText.table.CharNextExA = nextEx;
    sText.table.CharPrevExA = prevEx; sText.table.CharUpperA = upper; sText.table.CharLowerA = lower;
    sText.table.CharUpperBuffA = upperBuff; sText.table.CharLowerBuffA = lowerBuff;
    gOsl.text = &sText.table;
}

ScriptedShared::ScriptedShared(Script script) {
    sShared.real = gOsl.shared;
    sShared.table = *gOsl.shared;
    sShared.table.OpenToAll = openToAll; sShared.table.CreateMapping = createMapping; sShared.table.CreateMutex = createMutex;
    sShared.table.WaitMutex = waitMutex; sShared.table.ReleaseMutex = releaseMutex;
    sShared.script = std::move(script);
    sShared.nextWait = 0;
    sShared.limits.clear();
    sShared.levels = sShared.created = sShared.open = 0;
    gOsl.shared = &sShared.table;
}
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
