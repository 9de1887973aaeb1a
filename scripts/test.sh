#!/usr/bin/env bash
# Installs what is needed, then builds and runs every test twice: a normal
# build with warnings as errors, and a build under AddressSanitizer and
# UndefinedBehaviorSanitizer. Then a short, bounded run of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)
configure_and_build() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -DKESTU_WERROR=ON "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
}

echo "== normal build"
# Laid out as Debian's packages are (/usr, the multiarch library folder),
# which the install check then installs under DESTDIR and at a staging prefix.
configure_and_build build/release -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr
ctest --test-dir build/release --output-on-failure -j "$jobs"

echo "== AddressSanitizer + UndefinedBehaviorSanitizer build"
configure_and_build build/asan -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 \
  -DKESTU_SANITIZE=ON -DKESTU_BENCH=OFF
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  LSAN_OPTIONS=suppressions=$PWD/scripts/lsan.supp \
  ctest --test-dir build/asan --output-on-failure -j "$jobs"

echo "== installed package"
bash scripts/check-install.sh build/release

echo "== Debian packages"
bash scripts/check-packages.sh build/release

if [ -f scripts/fuzz-smoke.sh ]; then
  echo "== fuzz smoke"
  FUZZ_SECONDS=${FUZZ_SECONDS:-10} bash scripts/fuzz-smoke.sh
fi
