#include "JobSession.h"

#include <filesystem>

#include "Diagnosis.h"
#include "ToolError.h"
#include "XmlDirectory.h"

using namespace TargetOperations;

namespace rlxprop {

namespace {

std::string Join(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
    return text;
}

bool IsFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

JobSession::JobSession(const std::string& directory, const JobRequest& request) : m_directory(directory) {
    Open(request);
    try {
        ApplyModules(request);
    } catch (...) {
        ReleasePropertyDB(m_number);
        throw;
    }
}

JobSession::~JobSession() {
    if (m_root != nullptr) m_root->Release();
    ReleasePropertyDB(m_number);
}

void JobSession::Open(const JobRequest& request) {
    if (request.cpuType) {
        const std::uint32_t cpu = *request.cpuType;
        char entityCode[256] = {};
        bool supportsTrace = false;
        m_number = CreatePropertyDB(cpu, entityCode, sizeof entityCode - 1, &supportsTrace, request.variant);
        if (m_number != RLX_INVALID_DB) {
            m_databaseFile = PropertyFileForKeys(m_directory, CpuTypeKeysTried(cpu));
            return;
        }
        // The exported function only says "failed": find out why with the library's readers.
        CheckDriverTable(m_directory);
        const std::vector<std::string> keys = CpuTypeKeysTried(cpu);
        const std::string propertyFile = PropertyFileForKeys(m_directory, keys);
        if (propertyFile.empty()) {
            throw ToolError(ExitUnknownCpu, "unknown CPU type " + std::to_string(cpu) + ": no row of " +
                                                PathIn(m_directory, "rlxdvrs.xml") + " matches the keys " +
                                                Join(keys));
        }
        ExplainDatabaseFailure(m_directory, propertyFile, "property database of CPU type " + std::to_string(cpu) + ":");
    }

    if (!request.databaseName.empty()) {
        m_number = CreatePropertyDBByName(request.databaseName.c_str(), request.variant);
        m_databaseFile = request.databaseName;
        if (m_number == RLX_INVALID_DB) ExplainDatabaseFailure(m_directory, request.databaseName, "property database");
        return;
    }

    // A path used as given: with an empty directory the library does not prefix it.
    m_databaseFile = request.filePath;
    UseXmlDirectory("");
    m_number = CreatePropertyDBByName(request.filePath.c_str(), request.variant);
    UseXmlDirectory(m_directory);
    if (m_number == RLX_INVALID_DB) ExplainDatabaseFailure("", request.filePath, "property database");
}

void JobSession::ApplyModules(const JobRequest& request) {
    auto requireFile = [this](const std::string& file, const char* what) {
        if (!IsFile(PathIn(m_directory, file))) {
            throw ToolError(ExitDatabase, std::string(what) + " " + PathIn(m_directory, file) + " does not exist");
        }
    };
    for (const std::string& file : request.attachFiles) {
        requireFile(file, "trace-type file");
        if (AttachPropertyDB(file.c_str(), m_number) == RLX_INVALID_DB) {
            ExplainDatabaseFailure(m_directory, file, "trace-type file");
        }
    }
    for (const std::string& file : request.ctiFiles) {
        requireFile(file, "CTI file");
        if (UpdateDBForCTI(file.c_str(), m_number) == RLX_INVALID_DB) ExplainDatabaseFailure(m_directory, file, "CTI file");
    }
    for (const std::string& file : request.sctmFiles) {
        requireFile(file, "SCTM file");
        UpdateAllDBsForSCTM(file.c_str(), m_number);
    }
    for (const std::string& file : request.ocpFiles) {
        requireFile(file, "OCP file");
        UpdateAllDBsForOCP(file.c_str());
    }
}

IProperty* JobSession::Root() {
    if (m_root == nullptr) {
        m_root = GetRootProperty(m_number);
        if (m_root == nullptr) {
            throw ToolError(ExitDatabase, m_databaseFile + " has no top-level property \"Type\", or its tree cannot be linked");
        }
    }
    return m_root;
}

void JobSession::Relink() {
    try {
        UpdateSubProperties(m_number, Root());
    } catch (Kw::Mbr::Korva::korvaError& error) {
        throw ToolError(ExitDatabase, std::string("relinking failed: ") + error.GetErrorText());
    }
}

}  // namespace rlxprop
