#!/usr/bin/env bash
# The whole test suite under the address and undefined-behaviour sanitizers (leak checking
# on, with the suppressions of tests/lsan.supp), then the multi-threaded tests under the
# thread sanitizer.
set -euo pipefail
cd "$(dirname "$0")/../.."

cmake --preset asan
cmake --build --preset asan -j2
ctest --preset asan

cmake --preset tsan
cmake --build --preset tsan -j2 --target rlxph_stress_tests
ctest --preset tsan -R '^LoggerThreads\.'
