#include "tlsmap.h"

#include "../os/osl.h"

void* TLSThreadMap::Find(DWORD key) const {
    if (!m_buckets) return nullptr;
    for (Node* n = m_buckets[Hash(key)]; n; n = n->next)
        if (n->key == key) return n->value;
    return nullptr;
}

TLSThreadMap::Node* TLSThreadMap::NewNode() {
    if (!m_free) {
        auto* block = static_cast<Block*>(gOsl.memory->HeapAlloc(HEAP_ZERO_MEMORY, sizeof(Block)));
        if (!block) return nullptr;
        block->next = m_blocks;
        m_blocks = block;
        for (Node& n : block->nodes) {
            n.next = m_free;
            m_free = &n;
        }
    }
    Node* n = m_free;
    m_free = n->next;
    return n;
}

bool TLSThreadMap::Set(DWORD key, void* value) {
    if (!m_buckets) {
        m_buckets = static_cast<Node**>(gOsl.memory->HeapAlloc(HEAP_ZERO_MEMORY, kBuckets * sizeof(Node*)));
        if (!m_buckets) return false;
    }
    Node** chain = &m_buckets[Hash(key)];
    for (Node* n = *chain; n; n = n->next) {
        if (n->key == key) {
            n->value = value;
            return true;
        }
    }
    Node* n = NewNode();
    if (!n) {
        if (m_count == 0) Clear(); // leave an empty map holding nothing
        return false;
    }
    n->key = key;
    n->value = value;
    n->next = *chain;
    *chain = n;
    ++m_count;
    return true;
}

void TLSThreadMap::Remove(DWORD key) {
    if (!m_buckets) return;
    for (Node** link = &m_buckets[Hash(key)]; *link; link = &(*link)->next) {
        Node* n = *link;
        if (n->key != key) continue;
        *link = n->next;
        n->next = m_free;
        m_free = n;
        if (--m_count == 0) Clear();
        return;
    }
}

void TLSThreadMap::ForEach(void (*fn)(void*, void*), void* context) const {
    if (!m_buckets) return;
    for (int b = 0; b < kBuckets; ++b)
        for (Node* n = m_buckets[b]; n; n = n->next) fn(n->value, context);
}

void TLSThreadMap::Clear() {
    while (m_blocks) {
        Block* next = m_blocks->next;
        gOsl.memory->HeapFree(m_blocks);
        m_blocks = next;
    }
    if (m_buckets) gOsl.memory->HeapFree(m_buckets);
    m_buckets = nullptr;
    m_free = nullptr;
    m_count = 0;
}
