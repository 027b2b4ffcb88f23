#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when they are missing. The one list.
set -euo pipefail

packages=(
  cmake ninja-build g++ python3 binutils          # native build, export check
  googletest libgtest-dev libbenchmark-dev         # tests (GoogleTest sources serve the cross builds too)
  mingw-w64 g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix binutils-mingw-w64-x86-64 binutils-mingw-w64-i686
  wine64 wine                                      # the Windows test run
  clang-14 libclang-rt-14-dev                      # libFuzzer targets
  libicu-dev                                       # code pages, collation and case mapping on POSIX
  ncompress gzip                                   # peers of the LZW benchmarks
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}" >&2
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
# A failed index of a foreign architecture is only a warning here.
$sudo apt-get update >&2 || true
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}" >&2
