// Arrays in movable memory: shapes, insertion and deletion at every kind of
// index, the lock count, and what a failed resize leaves.
#include <oxlrt31/ary.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Values = std::vector<DWORD>;

// The elements of an array of 4-byte elements, read one lock at a time.
Values contents(HGLOBAL array) {
    Values v;
    for (LONG i = 0; i < LONG(ARYArraySize(array) >> 16); ++i) {
        auto* e = static_cast<DWORD*>(ARYArrayLock(array, i));
        if (!e) break;
        v.push_back(*e);
        ARYArrayUnlock(array);
    }
    return v;
}
std::string show(const Values& v) {
    std::string s;
    for (DWORD x : v) s += (s.empty() ? "" : " ") + std::to_string(x);
    return "[" + s + "]";
}
HGLOBAL make(const Values& v) {
    HGLOBAL a = ARYArrayAlloc(4, LONG(v.size()));
    for (size_t i = 0; a && i < v.size(); ++i) *static_cast<DWORD*>(ARYArrayLock(a, LONG(i))) = v[i], ARYArrayUnlock(a);
    return a;
}
SIZE_T blockSize(HGLOBAL a) { return gOsl.memory->GlobalSize(a); }

TEST(ARYArrayAlloc, Shapes) {
    // sizeWord: low half: the element size, high half: the count, each cut to 16 bits
    const struct { LONG size, count; bool valid; DWORD sizeWord; } cases[] = {
        {0, 5, false, 0},          {-1, 5, false, 0},        {4, -1, false, 0},
        {0x40000000, 8, false, 0}, {4, 0, true, 0x00000004}, {8, 3, true, 0x00030008},
        {3, 7, true, 0x00070003},  {1, 70000, true, 0x11700001}, {0x10005, 2, true, 0x00020005},
    };
    for (const auto& c : cases) {
        HGLOBAL a = ARYArrayAlloc(c.size, c.count);
        EXPECT_EQ(a != nullptr, c.valid) << "ARYArrayAlloc(" << c.size << ", " << c.count << ")";
        if (!a) continue;
        EXPECT_EQ(ARYArraySize(a), c.sizeWord) << std::hex << "ARYArraySize of ARYArrayAlloc(0x" << c.size << ", 0x" << c.count << ")";
        EXPECT_EQ(blockSize(a), 8 + SIZE_T(c.size) * c.count) << "block of ARYArrayAlloc(" << c.size << ", " << c.count << ")";
        if (c.count) {
            auto* last = static_cast<unsigned char*>(ARYArrayLock(a, c.count - 1));
            ASSERT_NE(last, nullptr);
            std::vector<unsigned char> zero(size_t(c.size), 0);
            EXPECT_EQ(std::memcmp(last, zero.data(), zero.size()), 0) << "last element of ARYArrayAlloc(" << c.size << ")";
            ARYArrayUnlock(a);
        }
        EXPECT_EQ(ARYArrayFree(a), nullptr) << "ARYArrayFree";
    }
}

TEST(ARYArrayLock, AnIndexOutsideTheArrayLeavesTheLockCountAlone) {
    HGLOBAL a = make({10, 11, 12});
    for (LONG index : {-1L, 3L, 1000L}) {
        ASSERT_NE(ARYArrayLock(a, 1), nullptr);
        EXPECT_EQ(ARYArrayLock(a, index), nullptr) << "ARYArrayLock(index " << index << ") of 3 elements";
        EXPECT_FALSE(ARYArrayUnlock(a)) << "still locked after ARYArrayLock(index " << index << ") gave null";
    }
    auto* e = static_cast<char*>(ARYArrayLock(a, 2));
    EXPECT_EQ(e - static_cast<char*>(ARYArrayLock(a, 0)), 8) << "element 2 lies two elements after element 0";
    ARYArrayUnlock(a), ARYArrayUnlock(a), ARYArrayFree(a);
}

