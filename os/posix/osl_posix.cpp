// The POSIX backend of the OS layer: what the portable engine needs on Linux.
//
// Thread slots: all of a thread's slot values live in one array reached
// through a single pthread key. The key's destructor is the library's
// thread-exit notification: it puts the array back in place (the system has
// already cleared it), lets the library free the thread's items through its
// slots, then frees the array. Services that belong to Windows-only parts of
// the library (local memory, files) answer with the Win32 failure values.
#include "../osl.h"
#include "../../core/libstate.h"
#include "../codepage.h"
#include "edit_posix.h"
#include "profile_posix.h"
#include "shared_posix.h"
#include "dialog_posix.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <mutex>
#include <type_traits>
#include <strings.h>
#include <vector>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// ---- critical sections and thread slots --------------------------------

void WINAPI initCS(CRITICAL_SECTION* cs) {
    pthread_mutexattr_t attr;
    pthread_mutexattr_init(&attr);
    pthread_mutexattr_settype(&attr, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&cs->mutex, &attr);
    pthread_mutexattr_destroy(&attr);
}
void WINAPI deleteCS(CRITICAL_SECTION* cs) { pthread_mutex_destroy(&cs->mutex); }
void WINAPI enterCS(CRITICAL_SECTION* cs) { pthread_mutex_lock(&cs->mutex); }
void WINAPI leaveCS(CRITICAL_SECTION* cs) { pthread_mutex_unlock(&cs->mutex); }

constexpr DWORD kSlots = 64;

struct SlotTable {
    std::mutex lock;
    pthread_key_t key;
    bool haveKey;
    bool used[kSlots];
    DWORD inUse;
};
// Constant-initialised and never destroyed (its destructor does nothing), so
// that a thread ending after exit() or during unload still finds it, and an
// unloaded library leaves no block of its own behind.
static_assert(std::is_trivially_destructible_v<SlotTable>);
constinit SlotTable sSlotTable{};
SlotTable& slotTable() { return sSlotTable; }

void threadEnding(void* values) {
    pthread_setspecific(slotTable().key, values);
    LibEntry(nullptr, DLL_THREAD_DETACH, nullptr);
    pthread_setspecific(slotTable().key, nullptr);
    std::free(values);
}

void** threadValues(bool make) {
    SlotTable& t = slotTable();
    auto* values = static_cast<void**>(pthread_getspecific(t.key));
    if (!values && make) {
        values = static_cast<void**>(std::calloc(kSlots, sizeof(void*)));
        if (values && pthread_setspecific(t.key, values) != 0) {
            std::free(values);
            values = nullptr;
        }
    }
    return values;
}

DWORD WINAPI tlsAlloc() {
    SlotTable& t = slotTable();
    std::lock_guard<std::mutex> hold(t.lock);
    if (!t.haveKey) {
        if (pthread_key_create(&t.key, threadEnding) != 0) return TLS_OUT_OF_INDEXES;
        t.haveKey = true;
    }
    for (DWORD i = 0; i < kSlots; ++i) {
        if (!t.used[i]) {
            t.used[i] = true;
            ++t.inUse;
            if (void** v = threadValues(false)) v[i] = nullptr;
            return i;
        }
    }
    return TLS_OUT_OF_INDEXES;
}

BOOL WINAPI tlsFree(DWORD index) {
    SlotTable& t = slotTable();
    std::lock_guard<std::mutex> hold(t.lock);
    if (index >= kSlots || !t.used[index]) return 0;
    t.used[index] = false;
    if (--t.inUse == 0) {
        // The last slot is gone (the library is unloading): drop the key so
        // that no destructor of ours stays registered with the system.
        std::free(threadValues(false));
        pthread_key_delete(t.key);
        t.haveKey = false;
    }
    return 1;
}

LPVOID WINAPI tlsGetValue(DWORD index) {
    if (index >= kSlots || !slotTable().haveKey) return nullptr;
    void** v = threadValues(false);
    return v ? v[index] : nullptr;
}

BOOL WINAPI tlsSetValue(DWORD index, LPVOID value) {
    if (index >= kSlots || !slotTable().haveKey) return 0;
    void** v = threadValues(value != nullptr);
    if (!v) return value == nullptr;
    v[index] = value;
    return 1;
}

DWORD WINAPI currentThreadId() { return static_cast<DWORD>(syscall(SYS_gettid)); }

// ---- process heap ----------------------------------------------------------
// Each block carries its size in front, so that HeapSize can answer.

