// rlxprop: shows and edits the property trees of a directory of property databases, the
// way a debugger drives the library.
#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "Commands.h"
#include "ToolError.h"
#include "ValueAssignment.h"

using namespace rlxprop;

namespace {

const char kExitCodes[] =
    "Exit codes: 0 success, 2 bad arguments or malformed number, 3 no usable XML directory or driver table,\n"
    "4 unknown CPU type, 5 database or module file missing or not loadable, 6 unknown property name,\n"
    "7 value refused by the property, 10 internal error.\n"
    "The XML directory is --xmldb, else KORVA_XMLDB, else the bundled sample databases.";

// Options that choose one database: --cpu (with --variant), --db or --file.
struct DatabaseChoice {
    std::string cpu;
    std::string variant;
    std::string db;
    std::string file;

    void AddTo(CLI::App& command) {
        auto* cpuOption = command.add_option("--cpu", cpu, "CPU type (decimal or 0x hexadecimal)")->type_name("N");
        auto* dbOption = command.add_option("--db", db, "database file name in the XML directory")->type_name("NAME");
        auto* fileOption = command.add_option("--file", file, "database file by full path")->type_name("PATH");
        cpuOption->excludes(dbOption)->excludes(fileOption);
        dbOption->excludes(fileOption);
        command.add_option("--variant", variant, "file-name variant (a number; 0 means none)")->type_name("V");
    }

    void Fill(JobRequest& request) const {
        const int chosen = !cpu.empty() + !db.empty() + !file.empty();
        if (chosen != 1) throw ToolError(ExitUsage, "choose the database with exactly one of --cpu, --db or --file");
        if (!cpu.empty()) {
            const std::uint64_t number = ParseNumber(cpu, "--cpu");
            if (number > 0xFFFFFFFFull) throw ToolError(ExitUsage, "CPU type " + cpu + " is too large");
            request.cpuType = static_cast<std::uint32_t>(number);
        }
        if (!variant.empty()) {
            const std::uint64_t number = ParseNumber(variant, "--variant");
            if (number > 0x7FFFFFFFull) throw ToolError(ExitUsage, "variant " + variant + " is too large");
            request.variant = static_cast<std::int32_t>(number);
        }
        request.databaseName = db;
        request.filePath = file;
    }
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"rlxprop: show and edit the property trees of trigger and trace jobs", "rlxprop"};
    app.footer(kExitCodes);
    app.require_subcommand(1);
    app.fallthrough();  // --xmldb and --no-color also after the subcommand

    CommonOptions common;
    app.add_option("--xmldb", common.xmldb, "directory of rlxdvrs.xml and the property databases")->type_name("DIR");
    app.add_flag("--no-color", common.noColour, "never colour the output (NO_COLOR is respected too)");

    std::string cpusFormat = "text";
    CLI::App* cpus = app.add_subcommand("cpus", "list the driver table: CPU types, drivers, property files");
    cpus->add_option("--format", cpusFormat, "text or json")->check(CLI::IsMember({"text", "json"}));

    TreeOptions tree;
    DatabaseChoice treeChoice;
    std::vector<std::string> attach, cti, sctm, ocp;
    CLI::App* treeCommand = app.add_subcommand("tree", "show the linked property tree of a job");
    treeChoice.AddTo(*treeCommand);
    treeCommand->add_option("--set", tree.assignments,
                            "NAME=VALUE, applied in order; the tree is relinked after each")
        ->type_name("NAME=VALUE")
        ->take_all();
    treeCommand->add_option("--attach", tree.job.attachFiles, "merge a trace-type file")->type_name("FILE");
    treeCommand->add_option("--cti", tree.job.ctiFiles, "add a cross-trigger (CTI) module file")->type_name("FILE");
    treeCommand->add_option("--sctm", tree.job.sctmFiles, "add an SCTM module file")->type_name("FILE");
    treeCommand->add_option("--ocp", tree.job.ocpFiles, "add an OCP module file")->type_name("FILE");
    treeCommand->add_option("--format", tree.format, "text, json or dot")->check(CLI::IsMember({"text", "json", "dot"}));
    treeCommand->add_option("--depth", tree.depth, "levels shown below the root (default: all)")
        ->check(CLI::NonNegativeNumber);

    std::string serverCpu;
    CLI::App* server = app.add_subcommand("server", "print the driver (server) name of a CPU type");
    server->add_option("--cpu", serverCpu, "CPU type (decimal or 0x hexadecimal)")->type_name("N")->required();

    GetOptions get;
    DatabaseChoice getChoice;
    CLI::App* getCommand = app.add_subcommand("get", "show one top-level property in full detail");
    getCommand->add_option("NAME", get.name, "property name")->required();
    getChoice.AddTo(*getCommand);
    getCommand->add_option("--format", get.format, "text or json")->check(CLI::IsMember({"text", "json"}));

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::CallForAllHelp& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "rlxprop: %s\nRun 'rlxprop --help' for usage.\n", error.what());
        return ExitUsage;
    }

    try {
        if (*cpus) return RunCpus(common, cpusFormat);
        if (*treeCommand) {
            treeChoice.Fill(tree.job);
            return RunTree(common, tree);
        }
        if (*server) {
            const std::uint64_t cpu = ParseNumber(serverCpu, "--cpu");
            if (cpu > 0xFFFFFFFFull) throw ToolError(ExitUsage, "CPU type " + serverCpu + " is too large");
            return RunServer(common, static_cast<std::uint32_t>(cpu));
        }
        getChoice.Fill(get.job);
        return RunGet(common, get);
    } catch (const ToolError& error) {
        std::fprintf(stderr, "rlxprop: %s\n", error.what());
        return error.Code();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rlxprop: internal error: %s\n", error.what());
        return ExitInternal;
    } catch (...) {
        std::fprintf(stderr, "rlxprop: internal error\n");
        return ExitInternal;
    }
}
