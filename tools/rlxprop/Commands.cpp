#include "Commands.h"

#include <cstdio>
#include <memory>

#include <nlohmann/json.hpp>

#include "../../src/api/CpuTypeKeys.h"
#include "../../src/xmldb/DriverDB.h"
#include "Diagnosis.h"
#include "Formatters.h"
#include "NodeView.h"
#include "ToolError.h"
#include "ValueAssignment.h"
#include "XmlDirectory.h"

using namespace TargetOperations;

namespace rlxprop {

namespace {

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::string Pad(const std::string& text, std::size_t width) {
    return text.size() >= width ? text : text + std::string(width - text.size(), ' ');
}

std::string Join(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
    return text;
}

XmlDirectory Prepare(const CommonOptions& common) {
    XmlDirectory directory = ResolveXmlDirectory(common.xmldb);
    UseXmlDirectory(directory.path);
    return directory;
}

}  // namespace

int RunCpus(const CommonOptions& common, const std::string& format) {
    const XmlDirectory directory = Prepare(common);
    CheckDriverTable(directory.path);
    DriverDB table(PathIn(directory.path, "rlxdvrs.xml"));

    if (format == "json") {
        nlohmann::ordered_json rows = nlohmann::ordered_json::array();
        for (const auto& record : table.Records()) {
            rows.push_back({{"cpuType", record->cpuType},
                            {"driverName", record->driverName},
                            {"propertyFile", record->propertyFile},
                            {"entityCode", record->entityCode},
                            {"supportsTrace", record->supportsTrace}});
        }
        nlohmann::ordered_json doc = {{"directory", directory.path}, {"drivers", rows}};
        Print(doc.dump(2) + "\n");
        return ExitOk;
    }

    const Style style(ColourWanted(common.noColour));
    std::vector<std::vector<std::string>> lines = {{"CPU type", "Driver", "Property file", "Entity code", "Trace"}};
    for (const auto& record : table.Records()) {
        lines.push_back({record->cpuType, record->driverName, record->propertyFile, record->entityCode,
                         record->supportsTrace ? "yes" : "no"});
    }
    std::vector<std::size_t> widths(5, 0);
    for (const auto& line : lines) {
        for (std::size_t c = 0; c < line.size(); ++c) widths[c] = std::max(widths[c], line[c].size());
    }
    std::string out;
    for (std::size_t r = 0; r < lines.size(); ++r) {
        std::string row;
        for (std::size_t c = 0; c < lines[r].size(); ++c) {
            row += c + 1 == lines[r].size() ? lines[r][c] : Pad(lines[r][c], widths[c] + 2);
        }
        out += (r == 0 ? style.Name(row) : row) + "\n";
    }
    out += style.Dim(std::to_string(table.GetRecordCount()) + " drivers in " + directory.path + " (" +
                     directory.origin + ")") + "\n";
    Print(out);
    return ExitOk;
}

int RunTree(const CommonOptions& common, const TreeOptions& options) {
    const XmlDirectory directory = Prepare(common);
    JobSession job(directory.path, options.job);
    IProperty* root = job.Root();
    for (const std::string& text : options.assignments) {
        Assign(root, ParseAssignment(text));
        job.Relink();  // as a debugger does after every edit
    }
    const NodeView view = ReadNode(root, options.depth);
    const TreeSource source{directory.path, job.DatabaseFile(), job.DatabaseNumber()};
    if (options.format == "json") Print(FormatJson(view, source));
    else if (options.format == "dot") Print(FormatDot(view, source));
    else Print(FormatText(view, Style(ColourWanted(common.noColour))));
    return ExitOk;
}

int RunServer(const CommonOptions& common, std::uint32_t cpuType) {
    const XmlDirectory directory = Prepare(common);
    char name[512] = {};
    if (!GetRLXServerName(cpuType, name, sizeof name - 1)) {
        CheckDriverTable(directory.path);
        throw ToolError(ExitDirectory, "the driver table of " + directory.path + " cannot be read");
    }
    if (name[0] == '\0') {
        // The server lookup uses the plain decimal key and its wildcards, without a revision digit.
        throw ToolError(ExitUnknownCpu, "unknown CPU type " + std::to_string(cpuType) + ": no row of " +
                                            PathIn(directory.path, "rlxdvrs.xml") + " matches the keys " +
                                            Join(CpuTypeKeys(cpuType, "")));
    }
    Print(std::string(name) + "\n");
    return ExitOk;
}

int RunGet(const CommonOptions& common, const GetOptions& options) {
    const XmlDirectory directory = Prepare(common);
    JobSession job(directory.path, options.job);
    IProperty* property = GetPropertyFromDB(job.DatabaseNumber(), options.name.c_str());
    if (property == nullptr) {
        throw ToolError(ExitUnknownProperty,
                        "no top-level property named \"" + options.name + "\" in " + job.DatabaseFile());
    }
    const NodeView view = ReadNode(property, -1);
    property->Release();
    const TreeSource source{directory.path, job.DatabaseFile(), job.DatabaseNumber()};
    if (options.format == "json") Print(FormatJson(view, source));
    else Print(FormatText(view, Style(ColourWanted(common.noColour)), true));
    return ExitOk;
}

}  // namespace rlxprop
