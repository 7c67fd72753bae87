// Per-thread items with real threads: who destroys what, when, on which
// thread, and what is left of the thread map afterwards.
#include "core/tls.h"
#include "core/libstate.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Every destructor call: which value, on which thread.
std::mutex gLogLock;
std::vector<std::pair<void*, std::thread::id>> gLog;
size_t logged() { return gLog.size(); } // read once the threads that log are done
void OXLCALLBACK logDestroy(void* value) {
    std::lock_guard<std::mutex> g(gLogLock);
    gLog.emplace_back(value, std::this_thread::get_id());
}
void* item(int n) { return reinterpret_cast<void*>(static_cast<uintptr_t>(0x1000 + n)); }

// Runs f on a thread of its own that ends as the thread-exit notification ends it.
template <class F>
void onNewThread(F f) {
    std::thread([&] { f(), TLS_FreeAll(); }).join();
}

class TLSTest : public testing::Test {
protected:
    void SetUp() override {
        gLog.clear();
        ASSERT_GE(index = TLS_AllocIndex(), 100);
    }
    void TearDown() override { TLS_FreeIndex(index), TLS_FreeAll(); }
    int index = -1;
};

TEST(TLSAllocIndex, HandsOutTheLowestFreeNumberUntilAllHundredAreTaken) {
    // The library's static objects took 100, 101 and 102 at load, in that order.
    EXPECT_EQ((std::vector<int>{gTLSNumPicSlot.Index(), gTLSFmtSlot.Index(), gTLSPrintSlot.Index()}), (std::vector<int>{100, 101, 102}));
    std::vector<int> taken;
    for (int n; (n = TLS_AllocIndex()) != -1;) taken.push_back(n);
    ASSERT_EQ(taken.size(), 97u) << "slots handed out before TLS_AllocIndex gave -1";
    EXPECT_EQ(taken.front(), 103);
    EXPECT_EQ(taken.back(), 199);
    TLS_FreeIndex(150), TLS_FreeIndex(120);
    EXPECT_EQ(TLS_AllocIndex(), 120) << "the lowest free number comes back first";
    EXPECT_EQ(TLS_AllocIndex(), 150);
    for (int outside : {42, 0, 99, -1, 200}) {
        TLS_FreeIndex(outside); // below 100 or outside the table: no slot is given back
        EXPECT_EQ(TLS_AllocIndex(), -1) << "TLS_AllocIndex after TLS_FreeIndex(" << outside << ") with all 100 taken";
    }
    for (int n : taken) TLS_FreeIndex(n);
    EXPECT_EQ(TLS_AllocIndex(), 103);
    TLS_FreeIndex(103);
}

// The block has 200 entries, 0 to 199; a number outside them stores nothing,
// reads as no item and never reaches the neighbouring memory.
TEST_F(TLSTest, IndexesOutsideTheBlockStoreNothing) {
    const struct { int index; bool stored; } rows[] = {{-1, false}, {0, true}, {99, true}, {100, true}, {199, true}, {200, false}, {201, false}, {-200, false}};
    onNewThread([&] {
        for (const auto& r : rows) {
            TLS_SetItem(r.index, item(r.index), logDestroy);
            EXPECT_EQ(TLS_GetItem(r.index), r.stored ? item(r.index) : nullptr) << "TLS_GetItem(" << r.index << ") after TLS_SetItem";
        }
        for (int outside : {-1, 200, 201}) TLS_FreeIndex(outside); // reaches no entry of any thread
        for (const auto& r : rows) TLS_SetItem(r.index, item(r.index), logDestroy); // destroys only what was stored
        EXPECT_EQ(logged(), 4u) << "destructors run by storing again at every index";
        for (const auto& r : rows) TLS_Free(r.index);
        EXPECT_EQ(logged(), 8u) << "destructors run by TLS_Free at every index";
        for (const auto& r : rows) EXPECT_EQ(TLS_GetItem(r.index), nullptr) << "TLS_GetItem(" << r.index << ") after TLS_Free";
        for (const auto& r : rows) TLS_SetItem(r.index, item(r.index), logDestroy); // for TLS_FreeAll at the thread's end
    });
    EXPECT_EQ(logged(), 12u) << "TLS_FreeAll destroys every item stored, that of slot 0 too";
    for (const auto& call : gLog) EXPECT_LT(reinterpret_cast<uintptr_t>(call.first) - 0x1000, 200u) << "destructor of an item outside 0 to 199";
}

