// The heap: sizes, zero fill, the null and zero cases, failures, and the
// main region around every heap call.
#include <oxlrt31/mem.h>
#include "core/crsect.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

namespace {

bool allZero(const void* p, size_t n) {
    const auto* b = static_cast<const unsigned char*>(p);
    for (size_t i = 0; i < n; ++i)
        if (b[i]) return false;
    return true;
}

TEST(MemAlloc, GivesZeroedBlocksOfTheSizeAsked) {
    for (DWORD size : {1u, 16u, 4096u, 100000u}) {
        // Dirty a block of the same size first, so a reused one would show.
        void* dirty = MemAlloc(size);
        ASSERT_NE(dirty, nullptr) << "MemAlloc(" << size << ")";
        std::memset(dirty, 0xAB, size);
        MemFree(dirty);
        void* p = MemAlloc(size);
        ASSERT_NE(p, nullptr) << "MemAlloc(" << size << ")";
        EXPECT_EQ(MemSize(p), size) << "MemSize after MemAlloc(" << size << ")";
        EXPECT_TRUE(allZero(p, size)) << "MemAlloc(" << size << ") is not zero-filled";
        MemFree(p);
    }
}

TEST(MemRealloc, KeepsTheOldBytesAndZeroFillsTheNew) {
    const struct {
        DWORD from, to;
    } cases[] = {{16, 64}, {64, 16}, {1, 100000}, {100, 100}};
    for (const auto& c : cases) {
        auto* p = static_cast<unsigned char*>(MemAlloc(c.from));
        ASSERT_NE(p, nullptr);
        for (DWORD i = 0; i < c.from; ++i) p[i] = static_cast<unsigned char>(i % 251 + 1);
        auto* q = static_cast<unsigned char*>(MemRealloc(p, c.to));
        ASSERT_NE(q, nullptr) << "MemRealloc(" << c.from << " bytes, " << c.to << ")";
        EXPECT_EQ(MemSize(q), c.to) << "MemRealloc(" << c.from << " bytes, " << c.to << ")";
        DWORD kept = c.from < c.to ? c.from : c.to, wrong = 0;
        for (DWORD i = 0; i < kept; ++i) wrong += q[i] != i % 251 + 1;
        EXPECT_EQ(wrong, 0u) << "old bytes changed by MemRealloc(" << c.from << " bytes, " << c.to << ")";
        EXPECT_TRUE(allZero(q + kept, c.to - kept)) << "new bytes of MemRealloc(" << c.from << ", " << c.to << ")";
        MemFree(q);
    }
}

// Null and zero arguments: what comes back, and how many blocks the heap
// saw made and freed on the way.
TEST(Mem, NullAndZeroArguments) {
    struct Row {
        const char* call;
        std::function<void*()> run;
        bool gives;
        int heapAttempts, frees;
    };
    const Row rows[] = {
        {"MemAlloc(0)", [] { return MemAlloc(0); }, false, 0, 0},
        {"MemRealloc(null, 0)", [] { return MemRealloc(nullptr, 0); }, false, 0, 0},
        {"MemRealloc(null, 16)", [] { return MemRealloc(nullptr, 16); }, true, 1, 0},
        {"MemRealloc(block, 0)", [] { return MemRealloc(MemAlloc(8), 0); }, false, 1, 1},
        {"MemFree(null)", [] { MemFree(nullptr); return nullptr; }, false, 0, 0},
        {"MemSize(null)", [] { return reinterpret_cast<void*>(uintptr_t(MemSize(nullptr))); }, false, 0, 0},
    };
    for (const Row& r : rows) {
        ScriptedHeap heap;
        void* got = r.run();
        EXPECT_EQ(got != nullptr, r.gives) << r.call << " gave " << got;
        EXPECT_EQ(heap.Attempts(), r.heapAttempts) << r.call << ": allocations tried";
        EXPECT_EQ(heap.Frees(), r.frees) << r.call << ": blocks freed";
        if (got) {
            EXPECT_EQ(MemSize(got), 16u) << r.call;
            EXPECT_TRUE(allZero(got, 16)) << r.call;
            MemFree(got);
        }
        EXPECT_EQ(heap.Outstanding(), 0) << r.call << " leaves a block";
    }
}

TEST(Mem, AnExhaustedHeapGivesNullAndLosesNothing) {
    void* keep = MemAlloc(16);
    ASSERT_NE(keep, nullptr);
    std::memset(keep, 0x5A, 16);
    {
        ScriptedHeap heap(1);
        EXPECT_EQ(MemAlloc(32), nullptr) << "MemAlloc(32) on an exhausted heap";
        EXPECT_EQ(MemRealloc(nullptr, 32), nullptr) << "MemRealloc(null, 32) on an exhausted heap";
        EXPECT_EQ(MemRealloc(keep, 4096), nullptr) << "MemRealloc(block, 4096) on an exhausted heap";
        EXPECT_EQ(heap.Attempts(), 3);
        EXPECT_EQ(heap.Outstanding(), 0);
    }
    EXPECT_EQ(MemSize(keep), 16u) << "the block a failed MemRealloc was given";
    EXPECT_EQ(static_cast<unsigned char*>(keep)[15], 0x5A);
    MemFree(keep);
}

// Each heap call is made holding the main region one level deeper than the
// caller did, and with no region at all while gpCRSECTMain is null.
TEST(Mem, HeapCallsRunUnderTheMainRegion) {
    // Each ends in the call named; what it gives back is freed afterwards.
    const struct {
        const char* call;
        void* (*run)();
    } calls[] = {
        {"MemAlloc", [] { return MemAlloc(8); }},
        {"MemRealloc", [] { return MemRealloc(MemAlloc(8), 24); }},
        {"MemSize", [] { void* p = MemAlloc(8); MemSize(p); return p; }},
        {"MemFree", [] { MemFree(MemAlloc(8)); return static_cast<void*>(nullptr); }},
    };
    CR_SECT* main = gpCRSECTMain;
    ASSERT_NE(main, nullptr);
    for (const auto& c : calls) {
        for (long held : {0L, 2L}) {
            CR_Rewind(main, held);
            {
                ScriptedHeap heap;
                void* left = c.run();
                EXPECT_EQ(heap.LastDepth(), held + 1) << c.call << " with the main region held " << held << " deep";
                MemFree(left);
            }
            EXPECT_EQ(CR_Unwind(main), held) << c.call << " left the main region at another depth";
        }
        gpCRSECTMain = nullptr; // as in a static initialiser or finaliser
        {
            ScriptedHeap heap;
            void* left = c.run();
            EXPECT_EQ(heap.LastDepth(), -1) << c.call << " without the main region";
            MemFree(left);
            EXPECT_EQ(heap.Outstanding(), 0) << c.call << " without the main region";
        }
        gpCRSECTMain = main;
    }
}

} // namespace
