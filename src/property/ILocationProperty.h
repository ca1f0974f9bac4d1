#pragma once

#include <cstdint>

#include "IProperty.h"

namespace TargetOperations {

class RLX_API ILocationProperty : public virtual IProperty {
public:
    virtual std::uint32_t GetValue(std::uint32_t& page) const = 0;
    // Only page 0 is offered: a value on any other page is dropped.
    virtual void SetValue(std::uint32_t value, std::uint32_t page) = 0;
    virtual std::uint32_t NumAllowedPages() const = 0;
    virtual void GetAllowedPages(std::uint32_t* out) const = 0;
    virtual std::uint32_t GetCookie() const = 0;
    virtual void SetCookie(std::uint32_t cookie) = 0;
};

}  // namespace TargetOperations
