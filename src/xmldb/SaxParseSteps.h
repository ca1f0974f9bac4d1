// The three steps of one file read that go to Xerces itself (internal).
#pragma once

#include <xercesc/parsers/SAXParser.hpp>

namespace TargetOperations {

// The library uses the defaults below. Tests install a replacement to reach failure paths
// that no input file can trigger (Xerces turns every exception raised during a parse into a
// fatal error, and the default parser settings never count recoverable errors).
class SaxParseSteps {
public:
    virtual ~SaxParseSteps();

    // XMLPlatformUtils::Initialize with the default locale and nothing else.
    virtual void Initialize();
    // parser.parse(fileName), the name given as 8-bit text.
    virtual void Parse(xercesc::SAXParser& parser, const char* fileName);
    // XMLPlatformUtils::Terminate.
    virtual void Terminate();
};

// The steps in use: the defaults unless a replacement is installed.
SaxParseSteps& CurrentSaxParseSteps();

// Installs steps owned by the caller; null restores the defaults.
void InstallSaxParseSteps(SaxParseSteps* steps);

}  // namespace TargetOperations
