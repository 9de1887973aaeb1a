#!/usr/bin/env bash
# The context menu under stress in a real window: kestu-run under Xvfb and
# openbox, and several hundred rounds of what a quick user does, in orders
# drawn from a fixed seed: right-click one of the two boxes; leave the menu
# with Escape, an access key, a click on an item or a click outside it;
# another program reads the clipboard, sometimes while the menu is open;
# Tab or Shift+Tab. The program must come through every round alive, with
# no X error reported at all. First, an X error that does happen is logged
# once and ends nothing.
set -uo pipefail

run=$1 probe=$2 here=$3 work=$4
rounds=${STRESS_ROUNDS:-300}
RANDOM=${STRESS_SEED:-1}
source "$here/xsession.sh"

[ "$("$probe" 2>probe.err)" = 2 ] || fail "the probe did not come through two X errors"
[ "$(grep -c "^kestu: X error" probe.err)" = 1 ] || fail "two X errors of one kind: $(cat probe.err)"

"$run" --trace "$here/entry-form.json" >trace.txt 2>run.err &
run_pid=$!
pids+=($run_pid)
wait_for "the form's window" sh -c 'xdotool search --onlyvisible --name "^Entry$" >window.txt'
window=$(head -1 window.txt)

alive() { kill -0 "$run_pid" 2>/dev/null || fail "kestu-run ended in round $round"; }
# xdotool dies of an X error when a window it looks at goes away under it:
# such a look says nothing, and the wait takes it again.
menus() {
  xdotool search --onlyvisible --name "^Kestu menu$" >menus.txt 2>xdotool.err
  ! grep -q "X Error" xdotool.err
}
menu_shown() { menus && [ -s menus.txt ]; }
menu_gone() { menus && [ ! -s menus.txt ]; }
menu_geometry() {
  xdotool getwindowgeometry --shell "$(head -1 menus.txt)" >geometry.txt 2>xdotool.err &&
    ! grep -q "X Error" xdotool.err
}
# Whether item $1 (0 to 5, the separator being 4) of the menu now open is
# enabled, as its trace line says: a disabled item keeps the menu open.
item_on() {
  local items
  IFS=, read -ra items <<<"$(grep "^popup " trace.txt | tail -1)"
  [[ ${items[$1]} == *" on" ]]
}
read_clipboard() { timeout 5 xclip -o -selection clipboard >/dev/null 2>&1 & clips+=($!); }

popups=0 tabs=0 clips=()
for round in $(seq "$rounds"); do
  # The two boxes are at pixels (20, 20) and (20, 60), 160 x 21.
  box_y=$(( RANDOM % 2 ? 30 : 70 ))
  xdotool mousemove --window "$window" 60 "$box_y" click 3
  popups=$((popups + 1))
  wait_for "menu $popups" trace_count "popup " "$popups"
  wait_for "menu $popups's window" menu_shown
  (( RANDOM % 3 == 0 )) && read_clipboard
  closes=1 action=$((RANDOM % 5))
  case $action in
    0) xdotool key Escape ;;
    1) xdotool key c; item_on 1 || closes=0 ;;  # "&Copiar"
    2) xdotool key s; item_on 5 || closes=0 ;;  # "&Selecionar Tudo"
    3) # A click on one of the first four items: a 3-pixel frame and five
       # items of equal height.
       item=$((RANDOM % 4))
       wait_for "menu $popups's size" menu_geometry
       source geometry.txt
       xdotool mousemove --window "$WINDOW" 30 $(( 3 + item * (HEIGHT - 6 - 9) / 5 + 4 )) click 1
       item_on "$item" || closes=0 ;;
    4) xdotool mousemove --window "$window" 250 100 click 1 ;;  # outside the menu
  esac
  (( closes )) || xdotool key Escape
  wait_for "menu $popups to close" menu_gone
  (( RANDOM % 2 )) && read_clipboard
  tabs=$((tabs + 1))
  if (( RANDOM % 2 )); then xdotool key Tab; else xdotool key shift+Tab; fi
  wait_for "Tab $tabs" trace_count "KeyUp(KeyCode=9, " "$tabs"
  alive
done
for pid in "${clips[@]}"; do wait "$pid"; done
round=$rounds
alive
if grep -qi "x error" run.err; then fail "the window system reported an error"; fi
echo "PASS: $rounds rounds of the context menu, the clipboard and Tab"
