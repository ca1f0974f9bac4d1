// Loads the shared library by path, as a debugger does, and reports what its start-up left in
// the environment into the file named by the second argument. Exit code 0 means the library
// loaded and unloaded without taking the process down.
#include <cstdio>
#include <string>

#include "TestPlatform.h"

namespace {

std::string Variable(const char* name) { return rlx_test::VariableOr(name, "<unset>"); }

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    std::string error;
    void* library = rlx_test::OpenLibrary(argv[1], error);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 3;
    }
    std::FILE* report = std::fopen(argv[2], "w");
    if (report == nullptr) return 4;
    std::fprintf(report, "debugclient=%s\n", Variable("KW_TRACE_DEBUGCLIENT_PID").c_str());
    std::fprintf(report, "logging_dir=%s\n", Variable("KW_TRACE_LOGGING_DIR").c_str());
    std::fprintf(report, "data_dir=%s\n", Variable("KW_TRACE_DATA_DIR").c_str());
    std::fprintf(report, "settings_dir=%s\n", Variable("KW_TRACE_SETTINGS_DIR").c_str());
    std::fclose(report);
    rlx_test::CloseLibrary(library);
    return 0;
}
