// The shared heap: its bytes after each operation, the fit and merge rules,
// damage, the mutex's results (scripted and real), and failures of the
// objects underneath. Each test process uses names of its own, so suites
// running side by side never share a block.
#include <oxlrt31/memshared.h>
#include "core/memstate.h"
#include "../support/child_process.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

// The address sanitizer keeps the range around 0xA0000000 for itself.
#if defined(__SANITIZE_ADDRESS__)
#define OXL_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OXL_ASAN 1
#endif
#endif

namespace {

constexpr DWORD kView = 0x10000;
constexpr uint32_t kSigA = 0x78563412, kSigB = 0xF1DEBC9A;

// The header's words, by offset.
enum { SIZE = 4, BASE = 8, NEXT = 12, END = 16, FREE = 20, USED = 24 };

uint32_t Word(uint32_t at) {
    uint32_t v;
    std::memcpy(&v, reinterpret_cast<const void*>(uintptr_t(at)), 4);
    return v;
}
uint32_t Addr(const void* p) { return uint32_t(reinterpret_cast<uintptr_t>(p)); }

// The mutex handle lives as long as the process; a test that scripts its
// creation first lets go of the one there is.
void ForgetMutex() {
    if (gMemState.hMutex) gOsl.shared->CloseHandle(gMemState.hMutex);
    gMemState.hMutex = nullptr;
}

// A heap of 1000 bytes at the start of a fresh shared block.
class SharedHeap : public testing::Test {
protected:
    void SetUp() override {
        LONG created = -1;
        m_view = MemSharedInit(&created, kView);
        ASSERT_NE(m_view, nullptr) << "MemSharedInit(" << kView << ")";
        ASSERT_EQ(created, 1) << "MemSharedInit's created flag for a new block";
        ASSERT_EQ(MemSharedInitHeap(m_view, 1000, 1), 1);
        base = Addr(m_view);
    }
    void TearDown() override {
        MemSharedTerminate();
        EXPECT_EQ(m_shared.Levels(), 0) << "mutex levels left held";
    }
    uint32_t Header(int field) const { return Word(base + field); }
    uint32_t Alloc(DWORD size) { return Addr(MemSharedAlloc(size)); }
    void Free(uint32_t payload) { MemSharedFree(reinterpret_cast<void*>(uintptr_t(payload))); }
    // The free list from its head: block address and payload size.
    std::vector<std::pair<uint32_t, uint32_t>> FreeList() const {
        std::vector<std::pair<uint32_t, uint32_t>> list;
        for (uint32_t at = Header(FREE); at && list.size() < 100;) {
            list.emplace_back(at, Word(at + 12));
            at = Word(at + 4);
            if (at == Header(FREE)) break;
        }
        return list;
    }
    std::vector<unsigned char> Bytes() const {
        auto* p = static_cast<const unsigned char*>(m_view);
        return {p, p + 1000};
    }

