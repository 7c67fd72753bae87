/*
 * Per-thread items: numbered values with destructors, per thread.
 *
 * One platform thread slot serves the whole library; behind it each thread
 * has a block of 200 entries. Slot numbers 100 to 199 are handed out by
 * TLS_AllocIndex; 0 to 99 are free for callers that agree on a number. Items
 * die when their thread ends, when replaced or freed, or, in every thread at
 * once, when their slot number is given back with TLS_FreeIndex.
 */
#ifndef OXLRT31_TLS_H
#define OXLRT31_TLS_H

#include "oxlapi.h"

OXL_EXTERN_C_BEGIN

typedef void(OXLCALLBACK* TLS_DESTRUCTOR)(void* value);

/* The lowest free slot number from 100 up, or -1 when all 100 are taken. */
int OXLAPI TLS_AllocIndex(void);
/* Frees the number (100 and up) and destroys its item in every thread. */
void OXLAPI TLS_FreeIndex(int index);
/* The calling thread's item, or 0. */
void* OXLAPI TLS_GetItem(int index);
/* Destroys the entry's old value (same value or not), then stores the new. */
void OXLAPI TLS_SetItem(int index, void* value, TLS_DESTRUCTOR destructor);
/* Destroys and clears the calling thread's entry. */
void OXLAPI TLS_Free(int index);
/* Destroys all of the calling thread's items and its block. */
void OXLAPI TLS_FreeAll(void);

OXL_EXTERN_C_END

#endif
