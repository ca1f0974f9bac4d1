#include "HeldProperties.h"

#include "../xmldb/PropertyDB.h"

namespace TargetOperations {

HeldProperties HeldProperties::ChildrenOf(const IProperty& parent) {
    std::vector<IProperty*> items(parent.GetNumSubProperties(), nullptr);
    if (!items.empty()) parent.GetSubProperties(items.data());
    return HeldProperties(std::move(items));
}

HeldProperties HeldProperties::TopLevelOf(const PropertyDB& database) {
    std::vector<IProperty*> items(database.GetPropertyCount(), nullptr);
    if (!items.empty()) database.CopyProperties(items.data());
    return HeldProperties(std::move(items));
}

HeldProperties::HeldProperties(HeldProperties&& other) noexcept : m_items(std::move(other.m_items)) {
    other.m_items.clear();
}

HeldProperties& HeldProperties::operator=(HeldProperties&& other) noexcept {
    if (this != &other) {
        ReleaseAll();
        m_items = std::move(other.m_items);
        other.m_items.clear();
    }
    return *this;
}

HeldProperties::~HeldProperties() { ReleaseAll(); }

void HeldProperties::ReleaseAll() {
    for (IProperty* item : m_items) item->Release();
    m_items.clear();
}

}  // namespace TargetOperations
