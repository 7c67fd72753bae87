// The Win32 backend of the dialog utilities' service: the API itself, and
// the C run-time's path functions.
#include "dialog_win32.h"

#include <cstdlib>
#include <vector>

namespace {

void splitPath(const char* path, char* drive, char* dir, char* name, char* ext) { _splitpath(path, drive, dir, name, ext); }
char* fullPath(char* out, const char* path, size_t size) { return _fullpath(out, path, size); }
DWORD searchPath(LPCSTR path, LPCSTR file, LPCSTR ext, DWORD n, LPSTR out, LPSTR* part) {
    return SearchPathA(path, file, ext, n, out, part);
}
BOOL deleteFile(LPCSTR name) { return DeleteFileA(name); }
HANDLE createFile(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD attributes) {
    return CreateFileA(name, access, share, nullptr, disposition, attributes, nullptr);
}
HANDLE createFileLong(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD attributes) {
    int n = MultiByteToWideChar(CP_ACP, 0, name, -1, nullptr, 0);
    if (n <= 0) return INVALID_HANDLE_VALUE;
    std::vector<WCHAR> wide(size_t(n), 0);
    MultiByteToWideChar(CP_ACP, 0, name, -1, wide.data(), n);
    return CreateFileW(wide.data(), access, share, nullptr, disposition, attributes, nullptr);
}
BOOL closeHandle(HANDLE h) { return CloseHandle(h); }
int WINAPI enumFonts(HDC dc, LPCSTR face, OslFontEnumProc proc, LPARAM data) {
    return EnumFontsA(dc, face, reinterpret_cast<FONTENUMPROCA>(proc), data);
}
DWORD WINAPI tabbedExtent(HDC dc, LPCSTR text, int count, int tabs, const int* stops) {
    return GetTabbedTextExtentA(dc, text, count, tabs, stops);
}

} // namespace

const OslDialogService kOslWin32Dialog = {
    GetDlgItemTextA, GetClassNameA, GetClientRect, SelectObject, GetPropA, tabbedExtent, enumFonts,
    GetLastError, SetLastError, splitPath, fullPath, searchPath, deleteFile, createFile, createFileLong, closeHandle,
};
