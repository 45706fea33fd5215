#!/usr/bin/env bash
# Makes the pictures of the user guide anew: runs the program on the demonstration on displays of
# its own (Xvfb), drives it by keys, mouse and a batch, and writes docs/img/.
#   scripts/screenshots.sh [folder of the demonstration]
# The pictures show the folder's name, so by default it is the same on every machine.
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."
folder=$(cd "$start" && realpath -m -- "${1:-/tmp/demo}")

# The first time it prepares, and calls itself once for each size of display.
if [[ -z ${PICTURES_OF:-} ]]; then
    scripts/setup.sh imagemagick
    scripts/build.sh
    build/morvenkite-demo write "$folder"
    for size in 1280x800 1920x1080; do
        env PICTURES_OF=$size xvfb-run -a -s "-noreset -screen 0 ${size}x24" scripts/screenshots.sh "$folder"
    done
    echo "Pictures: $PWD/docs/img"
    exit
fi

work=$(mktemp -d)
mkdir "$work/img" "$work/frames"
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

# The user's own Qt settings neither matter nor change.
export LC_ALL=C.UTF-8
for name in "${!QT_@}"; do unset "$name"; done

# Where things are on a screen of 1280 x 800, which the main window fills.
energy_setup=(52 273)
nothing=(900 10) # beside the menus: no tool tip

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
logged() { wait_for "\"$1\"" grep -qF "$1" "$log"; }
visible() { xdotool search --onlyvisible --name "^$1\$"; }
# A window of the program beside the main one, whatever the language of its title; its id is $id.
other_window() {
    id=$(xdotool search --onlyvisible --pid "$program" --name . | grep -vx "$main" | tail -n 1)
    [[ -n $id ]]
}
no_other_window() { ! other_window; }

# start <store> <option...>: runs the program with a store of settings that is new but for these
# lines, and waits for its main window, $main.
start() {
    export XDG_CONFIG_HOME=$work/config
    rm -rf "$work/config"
    mkdir -p "$work/config/Tessmoor Lab"
    echo "$1" >"$work/config/Tessmoor Lab/Morvenkite.conf"
    shift
    build/morvenkite "$@" >"$log" 2>&1 &
    program=$!
    wait_for "main window" visible Morvenkite
    main=$(visible Morvenkite)
    xdotool windowmove --sync "$main" 0 0 || true
    xdotool windowsize "$main" "${PICTURES_OF%x*}" "${PICTURES_OF#*x}"
    xdotool mousemove --sync "${nothing[@]}" windowfocus --sync "$main"
}
# Without the question about maps that are not saved, which only its user's close asks.
finish() {
    kill "$program"
    wait "$program" || (($? == 143)) || fail "the program did not end in order"
    program=
}
keys() { xdotool windowfocus --sync "$main" key --delay 60 "$@"; }

