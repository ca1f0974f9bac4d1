// Which directory of XML files the tool works on: --xmldb, else "KORVA_XMLDB", else the
// sample databases installed with the tool (or, in a build tree, the source samples).
#pragma once

#include <string>

namespace rlxprop {

struct XmlDirectory {
    std::string path;
    std::string origin;  // "--xmldb", "KORVA_XMLDB" or "bundled samples"
};

XmlDirectory ResolveXmlDirectory(const std::string& option);

// Points the library at `directory` ("KORVA_XMLDB" is read on every library call).
void UseXmlDirectory(const std::string& directory);

}  // namespace rlxprop
