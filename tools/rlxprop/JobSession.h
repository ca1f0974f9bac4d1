// One open property database with its linked root, as a debugger holds it while the user
// works on a job. Releases both when it goes away.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <RLXPropertyHelper.h>

namespace rlxprop {

struct JobRequest {
    std::optional<std::uint32_t> cpuType;
    std::int32_t variant = 0;
    std::string databaseName;  // a file in the XML directory
    std::string filePath;      // a file anywhere
    std::vector<std::string> attachFiles;
    std::vector<std::string> ctiFiles;
    std::vector<std::string> sctmFiles;
    std::vector<std::string> ocpFiles;
};

class JobSession {
public:
    JobSession(const std::string& directory, const JobRequest& request);
    ~JobSession();
    JobSession(const JobSession&) = delete;
    JobSession& operator=(const JobSession&) = delete;

    std::uint32_t DatabaseNumber() const { return m_number; }
    const std::string& DatabaseFile() const { return m_databaseFile; }

    // The linked root ("Type"), fetched on first use; owned by the session.
    TargetOperations::IProperty* Root();
    // Relinks the root's sub-properties after an edit.
    void Relink();

private:
    void Open(const JobRequest& request);
    void ApplyModules(const JobRequest& request);

    std::string m_directory;
    std::string m_databaseFile;
    std::uint32_t m_number = RLX_INVALID_DB;
    TargetOperations::IProperty* m_root = nullptr;
};

}  // namespace rlxprop
