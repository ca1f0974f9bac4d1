// The bounds of one sub-property linking operation (internal).
#pragma once

#include <cstdint>

#include "../property/IProperty.h"

namespace TargetOperations {

// Key graphs can select without end: a property whose child key selects a copy of itself,
// two properties selecting each other, a fan-out that doubles at every level. One budget
// lives for one linking operation and stops it, by throwing korvaError (severity Error)
// naming the property being linked, before it nests deeper than maxDepth levels below its
// starting property or links more than maxNodes sub-properties in all.
class LinkBudget {
public:
    static constexpr std::uint32_t kDefaultMaxDepth = 256;
    static constexpr std::uint64_t kDefaultMaxNodes = 100000;

    explicit LinkBudget(std::uint32_t maxDepth = kDefaultMaxDepth, std::uint64_t maxNodes = kDefaultMaxNodes);

    // Called before the sub-properties of property are gathered: counts one more level.
    void EnterLevel(IProperty& property);
    void LeaveLevel();
    // Called once the sub-properties of parent are gathered, with their number.
    void CountLinked(IProperty& parent, std::uint64_t count);

    std::uint32_t Depth() const { return m_depth; }
    std::uint64_t Linked() const { return m_linked; }

private:
    std::uint32_t m_maxDepth;
    std::uint64_t m_maxNodes;
    std::uint32_t m_depth = 0;
    std::uint64_t m_linked = 0;
};

// Counts one level for its lifetime, also when the level is left by an exception.
class LinkLevel {
public:
    LinkLevel(LinkBudget& budget, IProperty& property) : m_budget(budget) { m_budget.EnterLevel(property); }
    ~LinkLevel() { m_budget.LeaveLevel(); }
    LinkLevel(const LinkLevel&) = delete;
    LinkLevel& operator=(const LinkLevel&) = delete;

private:
    LinkBudget& m_budget;
};

}  // namespace TargetOperations
