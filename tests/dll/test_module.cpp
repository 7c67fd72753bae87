// The shared library as hosts meet it: loaded by name, its exports found by
// name, unloaded and loaded again in one process, threads ending while it is
// loaded and while it is not.
#include <oxlrt31/crsect.h>
#include <oxlrt31/diag.h>
#include <oxlrt31/tls.h>
#include <oxlrt31/intl.h>
#include <oxlrt31/memshared.h>
#include <oxlrt31/number.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <memory>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <unistd.h>
#endif

namespace {

// The library loaded by name, as a host loads it; unloaded with the object.
class Module {
public:
#ifdef _WIN32
    Module() : m_handle(LoadLibraryA(OXL_MODULE_PATH)) {}
    void Unload() { m_handle = m_handle ? (FreeLibrary(static_cast<HMODULE>(m_handle)), nullptr) : nullptr; }
    void* Find(const char* name) const { return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_handle), name)); }
    HMODULE Handle() const { return static_cast<HMODULE>(m_handle); }
#else
    Module() : m_handle(dlopen("./" OXL_MODULE_PATH, RTLD_NOW | RTLD_LOCAL)) {}
    void Unload() { m_handle = m_handle ? (dlclose(m_handle), nullptr) : nullptr; }
    void* Find(const char* name) const { return dlsym(m_handle, name); }
    // The module as the library's own functions know it: any address inside it.
    HMODULE Handle() const {
        Dl_info info;
        return dladdr(Find("VERGetVersionString"), &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
    }
#endif
    ~Module() { Unload(); }
    bool Loaded() const { return m_handle != nullptr; }
    template <class F>
    F* Fn(const char* name) const { return reinterpret_cast<F*>(Find(name)); }

private:
    void* m_handle;
};

#ifndef _WIN32
// The leak checker's switch, present only in a sanitized build.
extern "C" void __lsan_disable() __attribute__((weak));
#endif

#define FN(module, name) (module).Fn<decltype(name)>(#name)

std::atomic<int> gDestroyed{0};
void OXLCALLBACK countDestroy(void* counter) { ++*static_cast<std::atomic<int>*>(counter); }

// Each load starts the slots afresh; a thread that ends while the library is
// loaded has its items destroyed by the thread-exit notification.
TEST(Module, LoadsUnloadsAndLoadsAgainWithTheSameSlots) {
    for (int round = 0; round < 2; ++round) {
        Module m;
        ASSERT_TRUE(m.Loaded()) << "round " << round;
        auto** mainPtr = static_cast<CR_SECT**>(m.Find("gpCRSECTMain"));
        ASSERT_NE(mainPtr, nullptr);
        EXPECT_EQ(*mainPtr, m.Find("gCRMainSect")) << "gpCRSECTMain points at gCRMainSect";
        EXPECT_EQ(FN(m, CR_LockCount)(*mainPtr), 0);
        int index = FN(m, TLS_AllocIndex)();
        EXPECT_EQ(index, 103) << "a host's first slot, round " << round;
        EXPECT_EQ(FN(m, TLS_AllocIndex)(), 104);
        auto setItem = FN(m, TLS_SetItem);
        gDestroyed = 0;
        for (int i = 0; i < 3; ++i) std::thread([&] { setItem(index, &gDestroyed, countDestroy), setItem(7, &gDestroyed, countDestroy); }).join();
        EXPECT_EQ(gDestroyed, 6) << "items destroyed by the thread-exit notification, round " << round;
    }
}

// A thread still running at unload keeps its item: unload destroys only the
// unloading thread's items, and the thread's end afterwards reaches nothing
// of a library that is gone (its platform slot went with it).
TEST(Module, ItemsOfAThreadStillRunningAtUnloadAreLeftAlone) {
    auto m = std::make_unique<Module>();
    ASSERT_TRUE(m->Loaded());
    int index = FN(*m, TLS_AllocIndex)();
    auto setItem = FN(*m, TLS_SetItem);
    gDestroyed = 0;
    std::atomic<int> step{0};
    std::thread t([&] {
#ifndef _WIN32
        if (__lsan_disable) __lsan_disable(); // the thread's block outlives the library by design: nobody is left to free it
#endif
        setItem(index, &gDestroyed, countDestroy);
        for (++step; step < 2;) std::this_thread::yield();
    });
    while (step < 1) std::this_thread::yield();
    m->Unload();
    EXPECT_EQ(gDestroyed, 0) << "unload destroyed another thread's item";
    ++step;
    t.join();
    EXPECT_EQ(gDestroyed, 0) << "the ended thread reached an unloaded library";
}

#ifndef _WIN32
// Windows forgets a named object when its last handle goes, at the latest when
// the process ends; the POSIX backend removes the name at unload when no other
// process has the object open, so nothing is left behind in /dev/shm.
TEST(Module, SharedMutexLeavesNoNameAtUnload) {
    const char* path = "/dev/shm/MORVEL_SHARED_MEM_MUTEX";
    auto m = std::make_unique<Module>();
    ASSERT_EQ(FN(*m, MemAcquireMutex)(), 1);
    FN(*m, MemReleaseMutex)();
    EXPECT_EQ(access(path, F_OK), 0) << path << " while the library holds the mutex";
    m->Unload();
    EXPECT_NE(access(path, F_OK), 0) << path << " after unload";
}
#endif

// The library's own strings are those of the build; the test program has
// none and its buffer is left alone; a module whose version resource has only
// the English/Windows Latin translation still gives both.
TEST(Module, VersionStringsOfRealModules) {
    Module m;
    ASSERT_TRUE(m.Loaded());
    const struct { const char* what; HMODULE module; const char *product, *build; } rows[] = {
        {"the library", m.Handle(), OXL_PRODUCT_VERSION, OXL_FILE_VERSION},
        {"the test program", nullptr, "untouched", "untouched"},
#ifdef _WIN32
        {"oxl_latin_only", LoadLibraryA("oxl_latin_only.dll"), "4.3.2-latin", "4.3.2.1-latin"},
#endif
    };
    for (const auto& r : rows) {
        char product[64] = "untouched", build[64] = "untouched";
        int found = std::string(r.product) != "untouched";
        EXPECT_EQ(FN(m, VERGetVersionString)(r.module, product), found) << "VERGetVersionString(" << r.what << ")";
        EXPECT_STREQ(product, r.product) << "VERGetVersionString(" << r.what << ")";
        EXPECT_EQ(FN(m, VERGetBuildString)(r.module, build), found) << "VERGetBuildString(" << r.what << ")";
        EXPECT_STREQ(build, r.build) << "VERGetBuildString(" << r.what << ")";
    }
}

} // namespace
