#!/usr/bin/env bash
# Builds Xerces-C for 64-bit Windows from Debian's own source package and installs it into the
# dependency cache. A complete earlier build is reused as it is.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/mingw-deps-dir.sh"

XERCES_DEB_VERSION="3.2.4+debian-1"
jobs="${RLX_BUILD_JOBS:-2}"

root="$RLX_MINGW_DEPS_DIR/xerces-c-$XERCES_DEB_VERSION"
prefix="$root/install"
if [ -f "$root/complete" ]; then
  echo "build-xerces-mingw: reusing $prefix"
  exit 0
fi

rm -rf "$root"
mkdir -p "$root"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

(cd "$work" && apt-get source -qq "xerces-c=$XERCES_DEB_VERSION")
src="$(find "$work" -mindepth 1 -maxdepth 1 -type d -name 'xerces-c-*' | head -n 1)"
if [ -z "$src" ]; then
  echo "build-xerces-mingw: apt-get source produced no source tree" >&2
  exit 1
fi
# Only the library is needed: leave the documentation (stripped from Debian's tarball), the
# test programs and the samples out of the build.
sed -i -e '/^add_subdirectory(doc)/d' -e '/^add_subdirectory(tests)/d' -e '/^add_subdirectory(samples)/d' "$src/CMakeLists.txt"

cmake -G Ninja -S "$src" -B "$work/build" \
  -DCMAKE_TOOLCHAIN_FILE="$RLX_MINGW_TOOLCHAIN" \
  -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_INSTALL_PREFIX="$prefix" \
  -DBUILD_SHARED_LIBS=ON \
  -Dnetwork=OFF \
  -Dtranscoder=windows \
  -Dmessage-loader=inmemory \
  -Dmutex-manager=windows \
  -Dfile-manager=windows
cmake --build "$work/build" -j "$jobs"
cmake --install "$work/build"
touch "$root/complete"
echo "build-xerces-mingw: installed $prefix"
