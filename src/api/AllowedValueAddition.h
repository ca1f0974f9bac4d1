// The one form in which the database API adds an allowed value to a string property
// (internal).
#pragma once

#include <cstdint>
#include <string>

namespace TargetOperations {

class StringProperty;

// AddAllowedValues(value), then AddAllowedAttributes with an attribute of key name keyName,
// enumeration value enumValue, category 0, no CPU halt and no same-level key.
void AddAllowedValueWithKey(StringProperty& property, const char* value, const std::string& keyName,
                            std::uint32_t enumValue);

}  // namespace TargetOperations
