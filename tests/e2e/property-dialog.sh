#!/usr/bin/env bash
# The property dialog in a real window: kestu-run opens it on a command
# button, driven with xdotool as a designer's user would. Clicking "Flat
# Button", typing a margin and pressing Apply redraws the button flat at
# its new margin: its pixels on the screen equal the same button drawn
# headless with those two properties set.
set -uo pipefail

run=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"

"$run" --trace --properties save "$here/buttons-form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Buttons$" >form.txt'
wait_for "the dialog's window" \
  sh -c 'xdotool search --onlyvisible --name "^save Properties$" >dialog.txt'
form=$(head -1 form.txt)
dialog=$(head -1 dialog.txt)
# Apart from the form, so that the button stays in sight.
xdotool windowmove "$form" 0 0
xdotool windowmove "$dialog" 400 300
wait_for "the windows apart" sh -c \
  "xdotool getwindowgeometry $dialog | grep -q 'Position: 4[0-9][0-9],3'"
xdotool windowactivate --sync "$dialog" 2>/dev/null
wait_for "the dialog to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $dialog ]"

# The page's corner is at (10, 30) in the dialog: "Flat Button" at (206,
# 58), the margin's box at (18, 97), Apply at (319, 226).
xdotool mousemove --window "$dialog" 214 66 click 1
wait_for "the click on Flat Button" trace_has "event chkFlat.Click"
xdotool mousemove --window "$dialog" 60 107 click 1
xdotool key End BackSpace BackSpace BackSpace BackSpace BackSpace
xdotool type 12
wait_for "the margin typed" trace_has 'notify txtMargin.Text'
xdotool mousemove --window "$dialog" 356 237 click 1
wait_for "Apply" trace_has "notify save.Margin"
trace_has "notify save.Style" || fail "Apply did not set the style"

cat >headless.kss <<KSS
openform "$here/buttons-form.json"
set save.Style ccFlat
set save.Margin 12
get save.Margin
png headless-save.png save
KSS
"$script_host" headless.kss >headless.txt || fail "the headless run failed"
wait_for "the button redrawn flat at margin 12" sh -c \
  "'$grab' $form screen-save.png 20 20 100 33 && cmp -s headless-save.png screen-save.png"
"$grab" "$dialog" dialog.png 0 0 400 255 || fail "the dialog cannot be read"
echo "PASS: Flat Button, the margin typed, Apply; the button's pixels (screen-save.png)"
