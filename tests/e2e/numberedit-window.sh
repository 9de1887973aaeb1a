#!/usr/bin/env bash
# The numeric edit box in a real window: kestu-run under Xvfb and openbox,
# driven with xdotool as a user would (click, digits, Backspace, the
# context menu by keyboard and by mouse, Tab), then checked three ways:
# the trace, the system clipboard read by another program (xclip), and the
# window's pixels read back from the X server against the same steps run
# headless.
set -uo pipefail

run=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"

# ---- The program ----
"$run" --trace "$here/entry-form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Entry$" >window.txt'
window=$(head -1 window.txt)

# The box "amount" is at pixels (20, 20), 160 x 21, of the form's client area.
xdotool mousemove --window "$window" 60 30 click 1
wait_for "the click" trace_has "event amount.Click"
xdotool type --delay 30 "123"
wait_for "the digits" trace_has "event amount.KeyUp(KeyCode=51, Shift=0)"
xdotool key BackSpace
wait_for "Backspace" trace_has "event amount.KeyUp(KeyCode=8, Shift=0)"

# The menu by keyboard: "s" is the access key of "&Selecionar Tudo".
xdotool click 3
wait_for "the first menu" trace_count "popup amount" 1
wait_for "the menu's window" sh -c 'xdotool search --onlyvisible --name "^Kestu menu$"'
xdotool key s
wait_for "the menu to close" trace_has "event amount.KeyUp(KeyCode=83, Shift=0)"

# The menu by mouse: click "&Copiar", the second item.
xdotool click 3
wait_for "the second menu" trace_count "popup amount" 2
wait_for "the menu's window" sh -c 'xdotool search --onlyvisible --name "^Kestu menu$" >menu.txt'
menu=$(head -1 menu.txt)
eval "$(xdotool getwindowgeometry --shell "$menu")"
# A 3-pixel frame, five items of equal height and a 9-pixel separator.
item_height=$(( (HEIGHT - 6 - 9) / 5 ))
xdotool mousemove --window "$menu" 30 $(( 3 + item_height + item_height / 2 )) click 1
wait_for "the clipboard" sh -c '[ "$(xclip -o -selection clipboard)" = "12" ]'

xdotool key Tab
wait_for "Tab" trace_has "event next.KeyUp(KeyCode=9, Shift=0)"

# ---- The trace: every event in order. Pointer moves depend on the path
# the pointer took, so they are left out. ----
grep -v "MouseMove" trace.txt >events.txt
if ! diff -u "$here/numberedit-window.expected" events.txt; then fail "the trace differs"; fi

# ---- The pixels: the box on the screen is the box the same steps draw
# headless. ----
cat >headless.kss <<KSS
openform "$here/entry-form.json"
click amount
type amount "123"
key amount 8
popup choose 5
click amount 2
popup choose 1
click amount 2
focus next
png headless-amount.png amount
KSS
"$script_host" headless.kss >headless.txt || fail "the headless run failed"
"$grab" "$window" screen-amount.png 20 20 160 21 || fail "the window cannot be read"
"$grab" "$window" screen-form.png || fail "the window cannot be read"
if ! cmp -s headless-amount.png screen-amount.png; then
  fail "the box on the screen differs from the headless box (see $work)"
fi
echo "PASS: trace, clipboard \"12\" and the box's pixels"
