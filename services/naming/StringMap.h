#pragma once

#include "services/naming/FixedString.h"

#include <memory>
#include <vector>

namespace tallyvox {

/// A small string-to-string map: an unbalanced binary search tree keyed by byte-wise
/// strcmp (so keys differ by case), which also remembers the order of insertion.
/// Nodes stay where they are until the map is cleared.
class StringMap {
public:
    struct Node {
        FixedString key;
        FixedString value;
        Node* left = nullptr;
        Node* right = nullptr;
    };

    StringMap() = default;
    StringMap(const StringMap&) = delete;
    StringMap& operator=(const StringMap&) = delete;

    /// The node holding key, or null.
    Node* find(const char* key) const;
    /// The node holding key, made with defaultValue when it is missing (both cut to 255
    /// bytes). The caller sets the value through the returned node.
    Node* getOrInsert(const char* key, const char* defaultValue = "");
    /// Forgets every entry.
    void clear();

    int count() const { return static_cast<int>(m_nodes.size()); }
    /// The nodes in the order they were inserted.
    std::vector<const Node*> insertionOrder() const;

private:
    Node* m_root = nullptr;
    std::vector<std::unique_ptr<Node>> m_nodes;
};

} // namespace tallyvox
