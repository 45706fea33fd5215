#!/usr/bin/env bash
# Makes the pictures of the user guide anew: runs the program on the demonstration on a display of
# its own (Xvfb), drives it by a batch file, mouse and keys, and writes docs/img/.
#   scripts/screenshots.sh [folder of the demonstration]
# The pictures show the folder's name, so by default it is the same on every machine.
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."
folder=$(cd "$start" && realpath -m -- "${1:-/tmp/demo}")

# The second time on the display.
if [[ -z ${ON_OWN_DISPLAY:-} ]]; then
    scripts/setup.sh imagemagick
    scripts/build.sh
    build/morvenkite-demo write "$folder"
    exec env ON_OWN_DISPLAY=1 xvfb-run -a -s "-screen 0 1280x800x24" scripts/screenshots.sh "$folder"
fi

work=$(mktemp -d)
mkdir "$work/img"
log=$work/program.log
program=
cleanup() {
    [[ -z $program ]] || kill "$program" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "screenshots.sh: $1" >&2
    tail -n 20 "$log" >&2 || true
    exit 1
}
trap 'fail "line $LINENO: $BASH_COMMAND"' ERR

# The user's own window places and Qt settings neither matter nor change.
export XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8
for name in "${!QT_@}"; do unset "$name"; done

# Where things are on the screen, which the main window fills.
data=(621 69) shift_map=(790 69) results=(876 69)
i1_setup=(434 98) i1_add_setup=(517 98) i0_add_setup=(517 192) suggest_elm=(22 442)
spectrum=(648 742) calibration=(785 742) analyzer=(923 742) batch=(1198 742)
nothing=(571 300) # between two groups: no tool tip
# In windows of their own.
select_list=(130 157) use_list=(254 157) file_name=(200 360) normalized=(305 521)

# The place on the screen of the pixels of the image when it is shown as a whole.
column() { echo $((582 + 567 * $1 / 200)); }
row() { echo $((86 + 447 * $1 / 200)); }

# wait_for <what> <command...>: until the command succeeds, at most two minutes.
wait_for() {
    local what=$1 end=$((SECONDS + 120))
    shift
    while ((SECONDS < end)); do
        ! "$@" >/dev/null 2>&1 || return 0
        kill -0 "$program" 2>/dev/null || fail "the program has ended before $what came"
        sleep 0.05
    done
    fail "no $what in two minutes"
}
visible() { xdotool search --onlyvisible --name "^$1\$"; }
hidden() { ! visible "$1"; }

# window <title>: waits for a window; its id is $id.
window() {
    wait_for "window \"$1\"" visible "$1"
    id=$(visible "$1")
}

# start <option...>: runs the program and waits for its main window, $main.
start() {
    build/morvenkite -c "$folder/config.cfg" "$@" >"$log" 2>&1 &
    program=$!
    window Morvenkite
    main=$id
}
finish() {
    xdotool windowfocus --sync "$main" key ctrl+q
    wait "$program" || fail "the program ended with code $?"
    program=
}

# grab <picture> [window]: by default the main window, once three frames in a row are the same.
grab() {
    local same=0 i
    rm -f "$work/old.ppm"
    for ((i = 0; i < 200; ++i)); do
        import -window "${2:-$main}" "$work/new.ppm"
        if cmp -s "$work/old.ppm" "$work/new.ppm"; then ((same += 1)); else same=0; fi
        if ((same == 2)); then
            convert "$work/new.ppm" -strip -define png:compression-level=9 \
                -define png:exclude-chunk=date,time "$work/img/$1.png"
            return 0
        fi
        mv "$work/new.ppm" "$work/old.ppm"
        sleep 0.1
    done
    fail "$1 does not come to rest"
}

# front <title>: brings a window to the front, in the corner of the screen.
front() {
    window "$1"
    xdotool windowmove --sync "$id" 0 0 windowraise "$id"
}
back() { xdotool windowraise "$main" mousemove --sync "${nothing[@]}"; }
grab_window() {
    front "$2"
    grab "$1" "$id"
    back
}

# dialog <x> <y> <title>: opens a dialog by the button at this place.
dialog() {
    xdotool mousemove --sync "$1" "$2" click 1
    window "$3"
}
# close_dialog <title>: a list that pops up may take the first key.
close_dialog() { wait_for "end of \"$1\"" is_closed "$1"; }
is_closed() { hidden "$1" || ! xdotool windowfocus --sync "$id" key Escape; }

# use_bad_pixels <x> <y> <title>: gives a stack its list of bad pixels.
use_bad_pixels() {
    dialog "$@"
    local setup=$id files="Select Bad Pixels of ${3%%:*}"
    xdotool mousemove --sync --window "$setup" "${use_list[@]}" click 1
    xdotool mousemove --sync --window "$setup" "${select_list[@]}" click 1
    window "$files"
    xdotool mousemove --sync --window "$id" "${file_name[@]}" click 1
    xdotool type "$folder/bad-pixels.txt"
    xdotool key Return
    wait_for "end of the file dialog" hidden "$files"
    id=$setup
    close_dialog "$3"
}

