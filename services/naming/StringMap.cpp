#include "services/naming/StringMap.h"

#include <cstring>

namespace tallyvox {

StringMap::Node* StringMap::find(const char* key) const
{
    Node* node = m_root;
    while (node != nullptr) {
        const int order = std::strcmp(key, node->key.c_str());
        if (order == 0) {
            return node;
        }
        node = order < 0 ? node->left : node->right;
    }
    return nullptr;
}

StringMap::Node* StringMap::getOrInsert(const char* key, const char* defaultValue)
{
    if (Node* existing = find(key)) {
        return existing;
    }

    auto made = std::make_unique<Node>();
    made->key.assign(key);
    made->value.assign(defaultValue);
    Node* node = made.get();

    // Compare the stored (possibly cut) key, so a long key lands where find looks for it.
    Node** link = &m_root;
    while (*link != nullptr) {
        link = std::strcmp(node->key.c_str(), (*link)->key.c_str()) < 0 ? &(*link)->left
                                                                        : &(*link)->right;
    }
    *link = node;
    m_nodes.push_back(std::move(made));
    return node;
}

void StringMap::clear()
{
    m_root = nullptr;
    m_nodes.clear();
}

std::vector<const StringMap::Node*> StringMap::insertionOrder() const
{
    std::vector<const Node*> result;
    result.reserve(m_nodes.size());
    for (const auto& node : m_nodes) {
        result.push_back(node.get());
    }
    return result;
}

} // namespace tallyvox
