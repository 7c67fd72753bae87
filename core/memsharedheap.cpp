// The shared heap's format and its first-fit allocator.
//
// Format (every field a 32-bit little-endian word, addresses absolute, so a
// heap is only meaningful at the address where it was formatted):
//   header, 32 bytes: sigA, size, base, next, end, free list, used list, sigB
//     `next` is the first byte never handed out; it moves back only when the
//     last block in use is freed and the whole heap starts afresh.
//   block: head of 20 bytes (sigA, next, prev, size, sigB), `size` payload
//     bytes, tail of 8 (sigA, sigB). Blocks follow one another at exactly
//     payload + 28 bytes: neither sizes nor addresses are rounded.
// A block is in exactly one of two circular, doubly linked lists, free or
// used; linking puts a block at the head, so the latest free block is the
// first looked at.
//
// The heap lives in memory that other processes write, possibly with other
// builds of the library. Every address read from it is checked against this
// process's bounds of the heap before it is followed; one that points
// outside throws Damaged, which takes the way out a fault would take: the
// mutex is released and the call fails, with nothing written past the bad word.
#include <oxlrt31/memshared.h>

#include "crsect.h"
#include "memstate.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr uint32_t kSigA = 0x78563412;
constexpr uint32_t kSigB = 0xF1DEBC9A;
constexpr uint32_t kHeaderBytes = 32;
constexpr uint32_t kHeadBytes = 20;
constexpr uint32_t kOverhead = 28;    // head and tail
constexpr uint32_t kSplitSlack = 40;  // a free block at most this much too big is passed over, not split
constexpr uint32_t kMaxSteps = 1000000;

// Header words.
enum : uint32_t { H_SIGA = 0, H_SIZE = 4, H_BASE = 8, H_NEXT = 12, H_END = 16, H_FREE = 20, H_USED = 24, H_SIGB = 28 };
// Head words of a block.
enum : uint32_t { B_SIGA = 0, B_NEXT = 4, B_PREV = 8, B_SIZE = 12, B_SIGB = 16 };

struct Damaged {};

// The heap as this process sees it: word access bounded by [lo, hi).
class Heap {
public:
    // Null when the process has no heap, or one it can't address in 32 bits.
    static bool Addressable(const void* base, DWORD size) {
        uintptr_t lo = reinterpret_cast<uintptr_t>(base);
        return lo && size >= kHeaderBytes && uint64_t(lo) + size <= 0x100000000ull;
    }
    Heap() : m_lo(uint32_t(reinterpret_cast<uintptr_t>(gMemState.lpHeap))), m_hi(uint64_t(m_lo) + gMemState.dwHeapSize) {
        if (!Addressable(gMemState.lpHeap, gMemState.dwHeapSize)) throw Damaged{};
    }

    uint32_t Get(uint64_t at) const {
        uint32_t v;
        std::memcpy(&v, Address(at, 4), 4);
        return v;
    }
    void Set(uint64_t at, uint32_t v) { std::memcpy(Address(at, 4), &v, 4); }
    void Zero(uint64_t at, uint64_t bytes) { std::memset(Address(at, bytes), 0, bytes); }

    uint32_t Header(uint32_t field) const { return Get(m_lo + field); }
    void SetHeader(uint32_t field, uint32_t v) { Set(m_lo + field, v); }

    bool SignedHeader() const { return Header(H_SIGA) == kSigA && Header(H_SIGB) == kSigB; }
    // All four signature words of a block, at the places its size gives.
    bool Signed(uint32_t block) const {
        uint64_t tail = uint64_t(block) + kHeadBytes + Get(block + B_SIZE);
        return Get(block + B_SIGA) == kSigA && Get(block + B_SIGB) == kSigB && Get(tail) == kSigA &&
               Get(tail + 4) == kSigB;
    }
    void Sign(uint32_t block) {
        uint64_t tail = uint64_t(block) + kHeadBytes + Get(block + B_SIZE);
        Set(block + B_SIGA, kSigA);
        Set(block + B_SIGB, kSigB);
        Set(tail, kSigA);
        Set(tail + 4, kSigB);
    }

