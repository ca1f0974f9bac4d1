#!/usr/bin/env bash
# Builds the library and runs the main job on the bundled sample databases.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset default
cmake --build --preset default
./build/default/examples/rlx_example_tree
