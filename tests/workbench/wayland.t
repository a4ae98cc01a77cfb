The workbench under a Wayland compositor: one file is pasted, another one dropped, all are exported, and the last is shown
in the file manager. The compositor is weston in a window of the test's X server, where each file is found by its colour.

  $ within() { for _ in $(seq 60); do "$@" && return; sleep 0.3; done; echo "not in time: $*"; }
  $ place() { import -window root seen.png; convert seen.png -fill black +opaque "$1" -format %@ info: 2>&1 | grep -v ^0x0; }
  $ shows() { place "$1" > place && grep -q '^[1-9]' place; }
  $ while read -r name colour; do convert -size 64x48 "xc:$colour" $name.png; done << END
  > given rgb(10,240,20)
  > pasted rgb(240,230,10)
  > dropped rgb(20,30,250)
  > END
  $ fake-service session org.freedesktop.FileManager1 answers > shown 2>&1 &
  $ imageutils-workbench given.png -o out > log 2>&1 &
  $ workbench=$!
  $ within shows 'rgb(10,240,20)'

The clipboard belongs to the window with the keyboard, which wl-copy takes for a moment. Qt 6.11 sometimes does not notice
that weston gives it back, and every key is lost until the keyboard is given once more.

  $ copy() { wl-copy --foreground --type text/uri-list "file://$PWD/pasted.png" > said 2>&1 & }
  $ copy
  $ paste_file() {
  >   shows 'rgb(240,230,10)' && return
  >   [ $((++tries % 8)) != 0 ] || copy
  >   xdotool key ctrl+v; sleep 1; false
  > }
  $ within paste_file

Weston follows the movements of X's pointer, not its place, so that both begin in the same corner.

  $ dragsource "$PWD/dropped.png" > said 2>&1 &
  $ source=$!
  $ within shows 'rgb(230,20,200)'
  $ IFS=x+ read -r width height x y < place
  $ read -r left top w h < <(xwininfo -name 'Weston Compositor - screen0' |
  >   sed -nE 's/^ *(Absolute upper-left .|Width|Height): *//p' | paste -sd ' ')
  $ to=$((left + (x + width / 2 > left + w / 2 ? w / 4 : 3 * w / 4)))
  $ drop_file() {
  >   shows 'rgb(20,30,250)' && return
  >   xdotool mousemove $((left + w - 2)) $((top + h - 2)) sleep 0.2 mousemove $((left + 1)) $((top + 1)) sleep 0.2 \
  >     mousemove $((x + width / 2)) $((y + height / 2)) sleep 0.2 mousedown 1 sleep 0.3 \
  >     mousemove $((to - 9)) $((top + h / 2)) sleep 0.2 mousemove $to $((top + h / 2)) sleep 0.3 mouseup 1 sleep 1
  >   false
  > }
  $ within drop_file
  $ kill $source

  $ is_exported() { [ "$(ls out 2> said | wc -l)" = 3 ] || { xdotool key ctrl+shift+e; sleep 2; false; }; }
  $ within is_exported
  $ ls out
  dropped.tiff
  given.tiff
  pasted.tiff
  $ is_shown() { grep -q ShowItems shown || { xdotool key ctrl+j; sleep 1; false; }; }
  $ within is_shown
  $ grep -o 'ShowItems.*' shown | uniq
  ShowItems file://*/out/dropped.tiff (glob)
  $ xdotool key ctrl+q
  $ wait $workbench; jobs -p | xargs kill 2>/dev/null; grep -Ev 'showFileInGraphicalShell|libEGL|MESA|^$' log
  [1]
