#!/usr/bin/env bash
# Installs what the Windows cross-build and its Wine test run need on Debian 12, and enables
# the source entries of the Debian archive already in use so that Xerces-C can be fetched with
# `apt-get source`. Installs only what is missing; safe to run again.
set -euo pipefail

packages=(
  cmake ninja-build python3 dpkg-dev
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 mingw-w64-x86-64-dev
  googletest nlohmann-json3-dev libcli11-dev
  wine64
)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

# Source entries: mirror the binary entries of the main archive (same URIs, suites, components
# and keyring), unless some source entry is already configured.
deb_src_file=/etc/apt/sources.list.d/rlx-deb-src.sources
need_update=0
if ! grep -rqsE '^(deb-src|Types:.*deb-src)' /etc/apt/sources.list /etc/apt/sources.list.d/; then
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed -e 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources | as_root tee "$deb_src_file" >/dev/null
  elif [ -f /etc/apt/sources.list ]; then
    grep -E '^deb ' /etc/apt/sources.list | sed -e 's/^deb /deb-src /' | as_root tee /etc/apt/sources.list.d/rlx-deb-src.list >/dev/null
  else
    echo "install-windows-deps: no Debian archive entry found to mirror as deb-src" >&2
    exit 1
  fi
  need_update=1
fi

if [ "${#missing[@]}" -gt 0 ] || [ "$need_update" -eq 1 ]; then
  as_root apt-get update
fi
if [ "${#missing[@]}" -gt 0 ]; then
  echo "install-windows-deps: installing ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
fi
