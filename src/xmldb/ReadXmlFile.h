// The one parse sequence shared by the property database and the driver table (internal).
#pragma once

#include <cstdint>
#include <string>

#include <xercesc/sax/HandlerBase.hpp>

#include "SaxFailureSeverities.h"

namespace TargetOperations {

// Initialises Xerces, parses fileName with a default SAXParser that reports to handler
// (document and error handler), and terminates Xerces on every path past a successful
// initialisation. Returns 0, or writes the failure's trace line and throws korvaError with
// the failure's text and the given severity.
std::uint32_t ReadXmlFile(const std::string& fileName, xercesc::HandlerBase& handler,
                          const SaxFailureSeverities& severities);

}  // namespace TargetOperations
