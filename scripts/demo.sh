#!/usr/bin/env bash
# The main job: installs what is needed, builds, and opens the gallery of
# every control in a window; without a display, kestu-run says so and
# renders the gallery to out/kestu-run.png. The demonstration form also runs
# through the scripted host, which saves it, loads it back and renders it to
# out/demo.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DKESTU_WERROR=ON >/dev/null
cmake --build build/release -j "$(nproc)" --target kestu-script kestu-run
mkdir -p out
(cd out && ../build/release/kestu-script ../examples/demo.kss)
echo "demo: the form is rendered in out/demo.png"
(cd out && ../build/release/kestu-run)
