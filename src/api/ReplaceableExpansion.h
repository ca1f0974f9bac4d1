// Expansion of replaceable properties when a database is loaded (internal).
#pragma once

#include <string>

namespace TargetOperations {

class PropertyDB;

// True when a top-level property is replaceable or a top-level string property has
// replaceable allowed values.
bool HasReplaceables(const PropertyDB& database);

// Rewrites replaceable top-level properties from the replacement record sources.
void ExpandReplaceables(PropertyDB& database, const std::string& path);

}  // namespace TargetOperations
