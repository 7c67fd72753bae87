#include "scripted_profile.h"

#include <atomic>
#include <cstring>
#include <strings.h>

namespace {

// Read from several threads at once: the store changes only while no other
// thread reads it, and the count of reads is atomic.
struct {
    OslProfileService table;
    const OslProfileService* real;
    std::vector<ProfileEntry> store;
    std::set<UINT> missing;
    std::atomic<int> reads;
} sProfile;

std::string lookUp(LPCSTR section, LPCSTR key, std::string fallback) {
    ++sProfile.reads;
    for (const ProfileEntry& e : sProfile.store)
        if (!strcasecmp(e.section.c_str(), section) && !strcasecmp(e.key.c_str(), key)) return e.value;
    return fallback;
}
UINT profileInt(LPCSTR section, LPCSTR key, int fallback) { return UINT(std::atoi(lookUp(section, key, std::to_string(fallback)).c_str())); }
DWORD profileString(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR out, DWORD size) {
    std::string text = lookUp(section, key, fallback).substr(0, size - 1);
    return DWORD(std::strlen(std::strcpy(out, text.c_str())));
}
int loadString(HINSTANCE module, UINT id, LPSTR out, int size) {
    return sProfile.missing.count(id) ? (*out = 0) : sProfile.real->LoadStringA(module, id, out, size);
}

OslSystemService sClockTable;
WORD sYear;
void WINAPI systemTime(SYSTEMTIME* st) { *st = SYSTEMTIME{sYear, 1, 0, 1, 12, 0, 0, 0}; }

} // namespace

ScriptedProfile::ScriptedProfile(std::vector<ProfileEntry> store, std::set<UINT> missing) : saved(gOsl.profile) {
    sProfile.table = {profileInt, profileString, saved->WriteProfileStringA, loadString};
    sProfile.real = saved, sProfile.store = std::move(store), sProfile.missing = std::move(missing), sProfile.reads = 0;
    gOsl.profile = &sProfile.table;
}
ScriptedProfile::~ScriptedProfile() { gOsl.profile = saved; }
int ScriptedProfile::Reads() const { return sProfile.reads; }
void ScriptedProfile::Set(const ProfileEntry& entry) { sProfile.store.insert(sProfile.store.begin(), entry); }

ScriptedClock::ScriptedClock(WORD year) : saved(gOsl.system) {
    sClockTable = *saved, sClockTable.GetSystemTime = systemTime, sYear = year;
    gOsl.system = &sClockTable;
}
ScriptedClock::~ScriptedClock() { gOsl.system = saved; }
