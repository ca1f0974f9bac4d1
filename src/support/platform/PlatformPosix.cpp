// POSIX side of the platform layer.
#include "support/Platform.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <mutex>
#include <thread>

#include <signal.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/types.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/syscall.h>
#endif

#include "support/TraceStartup.h"

namespace KW_MBR {
namespace Platform {

bool GetEnvironment(const char* name, std::string& value) {
    const char* found = std::getenv(name);
    if (found == nullptr) return false;
    value = found;
    return true;
}

bool SetEnvironment(const char* name, const char* value) { return ::setenv(name, value, 1) == 0; }

// There is no USERPROFILE convention here: fall back to the home directory.
const char* const* UserProfileVariables() {
    static const char* const names[] = {"USERPROFILE", "HOME", nullptr};
    return names;
}

std::uint32_t CurrentProcessId() { return static_cast<std::uint32_t>(::getpid()); }

std::uint64_t CurrentThreadId() {
#if defined(__linux__)
    return static_cast<std::uint64_t>(::syscall(SYS_gettid));
#else
    return static_cast<std::uint64_t>(std::hash<std::thread::id>{}(std::this_thread::get_id()));
#endif
}

// EPERM means the process exists but belongs to somebody else.
bool ProcessExists(std::uint32_t processId) {
    if (processId == 0) return false;
    const pid_t pid = static_cast<pid_t>(processId);
    if (pid <= 0) return false;
    if (::kill(pid, 0) == 0) return true;
    return errno == EPERM;
}

bool FreeDiskSpace(const char* directory, std::uint64_t& freeBytes) {
    struct statvfs info {};
    if (::statvfs(directory != nullptr ? directory : ".", &info) != 0) return false;
    freeBytes = static_cast<std::uint64_t>(info.f_bavail) * static_cast<std::uint64_t>(info.f_frsize);
    return true;
}

void MakeDirectory(const char* path) { ::mkdir(path, 0777); }

void MakeDirectoryBySystem(const char* path) { ::mkdir(path, 0777); }

LocalTime CurrentLocalTime() {
    const auto now = std::chrono::system_clock::now();
    const auto sinceEpoch = now.time_since_epoch();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count() % 1000;
    std::tm parts{};
    ::localtime_r(&seconds, &parts);
    LocalTime result{};
    result.year = parts.tm_year + 1900;
    result.month = parts.tm_mon + 1;
    result.day = parts.tm_mday;
    result.hour = parts.tm_hour;
    result.minute = parts.tm_min;
    result.second = parts.tm_sec;
    result.milliseconds = static_cast<int>(milliseconds < 0 ? milliseconds + 1000 : milliseconds);
    result.dayOfWeek = parts.tm_wday;
    return result;
}

void DebuggerOutput(const char* text) {
    std::fputs(text, stderr);
    std::fflush(stderr);
}

std::FILE* OpenShared(const char* path, const char* mode) { return std::fopen(path, mode); }

char PathSeparator() { return '/'; }

bool IsTerminal(std::FILE* stream) { return stream != nullptr && isatty(fileno(stream)) == 1; }

std::string ExecutablePath() {
    char buffer[4096];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (length <= 0) return std::string();
    return std::string(buffer, static_cast<std::size_t>(length));
}

RecursiveMutex::RecursiveMutex() : m_native(new std::recursive_mutex) {}

RecursiveMutex::~RecursiveMutex() { delete static_cast<std::recursive_mutex*>(m_native); }

void RecursiveMutex::Lock() { static_cast<std::recursive_mutex*>(m_native)->lock(); }

void RecursiveMutex::Unlock() { static_cast<std::recursive_mutex*>(m_native)->unlock(); }

}  // namespace Platform
}  // namespace KW_MBR

namespace {

// Runs when the shared library (or an executable that links these objects) is loaded. Nothing
// may escape into the loader: a failed start-up only leaves the process without logging.
__attribute__((constructor)) void RunTraceStartupAtLoad() {
    try {
        KW_MBR::TraceStartup::Run();
    } catch (...) {
    }
}

}  // namespace
