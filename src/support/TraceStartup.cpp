#include "TraceStartup.h"

#include <mutex>
#include <string>

#include "Platform.h"
#include "TraceDirectories.h"
#include "uEnvironment.h"
#include "uLoggerRegistry.h"
#include "uString.h"
#include "uTime.h"

namespace KW_MBR {

namespace {

struct StartupState {
    std::recursive_mutex lock;  // the loader serialises notifications; this also covers direct calls
    bool done = false;
    std::string fileName;
};

StartupState& State() {
    static StartupState* state = new StartupState;  // runs before and after other statics
    return *state;
}

}  // namespace

std::uint32_t TraceStartup::SettleDebugClientProcessId() {
    const std::string inherited = uEnvironment::Get(kDebugClientVariable);
    if (!inherited.empty()) {
        const std::uint32_t processId = uString::ToNumeric<std::uint32_t>(inherited.c_str());
        if (Platform::ProcessExists(processId)) return processId;
    }
    const std::uint32_t current = Platform::CurrentProcessId();
    std::string text;
    uString::ToString(text, current);
    uEnvironment::Set(kDebugClientVariable, text.c_str());
    return current;
}

std::string TraceStartup::MakeLogFileName(std::uint32_t debugClientProcessId) {
    std::string name = "kw_trace_log";
    name += "_";
    uString::ToString(name, static_cast<std::uint32_t>(uTime().Month()));
    uString::ToString(name, static_cast<std::uint32_t>(uTime().Day()));
    uString::ToString(name, static_cast<std::uint32_t>(uTime().Year()));
    name += "_";
    uString::ToString(name, debugClientProcessId);
    name += ".txt";
    return name;
}

std::string TraceStartup::PrepareTraceEnvironment() {
    const std::uint32_t debugClient = SettleDebugClientProcessId();

    const std::string logging = TraceDirectories::Logging();
    const std::string data = TraceDirectories::Data();
    const std::string settings = TraceDirectories::Settings();
    uEnvironment::Set(kLoggingDirVariable, logging.c_str());
    uEnvironment::Set(kDataDirVariable, data.c_str());
    uEnvironment::Set(kSettingsDirVariable, settings.c_str());

    return MakeLogFileName(debugClient);
}

void TraceStartup::Run() {
    StartupState& state = State();
    std::lock_guard<std::recursive_mutex> guard(state.lock);
    if (!state.done) {
        state.fileName = PrepareTraceEnvironment();
        state.done = true;
    }
    uLoggerRegistry::Instance().SetUp(state.fileName.c_str(), kLevelVariable, kLoggingDirVariable, true);
}

bool TraceStartup::OneTimeWorkDone() {
    StartupState& state = State();
    std::lock_guard<std::recursive_mutex> guard(state.lock);
    return state.done;
}

std::string TraceStartup::LogFileName() {
    StartupState& state = State();
    std::lock_guard<std::recursive_mutex> guard(state.lock);
    return state.fileName;
}

}  // namespace KW_MBR
