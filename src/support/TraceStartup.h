// The logger's start-up, run by the platform's load notification: settles the debug-client
// process number, creates and publishes the trace directories, fixes the log file name, and
// then sets up the process's logger. The directory and process-number work happens once per
// loaded library; later runs only repeat the logger set-up, which returns at once.
#pragma once

#include <cstdint>
#include <string>

namespace KW_MBR {

class TraceStartup {
public:
    static constexpr const char* kLevelVariable = "KW_TRACE_LOGGING";
    static constexpr const char* kLoggingDirVariable = "KW_TRACE_LOGGING_DIR";
    static constexpr const char* kDataDirVariable = "KW_TRACE_DATA_DIR";
    static constexpr const char* kSettingsDirVariable = "KW_TRACE_SETTINGS_DIR";
    static constexpr const char* kDebugClientVariable = "KW_TRACE_DEBUGCLIENT_PID";

    // Raises source_utilities_error when the user's profile directory is unknown; the load
    // notification catches it.
    static void Run();

    // The one-time work without its guard: settles the debug-client process number, creates
    // and publishes the three directories, and returns the log file name. Run calls it once;
    // it is public so that its cost can be measured on its own.
    static std::string PrepareTraceEnvironment();

    // True once the one-time work has completed.
    static bool OneTimeWorkDone();
    // The log file name fixed by the one-time work ("" before).
    static std::string LogFileName();

    // Keeps the inherited debug-client process number while its process runs, otherwise
    // publishes the current one. Returns the number in use.
    static std::uint32_t SettleDebugClientProcessId();
    // "kw_trace_log_<month><day><year>_<pid>.txt", numbers unpadded.
    static std::string MakeLogFileName(std::uint32_t debugClientProcessId);
};

}  // namespace KW_MBR
