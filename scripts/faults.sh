#!/usr/bin/env bash
# Lets the disk fail under the program while it runs the demonstration's batch: it is full, or a
# write, an fsync or a rename fails, or the program is killed there. Whatever comes, a name stands
# for a whole file, the new or the former one; and a failure that the program survives leaves no
# temporary file, costs one line of the log for each file, and ends the run with exit code 1.
#   scripts/faults.sh [--short] [--no-exit-code] [--build folder]
#     --short         a few places of each kind instead of all
#     --no-exit-code  does not look at the exit code
#     --build         uses the programs of this folder; without it they are built
# What can't be done here (mounting, tracing) is left out with a line. Exit code 1: something is
# wrong, or everything was left out.
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."

short= exit_code=yes build=
while (($# > 0)); do
    case $1 in
    --short) short=yes ;;
    --no-exit-code) exit_code= ;;
    --build)
        build=$(cd "$start" && realpath -- "$2")
        shift
        ;;
    *)
        echo "faults.sh: unknown option $1" >&2
        exit 2
        ;;
    esac
    shift
done
if [[ -z $build ]]; then
    scripts/setup.sh
    scripts/build.sh
    build=$PWD/build
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
demo=$work/demo maps=$work/demo/maps whole=$work/whole former=$work/former result=$work/result
log=$work/program.log
export QT_QPA_PLATFORM=offscreen SOURCE_DATE_EPOCH=1000000000 LC_ALL=C.UTF-8
export ASAN_OPTIONS=detect_leaks=0 # which no traced program can look for

bad=0
wrong() {
    echo "faults.sh: $1" >&2
    grep -F "Can" "$log" >&2 || true
    bad=1
}

# program [command...]: runs the batch, under the command; $code is what it ends with.
program() {
    code=0
    "$@" timeout 120 "$build/morvenkite" -e -c "$demo/config.cfg" -b "$demo/faults.bat" -x \
        >"$log" 2>&1 || code=$?
}

# lines_of <file>: lines of the log that tell of a file not written.
lines_of() { grep -cE "^(line [0-9]+, \w+: )?Can('t| not) .*/$1\": " "$log" || true; }

# check <what> <survived>: holds the files of $result, and the log, against what may be there.
check() {
    local what=$1 survived=$2 failed=0 name owner expected
    for name in $(cd "$whole" && ls); do
        cmp -s "$whole/$name" "$result/$name" && continue
        ((failed += 1))
        if [[ -e $before/$name ]]; then
            cmp -s "$before/$name" "$result/$name" || wrong "$what: $name is neither new nor former"
        elif [[ -e $result/$name ]]; then
            wrong "$what: half a file $name"
        fi
        [[ -n $survived ]] || continue
        # A bar goes with its file: it is not tried when that is missing.
        owner=${name/%-cBar.png/.png} owner=${owner/%--cBar.tif/.tif} expected=1
        [[ $owner == "$name" ]] || cmp -s "$whole/$owner" "$result/$owner" || expected=0
        (($(lines_of "$name") == expected)) ||
            wrong "$what: $(lines_of "$name") lines tell of $name, not $expected"
    done
    ((failed > 0)) || [[ -z $survived ]] || wrong "$what: nothing failed"
    [[ -n $survived ]] || return 0
    ! compgen -G "$result/.mvk-*" >/dev/null || wrong "$what: a temporary file is left"
    [[ -z $exit_code ]] || ((code == 1)) || wrong "$what: exit code $code, not 1"
}

# fresh: the folder of the maps holds what it held before, $before.
fresh() {
    rm -rf "$maps"
    mkdir "$maps"
    cp -a "$before/." "$maps"
}

"$build/morvenkite-demo" write "$demo" --size 40 --energies 41 >/dev/null
{
    grep -v '^quit' "$demo/demo.bat"
    echo "save_image \"$maps/picture.png\""
    echo "save_spectra \"$maps/spectrum.dat\""
    echo quit
} >"$demo/faults.bat"
mkdir -p "$work/nothing" "$former" "$maps"
program
((code == 0)) || {
    tail -n 20 "$log" >&2
    echo "faults.sh: the batch fails without any fault of the disk: exit code $code" >&2
    exit 1
}
cp -a "$maps" "$whole"
# Read again, a longer file gives the same map.
for name in $(cd "$whole" && ls); do
    { cat "$whole/$name" && echo former; } >"$former/$name"
done

# A disk with room for a few files, in a name space of its own that ends with the run.
tried=0
full_disk=(unshare --map-root-user --mount bash -c
    'mount -t tmpfs -o size=96k none "$1" && cd "$1" && result=$2 && shift 2 || exit 125
    code=0; "$@" || code=$?; cp -a . "$result"; exit "$code"' full "$maps" "$result")
before=$work/nothing
fresh
if unshare --map-root-user --mount mount -t tmpfs none "$maps" 2>/dev/null; then
    tried=1
    mkdir "$result"
    program "${full_disk[@]}"
    check "full disk" yes
else
    echo "faults.sh: left out, no file system can be mounted here: full disk"
fi

# places <number of calls>: the calls at which to fail.
places() {
    local n=$1
    if [[ -n $short ]]; then echo 1 $((n / 2)) "$n"; else seq "$n"; fi
}

# fail_at <calls> <how> <n> <survived>: the n-th of these calls fails.
fail_at() {
    fresh
    program strace -f --seccomp-bpf -o "$work/trace" -e "trace=$1" -e "inject=$1:$2:when=$3"
    rm -rf "$result"
    cp -a "$maps" "$result"
    check "$1 number $3, $2" "$4"
}

if strace -f --seccomp-bpf -o /dev/null -e trace=fsync true 2>/dev/null; then
    tried=1
    for before in "$former" "$work/nothing"; do
        for fault in pwrite64:error=ENOSPC fsync:error=EIO renameat,renameat2:error=EROFS; do
            calls=${fault%%:*}
            fresh
            program strace -f --seccomp-bpf -o "$work/trace" -e "trace=$calls"
            count=$(grep -cE "(${calls//,/|})\(" "$work/trace")
            for n in $(places "$count"); do
                # Without a shift map to load, other values come behind it.
                [[ $before == "$former" ]] || ((n > 2)) || continue
                fail_at "$calls" "${fault#*:}" "$n" yes
            done
            [[ $before == "$former" ]] || continue
            for n in $(places "$count"); do
                fail_at "$calls" signal=KILL "$n" ""
            done
        done
    done
else
    echo "faults.sh: left out, no program can be traced here: failing calls"
fi

((tried > 0)) || wrong "everything was left out"
exit "$bad"
