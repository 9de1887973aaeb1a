#!/usr/bin/env bash
# Times kestu-copy against the system's tools on the same 20,000,000-byte
# file in the page cache, in one run: a plain copy against cp, a split into
# 1400 KB volumes against split -b 1443840, and the join against cat.
# Prints each median and the ratio. Uses hyperfine when it is installed,
# else a loop of `date +%s%N`.
#
#   bench/compare-copy.sh [PATH/TO/kestu-copy] [RUNS]
set -euo pipefail

tool=$(realpath "${1:-build/release/kestu-copy}")
runs=${2:-15}
[ -x "$tool" ] || { echo "no kestu-copy at $tool" >&2; exit 1; }

work=$(mktemp -d /tmp/kestu_compare_XXXXXX)
trap 'rm -rf "$work"' EXIT
cd "$work"
head -c 20000000 /dev/urandom > data
cat data > /dev/null  # into the page cache

# Median wall time of a command, in microseconds, after one warm-up run.
median_us() {
  local times=() start end
  bash -c "$1" > /dev/null 2>&1
  for _ in $(seq "$runs"); do
    start=$(date +%s%N)
    bash -c "$1" > /dev/null 2>&1
    end=$(date +%s%N)
    times+=($(((end - start) / 1000)))
  done
  printf '%s\n' "${times[@]}" | sort -n | sed -n "$(((runs + 1) / 2))p"
}

# Each command removes its outputs first, so every run writes new files as
# the system tools do.
declare -A commands=(
  [cp]="rm -f c1; cp data c1"
  [kestu_copy]="rm -f c2; '$tool' data c2"
  [split]="rm -f part_*; split -b 1443840 data part_"
  [kestu_split]="rm -f vol.*; '$tool' data @vol"
  [cat]="rm -f j1; cat part_* > j1"
  [kestu_join]="rm -f j2; '$tool' @vol j2"
)
# The joins need their volumes.
bash -c "${commands[split]}"
bash -c "${commands[kestu_split]}" > /dev/null

declare -A median
if command -v hyperfine > /dev/null; then
  for name in cp kestu_copy split kestu_split cat kestu_join; do
    hyperfine -N --warmup 1 --runs "$runs" --export-json "$name.json" "bash -c \"${commands[$name]}\"" > /dev/null
    median[$name]=$(sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$name.json" | head -1 |
      awk '{ printf "%d", $1 * 1000000 }')
  done
else
  # Interleaved so that a noisy moment hits both sides of a pair.
  for pair in "cp kestu_copy" "split kestu_split" "cat kestu_join"; do
    for name in $pair; do median[$name]=$(median_us "${commands[$name]}"); done
  done
fi

cmp -s data c2 || { echo "kestu-copy's copy differs" >&2; exit 1; }
cmp -s data j2 || { echo "kestu-copy's join differs" >&2; exit 1; }

report() {  # system kestu label
  awk -v s="${median[$1]}" -v k="${median[$2]}" -v label="$3" \
    'BEGIN { printf "%-6s system %8.1f ms   kestu-copy %8.1f ms   ratio %.2fx\n", label, s / 1000, k / 1000, k / s }'
}
echo "20,000,000 bytes in the page cache, median of $runs runs"
report cp kestu_copy "copy"
report split kestu_split "split"
report cat kestu_join "join"
