// Critical regions: depth counting, and taking a region apart and together
// again while another thread gets in between.
#include "core/crsect.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <thread>

namespace {

using namespace std::chrono_literals;

class CRSectTest : public testing::Test {
protected:
    CRSect region;
    CR_SECT* r = region.Get();
};

TEST_F(CRSectTest, LockCountIsTheOwnersDepth) {
    for (int depth : {0, 1, 3}) {
        for (int i = 0; i < depth; ++i) region.Lock();
        EXPECT_EQ(CR_LockCount(r), depth) << "CR_LockCount at depth " << depth;
        for (int i = 0; i < depth; ++i) region.Unlock();
    }
}

TEST_F(CRSectTest, UnwindWithNothingHeldChangesNothing) {
    EXPECT_EQ(CR_Unwind(r), 0) << "CR_Unwind by a thread that holds nothing";
    EXPECT_EQ(r->lockCount, 0);
    EXPECT_EQ(CR_LockCount(r), 0);
}

TEST_F(CRSectTest, UnwindIgnoresNullAndAllOnes) {
    EXPECT_EQ(CR_Unwind(nullptr), 0);
    EXPECT_EQ(CR_Unwind(reinterpret_cast<CR_SECT*>(UINTPTR_MAX)), 0);
}

TEST_F(CRSectTest, RewindWithNoDepthChangesNothing) {
    for (long depth : {0L, -1L, -100L}) {
        CR_Rewind(r, depth);
        EXPECT_EQ(r->lockCount, 0) << "CR_Rewind(" << depth << ")";
    }
}

TEST_F(CRSectTest, UnwindLetsAnotherThreadInAndRewindRestoresTheDepth) {
    for (int i = 0; i < 3; ++i) region.Lock();
    long depth = CR_Unwind(r);
    EXPECT_EQ(depth, 3) << "CR_Unwind at depth 3";
    EXPECT_EQ(r->lockCount, 0);

    long seenByOther = -1;
    std::thread other([&] {
        region.Lock();
        seenByOther = r->lockCount;
        region.Unlock();
    });
    other.join(); // would hang if the region were still held
    EXPECT_EQ(seenByOther, 1);

    CR_Rewind(r, depth);
    EXPECT_EQ(r->lockCount, 3) << "after CR_Rewind(3)";
    EXPECT_EQ(CR_LockCount(r), 3);
    for (int i = 0; i < 3; ++i) region.Unlock();
    EXPECT_EQ(r->lockCount, 0);
}

TEST_F(CRSectTest, LockCountFromAnotherThreadWaitsForTheOwner) {
    region.Lock();
    region.Lock();
    std::atomic<bool> released{false};
    std::atomic<long> seen{-1};
    std::atomic<bool> readBeforeRelease{false};
    std::thread other([&] {
        long n = CR_LockCount(r);
        readBeforeRelease = !released;
        seen = n;
    });
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(seen, -1) << "CR_LockCount returned while another thread held the region";
    released = true;
    region.Unlock();
    region.Unlock();
    other.join();
    EXPECT_FALSE(readBeforeRelease);
    EXPECT_EQ(seen, 0);
}

TEST_F(CRSectTest, GuardLetsGoOnEveryWayOut) {
    try {
        CRSectGuard hold(region);
        CRSectGuard again(r);
        EXPECT_EQ(r->lockCount, 2);
        throw std::runtime_error("way out");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(r->lockCount, 0);
    { CRSectGuard none(static_cast<CR_SECT*>(nullptr)); }
    std::thread other([&] { CRSectGuard hold(region); });
    other.join();
}

TEST(CRMainSect, PointerAndObjectAreTheExportedRegion) {
    EXPECT_EQ(gpCRSECTMain, gCRMainSect.Get());
    EXPECT_EQ(CR_LockCount(gpCRSECTMain), 0);
}

} // namespace
