#!/usr/bin/env bash
# The toolbar in a real window: kestu-run under Xvfb and openbox, driven
# with xdotool as a user would. A press on the bar's grip released off the
# bar ends the drag (LeftLinesMouseMove with Button 5); the pointer over a
# flat button raises its frame, which reaches the screen exactly as the
# same button draws it headless; a click raises Click and leaves the focus
# in the number box, which takes the next digit.
set -uo pipefail

run=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"

"$run" --trace "$here/toolbar-form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Toolbar$" >window.txt'
window=$(head -1 window.txt)
wait_for "the form to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $window ]"

# Puts the pointer at (X, Y) of the form as a mouse would. xdotool's jump
# to a window's point is a warp, and the position the program's periodic
# check reads (is the pointer still over the button?) follows the mouse's
# own moves, not warps: the last pixel of the way is such a move.
point_at() {
  xdotool mousemove --window "$window" $(($1 - 1)) $(($2 - 1)) mousemove_relative 1 1
}

# The bar is docked at the top, 26 pixels high, its grip in its left 9
# pixels; "save" is at pixels (12, 2), 23 x 22, inside it. The number box
# "amount" is at (20, 50), 120 x 21; nothing is at (300, 90).
xdotool mousemove --window "$window" 60 60 click 1
wait_for "the click on the box" trace_has "event amount.Click"

# ---- The grip: pressed, dragged off the bar, released there ----
xdotool mousemove --window "$window" 5 13
wait_for "the pointer over the grip" trace_has "event bar.LeftLinesMouseMove(Button=0"
xdotool mousedown 1
xdotool mousemove --window "$window" 200 80
xdotool mouseup 1
# (200, 80) of the form is (3000, 1200) twips of the bar docked at (0, 0).
wait_for "the end of the drag" \
  trace_has "event bar.LeftLinesMouseMove(Button=5, x=3000, y=1200)"

# ---- The pointer over a flat button: its raised frame, on the screen ----
# The pointer rests at the button's lower right, so that its tip, shown
# below and right of the pointer, stays off the button.
cat >headless.kss <<KSS
openform "$here/toolbar-form.json"
png headless-idle.png save
pointer move 300 90
pointer move 33 22
png headless-hot.png save
KSS
"$script_host" headless.kss >headless.txt || fail "the headless run failed"
cmp -s headless-idle.png headless-hot.png && fail "the hot button looks as the idle one headless"
point_at 300 90
point_at 33 22
wait_for "the pointer over the button" trace_has "event save.MouseEnter"
wait_for "the hot button's pixels" sh -c \
  "'$grab' $window screen-hot.png 12 2 23 22 && cmp -s headless-hot.png screen-hot.png"
wait_for "the tip" trace_has 'tip show "Saves the file"'
"$grab" "$window" screen-form.png || fail "the window cannot be read"

# ---- The click: Click, and the focus stays in the box ----
xdotool click 1
wait_for "the click" trace_has "event save.Click"
xdotool key 5
wait_for "the digit in the box" trace_has "event amount.KeyPress(KeyAscii=53)"
wait_for "the box's change" trace_count "event amount.Changed" 1

# The pointer away: the button is flat again, with no frame at all.
point_at 300 90
wait_for "the idle button's pixels" sh -c \
  "'$grab' $window screen-idle.png 12 2 23 22 && cmp -s headless-idle.png screen-idle.png"

[ "$(grep -c "event save.Click" trace.txt)" = 1 ] || fail "save clicked other than once"
grep -q "KeyPress" <(grep -v "^event amount\." trace.txt) && fail "a key went elsewhere than the box"
echo "PASS: the grip's drag, the hot frame (screen-form.png), Click, the focus kept, pixels"
