// The profile store where the system has none: a text file of the win.ini
// form, read at every question and rewritten whole by every write.
//
//   [intl]            sections and keys compare without regard to case;
//   sShortDate=d.M.yy blanks around names and values are dropped, and one
//   ; a comment       pair of quotes around a value ("..." or '...') too.
//
// A missing file is an empty store. Writes go to a temporary file beside it
// that then replaces it, so a reader never sees half a file; threads of the
// process write one at a time.
#include "profile_posix.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

std::string trim(const std::string& s) {
    size_t a = s.find_first_not_of(" \t\r"), b = s.find_last_not_of(" \t\r");
    return a == std::string::npos ? std::string() : s.substr(a, b - a + 1);
}

// The section a line opens, or false.
bool sectionOf(const std::string& line, std::string* name) {
    std::string t = trim(line);
    if (t.size() < 2 || t.front() != '[' || t.back() != ']') return false;
    *name = trim(t.substr(1, t.size() - 2));
    return true;
}

// The key and value of a line, or false (blank lines, comments, headers).
bool entryOf(const std::string& line, std::string* key, std::string* value) {
    std::string t = trim(line);
    size_t eq = t.find('=');
    if (t.empty() || t[0] == ';' || t[0] == '[' || eq == std::string::npos) return false;
    *key = trim(t.substr(0, eq));
    *value = trim(t.substr(eq + 1));
    if (value->size() >= 2 && (value->front() == '"' || value->front() == '\'') && value->back() == value->front())
        *value = value->substr(1, value->size() - 2);
    return true;
}

bool same(const std::string& a, const char* b) { return strcasecmp(a.c_str(), b) == 0; }

Lines readLines() {
    Lines lines;
    std::ifstream in(OslPosixProfilePath());
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// Where a key stands: the line of its section's header (or npos), the line
// of the key (or npos), and the line after the section's last entry.
struct Place {
    size_t header = std::string::npos, entry = std::string::npos, end = std::string::npos;
};
Place find(const Lines& lines, const char* section, const char* key) {
    Place at;
    std::string name, k, v;
    bool inside = false;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (sectionOf(lines[i], &name)) {
            if (inside) break; // the first section of the name counts
            inside = same(name, section);
            if (inside) at.header = i, at.end = i + 1;
        } else if (inside && entryOf(lines[i], &k, &v)) {
            at.end = i + 1;
            if (key && at.entry == std::string::npos && same(k, key)) at.entry = i;
        }
    }
    return at;
}

bool lookUp(const char* section, const char* key, std::string* value) {
    if (!section || !key) return false;
    Lines lines = readLines();
    Place at = find(lines, section, key);
    std::string k;
    return at.entry != std::string::npos && entryOf(lines[at.entry], &k, value);
}

bool writeLines(const Lines& lines) {
    std::string path = OslPosixProfilePath();
    size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0) mkdir(path.substr(0, slash).c_str(), 0755);
    std::string temp = path + ".new" + std::to_string(getpid());
    {
        std::ofstream out(temp, std::ios::trunc);
        for (const std::string& line : lines) out << line << '\n';
        if (!out.flush()) return false;
    }
    return std::rename(temp.c_str(), path.c_str()) == 0;
}

// Sets, replaces or (value null) removes a key; removes a section (key null).
void change(Lines& lines, const char* section, const char* key, const char* value) {
    Place at = find(lines, section, key);
    if (!key) {
        if (at.header == std::string::npos) return;
        size_t last = at.header + 1;
        std::string name;
        while (last < lines.size() && !sectionOf(lines[last], &name)) ++last;
        lines.erase(lines.begin() + long(at.header), lines.begin() + long(last));
        return;
    }
    if (at.entry != std::string::npos) {
        if (value)
            lines[at.entry] = std::string(key) + "=" + value;
        else
            lines.erase(lines.begin() + long(at.entry));
        return;
    }
    if (!value) return;
    if (at.header == std::string::npos) {
        lines.push_back(std::string("[") + section + "]");
        at.end = lines.size();
    }
    lines.insert(lines.begin() + long(at.end), std::string(key) + "=" + value);
}

std::mutex& writeLock() {
    static std::mutex* lock = new std::mutex; // never destroyed: writes may come after exit()
    return *lock;
}

// Digits after blanks and a sign, as far as they go; none reads as 0.
UINT parseInt(const std::string& text) {
    const char* p = text.c_str();
    bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    UINT n = 0;
    for (; *p >= '0' && *p <= '9'; ++p) n = n * 10 + UINT(*p - '0');
    return negative ? 0u - n : n;
}

UINT profileInt(LPCSTR section, LPCSTR key, int fallback) {
    try {
        std::string value;
        return lookUp(section, key, &value) ? parseInt(value) : UINT(fallback);
    } catch (...) {
        return UINT(fallback);
    }
}

DWORD copyOut(const char* text, LPSTR out, DWORD size) {
    size_t n = std::strlen(text);
    if (n >= size) n = size - 1;
    std::memcpy(out, text, n);
    out[n] = 0;
    return DWORD(n);
}

DWORD profileString(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR out, DWORD size) {
    if (!out || !size) return 0;
    try {
        std::string value;
        if (lookUp(section, key, &value)) return copyOut(value.c_str(), out, size);
    } catch (...) {
    }
    return copyOut(fallback ? fallback : "", out, size);
}

BOOL writeProfile(LPCSTR section, LPCSTR key, LPCSTR value) {
    if (!section) return 0;
    try {
        std::lock_guard<std::mutex> hold(writeLock());
        Lines lines = readLines();
        change(lines, section, key, value);
        return writeLines(lines);
    } catch (...) {
        return 0;
    }
}

// ---- the library's string table ---------------------------------------------

struct StringRow {
    UINT id;
    const char* text;
};
constexpr StringRow kStrings[] = {
#define OXL_STRING(id, text) {id, text},
#include "../../resources/strings.inc"
#include "../../resources/print_strings.inc"
#undef OXL_STRING
};

// As on Windows: at most size - 1 bytes and a NUL; 0 for an id not in the table.
int loadString(HINSTANCE, UINT id, LPSTR out, int size) {
    if (!out || size <= 0) return 0;
    *out = 0;
    for (const StringRow& row : kStrings)
        if (row.id == id) return int(copyOut(row.text, out, DWORD(size)));
    return 0;
}

} // namespace

const char* OslPosixProfilePath(void) {
    static const std::string path = [] {
        const char* chosen = std::getenv("OXLRT31_PROFILE");
        if (chosen && *chosen) return std::string(chosen);
        const char* config = std::getenv("XDG_CONFIG_HOME");
        if (config && *config) return std::string(config) + "/oxlrt31/win.ini";
        const char* home = std::getenv("HOME");
        return std::string(home && *home ? home : ".") + "/.config/oxlrt31/win.ini";
    }();
    return path.c_str();
}

const OslProfileService kOslPosixProfile = {profileInt, profileString, writeProfile, loadString};
