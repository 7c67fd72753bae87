// Opening a file by name with the flag values of the system's old OpenFile,
// over CreateFileA: a search along the path for a name without a directory,
// the full name for the caller, and names beyond MAX_PATH through the long
// form "\\?\" on NT.
#include "ui/dlgutilint.h"

#include "core/libstate.h"
#include "os/osl.h"
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

constexpr DWORD kErrorFileNotFound = 2;
constexpr DWORD kErrorInvalidParameter = 87;
constexpr DWORD kCreateAlways = 2, kOpenExisting = 3, kAttributeNormal = 128;
constexpr DWORD kGenericRead = 0x80000000u, kGenericReadWrite = 0xC0000000u;
constexpr size_t kShortPath = 260;
const HANDLE kFailed = INVALID_HANDLE_VALUE;

bool conflicting(DWORD flags) {
    auto both = [flags](DWORD a, DWORD b) { return (flags & a) && (flags & b); };
    return both(OF_EXIST, OF_CREATE) || both(OF_EXIST, OF_DELETE) || both(OF_DELETE, OF_CREATE);
}

// 0x10 exclusive, 0x20 deny write (share read), 0x30 deny read (share
// write), 0 share both; OF_SHARE_DENY_NONE shares both too.
DWORD shareMode(DWORD flags) {
    switch (flags & 0x30) {
    case OF_SHARE_EXCLUSIVE: return 0;
    case OF_SHARE_DENY_WRITE: return 1;
    case OF_SHARE_DENY_READ: return 2;
    default: return 3;
    }
}

bool hasDirectory(LPCSTR path) {
    size_t n = std::strlen(path) + 1;
    char drive[CBOF_PATHMAX], dir[CBOF_PATHMAX], name[CBOF_PATHMAX], ext[CBOF_PATHMAX];
    if (n > CBOF_PATHMAX) return true;
    gOsl.dialog->splitpath(path, drive, dir, name, ext);
    return dir[0] != 0;
}

// The name to open into `name` (CBOF_PATHMAX bytes); false after a failed search.
bool findName(LPCSTR path, DWORD flags, bool wantFull, char* name) {
    const OslDialogService* d = gOsl.dialog;
    if (flags & OF_CREATE) {
        if (!wantFull) std::strcpy(name, path);
        return !wantFull || d->fullpath(name, path, CBOF_PATHMAX);
    }
    if (!(flags & OF_EXIST) && hasDirectory(path)) {
        std::strcpy(name, path);
        return true;
    }
    LPSTR part = nullptr;
    DWORD n = d->SearchPathA(nullptr, path, nullptr, CBOF_PATHMAX, name, &part);
    if (n > 0 && n < CBOF_PATHMAX) return true;
    if (n == 0 && d->GetLastError() == kErrorInvalidParameter) d->SetLastError(kErrorFileNotFound);
    return false;
}

// A name beyond MAX_PATH on NT, opened in its long form.
HANDLE openLong(LPCSTR name, DWORD access, DWORD share, DWORD disposition) {
    size_t n = std::strlen(name);
    char* longName = static_cast<char*>(MemAlloc(DWORD(n + 5)));
    if (!longName) return kFailed;
    std::memcpy(longName, "\\\\?\\", 4);
    std::memcpy(longName + 4, name, n + 1);
    HANDLE h = gOsl.dialog->CreateFileLongA(longName, access, share, disposition, kAttributeNormal);
    MemFree(longName);
    return h;
}

} // namespace

HANDLE OXLAPI CBOpenFile(LPCSTR path, LPSTR fullPath, DWORD flags) {
    if ((flags & ~DWORD(CBOF_ALLOWED)) || conflicting(flags)) return kFailed;
    if (flags & OF_PARSE) return nullptr;
    if (!path) return kFailed;
    const OslDialogService* d = gOsl.dialog;
    if (flags & OF_DELETE) return d->DeleteFileA(path) ? nullptr : kFailed;
    if (std::strlen(path) >= CBOF_PATHMAX) {
        d->SetLastError(kErrorInvalidParameter);
        return kFailed;
    }
    char name[CBOF_PATHMAX];
    if (!findName(path, flags, fullPath != nullptr, name)) return kFailed;
    if (fullPath) std::strcpy(fullPath, name);
    if (flags & OF_EXIST) return nullptr;
    DWORD access = (flags & (OF_WRITE | OF_READWRITE)) ? kGenericReadWrite : kGenericRead;
    DWORD share = shareMode(flags), disposition = (flags & OF_CREATE) ? kCreateAlways : kOpenExisting;
    if (std::strlen(name) > kShortPath && gpLibState->dwPlatformId == VER_PLATFORM_WIN32_NT)
        return openLong(name, access, share, disposition);
    return d->CreateFileA(name, access, share, disposition, kAttributeNormal);
}
