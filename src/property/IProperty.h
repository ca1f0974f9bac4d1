// The read interface of every node of a property tree.
#pragma once

#include <cstdint>

#include "IReferenceCount.h"

namespace TargetOperations {

class RLX_API IProperty : public virtual ReferenceCounting::IReferenceCount {
public:
    virtual const char* GetName() const = 0;
    virtual const char* GetDescription() const = 0;
    virtual bool IsEditable() const = 0;
    virtual bool IsDisabled() const = 0;
    virtual std::uint32_t GetNumSubProperties() const = 0;
    // Fills a caller array of GetNumSubProperties() entries; each pointer carries a reference.
    virtual void GetSubProperties(IProperty** out) const = 0;
    // The parent carries a reference when it is not null.
    virtual IProperty* GetParentProperty() const = 0;
};

}  // namespace TargetOperations
