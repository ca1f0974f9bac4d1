#!/usr/bin/env bash
# Builds the library and the rlxprop tool, then runs the main job on the bundled sample
# databases: the driver table, the linked tree of a job, and the tree after one edit.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset default
cmake --build --preset default

rlxprop=build/default/tools/rlxprop/rlxprop
show() {
  local shown="" arg
  for arg in "$@"; do
    if [[ "$arg" == *" "* ]]; then shown+=" \"$arg\""; else shown+=" $arg"; fi
  done
  printf '\n$ rlxprop%s\n' "$shown"
  "$rlxprop" "$@"
}
show cpus
show tree --cpu 4120
show tree --cpu 4120 --set "Type=Data Match"
