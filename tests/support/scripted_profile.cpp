#include "scripted_profile.h"

#include "core/libstate.h"
#include "format/fmtint.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <strings.h>

namespace {

struct ProfileScript {
    const OslProfileService* real;
    OslProfileService table;
    std::vector<ProfileEntry> store;
    std::set<UINT> missing;
    std::atomic<int> reads;
    std::mutex lock;
} sProfile;

const ProfileEntry* lookUp(LPCSTR section, LPCSTR key) {
    for (const ProfileEntry& e : sProfile.store)
        if (strcasecmp(e.section.c_str(), section) == 0 && strcasecmp(e.key.c_str(), key) == 0) return &e;
    return nullptr;
}

UINT profileInt(LPCSTR section, LPCSTR key, int fallback) {
    ++sProfile.reads;
    std::lock_guard<std::mutex> hold(sProfile.lock);
    const ProfileEntry* e = lookUp(section, key);
    return e ? UINT(std::atoi(e->value.c_str())) : UINT(fallback);
}
DWORD profileString(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR out, DWORD size) {
    ++sProfile.reads;
    std::lock_guard<std::mutex> hold(sProfile.lock);
    const ProfileEntry* e = lookUp(section, key);
    std::string text = e ? e->value : fallback ? fallback : "";
    size_t n = text.size() < size ? text.size() : size - 1;
    std::memcpy(out, text.data(), n);
    out[n] = 0;
    return DWORD(n);
}
int loadString(HINSTANCE module, UINT id, LPSTR out, int size) {
    if (sProfile.missing.count(id)) return *out = 0, 0;
    return sProfile.real->LoadStringA(module, id, out, size);
}

struct ClockScript {
    OslSystemService table;
    WORD year;
} sClock;

void WINAPI systemTime(SYSTEMTIME* st) { *st = SYSTEMTIME{sClock.year, 1, 0, 1, 12, 0, 0, 0}; }

} // namespace

ScriptedProfile::ScriptedProfile(std::vector<ProfileEntry> store, std::set<UINT> missingStrings)
    : m_saved(gOsl.profile) {
    sProfile.real = m_saved;
    sProfile.table = *m_saved;
    sProfile.table.GetProfileIntA = profileInt;
    sProfile.table.GetProfileStringA = profileString;
    sProfile.table.LoadStringA = loadString;
    sProfile.store = std::move(store);
    sProfile.missing = std::move(missingStrings);
    sProfile.reads = 0;
    gOsl.profile = &sProfile.table;
}
ScriptedProfile::~ScriptedProfile() { gOsl.profile = m_saved; }
int ScriptedProfile::Reads() const { return sProfile.reads; }
void ScriptedProfile::Set(const std::string& section, const std::string& key, const std::string& value) {
    std::lock_guard<std::mutex> hold(sProfile.lock);
    sProfile.store.push_back({section, key, value});
    std::swap(sProfile.store.front(), sProfile.store.back()); // found first
}

ScriptedClock::ScriptedClock(WORD year) : m_saved(gOsl.system) {
    sClock.table = *m_saved;
    sClock.table.GetSystemTime = systemTime;
    sClock.year = year;
    gOsl.system = &sClock.table;
}
ScriptedClock::~ScriptedClock() { gOsl.system = m_saved; }

CalendarReload::CalendarReload() { gpLibState->bTextLoaded = 0; }
CalendarReload::~CalendarReload() {
    gpLibState->bTextLoaded = 0;
    FMTLoadCalendarText();
}
