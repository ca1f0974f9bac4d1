#include "LiteralLinking.h"

#include <cstring>
#include <string>

#include "property/BooleanProperty.h"
#include "property/Property.h"
#include "property/StringProperty.h"

namespace literal_linking {

using TargetOperations::BooleanProperty;
using TargetOperations::IAttachableProperty;
using TargetOperations::Property;
using TargetOperations::StringProperty;

namespace {

bool Same(const std::string& left, const char* right) { return std::strcmp(left.c_str(), right) == 0; }

bool InKeys(const std::vector<std::string>& keys, const char* key) {
    for (const std::string& k : keys) {
        if (Same(k, key)) return true;
    }
    return false;
}

// Index of the first key the property carries, or -1.
int FirstMatch(Property* property, const std::vector<std::string>& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (property->IsKeyName(keys[i].c_str())) return static_cast<int>(i);
    }
    return -1;
}

// The key, then the same-level key of every listed entry selected by that key, in list order.
std::vector<std::string> StartingKeys(const char* key, const std::vector<IProperty*>& list) {
    std::vector<std::string> keys;
    keys.emplace_back(key);
    for (IProperty* entry : list) {
        Property* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && property->IsKeyName(key) && std::strcmp(property->GetSameLevelKey(), "") != 0) {
            keys.emplace_back(property->GetSameLevelKey());
        }
    }
    return keys;
}

}  // namespace

void FilterCurrentChildren(const char* key, std::vector<IProperty*>& list) {
    std::vector<std::string> keys = StartingKeys(key, list);
    std::vector<IProperty*> kept;
    for (IProperty* entry : list) {
        Property* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && FirstMatch(property, keys) >= 0) {
            kept.push_back(entry);
            const char* sameLevel = property->GetSameLevelKey();
            if (std::strcmp(sameLevel, "") != 0 && !InKeys(keys, sameLevel)) keys.emplace_back(sameLevel);
        } else {
            entry->Release();
        }
    }
    list = kept;
}

std::uint32_t GatherFromDatabase(const std::vector<IProperty*>& database, const char* key,
                                 std::vector<IProperty*>& list) {
    if (std::strcmp(key, "") == 0) return 0;
    std::vector<std::string> keys = StartingKeys(key, list);
    for (IProperty* candidate : database) {
        Property* q = dynamic_cast<Property*>(candidate);
        if (q == nullptr) continue;
        const int matchedIndex = FirstMatch(q, keys);
        if (matchedIndex < 0) continue;
        const std::string matched = keys[static_cast<std::size_t>(matchedIndex)];
        const std::uint32_t n = q->GetKeyNumber(matched.c_str());

        std::size_t found = list.size();
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (std::strcmp(list[i]->GetName(), q->GetName()) == 0) {
                found = i;
                break;
            }
        }
        if (found < list.size()) {
            Property* e = dynamic_cast<Property*>(list[found]);
            const char* sameLevel = e != nullptr ? e->GetSameLevelKey() : "";
            if (std::strcmp(sameLevel, "") != 0 && !InKeys(keys, sameLevel)) keys.emplace_back(sameLevel);
            if (q->IsDisabled() && !HoldSameValue(q, list[found])) {
                list[found]->Release();
                list[found] = q->Clone();
            }
            continue;
        }

        const char* sameLevel = q->GetSameLevelKey();
        if (std::strcmp(sameLevel, "") != 0 && !InKeys(keys, sameLevel)) keys.emplace_back(sameLevel);
        IProperty* copy = q->Clone();
        if (copy == nullptr) continue;
        std::size_t position = list.size();
        for (std::size_t i = 0; i < list.size(); ++i) {
            Property* e = dynamic_cast<Property*>(list[i]);
            if (e == nullptr) continue;
            const std::uint32_t number =
                e->IsKeyName(matched.c_str()) ? e->GetKeyNumber(matched.c_str()) : e->GetKeyNumber(key);
            if (number > n) {
                position = i;
                break;
            }
        }
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(position), copy);
    }
    return static_cast<std::uint32_t>(list.size());
}

bool HoldSameValue(IProperty* left, IProperty* right) {
    Property* l = dynamic_cast<Property*>(left);
    Property* r = dynamic_cast<Property*>(right);
    if (l == nullptr || r == nullptr) return false;
    BooleanProperty* lb = dynamic_cast<BooleanProperty*>(l);
    BooleanProperty* rb = dynamic_cast<BooleanProperty*>(r);
    if (lb != nullptr && rb != nullptr) return lb->GetValue() == rb->GetValue();
    StringProperty* ls = dynamic_cast<StringProperty*>(l);
    StringProperty* rs = dynamic_cast<StringProperty*>(r);
    if (ls != nullptr && rs != nullptr) return std::strcmp(ls->GetValue(), rs->GetValue()) == 0;
    return true;
}

void LinkSubProperties(const std::vector<IProperty*>& database, IProperty* property) {
    Property* node = dynamic_cast<Property*>(property);
    if (node == nullptr) return;
    const std::string key = node->GetChildKey();
    std::vector<IProperty*> list;
    node->GetSubProperties(list);
    FilterCurrentChildren(key.c_str(), list);
    GatherFromDatabase(database, key.c_str(), list);
    for (IProperty* entry : list) LinkSubProperties(database, entry);
    node->RemoveAllSubProperties();
    for (IProperty* entry : list) static_cast<IAttachableProperty*>(node)->AddChild(entry);
    if (BooleanProperty* boolean = dynamic_cast<BooleanProperty*>(node)) boolean->UpdateSubProperties();
}

}  // namespace literal_linking
