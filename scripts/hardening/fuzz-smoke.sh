#!/usr/bin/env bash
# Builds the fuzzers and runs each one for 60 seconds from its seed corpus, with a fixed
# random seed so that a run on a fresh clone is repeatable. A crash, leak,
# timeout or out-of-memory report fails the script; the input is left in
# build/fuzz-work/<fuzzer>/artifacts.
set -euo pipefail
cd "$(dirname "$0")/../.."

bash scripts/hardening/install-fuzz-deps.sh
cmake --preset fuzz
cmake --build --preset fuzz -j2 --target rlx_fuzzers
bash fuzz/make-seed-corpora.sh build/fuzz-work/seeds

status=0
for fuzzer in property_db driver_table api_session; do
  log="build/fuzz-work/$fuzzer-smoke.log"
  echo "== $fuzzer: 60 s (log: $log)"
  if bash scripts/hardening/fuzz-run.sh "$fuzzer" 60 -seed=1 > "$log" 2>&1; then
    grep -E '^#[0-9]+[[:space:]]+DONE|^stat::number_of_executed_units' "$log" || true
  else
    tail -n 80 "$log"
    echo "== $fuzzer: FAILED" >&2
    status=1
  fi
done
exit $status
