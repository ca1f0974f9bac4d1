// Property pointers that each carry one reference, given back when the holder goes
// (internal). Walking a tree or a database through such a holder keeps every element alive
// while the walk edits what it walks.
#pragma once

#include <vector>

#include "../property/IProperty.h"

namespace TargetOperations {

class PropertyDB;

class HeldProperties {
public:
    // The sub-properties of parent, in order.
    static HeldProperties ChildrenOf(const IProperty& parent);
    // The top-level properties of database, in list order.
    static HeldProperties TopLevelOf(const PropertyDB& database);

    HeldProperties(HeldProperties&& other) noexcept;
    HeldProperties& operator=(HeldProperties&& other) noexcept;  // gives back the old ones first
    HeldProperties(const HeldProperties&) = delete;
    HeldProperties& operator=(const HeldProperties&) = delete;
    ~HeldProperties();

    const std::vector<IProperty*>& Items() const { return m_items; }

private:
    explicit HeldProperties(std::vector<IProperty*> items) : m_items(std::move(items)) {}
    void ReleaseAll();

    std::vector<IProperty*> m_items;
};

}  // namespace TargetOperations
