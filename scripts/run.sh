#!/usr/bin/env bash
# The main job: the host program on the bundled sample data (--windows: the Windows build under Wine).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
if [ "${1:-}" = "--windows" ]; then
  shift
  cmake --preset mingw64 >/dev/null
  cmake --build --preset mingw64 --target vexhost vextools >/dev/null
  export WINEDEBUG=-all WINEPREFIX="$PWD/build/wineprefix"
  wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
  [ -x "$wine" ] || wine=wine
  exec "$wine" build/mingw64/bin/vexhost.exe --settings samples/vexhost.ini "$@"
fi
cmake --preset linux >/dev/null
cmake --build --preset linux --target vexhost vextools >/dev/null
exec build/linux/bin/vexhost --settings samples/vexhost.ini "$@"
