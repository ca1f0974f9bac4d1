#include "ReplaceableExpansion.h"

#include <cstdint>
#include <vector>

#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "../property/ValueAttribute.h"
#include "../xmldb/PropertyDB.h"
#include "HeldProperties.h"
#include "ReplacementRecordSources.h"

namespace TargetOperations {

namespace {

void ApplyPropertyReplacement(const std::vector<IProperty*>& properties, const ReplacementRecord& record) {
    for (IProperty* element : properties) {
        auto* property = dynamic_cast<Property*>(element);
        if (property == nullptr) continue;
        if (!property->IsKeyName(record.keyName.c_str())) continue;
        if (property->GetKeyNumber(record.keyName.c_str()) != record.keyNumber) continue;
        property->SetName(record.newName.c_str());
        property->SetDescription(record.newDescription.c_str());
        property->SetEnumValue(static_cast<std::int32_t>(record.enumValue));
        property->SetReplacable(NotReplacable);
        return;
    }
}

void RunPropertyPass(const std::vector<IProperty*>& properties) {
    ReplacementRecord record;
    while (ReadPropertyReplacement(record)) ApplyPropertyReplacement(properties, record);

    for (IProperty* element : properties) {
        auto* property = dynamic_cast<Property*>(element);
        if (property != nullptr && property->IsReplacable() == ReplacableDropKeys) property->RemoveAllKeys();
    }
}

// The records replace the snapshot entirely. A record reuses the set-aside attribute with
// its enumeration value, else a new one modelled on the first set-aside attribute. When
// nothing was set aside there is no model: the record then gets a plain attribute (empty key
// name, its own enumeration value, category 0, no halt, no same-level key), so values and
// attributes stay paired by position.
void MergeRecords(std::vector<std::string>& values, std::vector<ValueAttribute>& attributes,
                  const std::vector<ReplacementRecord>& records) {
    const std::vector<ValueAttribute> setAside = std::move(attributes);
    values.clear();
    attributes.clear();

    for (const ReplacementRecord& record : records) {
        values.push_back(record.newName);
        const ValueAttribute* match = nullptr;
        for (const ValueAttribute& attribute : setAside) {
            if (attribute.EnumValue() == record.enumValue) {
                match = &attribute;
                break;
            }
        }
        if (match != nullptr) {
            attributes.push_back(*match);
        } else if (!setAside.empty()) {
            const ValueAttribute& model = setAside.front();
            attributes.emplace_back(model.KeyName(), record.enumValue, model.Category(), model.HaltCpu(),
                                    model.SameLevelKey());
        } else {
            attributes.emplace_back("", record.enumValue, 0, false, "");
        }
    }
}

void ExpandAllowedValues(StringProperty& property) {
    std::vector<std::string> values;
    std::uint32_t count = 0;
    if (property.HasAllowedValues(count) && count != 0) {
        std::vector<const char*> raw(count);
        property.GetAllowedValues(raw.data());
        values.assign(raw.begin(), raw.end());
    }
    std::vector<ValueAttribute> attributes;
    property.GetAllowedAttributes(attributes);

    std::vector<ReplacementRecord> records;
    ReplacementRecord record;
    while (ReadAllowedReplacement(record)) records.push_back(record);

    MergeRecords(values, attributes, records);

    property.ClearAllAllowed();
    for (std::size_t i = 0; i < values.size(); ++i) {
        property.AddAllowedValues(values[i].c_str());
        property.AddAllowedAttributes(attributes[i]);
    }
}

void RunAllowedValuePass(const std::vector<IProperty*>& properties) {
    for (IProperty* element : properties) {
        auto* property = dynamic_cast<StringProperty*>(element);
        if (property != nullptr && property->IsReplacableAllowed() != NotReplacable) ExpandAllowedValues(*property);
    }
}

}  // namespace

bool HasReplaceables(const PropertyDB& database) {
    if (!database.MayHaveReplaceables()) return false;
    for (IProperty* element : database.Properties()) {
        auto* property = dynamic_cast<Property*>(element);
        if (property != nullptr && property->IsReplacable() != NotReplacable) return true;
        auto* stringProperty = dynamic_cast<StringProperty*>(element);
        if (stringProperty != nullptr && stringProperty->IsReplacableAllowed() != NotReplacable) return true;
    }
    return false;
}

void ExpandReplaceables(PropertyDB& database, const std::string& /*path*/) {
    const HeldProperties snapshot = HeldProperties::TopLevelOf(database);
    RunPropertyPass(snapshot.Items());
    RunAllowedValuePass(snapshot.Items());
}

}  // namespace TargetOperations
