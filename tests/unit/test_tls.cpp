// Per-thread items with real threads: who destroys what, when, on which
// thread, and what is left of the thread map afterwards.
#include "core/tls.h"
#include "core/libstate.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Records every destructor call: which value, on which thread.
struct DestructorLog {
    std::mutex lock;
    std::vector<std::pair<void*, std::thread::id>> calls;
    void clear() {
        std::lock_guard<std::mutex> g(lock);
        calls.clear();
    }
    size_t count() {
        std::lock_guard<std::mutex> g(lock);
        return calls.size();
    }
} gLog;

void OXLCALLBACK logDestroy(void* value) {
    std::lock_guard<std::mutex> g(gLog.lock);
    gLog.calls.emplace_back(value, std::this_thread::get_id());
}

void* item(int n) { return reinterpret_cast<void*>(static_cast<uintptr_t>(0x1000 + n)); }

// A one-use meeting point for n threads. Not std::barrier: the mingw-w64
// libstdc++ (GCC 12) waits on atomics without a platform wait, and a
// notification can be lost there, so a barrier under Wine sometimes never opens.
class Meeting {
public:
    explicit Meeting(int n) : m_left(n) {}
    void arrive_and_wait() {
        std::unique_lock<std::mutex> g(m_lock);
        if (--m_left == 0) m_open.notify_all();
        m_open.wait(g, [&] { return m_left <= 0; });
    }

private:
    std::mutex m_lock;
    std::condition_variable m_open;
    int m_left;
};

template <class F>
void onNewThread(F f) {
    std::thread t([&] {
        f();
        TLS_FreeAll(); // what the thread-exit notification does
    });
    t.join();
}

class TLSTest : public testing::Test {
protected:
    void SetUp() override {
        gLog.clear();
        index = TLS_AllocIndex();
        ASSERT_GE(index, 100);
    }
    void TearDown() override {
        TLS_FreeIndex(index);
        TLS_FreeAll();
    }
    int index = -1;
};

TEST(TLSAllocIndex, HandsOutTheLowestFreeNumberUntilAllHundredAreTaken) {
    std::vector<int> taken;
    for (int n; (n = TLS_AllocIndex()) != -1;) taken.push_back(n);
    // The library's static objects hold 100, 101 and 102.
    ASSERT_EQ(taken.size(), 97u) << "slots handed out before TLS_AllocIndex gave -1";
    EXPECT_EQ(taken.front(), 103);
    EXPECT_EQ(taken.back(), 199);
    EXPECT_EQ(TLS_AllocIndex(), -1) << "TLS_AllocIndex with all 100 taken";
    TLS_FreeIndex(150);
    TLS_FreeIndex(120);
    EXPECT_EQ(TLS_AllocIndex(), 120) << "the lowest free number comes back first";
    EXPECT_EQ(TLS_AllocIndex(), 150);
    TLS_FreeIndex(42); // below 100: no slot table entry changes
    EXPECT_EQ(TLS_AllocIndex(), -1);
    for (int n : taken) TLS_FreeIndex(n);
    EXPECT_EQ(TLS_AllocIndex(), 103);
    TLS_FreeIndex(103);
}

TEST(TLSLoadOrder, LibrarySlotsAreTheFirstThree) {
    EXPECT_EQ(gTLSNumPicSlot.Index(), 100);
    EXPECT_EQ(gTLSFmtSlot.Index(), 101);
    EXPECT_EQ(gTLSPrintSlot.Index(), 102);
}

TEST_F(TLSTest, GetItemOnAFreshThreadRegistersABlock) {
    int before = TLSpThreadCount(), during = -1;
    void* got = item(0);
    std::thread t([&] {
        got = TLS_GetItem(index);
        during = TLSpThreadCount();
        TLS_FreeAll();
    });
    t.join();
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(during, before + 1);
    EXPECT_EQ(TLSpThreadCount(), before);
}

TEST_F(TLSTest, SetItemDestroysTheOldValueEvenWhenItIsTheSame) {
    TLS_SetItem(index, item(1), logDestroy);
    EXPECT_EQ(gLog.count(), 0u);
    TLS_SetItem(index, item(2), logDestroy);
    ASSERT_EQ(gLog.count(), 1u);
    EXPECT_EQ(gLog.calls[0].first, item(1));
    TLS_SetItem(index, item(2), logDestroy);
    ASSERT_EQ(gLog.count(), 2u) << "storing the value an entry holds destroys it first";
    EXPECT_EQ(gLog.calls[1].first, item(2));
    EXPECT_EQ(TLS_GetItem(index), item(2));
    TLS_SetItem(index, item(3), nullptr); // no destructor: just forgotten later
    TLS_Free(index);
    EXPECT_EQ(gLog.count(), 3u);
    EXPECT_EQ(TLS_GetItem(index), nullptr);
}

TEST_F(TLSTest, FreeOnAThreadWithoutABlockMakesNone) {
    int before = TLSpThreadCount(), during = -1;
    std::thread t([&] {
        TLS_Free(index);
        during = TLSpThreadCount();
    });
    t.join();
    EXPECT_EQ(during, before);
}