    // Puts `block` at the head of a list: before the old head, after its tail.
    void Link(uint32_t list, uint32_t block) {
        Sign(block);
        uint32_t head = Header(list);
        if (!head) {
            Set(block + B_NEXT, block);
            Set(block + B_PREV, block);
        } else {
            uint32_t last = Get(head + B_PREV);
            Set(block + B_NEXT, head);
            Set(block + B_PREV, last);
            Set(last + B_NEXT, block);
            Set(head + B_PREV, block);
        }
        SetHeader(list, block);
    }
    void Unlink(uint32_t list, uint32_t block) {
        uint32_t next = Get(block + B_NEXT), prev = Get(block + B_PREV);
        if (next == block) {
            SetHeader(list, 0);
            return;
        }
        Set(prev + B_NEXT, next);
        Set(next + B_PREV, prev);
        if (Header(list) == block) SetHeader(list, next);
    }

    uint32_t Size(uint32_t block) const { return Get(block + B_SIZE); }
    void SetSize(uint32_t block, uint32_t size) { Set(block + B_SIZE, size); }
    uint64_t End(uint32_t block) const { return uint64_t(block) + Size(block) + kOverhead; }

private:
    void* Address(uint64_t at, uint64_t bytes) const {
        if (at < m_lo || at > m_hi || m_hi - at < bytes) throw Damaged{};
        return reinterpret_cast<void*>(uintptr_t(at));
    }

    uint32_t m_lo;
    uint64_t m_hi;
};

// The mutex for one call, released on every way out.
class MutexHold {
public:
    MutexHold() : m_held(MemAcquireMutex() != 0) {}
    ~MutexHold() {
        if (m_held) MemReleaseMutex();
    }
    MutexHold(const MutexHold&) = delete;
    MutexHold& operator=(const MutexHold&) = delete;
    bool Held() const { return m_held; }
    // Gives the mutex back now; its result is the call's.
    bool Release() {
        m_held = false;
        return MemReleaseMutex() != 0;
    }

private:
    bool m_held;
};

uint32_t AddressOf(const void* p) { return uint32_t(reinterpret_cast<uintptr_t>(p)); }

// The block of a payload address; one that no 32-bit word could hold is
// outside every heap.
uint32_t BlockOf(const void* payload) {
    uint64_t p = reinterpret_cast<uintptr_t>(payload);
    if (p < kHeadBytes || p >> 32) throw Damaged{};
    return uint32_t(p) - kHeadBytes;
}

// First fit from the free list's head, passing over blocks that would leave
// a remainder too small to be worth a block of its own; 0 when none serves.
uint32_t TakeFree(Heap& heap, uint32_t size) {
    uint32_t head = heap.Header(H_FREE);
    uint32_t block = head;
    for (uint32_t steps = 0; block && steps < kMaxSteps; ++steps) {
        uint32_t have = heap.Size(block);
        uint32_t next = heap.Get(block + B_NEXT);
        if (have == size) {
            heap.Unlink(H_FREE, block);
            heap.Link(H_USED, block);
            return block;
        }
        if (have > size && have - size > kSplitSlack) {
            uint32_t rest = block + size + kOverhead;
            heap.Unlink(H_FREE, block);
            heap.SetSize(block, size);
            heap.Link(H_USED, block);
            heap.SetSize(rest, have - size - kOverhead);
            heap.Link(H_FREE, rest);
            return block;
        }
        block = next;
        if (block == head) break;
    }
    return 0;
}

uint32_t TakeFromEnd(Heap& heap, uint32_t size) {
    uint32_t next = heap.Header(H_NEXT), end = heap.Header(H_END);
    if (next >= end || uint64_t(size) + kOverhead > end - next) return 0;
    // Zeroing first: a header whose `end` lies beyond this process's view
    // fails here, before anything is written.
    heap.Zero(next, uint64_t(size) + kOverhead);
    heap.SetHeader(H_NEXT, next + size + kOverhead);
    heap.SetSize(next, size);
    heap.Link(H_USED, next);
    return next;
}

// Whether `block` is in use: below the heap's next byte, soundly signed and
// linked, and not in the free list (which a block given back twice would be).
// A block forgotten when the heap started afresh fails one of these too.
bool InUse(const Heap& heap, uint32_t block) {
    if (!heap.Header(H_USED) || heap.End(block) > heap.Header(H_NEXT) || !heap.Signed(block)) return false;
    uint32_t next = heap.Get(block + B_NEXT), prev = heap.Get(block + B_PREV);
    if (heap.Get(next + B_PREV) != block || heap.Get(prev + B_NEXT) != block) return false;
    uint32_t head = heap.Header(H_FREE);
    uint32_t at = head;
    for (uint32_t steps = 0; at && steps < kMaxSteps; ++steps) {
        if (at == block) return false;
        at = heap.Get(at + B_NEXT);
        if (at == head) break;
    }
    return true;
}

