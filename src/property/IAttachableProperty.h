// A node that accepts children.
#pragma once

#include "IProperty.h"

namespace TargetOperations {

class RLX_API IAttachableProperty : public virtual IProperty {
public:
    // Takes over the caller's reference to child.
    virtual void AddChild(IProperty* child) = 0;
};

}  // namespace TargetOperations
