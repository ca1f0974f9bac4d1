// The few operating-system calls the tests make themselves (environment, process number,
// working directory, child processes, loading a library), with a POSIX and a Windows side.
// On Windows the library reads and writes the process environment through the system, not
// through the C runtime's copy, so the tests do the same.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#if defined(_WIN32)
// The library's own view of <windows.h>; some test programs see only this folder.
#include "../src/support/platform/WindowsApi.h"

#include <cstdlib>
#else
#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#endif

namespace rlx_test {

#if defined(_WIN32)

const char kPathSeparator = '\\';
// The library's debugger output goes to the debugger, not to standard error.
const bool kDebuggerOutputIsStandardError = false;
// Only USERPROFILE names the user's profile directory.
const bool kHomeStandsInForUserProfile = false;

// The C runtime keeps a copy of the environment that code reading it with getenv sees; it is
// updated too (it cannot hold an empty value, so there an empty value reads as unset).
inline bool SetVariable(const char* name, const char* value) {
    _putenv_s(name, value);
    return SetEnvironmentVariableA(name, value) != 0;
}

inline bool UnsetVariable(const char* name) {
    _putenv_s(name, "");
    return SetEnvironmentVariableA(name, nullptr) != 0 || GetLastError() == ERROR_ENVVAR_NOT_FOUND;
}

// False when the variable is not set.
inline bool ReadVariable(const char* name, std::string& value) {
    std::vector<char> buffer(32768);
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableA(name, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return false;
    value.assign(buffer.data(), length < buffer.size() ? length : 0);
    return true;
}

inline std::uint32_t CurrentProcessId() { return static_cast<std::uint32_t>(GetCurrentProcessId()); }

inline bool ChangeDirectory(const char* path) { return SetCurrentDirectoryA(path) != 0; }

inline std::string NativePath(std::string path) {
    for (char& c : path) {
        if (c == '/') c = '\\';
    }
    return path;
}

namespace detail {

inline std::string QuoteArgument(const std::string& argument) {
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string::npos) return argument;
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (char c : argument) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == '"' ? backslashes * 2 + 1 : backslashes, '\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(backslashes * 2, '\\');
    return quoted + "\"";
}

inline HANDLE OpenOutput(const std::string& path) {
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace detail

// Runs the program with exactly the given environment ("NAME=value" entries) and waits for
// it. Standard output and error go to the files when named. Returns the exit code, or -1 when
// the program could not be started.
inline int RunProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                      const std::string& outPath = "", const std::string& errPath = "") {
    std::string commandLine;
    for (const std::string& argument : arguments) {
        if (!commandLine.empty()) commandLine += ' ';
        commandLine += detail::QuoteArgument(argument);
    }
    std::string block;
    for (const std::string& entry : environment) block.append(entry).push_back('\0');
    block.push_back('\0');
    if (environment.empty()) block.push_back('\0');

    STARTUPINFOA startup;
    ZeroMemory(&startup, sizeof startup);
    startup.cb = sizeof startup;
    HANDLE out = INVALID_HANDLE_VALUE;
    HANDLE err = INVALID_HANDLE_VALUE;
    if (!outPath.empty()) {
        out = detail::OpenOutput(outPath);
        err = detail::OpenOutput(errPath);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = out;
        startup.hStdError = err;
    }
    PROCESS_INFORMATION process;
    ZeroMemory(&process, sizeof process);
    const BOOL started = CreateProcessA(nullptr, &commandLine[0], nullptr, nullptr, TRUE, 0, &block[0], nullptr,
                                        &startup, &process);
    if (out != INVALID_HANDLE_VALUE) CloseHandle(out);
    if (err != INVALID_HANDLE_VALUE) CloseHandle(err);
    if (!started) return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(exitCode);
}

// Loads a library by path as a debugger does; its own directory is searched for what it needs.
inline void* OpenLibrary(const std::string& path, std::string& error) {
    HMODULE module = LoadLibraryExA(NativePath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module == nullptr) error = "LoadLibraryEx failed with error " + std::to_string(GetLastError());
    return reinterpret_cast<void*>(module);
}

inline void CloseLibrary(void* library) { FreeLibrary(reinterpret_cast<HMODULE>(library)); }

#else

const char kPathSeparator = '/';
const bool kDebuggerOutputIsStandardError = true;
const bool kHomeStandsInForUserProfile = true;

inline bool SetVariable(const char* name, const char* value) { return ::setenv(name, value, 1) == 0; }

inline bool UnsetVariable(const char* name) { return ::unsetenv(name) == 0; }

inline bool ReadVariable(const char* name, std::string& value) {
    const char* found = std::getenv(name);
    if (found == nullptr) return false;
    value = found;
    return true;
}

inline std::uint32_t CurrentProcessId() { return static_cast<std::uint32_t>(::getpid()); }

inline bool ChangeDirectory(const char* path) { return ::chdir(path) == 0; }

inline std::string NativePath(std::string path) { return path; }

inline int RunProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                      const std::string& outPath = "", const std::string& errPath = "") {
    std::vector<char*> argv;
    for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (const std::string& e : environment) envp.push_back(const_cast<char*>(e.c_str()));
    envp.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!outPath.empty()) {
        posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    }
    pid_t pid = -1;
    const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0 || pid <= 0) return -1;
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

inline void* OpenLibrary(const std::string& path, std::string& error) {
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) error = dlerror();
    return library;
}

inline void CloseLibrary(void* library) { dlclose(library); }

#endif

// The variable's value, or the fallback when it is not set.
inline std::string VariableOr(const char* name, const std::string& fallback) {
    std::string value;
    return ReadVariable(name, value) ? value : fallback;
}

}  // namespace rlx_test
