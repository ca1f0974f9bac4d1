// The severities with which each reader reports its failures (internal).
#pragma once

#include "SaxFailureSeverities.h"

namespace TargetOperations {

// Property database: Error throughout, Warning for recoverable errors.
const SaxFailureSeverities& PropertyDBFailureSeverities();

// Driver table: Internal for Xerces's own failures, Error when anything else escapes.
const SaxFailureSeverities& DriverDBFailureSeverities();

}  // namespace TargetOperations
