// Pruning and disabling allowed values of string properties.

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "../property/ValueAttribute.h"
#include "../xmldb/PropertyDB.h"
#include "HeldProperties.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"

using namespace TargetOperations;

extern "C" {

void RemoveAllowedFromDB(std::uint32_t dbNumber, const char* propertyName, const char* value) {
    if (propertyName == nullptr || value == nullptr) return;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        if (database == nullptr) return;
        auto* property = dynamic_cast<TargetOperations::StringProperty*>(database->FindByName(propertyName));
        if (property == nullptr) return;

        // A property that announces no allowed values (a read-only one included) yields an
        // empty snapshot, so it ends with none at all.
        std::vector<std::string> values;
        std::uint32_t count = 0;
        if (property->HasAllowedValues(count) && count != 0) {
            std::vector<const char*> raw(count);
            property->GetAllowedValues(raw.data());
            values.assign(raw.begin(), raw.end());
        }
        std::vector<ValueAttribute> attributes;
        property->GetAllowedAttributes(attributes);

        property->ClearAllAllowed();
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (values[i] == value) continue;
            property->AddAllowedValues(values[i].c_str());
            // Values without an attribute at their position keep none.
            if (i < attributes.size()) property->AddAllowedAttributes(attributes[i]);
        }
    } catch (...) {
    }
}

void DisableChildForDisabledAllowed(TargetOperations::IProperty* property, bool disable) {
    if (property == nullptr) return;
    try {
        const HeldProperties children = HeldProperties::ChildrenOf(*property);

        if (auto* choice = dynamic_cast<TargetOperations::StringProperty*>(property)) {
            const std::string current = choice->GetValue();
            if (!disable || choice->IsDisabledAllowed(current.c_str())) {
                // The flag of DisableAllowed is inverted: false marks the value disabled.
                choice->DisableAllowed(current.c_str(), !disable);
                for (IProperty* child : children.Items()) {
                    if (auto* childProperty = dynamic_cast<Property*>(child)) childProperty->DisableAllLevel(disable);
                }
            }
        }

        for (IProperty* child : children.Items()) DisableChildForDisabledAllowed(child, disable);
    } catch (...) {
    }
}

}  // extern "C"
