#include "Diagnosis.h"

#include <filesystem>

#include "../../src/api/CpuTypeKeys.h"
#include "../../src/support/korvaError.h"
#include "../../src/xmldb/DriverDB.h"
#include "../../src/xmldb/PropertyDB.h"
#include "ToolError.h"

using Kw::Mbr::Korva::korvaError;

namespace rlxprop {

namespace {

const char* SeverityName(korvaError::Severity_Type severity) {
    const int index = static_cast<int>(severity);
    return index >= 0 && index < 5 ? korvaError::DefaultTitle[index] : "Error";
}

// The reader's text on one line: its messages may begin or end with line feeds.
std::string OneLine(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    const auto first = text.find_first_not_of(' ');
    const auto last = text.find_last_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

std::string Describe(korvaError& error) {
    return OneLine(error.GetErrorText()) + " (severity " + SeverityName(error.GetSeverity()) + ")";
}

bool IsFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

std::string PathIn(const std::string& directory, const std::string& fileName) {
    return directory.empty() ? fileName : directory + "/" + fileName;
}

std::vector<std::string> CpuTypeKeysTried(std::uint32_t cpuType) {
    // CPU types 56000 to 56999 carry a revision digit that travels as a key suffix.
    std::uint32_t keyNumber = cpuType;
    std::string suffix;
    if (cpuType / 10000 != 0 && cpuType / 1000 == 56) {
        keyNumber = cpuType / 10;
        suffix = "_" + std::to_string(cpuType % 10);
    }
    return TargetOperations::CpuTypeKeys(keyNumber, suffix);
}

std::string PropertyFileForKeys(const std::string& directory, const std::vector<std::string>& keys) {
    TargetOperations::DriverDB table(PathIn(directory, "rlxdvrs.xml"));
    for (const std::string& key : keys) {
        std::string propertyFile, entityCode;
        bool supportsTrace = false;
        table.GetDriverDetails(key, propertyFile, entityCode, supportsTrace);
        if (!propertyFile.empty()) return propertyFile;
    }
    return {};
}

void ExplainDatabaseFailure(const std::string& directory, const std::string& fileName, const std::string& what) {
    const std::string path = PathIn(directory, fileName);
    if (!IsFile(path)) throw ToolError(ExitDatabase, what + " " + path + " does not exist");
    try {
        TargetOperations::PropertyDB database(path);
    } catch (korvaError& error) {
        throw ToolError(ExitDatabase, what + " " + path + " does not load: " + Describe(error));
    } catch (const std::exception& error) {
        throw ToolError(ExitDatabase, what + " " + path + " does not load: " + error.what());
    }
    throw ToolError(ExitDatabase, what + " " + path + " loads, but the library refused it");
}

void CheckDriverTable(const std::string& directory) {
    const std::string path = PathIn(directory, "rlxdvrs.xml");
    if (!IsFile(path)) throw ToolError(ExitDirectory, "no driver table rlxdvrs.xml in " + directory);
    try {
        TargetOperations::DriverDB table(path);
    } catch (korvaError& error) {
        throw ToolError(ExitDirectory, "driver table " + path + " does not load: " + Describe(error));
    }
}

}  // namespace rlxprop
