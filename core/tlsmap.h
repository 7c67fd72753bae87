// The thread map of the per-thread items: thread identifier -> thread block.
//
// A chained hash map with 17 buckets, hash (key >> 4) % 17, new entries at
// the front of their chain. Nodes come from a free list filled in blocks of
// 10. The bucket array is made at the first insertion; when the last entry
// goes, the bucket array and every node block are released, so a map whose
// threads have all ended holds no memory. The caller holds the main region.
#ifndef OXL_CORE_TLSMAP_H
#define OXL_CORE_TLSMAP_H

#include <oxlrt31/oxlapi.h>

class TLSThreadMap {
public:
    TLSThreadMap() {} // not constexpr: it must be made and unmade in load order
    ~TLSThreadMap() { Clear(); }
    TLSThreadMap(const TLSThreadMap&) = delete;
    TLSThreadMap& operator=(const TLSThreadMap&) = delete;

    void* Find(DWORD key) const;
    // Points key at value, adding an entry if there is none; false when no
    // memory could be had for it.
    bool Set(DWORD key, void* value);
    void Remove(DWORD key);
    // Calls fn(value, context) for every entry, bucket by bucket, front first.
    void ForEach(void (*fn)(void* value, void* context), void* context) const;
    void Clear();

    int Count() const { return m_count; }
    bool HoldsMemory() const { return m_buckets || m_blocks; }

    static constexpr int kBuckets = 17;
    static constexpr int kNodesPerBlock = 10;

private:
    struct Node {
        Node* next;
        DWORD key;
        void* value;
    };
    struct Block {
        Block* next;
        Node nodes[kNodesPerBlock];
    };

    static unsigned Hash(DWORD key) { return (key >> 4) % kBuckets; }
    Node* NewNode();

    Node** m_buckets = nullptr;
    Node* m_free = nullptr;
    Block* m_blocks = nullptr;
    int m_count = 0;
};

// The process's map, a static object of the library (core/libstatics.cpp).
extern TLSThreadMap gTLSThreadMap;

#endif