constexpr size_t kHead = 16;

LPVOID heapAlloc(DWORD flags, SIZE_T bytes) {
    if (bytes > SIZE_MAX - kHead) return nullptr;
    void* raw = (flags & HEAP_ZERO_MEMORY) ? std::calloc(1, kHead + bytes) : std::malloc(kHead + bytes);
    if (!raw) return nullptr;
    *static_cast<SIZE_T*>(raw) = bytes;
    return static_cast<char*>(raw) + kHead;
}
LPVOID heapReAlloc(DWORD flags, LPVOID block, SIZE_T bytes) {
    if (!block || bytes > SIZE_MAX - kHead) return nullptr;
    char* raw = static_cast<char*>(block) - kHead;
    SIZE_T old = *reinterpret_cast<SIZE_T*>(raw);
    raw = static_cast<char*>(std::realloc(raw, kHead + bytes));
    if (!raw) return nullptr;
    if ((flags & HEAP_ZERO_MEMORY) && bytes > old) std::memset(raw + kHead + old, 0, bytes - old);
    *reinterpret_cast<SIZE_T*>(raw) = bytes;
    return raw + kHead;
}
BOOL heapFree(LPVOID block) {
    if (block) std::free(static_cast<char*>(block) - kHead);
    return 1;
}
SIZE_T heapSize(const void* block) { return block ? *reinterpret_cast<const SIZE_T*>(static_cast<const char*>(block) - kHead) : SIZE_T(-1); }

// ---- movable memory ----------------------------------------------------
// A handle is an opaque number, never an address: the index of its entry in
// a table, offset and tagged, so that a stale or made-up handle is refused
// rather than followed. A block moves on every reallocation, so code that
// keeps an address across one is caught, and it cannot be reallocated while
// locked: its address is in use. A block of 0 bytes locks to null, as a
// discarded block does on Windows.

struct MovableBlock {
    char* data;
    SIZE_T size;
    unsigned locks;
    bool used;
};
struct MovableTable {
    std::mutex lock;
    std::vector<MovableBlock> blocks;
};
MovableTable& movables() {
    static MovableTable* table = new MovableTable; // never destroyed: hosts may free blocks after exit()
    return *table;
}

constexpr uintptr_t kHandleTag = 0x4;
HGLOBAL handleOf(size_t index) { return reinterpret_cast<HGLOBAL>(((index + 1) << 3) | kHandleTag); }
// The entry behind a handle, or null; the caller holds the table's lock.
MovableBlock* blockOf(HGLOBAL mem) {
    uintptr_t h = reinterpret_cast<uintptr_t>(mem);
    if ((h & 7) != kHandleTag || h < 8) return nullptr;
    size_t index = (h >> 3) - 1;
    std::vector<MovableBlock>& blocks = movables().blocks;
    return index < blocks.size() && blocks[index].used ? &blocks[index] : nullptr;
}

// New data of `bytes`, the first `keep` copied from `old`, the rest zero when asked.
bool newData(char** out, SIZE_T bytes, const char* old, SIZE_T keep, UINT flags) {
    *out = nullptr;
    if (!bytes) return true;
    *out = static_cast<char*>((flags & GMEM_ZEROINIT) ? std::calloc(1, bytes) : std::malloc(bytes));
    if (!*out) return false;
    if (keep) std::memcpy(*out, old, keep < bytes ? keep : bytes);
    return true;
}

