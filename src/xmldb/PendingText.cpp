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
    if (total + 1 > m_narrowed.size()) m_narrowed.resize(total + 1 + total / 2);
    m_length = NarrowUnits(units, total, m_narrowed.data());  // stops at a zero unit inside
    m_narrowed[m_length] = '\0';
}

void PendingText::Clear() {
    m_length = 0;
    m_narrowed[0] = '\0';
}

}  // namespace TargetOperations
