#include "KeyNameIds.h"

#include <functional>

namespace TargetOperations {

namespace {

std::size_t HashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

}  // namespace

std::size_t KeyNameIds::SlotOf(std::string_view name, std::size_t hash) const {
    // Linear probing; the table is never more than half full, so an empty slot ends a search.
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_slots[slot] != 0 && m_names[m_slots[slot] - 1] != name) slot = (slot + 1) & mask;
    return slot;
}

std::uint32_t KeyNameIds::Find(std::string_view name) const {
    if (m_slots.empty()) return kNone;
    const std::uint32_t entry = m_slots[SlotOf(name, HashOf(name))];
    return entry == 0 ? kNone : entry - 1;
}

std::uint32_t KeyNameIds::Intern(std::string_view name) {
    // Neighbouring properties mostly share their key: the last name needs no hashing.
    if (m_lastInterned != kNone && m_names[m_lastInterned] == name) return m_lastInterned;
    m_lastInterned = InternHashed(name);
    return m_lastInterned;
}

std::uint32_t KeyNameIds::InternHashed(std::string_view name) {
    if ((m_names.size() + 1) * 2 > m_slots.size()) Grow();
    const std::size_t slot = SlotOf(name, HashOf(name));
    if (m_slots[slot] != 0) return m_slots[slot] - 1;
    m_names.emplace_back(name);
    m_slots[slot] = static_cast<std::uint32_t>(m_names.size());
    return static_cast<std::uint32_t>(m_names.size() - 1);
}

void KeyNameIds::Grow() {
    std::vector<std::uint32_t> slots(m_slots.empty() ? 64 : m_slots.size() * 2, 0);
    m_slots.swap(slots);
    for (std::size_t i = 0; i < m_names.size(); ++i) {
        m_slots[SlotOf(m_names[i], HashOf(m_names[i]))] = static_cast<std::uint32_t>(i + 1);
    }
}

}  // namespace TargetOperations
