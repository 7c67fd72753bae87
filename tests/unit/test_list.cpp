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
    for (LONG v : values) ListAppendNode(list, v);
    return list;
}

TEST(List, AppendLinksBothWays) {
    ScriptedHeap heap;
    List* list = make({});
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(walk(list), "[]") << "ListCreateHeader";
    for (LONG v : {5, -6, 7}) {
        Node* node = ListAppendNode(list, v);
        EXPECT_EQ(node, static_cast<Node*>(list->tail)) << "ListAppendNode(" << v << ") gives the new tail";
    }
    EXPECT_EQ(walk(list), "[5 -6 7 ]");
    EXPECT_EQ(ListAppendNode(nullptr, 1), nullptr) << "ListAppendNode(null list)";
    EXPECT_EQ(ListDestroyList(list, 1), nullptr) << "ListDestroyList(list, 1)";
    EXPECT_EQ(heap.Outstanding(), 0) << "blocks left after ListDestroyList(list, 1)";
}

TEST(ListIndexNode, FromTheHead) {
    List* list = make({10, 11, 12});
    List* empty = make({});
    const struct {
        List* list;
        LONG index;
        const char* gives; // the node's value, or null
    } cases[] = {
        {list, 0, "10"}, {list, 1, "11"}, {list, 2, "12"}, {list, 3, nullptr},
        {list, -1, nullptr}, {empty, 0, nullptr}, {nullptr, 0, nullptr},
    };
    for (const auto& c : cases) {
        Node* n = ListIndexNode(c.list, c.index);
        std::string got = n ? std::to_string(n->value) : "null";
        EXPECT_EQ(got, c.gives ? c.gives : "null") << "ListIndexNode(" << (c.list ? walk(c.list) : "null") << ", "
                                                   << c.index << ")";
    }
    ListDestroyList(list, 1);
    ListDestroyList(empty, 1);
}

TEST(ListDeleteNode, JoinsTheNeighbours) {
    const struct {
        std::vector<LONG> before;
        LONG index;
        const char* after;
    } cases[] = {
        {{10, 11, 12}, 0, "[11 12 ]"}, {{10, 11, 12}, 1, "[10 12 ]"},
        {{10, 11, 12}, 2, "[10 11 ]"}, {{10}, 0, "[]"},
    };
    for (const auto& c : cases) {
        ScriptedHeap heap;
        List* list = make(c.before);
        std::string before = walk(list);
        EXPECT_EQ(ListDeleteNode(list, ListIndexNode(list, c.index)), 1) << "ListDeleteNode(" << before << ", " << c.index << ")";
        EXPECT_EQ(walk(list), c.after) << "ListDeleteNode(" << before << ", node " << c.index << ")";
        EXPECT_EQ(heap.Frees(), 1) << "nodes freed by ListDeleteNode(" << before << ", " << c.index << ")";
        ListDestroyList(list, 1);
        EXPECT_EQ(heap.Outstanding(), 0);
    }
    List* list = make({});
    List* other = make({1});
    Node* stray = other->head;
    EXPECT_EQ(ListDeleteNode(list, stray), 0) << "ListDeleteNode on an empty list";
    EXPECT_EQ(ListDeleteNode(list, nullptr), 0) << "ListDeleteNode(list, null)";
    EXPECT_EQ(ListDeleteNode(nullptr, stray), 0) << "ListDeleteNode(null, node)";
    ListDestroyList(list, 1);
    ListDestroyList(other, 1);
}

TEST(ListDestroyList, KeepingTheHeaderLeavesAUsableList) {
    ScriptedHeap heap;
    List* list = make({1, 2, 3});
    EXPECT_EQ(ListDestroyList(list, 0), list) << "ListDestroyList(list, 0)";
    EXPECT_EQ(walk(list), "[]") << "after ListDestroyList(list, 0)";
    EXPECT_EQ(heap.Outstanding(), 1) << "only the header is left";
    ListAppendNode(list, 4);
    EXPECT_EQ(walk(list), "[4 ]") << "appending after ListDestroyList(list, 0)";
    EXPECT_EQ(ListDestroyList(nullptr, 0), nullptr) << "ListDestroyList(null, 0)";
    ListDestroyList(list, 1);
    EXPECT_EQ(heap.Outstanding(), 0);
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
