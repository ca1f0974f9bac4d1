#include "Style.h"

#include <cstdio>

#include "../../src/support/Platform.h"

namespace rlxprop {

bool ColourWanted(bool noColourFlag) {
    if (noColourFlag) return false;
    std::string noColour;
    if (KW_MBR::Platform::GetEnvironment("NO_COLOR", noColour) && !noColour.empty()) return false;
    return KW_MBR::Platform::IsTerminal(stdout);
}

}  // namespace rlxprop
