#!/usr/bin/env bash
# Regenerates docs/controls.md from the controls' metadata. The test
# "reference/up-to-date" fails until this has been run after a change to a
# control's properties, methods, events or enumerations.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
cmake --build "$build" --target kestu-reference >/dev/null
"$build/tools/reference/kestu-reference" >"$root/docs/controls.md"
echo "docs/controls.md regenerated"
