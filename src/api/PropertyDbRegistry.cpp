#include "PropertyDbRegistry.h"

#include "../xmldb/DriverDB.h"
#include "../xmldb/PropertyDB.h"

namespace TargetOperations {

namespace {

// Plain pointers on purpose: what is still open at unload is abandoned, never torn down
// during static destruction (a host may unload us while it still holds borrowed trees).
std::vector<PropertyDbEntry*>& Entries() {
    static auto* entries = new std::vector<PropertyDbEntry*>();
    return *entries;
}

std::uint32_t g_nextNumber = 0;
DriverDB* g_driverTable = nullptr;

std::vector<PropertyDB*>& RootFileDatabases() {
    static auto* databases = new std::vector<PropertyDB*>();
    return *databases;
}

std::vector<IProperty*>& RemovedProperties() {
    static auto* properties = new std::vector<IProperty*>();
    return *properties;
}

}  // namespace

std::uint32_t PropertyDbRegistry::Add(const std::string& path, PropertyDB* database) {
    auto* entry = new PropertyDbEntry{path, g_nextNumber, database};
    ++g_nextNumber;
    Entries().push_back(entry);
    return entry->number;
}

PropertyDB* PropertyDbRegistry::Find(std::uint32_t number) {
    for (PropertyDbEntry* entry : Entries()) {
        if (entry->number == number) return entry->database;
    }
    return nullptr;
}

void PropertyDbRegistry::Release(std::uint32_t number) {
    auto& entries = Entries();
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if ((*it)->number != number) continue;
        PropertyDbEntry* entry = *it;
        entries.erase(it);
        delete entry->database;
        delete entry;
        return;
    }
}

std::vector<std::uint32_t> PropertyDbRegistry::Numbers() {
    std::vector<std::uint32_t> numbers;
    for (const PropertyDbEntry* entry : Entries()) numbers.push_back(entry->number);
    return numbers;
}

DriverDB* PropertyDbRegistry::CachedDriverTable() { return g_driverTable; }

void PropertyDbRegistry::CacheDriverTable(DriverDB* table) { g_driverTable = table; }

void PropertyDbRegistry::KeepRootFileDatabase(PropertyDB* database) {
    RootFileDatabases().push_back(database);
}

void PropertyDbRegistry::KeepRemovedProperty(IProperty* property) { RemovedProperties().push_back(property); }

}  // namespace TargetOperations
