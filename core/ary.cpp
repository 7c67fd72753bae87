// Arrays in movable memory: a header and the elements, resized on every
// change. The header is read and written only while the block is locked.
#include <oxlrt31/ary.h>

#include "../os/osl.h"

#include <cstdint>
#include <cstring>

namespace {

#pragma pack(push, 1)
struct ARYHEADER {
    DWORD dwElementSize;
    DWORD dwCount;
};
#pragma pack(pop)
static_assert(sizeof(ARYHEADER) == 8, "the elements start 8 bytes into the block");

constexpr UINT kFlags = GMEM_MOVEABLE | GMEM_ZEROINIT; // 0x42

// 8 + count x element size, when it is a size the platform can allocate.
bool blockBytes(uint64_t elementSize, uint64_t count, SIZE_T* bytes) {
    uint64_t n = sizeof(ARYHEADER) + elementSize * count; // both below 2^32: no overflow
    if (n > 0xFFFFFFFFu || n > SIZE_MAX) return false;
    *bytes = SIZE_T(n);
    return true;
}

char* element(ARYHEADER* h, DWORD index) {
    return reinterpret_cast<char*>(h + 1) + size_t(index) * h->dwElementSize;
}

bool readHeader(HGLOBAL array, ARYHEADER* out) {
    auto* h = static_cast<ARYHEADER*>(gOsl.memory->GlobalLock(array));
    if (!h) return false;
    *out = *h;
    gOsl.memory->GlobalUnlock(array);
    return true;
}

} // namespace

HGLOBAL OXLAPI ARYArrayAlloc(LONG elementSize, LONG count) {
    SIZE_T bytes;
    if (elementSize < 1 || count < 0 || !blockBytes(DWORD(elementSize), DWORD(count), &bytes)) return nullptr;
    HGLOBAL array = gOsl.memory->GlobalAlloc(kFlags, bytes);
    if (!array) return nullptr;
    auto* h = static_cast<ARYHEADER*>(gOsl.memory->GlobalLock(array));
    if (!h) {
        gOsl.memory->GlobalFree(array);
        return nullptr;
    }
    h->dwElementSize = DWORD(elementSize);
    h->dwCount = DWORD(count);
    gOsl.memory->GlobalUnlock(array);
    return array;
}

HGLOBAL OXLAPI ARYArrayFree(HGLOBAL array) { return gOsl.memory->GlobalFree(array); }

void* OXLAPI ARYArrayLock(HGLOBAL array, LONG index) {
    auto* h = static_cast<ARYHEADER*>(gOsl.memory->GlobalLock(array));
    if (!h) return nullptr;
    if (index < 0 || DWORD(index) >= h->dwCount) {
        gOsl.memory->GlobalUnlock(array);
        return nullptr;
    }
    return element(h, DWORD(index));
}

BOOL OXLAPI ARYArrayUnlock(HGLOBAL array) { return gOsl.memory->GlobalUnlock(array); }

DWORD OXLAPI ARYArraySize(HGLOBAL array) {
    ARYHEADER h;
    if (!readHeader(array, &h)) return 0;
    return (h.dwCount & 0xFFFF) << 16 | (h.dwElementSize & 0xFFFF);
}

HGLOBAL OXLAPI ARYArrayInsert(HGLOBAL array, LONG index) {
    ARYHEADER old;
    SIZE_T bytes;
    if (!readHeader(array, &old) || !blockBytes(old.dwElementSize, uint64_t(old.dwCount) + 1, &bytes)) return nullptr;
    HGLOBAL moved = gOsl.memory->GlobalReAlloc(array, bytes, kFlags);
    if (!moved) return nullptr;
    // A block just resized to a size above 0 always locks.
    auto* h = static_cast<ARYHEADER*>(gOsl.memory->GlobalLock(moved));
    if (!h) return nullptr;
    DWORD at = index >= 0 && DWORD(index) <= h->dwCount ? DWORD(index) : h->dwCount;
    std::memmove(element(h, at + 1), element(h, at), size_t(h->dwCount - at) * h->dwElementSize);
    std::memset(element(h, at), 0, h->dwElementSize);
    ++h->dwCount;
    gOsl.memory->GlobalUnlock(moved);
    return moved;
}

HGLOBAL OXLAPI ARYArrayDelete(HGLOBAL array, LONG index) {
    if (!array) return nullptr;
    auto* h = static_cast<ARYHEADER*>(gOsl.memory->GlobalLock(array));
    if (!h) return nullptr;
    if (h->dwCount == 0) { // nothing to delete: refused, the array as it was
        gOsl.memory->GlobalUnlock(array);
        return nullptr;
    }
    DWORD last = h->dwCount - 1;
    DWORD at = index >= 0 && DWORD(index) < last ? DWORD(index) : last;
    std::memmove(element(h, at), element(h, at + 1), size_t(last - at) * h->dwElementSize);
    h->dwCount = last;
    SIZE_T bytes = sizeof(ARYHEADER) + size_t(last) * h->dwElementSize;
    gOsl.memory->GlobalUnlock(array);
    // A block that cannot shrink stays valid, one element longer than its
    // count says; the element is gone all the same, so its handle is the result.
    HGLOBAL moved = gOsl.memory->GlobalReAlloc(array, bytes, kFlags);
    return moved ? moved : array;
}
