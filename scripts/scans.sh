#!/usr/bin/env bash
# Runs one batch over many scans, several at a time; see docs/many-scans.md.
#   scripts/scans.sh [-j <jobs>] [-l <folder of logs>] [-s] <batch file> <list of scans> [options of the program...]
# Each line of the list is a scan: the batch has it as $scan$. Blank lines and those that begin with
# "#" are left out. With -s the scans are a job array of Slurm, otherwise GNU parallel runs <jobs> of
# them at a time (by default one for each two processors), or, where it is not installed, they run
# one after the other. MORVENKITE names the program, by default that of this folder's build.
# Ends with 0 when all went well, else with 1; prints a line for each scan.
set -euo pipefail

usage() {
    sed -n '2,9s/^# \{0,1\}//p' "$0" >&2
    exit 2
}

# One scan: its number in the list. The program's output goes to the log, its exit code beside it.
run_one() {
    local number=$1 scan threads=() code=0
    scan=$(sed -n "${number}p" "$SCANS_WORK/list")
    [[ -z ${SCANS_THREADS:-} ]] || threads=(-threads "$SCANS_THREADS")
    mapfile -d '' -t options < "$SCANS_WORK/options"
    QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$MORVENKITE" -b "$SCANS_BATCH" -x \
        "${threads[@]}" "${options[@]}" -let "scan=$scan" > "$(log_of "$number")" 2>&1 || code=$?
    echo "$code" > "$SCANS_WORK/code-$number"
}

log_of() {
    local scan
    scan=$(sed -n "${1}p" "$SCANS_WORK/list")
    printf '%s/%s-%s.log' "$SCANS_LOGS" "$1" "$(basename "$scan" | tr -c 'A-Za-z0-9.\n-' '_')"
}

if [[ ${1:-} == --one ]]; then
    run_one "$2"
    exit
fi

jobs=
logs=scan-logs
slurm=
while getopts j:l:s option; do
    case $option in
        j) jobs=$OPTARG ;;
        l) logs=$OPTARG ;;
        s) slurm=1 ;;
        *) usage ;;
    esac
done
shift $((OPTIND - 1))
(($# >= 2)) || usage
batch=$1 list=$2
shift 2
self=$(realpath "${BASH_SOURCE[0]}")
export MORVENKITE=${MORVENKITE:-$(dirname "$self")/../build/morvenkite}
for file in "$batch" "$list"; do
    [[ -r $file ]] || { echo "scans.sh: can't read $file" >&2; exit 2; }
done
[[ -x $MORVENKITE ]] || { echo "scans.sh: there is no program $MORVENKITE; scripts/build.sh makes it" >&2; exit 2; }

# Tasks on other nodes find the folder when the logs lie on a shared file system.
mkdir -p "$logs"
export SCANS_LOGS SCANS_WORK SCANS_BATCH SCANS_THREADS=
SCANS_LOGS=$(realpath "$logs")
SCANS_WORK=$(mktemp -d "$SCANS_LOGS/.work-XXXXXX")
SCANS_BATCH=$(realpath "$batch")
trap 'rm -rf "$SCANS_WORK"' EXIT
grep -v -e '^[[:space:]]*$' -e '^[[:space:]]*#' "$list" > "$SCANS_WORK/list" || true
: > "$SCANS_WORK/options"
(($# == 0)) || printf '%s\0' "$@" > "$SCANS_WORK/options"
count=$(wc -l < "$SCANS_WORK/list")
((count > 0)) || { echo "scans.sh: $list names no scan" >&2; exit 2; }

if [[ $slurm ]]; then
    command -v sbatch > /dev/null || { echo "scans.sh: Slurm is not installed" >&2; exit 2; }
    sbatch --quiet --wait --array="1-$count${jobs:+%$jobs}" --job-name=scans --output=/dev/null \
        --export=ALL --wrap "exec '$self' --one \"\$SLURM_ARRAY_TASK_ID\"" || true
elif command -v parallel > /dev/null; then
    jobs=${jobs:-$((($(nproc) + 1) / 2))}
    # Scans beside each other share the processors.
    SCANS_THREADS=$((($(nproc) + jobs - 1) / jobs))
    seq "$count" | parallel --will-cite --jobs "$jobs" "$self" --one || true
else
    echo "scans.sh: GNU parallel is not installed: the scans run one after the other" >&2
    for ((i = 1; i <= count; ++i)); do
        run_one "$i"
    done
fi

failed=0
for ((i = 1; i <= count; ++i)); do
    scan=$(sed -n "${i}p" "$SCANS_WORK/list")
    code=$(cat "$SCANS_WORK/code-$i" 2> /dev/null || echo "no exit code")
    if [[ $code == 0 ]]; then
        echo "ok      $scan"
    else
        echo "failed  $scan ($code): $(log_of "$i")"
        failed=1
    fi
done
exit "$failed"
