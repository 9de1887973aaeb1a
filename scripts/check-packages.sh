#!/usr/bin/env bash
# The Debian packages, as a user gets them: `cpack -G DEB` in a build
# configured for /usr, `apt install ./kestu_*.deb` on this machine (as
# root; the packages are purged again at the end), then every example
# built against the installed package through find_package(Kestu
# COMPONENTS Desktop) and examples/hello also through pkg-config, and the
# window examples run under Xvfb: hello (a screenshot, and a click on its
# button that makes the Click handler print the number box's value), forms
# (a quantity typed and "Total" clicked) and copy-gui (a copy started with
# Enter, the window closed with Escape).
# usage: scripts/check-packages.sh [BUILD]   (default build/release)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$root" && cd "${1:-build/release}" && pwd)
work=$build/package-check
unset LD_LIBRARY_PATH

say() { echo "packages: $*"; }
die() {
  echo "packages: $*" >&2
  exit 1
}
[ "$(id -u)" = 0 ] || die "installing packages needs root"
grep -q "^CMAKE_INSTALL_PREFIX:PATH=/usr$" "$build/CMakeCache.txt" ||
  die "$build is not configured for /usr, where packages install"

rm -rf "$work"
mkdir -p "$work/debs"
(cd "$work/debs" && cpack -G DEB --config "$build/CPackConfig.cmake" >"$work/cpack.log") ||
  die "cpack failed: see $work/cpack.log"
debs=("$work"/debs/kestu_*.deb)
[ ${#debs[@]} = 3 ] || die "expected three packages, got: ${debs[*]}"

export DEBIAN_FRONTEND=noninteractive
purge() { apt-get purge -y -qq kestu kestu-dev kestu-tools >/dev/null 2>&1 || true; }
purge
trap purge EXIT
apt-get install -y -qq --no-install-recommends "${debs[@]}" >"$work/apt.log" 2>&1 ||
  die "apt install failed: $(tail -3 "$work/apt.log")"
for program in /usr/bin/kestu-script /usr/bin/kestu-run /usr/bin/kestu-designer; do
  if ldd "$program" | grep -q "not found"; then die "$program: $(ldd "$program" | grep "not found")"; fi
done
printf 'new KestuNumberEdit n 0 0 1200 315\nset n.Value 7\nget n.Value\n' | kestu-script - |
  grep -qx "n.Value = 7" || die "the installed kestu-script does not run"

for example in "$root"/examples/*/; do
  name=$(basename "$example")
  [ -f "$example/CMakeLists.txt" ] || continue
  cmake -S "$example" -B "$work/$name" >"$work/$name.log" 2>&1 &&
    cmake --build "$work/$name" >>"$work/$name.log" 2>&1 ||
    die "examples/$name does not build against the installed package: see $work/$name.log"
done
# shellcheck disable=SC2046  # pkg-config's flags are words
g++ -o "$work/hello-pc" "$root/examples/hello/main.cpp" $(pkg-config --cflags --libs kestu-desktop) ||
  die "examples/hello does not build with pkg-config"
say "installed ${debs[*]##*/}; the examples build with find_package and hello with pkg-config"

# hello in a window: the xsession helpers start Xvfb and openbox and poll.
grab=$build/tests/e2e/kestu_xgrab
if [ ! -x "$grab" ]; then
  say "no screen grabber in $build (tests not built): hello not run"
  exit 0
fi
work=$work/hello-window
set +e
(
  source "$root/tests/e2e/xsession.sh"
  trap 'cleanup; purge' EXIT
  for hello in "$(dirname "$work")/hello/hello" "$(dirname "$work")/hello-pc"; do
    : >trace.txt
    "$hello" >trace.txt 2>run.err &
    pids+=($!)
    wait_for "hello's window" sh -c 'xdotool search --onlyvisible --name "^Hello$" >window.txt'
    window=$(head -1 window.txt)
    eval "$(xdotool getwindowgeometry --shell "$window")"
    wait_for "hello's picture" "$grab" "$window" hello.png 0 0 "$WIDTH" "$HEIGHT"
    # "Show" is at pixels (192, 16), 81 x 29.
    xdotool mousemove --window "$window" 232 30 click 1
    wait_for "the Click handler's output" trace_has "Value = 1234.5"
    kill "${pids[-1]}"
    wait "${pids[-1]}" 2>/dev/null
  done
  cp hello.png "$build/hello.png"

  # forms: the order form from its file; a click on "Total" prints the total.
  : >trace.txt
  "$(dirname "$work")/forms/forms" >trace.txt 2>run.err &
  pids+=($!)
  wait_for "the order form" sh -c 'xdotool search --onlyvisible --name "^Order$" >window.txt'
  window=$(head -1 window.txt)
  # "quantity" is at pixels (104, 76), 100 x 21; "Total" at (224, 164), 81 x 29.
  xdotool mousemove --window "$window" 154 86 click 1 type 3
  xdotool mousemove --window "$window" 264 178 click 1
  wait_for "the total" trace_has "Total = 37.5 (3 x 12.5 of no product code, no delivery date)"
  kill "${pids[-1]}"
  wait "${pids[-1]}" 2>/dev/null

  # copy-gui: Enter presses Copy (the default button); once idle, Escape
  # presses Cancel, which closes the window.
  head -c 1000000 /dev/urandom >source.bin
  : >trace.txt
  "$(dirname "$work")/copy-gui/copy-gui" source.bin copy.bin >trace.txt 2>run.err &
  pids+=($!)
  wait_for "the copier's window" sh -c 'xdotool search --onlyvisible --name "^Copy$" >window.txt'
  window=$(head -1 window.txt)
  wait_for "the copier's window to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $window ]"
  xdotool key Return
  wait_for "the copy" trace_has "done: source.bin copied to copy.bin"
  cmp -s source.bin copy.bin || fail "copy-gui's copy differs from its source"
  xdotool key Escape
  wait_for "copy-gui to end" sh -c "! kill -0 ${pids[-1]}"
  wait "${pids[-1]}" || fail "copy-gui ended with status $?"
)
rc=$?
set -e
case $rc in
  0) say "under Xvfb: hello (built both ways) printed \"Value = 1234.5\" on a click (screenshot $build/hello.png); forms printed its total; copy-gui copied and closed on Escape" ;;
  77) say "no X server here: hello not run" ;;
  *) die "hello in a window failed" ;;
esac
