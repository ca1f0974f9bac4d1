#pragma once

#include <cstdint>
#include <vector>

#include "IIntegerProperty.h"
#include "Property.h"

namespace TargetOperations {

class RLX_API IntegerProperty : public Property, public IIntegerProperty {
public:
    static IIntegerProperty* Construct(const NameAndDescription& nd, std::uint64_t value,
                                       std::vector<std::uint64_t>& allowed, bool hasRange);
    static IIntegerProperty* Construct(const NameAndDescription& nd, std::uint64_t value, bool hasRange);

    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // IIntegerProperty
    std::uint64_t GetValue() const override;
    void SetValue(std::uint64_t value) override;
    bool HasAllowedValues(std::uint32_t& count) const override;
    void GetAllowedValues(std::uint64_t* out) const override;
    bool HasAllowedRange(std::uint64_t& low, std::uint64_t& high) const override;
    _DisplayType GetDisplaySuggestion() const override;

    // Appended to Property's table.
    virtual void SetDisplaySuggestion(IIntegerProperty::_DisplayType display);
    virtual void AddAllowedValue(std::uint64_t value);
    virtual void SetAllowedRange(std::uint64_t low, std::uint64_t high);

    using Property::IsEqual;
    bool IsEqual(IntegerProperty& other);

protected:
    IntegerProperty(const NameAndDescription& nd, std::uint64_t value,
                    std::vector<std::uint64_t>& allowed, bool hasRange);
    IntegerProperty(const IntegerProperty& source);
    ~IntegerProperty() override;

private:
    friend class Property;  // Clone
    std::uint64_t m_value;
    std::uint64_t m_rangeLow;
    std::uint64_t m_rangeHigh;
    bool m_hasRange;
    _DisplayType m_displaySuggestion;
    std::vector<std::uint64_t> m_allowedValues;
};

}  // namespace TargetOperations
