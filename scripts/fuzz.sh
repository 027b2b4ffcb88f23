#!/usr/bin/env bash
# Runs every libFuzzer target of a fuzz build for a few seconds each.
set -euo pipefail
build=${1:-build/fuzz}
seconds=${2:-10}
status=0
shopt -s nullglob
for target in "$build"/bin/fuzz_*; do
  name=$(basename "$target")
  corpus="$build/corpus/$name"
  mkdir -p "$corpus"
  echo "== $name (${seconds}s)"
  if ! "$target" -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=0 "$corpus" \
       >"$build/$name.log" 2>&1; then
    tail -40 "$build/$name.log"
    status=1
  fi
done
exit $status
