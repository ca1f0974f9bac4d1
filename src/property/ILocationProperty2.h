#pragma once

#include <cstdint>

#include "Address.h"
#include "ILocationProperty.h"

namespace TargetOperations {

class RLX_API ILocationProperty2 : public virtual ILocationProperty {
public:
    virtual Debugger::Address GetValue64(std::uint32_t& page) const = 0;
    virtual void SetValue64(Debugger::Address value, std::uint32_t page) = 0;
};

}  // namespace TargetOperations
