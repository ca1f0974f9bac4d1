// Where the library finds its XML files: the directory named by "KORVA_XMLDB" (internal).
#pragma once

#include <string>

namespace TargetOperations {

// "KORVA_XMLDB" is read anew on every call, so a host may switch directories between calls.
// An unset variable gives the bare file name; otherwise the directory, "/" and the name,
// with no further separator handling.
std::string XmlDbPath(const std::string& fileName);

// A path exists when it opens as an input stream with shared read access; the stream is
// closed again at once.
bool XmlFileExists(const std::string& path);

// The failure text of a file that did not load. Callers build it where a load fails but show
// it nowhere: the log line written beside it is the only report a host gets.
std::string LoadFailureText(const std::string& path);

}  // namespace TargetOperations
