// The operating-system services that the trace logger needs, behind one small interface.
// Exactly one of platform/PlatformPosix.cpp and platform/PlatformWindows.cpp is compiled;
// nothing outside src/support/platform/ includes an operating-system header.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace KW_MBR {
namespace Platform {

// False when the variable is not set (an empty value set on purpose reads as set and empty).
bool GetEnvironment(const char* name, std::string& value);
bool SetEnvironment(const char* name, const char* value);

// Names tried in order for the per-user base directory, ending with a null entry.
const char* const* UserProfileVariables();

std::uint32_t CurrentProcessId();
std::uint64_t CurrentThreadId();
// A process number of 0 never matches.
bool ProcessExists(std::uint32_t processId);

// Bytes free for the calling user on the volume of the directory (the current directory when
// null). False when the volume cannot be queried.
bool FreeDiskSpace(const char* directory, std::uint64_t& freeBytes);

// The C runtime's directory call used while creating parent chains; an existing directory is
// not an error worth reporting, so neither reports anything.
void MakeDirectory(const char* path);
// The system's own directory call, used once the logging directory is known.
void MakeDirectoryBySystem(const char* path);

struct LocalTime {
    int year;
    int month;  // 1..12
    int day;    // 1..31
    int hour;
    int minute;
    int second;
    int milliseconds;
    int dayOfWeek;  // 0 = Sunday
};
LocalTime CurrentLocalTime();

void DebuggerOutput(const char* text);

// Opens a stdio stream that other openers may read and write at the same time.
std::FILE* OpenShared(const char* path, const char* mode);

char PathSeparator();

// Whether the stream writes to a terminal (the command-line tool colours only terminals).
bool IsTerminal(std::FILE* stream);

// Full path of the running executable, or "" when the system does not say.
std::string ExecutablePath();

class RecursiveMutex {
public:
    RecursiveMutex();
    ~RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;

    void Lock();
    void Unlock();

private:
    void* m_native;  // owned; the native lock type stays inside the platform file
};

}  // namespace Platform
}  // namespace KW_MBR
