#include "uLogger.h"

#include <cstdio>
#include <cstring>

#include "Platform.h"
#include "uMutexLock.h"
#include "uTime.h"

namespace KW_MBR {

namespace {

const char* TimeStampPattern(std::uint32_t mode) {
    switch (mode) {
        case uLogger::DateStamp:
            return "%m/%d/%y | ";
        case uLogger::TimeStamp:
            return "%H:%M:%S:%s | ";
        case uLogger::DateAndTimeStamp:
            return "%m/%d/%y %H:%M:%S:%s | ";
        default:
            return nullptr;  // no time stamp: a single blank
    }
}

void AppendFormatted(std::string& line, const char* format, va_list arguments) {
    if (format == nullptr) return;
    va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length <= 0) return;
    const std::size_t start = line.size();
    line.resize(start + static_cast<std::size_t>(length) + 1);
    std::vsnprintf(&line[start], static_cast<std::size_t>(length) + 1, format, arguments);
    line.resize(start + static_cast<std::size_t>(length));
}

}  // namespace

uLogger::uLogger(const std::string& path, bool append)
    : m_path(path),
      m_enabled(true),
      m_toConsole(false),
      m_toDebugger(false),
      m_append(append),
      m_fileOpen(false),
      m_bufferSize(kBufferSize),
      m_buffer(new char[kBufferSize]),
      m_categoryMask(kAllCategories) {
    m_buffer[0] = '\0';
}

uLogger::~uLogger() { m_file.Close(); }

bool uLogger::SetEnabled(bool enabled) {
    uMutexLock guard(m_lock);
    const bool former = m_enabled.load();
    m_enabled.store(enabled);
    if (!enabled) {
        m_file.Close();
        m_fileOpen = false;
    }
    return former;
}

void uLogger::SetToConsole(bool toConsole) {
    uMutexLock guard(m_lock);
    m_toConsole = toConsole;
}

void uLogger::SetToDebugger(bool toDebugger) {
    uMutexLock guard(m_lock);
    m_toDebugger = toDebugger;
}

std::string uLogger::FlagPrefix(std::uint32_t flags) {
    static const char kLetters[5] = {'M', 'W', 'F', 'A', 'E'};
    std::string prefix(6, ' ');
    for (int bit = 0; bit < 5; ++bit) {
        if ((flags & (1u << bit)) != 0) prefix[static_cast<std::size_t>(bit)] = kLetters[bit];
    }
    return prefix;
}

void uLogger::RemoveOneLineEnd(std::string& line) {
    if (line.empty()) return;
    const char last = line.back();
    if (last != '\n' && last != '\r') return;
    line.pop_back();
    const char partner = (last == '\n') ? '\r' : '\n';
    if (!line.empty() && line.back() == partner) line.pop_back();
}

void uLogger::Write(std::uint32_t flags, std::uint32_t mode, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    WriteV(flags, mode, format, arguments);
    va_end(arguments);
}

void uLogger::WriteV(std::uint32_t flags, std::uint32_t mode, const char* format, va_list arguments) {
    // The mask is only tested for being non-zero: the flags are not filtered against it.
    if (!m_enabled.load() || flags == 0 || m_categoryMask == 0) return;

    uMutexLock guard(m_lock);

    // Flag letters and time stamp are assembled in the fixed buffer; the message follows
    // without a bound of its own.
    const std::string prefix = FlagPrefix(flags);
    std::memcpy(m_buffer.get(), prefix.data(), prefix.size());
    char* stamp = m_buffer.get() + prefix.size();
    const int stampSize = static_cast<int>(m_bufferSize - prefix.size());
    int stampLength = 0;
    if (const char* pattern = TimeStampPattern(mode)) {
        stampLength = uTime().Format(stamp, stampSize, pattern);
    } else {
        stamp[0] = ' ';
        stampLength = 1;
    }
    std::string line(m_buffer.get(), prefix.size() + static_cast<std::size_t>(stampLength));
    AppendFormatted(line, format, arguments);

    if (m_enabled.load()) {
        if (!m_fileOpen) m_fileOpen = m_file.Open(m_path.c_str(), m_append ? "a+" : "w+");
        RemoveOneLineEnd(line);
        line += '\n';
        m_file.Write(line.data(), line.size());
        m_file.Flush();
        if (m_toConsole) {
            std::printf("%s", line.c_str());
            std::fflush(stdout);
        }
        if (m_toDebugger) Platform::DebuggerOutput(line.c_str());
    }
}

}  // namespace KW_MBR
