#!/usr/bin/env bash
# Generates COUNT random scripts (fuzz/generate-scripts.py) and runs each
# through a kestu-script (best the sanitizer build's). A script may stop on
# a bad line (exit 2) and report run-time errors; any other exit, or any
# sanitizer report, is a finding: the script and its output are kept.
# usage: fuzz/run-generated.sh KESTU_SCRIPT [COUNT] [SEED]
set -uo pipefail
host=$(realpath "$1") count=${2:-3000} seed=${3:-1}
work=$(mktemp -d)
here=$(cd "$(dirname "$0")" && pwd)
python3 "$here/generate-scripts.py" "$work" "$count" "$seed"
findings=0
# The one picture file the scripts name that exists.
cp "$here/../tests/data/pictures/buttons/disk16.png" "$work/"
cd "$work"
for script in gen*.kss; do
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    timeout 60 "$host" "$script" >"$script.out" 2>"$script.err"
  rc=$?
  if { [ $rc -ne 0 ] && [ $rc -ne 2 ]; } || grep -q "runtime error:\|AddressSanitizer" "$script.err"; then
    findings=$((findings + 1))
    echo "finding: $work/$script (exit $rc)"
  fi
done
echo "$count generated scripts, $findings findings"
[ "$findings" -eq 0 ] && rm -rf "$work"
[ "$findings" -eq 0 ]
