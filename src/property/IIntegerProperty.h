#pragma once

#include <cstdint>

#include "IProperty.h"

namespace TargetOperations {

class RLX_API IIntegerProperty : public virtual IProperty {
public:
    // A hint to a user interface; the library only stores it. A database file's
    // "DISPLAYTYPE" of "DEC" gives DisplayDecimal, anything else DisplayDefault.
    enum _DisplayType : std::uint32_t { DisplayDefault = 0, DisplayDecimal = 1 };

    virtual std::uint64_t GetValue() const = 0;
    virtual void SetValue(std::uint64_t value) = 0;
    virtual bool HasAllowedValues(std::uint32_t& count) const = 0;
    virtual void GetAllowedValues(std::uint64_t* out) const = 0;
    virtual bool HasAllowedRange(std::uint64_t& low, std::uint64_t& high) const = 0;
    virtual _DisplayType GetDisplaySuggestion() const = 0;
};

}  // namespace TargetOperations
