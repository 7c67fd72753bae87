// Linked lists: links in both directions after every change, indexing at
// the ends, and what an allocation failure leaves.
#include <oxlrt31/list.h>
#include "../support/scripted_osl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The values head to tail, checked against the walk tail to head and the count.
std::string walk(const List* list) {
    if (!list) return "null";
    std::string forward, backward;
    DWORD n = 0;
    for (const Node* p = list->head; p && n <= list->count; p = p->next, ++n) forward += std::to_string(p->value) + " ";
    for (const Node* p = list->tail; p; p = p->prev) backward = std::to_string(p->value) + " " + backward;
    if (forward != backward) return "forward [" + forward + "] backward [" + backward + "]";
    if (n != list->count) return "count " + std::to_string(list->count) + " for [" + forward + "]";
    if ((list->head == nullptr) != (list->tail == nullptr)) return "head and tail disagree";
    return "[" + forward + "]";
}

List* make(std::vector<LONG> values) {
    List* list = ListCreateHeader();
    for (LONG v : values) EXPECT_EQ(ListAppendNode(list, v), list->tail) << "ListAppendNode(" << v << ") gives the new tail";
    return list;
}

TEST(List, IndexFromTheHead) {
    List* list = make({10, -11, 12});
    List* empty = make({});
    // gives: the node's value, or null
    const struct { List* list; LONG index; const char* gives; } cases[] = {{list, 0, "10"}, {list, 1, "-11"}, {list, 2, "12"}, {list, 3, "null"},
                 {list, -1, "null"}, {empty, 0, "null"}, {nullptr, 0, "null"}};
    for (const auto& c : cases) {
        Node* n = ListIndexNode(c.list, c.index);
        EXPECT_EQ(n ? std::to_string(n->value) : "null", c.gives) << "ListIndexNode(" << walk(c.list) << ", " << c.index << ")";
    }
    EXPECT_EQ(ListAppendNode(nullptr, 1), nullptr) << "ListAppendNode(null list)";
    EXPECT_EQ(ListDestroyList(list, 1), nullptr) << "ListDestroyList(list, 1)";
    EXPECT_EQ(ListDestroyList(empty, 1), nullptr) << "ListDestroyList(empty list, 1)";
    EXPECT_EQ(ListDestroyList(nullptr, 0), nullptr) << "ListDestroyList(null, 0)";
}

// Deleting joins the neighbours; index -1 stands for a node of another list,
// which no call with an empty list or a null may touch.
TEST(List, DeleteNodeJoinsTheNeighbours) {
    const struct { std::vector<LONG> before; LONG index; int result; const char* after; } cases[] = {{{10, 11, 12}, 0, 1, "[11 12 ]"}, {{10, 11, 12}, 1, 1, "[10 12 ]"}, {{10, 11, 12}, 2, 1, "[10 11 ]"},
                 {{10}, 0, 1, "[]"},             {{}, -1, 0, "[]"},               {{10}, 5, 0, "[10 ]"}};
    for (const auto& c : cases) {
        ScriptedHeap heap;
        List* list = make(c.before);
        List* other = make({1});
        std::string call = "ListDeleteNode(" + walk(list) + ", node " + std::to_string(c.index) + ")";
        EXPECT_EQ(ListDeleteNode(list, c.index < 0 ? other->head : ListIndexNode(list, c.index)), c.result) << call;
        EXPECT_EQ(walk(list), c.after) << call;
        EXPECT_EQ(heap.Frees(), c.result) << "nodes freed by " << call;
        EXPECT_EQ(walk(other), "[1 ]") << call;
        ListDestroyList(list, 1), ListDestroyList(other, 1);
        EXPECT_EQ(heap.Outstanding(), 0) << call;
    }
    List* list = make({1});
    EXPECT_EQ(ListDeleteNode(nullptr, list->head), 0) << "ListDeleteNode(null, node)";
    EXPECT_EQ(walk(list), "[1 ]");
    ListDestroyList(list, 1);
}

TEST(List, WithoutMemory) {
    List* list = make({1, 2});
    {
        ScriptedHeap heap(1);
        EXPECT_EQ(ListCreateHeader(), nullptr) << "ListCreateHeader with no memory";
        EXPECT_EQ(ListAppendNode(list, 3), nullptr) << "ListAppendNode with no memory";
        EXPECT_EQ(heap.Outstanding(), 0);
    }
    EXPECT_EQ(walk(list), "[1 2 ]") << "the list after a failed ListAppendNode";
    ListDestroyList(list, 1);
}

} // namespace
