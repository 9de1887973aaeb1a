#!/usr/bin/env bash
# Times kestu-copy, with its default settings, against the system's tools
# on ext4 and on tmpfs, for a 20 MB and a 200 MB file in the page cache: a
# plain copy against cp, a split into 1400 KB volumes against
# split -b 1443840, the join of the same volumes against cat; and the
# start-up, as 50 copies of a 1-byte file against 50 by cp.
# Only the program is timed: the outputs of the run before are removed
# first, untimed, so that every run writes new files as the system tools
# do. The two sides run in turn, so that a noisy moment hits both, and the
# whole script runs on one core. Prints each median and the ratio.
#
#   bench/compare-copy.sh [PATH/TO/kestu-copy] [RUNS]
#
# KESTU_BENCH_EXT4 and KESTU_BENCH_TMPFS choose the folders (by default
# $TMPDIR or /tmp, and /dev/shm); a folder on another file system is
# skipped with a word.
set -euo pipefail

if command -v taskset > /dev/null && [ -z "${KESTU_BENCH_PINNED:-}" ]; then
  KESTU_BENCH_PINNED=1 exec taskset -c "$(($(nproc) - 1))" bash "$0" "$@"
fi

tool=$(realpath "${1:-build/release/kestu-copy}")
runs=${2:-9}
[ -x "$tool" ] || { echo "no kestu-copy at $tool" >&2; exit 1; }

# Wall time of one run of "untimed preparation|timed command", in µs.
time_us() {
  local prepare=${1%%|*} command=${1#*|} start end
  eval "$prepare"
  start=${EPOCHREALTIME/./}
  eval "$command" > /dev/null 2>&1
  end=${EPOCHREALTIME/./}
  echo $((end - start))
}

median() { sort -n | sed -n "$(((runs + 1) / 2))p"; }

# label, the system's "prepare|command", kestu-copy's "prepare|command"
compare() {
  local label=$1 system=$2 kestu=$3 times_s=() times_k=()
  time_us "$system" > /dev/null
  time_us "$kestu" > /dev/null  # warm-up
  for _ in $(seq "$runs"); do
    times_s+=("$(time_us "$system")")
    times_k+=("$(time_us "$kestu")")
  done
  local s k
  s=$(printf '%s\n' "${times_s[@]}" | median)
  k=$(printf '%s\n' "${times_k[@]}" | median)
  awk -v s="$s" -v k="$k" -v label="$label" \
    'BEGIN { printf "  %-8s system %9.2f ms   kestu-copy %9.2f ms   ratio %.2fx\n", label, s / 1000, k / 1000, k / s }'
}

bench_size() {  # bytes
  head -c "$1" /dev/urandom > data
  cat data > /dev/null  # into the page cache
  # Both joins read the same volumes, kestu-copy's, which must be byte for
  # byte split's parts: how a file was written shapes its pages in the
  # cache, so joining different copies would compare the writers too.
  split -b 1443840 data part_
  "$tool" data @vol > /dev/null
  local parts=(part_*) volumes=(vol.*) i
  [ "${#parts[@]}" -eq "${#volumes[@]}" ] || { echo "not as many volumes as parts" >&2; exit 1; }
  for i in "${!parts[@]}"; do
    cmp -s "${parts[$i]}" "${volumes[$i]}" || { echo "${volumes[$i]} differs" >&2; exit 1; }
  done
  echo " $(($1 / 1000000)) MB, page cache warm, median of $runs runs"
  compare copy "rm -f c1|cp data c1" "rm -f c2|'$tool' data c2"
  compare split "rm -f part_*|split -b 1443840 data part_" "rm -f vol.*|'$tool' data @vol"
  compare join "rm -f j1|cat vol.* > j1" "rm -f j2|'$tool' @vol j2"
  cmp -s data c2 && cmp -s data j2 || { echo "kestu-copy's copy or join differs" >&2; exit 1; }
  rm -f data c1 c2 part_* vol.* j1 j2
}

bench_startup() {
  printf x > one
  echo " start-up: 50 copies of a 1-byte file, median of $runs runs"
  compare start-up "rm -f s_*|for i in {1..50}; do cp one s_\$i; done" \
    "rm -f k_*|for i in {1..50}; do '$tool' one k_\$i; done"
  rm -f one s_* k_*
}

bench_in() {  # folder, the file system type it must be on
  local fs
  fs=$(stat -f -c %T "$1" 2> /dev/null || echo none)
  if [ "$fs" != "$2" ] && ! { [ "$2" = ext4 ] && [ "$fs" = ext2/ext3 ]; }; then
    echo "$2: skipped, $1 is on $fs"
    return
  fi
  work=$(mktemp -d "$1/kestu_compare_XXXXXX")
  cd "$work"
  echo "$2 ($1):"
  bench_size 20000000
  bench_size 200000000
  bench_startup
  cd - > /dev/null
  rm -rf "$work"
  work=
}

work=
trap '[ -z "$work" ] || rm -rf "$work"' EXIT
bench_in "${KESTU_BENCH_EXT4:-${TMPDIR:-/tmp}}" ext4
bench_in "${KESTU_BENCH_TMPFS:-/dev/shm}" tmpfs
