#include "DriverDB.h"

#include "DriverDBHandler.h"
#include "ParseFailureSeverities.h"
#include "ReadXmlFile.h"

namespace TargetOperations {

DriverDB::DriverDB(const std::string& fileName) : m_unnamedNumber(0), m_majorVersion(0), m_minorVersion(0) {
    Parse(fileName);
}

DriverDB::~DriverDB() = default;

std::uint32_t DriverDB::Parse(const std::string& fileName) {
    DriverDBHandler handler(this);
    return ReadXmlFile(fileName, handler, DriverDBFailureSeverities());
}

std::uint32_t DriverDB::GetRecordCount() const { return static_cast<std::uint32_t>(m_records.size()); }

void DriverDB::GetServerName(const std::string& cpuType, std::string& serverName) const {
    for (const auto& record : m_records) {
        if (record->cpuType == cpuType) {
            serverName = record->driverName;
            return;
        }
    }
    serverName.clear();
}

void DriverDB::GetDriverDetails(const std::string& cpuType, std::string& propertyFile, std::string& entityCode,
                                bool& supportsTrace) const {
    for (const auto& record : m_records) {
        if (record->cpuType == cpuType) {
            propertyFile = record->propertyFile;
            entityCode = record->entityCode;
            supportsTrace = record->supportsTrace;
            return;
        }
    }
    propertyFile.clear();  // entity code and trace flag keep the caller's values
}

}  // namespace TargetOperations
