// The process's side of the shared heap, in static storage and zero until
// MemSharedInit. The process heap's handle is the OS layer's business (its
// heap entries address the process heap), so it has no field here.
#ifndef OXL_CORE_MEMSTATE_H
#define OXL_CORE_MEMSTATE_H

#include <oxlrt31/oxlapi.h>

struct MEMSTATE {
    HANDLE hMutex;     // the named mutex, open for the life of the process
    HANDLE hMapping;   // the named mapping
    void* lpView;      // where it is mapped; 0 when it isn't
    void* lpHeap;      // the heap's header
    DWORD dwHeapSize;  // the heap's size as this process gave it: the bound of every address it follows
};

extern MEMSTATE gMemState;

#endif
