// The one export macro of the library. Everything not marked RLX_API stays hidden
// (-fvisibility=hidden on ELF, no dllexport on Windows).
#pragma once

#if defined(_WIN32)
#  if defined(RLXPROPERTYHELPER_BUILDING)
#    define RLX_API __declspec(dllexport)
#  elif defined(RLXPROPERTYHELPER_STATIC)
#    define RLX_API
#  else
#    define RLX_API __declspec(dllimport)
#  endif
#else
#  define RLX_API __attribute__((visibility("default")))
#endif
