#pragma once

#include <cstdint>
#include <string>

#include "../support/Export.h"

namespace TargetOperations {

// What choosing one allowed value of a string property means for the tree.
class RLX_API ValueAttribute {
public:
    ValueAttribute(const std::string& keyName, std::uint32_t enumValue, std::uint32_t category,
                   bool haltCpu, const std::string& sameLevelKey);
    ValueAttribute(const ValueAttribute& other);
    ValueAttribute& operator=(const ValueAttribute& other);
    ~ValueAttribute();

    const std::string& KeyName() const;
    const std::string& SameLevelKey() const;
    std::uint32_t EnumValue() const;
    std::uint32_t Category() const;
    bool HaltCpu() const;
    bool IsDisabled() const;
    void SetDisabled(bool disabled);

    // All six fields take part, the disabled flag included.
    bool operator==(const ValueAttribute& other) const;

private:
    std::string m_keyName;
    std::uint32_t m_enumValue;
    std::uint32_t m_category;
    bool m_haltCpu;
    std::string m_sameLevelKey;
    bool m_disabled;
};

}  // namespace TargetOperations
