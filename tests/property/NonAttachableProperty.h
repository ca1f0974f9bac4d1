// A tree node that offers IProperty (and the host's IPropertyDescribed) but not
// IAttachableProperty. It keeps the general QueryInterface of ReferenceCount, so it shows how
// that answer follows the run-time type of the object.
#pragma once

#include <string>

#include "property/HostInterfaces.h"
#include "property/ReferenceCount.h"

namespace PropertyTests {

class NonAttachableProperty : public TargetOperations::ReferenceCount,
                              public virtual TargetOperations::IPropertyDescribed {
public:
    explicit NonAttachableProperty(const std::string& name) : m_name(name) {}

    const char* GetName() const override { return m_name.c_str(); }
    const char* GetDescription() const override { return ""; }
    bool IsEditable() const override { return false; }
    bool IsDisabled() const override { return false; }
    std::uint32_t GetNumSubProperties() const override { return 0; }
    void GetSubProperties(TargetOperations::IProperty**) const override {}
    TargetOperations::IProperty* GetParentProperty() const override { return nullptr; }

private:
    std::string m_name;
};

}  // namespace PropertyTests
