#include "StringProperty.h"

#include <algorithm>
#include <new>

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {

// Position of the first allowed value equal to `text`, or values.size().
std::size_t FindAllowed(const std::vector<std::string>& values, const char* text) {
    if (text == nullptr) return values.size();
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] == text) return i;
    }
    return values.size();
}

}  // namespace

StringProperty::StringProperty(const NameAndDescription& nd, const std::string& value,
                               const std::vector<std::string>& allowed,
                               const std::vector<ValueAttribute>& attributes)
    : Property(nd),
      m_allowedValues(allowed),
      m_allowedAttributes(attributes),
      m_value(value),
      m_replacableAllowed(NotReplacable) {
    // A value outside the list is replaced by the first allowed value, but only for an
    // editable, enabled property; otherwise the given value stands.
    if (m_allowedValues.empty() || !IsEditable() || IsDisabled()) return;
    if (FindAllowed(m_allowedValues, m_value.c_str()) == m_allowedValues.size()) {
        m_value = m_allowedValues.front();
        if (!m_allowedAttributes.empty()) ApplyAttribute(m_allowedAttributes.front());
    } else {
        UpdateChildKey();
    }
}

// The copy reads the source through its interface: a read-only source presents no allowed
// values, so its copy carries the attributes but not the values. No child-key update is
// made; the copied Property part already holds the source's keys.
StringProperty::StringProperty(const StringProperty& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), Property(source), IStringProperty(),
      m_value(source.GetValue()),
      m_replacableAllowed(source.m_replacableAllowed) {
    const_cast<StringProperty&>(source).GetAllowedAttributes(m_allowedAttributes);
    std::uint32_t count = 0;
    source.HasAllowedValues(count);
    if (count != 0) {
        std::vector<const char*> values(count, nullptr);
        source.GetAllowedValues(values.data());
        for (const char* v : values) m_allowedValues.emplace_back(v);
    }
}

StringProperty::~StringProperty() = default;

IStringProperty* StringProperty::Construct(const NameAndDescription& nd, const std::string& value,
                                           const std::vector<std::string>& allowed,
                                           const std::vector<ValueAttribute>& attributes) {
    return new (std::nothrow) StringProperty(nd, value, allowed, attributes);
}

IStringProperty* StringProperty::Construct(const NameAndDescription& nd, const std::string& value) {
    return Construct(nd, value, {}, {});
}

void* StringProperty::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        case ClassID_IStringProperty: answer = static_cast<IStringProperty*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

const char* StringProperty::GetValue() const { return m_value.c_str(); }

void StringProperty::SetValue(const char* value) {
    if (value == nullptr) return;
    if (m_allowedValues.empty()) {
        m_value = value;  // free text: the child key stays as it is
        return;
    }
    // A value outside the list is dropped silently; a disabled allowed value can still be chosen.
    if (FindAllowed(m_allowedValues, value) == m_allowedValues.size()) return;
    if (m_value == value) return;
    m_value = value;
    UpdateChildKey();
}

bool StringProperty::HasAllowedValues(std::uint32_t& count) const {
    // A read-only string presents itself as free text.
    if (!IsEditable()) {
        count = 0;
        return false;
    }
    count = static_cast<std::uint32_t>(m_allowedValues.size());
    return count != 0;
}

void StringProperty::GetAllowedValues(const char** out) const {
    for (std::size_t i = 0; i < m_allowedValues.size(); ++i) out[i] = m_allowedValues[i].c_str();
}

void StringProperty::AddAllowedValues(const char* value) {
    if (value == nullptr) return;
    if (m_allowedValues.empty()) {
        m_value = value;  // the first allowed value is also the initial selection
        m_allowedValues.emplace_back(value);
    } else if (FindAllowed(m_allowedValues, value) == m_allowedValues.size()) {
        m_allowedValues.emplace_back(value);
    }
    UpdateChildKey();
}

void StringProperty::AddAllowedAttributes(ValueAttribute attribute) {
    // Duplicates are dropped, so two values with identical attributes fall out of step:
    // database authors give every allowed value its own attribute.
    if (std::find(m_allowedAttributes.begin(), m_allowedAttributes.end(), attribute) == m_allowedAttributes.end()) {
        m_allowedAttributes.push_back(attribute);
    }
    UpdateChildKey();
}

void StringProperty::GetAllowedAttributes(std::vector<ValueAttribute>& out) {
    out.insert(out.end(), m_allowedAttributes.begin(), m_allowedAttributes.end());
}

void StringProperty::ApplyAttribute(const ValueAttribute& attribute) {
    // An allowed value without a key name selects the sub-properties keyed by its own text.
    SetChildKey(attribute.KeyName().empty() ? m_value.c_str() : attribute.KeyName().c_str());
    SetCategory(attribute.Category());
    SetEnumValue(static_cast<std::int32_t>(attribute.EnumValue()));
    SetHaltCPU(attribute.HaltCpu());
    SetSameLevelKey(attribute.SameLevelKey().c_str());
}

void StringProperty::UpdateChildKey() {
    const std::size_t paired = std::min(m_allowedValues.size(), m_allowedAttributes.size());
    for (std::size_t i = 0; i < paired; ++i) {
        if (m_allowedValues[i] == m_value) {
            ApplyAttribute(m_allowedAttributes[i]);
            return;
        }
    }
}

void StringProperty::DisableAllowed(const char* value, bool enable) {
    if (value == nullptr) return;
    for (std::size_t i = 0; i < m_allowedValues.size(); ++i) {
        // A value without an attribute at its position has nothing to mark.
        if (m_allowedValues[i] == value && i < m_allowedAttributes.size()) {
            m_allowedAttributes[i].SetDisabled(!enable);
        }
    }
}

bool StringProperty::IsDisabledAllowed(const char* value) {
    const std::size_t at = FindAllowed(m_allowedValues, value);
    if (at == m_allowedValues.size() || at >= m_allowedAttributes.size()) return false;
    return m_allowedAttributes[at].IsDisabled();
}

void StringProperty::SetReplacableAllowed(eREPLACABLE replacable) { m_replacableAllowed = replacable; }
eREPLACABLE StringProperty::IsReplacableAllowed() { return m_replacableAllowed; }

void StringProperty::ClearAllAllowed() {
    m_allowedValues.clear();
    m_allowedAttributes.clear();
}

bool StringProperty::IsEqual(StringProperty& other) { return m_value == other.GetValue(); }

}  // namespace TargetOperations
