// A failure the tool reports as one line on standard error, with its own exit code.
#pragma once

#include <stdexcept>
#include <string>

namespace rlxprop {

enum ExitCode : int {
    ExitOk = 0,
    ExitUsage = 2,            // bad arguments, malformed numbers
    ExitDirectory = 3,        // no usable XML directory or driver table
    ExitUnknownCpu = 4,       // no driver table row for the CPU type
    ExitDatabase = 5,         // a database or module file is missing or does not parse
    ExitUnknownProperty = 6,  // --set or get names no property
    ExitRefused = 7,          // the property refused the value
    ExitInternal = 10         // anything the tool did not expect
};

class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, const std::string& message) : std::runtime_error(message), m_code(code) {}
    ExitCode Code() const { return m_code; }

private:
    ExitCode m_code;
};

}  // namespace rlxprop
