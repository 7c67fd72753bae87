// Scripted backends of the formatting engine's tests, like those of
// scripted_osl.h: a profile store in memory (names without regard to case)
// that counts its reads, with chosen string resources missing; a clock
// stopped at noon on 1 January of a chosen year.
#ifndef OXL_TESTS_SCRIPTED_PROFILE_H
#define OXL_TESTS_SCRIPTED_PROFILE_H

#include "os/osl.h"

#include <set>
#include <string>
#include <vector>

struct ProfileEntry { std::string section, key, value; };

struct ScriptedProfile {
    explicit ScriptedProfile(std::vector<ProfileEntry> store = {}, std::set<UINT> missingStrings = {});
    ~ScriptedProfile();
    int Reads() const;                   // GetProfileIntA and GetProfileStringA calls so far
    void Set(const ProfileEntry& entry); // found before any other of its key
    const OslProfileService* saved;
};

struct ScriptedClock {
    explicit ScriptedClock(WORD year);
    ~ScriptedClock();
    const OslSystemService* saved;
};

#endif
