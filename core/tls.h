// The library's own side of the per-thread items: the table's size, the
// platform slot's life, and the TLSSlot and TLSItem<T> patterns its static
// objects use. Hosts see the C functions of <oxlrt31/tls.h> only.
#ifndef OXL_CORE_TLS_H
#define OXL_CORE_TLS_H

#include <oxlrt31/tls.h>

#include <new>

// Slot numbers, block size and the platform slot.
constexpr int TLS_SLOTS = 200;
constexpr int TLS_FIRST_ALLOC = 100;

// Allocates the platform's thread slot if it is unset (load, and the first
// TLS_AllocIndex); frees it and marks it unset (unload).
void TLSpEnsurePlatformSlot();
void TLSpReleasePlatformSlot();
// Empties the thread map and releases its memory (unload).
void TLSpClearThreadMap();
// How many threads the map holds, and whether it holds any memory (for tests).
int TLSpThreadCount();
bool TLSpMapHoldsMemory();

// A slot number taken for the life of the library: taken when the object is
// constructed (the library's are static objects, in load order) and given
// back, with the items of every thread, when it is destroyed.
class TLSSlot {
public:
    TLSSlot() : m_index(TLS_AllocIndex()) {}
    ~TLSSlot() {
        if (m_index >= 0) TLS_FreeIndex(m_index);
    }
    TLSSlot(const TLSSlot&) = delete;
    TLSSlot& operator=(const TLSSlot&) = delete;
    int Index() const { return m_index; }

private:
    int m_index;
};

// A per-thread object of type T in a slot, made on first use by the thread
// that needs it and deleted with its entry.
template <class T>
class TLSItem {
public:
    explicit TLSItem(const TLSSlot& slot) : m_slot(slot) {}

    // The calling thread's object, made now if it has none; null when it
    // could not be made or stored.
    T* Get() const {
        int index = m_slot.Index();
        if (index < 0) return nullptr;
        if (void* p = TLS_GetItem(index)) return static_cast<T*>(p);
        T* item = new (std::nothrow) T();
        TLS_SetItem(index, item, item ? &Destroy : nullptr);
        if (item && TLS_GetItem(index) != item) { // the thread has no block to keep it in
            delete item;
            return nullptr;
        }
        return item;
    }

private:
    static void OXLCALLBACK Destroy(void* p) { delete static_cast<T*>(p); }
    const TLSSlot& m_slot;
};

#endif
