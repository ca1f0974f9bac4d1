#!/usr/bin/env bash
# Installs the Debian packages the build needs, and any further ones named as arguments, only
# when one is missing.
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config libxerces-c-dev libgtest-dev libgmock-dev
          libbenchmark-dev libcli11-dev nlohmann-json3-dev python3 python3-jsonschema graphviz "$@")

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
