#include "ValueAttribute.h"

namespace TargetOperations {

ValueAttribute::ValueAttribute(const std::string& keyName, std::uint32_t enumValue, std::uint32_t category,
                               bool haltCpu, const std::string& sameLevelKey)
    : m_keyName(keyName),
      m_enumValue(enumValue),
      m_category(category),
      m_haltCpu(haltCpu),
      m_sameLevelKey(sameLevelKey),
      m_disabled(false) {}

ValueAttribute::ValueAttribute(const ValueAttribute& other) = default;

ValueAttribute& ValueAttribute::operator=(const ValueAttribute& other) {
    if (this != &other) {
        m_keyName = other.m_keyName;
        m_enumValue = other.m_enumValue;
        m_category = other.m_category;
        m_haltCpu = other.m_haltCpu;
        m_sameLevelKey = other.m_sameLevelKey;
        m_disabled = other.m_disabled;
    }
    return *this;
}

ValueAttribute::~ValueAttribute() = default;

const std::string& ValueAttribute::KeyName() const { return m_keyName; }
const std::string& ValueAttribute::SameLevelKey() const { return m_sameLevelKey; }
std::uint32_t ValueAttribute::EnumValue() const { return m_enumValue; }
std::uint32_t ValueAttribute::Category() const { return m_category; }
bool ValueAttribute::HaltCpu() const { return m_haltCpu; }
bool ValueAttribute::IsDisabled() const { return m_disabled; }
void ValueAttribute::SetDisabled(bool disabled) { m_disabled = disabled; }

bool ValueAttribute::operator==(const ValueAttribute& other) const {
    // A disabled value no longer equals an enabled copy of itself.
    return m_keyName == other.m_keyName && m_enumValue == other.m_enumValue &&
           m_category == other.m_category && m_haltCpu == other.m_haltCpu &&
           m_sameLevelKey == other.m_sameLevelKey && m_disabled == other.m_disabled;
}

}  // namespace TargetOperations
