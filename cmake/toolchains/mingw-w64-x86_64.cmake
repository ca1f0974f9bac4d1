# Cross-build for 64-bit Windows with Debian's mingw-w64 compilers (posix thread model).
# Executables run under Wine: CTest and gtest discovery reach them through
# CMAKE_CROSSCOMPILING_EMULATOR, with a throw-away Wine prefix inside the build tree.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(RLX_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${RLX_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${RLX_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${RLX_MINGW_TRIPLET}-windres)
set(CMAKE_AR ${RLX_MINGW_TRIPLET}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB ${RLX_MINGW_TRIPLET}-gcc-ranlib-posix CACHE FILEPATH "")

# Xerces-C and GoogleTest built for this target by scripts/windows/, cached outside the work
# tree. The environment variable wins so that CI machines can move the cache.
if(DEFINED ENV{RLX_MINGW_DEPS_DIR})
  set(RLX_MINGW_DEPS_DIR "$ENV{RLX_MINGW_DEPS_DIR}")
elseif(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(RLX_MINGW_DEPS_DIR "$ENV{XDG_CACHE_HOME}/rlxpropertyhelper/mingw")
else()
  set(RLX_MINGW_DEPS_DIR "$ENV{HOME}/.cache/rlxpropertyhelper/mingw")
endif()
file(GLOB RLX_MINGW_DEPS_PREFIXES LIST_DIRECTORIES true "${RLX_MINGW_DEPS_DIR}/*/install")

set(CMAKE_FIND_ROOT_PATH /usr/${RLX_MINGW_TRIPLET} ${RLX_MINGW_DEPS_PREFIXES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The C and C++ runtimes and winpthread go into each module, so that neither Wine nor a
# debugger's process has to find the compiler's DLLs.
set(rlx_static_runtime "-static")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${rlx_static_runtime}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${rlx_static_runtime}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${rlx_static_runtime}")

find_program(RLX_WINE NAMES wine64 wine PATHS /usr/lib/wine /usr/lib64/wine NO_CMAKE_FIND_ROOT_PATH)
if(RLX_WINE)
  if(NOT RLX_WINEPREFIX)
    set(RLX_WINEPREFIX "${CMAKE_BINARY_DIR}/wineprefix")
  endif()
  # The programs find the project's DLL, and the third-party DLLs copied next to it, at the
  # top of the build tree; Z: is Wine's drive for the host's root.
  set(rlx_wine_path "Z:${CMAKE_BINARY_DIR}")
  set(CMAKE_CROSSCOMPILING_EMULATOR
      /usr/bin/env "WINEPREFIX=${RLX_WINEPREFIX}" "WINEDEBUG=-all" "WINEPATH=${rlx_wine_path}" "${RLX_WINE}")
endif()
