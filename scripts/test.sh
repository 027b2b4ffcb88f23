#!/usr/bin/env bash
# The whole test run: native, sanitizers, Windows x86_64 under Wine, the 32-bit DLL's build and export
# check, and a short run of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh

fuzz_seconds=${VEXTOOLS_FUZZ_SECONDS:-10}
presets=(linux linux-asan mingw64 mingw32 fuzz)
for preset in "${presets[@]}"; do
  echo "=== build: $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
done

export WINEDEBUG=-all WINEPREFIX="$PWD/build/wineprefix"
[ -d "$WINEPREFIX" ] || wineboot --init >/dev/null 2>&1 || true

failed=0
for preset in linux linux-asan mingw64 mingw32; do
  echo "=== test: $preset"
  ctest --preset "$preset" || failed=1
done
echo "=== fuzz (${fuzz_seconds}s a target)"
scripts/fuzz.sh build/fuzz "$fuzz_seconds" || failed=1

if [ $failed -ne 0 ]; then
  echo "Some tests failed."
  exit 1
fi
echo "All tests passed."
