#include "AllowedValueAddition.h"

#include "../property/StringProperty.h"
#include "../property/ValueAttribute.h"

namespace TargetOperations {

void AddAllowedValueWithKey(StringProperty& property, const char* value, const std::string& keyName,
                            std::uint32_t enumValue) {
    property.AddAllowedValues(value);
    property.AddAllowedAttributes(ValueAttribute(keyName, enumValue, 0, false, ""));
}

}  // namespace TargetOperations
