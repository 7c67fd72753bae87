/*
 * The shared heap: a small heap in one named block of shared memory that every
 * process on the machine can map, at one fixed address, so that the absolute
 * addresses inside it mean the same in all of them. One named mutex
 * serialises every change. The library never calls these itself; a host calls
 * MemSharedInit, then MemSharedInitHeap (with the `created` flag as
 * `initialise`, so that the first process formats and the others verify),
 * then the heap functions, and MemSharedTerminate at the end.
 *
 * Results are 1 for success and 0 for failure: a time-out on the mutex, a
 * mapping that can't be had at its address, an exhausted or damaged heap.
 * Nothing is reported to the user.
 */
#ifndef OXLRT31_MEMSHARED_H
#define OXLRT31_MEMSHARED_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

/* The named mutex, created on first use and kept for the life of the
 * process. Waits up to 20 s; a mutex whose owner died holding it is taken
 * over. Recursive per thread: every 1 needs its MemReleaseMutex. */
int OXLAPI MemAcquireMutex(void);
int OXLAPI MemReleaseMutex(void);

/* Creates or opens the shared block of `size` bytes and maps it at its fixed
 * address. The view's address, or 0; *created is 1 for the process that
 * created the block and 0 for later ones, and is left alone on failure. A
 * process that has the block mapped already gets its view again (created 0). */
void* OXLAPI MemSharedInit(LONG* created, DWORD size);
/* Formats a heap of `size` bytes at `base` (initialise non-zero), or checks
 * that the one there has that size and intact signatures. The heap must lie
 * below 4 GB, where its 32-bit words can address it. */
int OXLAPI MemSharedInitHeap(void* base, DWORD size, int initialise);
/* Unmaps and closes this process's view; the mutex stays open. */
void OXLAPI MemSharedTerminate(void);

/* `size` zero bytes from the heap, or 0. No alignment is promised. */
void* OXLAPI MemSharedAlloc(DWORD size);
/* Gives a block back. Null, an address that isn't a block in use, and a
 * block given back twice change nothing. */
void OXLAPI MemSharedFree(void* payload);
/* 1 when the four signature words around the block are intact, or for null;
 * 0 otherwise, and for an address outside this process's heap. No lock. */
int OXLAPI MemSharedCheck(const void* payload);
/* 1 when the header and every block of both lists are intact. */
int OXLAPI MemSharedCheckAll(void);

OXL_EXTERN_C_END

#endif
