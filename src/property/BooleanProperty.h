#pragma once

#include "IBooleanProperty.h"
#include "Property.h"

namespace TargetOperations {

class RLX_API BooleanProperty : public Property, public IBooleanProperty {
public:
    static IBooleanProperty* Construct(const NameAndDescription& nd, bool value);

    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // IBooleanProperty
    bool GetValue() const override;
    void SetValue(bool value) override;

    // Property overrides: a switched-off Boolean hides what its child key would select.
    const char* GetChildKey() const override;
    void UpdateSelf() override;

    // Appended to Property's table.
    virtual void SetValueNoUpdate(bool value);

    void UpdateSubProperties();
    using Property::IsEqual;
    bool IsEqual(BooleanProperty& other);

protected:
    BooleanProperty(const NameAndDescription& nd, bool value);
    BooleanProperty(const BooleanProperty& source);
    ~BooleanProperty() override;

private:
    friend class Property;  // Clone
    bool m_value;
};

}  // namespace TargetOperations
