#!/usr/bin/env bash
# The Windows suite: installs what is missing, builds (or reuses) the cached Windows builds of
# Xerces-C and GoogleTest, cross-builds the DLL, its tests and rlxprop.exe with the "windows"
# preset, and runs every test under Wine in a throw-away prefix inside the build tree.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/mingw-deps-dir.sh"
cd "$RLX_REPO_DIR"

step() { echo "== $* ($(date -u +%H:%M:%S))"; }

step "packages"
bash "$here/install-windows-deps.sh"
step "cached dependencies in $RLX_MINGW_DEPS_DIR"
bash "$here/build-xerces-mingw.sh"
bash "$here/build-gtest-mingw.sh"
bash "$here/stage-header-libs-mingw.sh"

build_dir="$RLX_REPO_DIR/build/windows"
step "configure"
cmake --preset windows
step "build"
cmake --build --preset windows -j "${RLX_BUILD_JOBS:-2}"

# A fresh Wine prefix per run: nothing from an earlier run leaks into this one.
wine="$(command -v wine64 || true)"
[ -n "$wine" ] || wine=/usr/lib/wine/wine64
export WINEPREFIX="$build_dir/wineprefix"
export WINEDEBUG=-all
step "Wine prefix $WINEPREFIX"
rm -rf "$WINEPREFIX"
"$wine" wineboot --init
wineserver="$(dirname "$wine")/wineserver"
[ -x "$wineserver" ] || wineserver="$(command -v wineserver || echo /usr/lib/wine/wineserver)"
# One server for the whole run, so that ~700 short test processes do not each start one.
"$wineserver" --persistent=600 || true

# The tool's trees under Wine are also compared with the Linux build's tool when it exists.
linux_rlxprop="$RLX_REPO_DIR/build/default/tools/rlxprop/rlxprop"
if [ -z "${RLX_LINUX_RLXPROP:-}" ] && [ -x "$linux_rlxprop" ]; then
  export RLX_LINUX_RLXPROP="$linux_rlxprop"
fi

# Wine numbers processes from the same start in every fresh prefix, and the logger names its
# files after the process number: clear the log files and scratch directories of earlier runs
# so that they cannot mix into this one.
find "$build_dir/tests" -type d \( -name .KW-trace -o -name scratch \) -prune -exec rm -rf {} +

step "tests under Wine"
# Under Wine a test process very rarely (about once in 700 starts) ends at once with no output
# at all, below the test and the launcher; reruns pass. A test that really fails fails all
# three attempts, and ctest's output names every rerun.
status=0
ctest --preset windows --repeat until-pass:3 || status=$?
"$wineserver" --kill || true
step "done (ctest exit $status)"
exit "$status"
