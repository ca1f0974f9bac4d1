# Sourced by the scripts of this folder: where the Windows builds of the third-party
# libraries are cached, outside the work tree. The toolchain file computes the same directory.
if [ -z "${RLX_MINGW_DEPS_DIR:-}" ]; then
  RLX_MINGW_DEPS_DIR="${XDG_CACHE_HOME:-$HOME/.cache}/rlxpropertyhelper/mingw"
fi
export RLX_MINGW_DEPS_DIR
RLX_REPO_DIR="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
RLX_MINGW_TOOLCHAIN="$RLX_REPO_DIR/cmake/toolchains/mingw-w64-x86_64.cmake"
