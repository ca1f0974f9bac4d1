#!/usr/bin/env bash
# Builds everything with the default preset and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset default
cmake --build --preset default
ctest --preset default
