// The keys of one property, in the order they were added (part of Property's layout).
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "PropertyKey.h"

namespace TargetOperations {

// Nearly every property of a database has a single key: that one lives in the object itself,
// so such a property needs no block of its own for its keys. Further keys follow in a vector
// that only a property with more than one key has.
class PropertyKeyList {
public:
    PropertyKeyList() = default;
    PropertyKeyList(const PropertyKeyList& other)
        : m_first(other.m_first), m_more(other.m_more ? std::make_unique<std::vector<PropertyKey>>(*other.m_more) : nullptr) {}
    PropertyKeyList& operator=(const PropertyKeyList& other) {
        if (this != &other) *this = PropertyKeyList(other);
        return *this;
    }
    PropertyKeyList& operator=(PropertyKeyList&&) = default;
    ~PropertyKeyList() = default;

    class const_iterator {
    public:
        const_iterator(const PropertyKeyList* list, std::size_t at) : m_list(list), m_at(at) {}
        const PropertyKey& operator*() const { return (*m_list)[m_at]; }
        const PropertyKey* operator->() const { return &(*m_list)[m_at]; }
        const_iterator& operator++() {
            ++m_at;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_at == other.m_at; }
        bool operator!=(const const_iterator& other) const { return m_at != other.m_at; }

    private:
        const PropertyKeyList* m_list;
        std::size_t m_at;
    };

    bool empty() const { return !m_first.has_value(); }
    std::size_t size() const { return m_first.has_value() ? 1 + (m_more ? m_more->size() : 0) : 0; }
    const PropertyKey& operator[](std::size_t at) const { return at == 0 ? *m_first : (*m_more)[at - 1]; }
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, size()); }

    void push_back(const PropertyKey& key) {
        if (m_first.has_value()) {
            if (!m_more) m_more = std::make_unique<std::vector<PropertyKey>>();
            m_more->push_back(key);
        } else {
            m_first.emplace(key);
        }
    }
    void clear() {
        m_first.reset();
        m_more.reset();
    }

private:
    std::optional<PropertyKey> m_first;
    std::unique_ptr<std::vector<PropertyKey>> m_more;  // null until a second key comes
};

}  // namespace TargetOperations
