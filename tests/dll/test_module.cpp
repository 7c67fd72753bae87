// The shared library as hosts meet it: loaded by name, its exports found by
// name, unloaded and loaded again in one process, threads ending while it is
// loaded and while it is not.
#include <oxlrt31/crsect.h>
#include <oxlrt31/diag.h>
#include <oxlrt31/tls.h>
#include <oxlrt31/intl.h>
#include <oxlrt31/number.h>

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <fstream>
#include <sstream>
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
    // The module as the library's own functions know it: on Linux any
    // address inside it.
    HMODULE Handle() const {
#ifdef _WIN32
        return static_cast<HMODULE>(m_handle);
#else
        Dl_info info;
        return dladdr(Find("VERGetVersionString"), &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
#endif
    }
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

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OXL_LSAN 1
#endif
#endif
#ifdef OXL_LSAN
#include <sanitizer/lsan_interface.h>
void IgnoreLeaksOnThisThread() { __lsan_disable(); }
#else
void IgnoreLeaksOnThisThread() {}
#endif

#define FN(module, name) (module).Fn<decltype(name)>(#name)

std::atomic<int> gDestroyed{0};
void OXLCALLBACK countDestroy(void*) { ++gDestroyed; }

// Every name of the module definition, as a host asks for it.
TEST(Module, ExportsEveryNameUndecorated) {
    Module m;
    ASSERT_TRUE(m.Loaded()) << "loading " OXL_MODULE_PATH;
    std::ifstream def("oxlrt31.def"); // copied beside the module by the build
    ASSERT_TRUE(def) << "reading oxlrt31.def";
    std::string line;
    bool inExports = false;
    int names = 0;
    while (std::getline(def, line)) {
        std::istringstream words(line);
        std::string name;
        if (!(words >> name) || name[0] == ';') continue;
        if (name == "EXPORTS") {
            inExports = true;
        } else if (inExports) {
            ++names;
            EXPECT_NE(m.Find(name.c_str()), nullptr) << "GetProcAddress/dlsym of export " << name;
        }
    }
    EXPECT_GT(names, 100) << "names read from oxlrt31.def";
}

// A host's round of the number family through the exports: text in,
// arithmetic, text out.
TEST(Module, NumbersThroughTheExports) {
    Module m;
    ASSERT_TRUE(m.Loaded());
    tagNUMBER a, b, q;
    char one[] = "1", three[] = "  3e0", text[32];
    EXPECT_EQ(FN(m, NumAsciiToNumber)(&a, one), 1);
    EXPECT_EQ(FN(m, NumAsciiToNumber)(&b, three), 5);
    EXPECT_EQ(FN(m, NumDivide)(&q, &a, &b), 24);
    EXPECT_EQ(FN(m, NumToAscii)(&q, text, 10), 10);
    EXPECT_STREQ(text, ".333333333");
    LONG reply = 7;
    EXPECT_EQ(FN(m, NumToLongReply)(&b, &reply), 3);
    EXPECT_EQ(reply, 0);
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
        // The thread's block outlives the library by design: nobody is left
        // to free it. The leak checker is told so; nothing else is hidden.
        IgnoreLeaksOnThisThread();
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

TEST(Module, VersionStringsAreThoseOfTheBuild) {
    Module m;
    ASSERT_TRUE(m.Loaded());
    char product[64] = "", build[64] = "", untouched[16] = "untouched";
    EXPECT_EQ(FN(m, VERGetVersionString)(m.Handle(), product), 1) << "VERGetVersionString(the library)";
    EXPECT_STREQ(product, OXL_PRODUCT_VERSION);
    EXPECT_EQ(FN(m, VERGetBuildString)(m.Handle(), build), 1) << "VERGetBuildString(the library)";
    EXPECT_STREQ(build, OXL_FILE_VERSION);
    EXPECT_EQ(FN(m, VERGetVersionString)(nullptr, untouched), 0) << "VERGetVersionString(the test program)";
    EXPECT_STREQ(untouched, "untouched") << "VERGetVersionString(the test program)";
}

#ifdef _WIN32
// A real module whose version resource has only the English/Windows Latin
// translation: both strings still come from it.
TEST(Module, VersionStringsOfAModuleWithOnlyTheLatinTranslation) {
    Module m;
    ASSERT_TRUE(m.Loaded());
    HMODULE latin = LoadLibraryA("oxl_latin_only.dll");
    ASSERT_NE(latin, nullptr) << "LoadLibraryA(oxl_latin_only.dll)";
    char product[64] = "", build[64] = "";
    EXPECT_EQ(FN(m, VERGetVersionString)(latin, product), 1) << "VERGetVersionString(oxl_latin_only)";
    EXPECT_STREQ(product, "4.3.2-latin");
    EXPECT_EQ(FN(m, VERGetBuildString)(latin, build), 1) << "VERGetBuildString(oxl_latin_only)";
    EXPECT_STREQ(build, "4.3.2.1-latin");
    FreeLibrary(latin);
}

// A real box: found by its caption, read, and closed as a user would.
TEST(Module, AssertBoxShowsASystemModalBoxUntilItIsClosed) {
    auto* m = new Module;
    ASSERT_TRUE(m->Loaded());
    auto assertBox = FN(*m, AssertBox);
    std::atomic<bool> returned{false};
    std::thread caller([&] {
        assertBox(const_cast<char*>("format.xx"), 120);
        returned = true;
    });
    HWND box = nullptr;
    for (int i = 0; i < 500 && !box; ++i) {
        box = FindWindowA("#32770", "Oxlee");
        if (!box) Sleep(10);
    }
    if (!box) {
        caller.detach(); // blocked in the library: keep it loaded
        FAIL() << "no box captioned Oxlee within 5 s of AssertBox(\"format.xx\", 120)";
    }
    char text[256] = "";
    GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    LONG exStyle = GetWindowLongA(box, GWL_EXSTYLE);
    Sleep(50);
    EXPECT_FALSE(returned) << "AssertBox returned before its box was closed";
    PostMessageA(box, WM_COMMAND, IDOK, 0);
    caller.join();
    EXPECT_STREQ(text, "Internal Error: format.120") << "text of AssertBox(\"format.xx\", 120)";
    EXPECT_NE(exStyle & WS_EX_TOPMOST, 0) << "a system-modal box stands above other windows";
    delete m;
}
#endif

} // namespace
