// Linked lists of values. Headers and nodes come from MemAlloc, zero-filled,
// so a new header is already an empty list.
#include <oxlrt31/list.h>

#include <oxlrt31/mem.h>

List* OXLAPI ListCreateHeader(void) { return static_cast<List*>(MemAlloc(sizeof(List))); }

Node* OXLAPI ListAppendNode(List* list, LONG value) {
    if (!list) return nullptr;
    auto* node = static_cast<Node*>(MemAlloc(sizeof(Node)));
    if (!node) return nullptr;
    node->value = value;
    node->prev = list->tail;
    if (list->count > 0)
        list->tail->next = node;
    else
        list->head = node;
    list->tail = node;
    ++list->count;
    return node;
}

// The node is taken to be in the list: there is no walk to prove it.
int OXLAPI ListDeleteNode(List* list, Node* node) {
    if (!list || list->count == 0 || !node) return 0;
    if (node->prev)
        node->prev->next = node->next;
    else
        list->head = node->next;
    if (node->next)
        node->next->prev = node->prev;
    else
        list->tail = node->prev;
    --list->count;
    MemFree(node);
    return 1;
}

Node* OXLAPI ListIndexNode(List* list, LONG index) {
    if (!list || index < 0 || DWORD(index) >= list->count) return nullptr;
    Node* node = list->head;
    while (index-- > 0) node = node->next;
    return node;
}

List* OXLAPI ListDestroyList(List* list, int freeHeader) {
    if (!list) return nullptr;
    for (Node* node = list->head; node;) {
        Node* next = node->next;
        MemFree(node);
        node = next;
    }
    if (freeHeader) {
        MemFree(list);
        return nullptr;
    }
    list->count = 0;
    list->head = list->tail = nullptr;
    return list;
}
