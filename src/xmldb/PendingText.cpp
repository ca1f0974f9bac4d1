#include "PendingText.h"

#include "NarrowText.h"

namespace TargetOperations {

void PendingText::ReplaceSlowly(const XMLCh* units, std::size_t length) {
    if (units == nullptr) {
        Clear();
        return;
    }
    std::size_t total = length;
    while (units[total] != 0) ++total;  // the parser's pieces normally end right at length
    if (total + 1 > m_units.size()) m_units.resize(total + 1 + total / 2);
    std::memcpy(m_units.data(), units, total * sizeof(XMLCh));
    m_units[total] = 0;
    m_length = total;
}

void PendingText::Clear() {
    m_length = 0;
    if (!m_units.empty()) m_units[0] = 0;
}

std::string_view PendingText::Narrowed() {
    if (m_length + 1 > m_narrowed.size()) m_narrowed.resize(m_length + 1 + m_length / 2);
    const std::size_t length = NarrowUnits(m_units.data(), m_length, m_narrowed.data());
    m_narrowed[length] = 0;
    return std::string_view(m_narrowed.data(), length);
}

void PendingText::NarrowInto(std::string& target) const {
    if (m_length == 0) {
        target.clear();
        return;
    }
    NarrowTextInto(m_units.data(), m_length, target);
}

}  // namespace TargetOperations
