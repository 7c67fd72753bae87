// The shared heap: its bytes after each operation, the fit and merge rules,
// damage, the mutex's results (scripted and real), failures of the objects
// underneath, and another process (oxl_shm_child) ending with the mutex held.
// Each test process uses names of its own, so suites running side by side
// never share a block.
#include <oxlrt31/memshared.h>
#include "core/memstate.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/mman.h>
#endif

// The address sanitizer keeps the range around 0xA0000000 for itself.
#if defined(__SANITIZE_ADDRESS__)
#define OXL_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OXL_ASAN 1
#endif
#endif

namespace {

constexpr uint32_t kSigA = 0x78563412, kSigB = 0xF1DEBC9A;
enum { SIZE = 4, BASE = 8, NEXT = 12, END = 16, FREE = 20, USED = 24 }; // the header's words, by offset

uint32_t Word(uint32_t at) {
    uint32_t v;
    std::memcpy(&v, reinterpret_cast<const void*>(uintptr_t(at)), 4);
    return v;
}
uint32_t Addr(const void* p) { return uint32_t(reinterpret_cast<uintptr_t>(p)); }
void* Ptr(uint32_t at) { return reinterpret_cast<void*>(uintptr_t(at)); }

// Reserves (without committing) `bytes` at exactly `at`, so that nothing else
// can be mapped there; false when the address is taken already.
#ifdef _WIN32
bool ReserveAddress(void* at, unsigned bytes) { return VirtualAlloc(at, bytes, MEM_RESERVE, PAGE_NOACCESS) == at; }
void ReleaseAddress(void* at, unsigned) { VirtualFree(at, 0, MEM_RELEASE); }
#else
bool ReserveAddress(void* at, unsigned bytes) {
    void* p = mmap(at, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED_NOREPLACE, -1, 0);
    if (p != MAP_FAILED && p != at) munmap(p, bytes);
    return p == at;
}
void ReleaseAddress(void* at, unsigned bytes) { munmap(at, bytes); }
#endif

// A program of the suite's, named as it lies beside the test program.
std::string Beside(const std::string& program) {
    char self[4096] = "";
    std::string path(self, gOsl.system->GetModuleFileNameA(nullptr, self, sizeof self));
    return "\"" + path.substr(0, path.find_last_of("\\/") + 1) + program + "\"";
}

// The mutex handle lives as long as the process; a test that scripts its
// creation first lets go of the one there is.
void ForgetMutex() {
    if (gMemState.hMutex) gOsl.shared->CloseHandle(gMemState.hMutex);
    gMemState.hMutex = nullptr;
}

// A heap of `m_heap` bytes at the start of a fresh shared block of 64 KB.
class SharedHeap : public testing::Test {
protected:
    static constexpr DWORD kView = 0x10000;
    DWORD m_heap = 1000;
    void SetUp() override {
        LONG created = -1;
        ASSERT_NE(m_view = MemSharedInit(&created, kView), nullptr) << "MemSharedInit(" << kView << ")";
        ASSERT_EQ(created, 1) << "MemSharedInit's created flag for a new block";
        ASSERT_EQ(MemSharedInitHeap(m_view, m_heap, 1), 1);
        base = Addr(m_view);
    }
    void TearDown() override {
        MemSharedTerminate();
        EXPECT_EQ(m_shared.Levels(), 0) << "mutex levels left held";
    }
    uint32_t Header(int field) const { return Word(base + field); }
    uint32_t Alloc(DWORD size) { return Addr(MemSharedAlloc(size)); }
    void Free(uint32_t payload) { MemSharedFree(Ptr(payload)); }
    // The free list from its head: block address and payload size.
    std::vector<std::pair<uint32_t, uint32_t>> FreeList() const {
        std::vector<std::pair<uint32_t, uint32_t>> list;
        for (uint32_t at = Header(FREE); at && list.size() < 100 && (list.empty() || at != Header(FREE)); at = Word(at + 4))
            list.emplace_back(at, Word(at + 12));
        return list;
    }
    std::vector<unsigned char> Bytes() const {
        auto* p = static_cast<const unsigned char*>(m_view);
        return {p, p + m_heap};
    }

