#include "PendingText.h"

#include "NarrowText.h"

namespace TargetOperations {

void PendingText::Replace(const XMLCh* units, std::size_t length) {
    if (units == nullptr) {
        Clear();
        return;
    }
    m_units.assign(units, length);
    for (std::size_t at = length; units[at] != 0; ++at) m_units.push_back(units[at]);
    m_narrowedIsCurrent = false;
}

void PendingText::Clear() {
    m_units.clear();
    m_narrowed.clear();
    m_narrowedIsCurrent = true;
}

const std::string& PendingText::Narrowed() {
    if (!m_narrowedIsCurrent) {
        NarrowTextInto(m_units.c_str(), m_units.size(), m_narrowed);
        m_narrowedIsCurrent = true;
    }
    return m_narrowed;
}

}  // namespace TargetOperations
