// The process's loggers and its logging level. The process-wide instance is created on first
// use and never destroyed, so objects destroyed at exit may still ask it for the level.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "uLogger.h"

namespace KW_MBR {

class uLoggerRegistry {
public:
    // Below this many free bytes on the logging volume no logger is created.
    static constexpr std::uint64_t kMinimumFreeBytes = 5120000;

    static uLoggerRegistry& Instance();

    uLoggerRegistry() = default;
    uLoggerRegistry(const uLoggerRegistry&) = delete;
    uLoggerRegistry& operator=(const uLoggerRegistry&) = delete;

    // Creates the logger for fileName (below the directory named by directoryVariable, when it
    // is given and set) and applies the level read from levelVariable. With byName, a logger
    // already made for the same file name is reused as it is and true returned at once.
    bool SetUp(const char* fileName, const char* levelVariable, const char* directoryVariable, bool byName);

    uLogger* Current() const;
    std::int32_t Level() const { return m_level.load(); }
    bool ByName() const { return m_byName; }
    std::uint32_t InitCount() const { return m_initCount; }

private:
    void ApplyLevel(uLogger& logger, std::int32_t rawLevel);

    mutable std::mutex m_setUpLock;  // set-ups are rare; writers only read the two fields below
    std::atomic<uLogger*> m_current{nullptr};
    std::atomic<std::int32_t> m_level{0};
    bool m_byName = false;
    std::uint32_t m_initCount = 0;
    std::map<std::string, std::unique_ptr<uLogger>> m_loggers;
    std::vector<std::unique_ptr<uLogger>> m_unnamed;  // loggers made without sharing by name
};

}  // namespace KW_MBR
