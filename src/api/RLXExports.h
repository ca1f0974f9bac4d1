// The plain exported functions of the database API (C linkage, unmangled names).
#pragma once

#include <cstdint>

#include "../property/IProperty.h"
#include "../support/Export.h"

// The database number that means failure.
constexpr std::uint32_t RLX_INVALID_DB = 0xFFFFFFFFu;

extern "C" {

RLX_API std::uint32_t CreatePropertyDB(std::uint32_t cpuType, char* entityCodeName,
                                       std::uint32_t entityCodeNameSize, bool* supportsTrace,
                                       std::int32_t variant);
RLX_API std::uint32_t CreatePropertyDBByName(const char* fileName, std::int32_t variant);
RLX_API std::uint32_t AttachPropertyDB(const char* fileName, std::uint32_t dbNumber);
RLX_API void ReleasePropertyDB(std::uint32_t dbNumber);
RLX_API TargetOperations::IProperty* GetRootProperty(std::uint32_t dbNumber);
RLX_API TargetOperations::IProperty* GetRootPropertyByFile(const char* filePath);

RLX_API TargetOperations::IProperty* GetPropertyFromDB(std::uint32_t dbNumber, const char* name);
RLX_API TargetOperations::IProperty* GetPropertyFromDB_noClone(std::uint32_t dbNumber, const char* name);
RLX_API TargetOperations::IProperty* GetPropertyFromDBByEnum(std::uint32_t dbNumber, std::uint32_t enumValue);
RLX_API TargetOperations::IProperty* GetPropertyFromDBByNameEnum_noClone(std::uint32_t dbNumber,
                                                                         const char* name,
                                                                         std::uint32_t enumValue);

RLX_API void UpdateAllDBsForOCP(const char* fileName);
RLX_API void UpdateAllDBsForSCTM(const char* fileName, std::uint32_t dbNumber);
RLX_API std::uint32_t UpdateDBForCTI(const char* fileName, std::uint32_t dbNumber);
RLX_API std::uint32_t UpdateDBForCTI_XTRIG(const char* fileName, const char* allowedValue,
                                           const char* propertyName, std::uint32_t dbNumber);
RLX_API std::uint32_t UpdateDBForCTIEx(const char* allowedValue, std::uint32_t enumValue,
                                       std::uint32_t dbNumber);
RLX_API std::uint32_t UpdateSTMType(TargetOperations::IProperty* property, std::uint32_t dbNumber);

RLX_API void RemoveAllowedFromDB(std::uint32_t dbNumber, const char* propertyName, const char* value);
RLX_API void DisableChildForDisabledAllowed(TargetOperations::IProperty* property, bool disable);
RLX_API void UpdateSubProperties(std::uint32_t dbNumber, TargetOperations::IProperty* property);
RLX_API bool ConvertBack(std::uint32_t dbNumber, TargetOperations::IProperty* source,
                         TargetOperations::IProperty* destination, TargetOperations::IProperty* sourceParent,
                         TargetOperations::IProperty* destinationParent);
RLX_API bool GetRLXServerName(std::uint32_t cpuType, char* serverName, std::uint32_t serverNameSize);

}  // extern "C"