# grab <picture>: the main window, once nothing has moved in it for about two seconds but a text
# cursor that blinks, which makes two frames take turns: then always the same one of them.
grab() {
    local i frame recent=()
    for ((i = 0; i < 300; ++i)); do
        import -window "$main" "$work/new.ppm"
        frame=$(sha256sum <"$work/new.ppm" | cut -d' ' -f1)
        mv "$work/new.ppm" "$work/frames/$frame.ppm"
        recent+=("$frame")
        ((${#recent[@]} <= 16)) || recent=("${recent[@]:1}")
        if ((${#recent[@]} == 16)) && at_rest "${recent[@]}"; then
            frame=$(printf '%s\n' "${recent[@]}" | sort | head -n 1)
            convert "$work/frames/$frame.ppm" -strip -define png:compression-level=9 \
                -define png:exclude-chunk=date,time "$work/img/$1.png"
            rm -f "$work"/frames/*
            return 0
        fi
        sleep 0.1
    done
    fail "$1 does not come to rest"
}
# at_rest <frame...>: all alike; or two, each seen more than once after the other.
at_rest() {
    local kinds turns
    kinds=$(printf '%s\n' "$@" | sort -u | wc -l)
    turns=$(printf '%s\n' "$@" | uniq | wc -l)
    ((kinds == 1 || (kinds == 2 && turns > 3)))
}

# From a folder to the question about it, and from there to maps of blocks of 5 x 5 pixels, by the
# keys that the guide tells.
open_folder() {
    keys ctrl+o
    wait_for "dialog" other_window
    xdotool windowfocus --sync "$id" key Return
    wait_for "end of the dialog" no_other_window
}
load() { keys 8 9 4 8 Return; }
first_map() {
    keys ctrl+2 2 Tab 2 F5
    logged "2D analysis: "
    keys ctrl+4
}

pictures_1280x800() {
    start "" -e -c "$folder/config.cfg"
    grab welcome
    open_folder
    grab folder-question
    load
    grab loaded
    first_map
    grab first-map
    keys ctrl+5
    grab save
    keys ctrl+1
    xdotool mousemove --sync "${energy_setup[@]}" click 1 mousemove --sync "${nothing[@]}"
    grab energy-setup
    finish

    # By lines of the configuration: the text of a batch window needs a button to start.
    {
        echo "INCLUDE $folder/config.cfg"
        sed '/^calib_save_map/q; s/^/batch /' "$folder/demo.bat" | grep -v '^calib_save_map'
        echo 'batch select_disp_image 2'
        echo 'batch move_position 90 110'
        echo 'batch :echo "The shift map is ready"'
    } >"$work/calibration.cfg"
    start "" -e -c "$work/calibration.cfg" -b "$folder/demo.bat"
    logged "The shift map is ready"
    keys ctrl+3
    grab calibration
    keys ctrl+b
    grab batch
    finish
    analyses
    registration
}

# A map of each analysis, brought on show by the batch, which takes the pictures itself: nothing
# moves meanwhile.
analyses() {
    local line
    {
        echo "INCLUDE $folder/config.cfg"
        echo 'batch analyzer_show_window'
        sed -n '1,/^analyzer_exec_LCF/p' "$folder/demo.bat" | grep -v '^calib_\|^analyzer_exec' |
            sed 's/^/batch /'
        while read -r line; do
            echo "batch ${line/picture /screenshot Body $work/img/analysis-}"
        done <<'LINES'
Suggesting_Elm Cu
suggesting_th_jump 5
Suggest_Elm 1
set_band_w 2
set_band_h 2
analyzer_exec_LCF
move_position 92 112
analyzer_show_outcomes
picture outcomes
analyzer_select_analysis_mode 5
analyzer_exec_LCF
analyzer_select_image 8
move_position 92 112
picture dedge
analyzer_select_analysis_mode 1
analyzer_set_ra_energy 8960
analyzer_exec_ra
analyzer_select_image 5
move_position 92 112
picture residual
analyzer_select_analysis_mode 2
analyzer_target_elements Cu, Ni
analyzer_exec_elems
analyzer_elems_select_disp_mode 0
move_position 92 112
picture elements
analyzer_map1_capture
analyzer_elems_select_disp_mode 5
analyzer_map2_capture
analyzer_select_analysis_mode 4
analyzer_process 0
picture arithmetic
:echo "The analyses are shown"
LINES
    } >"$work/analyses.cfg"
    start $'[Workbench]\nramp=2' -e -c "$work/analyses.cfg"
    logged "The analyses are shown"
    finish
}

# The demonstration with a sample that drifts: before and after it is brought back, and what became
# of the blocks. The dock is opened by the menu, for no command does it.
registration() {
    local lines=$work/registration.cfg
    build/morvenkite-demo write "$work/drift" --drift 12 >"$log"
    {
        echo "INCLUDE $work/drift/config.cfg"
        sed '1,/^:echo "Loading the sample"/!d; /^calib_/d; /std_/,+2d; s/^/batch /' "$work/drift/demo.bat"
        sed -n "/error_points_i1/,/^set_i1_dark/s/^/batch /p" "$work/drift/demo.bat"
        echo "batch select_region 0 0 200 200"
        echo "batch registration_threshold 700"
        echo "batch seek_image 0"
        echo "batch registration_set_reference"
        echo "batch seek_image 80"
        echo "batch registration_view 2"
        echo "batch screenshot Registration $work/img/registration-panel.png"
        echo 'batch :echo "The sample has drifted"'
    } >"$lines"
    start $'[Workbench]\nramp=2' -e -c "$lines"
    logged "The sample has drifted"
    keys alt+w i
    grab registration-apart
    finish

    {
        sed '$d' "$lines"
        echo "batch registration_auto_all 1 1"
        echo "batch registration_set_reference 60"
        echo "batch seek_image 80"
        echo "batch registration_view 2"
        echo 'batch :echo "The sample is back"'
        sed -n '/^analyzer_select_analysis_mode 0/,/^:next/s/^/batch /p' "$work/drift/demo.bat"
        echo "batch Suggesting_Elm Cu"
        echo "batch suggesting_th_jump 5"
        echo "batch Suggest_Elm 1"
        echo "batch analyzer_exec_LCF"
        echo "batch analyzer_show_outcomes"
        echo "batch select_disp_image 3"
        echo 'batch :echo "The outcomes are shown"'
    } >"$work/back.cfg"
    start $'[Workbench]\nramp=2' -e -c "$work/back.cfg"
    logged "The outcomes are shown"
    keys alt+w i
    grab registration-edges
    finish
    sed -i '/analyzer_\|Suggest/d' "$work/back.cfg"
    sed -i 's/^batch select_disp_image 3/batch select_disp_image 0/' "$work/back.cfg"
    start $'[Workbench]\nramp=2' -e -c "$work/back.cfg"
    logged "The outcomes are shown"
    keys alt+w i
    grab registration-together
    finish
}

# With the edge that is to be looked for, which keeps out the noise beside the sample.
pictures_1920x1080() {
    {
        echo "INCLUDE $folder/config.cfg"
        echo 'batch Suggesting_Elm Cu'
        echo 'batch suggesting_th_jump 5'
        echo 'batch Suggest_Elm 1'
        echo 'batch :echo "The edge is set"'
    } >"$work/edge.cfg"
    local picture
    for picture in workbench workbench-ja workbench-dark; do
        local store=$'[Workbench]\nramp=2' language=(-e)
        [[ $picture != workbench-ja ]] || language=()
        [[ $picture != workbench-dark ]] || store+=$'\ncolours=2'
        start "$store" "${language[@]}" -c "$work/edge.cfg"
        logged "The edge is set"
        open_folder
        load
        grab loaded # is at rest when all is loaded
        first_map
        grab "$picture"
        finish
    done
    rm "$work/img/loaded.png"
}

"pictures_$PICTURES_OF"
mkdir -p docs/img
mv "$work"/img/*.png docs/img/