// Insertion adds a zero element at the index, or at the end for any index
// outside 0 to count; deletion takes the element at the index, or the last.
TEST(ARYArray, InsertAndDelete) {
    const struct { bool insert; Values before; LONG index; Values after; } rows[] = {
        {true, {10, 11, 12}, 0, {0, 10, 11, 12}},  {true, {10, 11, 12}, 1, {10, 0, 11, 12}}, {true, {10, 11, 12}, 2, {10, 11, 0, 12}},
        {true, {10, 11, 12}, 3, {10, 11, 12, 0}},  {true, {10, 11, 12}, -1, {10, 11, 12, 0}}, {true, {10, 11, 12}, 99, {10, 11, 12, 0}},
        {true, {}, 5, {0}},                        {false, {10, 11, 12}, 0, {11, 12}},       {false, {10, 11, 12}, 1, {10, 12}},
        {false, {10, 11, 12}, 2, {10, 11}},        {false, {10, 11, 12}, -1, {10, 11}},      {false, {10, 11, 12}, 3, {10, 11}},
        {false, {10, 11, 12}, 99, {10, 11}},       {false, {7}, 0, {}},
    };
    for (const auto& r : rows) {
        std::string call = std::string(r.insert ? "ARYArrayInsert(" : "ARYArrayDelete(") + show(r.before) + ", " + std::to_string(r.index) + ")";
        HGLOBAL a = (r.insert ? ARYArrayInsert : ARYArrayDelete)(make(r.before), r.index);
        ASSERT_NE(a, nullptr) << call;
        EXPECT_EQ(show(contents(a)), show(r.after)) << call;
        EXPECT_EQ(ARYArraySize(a), (r.after.size() << 16) + 4) << call;
        EXPECT_EQ(blockSize(a), 8 + 4 * r.after.size()) << call;
        // A block left locked can't move, so it could not grow again.
        EXPECT_NE(a = ARYArrayInsert(a, -1), nullptr) << "ARYArrayInsert after " << call;
        EXPECT_EQ(ARYArrayFree(a), nullptr) << call;
    }
    EXPECT_EQ(ARYArrayInsert(nullptr, 0), nullptr) << "ARYArrayInsert(null)";
    EXPECT_EQ(ARYArrayDelete(nullptr, 0), nullptr) << "ARYArrayDelete(null)";
    HGLOBAL none = make({});
    EXPECT_EQ(ARYArrayDelete(none, 0), nullptr) << "ARYArrayDelete on an array without elements";
    EXPECT_EQ(ARYArraySize(none), 4u) << "an array without elements after ARYArrayDelete";
    ARYArrayFree(none);
}

TEST(ARYArray, MemoryFailuresLoseNothing) {
    {
        ScriptedHeap heap(1);
        EXPECT_EQ(ARYArrayAlloc(4, 3), nullptr) << "ARYArrayAlloc with no memory";
        EXPECT_EQ(heap.Outstanding(), 0);
    }
    HGLOBAL a = make({10, 11, 12});
    {
        ScriptedHeap heap(1);
        EXPECT_EQ(ARYArrayInsert(a, 0), nullptr) << "ARYArrayInsert when the block cannot grow";
        EXPECT_EQ(show(contents(a)), "[10 11 12]") << "the array after a failed ARYArrayInsert";
        EXPECT_EQ(ARYArrayDelete(a, 0), a) << "ARYArrayDelete when the block cannot shrink gives the handle it was given";
        EXPECT_EQ(show(contents(a)), "[11 12]") << "the array after ARYArrayDelete could not shrink it";
        EXPECT_EQ(heap.Attempts(), 2);
    }
    a = ARYArrayInsert(a, 99);
    EXPECT_EQ(show(contents(a)), "[11 12 0]") << "an array that could not shrink grows again";
    EXPECT_EQ(blockSize(a), 20u);
    ARYArrayFree(a);
}

#ifndef _WIN32
// What the POSIX stand-in adds: handles that are checked, and no move of a
// block whose address is in use.
TEST(MovableMemory, PosixRefusesStaleHandlesAndLockedMoves) {
    const OslMemoryService& m = *gOsl.memory;
    HGLOBAL h = m.GlobalAlloc(GMEM_MOVEABLE, 8);
    void* p = m.GlobalLock(h);
    EXPECT_EQ(m.GlobalReAlloc(h, 64, GMEM_MOVEABLE), nullptr) << "GlobalReAlloc of a locked block";
    EXPECT_EQ(m.GlobalSize(h), 8u);
    m.GlobalUnlock(h);
    ASSERT_EQ(m.GlobalReAlloc(h, 64, GMEM_MOVEABLE), h);
    EXPECT_NE(m.GlobalLock(h), p) << "a resized block moves";
    m.GlobalUnlock(h);
    ASSERT_EQ(m.GlobalFree(h), nullptr);
    for (HGLOBAL bad : {h, static_cast<HGLOBAL>(p), reinterpret_cast<HGLOBAL>(0x5)}) {
        EXPECT_EQ(m.GlobalLock(bad), nullptr) << "GlobalLock(" << bad << ")";
        EXPECT_EQ(m.GlobalSize(bad), 0u) << "GlobalSize(" << bad << ")";
        EXPECT_EQ(m.GlobalReAlloc(bad, 4, 0), nullptr) << "GlobalReAlloc(" << bad << ")";
        EXPECT_EQ(m.GlobalFree(bad), bad) << "GlobalFree(" << bad << ")";
    }
}
#endif

} // namespace
