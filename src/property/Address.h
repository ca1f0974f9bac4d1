// The host debugger's value type for one 64-bit target address.
#pragma once

#include <cstdint>

namespace Debugger {

class Address {
public:
    Address(std::uint64_t value = 0) : m_value(value) {}  // implicit on purpose
    std::uint64_t GetAddress() const { return m_value; }
    bool operator==(const Address& other) const { return m_value == other.m_value; }

private:
    std::uint64_t m_value;
};

}  // namespace Debugger
