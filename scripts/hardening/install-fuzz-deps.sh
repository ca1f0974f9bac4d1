#!/usr/bin/env bash
# Installs what the fuzz build needs besides the ordinary build: clang with libFuzzer and the
# sanitizer runtimes, and llvm-symbolizer for readable reports.
set -euo pipefail
exec bash "$(dirname "$0")/../install-deps.sh" clang libclang-rt-14-dev llvm
