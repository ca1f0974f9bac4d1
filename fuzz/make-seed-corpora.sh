#!/usr/bin/env bash
# Assembles the seed corpora of the three fuzzers from the test fixtures and the samples.
# Usage: fuzz/make-seed-corpora.sh <output directory>
set -euo pipefail
source_dir="$(cd "$(dirname "$0")/.." && pwd)"
out="${1:?usage: make-seed-corpora.sh <output directory>}"

mkdir -p "$out/property_db" "$out/driver_table" "$out/api_session"

# Every XML file is a property database seed; the driver tables seed the driver-table fuzzer.
while IFS= read -r -d '' file; do
  name="$(echo "${file#"$source_dir"/}" | tr '/' '_')"
  cp "$file" "$out/property_db/$name"
  if grep -q "DRIVERTABLE\|<DRIVER>" "$file"; then cp "$file" "$out/driver_table/$name"; fi
done < <(find "$source_dir/tests/fixtures" "$source_dir/samples" -name '*.xml' -print0)

# Session seeds: byte strings that the session fuzzer decodes into call sequences (the first
# byte of each step chooses the call). Any bytes are valid; these only give it a start.
printf '\x00\x01\x00\x00\x02\x00\x04\x01\x06\x00\x0b\x00\x0c\x00\x0d\x00' > "$out/api_session/create_root_set_update"
printf '\x01\x00\x00\x02\x00\x07\x00\x00\x08\x00\x00\x02\x00\x0b\x01\x00\x00\x0c' > "$out/api_session/by_name_attach_cti"
printf '\x00\x01\x03\x00\x02\x00\x09\x00\x00\x41\x0a\x00\x01\x10\x00\x0e\x00\x0f\x00\x11\x01' > "$out/api_session/edits_and_lookups"
head -c 512 "$source_dir/samples/evt_demo_core.xml" > "$out/api_session/text_bytes"

echo "seeds: $(ls "$out/property_db" | wc -l) property databases, $(ls "$out/driver_table" | wc -l) driver tables, $(ls "$out/api_session" | wc -l) sessions"
