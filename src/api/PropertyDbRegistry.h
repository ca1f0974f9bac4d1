// The process-wide state of the database API: the numbered registry of open databases,
// the cached driver table and the databases opened by file for their root alone (internal).
// Callers serialise all calls into the database API, so nothing here is locked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace TargetOperations {

class PropertyDB;
class DriverDB;
class IProperty;

struct PropertyDbEntry {
    std::string path;  // the file that was loaded, after the variant suffix rule
    std::uint32_t number;
    PropertyDB* database;  // owned
};

class PropertyDbRegistry {
public:
    // Registers database under the next number and returns that number. Numbers start at 0
    // and are never reused, also not after Release.
    static std::uint32_t Add(const std::string& path, PropertyDB* database);

    // First entry with that number, front to back; null when the number is unknown.
    static PropertyDB* Find(std::uint32_t number);

    // Deletes the database of the first entry with that number and drops the entry, keeping
    // the order of the others. An unknown number is ignored.
    static void Release(std::uint32_t number);

    // Numbers of the open databases in creation order.
    static std::vector<std::uint32_t> Numbers();

    // The driver table is loaded on first need and kept for the life of the process; a table
    // that failed to load is never cached, so the next call tries again.
    static DriverDB* CachedDriverTable();
    static void CacheDriverTable(DriverDB* table);

    // Databases opened by GetRootPropertyByFile: never numbered, kept until unload so that the
    // roots handed out from them stay valid.
    static void KeepRootFileDatabase(PropertyDB* database);

    // A property taken out of a database's list keeps the database's reference here until
    // unload, so that borrowed pointers handed out before its removal stay valid.
    static void KeepRemovedProperty(IProperty* property);
};

}  // namespace TargetOperations
