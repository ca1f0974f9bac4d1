// Extending open databases with the properties of further on-chip modules. The module
// databases read here are never registered nor released: the properties handed over from
// them stay shared with them for the rest of the process.

#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "../property/StringProperty.h"
#include "../xmldb/PropertyDB.h"
#include "AllowedValueAddition.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"
#include "XmlDbDirectory.h"

using namespace TargetOperations;

namespace {

IProperty* FindRootType(const PropertyDB& database) { return database.FindByName("Type"); }

std::uint32_t AddCrossTrigger(const char* fileName, const char* allowedValue, const char* propertyName,
                              std::uint32_t dbNumber) {
    PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
    if (database == nullptr) return RLX_INVALID_DB;
    const std::string path = XmlDbPath(fileName);
    if (!XmlFileExists(path)) return RLX_INVALID_DB;

    if (IProperty* type = FindRootType(*database)) {
        auto* typeString = dynamic_cast<TargetOperations::StringProperty*>(type);
        std::uint32_t count = 0;
        if (typeString != nullptr && typeString->HasAllowedValues(count) && count != 0) {
            AddAllowedValueWithKey(*typeString, allowedValue, "CTI TOP", 0);
        }
        auto* module = new (std::nothrow) PropertyDB(path);
        if (module != nullptr) {
            if (IProperty* function = module->FindPropertyByName(propertyName)) database->AddProperty(function);
        }
    }
    return database->GetPropertyCount();
}

}  // namespace

extern "C" {

// Despite its name this is the trace-type merge of AttachPropertyDB, applied to every open
// database; hosts call it for that.
void UpdateAllDBsForOCP(const char* fileName) {
    if (fileName == nullptr) return;
    try {
        for (std::uint32_t number : PropertyDbRegistry::Numbers()) AttachPropertyDB(fileName, number);
    } catch (...) {
    }
}

// Works on the one database named, despite "All" in its name.
void UpdateAllDBsForSCTM(const char* fileName, std::uint32_t dbNumber) {
    if (fileName == nullptr) return;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        if (database == nullptr) return;
        const std::string path = XmlDbPath(fileName);
        if (!XmlFileExists(path)) return;
        auto* module = new (std::nothrow) PropertyDB(path);
        if (module == nullptr) return;

        if (IProperty* moduleType = FindRootType(*module)) {
            // Stands ahead of the database's own "Type", so every lookup by name finds it.
            module->RemoveByName("Type");
            database->InsertPropertyFirst(moduleType);
        } else if (IProperty* type = FindRootType(*database)) {
            auto* typeString = dynamic_cast<TargetOperations::StringProperty*>(type);
            if (typeString == nullptr) return;
            AddAllowedValueWithKey(*typeString, "SCTM Function", "SCTM", 0);
        }

        const std::uint32_t count = module->GetPropertyCount();
        if (count == 0) return;
        std::vector<IProperty*> properties(count);
        module->CopyProperties(properties.data());
        for (IProperty* property : properties) database->AddProperty(property);
    } catch (...) {
    }
}

std::uint32_t UpdateDBForCTI(const char* fileName, std::uint32_t dbNumber) {
    if (fileName == nullptr) return RLX_INVALID_DB;
    try {
        return AddCrossTrigger(fileName, "Cross Trigger", "CTI Function", dbNumber);
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

std::uint32_t UpdateDBForCTI_XTRIG(const char* fileName, const char* allowedValue, const char* propertyName,
                                   std::uint32_t dbNumber) {
    if (fileName == nullptr || allowedValue == nullptr || propertyName == nullptr) return RLX_INVALID_DB;
    try {
        return AddCrossTrigger(fileName, allowedValue, propertyName, dbNumber);
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

std::uint32_t UpdateDBForCTIEx(const char* allowedValue, std::uint32_t enumValue, std::uint32_t dbNumber) {
    if (allowedValue == nullptr) return RLX_INVALID_DB;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        if (database == nullptr) return RLX_INVALID_DB;
        auto* type = dynamic_cast<TargetOperations::StringProperty*>(FindRootType(*database));
        if (type != nullptr) {
            const std::string formerValue = type->GetValue();
            const std::string formerChildKey = type->GetChildKey();
            const std::int32_t formerEnumValue = type->GetEnumValue();
            AddAllowedValueWithKey(*type, allowedValue, "CTI TOP", enumValue);
            std::uint32_t count = 0;
            type->HasAllowedValues(count);
            // A formerly fixed type stays selectable beside the new one.
            if (count == 1) {
                AddAllowedValueWithKey(*type, formerValue.c_str(), formerChildKey,
                                       static_cast<std::uint32_t>(formerEnumValue));
            }
        }
        return database->GetPropertyCount();
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

std::uint32_t UpdateSTMType(TargetOperations::IProperty* property, std::uint32_t dbNumber) {
    if (property == nullptr) return RLX_INVALID_DB;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        if (database == nullptr) return RLX_INVALID_DB;
        auto* type = dynamic_cast<TargetOperations::StringProperty*>(FindRootType(*database));
        if (type == nullptr) return RLX_INVALID_DB;
        auto* copy = dynamic_cast<TargetOperations::StringProperty*>(property);
        if (copy == nullptr) return RLX_INVALID_DB;

        std::uint32_t databaseCount = 0;
        std::uint32_t copyCount = 0;
        type->HasAllowedValues(databaseCount);
        copy->HasAllowedValues(copyCount);
        if (databaseCount <= copyCount) return RLX_INVALID_DB;  // the copy is already up to date

        AddAllowedValueWithKey(*copy, "Trace", "STM TRACE", 0);
        return 0;
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

}  // extern "C"
