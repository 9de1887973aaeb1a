#!/usr/bin/env bash
# kestu-copy end to end, as its users run it: volumes against the system's
# split and against the control (--exact), sizes past the control's limit,
# cp's safety rules, the error lines and exit statuses, Ctrl+C.
# Usage: kestu-copy-test.sh PATH/TO/kestu-copy
set -u
tool=$(realpath "$1")
[ -x "$tool" ] || { echo "no tool at $1"; exit 1; }
work=$(mktemp -d /tmp/kestu_copy_tool_XXXXXX)
trap 'chmod -R u+rwX "$work"; rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
left_bytes=0  # what the last interrupted copy left in the pipe

fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}

expect_status() {  # expected actual what
  [ "$1" = "$2" ] || fail "$3: exit status $2, expected $1"
}

expect_said() {  # expected-stderr-file-content what
  [ "$(cat errors.txt)" = "$1" ] || fail "$2 said: $(cat errors.txt)"
}

size_of() { stat -c %s "$1"; }

# Random bytes: a misplaced block cannot go unnoticed.
head -c 3000000 /dev/urandom > data
[ "$(size_of data)" = 3000000 ] || fail "test data is $(size_of data) bytes"
cp data data.orig

volumes_and_joins() {
  "$tool" data @vol > names.txt 2> errors.txt
  expect_status 0 $? "split"
  printf 'vol.001\nvol.002\nvol.003\n' | cmp -s - names.txt || fail "split printed: $(cat names.txt)"
  [ -s errors.txt ] && fail "split wrote to stderr without a terminal: $(cat errors.txt)"
  split -b 1443840 data part_
  cmp -s vol.001 part_aa && cmp -s vol.002 part_ab && cmp -s vol.003 part_ac ||
    fail "volumes differ from split -b 1443840"
  [ -e vol.004 ] && fail "an empty fourth volume was made"

  "$tool" @vol joined > names.txt 2> errors.txt
  expect_status 0 $? "join"
  cmp -s data joined || fail "joined file differs from the original"
  [ -s errors.txt ] && fail "join reported: $(cat errors.txt)"

  # The same volumes as the control makes, whatever the block and volume
  # size (1K blocks in 2 KB volumes: three blocks each, the last one
  # short), also when the file ends exactly on a volume's end.
  head -c 10000 data > small
  head -c 9216 data > whole_volumes
  local case file block kb
  for case in "data 10K 1400" "data 5K 7" "small 1K 0" "small 1K 2" "whole_volumes 1K 2"; do
    read -r file block kb <<< "$case"
    rm -f fast.* exact.*
    "$tool" --block "$block" --volume="$kb" "$file" @fast > /dev/null || fail "$case: split failed"
    "$tool" --exact --block "$block" --volume "$kb" "$file" @exact > /dev/null
    [ "$(ls fast.* | wc -l)" = "$(ls exact.* | wc -l)" ] ||
      fail "$case: $(ls fast.* | wc -l) volumes, the control made $(ls exact.* | wc -l)"
    for volume in exact.*; do
      cmp -s "$volume" "fast.${volume#exact.}" || fail "$case: $volume differs from the control's"
    done
  done

  # Past the control's 21,474,836 bytes: the control stops with error 6,
  # the tool copies, splits and joins the whole file.
  head -c 31457280 /dev/urandom > big
  "$tool" big big_copy && cmp -s big big_copy || fail "a 30 MB copy differs"
  "$tool" big @bigvol > /dev/null && "$tool" @bigvol big_joined > /dev/null &&
    cmp -s big big_joined || fail "a 30 MB split and join differs"
  [ "$(ls bigvol.* | wc -l)" = 22 ] || fail "30 MB made $(ls bigvol.* | wc -l) volumes, not 22"
  "$tool" --exact big big_exact 2> errors.txt
  expect_status 1 $? "--exact past the control's limit"
  expect_said "kestu-copy: 'big': Overflow [6]" "--exact past the limit"

  # A set on both sides joins and splits again.
  "$tool" --volume 100 @vol @revol > /dev/null && "$tool" @revol rejoined > /dev/null &&
    cmp -s data rejoined || fail "a set copied to a set does not join back"
  [ "$(size_of revol.001)" = 112640 ] || fail "revol.001 is $(size_of revol.001) bytes"

  # A sparse file's holes stay holes.
  truncate -s 64M sparse && head -c 4096 data | dd of=sparse bs=4096 seek=8000 conv=notrunc 2> /dev/null
  "$tool" sparse sparse_copy && cmp -s sparse sparse_copy || fail "a sparse copy differs"
  [ "$(du -k sparse_copy | cut -f1)" -lt 1024 ] ||
    fail "a sparse copy takes $(du -k sparse_copy | cut -f1) KB on disk"
}

