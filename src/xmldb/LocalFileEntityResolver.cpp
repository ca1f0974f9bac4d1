#include "LocalFileEntityResolver.h"

#include <cstddef>

namespace TargetOperations {

namespace {

bool IsAsciiLetter(XMLCh c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool IsSchemeCharacter(XMLCh c) {
    return IsAsciiLetter(c) || (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
}
bool IsSlash(XMLCh c) { return c == u'/' || c == u'\\'; }
XMLCh Lower(XMLCh c) { return (c >= u'A' && c <= u'Z') ? static_cast<XMLCh>(c - u'A' + u'a') : c; }

bool StartsWithIgnoringCase(const XMLCh* text, const char16_t* prefix) {
    for (; *prefix != 0; ++text, ++prefix) {
        if (*text == 0 || Lower(*text) != *prefix) return false;
    }
    return true;
}

// Length of a leading URL scheme ("http" in "http://..."), or 0. One letter before a colon
// is a drive letter, not a scheme.
std::size_t SchemeLength(const XMLCh* systemId) {
    if (!IsAsciiLetter(systemId[0])) return 0;
    std::size_t length = 1;
    while (IsSchemeCharacter(systemId[length])) ++length;
    return (systemId[length] == u':' && length > 1) ? length : 0;
}

// "file:" followed by nothing, one slash, or two slashes and an empty or "localhost" host.
bool IsLocalFileUrl(const XMLCh* systemId) {
    const XMLCh* rest = systemId + 5;  // after "file:"
    if (!(IsSlash(rest[0]) && IsSlash(rest[1]))) return true;
    const XMLCh* host = rest + 2;
    if (IsSlash(host[0])) return true;
    return StartsWithIgnoringCase(host, u"localhost") && IsSlash(host[9]);
}

}  // namespace

bool IsLocalSystemId(const XMLCh* systemId) {
    if (systemId == nullptr) return true;
    // "//server/share" and "\\server\share" reach other machines.
    if (IsSlash(systemId[0]) && IsSlash(systemId[1])) return false;
    const std::size_t scheme = SchemeLength(systemId);
    if (scheme == 0) return true;
    return scheme == 4 && StartsWithIgnoringCase(systemId, u"file:") && IsLocalFileUrl(systemId);
}

xercesc::InputSource* LocalFileEntityResolver::resolveEntity(const XMLCh* const /*publicId*/,
                                                             const XMLCh* const systemId) {
    if (!IsLocalSystemId(systemId)) throw NonLocalEntityRefused();
    return nullptr;  // Xerces resolves the local file as it always has
}

}  // namespace TargetOperations
