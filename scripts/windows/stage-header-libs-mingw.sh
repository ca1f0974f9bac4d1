#!/usr/bin/env bash
# Stages Debian's header-only libraries that rlxprop uses (nlohmann/json from
# nlohmann-json3-dev, CLI11 from libcli11-dev) in the dependency cache, so that the cross-build
# finds them without searching the host's own include directories. Their package files locate
# the headers relative to themselves, so a copy of both keeps working.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/mingw-deps-dir.sh"

# stage <Debian package> <cache name> <header directory> <package-file directory>
stage() {
  local package="$1" name="$2" headers="$3" config="$4"
  local version
  version="$(dpkg-query -W -f='${Version}' "$package" 2>/dev/null || true)"
  if [ -z "$version" ] || [ ! -d "/usr/include/$headers" ] || [ ! -d "/usr/share/cmake/$config" ]; then
    echo "stage-header-libs-mingw: $package is missing (run install-windows-deps.sh)" >&2
    exit 1
  fi
  local root="$RLX_MINGW_DEPS_DIR/$name-$version"
  if [ -f "$root/complete" ]; then
    echo "stage-header-libs-mingw: reusing $root/install"
    return
  fi
  rm -rf "$root"
  mkdir -p "$root/install/include" "$root/install/share/cmake"
  cp -r "/usr/include/$headers" "$root/install/include/"
  cp -r "/usr/share/cmake/$config" "$root/install/share/cmake/"
  touch "$root/complete"
  echo "stage-header-libs-mingw: staged $root/install"
}

stage nlohmann-json3-dev nlohmann-json nlohmann nlohmann_json
stage libcli11-dev cli11 CLI CLI11