safety() {
  # An existing target is replaced whole, also by a smaller file.
  head -c 5000000 /dev/urandom > longer
  head -c 1000 data > short
  "$tool" short longer && cmp -s short longer || fail "an overwritten target kept its tail"

  # -n refuses, and the target stays as it was.
  head -c 10 data > kept && cp kept kept.orig
  "$tool" -n data kept 2> errors.txt
  expect_status 1 $? "--no-clobber"
  expect_said "kestu-copy: not overwriting 'kept': File exists [58]" "--no-clobber"
  cmp -s kept kept.orig || fail "--no-clobber changed the target"
  "$tool" --no-clobber data @vol 2> /dev/null
  expect_status 1 $? "--no-clobber on a set"

  # Nothing is created for a source that is missing or cannot be read.
  mkdir created && cd created || return
  "$tool" nosuch.bin out.bin 2> ../errors.txt
  expect_status 1 $? "missing source"
  "$tool" @nosuchset out.bin 2>> ../errors.txt
  expect_status 1 $? "missing set"
  "$tool" . out.bin 2>> ../errors.txt
  expect_status 1 $? "a folder as the source"
  [ -z "$(ls)" ] || fail "a failed copy created $(ls)"
  cd .. || return
  expect_said "kestu-copy: cannot open 'nosuch.bin': No such file or directory [53]
kestu-copy: cannot open 'nosuchset.001': No such file or directory [53]
kestu-copy: cannot copy '.': Is a directory [75]" "missing sources"
  if [ "$(id -u)" != 0 ]; then
    cp data unreadable && chmod 000 unreadable
    "$tool" unreadable never 2> errors.txt
    expect_said "kestu-copy: cannot open 'unreadable': Permission denied [70]" "unreadable source"
    [ -e never ] && fail "an unreadable source created its target"
  else
    echo "skipped: an unreadable source (root reads every file)"
  fi

  # An empty source gives an empty file, and a set of one empty volume.
  : > empty
  "$tool" empty empty_copy && [ -f empty_copy ] && [ ! -s empty_copy ] ||
    fail "an empty source did not give an empty target"
  "$tool" empty @nothing > /dev/null && "$tool" @nothing nothing_joined > /dev/null &&
    [ ! -s nothing.001 ] && [ ! -e nothing.002 ] && [ -f nothing_joined ] ||
    fail "an empty source to a set and back"

  # A folder as the target takes the source under its own name.
  mkdir into
  "$tool" data into && cmp -s data into/data || fail "copy into a folder"
  "$tool" @vol into/ > /dev/null && cmp -s data into/vol || fail "join into a folder"

  # The same file on both sides, under any name, is refused untouched.
  ln data hardlink && ln -s data symlink
  local other
  for other in data ./data hardlink symlink; do
    "$tool" data "$other" 2> errors.txt
    expect_status 1 $? "copy onto $other"
    expect_said "kestu-copy: 'data' and '$other' are the same file [75]" "copy onto $other"
  done
  "$tool" @vol vol.002 2> errors.txt
  expect_said "kestu-copy: 'vol.002' and 'vol.002' are the same file [75]" "join onto a volume"
  "$tool" vol.001 @vol 2> errors.txt
  expect_said "kestu-copy: 'vol.001' and 'vol.001' are the same file [75]" "split of a volume"
  cmp -s data data.orig && cmp -s vol.002 part_ab && cmp -s vol.001 part_aa ||
    fail "a refused copy changed its source"

  # A split over an older, longer set leaves only the new volumes, so
  # that a join reads them alone.
  cp vol.001 vol.002 vol.003 into/
  "$tool" small @into/vol > /dev/null
  [ -e into/vol.002 ] && fail "a shorter split left the older set's volumes"
  "$tool" @into/vol small_again > /dev/null && cmp -s small small_again ||
    fail "the shorter set does not join back"

  # A failed write names the file and the reason; the source stays.
  "$tool" data /dev/full 2> errors.txt
  expect_status 1 $? "a full device"
  expect_said "kestu-copy: cannot write '/dev/full': No space left on device [61]" "a full device"
  (ulimit -f 1000 && "$tool" data capped 2> errors.txt)
  expect_status 1 $? "past the file size limit"
  expect_said "kestu-copy: cannot write 'capped': File too large [61]" "past the size limit"
  "$tool" data missing/dir/copy 2> errors.txt
  expect_status 1 $? "missing folder"
  expect_said "kestu-copy: cannot create 'missing/dir/copy': No such file or directory [76]" \
    "missing folder"
  cmp -s data data.orig || fail "a failed write changed the source"
}

