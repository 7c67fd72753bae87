// The heap: the null and zero cases, and the main region around every heap
// call.
#include <oxlrt31/mem.h>
#include "core/crsect.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

DWORD nonZero(const unsigned char* p, DWORD from, DWORD to) {
    DWORD n = 0;
    for (DWORD i = from; i < to; ++i) n += p[i] != 0;
    return n;
}

// Null and zero arguments: what comes back, and how many blocks the heap
// saw made and freed on the way.
TEST(Mem, NullAndZeroArguments) {
    const struct { const char* call; std::function<void*()> run; bool gives; int heapAttempts, frees; } rows[] = {
        {"MemAlloc(0)", [] { return MemAlloc(0); }, false, 0, 0},
        {"MemRealloc(null, 0)", [] { return MemRealloc(nullptr, 0); }, false, 0, 0},
        {"MemRealloc(null, 16)", [] { return MemRealloc(nullptr, 16); }, true, 1, 0},
        {"MemRealloc(block, 0)", [] { return MemRealloc(MemAlloc(8), 0); }, false, 1, 1},
        {"MemFree(null)", [] { return MemFree(nullptr), nullptr; }, false, 0, 0},
        {"MemSize(null)", [] { return reinterpret_cast<void*>(uintptr_t(MemSize(nullptr))); }, false, 0, 0},
    };
    for (const auto& r : rows) {
        ScriptedHeap heap;
        void* got = r.run();
        EXPECT_EQ(got != nullptr, r.gives) << r.call << " gave " << got;
        EXPECT_EQ(heap.Attempts(), r.heapAttempts) << r.call << ": allocations tried";
        EXPECT_EQ(heap.Frees(), r.frees) << r.call << ": blocks freed";
        if (got) {
            EXPECT_EQ(MemSize(got), 16u) << r.call;
            EXPECT_EQ(nonZero(static_cast<unsigned char*>(got), 0, 16), 0u) << r.call;
            MemFree(got);
        }
        EXPECT_EQ(heap.Outstanding(), 0) << r.call << " leaves a block";
    }
}

// Each heap call is made holding the main region one level deeper than the
// caller did, and with no region at all while gpCRSECTMain is null (in a
// static initialiser or finaliser).
TEST(Mem, HeapCallsRunUnderTheMainRegion) {
    // call: each ends in the call named; what it gives back is freed afterwards
    const struct { const char* call; void* (*run)(); } calls[] = {
        {"MemAlloc", [] { return MemAlloc(8); }},
        {"MemRealloc", [] { return MemRealloc(MemAlloc(8), 24); }},
        {"MemSize", [] { void* p = MemAlloc(8); return MemSize(p), p; }},
        {"MemFree", [] { return MemFree(MemAlloc(8)), static_cast<void*>(nullptr); }},
    };
    CR_SECT* main = gpCRSECTMain;
    ASSERT_NE(main, nullptr);
    for (const auto& c : calls) {
        for (long held : {0L, 2L, -1L}) {
            CR_Rewind(main, held);
            if (held < 0) gpCRSECTMain = nullptr;
            {
                ScriptedHeap heap;
                void* left = c.run();
                EXPECT_EQ(heap.LastDepth(), held < 0 ? -1 : held + 1) << c.call << " with the main region held " << held << " deep";
                MemFree(left);
                EXPECT_EQ(heap.Outstanding(), 0) << c.call;
            }
            gpCRSECTMain = main;
            EXPECT_EQ(CR_Unwind(main), held < 0 ? 0 : held) << c.call << " left the main region at another depth";
        }
    }
}

} // namespace
