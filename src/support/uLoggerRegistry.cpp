#include "uLoggerRegistry.h"

#include <cstdlib>

#include "Platform.h"
#include "TraceDirectories.h"
#include "uEnvironment.h"

namespace KW_MBR {

uLoggerRegistry& uLoggerRegistry::Instance() {
    static uLoggerRegistry* registry = new uLoggerRegistry;
    return *registry;
}

uLogger* uLoggerRegistry::Current() const { return m_current.load(); }

bool uLoggerRegistry::SetUp(const char* fileName, const char* levelVariable, const char* directoryVariable,
                            bool byName) {
    if (fileName == nullptr || levelVariable == nullptr) return false;

    std::lock_guard<std::mutex> guard(m_setUpLock);
    m_byName = byName;
    if (byName) {
        const auto found = m_loggers.find(fileName);
        m_current.store(found != m_loggers.end() ? found->second.get() : nullptr);
    }
    if (m_current.load() != nullptr) return true;

    std::string directory;
    if (directoryVariable != nullptr) directory = uEnvironment::Get(directoryVariable);

    std::string path = fileName;
    if (!directory.empty()) path = directory + Platform::PathSeparator() + fileName;

    std::uint64_t freeBytes = 0;
    const char* volume = (directoryVariable != nullptr) ? directory.c_str() : nullptr;
    if (!Platform::FreeDiskSpace(volume, freeBytes) || freeBytes < kMinimumFreeBytes) return false;

    if (directoryVariable != nullptr) Platform::MakeDirectoryBySystem(directory.c_str());

    const std::int32_t rawLevel = static_cast<std::int32_t>(std::atoi(uEnvironment::Get(levelVariable)));

    std::unique_ptr<uLogger> created(new uLogger(path, true));
    uLogger* logger = created.get();
    if (byName) {
        m_loggers[fileName] = std::move(created);
    } else {
        m_unnamed.push_back(std::move(created));
    }
    m_current.store(logger);
    ++m_initCount;

    ApplyLevel(*logger, rawLevel);

    logger->Write(uLogger::Message, uLogger::TimeStamp, "Logger : trace user settings directory is %s",
                  TraceDirectories::Settings().c_str());
    logger->Write(uLogger::Message, uLogger::TimeStamp, "Logger : trace temporary data directory is %s",
                  TraceDirectories::Data().c_str());
    return true;
}

// Levels 1 to 6 switch the outputs on and fold into the three levels that callers compare
// against; every other value turns the logger off and is kept as the level as it is.
void uLoggerRegistry::ApplyLevel(uLogger& logger, std::int32_t rawLevel) {
    struct LevelRow {
        bool toConsole;
        bool toDebugger;
        std::int32_t level;
    };
    static const LevelRow kRows[6] = {
        {false, false, 1},  // 1
        {true, false, 1},   // 2
        {false, false, 2},  // 3
        {true, false, 2},   // 4
        {true, true, 2},    // 5
        {true, true, 3},    // 6
    };
    if (rawLevel >= 1 && rawLevel <= 6) {
        const LevelRow& row = kRows[rawLevel - 1];
        logger.SetEnabled(true);
        logger.SetToConsole(row.toConsole);
        logger.SetToDebugger(row.toDebugger);
        m_level.store(row.level);
    } else {
        logger.SetEnabled(false);
        m_level.store(rawLevel);
    }
}

}  // namespace KW_MBR
