// Helpers shared by the tests of the exported database API. Everything goes through the
// umbrella header and the shared library, as an outside consumer sees them.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <RLXPropertyHelper.h>

#include "TestPlatform.h"

namespace api_test {

using TargetOperations::IProperty;

struct ReleaseReference {
    void operator()(const ReferenceCounting::IReferenceCount* object) const {
        if (object != nullptr) object->Release();
    }
};

// A reference this test owns and gives back at the end of its scope.
template <typename T = IProperty>
using Owned = std::unique_ptr<T, ReleaseReference>;

// Runs from the fixture root so that every "KORVA_XMLDB" is a short relative path: the
// variant suffix rule looks for digits in the whole path, and the checkout's own location
// must not take part in it.
inline void UseXmlDirectory(const char* directory) {
    ASSERT_TRUE(rlx_test::ChangeDirectory(RLX_FIXTURES_DIR "/api"));
    ASSERT_TRUE(rlx_test::SetVariable("KORVA_XMLDB", directory));
}

inline void UseSamples() { ASSERT_TRUE(rlx_test::SetVariable("KORVA_XMLDB", RLX_SAMPLES_DIR)); }

inline std::uint32_t RefCount(const IProperty* property) {
    property->AddRef();
    return property->Release() - 1;
}

inline std::vector<IProperty*> Children(const IProperty* property) {
    std::vector<IProperty*> children(property->GetNumSubProperties());
    if (!children.empty()) property->GetSubProperties(children.data());
    for (IProperty* child : children) child->Release();  // the parent keeps them alive
    return children;
}

inline std::vector<std::string> ChildNames(const IProperty* property) {
    std::vector<std::string> names;
    for (IProperty* child : Children(property)) names.emplace_back(child->GetName());
    return names;
}

// The first child of that name, borrowed from its parent; null when there is none.
inline IProperty* Child(const IProperty* property, const std::string& name) {
    for (IProperty* child : Children(property)) {
        if (name == child->GetName()) return child;
    }
    return nullptr;
}

inline TargetOperations::StringProperty* AsString(IProperty* property) {
    return dynamic_cast<TargetOperations::StringProperty*>(property);
}
inline TargetOperations::IntegerProperty* AsInteger(IProperty* property) {
    return dynamic_cast<TargetOperations::IntegerProperty*>(property);
}
inline TargetOperations::BooleanProperty* AsBoolean(IProperty* property) {
    return dynamic_cast<TargetOperations::BooleanProperty*>(property);
}
inline TargetOperations::LocationProperty* AsLocation(IProperty* property) {
    return dynamic_cast<TargetOperations::LocationProperty*>(property);
}
inline TargetOperations::LocationProperty2* AsLocation64(IProperty* property) {
    return dynamic_cast<TargetOperations::LocationProperty2*>(property);
}
inline TargetOperations::Property* AsProperty(IProperty* property) {
    return dynamic_cast<TargetOperations::Property*>(property);
}

inline std::vector<std::string> AllowedValues(IProperty* property) {
    auto* text = AsString(property);
    std::vector<std::string> values;
    if (text == nullptr) return values;
    std::uint32_t count = 0;
    text->HasAllowedValues(count);
    std::vector<const char*> raw(count);
    if (count != 0) text->GetAllowedValues(raw.data());
    values.assign(raw.begin(), raw.end());
    return values;
}

inline std::vector<TargetOperations::ValueAttribute> AllowedAttributes(IProperty* property) {
    std::vector<TargetOperations::ValueAttribute> attributes;
    if (auto* text = AsString(property)) text->GetAllowedAttributes(attributes);
    return attributes;
}

inline std::string StringValue(IProperty* property) {
    auto* text = AsString(property);
    return text != nullptr ? text->GetValue() : "<not a string>";
}

}  // namespace api_test
