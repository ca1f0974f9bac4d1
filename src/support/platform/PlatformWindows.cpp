// Windows side of the platform layer.
#include "support/Platform.h"

#include "support/platform/WindowsApi.h"

#include <direct.h>
#include <io.h>
#include <share.h>
#include <tlhelp32.h>

#include <cstdlib>
#include <vector>

namespace KW_MBR {
namespace Platform {

namespace {

// The largest value the system lets an environment variable hold, terminator included.
const DWORD kEnvironmentBufferSize = 32768;

}  // namespace

bool GetEnvironment(const char* name, std::string& value) {
    std::vector<char> buffer(kEnvironmentBufferSize);
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableA(name, buffer.data(), kEnvironmentBufferSize);
    if (length == 0) {
        if (GetLastError() == ERROR_ENVVAR_NOT_FOUND) return false;
        value.clear();  // set, and empty
        return true;
    }
    if (length >= kEnvironmentBufferSize) return false;  // cannot be held: treat as unreadable
    value.assign(buffer.data(), length);
    return true;
}

// The C runtime keeps its own copy of the environment for getenv; it follows first (it cannot
// hold an empty value), then the system's block gets the exact value.
bool SetEnvironment(const char* name, const char* value) {
    _putenv_s(name, value);
    return SetEnvironmentVariableA(name, value) != 0;
}

const char* const* UserProfileVariables() {
    static const char* const names[] = {"USERPROFILE", nullptr};
    return names;
}

std::uint32_t CurrentProcessId() { return static_cast<std::uint32_t>(GetCurrentProcessId()); }

std::uint64_t CurrentThreadId() { return static_cast<std::uint64_t>(GetCurrentThreadId()); }

// A snapshot that cannot be taken counts as "not found".
bool ProcessExists(std::uint32_t processId) {
    if (processId == 0) return false;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return false;
    PROCESSENTRY32 entry;
    ZeroMemory(&entry, sizeof entry);
    entry.dwSize = sizeof entry;
    bool found = false;
    if (Process32First(snapshot, &entry)) {
        do {
            if (entry.th32ProcessID == static_cast<DWORD>(processId)) {
                found = true;
                break;
            }
        } while (Process32Next(snapshot, &entry));
    }
    CloseHandle(snapshot);
    return found;
}

bool FreeDiskSpace(const char* directory, std::uint64_t& freeBytes) {
    ULARGE_INTEGER freeToCaller;
    freeToCaller.QuadPart = 0;
    if (!GetDiskFreeSpaceExA(directory, &freeToCaller, nullptr, nullptr)) return false;
    freeBytes = static_cast<std::uint64_t>(freeToCaller.QuadPart);
    return true;
}

void MakeDirectory(const char* path) { _mkdir(path); }

void MakeDirectoryBySystem(const char* path) { CreateDirectoryA(path, nullptr); }

LocalTime CurrentLocalTime() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    LocalTime result{};
    result.year = now.wYear;
    result.month = now.wMonth;
    result.day = now.wDay;
    result.hour = now.wHour;
    result.minute = now.wMinute;
    result.second = now.wSecond;
    result.milliseconds = now.wMilliseconds;
    result.dayOfWeek = now.wDayOfWeek;
    return result;
}

void DebuggerOutput(const char* text) { OutputDebugStringA(text); }

// Other openers (a viewer, a second library instance) may read and write the file meanwhile.
std::FILE* OpenShared(const char* path, const char* mode) { return _fsopen(path, mode, _SH_DENYNO); }

char PathSeparator() { return '\\'; }

bool IsTerminal(std::FILE* stream) { return stream != nullptr && _isatty(_fileno(stream)) != 0; }

std::string ExecutablePath() {
    std::vector<char> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameA(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) return std::string();
        if (length < buffer.size()) return std::string(buffer.data(), length);
        buffer.resize(buffer.size() * 2);
    }
}

RecursiveMutex::RecursiveMutex() {
    CRITICAL_SECTION* section = new CRITICAL_SECTION;
    InitializeCriticalSection(section);
    m_native = section;
}

RecursiveMutex::~RecursiveMutex() {
    CRITICAL_SECTION* section = static_cast<CRITICAL_SECTION*>(m_native);
    DeleteCriticalSection(section);
    delete section;
}

void RecursiveMutex::Lock() { EnterCriticalSection(static_cast<CRITICAL_SECTION*>(m_native)); }

void RecursiveMutex::Unlock() { LeaveCriticalSection(static_cast<CRITICAL_SECTION*>(m_native)); }

}  // namespace Platform
}  // namespace KW_MBR
