#include "StringProperty.h"

#include <algorithm>
#include <new>
#include <typeinfo>

namespace TargetOperations {

using namespace ReferenceCounting;

StringProperty::StringProperty(const NameAndDescription& nd, const std::string& value,
                               const std::vector<std::string>& allowed,
                               const std::vector<ValueAttribute>& attributes)
    : Property(nd),
      m_allowed(allowed, attributes),
      m_value(value),
      m_replacableAllowed(NotReplacable) {
    // A value outside the list is replaced by the first allowed value, but only for an
    // editable, enabled property; otherwise the given value stands.
    if (!m_allowed.HasValues() || !IsEditable() || IsDisabled()) return;
    if (m_allowed.FindValue(m_value) == m_allowed.ValueCount()) {
        m_value = m_allowed.Value(0);
        if (m_allowed.AttributeCount() != 0) ApplyAttribute(m_allowed.AttributeAt(0));
    } else {
        UpdateChildKey();
    }
}

// The copy reads the source through its interface: a read-only source presents no allowed
// values, so its copy carries the attributes but not the values, and values come back as
// zero-terminated texts. No child-key update is made; the copied Property part already holds
// the source's keys.
StringProperty::StringProperty(const StringProperty& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), Property(source), IStringProperty(),
      m_value(source.GetValue()),
      m_replacableAllowed(source.m_replacableAllowed) {
    std::uint32_t count = 0;
    const bool presentsValues = source.HasAllowedValues(count);
    // A plain string property would read back exactly what it holds unless it is read-only or
    // a value holds a zero byte: then one copy of the block is the whole work.
    if (typeid(source) == typeid(StringProperty) && (presentsValues || !source.m_allowed.HasValues()) &&
        !source.m_allowed.AnyValueHoldsZero()) {
        m_allowed = source.m_allowed;
        return;
    }
    std::vector<ValueAttribute> attributes;
    const_cast<StringProperty&>(source).GetAllowedAttributes(attributes);
    std::vector<std::string> values;
    if (count != 0) {
        std::vector<const char*> texts(count, nullptr);
        source.GetAllowedValues(texts.data());
        values.assign(texts.begin(), texts.end());
    }
    m_allowed = AllowedItems(values, attributes);
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
    if (!m_allowed.HasValues()) {
        m_value = value;  // free text: the child key stays as it is
        return;
    }
    // A value outside the list is dropped silently; a disabled allowed value can still be chosen.
    if (m_allowed.FindValue(value) == m_allowed.ValueCount()) return;
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
    count = static_cast<std::uint32_t>(m_allowed.ValueCount());
    return count != 0;
}

void StringProperty::GetAllowedValues(const char** out) const {
    // Every value in the block is followed by a zero byte.
    const std::size_t count = m_allowed.ValueCount();
    for (std::size_t i = 0; i < count; ++i) out[i] = m_allowed.Value(i).data();
}

void StringProperty::AddAllowedValues(const char* value) {
    if (value == nullptr) return;
    if (!m_allowed.HasValues()) {
        m_value = value;  // the first allowed value is also the initial selection
        m_allowed.AddValue(value);
    } else if (m_allowed.FindValue(value) == m_allowed.ValueCount()) {
        m_allowed.AddValue(value);
    }
    UpdateChildKey();
}

void StringProperty::AddAllowedAttributes(ValueAttribute attribute) {
    // Duplicates are dropped, so two values with identical attributes fall out of step:
    // database authors give every allowed value its own attribute.
    if (!m_allowed.HoldsAttribute(attribute)) m_allowed.AddAttribute(attribute);
    UpdateChildKey();
}

void StringProperty::GetAllowedAttributes(std::vector<ValueAttribute>& out) {
    m_allowed.AppendAttributesTo(out);
}

void StringProperty::ApplyAttribute(const AllowedItems::Attribute& attribute) {
    // An allowed value without a key name selects the sub-properties keyed by its own text.
    // The attribute was read from the block, where a zero byte follows each text.
    SetChildKey(attribute.keyName.empty() ? m_value.c_str() : attribute.keyName.data());
    SetCategory(attribute.category);
    SetEnumValue(static_cast<std::int32_t>(attribute.enumValue));
    SetHaltCPU(attribute.haltCpu);
    SetSameLevelKey(attribute.sameLevelKey.data());
}

void StringProperty::UpdateChildKey() {
    const std::size_t paired = std::min(m_allowed.ValueCount(), m_allowed.AttributeCount());
    for (std::size_t i = 0; i < paired; ++i) {
        if (m_allowed.Value(i) == m_value) {
            ApplyAttribute(m_allowed.AttributeAt(i));
            return;
        }
    }
}

void StringProperty::DisableAllowed(const char* value, bool enable) {
    if (value == nullptr) return;
    const std::size_t count = m_allowed.ValueCount();
    for (std::size_t i = 0; i < count; ++i) {
        // A value without an attribute at its position has nothing to mark.
        if (m_allowed.Value(i) == value && i < m_allowed.AttributeCount()) m_allowed.SetDisabled(i, !enable);
    }
}

bool StringProperty::IsDisabledAllowed(const char* value) {
    if (value == nullptr) return false;
    const std::size_t at = m_allowed.FindValue(value);
    if (at == m_allowed.ValueCount() || at >= m_allowed.AttributeCount()) return false;
    return m_allowed.AttributeAt(at).disabled;
}

void StringProperty::SetReplacableAllowed(eREPLACABLE replacable) { m_replacableAllowed = replacable; }
eREPLACABLE StringProperty::IsReplacableAllowed() { return m_replacableAllowed; }

void StringProperty::ClearAllAllowed() {
    m_allowed.Clear();
}

bool StringProperty::IsEqual(StringProperty& other) { return m_value == other.GetValue(); }

}  // namespace TargetOperations
