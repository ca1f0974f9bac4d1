#pragma once

#include <cstdint>

#include "ILocationProperty.h"
#include "Property.h"

namespace TargetOperations {

// A 32-bit target address on a memory page, with an opaque client cookie.
class RLX_API LocationProperty : public Property, public ILocationProperty {
public:
    static ILocationProperty* Construct(const NameAndDescription& nd, std::uint32_t value,
                                        std::uint32_t page, std::uint32_t cookie);
    static ILocationProperty* Construct(const NameAndDescription& nd, std::uint32_t value);

    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // ILocationProperty
    std::uint32_t GetValue(std::uint32_t& page) const override;
    void SetValue(std::uint32_t value, std::uint32_t page) override;
    std::uint32_t NumAllowedPages() const override;
    void GetAllowedPages(std::uint32_t* out) const override;
    std::uint32_t GetCookie() const override;
    void SetCookie(std::uint32_t cookie) override;

    // Appended to Property's table.
    virtual void SetPage(std::uint32_t page);

    using Property::IsEqual;
    bool IsEqual(LocationProperty& other);

protected:
    LocationProperty(const NameAndDescription& nd, std::uint32_t value, std::uint32_t page,
                     std::uint32_t cookie);
    LocationProperty(const LocationProperty& source);
    ~LocationProperty() override;

private:
    friend class Property;  // Clone
    std::uint32_t m_value;
    std::uint32_t m_cookie;
    std::uint32_t m_page;
};

}  // namespace TargetOperations
