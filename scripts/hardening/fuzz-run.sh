#!/usr/bin/env bash
# Runs one fuzzer of the fuzz build from its seed corpus.
# Usage: scripts/hardening/fuzz-run.sh <property_db|driver_table|api_session> <seconds> [libFuzzer options...]
# The growing corpus and any artifacts go to build/fuzz-work/<fuzzer>/, never into the sources.
set -euo pipefail
cd "$(dirname "$0")/../.."
root="$PWD"
name="${1:?fuzzer name}"
seconds="${2:?seconds}"
shift 2

binary="$root/build/fuzz/fuzz/rlx_fuzz_$name"
work="$root/build/fuzz-work"
[ -x "$binary" ] || { echo "missing $binary: build the fuzz preset first" >&2; exit 2; }
[ -d "$work/seeds/$name" ] || "$root/fuzz/make-seed-corpora.sh" "$work/seeds" >/dev/null
mkdir -p "$work/$name/corpus" "$work/$name/artifacts" "$work/$name/tmp" "$work/home"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export KW_TRACE_LOGGING=0 USERPROFILE="$work/home" TMPDIR="$work/$name/tmp"

# The XML fuzzers use the element-name dictionary; the session fuzzer's input is not XML.
dictionary=()
[ "$name" = api_session ] || dictionary=(-dict="$root/fuzz/rlx.dict")

# With -jobs libFuzzer writes fuzz-<n>.log into the current directory.
cd "$work/$name"
exec "$binary" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
  "${dictionary[@]}" -artifact_prefix="$work/$name/artifacts/" "$@" \
  "$work/$name/corpus" "$work/seeds/$name"
