#include "NarrowText.h"

namespace TargetOperations {

std::string NarrowText(const XMLCh* text) {
    std::string narrowed;
    if (text == nullptr) return narrowed;
    for (const XMLCh* unit = text; *unit != 0; ++unit) {
        narrowed.push_back(static_cast<char>(static_cast<unsigned char>(*unit & 0xFF)));
    }
    return narrowed;
}

}  // namespace TargetOperations
