// One trace log file with its output switches. Lines are assembled and written under the
// logger's lock, so lines from different threads never interleave.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <memory>
#include <string>

#include "uFile.h"
#include "uMutex.h"

namespace KW_MBR {

class uLogger {
public:
    enum Category : std::uint32_t { Message = 1, Warning = 2, CategoryF = 4, CategoryA = 8, Error = 16 };
    enum TimeStampMode : std::uint32_t { NoTimeStamp = 0, DateStamp = 1, TimeStamp = 2, DateAndTimeStamp = 3 };

    static constexpr std::uint32_t kBufferSize = 4096;
    static constexpr std::uint32_t kAllCategories = 31;

    // The file is opened only when the first line is written.
    uLogger(const std::string& path, bool append);
    ~uLogger();
    uLogger(const uLogger&) = delete;
    uLogger& operator=(const uLogger&) = delete;

    // Disabling closes the file. Returns the former state.
    bool SetEnabled(bool enabled);
    bool IsEnabled() const { return m_enabled.load(); }

    void SetToConsole(bool toConsole);
    void SetToDebugger(bool toDebugger);
    bool ToConsole() const { return m_toConsole; }
    bool ToDebugger() const { return m_toDebugger; }
    bool IsFileOpen() const { return m_fileOpen; }
    const std::string& Path() const { return m_path; }

    void Write(std::uint32_t flags, std::uint32_t mode, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 4, 5)))
#endif
        ;
    void WriteV(std::uint32_t flags, std::uint32_t mode, const char* format, va_list arguments);

    // Five category letters (M, W, F, A, E, a blank where the bit is clear) and one blank.
    static std::string FlagPrefix(std::uint32_t flags);
    // Removes one trailing "\n" or "\r", together with a preceding partner that forms a
    // "\r\n" or "\n\r" pair.
    static void RemoveOneLineEnd(std::string& line);

private:
    uFile m_file;
    std::string m_path;
    std::atomic<bool> m_enabled;  // read once without the lock to skip disabled loggers cheaply
    bool m_toConsole;
    bool m_toDebugger;
    bool m_append;
    bool m_fileOpen;
    uMutex m_lock;
    std::uint32_t m_bufferSize;
    std::unique_ptr<char[]> m_buffer;
    std::uint32_t m_categoryMask;
};

}  // namespace KW_MBR
