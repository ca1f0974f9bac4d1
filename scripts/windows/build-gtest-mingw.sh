#!/usr/bin/env bash
# Builds GoogleTest for 64-bit Windows from the sources Debian ships with libgtest-dev
# (/usr/src/googletest) and installs it into the dependency cache. A complete earlier build of
# the same version is reused as it is.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/mingw-deps-dir.sh"

GTEST_SOURCE_DIR=/usr/src/googletest
jobs="${RLX_BUILD_JOBS:-2}"

version="$(dpkg-query -W -f='${Version}' googletest 2>/dev/null || true)"
if [ -z "$version" ] || [ ! -f "$GTEST_SOURCE_DIR/CMakeLists.txt" ]; then
  echo "build-gtest-mingw: Debian's googletest sources are missing (run install-windows-deps.sh)" >&2
  exit 1
fi

root="$RLX_MINGW_DEPS_DIR/googletest-$version"
prefix="$root/install"
if [ -f "$root/complete" ]; then
  echo "build-gtest-mingw: reusing $prefix"
  exit 0
fi

rm -rf "$root"
mkdir -p "$root"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

cmake -G Ninja -S "$GTEST_SOURCE_DIR" -B "$work/build" \
  -DCMAKE_TOOLCHAIN_FILE="$RLX_MINGW_TOOLCHAIN" \
  -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_INSTALL_PREFIX="$prefix" \
  -DBUILD_SHARED_LIBS=OFF \
  -DBUILD_GMOCK=OFF \
  -DINSTALL_GTEST=ON
cmake --build "$work/build" -j "$jobs"
cmake --install "$work/build"
touch "$root/complete"
echo "build-gtest-mingw: installed $prefix"
