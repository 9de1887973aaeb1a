#!/usr/bin/env bash
# Files from anyone, through the programs as their users run them: each
# bound ends in one clear line and a failing exit, never a crash, and a
# control that cannot draw what its file gives it is saved back whole.
# Usage: limits.sh KESTU-RUN KESTU-SCRIPT
set -euo pipefail
run=$1
script=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

python3 - <<'PY'
open('deep.json', 'w').write('{"Name":"F","Controls":[],"Caption":' + '[' * 100000 + ']' * 100000 + '}')
keys = ','.join('"k%d":1' % i for i in range(100000))
open('keys.json', 'w').write('{"Name":"F","Controls":[{"Type":"KestuPanel3D","Name":"p","Properties":{' + keys + '}}]}')
open('big.json', 'w').write('{"Name":"F","Width":2147483647,"Controls":[]}')
PY

# expect_refusal FILE MESSAGE: kestu-run refuses FILE with MESSAGE.
expect_refusal() {
  if "$run" "$1" --png out.png 2>err.txt; then
    echo "FAIL: $1 was accepted" >&2
    exit 1
  fi
  if ! grep -qF "$2" err.txt; then
    echo "FAIL: $1: expected \"$2\", got: $(cat err.txt)" >&2
    exit 1
  fi
}
expect_refusal deep.json "deep.json: nested deeper than 128 levels"
expect_refusal keys.json "control 'p': more than 4096 properties"
expect_refusal big.json "is larger than a surface may be"
expect_refusal /dev/zero "/dev/zero: not a regular file"

printf 'form F 3000 3000\nnew KestuPanel3D p 0 0 1500 1500\nsaveform wide.json\n' >save.kss
"$script" save.kss >/dev/null
sed -i 's/"value": 5$/"value": 32767/' wide.json
grep -q '"value": 32767' wide.json
printf 'openform wide.json\nsaveform again.json\n' >resave.kss
"$script" resave.kss >out.txt 2>err.txt
grep -qx "error 6 Overflow" out.txt
grep -qF "control 'p' raised error 6" err.txt
cmp wide.json again.json
echo "limits: every refusal clear, the panel saved back whole"
