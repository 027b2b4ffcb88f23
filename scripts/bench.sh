#!/usr/bin/env bash
# Every benchmark program of the linux preset, each comparing the library with its peers in one run.
# VEXTOOLS_BENCH_MB sets the size of generated inputs where a benchmark takes one.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset linux >/dev/null
cmake --build --preset linux
for bench in build/linux/bin/bench_*; do
  echo "== $(basename "$bench")"
  "$bench" "$@"
done
