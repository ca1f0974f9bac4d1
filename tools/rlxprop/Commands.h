// The subcommands of rlxprop; each returns the process exit code or throws ToolError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "JobSession.h"

namespace rlxprop {

struct CommonOptions {
    std::string xmldb;
    bool noColour = false;
};

struct TreeOptions {
    JobRequest job;
    std::vector<std::string> assignments;
    std::string format = "text";
    int depth = -1;
};

struct GetOptions {
    JobRequest job;
    std::string name;
    std::string format = "text";
};

int RunCpus(const CommonOptions& common, const std::string& format);
int RunTree(const CommonOptions& common, const TreeOptions& options);
int RunServer(const CommonOptions& common, std::uint32_t cpuType);
int RunGet(const CommonOptions& common, const GetOptions& options);

}  // namespace rlxprop
