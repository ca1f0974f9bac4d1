#include "LocationProperty.h"

#include <new>

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {
constexpr std::uint32_t kNoCookie = 0xFFFFFFFFu;
}  // namespace

LocationProperty::LocationProperty(const NameAndDescription& nd, std::uint32_t value, std::uint32_t page,
                                   std::uint32_t cookie)
    : Property(nd), m_value(value), m_cookie(cookie), m_page(page) {}

LocationProperty::LocationProperty(const LocationProperty& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), Property(source), ILocationProperty(),
      m_value(0), m_cookie(source.GetCookie()), m_page(0) {
    m_value = source.GetValue(m_page);
}

LocationProperty::~LocationProperty() = default;

ILocationProperty* LocationProperty::Construct(const NameAndDescription& nd, std::uint32_t value,
                                               std::uint32_t page, std::uint32_t cookie) {
    return new (std::nothrow) LocationProperty(nd, value, page, cookie);
}

ILocationProperty* LocationProperty::Construct(const NameAndDescription& nd, std::uint32_t value) {
    return Construct(nd, value, 0, kNoCookie);
}

void* LocationProperty::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_ILocationProperty: answer = static_cast<ILocationProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

std::uint32_t LocationProperty::GetValue(std::uint32_t& page) const {
    page = m_page;
    return m_value;
}

void LocationProperty::SetValue(std::uint32_t value, std::uint32_t page) {
    // Only page 0 is offered; the page argument itself is never stored.
    if (page != 0) return;
    m_value = value;
}

std::uint32_t LocationProperty::NumAllowedPages() const { return 1; }
void LocationProperty::GetAllowedPages(std::uint32_t* out) const { out[0] = 0; }
std::uint32_t LocationProperty::GetCookie() const { return m_cookie; }
void LocationProperty::SetCookie(std::uint32_t cookie) { m_cookie = cookie; }
void LocationProperty::SetPage(std::uint32_t page) { m_page = page; }

bool LocationProperty::IsEqual(LocationProperty& other) {
    std::uint32_t otherPage = 0;
    const std::uint32_t otherValue = other.GetValue(otherPage);
    return m_value == otherValue && m_page == otherPage;
}

}  // namespace TargetOperations
