// Starts a test program under Wine with the profile directory the test run asked for.
// Wine replaces USERPROFILE with its prefix's own profile whenever a process starts from the
// host; a process started from inside Windows inherits its parent's block unchanged. So this
// launcher copies RLX_WINE_USERPROFILE into USERPROFILE and then starts the command line that
// follows its own name, passing the exit code back.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

namespace {

// The command line after the first argument, quoted exactly as it was given.
const wchar_t* RestOfCommandLine(const wchar_t* line) {
    bool quoted = false;
    for (; *line != L'\0'; ++line) {
        if (*line == L'"') quoted = !quoted;
        if (!quoted && (*line == L' ' || *line == L'\t')) break;
    }
    while (*line == L' ' || *line == L'\t') ++line;
    return line;
}

void ApplyRequestedProfile() {
    std::vector<wchar_t> value(32768);
    const DWORD length = GetEnvironmentVariableW(L"RLX_WINE_USERPROFILE", value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 || length >= value.size()) return;
    SetEnvironmentVariableW(L"USERPROFILE", value.data());
    SetEnvironmentVariableW(L"RLX_WINE_USERPROFILE", nullptr);
}

}  // namespace

int main() {
    std::wstring command = RestOfCommandLine(GetCommandLineW());
    if (command.empty()) {
        std::fprintf(stderr, "rlx_wine_launcher: no command to run\n");
        return 125;
    }
    ApplyRequestedProfile();

    STARTUPINFOW startup;
    ZeroMemory(&startup, sizeof startup);
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process;
    ZeroMemory(&process, sizeof process);
    if (!CreateProcessW(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        std::fprintf(stderr, "rlx_wine_launcher: cannot start %ls (error %lu)\n", command.c_str(), GetLastError());
        return 126;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 1;
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(exitCode);
}
