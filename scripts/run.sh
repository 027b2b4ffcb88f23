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
  host=("$wine" build/mingw64/bin/vexhost.exe)
  work=build/mingw64/run
else
  cmake --preset linux >/dev/null
  cmake --build --preset linux --target vexhost vextools >/dev/null
  host=(build/linux/bin/vexhost)
  work=build/linux/run
fi
if [ $# -gt 0 ]; then
  exec "${host[@]}" --settings samples/vexhost.ini "$@"
fi
# The sample job: what the library finds of its host, then an import of the sample stations, whose
# problems land in the .ERR report beside the imported copy.
mkdir -p "$work"
cp samples/stations.txt "$work/"
"${host[@]}" --settings samples/vexhost.ini info
"${host[@]}" --settings samples/vexhost.ini import "$work/stations.txt"
if [ -f "$work/stations.ERR" ]; then
  echo "report $work/stations.ERR:"
  cat "$work/stations.ERR"
fi
