// Fetching one top-level property of a numbered database, as a copy or borrowed.

#include <cstdint>

#include "../xmldb/PropertyDB.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"

using namespace TargetOperations;

extern "C" {

TargetOperations::IProperty* GetPropertyFromDB(std::uint32_t dbNumber, const char* name) {
    if (name == nullptr) return nullptr;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        return database != nullptr ? database->FindPropertyByName(name) : nullptr;
    } catch (...) {
        return nullptr;
    }
}

TargetOperations::IProperty* GetPropertyFromDB_noClone(std::uint32_t dbNumber, const char* name) {
    if (name == nullptr) return nullptr;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        return database != nullptr ? database->FindByName(name) : nullptr;
    } catch (...) {
        return nullptr;
    }
}

// Borrowed although the name carries no "_noClone": hosts rely on this asymmetry.
TargetOperations::IProperty* GetPropertyFromDBByEnum(std::uint32_t dbNumber, std::uint32_t enumValue) {
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        return database != nullptr ? database->FindByEnum(static_cast<std::int32_t>(enumValue)) : nullptr;
    } catch (...) {
        return nullptr;
    }
}

TargetOperations::IProperty* GetPropertyFromDBByNameEnum_noClone(std::uint32_t dbNumber, const char* name,
                                                                 std::uint32_t enumValue) {
    if (name == nullptr) return nullptr;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        return database != nullptr ? database->FindByNameAndEnum(name, static_cast<std::int32_t>(enumValue))
                                   : nullptr;
    } catch (...) {
        return nullptr;
    }
}

}  // extern "C"