HGLOBAL WINAPI globalAlloc(UINT flags, SIZE_T bytes) {
    char* data;
    if (!newData(&data, bytes, nullptr, 0, flags)) return nullptr;
    MovableTable& t = movables();
    std::lock_guard<std::mutex> hold(t.lock);
    size_t i = 0;
    while (i < t.blocks.size() && t.blocks[i].used) ++i;
    try {
        if (i == t.blocks.size()) t.blocks.push_back({});
    } catch (...) {
        std::free(data);
        return nullptr;
    }
    t.blocks[i] = {data, bytes, 0, true};
    return handleOf(i);
}
HGLOBAL WINAPI globalReAlloc(HGLOBAL mem, SIZE_T bytes, UINT flags) {
    std::lock_guard<std::mutex> hold(movables().lock);
    MovableBlock* b = blockOf(mem);
    char* data;
    if (!b || b->locks || !newData(&data, bytes, b->data, b->size, flags)) return nullptr;
    std::free(b->data);
    b->data = data;
    b->size = bytes;
    return mem;
}
LPVOID WINAPI globalLock(HGLOBAL mem) {
    std::lock_guard<std::mutex> hold(movables().lock);
    MovableBlock* b = blockOf(mem);
    if (!b || !b->data) return nullptr;
    ++b->locks;
    return b->data;
}
// Nonzero while the block stays locked, as on Windows.
BOOL WINAPI globalUnlock(HGLOBAL mem) {
    std::lock_guard<std::mutex> hold(movables().lock);
    MovableBlock* b = blockOf(mem);
    if (!b || !b->locks) return 0;
    return --b->locks != 0;
}
HGLOBAL WINAPI globalFree(HGLOBAL mem) {
    std::lock_guard<std::mutex> hold(movables().lock);
    MovableBlock* b = blockOf(mem);
    if (!b) return mem;
    std::free(b->data);
    *b = {};
    return nullptr;
}
SIZE_T WINAPI globalSize(HGLOBAL mem) {
    std::lock_guard<std::mutex> hold(movables().lock);
    MovableBlock* b = blockOf(mem);
    return b ? b->size : 0;
}
HLOCAL WINAPI localAlloc(UINT, SIZE_T) { return nullptr; }
HLOCAL WINAPI localFree(HLOCAL mem) { return mem; }

// ---- system identity -----------------------------------------------------
// As Wine does, the system's language and ANSI code page follow the locale
// the process was started with.

struct LocaleRow {
    const char* prefix;
    LANGID lang;
    UINT acp;
};
constexpr LocaleRow kLocales[] = {
    {"ja", 0x0411, 932}, {"zh_CN", 0x0804, 936}, {"zh_SG", 0x1004, 936}, {"zh_TW", 0x0404, 950},
    {"zh_HK", 0x0C04, 950}, {"ko", 0x0412, 949}, {"ar", 0x0401, 1256}, {"he", 0x040D, 1255},
    {"de", 0x0407, 1252}, {"fr", 0x040C, 1252}, {"en_GB", 0x0809, 1252},
};

const LocaleRow& processLocale() {
    static const LocaleRow* row = [] {
        static constexpr LocaleRow english = {"en", 0x0409, 1252};
        const char* name = nullptr;
        for (const char* var : {"LC_ALL", "LC_CTYPE", "LANG"}) {
            name = std::getenv(var);
            if (name && *name) break;
        }
        if (!name) return &english;
        for (const LocaleRow& r : kLocales)
            if (std::strncmp(name, r.prefix, std::strlen(r.prefix)) == 0) return &r;
        return &english;
    }();
    return *row;
}

DWORD platformId() { return VER_PLATFORM_WIN32_NT; }
LANGID WINAPI systemLangId() { return processLocale().lang; }
LCID WINAPI userLcid() { return processLocale().lang; }
void WINAPI systemTime(SYSTEMTIME* st) {
    timespec ts;
    clock_gettime(CLOCK_REALTIME, &ts);
    tm t;
    gmtime_r(&ts.tv_sec, &t);
    st->wYear = WORD(t.tm_year + 1900);
    st->wMonth = WORD(t.tm_mon + 1);
    st->wDayOfWeek = WORD(t.tm_wday);
    st->wDay = WORD(t.tm_mday);
    st->wHour = WORD(t.tm_hour);
    st->wMinute = WORD(t.tm_min);
    st->wSecond = WORD(t.tm_sec);
    st->wMilliseconds = WORD(ts.tv_nsec / 1000000);
}
DWORD copyName(const char* from, LPSTR name, DWORD size) {
    size_t n = std::strlen(from);
    if (n >= size) n = size - 1;
    std::memcpy(name, from, n);
    name[n] = 0;
    return DWORD(n);
}
// A module is known by any address inside it (the library's own is its base
// address); none stands for the program, as on Windows.
DWORD moduleFileName(HMODULE module, LPSTR name, DWORD size) {
    if (!name || !size) return 0;
    if (!module) {
        char exe[4096];
        ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
        if (n <= 0) return 0;
        exe[n] = 0;
        return copyName(exe, name, size);
    }
    Dl_info info;
    if (!dladdr(module, &info) || !info.dli_fname) return 0;
    return copyName(info.dli_fname, name, size);
}

// The version of a module: only the library's own file has one, made from its
// build, in both translations that readers ask for. The block is a list of
// NUL-terminated query paths, each followed by its value, ending in an empty path.
#define OXL_STRINGS_OF(translation)                                                                     \
    "\\StringFileInfo\\" translation "\\ProductVersion\0" OXL_PRODUCT_VERSION "\0"                   \
    "\\StringFileInfo\\" translation "\\FileVersion\0" OXL_FILE_VERSION "\0"
