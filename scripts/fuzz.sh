#!/usr/bin/env bash
# Builds the fuzzers and runs them one after the other: scripts/fuzz.sh [seconds] [target...]
# By default each for 60 s. With 0 s each only reads its corpus once. Ends with code 1 when one has
# found something; the inputs of findings are in out/fuzz/<target>/findings, a run's log beside them.
#   scripts/fuzz.sh --minimise [target...]
# makes fuzz/corpus anew: of the seeds of fuzz/make_seeds.py, what stands there and what runs have
# found, the few files that reach as much.
set -euo pipefail
cd "$(dirname "$0")/.."
# Fuzzers work in a folder of their own, so they get whole paths.
corpus=$PWD/fuzz/corpus
out=$PWD/out/fuzz

all=(tiff img brnx errpoints shiftmap reference cfg batch commandline)
# Longest input: that of small whole files, since longer ones only run slower.
declare -A longest=([tiff]=2048 [img]=1024 [brnx]=1024 [errpoints]=1024 [shiftmap]=2048
    [reference]=4096 [cfg]=1024 [batch]=4096 [commandline]=512)

minimise=
seconds=60
if [[ ${1:-} == --minimise ]]; then
    minimise=1
    shift
elif [[ ${1:-} =~ ^[0-9]+$ ]]; then
    seconds=$1
    shift
fi
targets=("$@")
[[ ${#targets[@]} -gt 0 ]] || targets=("${all[@]}")
for target in "${targets[@]}"; do
    [[ -n ${longest[$target]:-} ]] || { echo "fuzz.sh: no target $target; there are ${all[*]}" >&2; exit 2; }
done
command -v clang++ >/dev/null || { echo "fuzz.sh: clang is not installed" >&2; exit 2; }

scripts/setup.sh
cmake --preset fuzz >/dev/null
cmake --build build-fuzz --parallel "$(nproc)" --target "${targets[@]/#/fuzz_}"

# A header that claims a huge image must cost a line, not the machine's memory.
limits=(-rss_limit_mb=2048 -malloc_limit_mb=1024 -timeout=20)
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1

dictionary_of() { # <target>: the words of batches come from the documentation of the commands
    if [[ $1 == batch ]]; then
        sed -nE 's/^\| `(:?[A-Za-z0-9_]+).*/"\1"/p' docs/batch-commands.md >"$out/batch.dict"
        echo "$out/batch.dict"
    else
        echo "$PWD/fuzz/dictionaries/$1.dict"
    fi
}

minimise_one() { # <target>
    local seeds kept
    seeds=$(mktemp -d) kept=$(mktemp -d)
    python3 fuzz/make_seeds.py "$seeds"
    mkdir -p "$corpus/$1"
    "build-fuzz/fuzz_$1" -merge=1 "${limits[@]}" -max_len="${longest[$1]}" \
        "$kept" "$seeds/$1" "$corpus/$1" "$out/$1/corpus" >"$out/$1/merge.log" 2>&1
    rm -rf "${corpus:?}/$1" "$seeds"
    mv "$kept" "$corpus/$1"
    chmod 755 "$corpus/$1"
    echo "$1: $(find "$corpus/$1" -type f | wc -l) files, $(du -sb --apparent-size "$corpus/$1" | cut -f1) bytes"
}

run_one() { # <target>: false on a finding
    local log=$out/$1/log
    local how=(-max_total_time="$seconds")
    [[ $seconds -gt 0 ]] || how=(-runs=0)
    if ! "build-fuzz/fuzz_$1" "${how[@]}" "${limits[@]}" -max_len="${longest[$1]}" -print_final_stats=1 \
        -dict="$(dictionary_of "$1")" -artifact_prefix="$out/$1/findings/" \
        "$out/$1/corpus" "$corpus/$1" >"$log" 2>&1; then
        echo "$1: a finding" >&2
        grep -v '^#[0-9]' "$log" | tail -n 60 >&2
        return 1
    fi
    local runs peak
    runs=$(sed -nE 's/^stat::number_of_executed_units: *//p' "$log")
    peak=$(sed -nE 's/^stat::peak_rss_mb: *//p' "$log")
    echo "$1: $runs executions, $(sed -nE 's/.*(cov: [0-9]+).*/\1/p' "$log" | tail -n 1), $peak MB"
}

findings=0
for target in "${targets[@]}"; do
    mkdir -p "$out/$target/corpus" "$out/$target/findings"
    if [[ -n $minimise ]]; then
        minimise_one "$target"
    else
        run_one "$target" || findings=1
    fi
done
exit "$findings"
