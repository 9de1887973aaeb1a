#!/usr/bin/env bash
# kestu-designer in real windows, driven with xdotool as a form's author
# would: a number box dragged out of the toolbox, a command button drawn
# and a toolbar with two buttons clicked in; a tip set in the grid and a caption through the
# button's property page; saved, and the file's bags read back in
# kestu-script; a deletion undone gives back the saved file byte for byte;
# Run shows the form running, where a click raises the button's event.
set -uo pipefail

designer=$1 script_host=$2 grab=$3 here=$4 work=$5
source "$here/xsession.sh"

"$designer" --trace "$work/form.json" >trace.txt 2>run.err &
pids+=($!)
wait_for "the designer's window" sh -c 'xdotool search --onlyvisible --name "^Kestu Designer" >designer.txt'
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Form1$" >form.txt'
main=$(head -1 designer.txt)
form=$(head -1 form.txt)
xdotool windowmove "$main" 0 0
xdotool windowmove "$form" 610 0
wait_for "the windows apart" sh -c "xdotool getwindowgeometry $form | grep -q 'Position: 6[0-9][0-9],'"

# The designer's window, in its client pixels: the toolbar's buttons on a
# row at y 12, the toolbox's tools 26 pixels apart from y 45 at x 90 in
# name order (the pointer first), the grid's rows 16 pixels apart from
# y 50, the value's box at y 322.
tool_at() {  # NAME: the toolbox's tool's y in tool_y
  local i=0 name
  for name in Pointer KestuActiveCommand KestuCopyFile KestuLine3D KestuNumberEdit \
              KestuPanel3D KestuTBBar KestuTBButton KestuTBSeparator KestuTextEdit; do
    [ "$name" = "$1" ] && break
    i=$((i + 1))
  done
  tool_y=$((45 + 26 * i))
}
tool() {  # NAME: arms the toolbox's tool
  tool_at "$1"
  xdotool mousemove --window "$main" 90 "$tool_y" click 1
}
draw() {  # X1 Y1 X2 Y2 on the form
  xdotool mousemove --window "$form" "$1" "$2" mousedown 1
  xdotool mousemove --window "$form" $((($1 + $3) / 2)) $((($2 + $4) / 2))
  xdotool mousemove --window "$form" "$3" "$4" mouseup 1
}
saved() {  # waits for the form's file to be written anew
  rm -f form.json.before && cp "$work/form.json" form.json.before 2>/dev/null
  xdotool windowactivate --sync "$form" 2>/dev/null
  xdotool key ctrl+s
  wait_for "the file saved" sh -c "[ -s '$work/form.json' ] && ! cmp -s '$work/form.json' form.json.before"
}

# The number box dragged out of the toolbox onto the form.
tool_at KestuNumberEdit
xdotool mousemove --window "$main" 90 "$tool_y" mousedown 1
xdotool mousemove --window "$main" 300 200
xdotool mousemove --window "$form" 20 60 mouseup 1
tool KestuActiveCommand
draw 20 120 140 150
tool KestuTBBar
draw 300 300 300 300
tool KestuTBButton
draw 40 12 40 12
tool KestuTBButton
draw 80 12 80 12
# The window system delivers the clicks in order: each tool is armed
# before the press on the form that places it.
wait_for "the form modified" sh -c "xdotool getwindowname $main | grep -q '[*]$'"

# The button's tip in the grid (ToolTipText, the seventh row).
xdotool mousemove --window "$form" 80 135 click 1
xdotool mousemove --window "$main" 250 $((50 + 16 * 6 + 8)) click 1
xdotool mousemove --window "$main" 260 322 click 1
xdotool key End shift+Home
xdotool type "Press me"
xdotool key Return

# The caption through the button's page: a double-click opens its dialog,
# whose first field is the caption; Enter is OK.
xdotool mousemove --window "$form" 80 135 click --repeat 2 --delay 60 1
wait_for "the property dialog" \
  sh -c 'xdotool search --onlyvisible --name "^KestuActiveCommand1 Properties$" >dialog.txt'
dialog=$(head -1 dialog.txt)
xdotool windowactivate --sync "$dialog" 2>/dev/null
wait_for "the dialog to be active" sh -c "[ \"\$(xdotool getactivewindow)\" = $dialog ]"
xdotool key End shift+Home
xdotool type "Go"
xdotool key Return
wait_for "the caption applied" trace_has "notify KestuActiveCommand1.Caption"
wait_for "the dialog closed" sh -c "! xdotool search --onlyvisible --name ' Properties$'"

saved
cp "$work/form.json" first.json
cat >read.kss <<KSS
openform "$work/form.json"
save KestuNumberEdit1
save KestuActiveCommand1
save KestuTBBar1
save KestuTBButton1
save KestuTBButton2
get KestuActiveCommand1.ToolTipText
KSS
"$script_host" read.kss >bags.txt 2>&1 || fail "the saved file does not load: $(cat bags.txt)"
diff -u "$here/designer-window.expected" bags.txt || fail "the saved file's bags differ"
# The toolbar's buttons were dropped inside it: the file nests them there.
[ "$(grep -c '"Controls"' first.json)" = 2 ] || fail "the buttons are not inside the toolbar"

# A deletion, saved, then undone and saved again: the first file again.
xdotool mousemove --window "$form" 30 70 click 1
xdotool key Delete
saved
cmp -s first.json "$work/form.json" && fail "the deletion changed nothing"
xdotool key ctrl+z
saved
cmp first.json "$work/form.json" || fail "undo did not give back the saved file"

# Run: the form running in a window of its own, where the button clicks.
xdotool mousemove --window "$main" 536 12 click 1
wait_for "the running form" sh -c 'xdotool search --onlyvisible --name "^Form1 \(Run\)$" >run.txt'
running=$(head -1 run.txt)
xdotool windowmove "$running" 610 500
wait_for "the running form moved" sh -c "xdotool getwindowgeometry $running | grep -q 'Position: 6[0-9][0-9],[5-9]'"
xdotool mousemove --window "$running" 80 135 click 1
wait_for "the button's Click" trace_has "event KestuActiveCommand1.Click"

"$grab" "$(xwininfo -root | awk '/Window id/{print $4}')" designer.png 0 0 1024 768 ||
  fail "the screen cannot be read"
echo "PASS: four controls placed, the grid and the page set, saved, undone, run (designer.png)"