constexpr char kVersionBlock[] = OXL_STRINGS_OF("040904b0") OXL_STRINGS_OF("040904E4");
#undef OXL_STRINGS_OF

bool isLibraryFile(LPCSTR file) {
    Dl_info info;
    if (!file || !dladdr(reinterpret_cast<void*>(&OslLibraryLoaded), &info) || !info.dli_fname) return false;
    char* a = realpath(file, nullptr);
    char* b = realpath(info.dli_fname, nullptr);
    bool same = a && b ? std::strcmp(a, b) == 0 : std::strcmp(file, info.dli_fname) == 0;
    std::free(a);
    std::free(b);
    return same;
}
DWORD versionSize(LPCSTR file) { return isLibraryFile(file) ? DWORD(sizeof kVersionBlock) : 0; }
BOOL versionInfo(LPCSTR file, DWORD size, LPVOID data) {
    if (!data || size < sizeof kVersionBlock || !isLibraryFile(file)) return 0;
    std::memcpy(data, kVersionBlock, sizeof kVersionBlock);
    return 1;
}
// Query paths compare without regard to case, as on Windows.
BOOL verQuery(LPVOID block, LPCSTR path, LPVOID* value, UINT* length) {
    if (!block || !path || !value || !length) return 0;
    for (char* key = static_cast<char*>(block); *key;) {
        char* text = key + std::strlen(key) + 1;
        if (strcasecmp(key, path) == 0) {
            *value = text;
            *length = UINT(std::strlen(text) + 1);
            return 1;
        }
        key = text + std::strlen(text) + 1;
    }
    return 0;
}

// ---- message boxes ---------------------------------------------------------

int WINAPI messageBox(HWND, LPCSTR text, LPCSTR caption, UINT) {
    std::fprintf(stderr, "[%s] %s\n", caption ? caption : "", text ? text : "");
    return IDOK;
}
HWND WINAPI activeWindow() { return nullptr; }

// ---- the ANSI code page --------------------------------------------------
// The page follows the locale (see above); os/codepage.cpp knows its lead bytes.

UINT WINAPI acp() { return processLocale().acp; }
// Day and month names of the user's locale; no other item.
int localeInfo(LCID, DWORD type, LPSTR data, int size) { return OslPosixLocaleInfo(acp(), type, data, size); }
UINT pageOf(WORD codePage) { return codePage ? codePage : acp(); } // 0 is CP_ACP
BOOL WINAPI leadByte(BYTE b) { return OslCodePageLeadByte(acp(), b); }
LPSTR WINAPI charNext(LPCSTR s) { return const_cast<LPSTR>(OslCodePageNext(acp(), s)); }
LPSTR WINAPI charNextEx(WORD cp, LPCSTR s, DWORD) { return const_cast<LPSTR>(OslCodePageNext(pageOf(cp), s)); }
LPSTR WINAPI charPrevEx(WORD cp, LPCSTR start, LPCSTR cur, DWORD) {
    return const_cast<LPSTR>(OslCodePagePrev(pageOf(cp), start, cur));
}
DWORD WINAPI upperBuff(LPSTR s, DWORD n) { return OslCodePageUpperBuff(acp(), s, n); }
DWORD WINAPI lowerBuff(LPSTR s, DWORD n) { return OslCodePageLowerBuff(acp(), s, n); }
LPSTR WINAPI charUpper(LPSTR s) { return OslCodePageUpper(acp(), s); }
LPSTR WINAPI charLower(LPSTR s) { return OslCodePageLower(acp(), s); }
BOOL WINAPI isAlpha(CHAR c) {
    UINT cp = acp();
    return OslCodePageUpperChar(cp, c) != OslCodePageLowerChar(cp, c) || (cp == 1252 && BYTE(c) == 0xDF);
}
BOOL WINAPI isAlnum(CHAR c) { return isAlpha(c) || (c >= '0' && c <= '9'); }
int WINAPI strCmp(LPCSTR a, LPCSTR b) {
    int r = std::strcmp(a, b);
    return (r > 0) - (r < 0);
}
int WINAPI strCmpI(LPCSTR a, LPCSTR b) {
    UINT cp = acp();
    for (;; ++a, ++b) {
        BYTE x = BYTE(OslCodePageLowerChar(cp, *a)), y = BYTE(OslCodePageLowerChar(cp, *b));
        if (x != y) return x < y ? -1 : 1;
        if (!x) return 0;
    }
}

