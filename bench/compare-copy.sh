#!/usr/bin/env bash
# Times kestu-copy against the system's tools on the same 20,000,000-byte
# file in the page cache, in one run: a plain copy against cp, a split into
# 1400 KB volumes against split -b 1443840, and the join of the same
# volumes against cat.
# Only the program is timed: the outputs of the run before are removed
# first, untimed, so that every run writes new files as the system tools
# do. Prints each median and the ratio. Uses hyperfine when it is
# installed, else bash's own clock around each run.
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

# name: "untimed preparation|timed command"
declare -A commands=(
  [cp]="rm -f c1|cp data c1"
  [kestu_copy]="rm -f c2|'$tool' data c2"
  [split]="rm -f part_*|split -b 1443840 data part_"
  [kestu_split]="rm -f vol.*|'$tool' data @vol"
  [cat]="rm -f j1|cat vol.* > j1"
  [kestu_join]="rm -f j2|'$tool' @vol j2"
)

# Wall time of one run of a command, in microseconds.
time_us() {
  local prepare=${1%%|*} command=${1#*|} start end
  eval "$prepare"
  start=${EPOCHREALTIME/./}
  eval "$command" > /dev/null 2>&1
  end=${EPOCHREALTIME/./}
  echo $((end - start))
}

median() { sort -n | sed -n "$(((runs + 1) / 2))p"; }

# Both joins read the same volumes, kestu-copy's, which are byte for byte
# split's parts: how a file was written shapes its pages in the cache, so
# joining different copies of the same bytes would compare the writers too.
eval "${commands[split]#*|}"
eval "${commands[kestu_split]#*|}" > /dev/null
parts=(part_*) volumes=(vol.*)
[ "${#parts[@]}" -eq "${#volumes[@]}" ] || { echo "not as many volumes as parts" >&2; exit 1; }
for i in "${!parts[@]}"; do
  cmp -s "${parts[$i]}" "${volumes[$i]}" || { echo "${volumes[$i]} differs from ${parts[$i]}" >&2; exit 1; }
done

declare -A median
if command -v hyperfine > /dev/null; then
  for name in cp kestu_copy split kestu_split cat kestu_join; do
    hyperfine --warmup 1 --runs "$runs" --prepare "${commands[$name]%%|*}" \
      --export-json "$name.json" "${commands[$name]#*|}" > /dev/null
    median[$name]=$(sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$name.json" | head -1 |
      awk '{ printf "%d", $1 * 1000000 }')
  done
else
  # A run of one, then of the other, so that a noisy moment hits both.
  for pair in "cp kestu_copy" "split kestu_split" "cat kestu_join"; do
    read -r a b <<< "$pair"
    time_us "${commands[$a]}" > /dev/null; time_us "${commands[$b]}" > /dev/null  # warm-up
    times_a=() times_b=()
    for _ in $(seq "$runs"); do
      times_a+=("$(time_us "${commands[$a]}")")
      times_b+=("$(time_us "${commands[$b]}")")
    done
    median[$a]=$(printf '%s\n' "${times_a[@]}" | median)
    median[$b]=$(printf '%s\n' "${times_b[@]}" | median)
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
