// The server (driver) name that the driver table gives for a CPU type.

#include <cstdint>
#include <new>
#include <string>

#include "../support/LibraryTrace.h"
#include "../xmldb/DriverDB.h"
#include "CallerBuffer.h"
#include "CpuTypeKeys.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"
#include "XmlDbDirectory.h"

using namespace TargetOperations;
using KW_MBR::LibraryTrace;
using KW_MBR::TraceError;
using KW_MBR::TraceMessage;

namespace {


DriverDB* DriverTableForServerName(std::uint32_t cpuType, char* serverName, std::uint32_t serverNameSize) {
    if (DriverDB* cached = PropertyDbRegistry::CachedDriverTable()) return cached;

    const std::string path = XmlDbPath("rlxdvrs.xml");
    ClearCallerBuffer(serverName, serverNameSize);
    if (!XmlFileExists(path)) return nullptr;
    LibraryTrace(TraceMessage, "RLXPropertyHelper: Get server name from file %s", path.c_str());

    DriverDB* table = nullptr;
    try {
        table = new (std::nothrow) DriverDB(path);
    } catch (...) {
        LibraryTrace(TraceError, "RLXPropertyHelper: Exception error in getting server name");
        LoadFailureText(path);
        return nullptr;
    }
    if (table == nullptr) {
        LibraryTrace(TraceError, "RLXPropertyHelper: Can not find the server name for CPU %d",
                     static_cast<int>(cpuType));
        LoadFailureText(path);
        return nullptr;
    }
    PropertyDbRegistry::CacheDriverTable(table);
    return table;
}

}  // namespace

extern "C" {

bool GetRLXServerName(std::uint32_t cpuType, char* serverName, std::uint32_t serverNameSize) {
    if (serverName == nullptr) return false;
    try {
        DriverDB* table = DriverTableForServerName(cpuType, serverName, serverNameSize);
        if (table == nullptr) return false;

        // Unlike CreatePropertyDB, the 56000 range keeps its revision digit in the key.
        std::string name;
        for (const std::string& key : CpuTypeKeys(cpuType, "")) {
            table->GetServerName(key, name);
            if (!name.empty()) break;
        }
        if (!name.empty()) {
            CopyToCallerBuffer(serverName, serverNameSize, name);
        } else {
            ClearCallerBuffer(serverName, serverNameSize);
        }
        return true;
    } catch (...) {
        return false;
    }
}

}  // extern "C"
