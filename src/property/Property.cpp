#include "Property.h"

#include <atomic>
#include <cstring>
#include <string_view>

#include "BooleanProperty.h"
#include "IntegerProperty.h"
#include "LocationProperty.h"
#include "LocationProperty2.h"
#include "StringProperty.h"

namespace TargetOperations {

using namespace ReferenceCounting;

namespace {

const char kTestKey[] = "TESTKEY";

// Counts key changes of every property in the process. Different trees may live on different
// threads, so the counter itself is atomic; nothing is ordered by it.
std::atomic<std::uint64_t> g_keysGeneration{0};

// Key names keep their whole length: a name with a zero byte never equals a C string.
bool SameText(std::string_view stored, const char* text) { return text != nullptr && stored == text; }

}  // namespace

Property::Property(const NameAndDescription& nd)
    : m_texts(nd),
      m_category(0),
      m_enumValue(0),
      m_editable(true),
      m_disabled(false),
      m_haltCpu(false),
      m_replacable(NotReplacable),
      m_parent(nullptr),
      m_keysStamp(0) {}

Property::Property(const Property& source)
    : IReferenceCount(),
      IProperty(),
      IAttachableProperty(),
      ReferenceCount(source),
      m_texts(source.m_texts),
      m_keys(source.m_keys),
      m_category(source.m_category),
      m_enumValue(source.m_enumValue),
      m_linkKeys(source.m_linkKeys),
      m_editable(source.m_editable),
      m_disabled(source.m_disabled),
      m_haltCpu(source.m_haltCpu),
      m_replacable(source.m_replacable),
      m_parent(nullptr),
      m_keysStamp(0) {
    // Deep copy: every child is cloned through the source's counted interface.
    const std::uint32_t count = source.GetNumSubProperties();
    std::vector<IProperty*> children(count, nullptr);
    if (count != 0) source.GetSubProperties(children.data());
    for (IProperty* child : children) {
        if (Property* childProperty = dynamic_cast<Property*>(child)) {
            if (IProperty* copy = childProperty->Clone()) AddChild(copy);
        }
        if (child != nullptr) child->Release();
    }
}

Property::~Property() {
    // A child kept alive elsewhere must not point at its dead parent.
    for (IProperty* child : m_children) {
        if (Property* childProperty = dynamic_cast<Property*>(child)) childProperty->SetParent(nullptr);
    }
    RemoveAllSubProperties();
}

IProperty* Property::Construct(const NameAndDescription& nd) {
    return new Property(nd);
}

void* Property::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IAttachableProperty: answer = static_cast<IAttachableProperty*>(this); break;
        case ClassID_IProperty: answer = static_cast<IProperty*>(this); break;
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        default: return nullptr;
    }
    AddRef();
    return answer;
}

const char* Property::GetName() const { return m_texts.Name(); }
const char* Property::GetDescription() const { return m_texts.Description(); }
bool Property::IsEditable() const { return m_editable; }
bool Property::IsDisabled() const { return m_disabled; }

std::uint32_t Property::GetNumSubProperties() const {
    return static_cast<std::uint32_t>(m_children.size());
}

void Property::GetSubProperties(IProperty** out) const {
    for (std::size_t i = 0; i < m_children.size(); ++i) {
        m_children[i]->AddRef();
        out[i] = m_children[i];
    }
}

void Property::GetSubProperties(std::vector<IProperty*>& out) const {
    for (IProperty* child : m_children) {
        child->AddRef();
        out.push_back(child);
    }
}

void Property::GetSubProperties(IProperty* p, std::vector<IProperty*>& out) {
    const std::uint32_t count = p->GetNumSubProperties();
    std::vector<IProperty*> fetched(count, nullptr);
    if (count != 0) p->GetSubProperties(fetched.data());
    out.insert(out.end(), fetched.begin(), fetched.end());
}

IProperty* Property::GetParentProperty() const {
    if (m_parent != nullptr) m_parent->AddRef();
    return m_parent;
}

void Property::AddChild(IProperty* child) {
    // The array takes over the caller's reference.
    m_children.push_back(child);
    if (Property* childProperty = dynamic_cast<Property*>(child)) childProperty->SetParent(this);
}

void Property::AddChild(IProperty* parent, IProperty* child) {
    if (IAttachableProperty* attachable = dynamic_cast<IAttachableProperty*>(parent)) attachable->AddChild(child);
}

void Property::SetParent(Property* parent) {
    m_parent = parent != nullptr ? static_cast<IProperty*>(parent) : nullptr;
}

void Property::RemoveAllSubProperties() {
    std::vector<IProperty*> released;
    released.swap(m_children);
    for (IProperty* child : released) child->Release();
}

