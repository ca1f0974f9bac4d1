// Opening, extending and closing numbered databases, and handing out their roots.

#include <cstdint>
#include <new>
#include <cstdio>
#include <string>

#include "../property/Property.h"
#include "../property/PropertyKey.h"
#include "../property/StringProperty.h"
#include "../support/LibraryTrace.h"
#include "../xmldb/DriverDB.h"
#include "../xmldb/PropertyDB.h"
#include "AllowedValueAddition.h"
#include "CallerBuffer.h"
#include "CpuTypeKeys.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"
#include "ReplaceableExpansion.h"
#include "XmlDbDirectory.h"

using namespace TargetOperations;
using KW_MBR::LibraryTrace;
using KW_MBR::TraceError;
using KW_MBR::TraceMessage;

namespace {

const char* const kDriverTableFile = "rlxdvrs.xml";

// Loads the driver table on first need. Returns null (after its log line) when it cannot be
// loaded; a failed table is not cached, so the next call tries again.
DriverDB* DriverTableForEntityCode(std::uint32_t cpuType, char* entityCodeName, std::uint32_t entityCodeNameSize) {
    if (DriverDB* cached = PropertyDbRegistry::CachedDriverTable()) return cached;

    const std::string path = XmlDbPath(kDriverTableFile);
    ClearCallerBuffer(entityCodeName, entityCodeNameSize);
    if (!XmlFileExists(path)) return nullptr;

    DriverDB* table = nullptr;
    try {
        table = new (std::nothrow) DriverDB(path);
    } catch (...) {
        LibraryTrace(TraceError, "RLXPropertyHelper: Exception error in getting entity code name");
        LoadFailureText(path);
        return nullptr;
    }
    if (table == nullptr) {
        LibraryTrace(TraceError, "RLXPropertyHelper: Can not find the entity code name for CPU %d",
                     static_cast<int>(cpuType));
        LoadFailureText(path);
        return nullptr;
    }
    PropertyDbRegistry::CacheDriverTable(table);
    return table;
}

// Only CPU types 56000..56999 carry a revision digit: their key is cpuType / 10 with "_" and
// the last digit as suffix. The 6455 comparison can never hold once cpuType >= 10000; it
// stays as the table's rule was written.
void SplitRevision(std::uint32_t cpuType, std::uint32_t& keyNumber, std::string& suffix) {
    keyNumber = cpuType;
    suffix.clear();
    if (cpuType / 10000 != 0 && (cpuType / 1000 == 56 || cpuType == 6455)) {
        keyNumber = cpuType / 10;
        suffix = "_" + std::to_string(cpuType % 10);
    }
}

// Replaces the end of path by "_<variant in hex>.xml". The cut length looks for "7", "9" and
// "11" anywhere in the path, directory included; hosts depend on this exact rule.
std::string ApplyVariantSuffix(const std::string& path, std::int32_t variant) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "%x", static_cast<unsigned>(variant));
    const std::string suffix = std::string("_") + hex + ".xml";

    std::size_t cut = 4;
    if (path.find('7') != std::string::npos || path.find('9') != std::string::npos) cut = 5;
    if (path.find("11") != std::string::npos) cut = 6;
    if (cut > path.size()) cut = path.size();
    return path.substr(0, path.size() - cut) + suffix;
}

TargetOperations::StringProperty* RootType(const PropertyDB& database) {
    return dynamic_cast<TargetOperations::StringProperty*>(database.FindByName("Type"));
}

}  // namespace

