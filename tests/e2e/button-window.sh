#!/usr/bin/env bash
# The command button in a real window: kestu-run under Xvfb and openbox,
# driven with xdotool as a user would. The pointer resting on a button
# brings up its tip (a screenshot keeps it); a click raises Click; Alt with
# its access key clicks it again; Enter clicks the form's default button.
# The button's pixels on the screen equal the same button drawn headless.
set -uo pipefail

run=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"

"$run" --trace "$here/buttons-form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Buttons$" >window.txt'
window=$(head -1 window.txt)
wait_for "the form to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $window ]"

# "save" is at pixels (20, 20), 100 x 33; "ok", the default, at (140, 20).
# First onto the form's empty part, so that no button holds the pointer.
xdotool mousemove --window "$window" 300 90
xdotool mousemove --window "$window" 70 36
wait_for "the pointer over the button" trace_has "event save.MouseEnter"
# Three quiet checks, a quarter of a second apart, and the tip shows.
wait_for "the tip" trace_has 'tip show "Saves the file"'
wait_for "the tip's window" sh -c "xwininfo -root -tree | grep -q '\"Kestu tip\"'"
root=$(xwininfo -root | awk '/Window id:/ {print $4}')
eval "$(xdotool getwindowgeometry --shell "$window")"
"$grab" "$root" screen-with-tip.png "$X" "$Y" 330 110 || fail "the screen cannot be read"

xdotool click 1
wait_for "the click" trace_has "event save.Click"
wait_for "the tip to go" trace_has "tip hide"
xdotool key alt+s
wait_for "the access key" trace_count "event save.Click" 2
xdotool key Return
wait_for "Enter on the default button" trace_has "event ok.Click"

# The pointer away; the button settles focused, not under the pointer (a
# release lets the capture go, so it hears no more of the pointer).
xdotool mousemove --window "$window" 300 90
cat >headless.kss <<KSS
openform "$here/buttons-form.json"
focus save
png headless-save.png save
KSS
"$script_host" headless.kss >headless.txt || fail "the headless run failed"
wait_for "the button's pixels" sh -c \
  "'$grab' $window screen-save.png 20 20 100 33 && cmp -s headless-save.png screen-save.png"
[ "$(grep -c "event save.Click" trace.txt)" = 2 ] || fail "save clicked other than twice"
grep -q "event ok.Click" trace.txt || fail "the default button did not click"
echo "PASS: the tip (screen-with-tip.png), Click by the pointer and by Alt+S, Enter, pixels"
