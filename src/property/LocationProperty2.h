#pragma once

#include <cstdint>

#include "Address.h"
#include "ILocationProperty2.h"
#include "Property.h"

namespace TargetOperations {

// A 64-bit target address, also reachable through the 32-bit location interface.
class RLX_API LocationProperty2 : public Property, public ILocationProperty2 {
public:
    static ILocationProperty2* Construct(const NameAndDescription& nd, std::uint64_t value,
                                         std::uint32_t page, std::uint32_t cookie);
    static ILocationProperty2* Construct(const NameAndDescription& nd, std::uint64_t value);

    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // ILocationProperty (the 32-bit view)
    std::uint32_t GetValue(std::uint32_t& page) const override;
    void SetValue(std::uint32_t value, std::uint32_t page) override;
    std::uint32_t NumAllowedPages() const override;
    void GetAllowedPages(std::uint32_t* out) const override;
    std::uint32_t GetCookie() const override;
    void SetCookie(std::uint32_t cookie) override;

    // ILocationProperty2
    Debugger::Address GetValue64(std::uint32_t& page) const override;
    void SetValue64(Debugger::Address value, std::uint32_t page) override;

    // Appended to Property's table.
    virtual void SetPage(std::uint32_t page);

    using Property::IsEqual;
    // Asymmetric on purpose: copies other's page into this object and compares the full
    // 64-bit value with other's 32-bit view.
    bool IsEqual(LocationProperty2& other);

protected:
    LocationProperty2(const NameAndDescription& nd, std::uint64_t value, std::uint32_t page,
                      std::uint32_t cookie);
    LocationProperty2(const LocationProperty2& source);
    ~LocationProperty2() override;

private:
    friend class Property;  // Clone
    Debugger::Address m_value;
    std::uint32_t m_cookie;
    std::uint32_t m_page;
};

}  // namespace TargetOperations
