// Loads the shared library by path, as a debugger does, and reports what its start-up left in
// the environment into the file named by the second argument. Exit code 0 means the library
// loaded and unloaded without taking the process down.
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace {

const char* Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "<unset>";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 3;
    }
    std::FILE* report = std::fopen(argv[2], "w");
    if (report == nullptr) return 4;
    std::fprintf(report, "debugclient=%s\n", Variable("KW_TRACE_DEBUGCLIENT_PID"));
    std::fprintf(report, "logging_dir=%s\n", Variable("KW_TRACE_LOGGING_DIR"));
    std::fprintf(report, "data_dir=%s\n", Variable("KW_TRACE_DATA_DIR"));
    std::fprintf(report, "settings_dir=%s\n", Variable("KW_TRACE_SETTINGS_DIR"));
    std::fclose(report);
    dlclose(library);
    return 0;
}
