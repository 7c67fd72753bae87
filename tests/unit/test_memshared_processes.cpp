// The shared heap across processes: children of the test (oxl_shm_child)
// open the block this process formatted, allocate in it, die holding the
// mutex, and hammer it side by side; this process then reads what they left.
#include <oxlrt31/memshared.h>
#include "../support/child_process.h"
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <map>
#include <memory>
#include <thread>

namespace {

constexpr DWORD kSize = 0x10000;
constexpr const char* kChild = "oxl_shm_child";

uint32_t Word(uint32_t at) {
    uint32_t v;
    std::memcpy(&v, reinterpret_cast<const void*>(uintptr_t(at)), 4);
    return v;
}

class SharedHeapProcesses : public testing::Test {
protected:
    void SetUp() override {
        LONG created = 0;
        m_view = static_cast<char*>(MemSharedInit(&created, kSize));
        ASSERT_NE(m_view, nullptr);
        ASSERT_EQ(created, 1);
        ASSERT_EQ(MemSharedInitHeap(m_view, kSize, 1), 1);
        m_base = uint32_t(reinterpret_cast<uintptr_t>(m_view));
        // The first block is the mailbox the children find at base + 52.
        m_mailbox = static_cast<volatile uint32_t*>(MemSharedAlloc(16));
        ASSERT_EQ(reinterpret_cast<char*>(const_cast<uint32_t*>(m_mailbox)), m_view + 52);
    }
    void TearDown() override { MemSharedTerminate(); }

    std::unique_ptr<ChildProcess> Start(std::vector<std::string> args) {
        args.insert(args.begin(), {m_suffix, std::to_string(kSize)});
        auto child = std::make_unique<ChildProcess>(kChild, args);
        EXPECT_TRUE(child->Started()) << "starting " << kChild;
        return child;
    }

    std::string m_suffix = SharedSuffix();
    ScriptedShared m_shared{{m_suffix}};
    char* m_view = nullptr;
    uint32_t m_base = 0;
    volatile uint32_t* m_mailbox = nullptr;
};

TEST_F(SharedHeapProcesses, BlocksOfOtherProcessesAreSeenHere) {
    auto a = Start({"fill", "10", "0xA1A1A1A1"});
    auto b = Start({"fill", "7", "0xB2B2B2B2"});
    EXPECT_EQ(a->Wait(60000), 0) << "child filling 10 blocks";
    EXPECT_EQ(b->Wait(60000), 0) << "child filling 7 blocks";
    // The used list, read here: every child's block with its tag.
    std::map<uint32_t, int> tags;
    uint32_t head = Word(m_base + 24), at = head;
    for (int steps = 0; at && steps < 100; ++steps) {
        if (Word(at + 12) == 4) ++tags[Word(at + 20)];
        at = Word(at + 4);
        if (at == head) break;
    }
    EXPECT_EQ(tags[0xA1A1A1A1], 10);
    EXPECT_EQ(tags[0xB2B2B2B2], 7);
    EXPECT_EQ(MemSharedCheckAll(), 1);
}

TEST_F(SharedHeapProcesses, AMutexOfAKilledProcessIsTakenOver) {
    auto holder = Start({"hold"});
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!m_mailbox[0] && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_EQ(m_mailbox[0], 1u) << "the child never said it held the mutex";
    holder->Kill();
    EXPECT_EQ(MemAcquireMutex(), 1) << "after the holder was killed";
    const auto& limits = m_shared.WaitLimits();
    ASSERT_GE(limits.size(), 2u);
    EXPECT_EQ(limits[limits.size() - 2], 20000u) << "the wait that found the mutex abandoned";
    EXPECT_EQ(limits.back(), 10000u) << "the second wait";
    EXPECT_EQ(MemSharedCheckAll(), 1);
    EXPECT_EQ(MemReleaseMutex(), 1);
    auto next = Start({"fill", "1", "7"});
    EXPECT_EQ(next->Wait(60000), 0) << "another process after the take-over";
}

TEST_F(SharedHeapProcesses, AProcessThatCantMapAtTheAddressGetsNothing) {
    auto blocked = Start({"blocked"});
    EXPECT_EQ(blocked->Wait(60000), 0) << "MemSharedInit in a process with 0x40000000 taken";
    EXPECT_EQ(MemSharedCheckAll(), 1) << "the heap after the refused process";
}

// Processes allocating and freeing side by side, each checking that its
// blocks come back as it left them; then nothing is left but the mailbox,
// and the free blocks have merged into one that ends where the heap's
// untouched part begins.
TEST_F(SharedHeapProcesses, ProcessesSideBySideKeepTheHeapSound) {
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int i = 0; i < 4; ++i) children.push_back(Start({"stress", "100000", std::to_string(i + 1)}));
    for (size_t i = 0; i < children.size(); ++i)
        EXPECT_EQ(children[i]->Wait(300000), 0) << "stress child " << i + 1;
    EXPECT_EQ(MemSharedCheckAll(), 1);
    uint32_t used = Word(m_base + 24), freeHead = Word(m_base + 20);
    EXPECT_EQ(used, m_base + 32) << "only the mailbox in use";
    ASSERT_NE(freeHead, 0u);
    EXPECT_EQ(Word(freeHead + 4), freeHead) << "one free block";
    EXPECT_EQ(freeHead, m_base + 32 + 16 + 28) << "right after the mailbox";
    EXPECT_EQ(freeHead + Word(freeHead + 12) + 28, Word(m_base + 12)) << "up to the heap's next byte";
}

} // namespace