TEST_F(TLSTest, FreeAllDestroysEveryItemOnceAndTwiceIsHarmless) {
    onNewThread([&] {
        TLS_SetItem(index, item(1), logDestroy);
        TLS_SetItem(7, item(2), logDestroy);
        TLS_FreeAll();
        TLS_FreeAll();
        EXPECT_EQ(TLS_GetItem(7), nullptr) << "after TLS_FreeAll the thread starts afresh";
    });
    EXPECT_EQ(gLog.count(), 2u);
}

// A destructor that uses the thread's other items during TLS_FreeAll.
int gOtherIndex;
void* gSeenByDestructor;
void OXLCALLBACK destroyUsingOtherSlot(void*) {
    gSeenByDestructor = TLS_GetItem(gOtherIndex);
    TLS_SetItem(gOtherIndex, nullptr, nullptr);
}

TEST_F(TLSTest, DestructorDuringFreeAllFindsTheBlockInPlace) {
    gOtherIndex = 5;
    gSeenByDestructor = nullptr;
    onNewThread([&] {
        TLS_SetItem(gOtherIndex, item(9), nullptr);
        TLS_SetItem(index, item(1), destroyUsingOtherSlot);
    });
    EXPECT_EQ(gSeenByDestructor, item(9));
}

TEST_F(TLSTest, FreeIndexReachesEveryThreadOnTheCallingThread) {
    constexpr int kThreads = 4;
    Meeting stored(kThreads + 1), freed(kThreads + 1);
    std::atomic<int> emptyAfter{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            TLS_SetItem(index, item(i), logDestroy);
            TLS_SetItem(3, item(100 + i), logDestroy);
            stored.arrive_and_wait();
            freed.arrive_and_wait();
            emptyAfter += TLS_GetItem(index) == nullptr && TLS_GetItem(3) == nullptr;
            TLS_FreeAll();
        });
    }
    stored.arrive_and_wait();
    TLS_FreeIndex(index);
    TLS_FreeIndex(3);
    EXPECT_EQ(gLog.count(), size_t(2 * kThreads));
    for (auto& call : gLog.calls) EXPECT_EQ(call.second, std::this_thread::get_id());
    freed.arrive_and_wait();
    for (auto& t : threads) t.join();
    EXPECT_EQ(emptyAfter, kThreads);
    EXPECT_EQ(gLog.count(), size_t(2 * kThreads)) << "a destructor ran twice";
    EXPECT_EQ(TLS_AllocIndex(), index) << "TLS_FreeIndex gave the number back";
}

TEST_F(TLSTest, MapHoldsNoMemoryOnceEveryThreadHasGone) {
    TLS_FreeAll();
    std::vector<std::thread> threads;
    for (int i = 0; i < 25; ++i) // more threads than one node block holds
        threads.emplace_back([&] {
            TLS_SetItem(index, item(1), nullptr);
            TLS_FreeAll();
        });
    for (auto& t : threads) t.join();
    EXPECT_EQ(TLSpThreadCount(), 0);
    EXPECT_FALSE(TLSpMapHoldsMemory());
}

struct Counted {
    static inline std::atomic<int> alive{0};
    int value = 7;
    Counted() { ++alive; }
    ~Counted() { --alive; }
};

TEST_F(TLSTest, ItemIsMadeOncePerThreadAndDiesWithIt) {
    TLSSlot slot;
    TLSItem<Counted> counted(slot);
    Counted* mine = counted.Get();
    ASSERT_NE(mine, nullptr);
    EXPECT_EQ(counted.Get(), mine);
    Counted* theirs = nullptr;
    onNewThread([&] { theirs = counted.Get(); });
    EXPECT_NE(theirs, mine);
    EXPECT_EQ(Counted::alive, 1) << "the other thread's item outlived its thread";
    TLS_Free(slot.Index());
    EXPECT_EQ(Counted::alive, 0);
}

// Allocation failures at each point of making a thread's block: the block
// (1st allocation), the map's buckets (2nd) and its first node block (3rd).
TEST_F(TLSTest, ThreadWithoutMemoryHasNoItemsAndLosesNothing) {
    TLSSlot slot;
    TLSItem<Counted> counted(slot);
    for (int failAt = 1; failAt <= 3; ++failAt) {
        TLS_FreeAll();
        int threadsBefore = TLSpThreadCount();
        if (threadsBefore == 0) {
            ASSERT_FALSE(TLSpMapHoldsMemory());
        }
        gLog.clear();
        {
            ScriptedHeap heap(threadsBefore == 0 ? failAt : 1);
            TLS_SetItem(index, item(1), logDestroy);
            EXPECT_EQ(TLS_GetItem(index), nullptr) << "allocation " << failAt << " failed";
            EXPECT_EQ(counted.Get(), nullptr) << "allocation " << failAt << " failed";
            EXPECT_EQ(heap.Outstanding(), 0) << "allocation " << failAt << " failed";
        }
        EXPECT_EQ(gLog.count(), 0u) << "a value that could not be stored is not destroyed";
        EXPECT_EQ(Counted::alive, 0);
        EXPECT_EQ(TLSpThreadCount(), threadsBefore);
    }
    ASSERT_NE(counted.Get(), nullptr) << "memory is back";
}

} // namespace