    ScriptedShared m_shared{{SharedSuffix()}};
    void* m_view = nullptr;
    uint32_t base = 0;
};

TEST_F(SharedHeap, FormatOfTheHeaderAndOfABlock) {
    EXPECT_EQ(Header(0), kSigA);
    EXPECT_EQ(Header(SIZE), 1000u);
    EXPECT_EQ(Header(BASE), base);
    EXPECT_EQ(Header(NEXT), base + 32);
    EXPECT_EQ(Header(END), base + 1000);
    EXPECT_EQ(Header(28), kSigB);
    const unsigned char sigBytes[] = {0x12, 0x34, 0x56, 0x78};
    EXPECT_EQ(std::memcmp(m_view, sigBytes, 4), 0) << "signature A is stored little-endian";

    uint32_t p = Alloc(100);
    ASSERT_EQ(p, base + 52) << "MemSharedAlloc(100) in a fresh heap";
    uint32_t b = p - 20;
    const struct {
        uint32_t at, want;
        const char* what;
    } words[] = {
        {base + NEXT, base + 160, "heap's next"}, {base + USED, b, "used list"}, {base + FREE, 0, "free list"},
        {b, kSigA, "head signature A"},           {b + 4, b, "next of a lone block"},
        {b + 8, b, "prev of a lone block"},       {b + 12, 100, "size"},
        {b + 16, kSigB, "head signature B"},      {p + 100, kSigA, "tail signature A"},
        {p + 104, kSigB, "tail signature B"},
    };
    for (const auto& w : words) EXPECT_EQ(Word(w.at), w.want) << w.what << " at base + " << w.at - base;
    EXPECT_EQ(MemSharedCheck(reinterpret_cast<void*>(uintptr_t(p))), 1);
}

TEST_F(SharedHeap, ListsInsertAtTheHead) {
    uint32_t a = Alloc(10) - 20, b = Alloc(10) - 20, c = Alloc(10) - 20;
    EXPECT_EQ(Header(USED), c) << "the newest block heads the used list";
    const struct {
        uint32_t block, next, prev;
    } links[] = {{c, b, a}, {b, a, c}, {a, c, b}};
    for (const auto& l : links) {
        EXPECT_EQ(Word(l.block + 4), l.next) << "next of block at base + " << l.block - base;
        EXPECT_EQ(Word(l.block + 8), l.prev) << "prev of block at base + " << l.block - base;
    }
}

TEST_F(SharedHeap, FreeingTheLastBlockInUseResetsTheHeap) {
    uint32_t a = Alloc(100), b = Alloc(100), c = Alloc(100);
    Free(b);
    Free(a);
    auto merged = FreeList();
    ASSERT_EQ(merged.size(), 1u) << "B then A freed";
    EXPECT_EQ(merged[0].first, a - 20);
    EXPECT_EQ(merged[0].second, 228u) << "A and B merged: 100 + 28 + 100";
    Free(c);
    EXPECT_EQ(Header(NEXT), base + 32);
    EXPECT_EQ(Header(FREE), 0u);
    EXPECT_EQ(Header(USED), 0u);
}

TEST_F(SharedHeap, MergesWithBothNeighbours) {
    uint32_t a = Alloc(100), b = Alloc(100), c = Alloc(100);
    Alloc(100); // keeps the heap from resetting
    Free(a);
    Free(c);
    ASSERT_EQ(FreeList().size(), 2u);
    Free(b);
    auto merged = FreeList();
    ASSERT_EQ(merged.size(), 1u);
    EXPECT_EQ(merged[0].first, a - 20);
    EXPECT_EQ(merged[0].second, 356u) << "A, B and C: 3 x 100 + 2 x 28";
    EXPECT_EQ(MemSharedCheckAll(), 1);
}

// A free block of payload 100 and requests around it: taken whole, skipped
// for a remainder of 1 to 40, split beyond.
TEST_F(SharedHeap, FirstFitWithASplitThreshold) {
    const struct {
        DWORD size;
        bool fromFree;
        uint32_t remainder; // payload of the free block left after a split, 0 for none
    } cases[] = {{100, true, 0}, {90, false, 0}, {60, false, 0}, {59, true, 13}, {1, true, 71}};
    for (const auto& c : cases) {
        uint32_t x = Alloc(100);
        uint32_t keep = Alloc(1);
        Free(x);
        uint32_t end = Header(NEXT);
        uint32_t got = Alloc(c.size);
        auto left = FreeList();
        if (c.fromFree) {
            EXPECT_EQ(got, x) << "MemSharedAlloc(" << c.size << ") with a free block of 100";
            if (c.remainder) {
                ASSERT_EQ(left.size(), 1u) << "after MemSharedAlloc(" << c.size << ")";
                EXPECT_EQ(left[0].first, x + c.size + 8) << "remainder of MemSharedAlloc(" << c.size << ")";
                EXPECT_EQ(left[0].second, c.remainder) << "remainder of MemSharedAlloc(" << c.size << ")";
            } else {
                EXPECT_TRUE(left.empty()) << "after MemSharedAlloc(" << c.size << ")";
            }
        } else {
            EXPECT_EQ(got, end + 20) << "MemSharedAlloc(" << c.size << ") with a free block of 100";
            EXPECT_EQ(left.size(), 1u) << "the free block stays after MemSharedAlloc(" << c.size << ")";
        }
        EXPECT_EQ(MemSharedCheckAll(), 1) << "after MemSharedAlloc(" << c.size << ")";
        Free(got);
        Free(keep);
        ASSERT_EQ(Header(NEXT), base + 32) << "heap reset after case " << c.size;
    }
}

TEST_F(SharedHeap, AReusedBlockIsZeroed) {
    auto* p = static_cast<unsigned char*>(MemSharedAlloc(100));
    ASSERT_NE(p, nullptr);
    Alloc(1);
    std::memset(p, 0xAB, 100);
    MemSharedFree(p);
    auto* q = static_cast<unsigned char*>(MemSharedAlloc(100));
    ASSERT_EQ(q, p) << "the free block is taken whole";
    int dirty = 0;
    for (int i = 0; i < 100; ++i) dirty += q[i] != 0;
    EXPECT_EQ(dirty, 0) << "bytes of the reused block not zero";
}

TEST_F(SharedHeap, ARequestBeyondTheHeapChangesNothing) {
    Alloc(100);
    uint32_t room = Header(END) - Header(NEXT);
    auto before = Bytes();
    const DWORD tooBig[] = {room - 27, room, 0x7FFFFFFF, 0xFFFFFFFF, 0xFFFFFFE4};
    for (DWORD size : tooBig) {
        EXPECT_EQ(MemSharedAlloc(size), nullptr) << "MemSharedAlloc(" << size << ") with " << room << " bytes left";
        EXPECT_TRUE(Bytes() == before) << "the heap changed after MemSharedAlloc(" << size << ")";
    }
    EXPECT_EQ(Alloc(room - 28), base + 160 + 20) << "a request that fills the heap exactly";
    EXPECT_EQ(Header(NEXT), Header(END));
    EXPECT_EQ(MemSharedAlloc(0), nullptr) << "MemSharedAlloc(0) on a full heap";
}

TEST_F(SharedHeap, DamageIsFoundAndNothingIsFollowedOutOfTheHeap) {
    uint32_t a = Alloc(100), b = Alloc(100);
    auto* pa = reinterpret_cast<unsigned char*>(uintptr_t(a));
    EXPECT_EQ(MemSharedCheck(nullptr), 1);
    pa[100] ^= 1; // one byte past the payload
    EXPECT_EQ(MemSharedCheck(pa), 0) << "a block written past its end";
    EXPECT_EQ(MemSharedCheckAll(), 0);
    pa[100] ^= 1;
    EXPECT_EQ(MemSharedCheckAll(), 1);

    // A link pointing outside the heap: the calls that follow it fail and
    // give the mutex back.
    Free(b);
    std::memcpy(reinterpret_cast<void*>(uintptr_t(b - 20 + 4)), "\x00\x00\x00\x10", 4);
    EXPECT_EQ(MemSharedAlloc(500), nullptr) << "MemSharedAlloc over a broken free list";
    EXPECT_EQ(MemSharedCheckAll(), 0) << "MemSharedCheckAll over a broken free list";
    EXPECT_EQ(m_shared.Levels(), 0) << "mutex held after a damaged list";
}

TEST_F(SharedHeap, BadFreesChangeNothing) {
    uint32_t a = Alloc(100), b = Alloc(100);
    Alloc(100);
    Free(a);
    auto before = Bytes();
    const struct {
        const char* what;
        uintptr_t payload;
    } cases[] = {
        {"a block freed twice", a},       {"the middle of a payload", b + 8},
        {"null", 0},                      {"the heap's header", base + 20},
        {"beyond the heap", base + 4000}, {"above 4 GB", uintptr_t(-1) - 15},
    };
    for (const auto& c : cases) {
        MemSharedFree(reinterpret_cast<void*>(c.payload));
        EXPECT_TRUE(Bytes() == before) << "MemSharedFree of " << c.what << " changed the heap";
    }
    EXPECT_EQ(MemSharedCheckAll(), 1);
}

TEST_F(SharedHeap, InitHeapChecksAnExistingHeap) {
    Alloc(100);
    EXPECT_EQ(MemSharedInitHeap(m_view, 1000, 0), 1) << "the same size";
    EXPECT_EQ(MemSharedInitHeap(m_view, 999, 0), 0) << "another size";
    EXPECT_EQ(gMemState.lpHeap, m_view) << "the heap stays set after a failed check";
    static_cast<unsigned char*>(m_view)[31] ^= 0xFF;
    EXPECT_EQ(MemSharedInitHeap(m_view, 1000, 0), 0) << "signature B damaged";
    EXPECT_EQ(MemSharedCheckAll(), 0) << "signature B damaged";
    EXPECT_EQ(MemSharedInitHeap(m_view, 1000, 1), 1) << "formatting again";
    EXPECT_EQ(Header(NEXT), base + 32);
}

TEST_F(SharedHeap, ASecondInitInTheProcessGivesTheSameView) {
    LONG created = 7;
    EXPECT_EQ(MemSharedInit(&created, kView), m_view);
    EXPECT_EQ(created, 0);
}

// A thread that ends holding the mutex abandons it; the next waiter takes it
// over, at one level, and another thread can have it after the release.
TEST(SharedMutex, AnAbandonedMutexIsTakenOver) {
    ScriptedShared shared({SharedSuffix()});
    std::thread([] { EXPECT_EQ(MemAcquireMutex(), 1) << "first owner"; }).join();
    EXPECT_EQ(MemAcquireMutex(), 1) << "after the owner ended holding the mutex";
    EXPECT_EQ(shared.WaitLimits(), (std::vector<DWORD>{20000, 20000, 10000})) << "the second wait follows WAIT_ABANDONED";
    EXPECT_EQ(MemReleaseMutex(), 1);
    bool other = false;
    std::thread([&] {
        other = MemAcquireMutex() == 1;
        if (other) MemReleaseMutex();
    }).join();
    EXPECT_TRUE(other) << "another thread after the one release";
    EXPECT_EQ(MemReleaseMutex(), 0) << "nothing left to release";
}

// The waits and their results, scripted: what MemAcquireMutex makes of each
// result, how many levels the caller is left holding, and the time limits.
TEST(SharedMutex, WaitResults) {
    const struct {
        std::vector<DWORD> waits;
        int result, levels;
        std::vector<DWORD> limits;
    } cases[] = {
        {{WAIT_OBJECT_0}, 1, 1, {20000}},
        {{WAIT_ABANDONED, WAIT_OBJECT_0}, 1, 1, {20000, 10000}},
        {{WAIT_ABANDONED, WAIT_TIMEOUT}, 0, 0, {20000, 10000}},
        {{WAIT_TIMEOUT}, 0, 0, {20000}},
        {{WAIT_FAILED}, 0, 0, {20000}},
    };
    for (const auto& c : cases) {
        ScriptedShared shared({SharedSuffix(), false, false, false, false, c.waits});
        int got = MemAcquireMutex();
        EXPECT_EQ(got, c.result) << "MemAcquireMutex with waits giving 0x" << std::hex << c.waits[0];
        EXPECT_EQ(shared.Levels(), c.levels) << "levels held, first wait 0x" << std::hex << c.waits[0];
        EXPECT_EQ(shared.WaitLimits(), c.limits) << "first wait 0x" << std::hex << c.waits[0];
        if (got) {
            EXPECT_EQ(MemReleaseMutex(), 1);
        }
        while (shared.Levels() > 0) gOsl.shared->ReleaseMutex(gMemState.hMutex);
    }
}

// A failure of each object underneath: the results, *created, and no mutex
// level kept. The mutex is made afresh for each case.
TEST(SharedMutex, FailuresUnderneath) {
    using Script = ScriptedShared::Script;
    const struct {
        const char* what;
        Script script;
        int acquire;
        bool view;
        LONG created;
        int openObjects; // made with security that lets every user in
    } cases[] = {
        {"nothing failing", {SharedSuffix()}, 1, true, 1, 2},
        {"no mutex", {SharedSuffix(), false, true}, 0, false, -7, 0},
        {"no mapping", {SharedSuffix(), false, false, true}, 1, false, -7, 1},
        {"a release that fails", {SharedSuffix(), false, false, false, true}, 1, false, 1, 2},
        {"no security descriptor", {SharedSuffix(), true}, 1, true, 1, 0},
    };
    for (const auto& c : cases) {
        ForgetMutex();
        ScriptedHeap heap;
        ScriptedShared shared(c.script);
        EXPECT_EQ(MemAcquireMutex(), c.acquire) << c.what;
        if (c.acquire) MemReleaseMutex();
        LONG created = -7;
        void* view = MemSharedInit(&created, kView);
        EXPECT_EQ(view != nullptr, c.view) << "MemSharedInit with " << c.what;
        EXPECT_EQ(created, c.created) << "created flag with " << c.what;
        EXPECT_EQ(shared.OpenSecurity(), c.openObjects) << "objects open to all with " << c.what;
        EXPECT_EQ(shared.Levels(), 0) << "levels held with " << c.what;
        EXPECT_EQ(MemReleaseMutex(), 0) << "nothing left to release with " << c.what;
        MemSharedTerminate();
        EXPECT_EQ(gMemState.hMapping, nullptr) << c.what;
        EXPECT_EQ(gMemState.lpView, nullptr) << c.what;
        EXPECT_EQ(heap.Outstanding(), 0) << "security descriptors not given back with " << c.what;
    }
    ForgetMutex();
}

// Without memory for the security descriptor, the objects get default security.
TEST(SharedMutex, NoMemoryForTheSecurityDescriptor) {
    ForgetMutex();
    ScriptedHeap heap(1);
    ScriptedShared shared({SharedSuffix()});
    LONG created = 0;
    EXPECT_NE(MemSharedInit(&created, kView), nullptr);
    EXPECT_EQ(created, 1);
    EXPECT_EQ(shared.Created(), 2) << "mutex and mapping";
    EXPECT_EQ(shared.OpenSecurity(), 0);
    EXPECT_GE(heap.Attempts(), 2) << "one descriptor asked for each object";
    MemSharedTerminate();
    ForgetMutex();
}

// One address per platform, and a block that can't be had there is refused
// and closed, leaving *created as it was.
TEST(SharedBlock, MappedAtTheOneAddressOfThePlatform) {
    ScriptedShared shared({SharedSuffix()});
    const struct {
        DWORD platform;
        uintptr_t at;
    } cases[] = {
        {VER_PLATFORM_WIN32_NT, 0x40000000},
#ifndef OXL_ASAN
        {1, 0xA0000000},
#endif
    };
    for (const auto& c : cases) {
        ScriptedSystem system(0x409, 0x409, c.platform);
        LONG created = 0;
        EXPECT_EQ(MemSharedInit(&created, kView), reinterpret_cast<void*>(c.at)) << "platform " << c.platform;
        EXPECT_EQ(created, 1) << "platform " << c.platform;
        MemSharedTerminate();

        ASSERT_TRUE(ReserveAddress(reinterpret_cast<void*>(c.at), kView)) << "reserving 0x" << std::hex << c.at;
        created = -7;
        EXPECT_EQ(MemSharedInit(&created, kView), nullptr) << "with 0x" << std::hex << c.at << " taken";
        EXPECT_EQ(created, -7);
        EXPECT_EQ(gMemState.hMapping, nullptr) << "the refused block is closed";
        ReleaseAddress(reinterpret_cast<void*>(c.at), kView);
        EXPECT_NE(MemSharedInit(&created, kView), nullptr) << "once 0x" << std::hex << c.at << " is free again";
        EXPECT_EQ(created, 1) << "the refused block went when it was closed";
        MemSharedTerminate();
    }
    EXPECT_EQ(shared.Levels(), 0);
}

} // namespace
