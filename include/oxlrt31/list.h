/*
 * Doubly linked lists of 32-bit values, on the library's heap (core/mem.h).
 *
 * A list owns its nodes, never what their values point to. Head and tail are
 * null exactly when the count is 0. Nothing here is locked beyond what the
 * heap does; a host that shares a list between threads guards it itself.
 */
#ifndef OXLRT31_LIST_H
#define OXLRT31_LIST_H

#include "oxlapi.h"

#pragma pack(push, 1)
typedef struct LISTNODE {
    LONG value; /* the caller's */
    struct LISTNODE* next;
    struct LISTNODE* prev;
} Node;
typedef struct LISTHEADER {
    DWORD count;
    Node* head;
    Node* tail;
} List;
#pragma pack(pop)

OXL_STATIC_ASSERT(sizeof(Node) == 4 + 2 * sizeof(void*), "a node is a value and two links");
OXL_STATIC_ASSERT(sizeof(List) == 4 + 2 * sizeof(void*), "a header is a count, head and tail");

OXL_EXTERN_C_BEGIN

/* An empty list, or null. */
List* OXLAPI ListCreateHeader(void);
/* Appends at the tail; null (the list as it was) for a null list or no memory. */
Node* OXLAPI ListAppendNode(List* list, LONG value);
/* Unlinks and frees a node of the list: 1; 0 for a null or empty list or a null node. */
int OXLAPI ListDeleteNode(List* list, Node* node);
/* The node at index (0 the head), or null outside 0 to count - 1. */
Node* OXLAPI ListIndexNode(List* list, LONG index);
/* Frees every node; frees the header too (result null) when freeHeader is
 * non-zero, else empties it and gives it back. */
List* OXLAPI ListDestroyList(List* list, int freeHeader);

OXL_EXTERN_C_END

#endif