// Joins a newly freed block with the free blocks right above and below it.
void Merge(Heap& heap, uint32_t block) {
    uint32_t lower = 0, higher = 0;
    uint32_t head = heap.Header(H_FREE);
    uint32_t at = head;
    for (uint32_t steps = 0; at && steps < kMaxSteps && !(lower && higher); ++steps) {
        if (heap.End(at) == block) lower = at;
        if (at == heap.End(block)) higher = at;
        at = heap.Get(at + B_NEXT);
        if (at == head) break;
    }
    if (higher) {
        heap.SetSize(block, heap.Size(block) + heap.Size(higher) + kOverhead);
        heap.Unlink(H_FREE, higher);
    }
    if (lower) {
        // The upper block's tail stays where it is and now ends the merged block.
        heap.SetSize(lower, heap.Size(lower) + heap.Size(block) + kOverhead);
        heap.Unlink(H_FREE, block);
    }
}

// Every block of one list signed, within kMaxSteps; a null link ends the walk.
bool ListSound(const Heap& heap, uint32_t list) {
    CRSectGuard hold(gpCRSECTMain);
    uint32_t head = heap.Header(list);
    uint32_t at = head;
    for (uint32_t steps = 0; at; ++steps) {
        if (steps >= kMaxSteps || !heap.Signed(at)) return false;
        at = heap.Get(at + B_NEXT);
        if (at == head) break;
    }
    return true;
}

} // namespace

int OXLAPI MemSharedInitHeap(void* base, DWORD size, int initialise) {
    if (!Heap::Addressable(base, size)) return 0;
    MutexHold mutex;
    if (!mutex.Held()) return 0;
    gMemState.lpHeap = base;
    gMemState.dwHeapSize = size;
    try {
        Heap heap;
        if (initialise) {
            uint32_t at = AddressOf(base);
            heap.SetHeader(H_SIGA, kSigA);
            heap.SetHeader(H_SIZE, size);
            heap.SetHeader(H_BASE, at);
            heap.SetHeader(H_NEXT, at + kHeaderBytes);
            heap.SetHeader(H_END, at + size);
            heap.SetHeader(H_FREE, 0);
            heap.SetHeader(H_USED, 0);
            heap.SetHeader(H_SIGB, kSigB);
        } else if (heap.Header(H_SIZE) != size || !heap.SignedHeader()) {
            return 0;
        }
    } catch (const Damaged&) {
        return 0;
    }
    return mutex.Release();
}

void* OXLAPI MemSharedAlloc(DWORD size) {
    MutexHold mutex;
    if (!mutex.Held()) return nullptr;
    uint32_t block = 0;
    try {
        Heap heap;
        block = TakeFree(heap, size);
        if (block) heap.Zero(uint64_t(block) + kHeadBytes, size);
        else block = TakeFromEnd(heap, size);
    } catch (const Damaged&) {
        return nullptr;
    }
    if (!mutex.Release() || !block) return nullptr;
    return reinterpret_cast<void*>(uintptr_t(block) + kHeadBytes);
}

void OXLAPI MemSharedFree(void* payload) {
    MutexHold mutex;
    if (!mutex.Held()) return;
    try {
        Heap heap;
        uint32_t block = BlockOf(payload);
        if (!InUse(heap, block)) return;
        heap.Unlink(H_USED, block);
        heap.Link(H_FREE, block);
        if (!heap.Header(H_USED)) {
            // The last block in use: the whole heap starts afresh.
            heap.SetHeader(H_NEXT, heap.Header(H_BASE) + kHeaderBytes);
            heap.SetHeader(H_FREE, 0);
        } else {
            Merge(heap, block);
        }
    } catch (const Damaged&) {
    }
}

int OXLAPI MemSharedCheck(const void* payload) {
    if (!payload) return 1;
    try {
        Heap heap;
        return heap.Signed(BlockOf(payload)) ? 1 : 0;
    } catch (const Damaged&) {
        return 0;
    }
}

int OXLAPI MemSharedCheckAll(void) {
    MutexHold mutex;
    if (!mutex.Held()) return 0;
    try {
        Heap heap;
        if (!heap.SignedHeader()) return 0;
        if (!ListSound(heap, H_FREE) || !ListSound(heap, H_USED)) return 0;
    } catch (const Damaged&) {
        return 0;
    }
    return mutex.Release();
}