// ---- C run-time, files ------------------------------------

// The Windows run-time's atof reads decimal and scientific text only; glibc's
// also takes hexadecimal floats, "inf" and "nan". Those read here as the
// Windows one reads them (the "0" of "0x", or no number at all), so that both
// backends give the same text the same value.
double crtAtof(const char* s) {
    const char* p = s;
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
    bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) return negative ? -0.0 : 0.0;
    if (!((*p >= '0' && *p <= '9') || *p == '.')) return 0.0;
    return std::strtod(s, nullptr);
}
// The Windows run-time writes at least three exponent digits ("1e+020");
// glibc writes two. The text is read back and shown, so make it the same.
char* crtGcvt(double v, int digits, char* buf) {
    gcvt(v, digits, buf);
    char* e = std::strchr(buf, 'e');
    if (e && (e[1] == '+' || e[1] == '-')) {
        char* exp = e + 2;
        size_t n = std::strlen(exp);
        if (n < 3) {
            std::memmove(exp + (3 - n), exp, n + 1);
            std::memset(exp, '0', 3 - n);
        }
    }
    return buf;
}
char* crtSetlocale(int cat, const char* loc) { return std::setlocale(cat, loc); }

HANDLE createFile(LPCSTR, DWORD, DWORD, DWORD, DWORD) { return reinterpret_cast<HANDLE>(-1); }
DWORD searchPath(LPCSTR, LPCSTR, LPCSTR, DWORD, LPSTR, LPSTR*) { return 0; }
BOOL deleteFile(LPCSTR) { return 0; }
BOOL closeFile(HANDLE) { return 0; }

constexpr OslSyncService kSync = {initCS, deleteCS, enterCS, leaveCS, tlsAlloc,
                                  tlsFree, tlsGetValue, tlsSetValue, currentThreadId};
constexpr OslMemoryService kMemory = {heapAlloc, heapReAlloc, heapFree, heapSize, globalAlloc, globalReAlloc,
                                      globalLock, globalUnlock, globalFree, globalSize, localAlloc, localFree};
constexpr OslSystemService kSystem = {platformId, systemLangId, userLcid, systemTime, localeInfo,
                                      moduleFileName, versionSize, versionInfo, verQuery};
constexpr OslTextService kText = {acp, leadByte, charNext, charNextEx, charPrevEx, charUpper, charLower,
                                  upperBuff, lowerBuff, isAlpha, isAlnum, strCmp, strCmpI};
constexpr OslCrtService kCrt = {crtAtof, crtGcvt, crtSetlocale};
constexpr OslFileService kFile = {createFile, searchPath, deleteFile, closeFile};
// No windows and no printers: every other entry answers as the API does when
// it fails (0, FALSE or a null handle).
template <class R, class... A>
R WINAPI none(A...) { return R(); }
constexpr OslWindowService kWindow = {messageBox, none, activeWindow, none, none, none, none, none, none, none, none,
                                      none, none, none, none, none, none, none, none, none, none, none, none,
                                      none, none, none, none, none, none, none, none, none, none};
constexpr OslGraphicsService kGraphics = {none, none, none, none, none, none, none, none, none, none, none, none,
                                          none, none, none, none, none, none, none, none, none, none, none,
                                          none, none, none, none, none, none};
// the printer setup dialog, device modes, forms and paper queries
constexpr OslPrinterSetupService kPrinterSetup = {none, none, none, none, none, none, none,
                                                  none, none, none, none, none, none, none};

} // namespace

constexpr OslServices gOslNative = {&kSync, &kMemory, &kOslPosixShared, &kSystem, &kText, &kCrt, &kOslPosixProfile, &kFile, &kWindow, &kGraphics,
                                    &kOslPosixDialog, &kOslPosixEdit,
                                    &kPrinterSetup};
constinit OslServices gOsl = gOslNative;

// No system notification tells a shared object that it was loaded; the
// library's last static object calls these two instead.
void OslLibraryLoaded(void) {
    Dl_info info;
    void* self = dladdr(reinterpret_cast<void*>(&OslLibraryLoaded), &info) ? info.dli_fbase : nullptr;
    LibEntry(static_cast<HINSTANCE>(self ? self : &gOsl), DLL_PROCESS_ATTACH, nullptr);
}
void OslLibraryUnloading(void) { LibEntry(nullptr, DLL_PROCESS_DETACH, nullptr); }
