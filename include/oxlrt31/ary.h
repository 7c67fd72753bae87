/*
 * Arrays of fixed-size elements in one block of movable memory, known by
 * handle, so that a host can hand one to another module.
 *
 * The block holds the element size (u32, at least 1), the count (u32) and
 * the elements, and is always exactly 8 + count x element size bytes: every
 * insertion and deletion resizes it, and either may move it to a new handle,
 * so it must be unlocked then and the caller goes on with the result. New
 * elements are zero. Nothing here is locked; a host that shares an array
 * between threads guards it itself.
 */
#ifndef OXLRT31_ARY_H
#define OXLRT31_ARY_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

/* Null for an element size below 1, a negative count, or no memory. */
HGLOBAL OXLAPI ARYArrayAlloc(LONG elementSize, LONG count);
/* What GlobalFree gives: null once freed. */
HGLOBAL OXLAPI ARYArrayFree(HGLOBAL array);
/* Locks the block and gives the element's address; an index outside 0 to
 * count - 1 gives null and leaves the block as locked as it was. */
void* OXLAPI ARYArrayLock(HGLOBAL array, LONG index);
/* One for each ARYArrayLock that gave an address; what GlobalUnlock gives. */
BOOL OXLAPI ARYArrayUnlock(HGLOBAL array);
/* Low word: element size; high word: count (each its low 16 bits). */
DWORD OXLAPI ARYArraySize(HGLOBAL array);
/* Adds a zero element at index (0 to count), or at the end for any other
 * index. The new handle, or null with the array as it was. */
HGLOBAL OXLAPI ARYArrayInsert(HGLOBAL array, LONG index);
/* Removes the element at index, or the last one for an index outside the
 * array. The new handle; null for a null handle, a block that cannot be
 * locked, or an array without elements. */
HGLOBAL OXLAPI ARYArrayDelete(HGLOBAL array, LONG index);

OXL_EXTERN_C_END

#endif
