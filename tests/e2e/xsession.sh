# Sourced by the end-to-end tests: a private X display (Xvfb) with a window
# manager (openbox), torn down on exit, and polling helpers. Every wait is
# on a condition with a deadline, never a bare sleep. Exits 77 (skipped)
# only when Xvfb cannot start, or a tool it needs is missing. Expects `work` (the test's folder,
# made empty here and made current).

rm -rf "$work" && mkdir -p "$work" && cd "$work" || exit 1

pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
  for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null; done
}
trap cleanup EXIT

# Says what failed, with the trace and the program's errors, and exits 1.
fail() {
  echo "FAIL: $*"
  echo "--- trace:"; tail -40 trace.txt 2>/dev/null
  echo "--- kestu-run's errors:"; cat run.err 2>/dev/null
  exit 1
}

# Polls `condition` (a command) every 10 ms until it holds or 15 s pass.
wait_for() {
  local what=$1 deadline=$((SECONDS + 15)); shift
  until "$@" >/dev/null 2>&1; do
    (( SECONDS < deadline )) || fail "timed out waiting for $what"
    sleep 0.01
  done
}

for tool in Xvfb openbox xdotool xclip xprop; do
  if ! command -v "$tool" >/dev/null; then
    echo "SKIP: $tool is not installed (scripts/setup.sh installs it)"; exit 77
  fi
done
exec 3>display.txt
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp >xvfb.log 2>&1 &
pids+=($!)
exec 3>&-
for _ in $(seq 200); do [ -s display.txt ] && break; kill -0 "${pids[0]}" 2>/dev/null || break; sleep 0.05; done
if [ ! -s display.txt ]; then
  echo "SKIP: Xvfb cannot start here:"; cat xvfb.log; exit 77
fi
export DISPLAY=":$(head -1 display.txt)"

openbox >openbox.log 2>&1 &
pids+=($!)
# The window manager is ready once it has announced itself on the root.
wait_for "openbox" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'

trace_has() { grep -qF -- "$1" trace.txt; }
trace_count() { [ "$(grep -cF -- "$1" trace.txt)" -ge "$2" ]; }
