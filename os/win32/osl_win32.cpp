// The Win32 backend of the OS layer: the real API. Where an entry's signature
// is the API's own, the entry is the API function; the rest adapt a detail
// (the process heap, a null DACL, the version record) in a line or two.
#include "../osl.h"
#include "dialog_win32.h"

#include <clocale>
#include <cstdlib>

namespace {

LPVOID heapAlloc(DWORD flags, SIZE_T bytes) { return HeapAlloc(GetProcessHeap(), flags, bytes); }
LPVOID heapReAlloc(DWORD flags, LPVOID block, SIZE_T bytes) { return HeapReAlloc(GetProcessHeap(), flags, block, bytes); }
BOOL heapFree(LPVOID block) { return HeapFree(GetProcessHeap(), 0, block); }
SIZE_T heapSize(const void* block) { return HeapSize(GetProcessHeap(), 0, block); }

BOOL openToAll(PSECURITY_DESCRIPTOR sd) {
    return InitializeSecurityDescriptor(sd, SECURITY_DESCRIPTOR_REVISION) && SetSecurityDescriptorDacl(sd, TRUE, nullptr, FALSE);
}
HANDLE createMapping(LPSECURITY_ATTRIBUTES sa, LPCSTR name, DWORD bytes, BOOL* created) {
    HANDLE h = CreateFileMappingA(INVALID_HANDLE_VALUE, sa, PAGE_READWRITE, 0, bytes, name);
    *created = h && GetLastError() != ERROR_ALREADY_EXISTS;
    return h;
}
LPVOID mapAt(HANDLE mapping, LPVOID at) { return MapViewOfFileEx(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0, at); }
BOOL unmap(LPVOID view) { return UnmapViewOfFile(view); }
HANDLE createMutex(LPSECURITY_ATTRIBUTES sa, LPCSTR name) { return CreateMutexA(sa, FALSE, name); }
DWORD waitMutex(HANDLE mutex, DWORD ms) { return WaitForSingleObject(mutex, ms); }
BOOL releaseMutex(HANDLE mutex) { return ReleaseMutex(mutex); }
BOOL closeHandle(HANDLE h) { return CloseHandle(h); }

DWORD platformId() {
    OSVERSIONINFOA info = {};
    info.dwOSVersionInfoSize = sizeof info; // 148 bytes
    return GetVersionExA(&info) ? info.dwPlatformId : 0;
}
int localeInfo(LCID lcid, DWORD type, LPSTR data, int size) { return GetLocaleInfoA(lcid, type, data, size); }
DWORD moduleFileName(HMODULE m, LPSTR name, DWORD size) { return GetModuleFileNameA(m, name, size); }
DWORD versionSize(LPCSTR file) {
    DWORD ignored = 0;
    return GetFileVersionInfoSizeA(file, &ignored);
}
BOOL versionInfo(LPCSTR file, DWORD size, LPVOID data) { return GetFileVersionInfoA(file, 0, size, data); }
BOOL verQuery(LPVOID block, LPCSTR path, LPVOID* value, UINT* length) {
    return VerQueryValueA(block, path, value, length);
}

double crtAtof(const char* s) { return std::atof(s); }
char* crtGcvt(double v, int digits, char* buf) { return _gcvt(v, digits, buf); }
char* crtSetlocale(int cat, const char* loc) { return std::setlocale(cat, loc); }

UINT profileInt(LPCSTR s, LPCSTR k, int d) { return GetProfileIntA(s, k, d); }
DWORD profileString(LPCSTR s, LPCSTR k, LPCSTR d, LPSTR out, DWORD n) { return GetProfileStringA(s, k, d, out, n); }
BOOL writeProfile(LPCSTR s, LPCSTR k, LPCSTR v) { return WriteProfileStringA(s, k, v); }
int loadString(HINSTANCE m, UINT id, LPSTR out, int n) { return LoadStringA(m, id, out, n); }

HANDLE createFile(LPCSTR name, DWORD access, DWORD share, DWORD disposition, DWORD flags) {
    return CreateFileA(name, access, share, nullptr, disposition, flags, nullptr);
}
DWORD searchPath(LPCSTR path, LPCSTR file, LPCSTR ext, DWORD n, LPSTR out, LPSTR* part) {
    return SearchPathA(path, file, ext, n, out, part);
}
BOOL deleteFile(LPCSTR name) { return DeleteFileA(name); }

constexpr OslSyncService kSync = {
    InitializeCriticalSection, DeleteCriticalSection, EnterCriticalSection, LeaveCriticalSection,
    TlsAlloc, TlsFree, TlsGetValue, TlsSetValue, GetCurrentThreadId,
};
constexpr OslMemoryService kMemory = {
    heapAlloc, heapReAlloc, heapFree, heapSize,
    GlobalAlloc, GlobalReAlloc, GlobalLock, GlobalUnlock, GlobalFree, GlobalSize,
    LocalAlloc, LocalFree,
};
constexpr OslSharedService kShared = {openToAll, createMapping, mapAt, unmap, createMutex, waitMutex, releaseMutex, closeHandle};
constexpr OslSystemService kSystem = {
    platformId, GetSystemDefaultLangID, GetUserDefaultLCID, GetSystemTime,
    localeInfo, moduleFileName, versionSize, versionInfo, verQuery,
};
constexpr OslTextService kText = {
    GetACP, IsDBCSLeadByte, CharNextA, CharNextExA, CharPrevExA, CharUpperA, CharLowerA,
    CharUpperBuffA, CharLowerBuffA, IsCharAlphaA, IsCharAlphaNumericA, lstrcmpA, lstrcmpiA,
};
constexpr OslCrtService kCrt = {crtAtof, crtGcvt, crtSetlocale};
constexpr OslProfileService kProfile = {profileInt, profileString, writeProfile, loadString};
constexpr OslFileService kFile = {createFile, searchPath, deleteFile, closeHandle};
constexpr OslWindowService kWindow = {
    MessageBoxA, MessageBeep, GetActiveWindow, SendMessageA, SendMessageTimeoutA,
    GetWindowLongPtrA, GetWindow, GetParent, FindWindowA, EnableWindow, IsWindow, GetWindowThreadProcessId,
    GetDesktopWindow, GetWindowRect, GetDC, ReleaseDC, IsIconic, ScreenToClient, MoveWindow,
    DialogBoxParamA, CreateDialogParamA, DestroyWindow, PeekMessageA, IsDialogMessageA, TranslateMessage,
    DispatchMessageA, SetWindowTextA, SetDlgItemTextA, GetDlgItem, UpdateWindow, SetFocus, GetSystemMenu,
    EnableMenuItem,
};
constexpr OslGraphicsService kGraphics = {
    CreateDCA, CreateICA, DeleteDC, StartDocA, StartPage, EndPage, EndDoc, SetAbortProc, Escape, GetDeviceCaps,
    SaveDC, RestoreDC, ResetDCA, SetMapMode, GetClipBox, DPtoLP, LPtoDP, SetWindowOrgEx, SetViewportOrgEx,
    SetWindowExtEx, SetViewportExtEx, SetBkMode, Rectangle,
    PrintDlgA, CommDlgExtendedError, OpenPrinterA, ClosePrinter, GetPrinterA, DocumentPropertiesA,
};
// the input filter's edit controls
constexpr OslEditService kEdit = {
    GetWindowLongPtrA, SetWindowLongPtrA, SendMessageA, CallWindowProcA, GetWindowTextLengthA, GetWindowTextA,
    GetParent, MessageBeep, GetKeyState, CreateWindowExA, DestroyWindow,
};
// the printer setup dialog, device modes, forms and paper queries
constexpr OslPrinterSetupService kPrinterSetup = {
    EnumPrintersA, DeviceCapabilitiesA, EnumFormsA, GetFormA, AddFormA, DeleteFormA, GetLastError,
    EndDialog, SetPropA, GetPropA, RemovePropA, SetCursor, LoadCursorA, GetWindowTextA,
};

} // namespace

constexpr OslServices gOslNative = {&kSync, &kMemory, &kShared, &kSystem, &kText, &kCrt,
                                &kProfile, &kFile, &kWindow, &kGraphics,
                                &kOslWin32Dialog, &kEdit,
                                &kPrinterSetup};
constinit OslServices gOsl = gOslNative;

// Windows tells the library of load, unload and thread exit through DllMain.
void OslLibraryLoaded(void) {}
void OslLibraryUnloading(void) {}
