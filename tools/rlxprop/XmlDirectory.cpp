#include "XmlDirectory.h"

#include <filesystem>
#include <vector>

#include "../../src/support/Platform.h"
#include "ToolError.h"

namespace fs = std::filesystem;

namespace rlxprop {

namespace {

bool HasDriverTable(const fs::path& directory) {
    std::error_code error;
    return fs::is_regular_file(directory / "rlxdvrs.xml", error);
}

std::string BundledSamples() {
    std::vector<fs::path> candidates;
    const std::string executable = KW_MBR::Platform::ExecutablePath();
    if (!executable.empty()) {
        const fs::path bin = fs::path(executable).parent_path();
        candidates.push_back(bin.parent_path() / "share" / "RLXPropertyHelper" / "samples");
    }
#ifdef RLXPROP_SOURCE_SAMPLES_DIR
    candidates.push_back(RLXPROP_SOURCE_SAMPLES_DIR);
#endif
    for (const fs::path& candidate : candidates) {
        if (HasDriverTable(candidate)) return candidate.lexically_normal().string();
    }
    return {};
}

}  // namespace

XmlDirectory ResolveXmlDirectory(const std::string& option) {
    if (!option.empty()) return {option, "--xmldb"};
    std::string fromEnvironment;
    if (KW_MBR::Platform::GetEnvironment("KORVA_XMLDB", fromEnvironment) && !fromEnvironment.empty()) {
        return {fromEnvironment, "KORVA_XMLDB"};
    }
    const std::string bundled = BundledSamples();
    if (bundled.empty()) {
        throw ToolError(ExitDirectory,
                        "no XML directory: give --xmldb DIR or set KORVA_XMLDB (the bundled samples were not found)");
    }
    return {bundled, "bundled samples"};
}

void UseXmlDirectory(const std::string& directory) {
    KW_MBR::Platform::SetEnvironment("KORVA_XMLDB", directory.c_str());
}

}  // namespace rlxprop
