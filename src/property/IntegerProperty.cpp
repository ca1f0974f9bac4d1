#include "IntegerProperty.h"

#include <new>

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {
// Without a range in force, callers are told 0..0xFFFFFFFF: the largest 32-bit number.
constexpr std::uint64_t kDefaultRangeHigh = 0xFFFFFFFFull;
}  // namespace

IntegerProperty::IntegerProperty(const NameAndDescription& nd, std::uint64_t value,
                                 std::vector<std::uint64_t>& allowed, bool hasRange)
    : Property(nd),
      m_value(value),
      m_rangeLow(0),
      m_rangeHigh(kDefaultRangeHigh),
      m_hasRange(hasRange),
      m_displaySuggestion(DisplayDefault),
      m_allowedValues(allowed) {}

// Copies through the source's interface on purpose: the copy always has a range in force
// (0..0xFFFFFFFF when the source had none), and the allowed list, which the interface never
// announces, is not copied.
IntegerProperty::IntegerProperty(const IntegerProperty& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), Property(source), IIntegerProperty(),
      m_value(source.GetValue()),
      m_rangeLow(0),
      m_rangeHigh(kDefaultRangeHigh),
      m_hasRange(false),
      m_displaySuggestion(source.GetDisplaySuggestion()) {
    m_hasRange = source.HasAllowedRange(m_rangeLow, m_rangeHigh);
    std::uint32_t count = 0;
    source.HasAllowedValues(count);
    if (count != 0) {
        std::vector<std::uint64_t> values(count);
        source.GetAllowedValues(values.data());
        for (std::uint64_t v : values) AddAllowedValue(v);
    }
}

IntegerProperty::~IntegerProperty() = default;

IIntegerProperty* IntegerProperty::Construct(const NameAndDescription& nd, std::uint64_t value,
                                             std::vector<std::uint64_t>& allowed, bool hasRange) {
    return new (std::nothrow) IntegerProperty(nd, value, allowed, hasRange);
}

IIntegerProperty* IntegerProperty::Construct(const NameAndDescription& nd, std::uint64_t value, bool hasRange) {
    std::vector<std::uint64_t> none;
    return Construct(nd, value, none, hasRange);
}

void* IntegerProperty::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_IIntegerProperty: answer = static_cast<IIntegerProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

std::uint64_t IntegerProperty::GetValue() const { return m_value; }

void IntegerProperty::SetValue(std::uint64_t value) {
    // Out of range is dropped silently; the allowed list is not consulted.
    if (m_hasRange && (value < m_rangeLow || value > m_rangeHigh)) return;
    m_value = value;
}

bool IntegerProperty::HasAllowedValues(std::uint32_t& count) const {
    // Allowed integers are stored but never announced.
    count = 0;
    return false;
}

void IntegerProperty::GetAllowedValues(std::uint64_t* out) const {
    for (std::size_t i = 0; i < m_allowedValues.size(); ++i) out[i] = m_allowedValues[i];
}

bool IntegerProperty::HasAllowedRange(std::uint64_t& low, std::uint64_t& high) const {
    if (m_hasRange) {
        low = m_rangeLow;
        high = m_rangeHigh;
    } else {
        low = 0;
        high = kDefaultRangeHigh;
    }
    return true;
}

IIntegerProperty::_DisplayType IntegerProperty::GetDisplaySuggestion() const { return m_displaySuggestion; }

void IntegerProperty::SetDisplaySuggestion(IIntegerProperty::_DisplayType display) { m_displaySuggestion = display; }

void IntegerProperty::AddAllowedValue(std::uint64_t value) { m_allowedValues.push_back(value); }

void IntegerProperty::SetAllowedRange(std::uint64_t low, std::uint64_t high) {
    m_rangeLow = low;
    m_rangeHigh = high;
    m_hasRange = true;
}

bool IntegerProperty::IsEqual(IntegerProperty& other) { return m_value == other.GetValue(); }

}  // namespace TargetOperations