# drag_handle <y> <y>: drags a handle of the colour bar from one height on the screen to another.
drag_handle() {
    xdotool mousemove --sync 1251 "$1" mousedown 1 mousemove --sync 1251 "$2" mouseup 1
    xdotool mousemove --sync "${nothing[@]}"
}

# The demonstration's own road, then a second fit without what has no edge.
{
    grep -v '^quit' "$folder/demo.bat"
    cat <<BATCH
:echo "Fitting where there is a copper edge"
Suggest_Elm 1
analyzer_set_fixed_scale 1
analyzer_exec_LCF
analyzer_select_image_type 0
analyzer_select_image 1
analyzer_view_enerugy_correction 1
BATCH
} >"$work/maps.bat"
{
    cat "$work/maps.bat"
    cat <<BATCH
Suggest_Elm 0
select_disp_image 0
seek_image 60
:echo "The maps are ready"
BATCH
} >"$work/english.bat"
{
    cat "$work/maps.bat"
    cat <<BATCH
select_disp_image 3
move_position 90 110
:echo "The maps are ready"
BATCH
} >"$work/japanese.bat"

start -e -b "$work/english.bat"
use_bad_pixels "${i1_add_setup[@]}" "I1 Data: Additional Setup"
use_bad_pixels "${i0_add_setup[@]}" "I0 Data: Additional Setup"
# The run of the configuration's lines needs a stop before another can start.
xdotool mousemove --sync "${nothing[@]}" windowfocus --sync "$main" key alt+b key s key alt+b key e
wait_for "end of the batch" grep -qF "The maps are ready" "$log"

# The images, with the cursor on the sample and nothing selected.
xdotool mousemove --sync "$(column 90)" "$(row 110)" click 3 mousemove --sync "${nothing[@]}"
grab main-window
dialog "${i1_setup[@]}" "I1 Data: Energy of Files"
grab_window energy-setup "I1 Data: Energy of Files"
close_dialog "I1 Data: Energy of Files"
dialog "${i1_add_setup[@]}" "I1 Data: Additional Setup"
grab_window additional-setup "I1 Data: Additional Setup"
close_dialog "I1 Data: Additional Setup"

# The windows one after the other; over the spectrum the mouse reads a value.
xdotool mousemove --sync "${spectrum[@]}" click 1
front "Spectrum at the position"
xdotool mousemove --sync --window "$id" 504 200
grab spectrum "$id"
xdotool mousemove --sync --window "$id" "${normalized[@]}" click 1 mousemove --sync --window "$id" 504 200
grab spectrum-normalized "$id"
back
xdotool mousemove --sync "${calibration[@]}" click 1
grab_window calibration Calibration
xdotool mousemove --sync "${analyzer[@]}" click 1
grab_window analyzer Analyzer
grab_window analyzer-view "Analyzing Spectrum"
xdotool mousemove --sync "${batch[@]}" click 1
grab_window batch Batch

# Maps: the share of a species, then the energy shift between the handles of the colour bar, for
# its corner without beam holds nothing but noise.
xdotool mousemove --sync "${suggest_elm[@]}" click 1 mousemove --sync "${results[@]}" click 1
xdotool mousemove --sync "${nothing[@]}"
grab result-map
xdotool mousemove --sync "${suggest_elm[@]}" click 1 mousemove --sync "${shift_map[@]}" click 1
drag_handle 90 295
drag_handle 529 318
grab shift-map
drag_handle 295 86
drag_handle 318 533
xdotool mousemove --sync "${data[@]}" click 1

# An area while it is drawn, then the view of it.
xdotool mousemove --sync "$(column 55)" "$(row 50)" mousedown 1
xdotool mousemove --sync "$(column 100)" "$(row 100)" mousemove --sync "$(column 145)" "$(row 145)"
grab selection
xdotool mouseup 1 keydown ctrl mousemove --sync "$(column 55)" "$(row 50)" mousedown 1
xdotool mousemove --sync "$(column 145)" "$(row 145)" mouseup 1 keyup ctrl
xdotool mousemove --sync "$(column 90)" "$(row 110)" click 4 mousemove --sync "${nothing[@]}"
grab zoom
finish

# What a Japanese user sees, with a map.
# By the configuration: a run with -x would end at the end of its text.
{
    echo "INCLUDE $folder/config.cfg"
    sed 's/^/batch /' "$work/japanese.bat"
} >"$work/japanese.cfg"
export XDG_CONFIG_HOME=$work/config-ja # no windows left open by the session before
start -config "$work/japanese.cfg"
wait_for "end of the batch" grep -qF "The maps are ready" "$log"
back
grab main-window-ja
finish

mkdir -p docs/img
mv "$work"/img/*.png docs/img/
echo "Pictures: $PWD/docs/img"
