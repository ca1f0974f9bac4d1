#pragma once

#include <cstdint>

#include "IProperty.h"

namespace TargetOperations {

class RLX_API IStringProperty : public virtual IProperty {
public:
    virtual const char* GetValue() const = 0;
    virtual void SetValue(const char* value) = 0;
    // A read-only string presents no allowed values (count 0, false).
    virtual bool HasAllowedValues(std::uint32_t& count) const = 0;
    virtual void GetAllowedValues(const char** out) const = 0;
};

}  // namespace TargetOperations
