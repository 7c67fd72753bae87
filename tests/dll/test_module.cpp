// The shared library as hosts meet it: loaded by name, its exports found by
// name, unloaded and loaded again in one process, threads ending while it is
// loaded and while it is not.
#include "core/crsect.h"
#include "core/tls.h"
#include "intl/intl.h"
#include "number/number.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <memory>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

class Module {
public:
    Module() {
#ifdef _WIN32
        m_handle = LoadLibraryA(OXL_MODULE_PATH);
#else
        m_handle = dlopen("./" OXL_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
#endif
    }
    ~Module() { Unload(); }
    void Unload() {
        if (!m_handle) return;
#ifdef _WIN32
        FreeLibrary(static_cast<HMODULE>(m_handle));
#else
        dlclose(m_handle);
#endif
        m_handle = nullptr;
    }
    bool Loaded() const { return m_handle != nullptr; }
    void* Find(const char* name) const {
#ifdef _WIN32
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
#else
        return dlsym(m_handle, name);
#endif
    }
    template <class F>
    F* Fn(const char* name) const {
        return reinterpret_cast<F*>(Find(name));
    }

private:
    void* m_handle = nullptr;
};

#define FN(module, name) (module).Fn<decltype(name)>(#name)

std::atomic<int> gDestroyed{0};
void OXLCALLBACK countDestroy(void*) { ++gDestroyed; }

TEST(Module, ExportsEveryNameUndecorated) {
    Module m;
    ASSERT_TRUE(m.Loaded()) << "loading " OXL_MODULE_PATH;
    for (const char* name :
         {"CR_LockCount", "CR_Unwind", "CR_Rewind", "gCRMainSect", "gpCRSECTMain", "TLS_AllocIndex", "TLS_FreeIndex",
          "TLS_GetItem", "TLS_SetItem", "TLS_Free", "TLS_FreeAll", "NumCreateSmall", "NumNegate", "NumCompare",
          "NumIsZero", "NumNullToZero", "NumIsNullDouble", "NumNullDouble", "IntlInit", "IntlDBCSEnabled",
          "IntlIsBiDiEnabled", "IntlIsDBChar", "IntlBytesInNextChar", "IntlNextDBCInStr", "IntlIsNthCharDB",
          "IntlIsNthByteDB", "IntlStrNthChar", "IntlStrFirstChar", "IntlStrLastChar", "IntlDBCSBlank", "IntlDBCSChar",
          "IntlCharIsHexDigit", "IntlStripStartSpace", "IntlStripStartBlank", "IntlStrIsNextChSpace", "IntlIsKanji",
          "IntlIsKatakana", "IntlStrJapanFull", "IntlStrJapanHalf", "IntlStrLen", "IntlStrLenB", "IntlStrLeft", "IntlStrRight", "IntlStrMid", "IntlStrLeftB", "IntlStrRightB", "IntlStrMidB", "IntlStrReplace", "IntlStrReplaceB", "IntlStrnCpy", "IntlStrUpper", "IntlStrLower", "IntlStrProper", "IntlStrTrim", "IntlStrTrimTrailing", "IntlStripEndSpace", "IntlStrStripSpace", "IntlIsStrEqual", "IntlIsStrnEqual", "IntlStrGetToken", "IntlStrGetTokenNestedParens", "IntlStrGetTokenQuoted", "IntlStrGetTokenPtr", "IntlStrChr", "IntlStrSearch", "IntlStrScan", "IntlFetchNextNumLong", "IntlFetchNextNumDouble"})
        EXPECT_NE(m.Find(name), nullptr) << "export " << name;
}

TEST(Module, LoadsUnloadsAndLoadsAgainWithTheSameSlots) {
    for (int round = 0; round < 2; ++round) {
        Module m;
        ASSERT_TRUE(m.Loaded()) << "round " << round;
        auto** mainPtr = static_cast<CR_SECT**>(m.Find("gpCRSECTMain"));
        ASSERT_NE(mainPtr, nullptr);
        EXPECT_EQ(*mainPtr, m.Find("gCRMainSect")) << "gpCRSECTMain points at gCRMainSect";
        EXPECT_EQ(FN(m, CR_LockCount)(*mainPtr), 0);
        EXPECT_EQ(FN(m, TLS_AllocIndex)(), 103) << "a host's first slot, round " << round;
        EXPECT_EQ(FN(m, TLS_AllocIndex)(), 104);
        tagNUMBER n;
        FN(m, NumCreateSmall)(&n, -1);
        EXPECT_EQ(FN(m, NumNegate)(&n), 2);
    }
}

TEST(Module, AThreadThatEndsFreesItsItems) {
    Module m;
    ASSERT_TRUE(m.Loaded());
    int index = FN(m, TLS_AllocIndex)();
    auto setItem = FN(m, TLS_SetItem);
    gDestroyed = 0;
    for (int i = 0; i < 3; ++i) {
        std::thread t([&] {
            setItem(index, &gDestroyed, countDestroy);
            setItem(7, &gDestroyed, countDestroy);
        });
        t.join();
    }
    EXPECT_EQ(gDestroyed, 6) << "items destroyed by the thread-exit notification";
}

TEST(Module, ItemsOfAThreadStillRunningAtUnloadAreLeftAlone) {
    auto m = std::make_unique<Module>();
    ASSERT_TRUE(m->Loaded());
    int index = FN(*m, TLS_AllocIndex)();
    auto setItem = FN(*m, TLS_SetItem);
    gDestroyed = 0;
    std::mutex lock;
    std::condition_variable changed;
    bool stored = false, unloaded = false;
    std::thread t([&] {
        setItem(index, &gDestroyed, countDestroy);
        std::unique_lock<std::mutex> g(lock);
        stored = true;
        changed.notify_all();
        changed.wait(g, [&] { return unloaded; });
    });
    {
        std::unique_lock<std::mutex> g(lock);
        changed.wait(g, [&] { return stored; });
    }
    m->Unload();
    EXPECT_EQ(gDestroyed, 0) << "unload destroyed another thread's item";
    {
        std::lock_guard<std::mutex> g(lock);
        unloaded = true;
        changed.notify_all();
    }
    t.join();
    EXPECT_EQ(gDestroyed, 0) << "the ended thread reached an unloaded library";
    Module again;
    EXPECT_EQ(FN(again, TLS_AllocIndex)(), 103);
}

} // namespace
