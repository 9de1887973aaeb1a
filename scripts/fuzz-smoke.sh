#!/usr/bin/env bash
# Builds every libFuzzer target with clang and runs each for a bounded time
# (FUZZ_SECONDS, default 10), seeded with the project's pictures, scripts
# and forms. Any crash, leak,
# sanitizer report, time-out or memory blow-up fails the script; the input
# that caused it is left in build/fuzz/artifacts/.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${FUZZ_SECONDS:-10}
build=build/fuzz
CC=clang CXX=clang++ cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DKESTU_FUZZ=ON -DKESTU_TESTS=OFF -DKESTU_BENCH=OFF >/dev/null

targets=()
for source in fuzz/*_fuzz.cpp; do
  targets+=("$(basename "$source" .cpp)")
done
cmake --build "$build" -j2 --target "${targets[@]}"

mkdir -p "$build/artifacts"
for target in "${targets[@]}"; do
  # Absolute: the script target works in a folder of its own.
  corpus="$PWD/$build/corpus/$target"
  mkdir -p "$corpus"
  echo "fuzz: $target for ${seconds}s"
  # The first folder collects new inputs; the project's own files only seed:
  # its scripts for the script language, its forms for form files, its
  # pictures for the decoders and bags. Scripts and forms may be long
  # enough to reach the nesting bound.
  case $target in
    script_fuzz) seeds=("$PWD"/tests/scripts/*/) max_len=65536 ;;
    form_fuzz) seeds=("$PWD/tests/e2e" "$PWD/examples") max_len=65536 ;;
    input_fuzz | utf8_fuzz) seeds=() max_len=4096 ;;
    *) seeds=(tests/data/pictures) max_len=0 ;;
  esac
  options=()
  [ "$max_len" -gt 0 ] && options+=(-max_len="$max_len")
  "$build/fuzz/$target" -max_total_time="$seconds" -rss_limit_mb=2560 -timeout=30 \
    -print_final_stats=1 -artifact_prefix="$PWD/$build/artifacts/$target-" "${options[@]}" \
    "$corpus" "${seeds[@]}" 2>"$build/$target.log" ||
    { tail -n 60 "$build/$target.log"; echo "fuzz: $target found a fault" >&2; exit 1; }
  grep -E '^stat::(number_of_executed_units|new_units_added)' "$build/$target.log" | tr '\n' ' '
  echo
done
echo "fuzz: every target ran ${seconds}s without findings"
