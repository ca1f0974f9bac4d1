#pragma once

#include <string>
#include <vector>

#include "AllowedItems.h"
#include "IStringProperty.h"
#include "Property.h"
#include "ValueAttribute.h"

namespace TargetOperations {

// The enumerated choice of the model: choosing a value rewrites the child key, category,
// enumeration value, halt-CPU flag and same-level key from that value's attribute.
class RLX_API StringProperty : public Property, public IStringProperty {
public:
    static IStringProperty* Construct(const NameAndDescription& nd, const std::string& value,
                                      const std::vector<std::string>& allowed,
                                      const std::vector<ValueAttribute>& attributes);
    static IStringProperty* Construct(const NameAndDescription& nd, const std::string& value);

    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // IStringProperty
    const char* GetValue() const override;
    void SetValue(const char* value) override;
    bool HasAllowedValues(std::uint32_t& count) const override;
    void GetAllowedValues(const char** out) const override;

    // Appended to Property's table, in this order.
    virtual void AddAllowedValues(const char* value);
    virtual void AddAllowedAttributes(ValueAttribute attribute);
    virtual void GetAllowedAttributes(std::vector<ValueAttribute>& out);
    virtual void UpdateChildKey();
    // Inverted flag, kept: enable == false marks the value disabled.
    virtual void DisableAllowed(const char* value, bool enable);
    virtual bool IsDisabledAllowed(const char* value);
    virtual void SetReplacableAllowed(eREPLACABLE replacable);
    virtual eREPLACABLE IsReplacableAllowed();
    virtual void ClearAllAllowed();

    using Property::IsEqual;
    bool IsEqual(StringProperty& other);

protected:
    StringProperty(const NameAndDescription& nd, const std::string& value,
                   const std::vector<std::string>& allowed,
                   const std::vector<ValueAttribute>& attributes);
    StringProperty(const StringProperty& source);
    ~StringProperty() override;

private:
    friend class Property;  // Clone
    void ApplyAttribute(const AllowedItems::Attribute& attribute);

    AllowedItems m_allowed;  // values, and the attributes at the same positions
    std::string m_value;
    eREPLACABLE m_replacableAllowed;
};

}  // namespace TargetOperations
