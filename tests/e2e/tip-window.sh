#!/usr/bin/env bash
# The host's tooltip in a real window, under Xvfb and openbox: the pointer
# over a probe that shows a tip at every move brings up a borderless,
# override-redirect window by the cursor that leaves the form active and
# shows, pixel for pixel, the picture the host drew; the pointer reaching
# the tip unloads it. Then the form's keys: Alt with the probe's access key
# and Enter for the default control go to those controls, and the focused
# control types nothing.
set -uo pipefail

program=$1 grab=$2 work=$3
source "$(dirname "$0")/xsession.sh"

"$program" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Tips$" >window.txt'
window=$(head -1 window.txt)
wait_for "the form to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $window ]"

# ---- The tip ----
# The probe "p" is at pixels (20, 20), 100 x 20, of the form's client area.
xdotool mousemove --window "$window" 40 30
wait_for "the tip" trace_has 'tip show "Probe tip"'
tip_line() { xwininfo -root -tree | grep '"Kestu tip"'; }
wait_for "the tip's window" sh -c "xwininfo -root -tree | grep -q '\"Kestu tip\"'"
tip=$(tip_line | awk '{print $1}')
xwininfo -id "$tip" -all | grep -q "Override Redirect State: yes" ||
  fail "the tip is not an override-redirect window"
# Absolute place and size: the "WxH+X+Y" of the tree line.
read -r width height left top < <(tip_line | grep -oE '[0-9]+x[0-9]+\+-?[0-9]+\+-?[0-9]+' |
  head -1 | tr 'x+' '  ')
eval "$(xdotool getmouselocation --shell)"
(( left > X && top > Y )) || fail "the tip at $left,$top is not below-right of the cursor at $X,$Y"
[ "$(xdotool getactivewindow)" = "$window" ] || fail "showing the tip took the activation"
wait_for "the tip's pixels" sh -c "'$grab' $tip screen-tip.png && cmp -s screen-tip.png tip-host.png"
[ -s tip-host.png ] || fail "the host's picture of the tip was not written"

# The pointer onto the tip, outside the probe: the tip goes and stays gone.
xdotool mousemove $((left + 2)) $((top + 2))
wait_for "the tip to go" trace_has "tip hide"
wait_for "the tip's window to close" sh -c "! xwininfo -root -tree | grep -q '\"Kestu tip\"'"

# ---- The form's keys ----
xdotool key alt+p
wait_for "the access key" trace_has 'event p.Called(Procedure="AccessKeyPress 112")'
xdotool key Return
wait_for "Enter" trace_has 'event ok.Called(Procedure="AccessKeyPress 13")'
xdotool key x
wait_for "a plain key" trace_has "event p.KeyUp(KeyCode=88, Shift=0)"
# The focused probe typed only the plain key: no "p" with Alt, and nothing
# of Enter. (The Alt key itself, and the access key's release, are its.)
grep -E '^event p\.(KeyPress|Key(Down|Up)\(KeyCode=13,)' trace.txt >keys.txt
echo "event p.KeyPress(KeyAscii=120)" >keys.expected
diff -u keys.expected keys.txt || fail "the focused control heard keys the form took"
echo "PASS: the tip's window, its pixels and its unloading; access key and Enter"
