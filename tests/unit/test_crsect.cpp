// Critical regions: depth counting, and taking a region apart and together
// again while another thread gets in between.
#include "core/crsect.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <thread>

namespace {

TEST(CRSect, UnwindAndRewindByDepth) {
    // depth held, what CR_Unwind gives, the depth CR_Rewind is given, the depth after it
    const struct { int held; long rewind, after; } rows[] = {{0, 0, 0}, {1, 1, 1}, {3, 3, 3}, {0, -1, 0}, {0, -100, 0}, {2, 5, 5}};
    for (const auto& r : rows) {
        CRSect region;
        CR_SECT* p = region.Get();
        for (int i = 0; i < r.held; ++i) region.Lock();
        EXPECT_EQ(CR_LockCount(p), r.held) << "CR_LockCount at depth " << r.held;
        EXPECT_EQ(CR_Unwind(p), r.held) << "CR_Unwind at depth " << r.held;
        EXPECT_EQ(p->lockCount, 0) << "after CR_Unwind at depth " << r.held;
        long seenByOther = -1;
        std::thread([&] { CRSectGuard hold(region), again(p); seenByOther = p->lockCount; }).join(); // hangs if still held
        EXPECT_EQ(seenByOther, 2) << "another thread after CR_Unwind at depth " << r.held;
        CR_Rewind(p, r.rewind);
        EXPECT_EQ(p->lockCount, r.after) << "CR_Rewind(" << r.rewind << ")";
        EXPECT_EQ(CR_LockCount(p), r.after) << "CR_Rewind(" << r.rewind << ")";
        for (long i = 0; i < r.after; ++i) region.Unlock();
    }
    EXPECT_EQ(CR_Unwind(nullptr), 0);
    EXPECT_EQ(CR_Unwind(reinterpret_cast<CR_SECT*>(UINTPTR_MAX)), 0);
}

} // namespace
