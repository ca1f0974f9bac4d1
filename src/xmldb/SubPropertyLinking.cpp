#include "SubPropertyLinking.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "../property/BooleanProperty.h"
#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "PropertyDB.h"

namespace TargetOperations {

namespace {

using KeyList = std::vector<std::string>;

bool Contains(const KeyList& keys, const char* key) { return std::find(keys.begin(), keys.end(), key) != keys.end(); }

// The first key of the list under which property can be selected, or null.
const std::string* FirstMatchingKey(const Property& property, const KeyList& keys) {
    for (const std::string& key : keys) {
        if (property.IsKeyName(key.c_str())) return &key;
    }
    return nullptr;
}

void AddSameLevelKeyOnce(const Property& property, KeyList& keys) {
    const char* sameLevelKey = property.GetSameLevelKey();
    if (*sameLevelKey != '\0' && !Contains(keys, sameLevelKey)) keys.emplace_back(sameLevelKey);
}

}  // namespace

void FilterCurrentChildren(PropertyDB& /*db*/, const char* key, std::vector<IProperty*>& list) {
    KeyList keys{key};
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && property->IsKeyName(key) && *property->GetSameLevelKey() != '\0') {
            keys.emplace_back(property->GetSameLevelKey());
        }
    }

    std::vector<IProperty*> kept;
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && FirstMatchingKey(*property, keys) != nullptr) {
            kept.push_back(entry);
            AddSameLevelKeyOnce(*property, keys);
        } else {
            entry->Release();
        }
    }
    list.swap(kept);
}

std::uint32_t GatherFromDatabase(PropertyDB& db, const char* key, std::vector<IProperty*>& list) {
    if (*key == '\0') return 0;

    KeyList keys{key};
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && property->IsKeyName(key) && *property->GetSameLevelKey() != '\0') {
            keys.emplace_back(property->GetSameLevelKey());
        }
    }

    // One pass in file order: a property selected only through a same-level key that turns
    // up later in the pass is not picked up.
    for (IProperty* candidate : db.Properties()) {
        auto* source = dynamic_cast<Property*>(candidate);
        if (source == nullptr) continue;
        const std::string* firstMatch = FirstMatchingKey(*source, keys);
        if (firstMatch == nullptr) continue;
        const std::string matched = *firstMatch;  // keys may grow below
        const std::uint32_t number = source->GetKeyNumber(matched.c_str());

        auto present = std::find_if(list.begin(), list.end(), [source](IProperty* entry) {
            return std::strcmp(entry->GetName(), source->GetName()) == 0;
        });
        if (present != list.end()) {
            if (auto* existing = dynamic_cast<Property*>(*present)) AddSameLevelKeyOnce(*existing, keys);
            if (source->IsDisabled() && !HoldSameValue(candidate, *present)) {
                IProperty* replacement = source->Clone();
                if (replacement != nullptr) {
                    (*present)->Release();
                    *present = replacement;
                }
            }
            continue;
        }

        AddSameLevelKeyOnce(*source, keys);
        IProperty* copy = source->Clone();
        if (copy == nullptr) continue;
        auto position = std::find_if(list.begin(), list.end(), [&](IProperty* entry) {
            auto* property = dynamic_cast<Property*>(entry);
            if (property == nullptr) return false;
            const std::uint32_t entryNumber = property->IsKeyName(matched.c_str())
                                                  ? property->GetKeyNumber(matched.c_str())
                                                  : property->GetKeyNumber(key);
            return entryNumber > number;
        });
        list.insert(position, copy);
    }
    return static_cast<std::uint32_t>(list.size());
}

bool HoldSameValue(IProperty* left, IProperty* right) {
    auto* leftProperty = dynamic_cast<Property*>(left);
    auto* rightProperty = dynamic_cast<Property*>(right);
    if (leftProperty == nullptr || rightProperty == nullptr) return false;

    auto* leftBoolean = dynamic_cast<BooleanProperty*>(leftProperty);
    auto* rightBoolean = dynamic_cast<BooleanProperty*>(rightProperty);
    if (leftBoolean != nullptr && rightBoolean != nullptr) return leftBoolean->GetValue() == rightBoolean->GetValue();

    auto* leftString = dynamic_cast<StringProperty*>(leftProperty);
    auto* rightString = dynamic_cast<StringProperty*>(rightProperty);
    if (leftString != nullptr && rightString != nullptr) {
        return std::strcmp(leftString->GetValue(), rightString->GetValue()) == 0;
    }
    // Integers, locations and mixed pairs count as equal: only Booleans and strings are compared.
    return true;
}

void PropertyDB::LinkSubProperties(IProperty* property) {
    auto* node = dynamic_cast<Property*>(property);
    if (node == nullptr) return;

    const std::string key = node->GetChildKey();
    std::vector<IProperty*> list;  // one reference per entry
    node->GetSubProperties(list);
    FilterCurrentChildren(*this, key.c_str(), list);
    GatherFromDatabase(*this, key.c_str(), list);

    // Depth first: every entry is complete before the parent takes it.
    for (IProperty* entry : list) LinkSubProperties(entry);

    node->RemoveAllSubProperties();
    IAttachableProperty* attachable = node;
    for (IProperty* entry : list) attachable->AddChild(entry);  // the child list takes over the reference

    if (auto* boolean = dynamic_cast<BooleanProperty*>(node)) boolean->UpdateSubProperties();
}

}  // namespace TargetOperations
