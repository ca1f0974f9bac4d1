// A small program that the start-up tests run with an exact environment. The logger's
// start-up has run at load; the program reports what it found into the file named by its
// first argument, then writes each following (flags, message) pair through LibraryTrace.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "TestPlatform.h"
#include "support/LibraryTrace.h"
#include "support/TraceStartup.h"
#include "support/uLoggerRegistry.h"
#include "support/uTime.h"

namespace {

std::string Variable(const char* name) { return rlx_test::VariableOr(name, "<unset>"); }

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    std::FILE* report = std::fopen(argv[1], "w");
    if (report == nullptr) return 3;

    KW_MBR::uLoggerRegistry& registry = KW_MBR::uLoggerRegistry::Instance();
    std::fprintf(report, "pid=%d\n", static_cast<int>(rlx_test::CurrentProcessId()));
    std::fprintf(report, "debugclient=%s\n", Variable("KW_TRACE_DEBUGCLIENT_PID").c_str());
    std::fprintf(report, "logging_dir=%s\n", Variable("KW_TRACE_LOGGING_DIR").c_str());
    std::fprintf(report, "data_dir=%s\n", Variable("KW_TRACE_DATA_DIR").c_str());
    std::fprintf(report, "settings_dir=%s\n", Variable("KW_TRACE_SETTINGS_DIR").c_str());
    std::fprintf(report, "file_name=%s\n", KW_MBR::TraceStartup::LogFileName().c_str());
    std::fprintf(report, "done=%d\n", KW_MBR::TraceStartup::OneTimeWorkDone() ? 1 : 0);
    std::fprintf(report, "level=%d\n", static_cast<int>(registry.Level()));
    std::fprintf(report, "has_logger=%d\n", registry.Current() != nullptr ? 1 : 0);
    std::fprintf(report, "init_count=%u\n", static_cast<unsigned>(registry.InitCount()));
    std::fprintf(report, "trace_enabled=%d\n", KW_MBR::LibraryTraceEnabled() ? 1 : 0);
    std::fprintf(report, "time_state=%d\n", static_cast<int>(KW_MBR::uTime::State()));
    std::fclose(report);

    for (int i = 2; i + 1 < argc; i += 2) {
        KW_MBR::LibraryTrace(static_cast<std::uint32_t>(std::atoi(argv[i])), "%s", argv[i + 1]);
    }
    return 0;
}
