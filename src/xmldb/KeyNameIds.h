// Numbers for the key names of one database, in the order they were first seen (internal).
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace TargetOperations {

// An open-addressing table over the names themselves: numbering a key name the table has
// seen allocates nothing, and a new name costs one string (short names none at all).
class KeyNameIds {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    // The number of name, given the next free number when it is new.
    std::uint32_t Intern(std::string_view name);
    // The number of name, or kNone.
    std::uint32_t Find(std::string_view name) const;
    // How many names have numbers: they run from 0 to Count() - 1.
    std::size_t Count() const { return m_names.size(); }

private:
    std::size_t SlotOf(std::string_view name, std::size_t hash) const;
    std::uint32_t InternHashed(std::string_view name);
    void Grow();

    std::deque<std::string> m_names;     // by number; a deque never moves them
    std::vector<std::uint32_t> m_slots;  // number + 1, or 0 for an empty slot
    std::uint32_t m_lastInterned = kNone;
};

}  // namespace TargetOperations
