#!/usr/bin/env bash
# The masked edit box in a real window: kestu-run under Xvfb and openbox,
# driven with xdotool as a user would. Typing into a date mask skips its
# literals; Backspace empties the place before a literal; Ctrl+V pastes a
# text whose letters the digit places refuse; the context menu selects and
# copies; accented letters composed with a dead key arrive as one
# character each, refused at "A" places and taken at "X" places. Checked
# by the trace, the system clipboard (xclip) and the box's pixels against
# the same steps run headless.
set -uo pipefail

run=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"
if ! command -v setxkbmap >/dev/null; then
  echo "SKIP: setxkbmap is not installed (scripts/setup.sh installs it)"; exit 77
fi
# A layout with dead keys: the apostrophe then "e" composes "é".
setxkbmap -layout us -variant intl || fail "no layout with dead keys"

"$run" --trace "$here/masked-form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Masked$" >window.txt'
window=$(head -1 window.txt)

# The box "date" is at pixels (20, 20), 160 x 21; "word" at (20, 60).
xdotool mousemove --window "$window" 170 30 click 1
wait_for "the click" trace_has "event date.Click"
xdotool type --delay 30 "2311"
wait_for "the digits" trace_count "event date.Changed" 4
xdotool key BackSpace
wait_for "Backspace" trace_count "event date.Changed" 5
printf '1a2b026' | xclip -selection clipboard
xdotool key ctrl+v
wait_for "the paste" trace_count "event date.Changed" 6

# The menu by keyboard: "s" selects all; then by mouse, "&Copiar".
xdotool click 3
wait_for "the first menu" trace_count "popup date" 1
wait_for "the menu's window" sh -c 'xdotool search --onlyvisible --name "^Kestu menu$"'
xdotool key s
wait_for "the menu to close" trace_has "event date.KeyUp(KeyCode=83, Shift=0)"
xdotool click 3
wait_for "the second menu" trace_count "popup date" 2
wait_for "the menu's window" sh -c 'xdotool search --onlyvisible --name "^Kestu menu$" >menu.txt'
menu=$(head -1 menu.txt)
eval "$(xdotool getwindowgeometry --shell "$menu")"
item_height=$(( (HEIGHT - 6 - 9) / 5 ))
xdotool mousemove --window "$menu" 30 $(( 3 + item_height + item_height / 2 )) click 1
wait_for "the clipboard" sh -c '[ "$(xclip -o -selection clipboard)" = "23/11/2026" ]'

# Dead keys: "é" at an "A" place beeps; "a", "b", then "é" and "ç" at the
# "X" places are taken.
xdotool mousemove --window "$window" 30 70 click 1
wait_for "the second box" trace_has "event word.Click"
xdotool key dead_acute e
wait_for "the refused é" trace_has "event word.KeyPress(KeyAscii=233)"
xdotool type --delay 30 "ab"
xdotool key dead_acute e dead_cedilla c
wait_for "the last letter" trace_has "event word.KeyPress(KeyAscii=231)"

grep -v "MouseMove" trace.txt >events.txt
if ! diff -u "$here/masked-window.expected" events.txt; then fail "the trace differs"; fi

cat >headless.kss <<KSS
openform "$here/masked-form.json"
focus date
keys "2311"
press 8
clipboard "1a2b026"
press 86 2
focus word
keys "abéç"
png headless-date.png date
KSS
"$script_host" headless.kss >headless.txt || fail "the headless run failed"
"$grab" "$window" screen-date.png 20 20 160 21 || fail "the window cannot be read"
# The focused box blinks its caret; the date box, left, does not.
cmp -s headless-date.png screen-date.png ||
  fail "the date box on the screen differs from the headless box (see $work)"
echo "PASS: trace, clipboard \"23/11/2026\", accented letters and the boxes' pixels"
