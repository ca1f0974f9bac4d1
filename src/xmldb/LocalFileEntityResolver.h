// Entity resolution of the XML readers: local files only (internal).
#pragma once

#include <exception>

#include <xercesc/sax/EntityResolver.hpp>

namespace TargetOperations {

// Thrown out of a parse when a file names an external entity or DTD that is not a local file.
class NonLocalEntityRefused : public std::exception {
public:
    const char* what() const noexcept override { return "external entity outside the local file system"; }
};

// A database file must not make the library reach the network: a system identifier with a
// URL scheme other than "file", a "file" URL naming a host, or a network share path is
// refused by throwing NonLocalEntityRefused, which fails the parse. Local files are left to
// Xerces's own resolution, so they are read exactly as without this resolver.
class LocalFileEntityResolver : public xercesc::EntityResolver {
public:
    xercesc::InputSource* resolveEntity(const XMLCh* const publicId, const XMLCh* const systemId) override;
};

// Whether a system identifier, as written in the file, names a local file.
bool IsLocalSystemId(const XMLCh* systemId);

}  // namespace TargetOperations
