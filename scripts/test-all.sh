#!/usr/bin/env bash
# Builds everything and runs every test: the Linux suite, the sanitizer suites, the fuzz
# smoke runs and the Windows suite under Wine. Each step installs what it needs.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset default
cmake --build --preset default
ctest --preset default

# The whole suite again under address+undefined sanitizers (leak checking on, with the
# suppressions of tests/lsan.supp), the logger threads under the thread sanitizer, and each
# fuzzer for 60 seconds from its seed corpus.
bash scripts/hardening/sanitizer-suite.sh
bash scripts/hardening/fuzz-smoke.sh

# The 64-bit Windows DLL, cross-built with mingw-w64; its whole suite runs under Wine.
bash scripts/windows/test-windows.sh
