#include "BooleanProperty.h"

#include <new>

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {

BooleanProperty* AsBoolean(IProperty* property) {
    return dynamic_cast<BooleanProperty*>(property);
}

// Asks the parent to re-evaluate itself when it is a Boolean; the parent's counted reference
// is given back at once.
void NotifyBooleanParent(const Property& child) {
    IProperty* parent = child.GetParentProperty();
    if (parent == nullptr) return;
    if (BooleanProperty* booleanParent = AsBoolean(parent)) booleanParent->UpdateSelf();
    parent->Release();
}

}  // namespace

BooleanProperty::BooleanProperty(const NameAndDescription& nd, bool value) : Property(nd), m_value(value) {}

BooleanProperty::BooleanProperty(const BooleanProperty& source)
    : IReferenceCount(), IProperty(), IAttachableProperty(), Property(source), IBooleanProperty(),
      m_value(source.GetValue()) {}

BooleanProperty::~BooleanProperty() = default;

IBooleanProperty* BooleanProperty::Construct(const NameAndDescription& nd, bool value) {
    return new (std::nothrow) BooleanProperty(nd, value);
}

void* BooleanProperty::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_IBooleanProperty: answer = static_cast<IBooleanProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

bool BooleanProperty::GetValue() const { return m_value; }

void BooleanProperty::SetValue(bool value) {
    if (value == m_value) return;
    m_value = value;

    // The value travels down only when every child is a Boolean.
    std::vector<IProperty*> children;
    Property::GetSubProperties(children);
    bool allBoolean = true;
    for (IProperty* child : children) allBoolean = allBoolean && AsBoolean(child) != nullptr;
    if (allBoolean) {
        for (IProperty* child : children) static_cast<IBooleanProperty*>(AsBoolean(child))->SetValue(value);
    }
    for (IProperty* child : children) child->Release();

    // Switching off may switch off the parent; switching on never informs it.
    if (!value) NotifyBooleanParent(*this);
}

void BooleanProperty::SetValueNoUpdate(bool value) { m_value = value; }

const char* BooleanProperty::GetChildKey() const {
    return m_value ? Property::GetChildKey() : "";
}

void BooleanProperty::UpdateSelf() {
    std::vector<IProperty*> children;
    Property::GetSubProperties(children);
    bool allFalseBooleans = true;
    for (IProperty* child : children) {
        BooleanProperty* booleanChild = AsBoolean(child);
        if (booleanChild == nullptr || booleanChild->GetValue()) {
            allFalseBooleans = false;
            break;
        }
    }
    for (IProperty* child : children) child->Release();
    if (!allFalseBooleans) return;

    SetValueNoUpdate(false);
    NotifyBooleanParent(*this);
}

void BooleanProperty::UpdateSubProperties() {
    std::vector<IProperty*> children;
    Property::GetSubProperties(children);
    bool pushDown = true;
    for (IProperty* child : children) {
        BooleanProperty* booleanChild = AsBoolean(child);
        if (booleanChild == nullptr || booleanChild->GetValue()) {
            pushDown = false;
            break;
        }
    }
    if (pushDown) {
        for (IProperty* child : children) {
            BooleanProperty* booleanChild = AsBoolean(child);
            booleanChild->SetValueNoUpdate(m_value);
            booleanChild->UpdateSubProperties();
        }
    }
    for (IProperty* child : children) child->Release();
}

bool BooleanProperty::IsEqual(BooleanProperty& other) { return m_value == other.GetValue(); }

}  // namespace TargetOperations
