#!/usr/bin/env bash
# kestu-copy on a 6 GiB file: copied, split into volumes and joined back
# identical, past every 32-bit count. The file is sparse (three MiB of
# random bytes, one of them across the 4 GiB mark), so the test needs
# little room and little time: holes are copied as holes. Where the file
# system cannot keep the holes or lacks the room, the test says so and
# passes without running.
# Usage: kestu-copy-large-test.sh PATH/TO/kestu-copy
set -u
tool=$(realpath "$1")
[ -x "$tool" ] || { echo "no tool at $1"; exit 1; }
work=$(mktemp -d "${TMPDIR:-/tmp}/kestu_copy_large_XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}

size=6442450944
room_kb=$(df -Pk . | awk 'NR == 2 { print $4 }')
if [ "$room_kb" -lt 102400 ]; then
  echo "skipped: $(pwd) has $room_kb KB free, the test needs 100 MB"
  exit 0
fi
truncate -s "$size" big || { echo "skipped: no 6 GiB file here"; exit 0; }
mib=1048576
for at in 0 $((4 * 1024 * mib - mib / 2)) $((size - mib)); do
  head -c "$mib" /dev/urandom | dd of=big bs=4096 seek=$((at / 4096)) conv=notrunc 2> /dev/null
done
if [ "$(du -k big | cut -f1)" -gt 102400 ]; then
  echo "skipped: the file system here keeps no holes, 6 GiB would be written"
  exit 0
fi

# Equal byte for byte, read where either file has data: everywhere else
# both are holes, which read as zeros.
same_file() {
  python3 - "$1" "$2" <<'PY'
import os, sys

def data_ranges(fd, size):
    ranges, offset = [], 0
    while offset < size:
        try:
            start = os.lseek(fd, offset, os.SEEK_DATA)
        except OSError:
            break
        offset = os.lseek(fd, start, os.SEEK_HOLE)
        ranges.append((start, offset))
    return ranges

a, b = (os.open(name, os.O_RDONLY) for name in sys.argv[1:3])
size = os.fstat(a).st_size
if os.fstat(b).st_size != size:
    sys.exit(1)
for start, end in sorted(data_ranges(a, size) + data_ranges(b, size)):
    for offset in range(start, end, 1 << 20):
        length = min(1 << 20, end - offset)
        if os.pread(a, length, offset) != os.pread(b, length, offset):
            sys.exit(1)
PY
}

"$tool" big copy || fail "copy exited $?"
same_file big copy || fail "the copy differs"
mkdir vol
"$tool" -q big @vol/part || fail "split exited $?"
count=$(ls vol | wc -l)
[ "$count" = $(((size + 1443839) / 1443840)) ] || fail "split made $count volumes"
[ "$(stat -c %s vol/part.* | sort | uniq -c | awk '{ print $1 }' | sort -n | tr '\n' ' ')" = \
  "1 $((count - 1)) " ] || fail "the volumes are not all 1,443,840 bytes but the last"
"$tool" -q @vol/part joined || fail "join exited $?"
same_file big joined || fail "the joined file differs"

[ "$failures" = 0 ] && echo "kestu-copy: 6 GiB copied, split into $count volumes and joined back"
exit "$failures"