extern "C" {

std::uint32_t CreatePropertyDB(std::uint32_t cpuType, char* entityCodeName, std::uint32_t entityCodeNameSize,
                               bool* supportsTrace, std::int32_t variant) {
    // Null out-pointers would be written through below: refuse them up front.
    if (entityCodeName == nullptr || supportsTrace == nullptr) return RLX_INVALID_DB;
    try {
        DriverDB* table = DriverTableForEntityCode(cpuType, entityCodeName, entityCodeNameSize);
        if (table == nullptr) return RLX_INVALID_DB;

        std::uint32_t keyNumber = 0;
        std::string suffix;
        SplitRevision(cpuType, keyNumber, suffix);

        std::string propertyFile;
        std::string entityCode;
        for (const std::string& key : CpuTypeKeys(keyNumber, suffix)) {
            table->GetDriverDetails(key, propertyFile, entityCode, *supportsTrace);
            if (!propertyFile.empty()) break;
        }
        if (propertyFile.empty()) return RLX_INVALID_DB;

        CopyToCallerBuffer(entityCodeName, entityCodeNameSize, entityCode);
        LibraryTrace(TraceMessage, "RLXPropertyHelper: WPH property file name %s for CPU %d", propertyFile.c_str(),
                     static_cast<int>(cpuType));
        return CreatePropertyDBByName(propertyFile.c_str(), variant);
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

std::uint32_t CreatePropertyDBByName(const char* fileName, std::int32_t variant) {
    if (fileName == nullptr) return RLX_INVALID_DB;
    try {
        std::string path = XmlDbPath(fileName);
        const std::string plain = path;
        if (variant > 0) path = ApplyVariantSuffix(path, variant);

        // Written before the existence test whatever its outcome: log readers know this line
        // by its place, not by its words.
        LibraryTrace(TraceMessage, "RLXPropertyHelper: Created DB for %s not found", path.c_str());
        if (!XmlFileExists(path)) {
            path = plain;
            if (!XmlFileExists(path)) return RLX_INVALID_DB;
        }
        LibraryTrace(TraceMessage, "RLXPropertyHelper: Create new DB for %s", path.c_str());

        PropertyDB* database = nullptr;
        try {
            database = new (std::nothrow) PropertyDB(path);
        } catch (...) {
            database = nullptr;
        }
        if (database == nullptr) {
            LibraryTrace(TraceError, "RLXPropertyHelper: Exception error in creating property database for %s",
                         path.c_str());
            return RLX_INVALID_DB;
        }

        try {
            if (HasReplaceables(*database)) ExpandReplaceables(*database, path);
        } catch (...) {
            delete database;
            throw;
        }

        const std::uint32_t number = PropertyDbRegistry::Add(path, database);
        LibraryTrace(TraceMessage, "RLXPropertyHelper: Property database %d is created.", static_cast<int>(number));
        return number;
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

std::uint32_t AttachPropertyDB(const char* fileName, std::uint32_t dbNumber) {
    if (fileName == nullptr) return RLX_INVALID_DB;
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        if (database == nullptr) return RLX_INVALID_DB;
        const std::string path = XmlDbPath(fileName);
        if (!XmlFileExists(path)) return RLX_INVALID_DB;

        std::string sourceName;
        IProperty* actions = database->FindByName("Actions");
        if (actions == nullptr) {
            // No actions list: offer trace as a further job type; only "STM Trace Type" is brought over.
            TargetOperations::StringProperty* type = RootType(*database);
            if (type == nullptr) return RLX_INVALID_DB;
            std::uint32_t count = 0;
            type->HasAllowedValues(count);
            if (count != 0) {
                AddAllowedValueWithKey(*type, "Trace", "STM TRACE", 0);
            } else if (std::string(type->GetValue()) == "Trace") {
                type->SetChildKey("STM TRACE");
            }
        } else if (IProperty* existing = database->FindPropertyByName("Trace Type")) {
            existing->Release();
            IProperty* replaced = database->FindByName("Trace Type");
            database->RemoveByName("Trace Type");
            if (replaced != nullptr) PropertyDbRegistry::KeepRemovedProperty(replaced);
            sourceName = "Trace Type 0";
        } else {
            auto* actionsProperty = dynamic_cast<Property*>(actions);
            if (actionsProperty == nullptr) return RLX_INVALID_DB;
            actionsProperty->RemoveAllKeys();
            actionsProperty->AddKeyName(PropertyKey("SAME AS DATA", 2));
            sourceName = "Trace Type 1";
        }

        // The module database stays alive for the rest of the process: it is never registered
        // nor released.
        auto* module = new (std::nothrow) PropertyDB(path);
        if (module == nullptr) return 0;
        if (IProperty* traceType = module->FindPropertyByName(sourceName.c_str())) {
            if (auto* renamed = dynamic_cast<Property*>(traceType)) renamed->SetName("Trace Type");
            database->AddProperty(traceType);
        }
        if (IProperty* stmTraceType = module->FindPropertyByName("STM Trace Type")) {
            database->AddProperty(stmTraceType);
        }
        return database->GetPropertyCount();
    } catch (...) {
        return RLX_INVALID_DB;
    }
}

void ReleasePropertyDB(std::uint32_t dbNumber) {
    try {
        PropertyDbRegistry::Release(dbNumber);
    } catch (...) {
    }
}

TargetOperations::IProperty* GetRootProperty(std::uint32_t dbNumber) {
    try {
        PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
        IProperty* root = database != nullptr ? database->FindPropertyByName("Type") : nullptr;
        if (root == nullptr) {
            LibraryTrace(TraceError, "RLXPropertyHelper: Failed to get root property for database %d",
                         static_cast<int>(dbNumber));
            return nullptr;
        }
        try {
            database->LinkSubProperties(root);
        } catch (...) {
            LibraryTrace(TraceError, "RLXPropertyHelper: Exception error in getting root property for database %d",
                         static_cast<int>(dbNumber));
            root->Release();
            return nullptr;
        }
        return root;
    } catch (...) {
        return nullptr;
    }
}

TargetOperations::IProperty* GetRootPropertyByFile(const char* filePath) {
    if (filePath == nullptr) return nullptr;
    try {
        LibraryTrace(TraceMessage, "RLXPropertyHelper: Create properties for test case %s.", filePath);
        if (!XmlFileExists(filePath)) return nullptr;

        PropertyDB* database = nullptr;
        try {
            database = new (std::nothrow) PropertyDB(filePath);
        } catch (...) {
            LibraryTrace(TraceError, "RLXPropertyHelper: Exception error in creating properties");
            LoadFailureText(filePath);
            return nullptr;
        }
        if (database == nullptr) {
            LibraryTrace(TraceError, "RLXPropertyHelper: Failed to create properties for test case %s.", filePath);
            LoadFailureText(filePath);
            return nullptr;
        }

        IProperty* root = database->FindPropertyByName("Type");
        if (root != nullptr) {
            try {
                database->LinkSubProperties(root);
            } catch (...) {
                root->Release();
                delete database;
                return nullptr;
            }
        }
        PropertyDbRegistry::KeepRootFileDatabase(database);
        return root;
    } catch (...) {
        return nullptr;
    }
}

}  // extern "C"