TEST_F(TLSTest, ThreadMapCountsThreadsWithABlockAndEmptiesWhenTheyGo) {
    int before = TLSpThreadCount(), afterGet = -1, afterFree = -1;
    void* got = item(0);
    onNewThread([&] { got = TLS_GetItem(index), afterGet = TLSpThreadCount(); });
    std::thread([&] { TLS_Free(index), afterFree = TLSpThreadCount(); }).join();
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(afterGet, before + 1) << "threads in the map during TLS_GetItem's thread";
    EXPECT_EQ(afterFree, before) << "TLS_Free on a thread without a block";
    TLS_FreeAll();
    ScriptedHeap heap;
    std::vector<std::thread> threads;
    for (int i = 0; i < 25; ++i) // more threads than one node block holds
        threads.emplace_back([&] { TLS_SetItem(index, item(1), nullptr), TLS_FreeAll(); });
    for (auto& t : threads) t.join();
    EXPECT_EQ(TLSpThreadCount(), 0) << "threads in the map once all have gone";
    EXPECT_FALSE(TLSpMapHoldsMemory()) << "the map once all threads have gone";
    EXPECT_EQ(heap.Outstanding(), 0) << "blocks, buckets and nodes given back";
}

// Spins until `count` reaches `n`. Not std::barrier: the mingw-w64 libstdc++
// (GCC 12) waits on atomics without a platform wait and can lose a
// notification, so a barrier under Wine sometimes never opens.
void meet(std::atomic<int>& count, int n) {
    for (++count; count < n;) std::this_thread::yield();
}

TEST_F(TLSTest, FreeIndexReachesEveryThreadOnTheCallingThread) {
    constexpr int kThreads = 4;
    std::atomic<int> stored{0}, freed{0};
    std::atomic<int> emptyAfter{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            TLS_SetItem(index, item(i), logDestroy);
            TLS_SetItem(3, item(100 + i), logDestroy); // below 100: cleared all the same
            meet(stored, kThreads + 1);
            meet(freed, kThreads + 1);
            emptyAfter += TLS_GetItem(index) == nullptr && TLS_GetItem(3) == nullptr;
            TLS_FreeAll();
        });
    }
    meet(stored, kThreads + 1);
    TLS_FreeIndex(index), TLS_FreeIndex(3);
    EXPECT_EQ(logged(), size_t(2 * kThreads));
    for (auto& call : gLog) EXPECT_EQ(call.second, std::this_thread::get_id()) << "a destructor ran on its item's thread";
    meet(freed, kThreads + 1);
    for (auto& t : threads) t.join();
    EXPECT_EQ(emptyAfter, kThreads);
    EXPECT_EQ(logged(), size_t(2 * kThreads)) << "a destructor ran twice";
    EXPECT_EQ(TLS_AllocIndex(), index) << "TLS_FreeIndex gave the number back";
}

struct Counted {
    static inline std::atomic<int> alive{0};
    Counted() { ++alive; }
    ~Counted() { --alive; }
};

// Allocation failures at each point of making a thread's block: the block
// (1st allocation), the map's buckets (2nd) and its first node block (3rd).
TEST_F(TLSTest, ThreadWithoutMemoryHasNoItemsAndLosesNothing) {
    TLSSlot slot;
    TLSItem<Counted> counted(slot);
    for (int failAt = 1; failAt <= 3; ++failAt) {
        TLS_FreeAll();
        int threadsBefore = TLSpThreadCount();
        ASSERT_TRUE(threadsBefore || !TLSpMapHoldsMemory());
        gLog.clear();
        {
            ScriptedHeap heap(threadsBefore == 0 ? failAt : 1);
            TLS_SetItem(index, item(1), logDestroy);
            EXPECT_EQ(TLS_GetItem(index), nullptr) << "allocation " << failAt << " failed";
            EXPECT_EQ(counted.Get(), nullptr) << "allocation " << failAt << " failed";
            EXPECT_EQ(heap.Outstanding(), 0) << "allocation " << failAt << " failed";
        }
        EXPECT_EQ(logged(), 0u) << "a value that could not be stored is not destroyed";
        EXPECT_EQ(Counted::alive, 0);
        EXPECT_EQ(TLSpThreadCount(), threadsBefore);
    }
    ASSERT_NE(counted.Get(), nullptr) << "memory is back";
}

} // namespace
