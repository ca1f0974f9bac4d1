#pragma once

#include <cstdint>
#include <string>

#include "../support/Export.h"

namespace TargetOperations {

// One key name under which a property can be selected, with the number it stands for.
class RLX_API PropertyKey {
public:
    PropertyKey(const std::string& keyName, std::uint32_t enumValue);
    PropertyKey(const PropertyKey& other);
    PropertyKey& operator=(const PropertyKey& other);
    ~PropertyKey();

    const std::string& KeyName() const;
    std::uint32_t EnumValue() const;

private:
    std::string m_keyName;
    std::uint32_t m_enumValue;
};

}  // namespace TargetOperations
