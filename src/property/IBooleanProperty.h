#pragma once

#include "IProperty.h"

namespace TargetOperations {

class RLX_API IBooleanProperty : public virtual IProperty {
public:
    virtual bool GetValue() const = 0;
    virtual void SetValue(bool value) = 0;
};

}  // namespace TargetOperations
