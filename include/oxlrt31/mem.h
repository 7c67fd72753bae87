/*
 * The library's heap: zero-filled blocks of the process heap that any module
 * may free, whichever module allocated them.
 *
 * Every call that reaches the heap runs under the main region, taken through
 * gpCRSECTMain and skipped while that pointer is null, so these work in
 * static initialisers and finalisers too. A null result is an exhausted heap.
 */
#ifndef OXLRT31_MEM_H
#define OXLRT31_MEM_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

/* size zero-filled bytes; null for a size of 0 or when the heap is exhausted. */
void* OXLAPI MemAlloc(DWORD size);
/* Resizes, zero-filling what is added; the block may move. A null block
 * allocates, a size of 0 frees (result null). On failure the result is null
 * and the old block stays valid. */
void* OXLAPI MemRealloc(void* block, DWORD size);
/* Null does nothing. */
void OXLAPI MemFree(void* block);
/* Bytes in the block; 0 for null. */
DWORD OXLAPI MemSize(const void* block);
/* Both always 0 and look at nothing: this heap keeps no checks. A 0 is not a
 * report of damage (the shared heap's checks use 1 for good). */
int OXLAPI MemCheck(const void* block);
int OXLAPI MemCheckAll(void);

OXL_EXTERN_C_END

#endif
