#include "LinkBudget.h"

#include <string>

#include "../support/korvaError.h"

namespace TargetOperations {

using Kw::Mbr::Korva::korvaError;

namespace {

std::string NameOf(IProperty& property) {
    const char* name = property.GetName();
    return name != nullptr ? std::string(name) : std::string();
}

}  // namespace

LinkBudget::LinkBudget(std::uint32_t maxDepth, std::uint64_t maxNodes) : m_maxDepth(maxDepth), m_maxNodes(maxNodes) {}

void LinkBudget::EnterLevel(IProperty& property) {
    // The starting property is level 0; its sub-properties are linked one level deeper.
    if (m_depth > m_maxDepth) {
        throw korvaError("Sub-property linking stopped at \"" + NameOf(property) + "\": more than " +
                             std::to_string(m_maxDepth) + " nested levels",
                         korvaError::Error);
    }
    ++m_depth;
}

void LinkBudget::LeaveLevel() { --m_depth; }

void LinkBudget::CountLinked(IProperty& parent, std::uint64_t count) {
    m_linked += count;
    if (m_linked > m_maxNodes) {
        throw korvaError("Sub-property linking stopped at \"" + NameOf(parent) + "\": more than " +
                             std::to_string(m_maxNodes) + " linked properties",
                         korvaError::Error);
    }
}

}  // namespace TargetOperations
