// The POSIX backend of the dialog utilities' service. There are no windows
// and no fonts: those entries answer as Win32 does when it fails. Files are
// the system's: a handle is a file descriptor, names take "/" or "\" between
// their parts, and the last error is kept per thread in Win32's numbers.
// Share modes have no counterpart and are not enforced.
#include "dialog_posix.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

thread_local DWORD tLastError = 0;

DWORD WINAPI lastError() { return tLastError; }
void WINAPI setLastError(DWORD e) { tLastError = e; }
DWORD fromErrno(int e) {
    switch (e) {
    case ENOENT: return 2;         // ERROR_FILE_NOT_FOUND
    case ENOTDIR: return 3;        // ERROR_PATH_NOT_FOUND
    case EACCES: case EPERM: case EISDIR: return 5; // ERROR_ACCESS_DENIED
    case ENAMETOOLONG: return 206; // ERROR_FILENAME_EXCED_RANGE
    default: return 31;            // ERROR_GEN_FAILURE
    }
}

UINT WINAPI dlgItemText(HWND, int, LPSTR out, int size) {
    if (out && size > 0) out[0] = 0;
    return 0;
}
int WINAPI className(HWND, LPSTR out, int size) { return dlgItemText(nullptr, 0, out, size); }
BOOL WINAPI clientRect(HWND, LPRECT) { return FALSE; }
HANDLE WINAPI selectObject(HDC, HANDLE) { return nullptr; }
HANDLE WINAPI getProp(HWND, LPCSTR) { return nullptr; }
DWORD WINAPI tabbedExtent(HDC, LPCSTR, int, int, const int*) { return 0; }
int WINAPI enumFonts(HDC, LPCSTR, OslFontEnumProc, LPARAM) { return -1; }

bool isSeparator(char c) { return c == '/' || c == '\\'; }

// The directory is everything up to the last separator; no drive.
void splitPath(const char* path, char* drive, char* dir, char* name, char* ext) {
    const char* base = path;
    for (const char* p = path; *p; ++p)
        if (isSeparator(*p)) base = p + 1;
    const char* dot = std::strrchr(base, '.');
    if (!dot) dot = base + std::strlen(base);
    if (drive) *drive = 0;
    if (dir) *std::copy(path, base, dir) = 0;
    if (name) *std::copy(base, dot, name) = 0;
    if (ext) std::strcpy(ext, dot);
}

// The absolute form, "." and ".." resolved by name (links are not followed).
char* fullPath(char* out, const char* path, size_t size) {
    std::string whole;
    if (!isSeparator(path[0])) {
        char cwd[PATH_MAX];
        if (!getcwd(cwd, sizeof cwd)) return nullptr;
        whole = cwd;
    }
    std::string result;
    whole += '/';
    whole += path;
    size_t i = 0;
    while (i < whole.size()) {
        size_t j = i;
        while (j < whole.size() && !isSeparator(whole[j])) ++j;
        std::string part = whole.substr(i, j - i);
        if (part == "..") {
            size_t cut = result.rfind('/');
            result.erase(cut == std::string::npos ? 0 : cut);
        } else if (!part.empty() && part != ".") {
            result += '/' + part;
        }
        i = j + 1;
    }
    if (result.empty()) result = "/";
    if (result.size() >= size) return nullptr;
    std::memcpy(out, result.c_str(), result.size() + 1);
    return out;
}

bool isFile(const std::string& name) {
    struct stat st;
    return stat(name.c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
}

// Without a path: the program's directory, the current one, then $PATH.
DWORD searchPath(LPCSTR path, LPCSTR file, LPCSTR ext, DWORD size, LPSTR out, LPSTR* part) {
    if (!file || !*file) {
        setLastError(87);
        return 0;
    }
    std::string name = file;
    if (ext && !std::strchr(file, '.')) name += ext;
    std::string dirs;
    if (path) dirs = path;
    else {
        char exe[PATH_MAX];
        ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
        std::string program(exe, n > 0 ? size_t(n) : 0);
        size_t slash = program.rfind('/');
        dirs = slash == std::string::npos ? "" : program.substr(0, slash);
        dirs += ":.";
        if (const char* env = std::getenv("PATH")) (dirs += ':') += env;
    }
    for (size_t i = 0; i <= dirs.size();) {
        size_t j = dirs.find(':', i);
        if (j == std::string::npos) j = dirs.size();
        std::string candidate = (isSeparator(name[0]) ? "" : dirs.substr(i, j - i) + "/") + name;
        char full[PATH_MAX + 1];
        if (isFile(candidate) && fullPath(full, candidate.c_str(), sizeof full)) {
            DWORD n = DWORD(std::strlen(full));
            if (n >= size) return n + 1;
            std::memcpy(out, full, n + 1);
            if (part) *part = out + (std::strrchr(out, '/') - out) + 1;
            return n;
        }
        i = j + 1;
    }
    setLastError(2);
    return 0;
}

BOOL deleteFile(LPCSTR name) {
    if (unlink(name) == 0) return TRUE;
    setLastError(fromErrno(errno));
    return FALSE;
}

HANDLE createFile(LPCSTR name, DWORD access, DWORD, DWORD disposition, DWORD) {
    int flags = (access & 0x40000000u) ? O_RDWR : O_RDONLY;
    if (disposition == 2) flags |= O_CREAT | O_TRUNC;
    int fd = open(name, flags | O_CLOEXEC, 0666);
    if (fd >= 0 && fd < 3) { // keep clear of the null handle and the standard streams
        int moved = fcntl(fd, F_DUPFD_CLOEXEC, 3);
        close(fd);
        fd = moved;
    }
    if (fd < 0) {
        setLastError(fromErrno(errno));
        return INVALID_HANDLE_VALUE;
    }
    return reinterpret_cast<HANDLE>(intptr_t(fd));
}
HANDLE createFileLong(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD attributes) {
    if (std::strncmp(name, "\\\\?\\", 4) == 0) name += 4;
    return createFile(name, access, share, disposition, attributes);
}
BOOL closeHandle(HANDLE h) { return close(int(reinterpret_cast<intptr_t>(h))) == 0; }

} // namespace

const OslDialogService kOslPosixDialog = {
    dlgItemText, className, clientRect, selectObject, getProp, tabbedExtent, enumFonts,
    lastError, setLastError, splitPath, fullPath, searchPath, deleteFile, createFile, createFileLong, closeHandle,
};
