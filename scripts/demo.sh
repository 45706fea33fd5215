#!/usr/bin/env bash
# The whole road without a display: writes the demonstration experiment, lets the program analyse it
# by a batch file, and compares the maps that it saved with what was planted.
#   scripts/demo.sh [folder] [options of morvenkite-demo write]
#   scripts/demo.sh --hard      few counts, uneven scans, positions without an edge
# The exit code is that of the comparison: 0 within the limits, 1 outside, 2 a file is missing.
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."

folder=out/demo
for option in "$@"; do
    [[ $option != --hard ]] || folder=out/demo-hard
done
if [[ $# -gt 0 && $1 != -* ]]; then
    folder=$(cd "$start" && realpath -m -- "$1")
    shift
fi
timeout_seconds=${DEMO_TIMEOUT:-300}

scripts/setup.sh
scripts/build.sh
build/morvenkite-demo write "$folder" "$@"

echo "Analysing (log: $folder/program.log)"
QT_QPA_PLATFORM=offscreen timeout "$timeout_seconds" \
    build/morvenkite -e -c "$folder/config.cfg" -b "$folder/demo.bat" -x \
    >"$folder/program.log" 2>&1 || {
    code=$?
    echo "demo.sh: the program ended with code $code (124: after $timeout_seconds s)" >&2
    tail -n 20 "$folder/program.log" >&2
    exit 2
}

result=0
build/morvenkite-demo compare "$folder" || result=$?
echo "Maps: $(realpath "$folder/maps")"
echo "Pictures: $(realpath "$folder/pictures")"
exit "$result"