    ScriptedShared m_shared{{SharedSuffix()}};
    void* m_view = nullptr;
    uint32_t base = 0;
};

TEST_F(SharedHeap, FormatOfTheHeaderAndOfBlocks) {
    const unsigned char sigBytes[] = {0x12, 0x34, 0x56, 0x78};
    EXPECT_EQ(std::memcmp(m_view, sigBytes, 4), 0) << "signature A is stored little-endian";
    uint32_t p = Alloc(100), b = p - 20;
    ASSERT_EQ(p, base + 52) << "MemSharedAlloc(100) in a fresh heap";
    const struct { uint32_t at, want; const char* what; } words[] = {
        {base, kSigA, "heap's signature A"}, {base + SIZE, m_heap, "heap's size"}, {base + BASE, base, "heap's base"},
        {base + NEXT, base + 160, "heap's next"}, {base + END, base + m_heap, "heap's end"}, {base + 28, kSigB, "heap's signature B"},
        {base + USED, b, "used list"}, {base + FREE, 0, "free list"}, {b, kSigA, "head signature A"},
        {b + 4, b, "next of a lone block"}, {b + 8, b, "prev of a lone block"}, {b + 12, 100, "size"},
        {b + 16, kSigB, "head signature B"}, {p + 100, kSigA, "tail signature A"}, {p + 104, kSigB, "tail signature B"},
    };
    for (const auto& w : words) EXPECT_EQ(Word(w.at), w.want) << w.what << " at base + " << w.at - base;
    EXPECT_EQ(MemSharedCheck(Ptr(p)), 1);
    // Lists insert at the head: the newest block first, the oldest last.
    uint32_t c = Alloc(10) - 20, d = Alloc(10) - 20;
    EXPECT_EQ(Header(USED), d) << "the newest block heads the used list";
    const struct { uint32_t block, next, prev; } links[] = {{d, c, b}, {c, b, d}, {b, d, c}};
    for (const auto& l : links) {
        EXPECT_EQ(Word(l.block + 4), l.next) << "next of block at base + " << l.block - base;
        EXPECT_EQ(Word(l.block + 8), l.prev) << "prev of block at base + " << l.block - base;
    }
}

// Blocks A, B, C (and D, kept in use, unless the row says not) of 100 bytes
// each, at base + 32 + 128 n, freed in the order given. A freed block merges
// with a free neighbour on either side; freeing the last block in use
// resets the heap.
TEST_F(SharedHeap, FreedBlocksMergeWithTheirNeighbours) {
    // freeList: from the head, block and payload
    const struct { const char* frees; bool keepD; std::vector<std::pair<char, uint32_t>> freeList; } rows[] = {
        {"BA", true, {{'A', 228}}},        {"AB", true, {{'A', 228}}},  {"CB", true, {{'B', 228}}},
        {"AC", true, {{'C', 100}, {'A', 100}}}, {"ACB", true, {{'A', 356}}}, {"CAB", true, {{'A', 356}}},
        {"B", false, {{'B', 100}}},        {"BAC", false, {}},           {"CAB", false, {}},
    };
    for (const auto& r : rows) {
        uint32_t payload[4] = {Alloc(100), Alloc(100), Alloc(100), r.keepD ? Alloc(100) : 0};
        for (const char* f = r.frees; *f; ++f) Free(payload[*f - 'A']);
        std::vector<std::pair<char, uint32_t>> got;
        for (auto& [at, size] : FreeList()) got.emplace_back(char('A' + (at - base - 32) / 128), size);
        EXPECT_EQ(got, r.freeList) << "free list after freeing " << r.frees;
        EXPECT_EQ(MemSharedCheckAll(), 1) << "after freeing " << r.frees;
        if (r.freeList.empty()) {
            EXPECT_EQ(Header(NEXT), base + 32) << "heap reset after freeing " << r.frees;
            EXPECT_EQ(Header(USED), 0u) << "used list after freeing " << r.frees;
        }
        ASSERT_EQ(MemSharedInitHeap(m_view, m_heap, 1), 1);
    }
}

// A free block of payload 100 and requests around it: taken whole, skipped
// for a remainder of 1 to 40, split beyond.
TEST_F(SharedHeap, FirstFitWithASplitThreshold) {
    // remainder: payload of the free block left after a split, 0 for none
    const struct { DWORD size; bool fromFree; uint32_t remainder; } cases[] = {{100, true, 0}, {99, false, 0}, {90, false, 0}, {60, false, 0}, {59, true, 13}, {1, true, 71}};
    for (const auto& c : cases) {
        uint32_t x = Alloc(100), keep = Alloc(1);
        auto* bytes = static_cast<unsigned char*>(Ptr(x));
        // The previous row left these bytes dirty before the heap reset.
        EXPECT_EQ(std::count(bytes, bytes + 100, 0), 100) << "a block taken from the end of a heap that was reset";
        std::memset(bytes, 0xAB, 100);
        Free(x);
        uint32_t end = Header(NEXT), got = Alloc(c.size);
        auto left = FreeList();
        std::string call = "MemSharedAlloc(" + std::to_string(c.size) + ") with a free block of 100";
        EXPECT_EQ(got, c.fromFree ? x : end + 20) << call;
        if (c.remainder) {
            ASSERT_EQ(left.size(), 1u) << call;
            EXPECT_EQ(left[0].first, x + c.size + 8) << "remainder of " << call;
            EXPECT_EQ(left[0].second, c.remainder) << "remainder of " << call;
        } else {
            EXPECT_EQ(left.size(), c.fromFree ? 0u : 1u) << call;
        }
        int dirty = 0;
        for (DWORD i = 0; i < c.size; ++i) dirty += static_cast<unsigned char*>(Ptr(got))[i] != 0;
        EXPECT_EQ(dirty, 0) << "bytes not zero after " << call;
        EXPECT_EQ(MemSharedCheckAll(), 1) << "after " << call;
        Free(got), Free(keep);
        ASSERT_EQ(Header(NEXT), base + 32) << "heap reset after " << call;
    }
}

TEST_F(SharedHeap, ARequestBeyondTheHeapChangesNothing) {
    Alloc(100);
    uint32_t room = Header(END) - Header(NEXT);
    auto before = Bytes();
    for (DWORD size : {room - 27, room, 0x7FFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFE4u}) {
        EXPECT_EQ(MemSharedAlloc(size), nullptr) << "MemSharedAlloc(" << size << ") with " << room << " bytes left";
        EXPECT_TRUE(Bytes() == before) << "the heap changed after MemSharedAlloc(" << size << ")";
    }
    EXPECT_EQ(Alloc(room - 28), base + 160 + 20) << "a request that fills the heap exactly";
    EXPECT_EQ(Header(NEXT), Header(END));
    EXPECT_EQ(MemSharedAlloc(0), nullptr) << "MemSharedAlloc(0) on a full heap";
}

TEST_F(SharedHeap, DamageIsFoundAndNothingIsFollowedOutOfTheHeap) {
    uint32_t a = Alloc(100), b = Alloc(100);
    auto* pa = static_cast<unsigned char*>(Ptr(a));
    EXPECT_EQ(MemSharedCheck(nullptr), 1);
    for (int at : {-20, -4, 100, 107}) { // each signature word of the block, one bit of it
        pa[at] ^= 1;
        EXPECT_EQ(MemSharedCheck(pa), 0) << "a block with byte " << at << " of its payload changed";
        EXPECT_EQ(MemSharedCheckAll(), 0) << "a block with byte " << at << " of its payload changed";
        pa[at] ^= 1;
    }
    EXPECT_EQ(MemSharedCheckAll(), 1);
    // A link pointing outside the heap: the calls that follow it fail and give the mutex back.
    Free(b);
    std::memcpy(Ptr(b - 20 + 4), "\x00\x00\x00\x10", 4);
    EXPECT_EQ(MemSharedAlloc(500), nullptr) << "MemSharedAlloc over a broken free list";
    EXPECT_EQ(MemSharedCheckAll(), 0) << "MemSharedCheckAll over a broken free list";
    EXPECT_EQ(m_shared.Levels(), 0) << "mutex held after a damaged list";
}

TEST_F(SharedHeap, BadFreesChangeNothing) {
    uint32_t a = Alloc(100), b = Alloc(100), c = Alloc(100);
    Alloc(100);
    Free(a), Free(c); // the free list: c, then a
    auto before = Bytes();
    const struct { const char* what; uintptr_t payload; } cases[] = {{"the free list's head freed twice", c}, {"its second block freed twice", a},
                 {"the middle of a payload", b + 8}, {"null", 0}, {"the heap's header", base + 20}, {"beyond the heap", base + 4000}, {"above 4 GB", uintptr_t(-1) - 15}};
    for (const auto& r : cases) {
        MemSharedFree(reinterpret_cast<void*>(r.payload));
        EXPECT_TRUE(Bytes() == before) << "MemSharedFree of " << r.what << " changed the heap";
    }
    EXPECT_EQ(MemSharedCheckAll(), 1);
}

TEST_F(SharedHeap, InitChecksAnExistingHeap) {
    Alloc(100);
    // damage: the byte of the header changed, -1 none
    const struct { int damage; DWORD size; int initialise, result; } rows[] = {{-1, m_heap, 0, 1}, {-1, m_heap - 1, 0, 0}, {-1, m_heap + 1, 0, 0}, {31, m_heap, 0, 0}, {3, m_heap, 0, 0}, {31, m_heap, 1, 1}};
    for (const auto& r : rows) {
        if (r.damage >= 0) static_cast<unsigned char*>(m_view)[r.damage] ^= 0xFF;
        std::string call = "MemSharedInitHeap(view, " + std::to_string(r.size) + ", " + std::to_string(r.initialise) + ") with byte " +
                           std::to_string(r.damage) + " of the header changed";
        EXPECT_EQ(MemSharedInitHeap(m_view, r.size, r.initialise), r.result) << call;
        EXPECT_EQ(gMemState.lpHeap, m_view) << "the heap stays set after " << call;
        EXPECT_EQ(MemSharedCheckAll(), r.damage < 0 || r.initialise ? 1 : 0) << "after " << call;
        if (r.damage >= 0 && !r.initialise) static_cast<unsigned char*>(m_view)[r.damage] ^= 0xFF;
    }
    EXPECT_EQ(Header(NEXT), base + 32) << "formatting again";
    LONG created = 7;
    EXPECT_EQ(MemSharedInit(&created, kView), m_view) << "a second MemSharedInit in the process";
    EXPECT_EQ(created, 0);
}

// The waits and their results, scripted: what MemAcquireMutex makes of each
// result, how many levels the caller is left holding, and the time limits.
TEST(SharedMutex, WaitResults) {
    const struct { std::vector<DWORD> waits; int result, levels; std::vector<DWORD> limits; } cases[] = {
        {{WAIT_OBJECT_0}, 1, 1, {20000}},
        {{WAIT_ABANDONED, WAIT_OBJECT_0}, 1, 1, {20000, 10000}},
        {{WAIT_ABANDONED, WAIT_TIMEOUT}, 0, 0, {20000, 10000}},
        {{WAIT_TIMEOUT}, 0, 0, {20000}},
        {{WAIT_FAILED}, 0, 0, {20000}},
    };
    for (const auto& c : cases) {
        ScriptedShared shared({SharedSuffix(), false, false, false, false, c.waits});
        int got = MemAcquireMutex();
        std::string what = "MemAcquireMutex with " + std::to_string(c.waits.size()) + " waits ending in " + std::to_string(c.waits.back());
        EXPECT_EQ(got, c.result) << what;
        EXPECT_EQ(shared.Levels(), c.levels) << "levels held, " << what;
        EXPECT_EQ(shared.WaitLimits(), c.limits) << what;
        EXPECT_EQ(got ? MemReleaseMutex() : 1, 1) << "MemReleaseMutex after " << what;
        while (shared.Levels() > 0) gOsl.shared->ReleaseMutex(gMemState.hMutex);
    }
    // A sound heap is still not read, nor the caller's own level given back,
    // when the wait for the mutex fails.
    {
        ScriptedShared shared({SharedSuffix()});
        LONG created = -7;
        ASSERT_EQ(MemSharedInitHeap(MemSharedInit(&created, 0x10000), 1000, 1), 1);
    }
    ScriptedShared shared({SharedSuffix(), false, false, false, false, {WAIT_OBJECT_0, WAIT_TIMEOUT}});
    ASSERT_EQ(MemAcquireMutex(), 1);
    EXPECT_EQ(MemSharedCheckAll(), 0) << "MemSharedCheckAll when the wait for the mutex times out";
    EXPECT_EQ(shared.Levels(), 1) << "the caller's level after MemSharedCheckAll could not wait";
    EXPECT_EQ(MemReleaseMutex(), 1);
    EXPECT_EQ(MemSharedCheckAll(), 1) << "MemSharedCheckAll once the mutex can be had";
    MemSharedTerminate();
    EXPECT_EQ(shared.Levels(), 0);
}

// A failure of each object underneath: the results, *created, and no mutex
// level kept. The mutex is made afresh for each case; failAlloc fails the
// heap from that allocation on (the security descriptors).
TEST(SharedMutex, FailuresUnderneath) {
    using Script = ScriptedShared::Script;
    // objects: made; openObjects: of them, with security that lets every user in
    const struct { const char* what; Script script; int failAlloc, acquire; bool view; LONG created; int objects, openObjects; } cases[] = {
        {"nothing failing", {SharedSuffix()}, 0, 1, true, 1, 2, 2},
        {"no mutex", {SharedSuffix(), false, true}, 0, 0, false, -7, 0, 0},
        {"no mapping", {SharedSuffix(), false, false, true}, 0, 1, false, -7, 1, 1},
        {"a release that fails", {SharedSuffix(), false, false, false, true}, 0, 1, false, 1, 2, 2},
        {"no security descriptor", {SharedSuffix(), true}, 0, 1, true, 1, 2, 0},
        {"no memory for the descriptor", {SharedSuffix()}, 1, 1, true, 1, 2, 0},
    };
    for (const auto& c : cases) {
        ForgetMutex();
        ScriptedHeap heap(c.failAlloc);
        ScriptedShared shared(c.script);
        EXPECT_EQ(MemAcquireMutex(), c.acquire) << c.what;
        if (c.acquire) MemReleaseMutex();
        LONG created = -7;
        EXPECT_EQ(MemSharedInit(&created, 0x10000) != nullptr, c.view) << "MemSharedInit with " << c.what;
        EXPECT_EQ(created, c.created) << "created flag with " << c.what;
        EXPECT_EQ(shared.Created(), c.objects) << "objects made with " << c.what;
        EXPECT_EQ(shared.OpenSecurity(), c.openObjects) << "objects open to all with " << c.what;
        EXPECT_EQ(shared.Levels(), 0) << "levels held with " << c.what;
        EXPECT_EQ(shared.WaitLimits().size(), c.acquire ? 2u : 0u) << "waits (MemAcquireMutex, MemSharedInit) with " << c.what;
        EXPECT_EQ(MemReleaseMutex(), 0) << "nothing left to release with " << c.what;
        MemSharedTerminate();
        EXPECT_EQ(gMemState.hMapping, nullptr) << c.what;
        EXPECT_EQ(gMemState.lpView, nullptr) << c.what;
        EXPECT_EQ(heap.Outstanding(), 0) << "security descriptors not given back with " << c.what;
    }
    ForgetMutex();
}

// One address per platform, and a block that can't be had there is refused
// and closed, leaving *created as it was.
TEST(SharedBlock, MappedAtTheOneAddressOfThePlatform) {
    ScriptedShared shared({SharedSuffix()});
    const struct { DWORD platform; uintptr_t at; } cases[] = {
        {VER_PLATFORM_WIN32_NT, 0x40000000},
#ifndef OXL_ASAN
        {1, 0xA0000000},
#endif
    };
    for (const auto& c : cases) {
        ScriptedSystem system(0x409, 0x409, c.platform);
        LONG created = 0;
        EXPECT_EQ(MemSharedInit(&created, 0x10000), reinterpret_cast<void*>(c.at)) << "platform " << c.platform;
        EXPECT_EQ(created, 1) << "platform " << c.platform;
        MemSharedTerminate();
        ASSERT_TRUE(ReserveAddress(reinterpret_cast<void*>(c.at), 0x10000)) << "reserving 0x" << std::hex << c.at;
        created = -7;
        EXPECT_EQ(MemSharedInit(&created, 0x10000), nullptr) << "with 0x" << std::hex << c.at << " taken";
        EXPECT_EQ(created, -7);
        EXPECT_EQ(gMemState.hMapping, nullptr) << "the refused block is closed";
        ReleaseAddress(reinterpret_cast<void*>(c.at), 0x10000);
        EXPECT_NE(MemSharedInit(&created, 0x10000), nullptr) << "once 0x" << std::hex << c.at << " is free again";
        EXPECT_EQ(created, 1) << "the refused block went when it was closed";
        MemSharedTerminate();
    }
    EXPECT_EQ(shared.Levels(), 0);
}

// Another process opens the block this process formatted, takes the mutex
// and ends without giving it back; this process then takes the abandoned
// mutex over.
TEST_F(SharedHeap, AMutexLeftByAnEndedProcessIsTakenOver) {
    std::string child = Beside("oxl_shm_child") + " " + SharedSuffix() + " " + std::to_string(kView) + " " + std::to_string(m_heap);
    ASSERT_EQ(std::system(child.c_str()), 0) << child;
    EXPECT_EQ(MemAcquireMutex(), 1) << "after the holder ended";
    const auto& limits = m_shared.WaitLimits();
    ASSERT_GE(limits.size(), 2u);
    EXPECT_EQ(limits[limits.size() - 2], 20000u) << "the wait that found the mutex abandoned";
    EXPECT_EQ(limits.back(), 10000u) << "the second wait";
    EXPECT_EQ(MemSharedCheckAll(), 1);
    EXPECT_EQ(MemReleaseMutex(), 1);
}

} // namespace
