// The one parse sequence shared by the property database and the driver table (internal).
#pragma once

#include <cstdint>
#include <string>

#include <xercesc/sax/HandlerBase.hpp>

#include "SaxFailureSeverities.h"

namespace TargetOperations {

// Entity references one read may expand, nested ones included. Past it Xerces reports a
// fatal error and the read fails as a malformed file does.
constexpr XMLSize_t kEntityExpansionLimit = 10000;

// Initialises Xerces, parses fileName with a default SAXParser that reports to handler
// (document and error handler), and terminates Xerces on every path past a successful
// initialisation. Entity expansion is bounded and external entities must be local files.
// Returns 0, or writes the failure's trace line and throws korvaError with
// the failure's text and the given severity.
std::uint32_t ReadXmlFile(const std::string& fileName, xercesc::HandlerBase& handler,
                          const SaxFailureSeverities& severities);

}  // namespace TargetOperations
