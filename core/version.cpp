// Version strings of a module, from its version resource. Readers ask for
// English with the Unicode code page first, then with Windows Latin.
#include <oxlrt31/diag.h>

#include "../os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

constexpr DWORD kNameSize = 520;

// Copies the first of the two values the resource has into buffer.
int readVersionValue(HMODULE module, const char* const (&paths)[2], char* buffer) {
    if (!buffer) return 0;
    char file[kNameSize];
    if (!gOsl.system->GetModuleFileNameA(module, file, kNameSize)) return 0;
    file[kNameSize - 1] = 0;
    DWORD size = gOsl.system->GetFileVersionInfoSizeA(file);
    if (!size) return 0;
    void* info = MemAlloc(size);
    if (!info) return 0;
    int found = 0;
    if (gOsl.system->GetFileVersionInfoA(file, size, info)) {
        for (const char* path : paths) {
            LPVOID value = nullptr;
            UINT length = 0;
            if (gOsl.system->VerQueryValueA(info, path, &value, &length) && value) {
                std::strcpy(buffer, static_cast<const char*>(value));
                found = 1;
                break;
            }
        }
    }
    MemFree(info);
    return found;
}

constexpr const char* kProductVersion[2] = {"\\StringFileInfo\\040904b0\\ProductVersion",
                                            "\\StringFileInfo\\040904E4\\ProductVersion"};
constexpr const char* kFileVersion[2] = {"\\StringFileInfo\\040904b0\\FileVersion",
                                         "\\StringFileInfo\\040904E4\\FileVersion"};

} // namespace

int OXLAPI VERGetVersionString(HMODULE module, char* buffer) { return readVersionValue(module, kProductVersion, buffer); }

int OXLAPI VERGetBuildString(HMODULE module, char* buffer) { return readVersionValue(module, kFileVersion, buffer); }
