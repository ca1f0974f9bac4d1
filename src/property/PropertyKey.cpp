#include "PropertyKey.h"

namespace TargetOperations {

PropertyKey::PropertyKey(const std::string& keyName, std::uint32_t enumValue)
    : m_keyName(keyName), m_enumValue(enumValue) {}

PropertyKey::PropertyKey(const PropertyKey& other) = default;
PropertyKey& PropertyKey::operator=(const PropertyKey& other) = default;
PropertyKey::~PropertyKey() = default;

const std::string& PropertyKey::KeyName() const { return m_keyName; }
std::uint32_t PropertyKey::EnumValue() const { return m_enumValue; }

}  // namespace TargetOperations