bool Property::IsHaltCPU() const { return m_haltCpu; }
void Property::SetHaltCPU(bool haltCpu) { m_haltCpu = haltCpu; }
void Property::SetEditable(bool editable) { m_editable = editable; }
void Property::SetDisabled(bool disabled) { m_disabled = disabled; }
void Property::SetCategory(std::uint32_t category) { m_category = category; }
std::uint32_t Property::GetCategory() const { return m_category; }
void Property::SetEnumValue(std::int32_t enumValue) { m_enumValue = enumValue; }
std::int32_t Property::GetEnumValue() const { return m_enumValue; }

void Property::SetChildKey(const char* childKey) {
    m_linkKeys.SetFirst(childKey);
}

const char* Property::GetChildKey() const { return m_linkKeys.First(); }

void Property::SetSameLevelKey(const char* sameLevelKey) {
    m_linkKeys.SetSecond(sameLevelKey);
}

const char* Property::GetSameLevelKey() const { return m_linkKeys.Second(); }

void Property::SetName(const char* name) { m_texts.SetName(name); }
void Property::SetDescription(const char* description) { m_texts.SetDescription(description); }
void Property::SetReplacable(eREPLACABLE replacable) { m_replacable = replacable; }
eREPLACABLE Property::IsReplacable() { return m_replacable; }

void Property::AddKeyName(const PropertyKey& key) {
    m_keys.push_back(key);
    KeysChanged();
}

void Property::RemoveAllKeys() {
    m_keys.clear();
    KeysChanged();
}

std::uint64_t Property::KeysGeneration() { return g_keysGeneration.load(std::memory_order_relaxed); }

void Property::KeysChanged() { m_keysStamp = g_keysGeneration.fetch_add(1, std::memory_order_relaxed) + 1; }

bool Property::IsKeyName(const char* name) const {
    if (name == nullptr) return false;
    // A keyless property whose child key is "TESTKEY" accepts exactly that one name.
    if (m_keys.empty() && std::strcmp(m_linkKeys.First(), kTestKey) == 0 && std::strcmp(name, kTestKey) == 0) return true;
    for (const PropertyKeyList::Key key : m_keys) {
        if (SameText(key.name, name)) return true;
    }
    return false;
}

std::uint32_t Property::GetKeyNumber(const char* name) const {
    for (const PropertyKeyList::Key key : m_keys) {
        if (SameText(key.name, name)) return key.enumValue;
    }
    return 0;
}

IProperty* Property::Clone() {
    // The concrete class decides the copy; the first matching test wins.
    if (BooleanProperty* p = dynamic_cast<BooleanProperty*>(this)) return new BooleanProperty(*p);
    if (IntegerProperty* p = dynamic_cast<IntegerProperty*>(this)) return new IntegerProperty(*p);
    if (LocationProperty* p = dynamic_cast<LocationProperty*>(this)) return new LocationProperty(*p);
    if (LocationProperty2* p = dynamic_cast<LocationProperty2*>(this)) return new LocationProperty2(*p);
    if (StringProperty* p = dynamic_cast<StringProperty*>(this)) return new StringProperty(*p);
    return new Property(*this);
}

namespace {

// True when `self` is not of class T, or when both are of class T and T's comparison holds.
template <typename T>
bool TypedPartEqual(Property& self, Property& other, bool& decided) {
    T* mine = dynamic_cast<T*>(&self);
    if (mine == nullptr) return true;
    decided = true;
    T* theirs = dynamic_cast<T*>(&other);
    return theirs != nullptr && mine->IsEqual(*theirs);
}

}  // namespace

bool Property::IsEqual(Property& other) {
    if (std::strcmp(GetName(), other.GetName()) != 0) return false;

    bool decided = false;
    if (!TypedPartEqual<BooleanProperty>(*this, other, decided)) return false;
    if (!decided && !TypedPartEqual<IntegerProperty>(*this, other, decided)) return false;
    if (!decided && !TypedPartEqual<LocationProperty>(*this, other, decided)) return false;
    if (!decided && !TypedPartEqual<LocationProperty2>(*this, other, decided)) return false;
    if (!decided && !TypedPartEqual<StringProperty>(*this, other, decided)) return false;

    if (GetNumSubProperties() != other.GetNumSubProperties()) return false;

    // The references taken here on other's children are never given back: a tree that has
    // been compared stays alive. Callers rely on this long-standing behaviour.
    std::vector<IProperty*> theirs;
    other.GetSubProperties(theirs);
    for (std::size_t i = 0; i < m_children.size(); ++i) {
        Property* mine = dynamic_cast<Property*>(m_children[i]);
        Property* their = dynamic_cast<Property*>(theirs[i]);
        if (mine == nullptr || their == nullptr || !mine->IsEqual(*their)) return false;
    }
    return true;
}

void Property::UpdateSelf() {}

void Property::DisableAllLevel(bool disabled) {
    SetDisabled(disabled);
    for (IProperty* child : m_children) {
        if (Property* childProperty = dynamic_cast<Property*>(child)) childProperty->DisableAllLevel(disabled);
    }
}

void Property::TestInvariant() const {}

}  // namespace TargetOperations
