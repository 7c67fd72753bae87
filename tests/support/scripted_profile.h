// Scripted backends of the formatting engine's tests: a profile store held
// in memory that counts its reads, string resources with chosen ids missing,
// and a clock stopped at a chosen year. Like those of scripted_osl.h, each
// puts a changed copy of one service table in force for its scope.
#ifndef OXL_TESTS_SCRIPTED_PROFILE_H
#define OXL_TESTS_SCRIPTED_PROFILE_H

#include "os/osl.h"

#include <set>
#include <string>
#include <vector>

// Keys of a scripted store: section, key, value. Names compare without
// regard to case, as in the platform's store.
struct ProfileEntry { std::string section, key, value; };

class ScriptedProfile {
public:
    explicit ScriptedProfile(std::vector<ProfileEntry> store = {}, std::set<UINT> missingStrings = {});
    ~ScriptedProfile();
    int Reads() const; // GetProfileIntA and GetProfileStringA calls so far
    void Set(const std::string& section, const std::string& key, const std::string& value);

private:
    const OslProfileService* m_saved;
};

// GetSystemTime answers 1 January of `year`, 12:00.
class ScriptedClock {
public:
    explicit ScriptedClock(WORD year);
    ~ScriptedClock();

private:
    const OslSystemService* m_saved;
};

// Makes the library load its calendar text again on the way in and out, so
// a test that scripts the string table starts and leaves with a fresh load.
struct CalendarReload {
    CalendarReload();
    ~CalendarReload();
};

#endif
