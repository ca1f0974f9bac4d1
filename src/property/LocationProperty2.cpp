#include "LocationProperty2.h"

#include <new>

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {
constexpr std::uint32_t kNoCookie = 0xFFFFFFFFu;
}  // namespace

LocationProperty2::LocationProperty2(const NameAndDescription& nd, std::uint64_t value, std::uint32_t page,
                                     std::uint32_t cookie)
    : Property(nd), m_value(value), m_cookie(cookie), m_page(page) {}

LocationProperty2::LocationProperty2(const LocationProperty2& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), ILocationProperty(), Property(source),
      ILocationProperty2(), m_value(0), m_cookie(source.GetCookie()), m_page(0) {
    m_value = source.GetValue64(m_page);
}

LocationProperty2::~LocationProperty2() = default;

ILocationProperty2* LocationProperty2::Construct(const NameAndDescription& nd, std::uint64_t value,
                                                 std::uint32_t page, std::uint32_t cookie) {
    return new (std::nothrow) LocationProperty2(nd, value, page, cookie);
}

ILocationProperty2* LocationProperty2::Construct(const NameAndDescription& nd, std::uint64_t value) {
    return Construct(nd, value, 0, kNoCookie);
}

void* LocationProperty2::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_ILocationProperty: answer = static_cast<ILocationProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        case ClassID_ILocationProperty2: answer = static_cast<ILocationProperty2*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

std::uint32_t LocationProperty2::GetValue(std::uint32_t& page) const {
    page = m_page;
    return static_cast<std::uint32_t>(m_value.GetAddress());
}

void LocationProperty2::SetValue(std::uint32_t value, std::uint32_t page) {
    // The 32-bit view replaces the whole address; the high half is cleared.
    if (page != 0) return;
    m_value = Debugger::Address(value);
}

Debugger::Address LocationProperty2::GetValue64(std::uint32_t& page) const {
    page = m_page;
    return m_value;
}

void LocationProperty2::SetValue64(Debugger::Address value, std::uint32_t page) {
    if (page != 0) return;
    m_value = value;
}

std::uint32_t LocationProperty2::NumAllowedPages() const { return 1; }
void LocationProperty2::GetAllowedPages(std::uint32_t* out) const { out[0] = 0; }
std::uint32_t LocationProperty2::GetCookie() const { return m_cookie; }
void LocationProperty2::SetCookie(std::uint32_t cookie) { m_cookie = cookie; }
void LocationProperty2::SetPage(std::uint32_t page) { m_page = page; }

bool LocationProperty2::IsEqual(LocationProperty2& other) {
    // Kept as it always behaved: other's page lands in this object, and the full 64-bit
    // value meets other's 32-bit view, so addresses of 4 GiB and above never compare equal.
    const std::uint32_t otherLow = other.GetValue(m_page);
    return m_value.GetAddress() == static_cast<std::uint64_t>(otherLow);
}

}  // namespace TargetOperations
