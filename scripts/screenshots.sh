#!/usr/bin/env bash
# Makes the manual's pictures anew: runs the program on the demonstration under Xvfb, drives it by a
# batch file and by the mouse, and writes docs/img/.
#   scripts/screenshots.sh [folder of the demonstration]
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(realpath -m -- "${1:-out/demo}")

# The second time on a display of its own.
if [[ -z ${ON_OWN_DISPLAY:-} ]]; then
    scripts/setup.sh imagemagick
    scripts/build.sh
    build/morvenkite-demo write "$folder"
    exec env ON_OWN_DISPLAY=1 xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$folder"
fi

pictures=$PWD/docs/img
work=$(mktemp -d)
program=
cleanup() {
    [[ -z $program ]] || kill "$program" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "screenshots.sh: $1" >&2
    tail -n 20 "$work/program.log" >&2 || true
    exit 1
}

# The user's own window places neither matter nor change.
export XDG_CONFIG_HOME=$work/config

# start <option...>: runs the program; its log is $work/program.log.
start() {
    build/morvenkite -c "$folder/config.cfg" "$@" >"$work/program.log" 2>&1 &
    program=$!
}

# await <text>: until the program's log has the text, at most two minutes.
await() {
    for _ in $(seq 1200); do
        ! grep -qF -- "$1" "$work/program.log" || return 0
        kill -0 "$program" 2>/dev/null || fail "the program has ended"
        sleep 0.1
    done
    fail "no \"$1\" in two minutes"
}

# grab <picture>: the display, once two frames in a row are the same.
grab() {
    import -window root "$work/old.png"
    for _ in $(seq 100); do
        sleep 0.1
        import -window root "$work/new.png"
        if [[ $(compare -metric AE "$work/old.png" "$work/new.png" null: 2>&1) == 0 ]]; then
            mv "$work/new.png" "$pictures/$1"
            return 0
        fi
        mv "$work/new.png" "$work/old.png"
    done
    fail "the display does not come to rest"
}

# The demonstration's own road, then the windows one after the other.
{
    grep -v '^quit' "$folder/demo.bat"
    cat <<BATCH
:let img "$pictures"
select_disp_image 0
move_position 90 110
screenshot Body \$img\$/main-window.png
screenshot XafsView \$img\$/spectrum.png
xafs_view_normalize 1
screenshot XafsView \$img\$/spectrum-normalized.png
xafs_view_normalize 0
screenshot EOFSetup \$img\$/energy-setup.png
screenshot CalibCtrl \$img\$/calibration.png
analyzer_set_ratio_scale_min 0
analyzer_set_ratio_scale_max 1
analyzer_set_fixed_scale 1
analyzer_select_image_type 0
analyzer_select_image 1
select_disp_image 3
move_position 90 110
screenshot Analyzer \$img\$/analyzer.png
screenshot AnalyzerView \$img\$/analyzer-view.png
screenshot Body \$img\$/result-map.png
screenshot BatchCtrl \$img\$/batch.png
select_disp_image 0
seek_image 45
select_region 0 0 0 0
cbar_set_range 0 1
set_band_w 3
BATCH
} >"$work/pictures.bat"
start -e -b "$work/pictures.bat" -x
await "setting cbar 0 1"

# What only a mouse can do, over the image: an area in the drawing, then the view of it.
xdotool mousemove --sync 740 200 mousedown 1
xdotool mousemove --sync 860 300 mousemove --sync 985 420
grab selection.png
xdotool mouseup 1
xdotool keydown ctrl mousemove --sync 740 200 mousedown 1 mousemove --sync 985 420 mouseup 1 keyup ctrl
xdotool mousemove --sync 850 300 click 4
grab zoom.png

# The energy shift map, between the two ends of the colour bar: its corner without beam holds
# nothing but noise.
xdotool mousemove --sync 905 576 key 0 mousemove --sync 790 69 click 1
xdotool mousemove --sync 1251 90 mousedown 1 mousemove --sync 1251 295 mouseup 1
xdotool mousemove --sync 1251 529 mousedown 1 mousemove --sync 1251 318 mouseup 1
xdotool mousemove --sync 850 300
grab shift-map.png
kill "$program"
wait "$program" 2>/dev/null || true

# The same window as a Japanese user sees it.
sed -n '/^:echo "Calibrating/q; p' "$folder/demo.bat" >"$work/japanese.bat"
cat >>"$work/japanese.bat" <<BATCH
move_position 90 110
screenshot Body "$pictures/main-window-ja.png"
cbar_set_range 0 1
BATCH
start -b "$work/japanese.bat" -x
await "setting cbar 0 1"
kill "$program"
wait "$program" 2>/dev/null || true
program=

for picture in main-window spectrum spectrum-normalized energy-setup calibration shift-map analyzer \
    analyzer-view result-map batch selection zoom main-window-ja; do
    [[ -s $pictures/$picture.png ]] || fail "no $picture.png"
done
echo "Pictures: $pictures"