messages() {
  local line
  for line in "--block 7K|--block: '7K' is not 1K, 5K or 10K" \
    "--volume abc|--volume: 'abc' is not a number of kilobytes" \
    "--volume|--volume needs a value" "--fast|unknown option '--fast' (see --help)" \
    "-x|unknown option '-x' (see --help)" "data|missing TARGET after 'data'" \
    "a b c|extra operand 'c'" "--exact -n a b|--no-clobber cannot be used with --exact"; do
    # shellcheck disable=SC2086 # the arguments are split on purpose
    "$tool" ${line%%|*} > /dev/null 2> errors.txt
    expect_status 2 $? "${line%%|*}"
    expect_said "kestu-copy: ${line#*|}" "${line%%|*}"
  done
  "$tool" --help > help.txt
  expect_status 0 $? "--help"
  for line in --block --volume --no-clobber --progress --quiet --exact "differs from the KestuCopyFile"; do
    grep -q -- "$line" help.txt || fail "--help does not mention $line"
  done

  # --quiet prints nothing; --progress sums up on standard error.
  "$tool" -q data @quiet > names.txt 2>&1
  [ -s names.txt ] && fail "--quiet printed: $(cat names.txt)"
  "$tool" --progress data @loud > /dev/null 2> errors.txt
  # The bar is redrawn in place: its last state is after the last return.
  local summary
  summary=$(tr '\r' '\n' < errors.txt | sed 's/\x1b\[K//g' | tail -1)
  [[ "$summary" =~ ^kestu-copy:\ 3,000,000\ bytes\ to\ 3\ volumes\ in\ [0-9.]+\ s ]] ||
    fail "--progress summed up as: $summary"
  grep -q "3,000,000 of 3,000,000 bytes" errors.txt || fail "--progress showed no full bar"
}

# The control's own behaviour, through --exact.
exact_mode() {
  head -c 5000 /dev/urandom > tail_kept
  head -c 3000 data > head3000
  "$tool" --exact head3000 tail_kept > /dev/null
  expect_status 0 $? "--exact over a longer file"
  [ "$(size_of tail_kept)" = 5000 ] && cmp -s head3000 <(head -c 3000 tail_kept) ||
    fail "--exact did not write over the start of a longer file"
  "$tool" --exact empty exact_empty 2> errors.txt
  expect_status 1 $? "--exact empty source"
  expect_said "kestu-copy: 'empty': File not found [53]" "--exact empty source"
  "$tool" --exact @vol exact_joined > /dev/null && cmp -s data exact_joined ||
    fail "--exact join differs"
}

# Ctrl+C while the target is a pipe nobody reads yet: the copy blocks in
# its first writes. Opening the pipe's other end returns only once the tool
# has opened it, after its interrupt handler is in place.
interrupt() {  # mode-option expected-message-pattern
  rm -f pipe received
  mkfifo pipe
  # shellcheck disable=SC2086 # no option is no argument
  "$tool" $1 data pipe > /dev/null 2> errors.txt &
  local pid=$!
  exec 3< pipe
  kill -INT "$pid"
  cat <&3 > received
  exec 3<&-
  wait "$pid"
  expect_status 130 $? "Ctrl+C ${1:-}"
  grep -Eq "$2" errors.txt || fail "Ctrl+C ${1:-} said: $(cat errors.txt)"
  # Ctrl+C can come before the first byte: none is then a right answer.
  left_bytes=$(size_of received)
  [ "$left_bytes" -lt 3000000 ] || fail "Ctrl+C ${1:-} left the whole file"
  cmp -s received <(head -c "$left_bytes" data) ||
    fail "Ctrl+C ${1:-} left bytes that are not the file's"
}

volumes_and_joins
safety
messages
exact_mode
interrupt "" "^kestu-copy: interrupted: [0-9,]+ of 3,000,000 bytes written; 'pipe' is incomplete$"
[ "$(tr -d , < errors.txt | grep -o '[0-9]* of' | cut -d' ' -f1)" = "$left_bytes" ] ||
  fail "Ctrl+C said $(cat errors.txt) but left $left_bytes bytes"
interrupt --exact "^kestu-copy: interrupted: "
[ $((left_bytes % 10240)) = 0 ] || fail "Ctrl+C --exact left $left_bytes bytes, not whole blocks"

[ "$failures" = 0 ] && echo "kestu-copy: all checks passed"
exit "$failures"
