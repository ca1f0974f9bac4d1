// The driver table "rlxdvrs.xml": which driver, property file, entity code and trace
// support belong to each CPU type (internal).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TargetOperations {

struct DriverRecord {
    std::string cpuType;
    std::string driverName;
    std::string propertyFile;
    std::string entityCode;
    bool supportsTrace = false;
};

class DriverDB {
public:
    // Parses fileName; a parse failure leaves the constructor as a korvaError.
    explicit DriverDB(const std::string& fileName);
    virtual ~DriverDB();
    DriverDB(const DriverDB&) = delete;
    DriverDB& operator=(const DriverDB&) = delete;

    virtual std::uint32_t Parse(const std::string& fileName);

    std::uint32_t GetRecordCount() const;
    // The driver name of the first record for cpuType, or "".
    void GetServerName(const std::string& cpuType, std::string& serverName) const;
    // For the first record of cpuType; when none matches only propertyFile is set (to "").
    void GetDriverDetails(const std::string& cpuType, std::string& propertyFile,
                          std::string& entityCode, bool& supportsTrace) const;

    std::uint32_t GetMajorVersion() const { return m_majorVersion; }
    std::uint32_t GetMinorVersion() const { return m_minorVersion; }
    const std::vector<std::unique_ptr<DriverRecord>>& Records() const { return m_records; }

private:
    friend class DriverDBHandler;
    std::vector<std::unique_ptr<DriverRecord>> m_records;
    std::uint32_t m_unnamedNumber;  // target of tag code 1, which no element produces
    std::uint32_t m_majorVersion;
    std::uint32_t m_minorVersion;
};

}  // namespace TargetOperations
