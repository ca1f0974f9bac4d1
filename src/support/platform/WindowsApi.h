// <windows.h> as the platform code uses it: the lean set of declarations and no min/max
// macros, which would break std::min and std::max wherever the header is seen.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
