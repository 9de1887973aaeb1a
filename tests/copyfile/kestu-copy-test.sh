#!/usr/bin/env bash
# kestu-copy end to end: split against the system's split, join back,
# block and volume options, the error line and exit status, and Ctrl+C.
# Usage: kestu-copy-test.sh PATH/TO/kestu-copy
set -u
tool=$(realpath "$1")
[ -x "$tool" ] || { echo "no tool at $1"; exit 1; }
work=$(mktemp -d /tmp/kestu_copy_tool_XXXXXX)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}

expect_status() {  # expected actual what
  [ "$1" = "$2" ] || fail "$3: exit status $2, expected $1"
}

# Random bytes: a misplaced block cannot go unnoticed.
head -c 3000000 /dev/urandom > data
[ "$(stat -c %s data)" = 3000000 ] || fail "test data is $(stat -c %s data) bytes"

# Split: the volumes are what split -b makes, and their names are printed.
"$tool" data @vol > names.txt 2> errors.txt
expect_status 0 $? "split"
printf 'vol.001\nvol.002\nvol.003\n' | cmp -s - names.txt || fail "split printed: $(cat names.txt)"
[ -s errors.txt ] && fail "split wrote to stderr without a terminal: $(cat errors.txt)"
split -b 1443840 data part_
cmp -s vol.001 part_aa && cmp -s vol.002 part_ab && cmp -s vol.003 part_ac ||
  fail "volumes differ from split -b 1443840"
[ -e vol.004 ] && fail "an empty fourth volume was made"

# Join: error 53 after the last volume is the normal end of a set.
"$tool" @vol joined > names.txt 2> errors.txt
expect_status 0 $? "join"
cmp -s data joined || fail "joined file differs from the original"
[ -s errors.txt ] && fail "join reported: $(cat errors.txt)"

# Options: 1K blocks, 2 KB volumes hold three blocks each.
head -c 10000 data > small
"$tool" --block 1K --volume 2 small @tiny > /dev/null
expect_status 0 $? "small split"
[ "$(stat -c %s tiny.001)" = 3072 ] && [ "$(stat -c %s tiny.004)" = 784 ] ||
  fail "1K blocks and 2 KB volumes gave $(stat -c %s tiny.* | tr '\n' ' ')"
"$tool" --block 2K small x > /dev/null 2>&1
expect_status 2 $? "bad block option"

# Errors: one line with the number, the message and the file.
"$tool" data missing/dir/copy 2> errors.txt
expect_status 1 $? "missing folder"
[ "$(cat errors.txt)" = "kestu-copy: error 76 Path not found: missing/dir/copy" ] ||
  fail "missing folder said: $(cat errors.txt)"
"$tool" @nothing joined2 > /dev/null 2> errors.txt
expect_status 1 $? "join of a missing set"
[ "$(cat errors.txt)" = "kestu-copy: error 53 File not found: nothing.001" ] ||
  fail "missing set said: $(cat errors.txt)"

# Ctrl+C: the target is a pipe, so the copy blocks in its first writes
# until it is read. Opening the pipe's other end returns only once the
# tool has opened it, after its interrupt handler is in place.
mkfifo pipe
"$tool" data pipe > /dev/null 2> errors.txt &
pid=$!
exec 3< pipe
kill -INT "$pid"
cat <&3 > received
exec 3<&-
wait "$pid"
expect_status 130 $? "Ctrl+C"
grep -q "cancelled" errors.txt || fail "Ctrl+C said: $(cat errors.txt)"
size=$(stat -c %s received)
[ "$size" -gt 0 ] && [ "$size" -lt 3000000 ] && [ $((size % 10240)) = 0 ] ||
  fail "Ctrl+C left $size bytes, expected whole blocks short of the file"
cmp -s received <(head -c "$size" data) || fail "Ctrl+C left bytes that are not the file's"

[ "$failures" = 0 ] && echo "kestu-copy: all checks passed"
exit "$failures"
