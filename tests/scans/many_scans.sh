#!/usr/bin/env bash
# Runs a batch over three scans one after the other, beside each other, and as a job array, and
# compares the maps byte by byte. What is not installed or can't start here is left out, and said.
#   many_scans.sh <program> <demonstration's program> <scans.sh>
set -euo pipefail
export MORVENKITE=$1 SOURCE_DATE_EPOCH=1700000000 QT_QPA_PLATFORM=offscreen
demo=$2 scans=$3
work=$(mktemp -d /tmp/scans-XXXXXX) # a short path, which sockets need
pids=()
cleanup() {
    ((${#pids[@]} == 0)) || kill "${pids[@]}" 2> /dev/null || true
    wait
    rm -rf "$work"
}
trap cleanup EXIT

cat > "$work/scan.bat" << 'BATCH'
eng_calc_base_i1 8948
eng_calc_base_i0 8948
load_I1_files_of_pattern new $scan$/images/ i1_*.tif
load_I0_files_of_pattern new $scan$/images/ i0_*.tif
Use_I0 1
set_band_w $half$
set_band_h $half$
analyzer_set_LCF_std 0 0 0 $scan$/references/species-0.dat
analyzer_set_LCF_std 1 0 0 $scan$/references/species-1.dat
saveDataCfg_save_as_float_tiff
analyzer_exec_LCF
save_all_data $scan$/maps/map.tif
BATCH

# Three scans, the third without its last ten images: other maps.
"$demo" write "$work/scan 1" > "$work/demo.log"
cp -r "$work/scan 1" "$work/scan-2"
cp -r "$work/scan 1" "$work/scan-3"
rm "$work/scan-3"/images/i1_007?.tif "$work/scan-3"/images/i0_007?.tif
printf '# three scans\n%s\n\n%s\n%s\n' "$work/scan 1" "$work/scan-2" "$work/scan-3" > "$work/list"

# run <name> <words of scans.sh...>: all maps of a run, moved aside into the folder of that name.
run() {
    local name=$1 scan
    shift
    "$@" > "$work/out" || { cat "$work/out" "$work"/logs/*.log; exit 1; }
    [[ $(grep -c '^ok ' "$work/out") == 3 ]]
    for scan in 'scan 1' scan-2 scan-3; do
        mkdir -p "$work/$name/$scan"
        mv "$work/$scan"/maps/map* "$work/$name/$scan/"
    done
}
common=(-l "$work/logs" "$work/scan.bat" "$work/list" -let half=4)
same() {
    diff -r "$work/one by one" "$work/$1"
    echo "$1: the same $(find "$work/$1" -type f | wc -l) files"
}

mkdir "$work/plain" # of programs, without parallel
for program in bash basename cat dirname grep mkdir mktemp nproc realpath rm sed seq tr wc; do
    ln -s "$(command -v "$program")" "$work/plain/$program"
done
run 'one by one' env PATH="$work/plain" "$scans" "${common[@]}"
if cmp -s "$work/one by one/scan-2/map-0-0.tif" "$work/one by one/scan-3/map-0-0.tif"; then
    echo "the maps of different scans are the same" >&2
    exit 1
fi

if command -v parallel > /dev/null; then
    run parallel "$scans" -j 3 "${common[@]}"
    same parallel
else
    echo "left out: GNU parallel is not installed"
fi

# A scan that fails is told, and costs the others nothing.
echo "$work/none" >> "$work/list"
if "$scans" "${common[@]}" > "$work/out"; then
    echo "a scan that is not there passed" >&2
    exit 1
fi
grep -q "^failed  $work/none (1): $work/logs/4-none.log" "$work/out"
[[ $(grep -c '^ok ' "$work/out") == 3 ]]
sed -i '$d' "$work/list"
rm -f "$work"/scan*/maps/map*

# A cluster of this machine alone, with a key, sockets and states of its own.
start_slurm() {
    local name ports
    [[ $(id -u) == 0 ]] || { echo "it needs root here"; return 1; }
    for name in munged slurmctld slurmd sbatch; do
        command -v "$name" > /dev/null || { echo "$name is not installed"; return 1; }
    done
    mkdir -m 700 "$work/munge" "$work/ctld" "$work/slurmd"
    head -c 128 /dev/urandom > "$work/munge/key"
    chmod 600 "$work/munge/key"
    chmod 755 "$work"
    mkdir -m 755 "$work/socket"
    munged --foreground --force --key-file="$work/munge/key" --socket="$work/socket/munge" \
        --pid-file="$work/munge/pid" --log-file="$work/munge/log" --seed-file="$work/munge/seed" \
        > "$work/munge/out" 2>&1 &
    pids+=($!)
    ports=$((20000 + $$ % 20000))
    name=$(hostname -s)
    cat > "$work/slurm.conf" << CONF
ClusterName=scans
SlurmctldHost=$name(127.0.0.1)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$work/socket/munge
CryptoType=crypto/munge
SlurmctldPort=$ports
SlurmdPort=$((ports + 1))
SlurmctldPidFile=$work/ctld/pid
SlurmdPidFile=$work/slurmd/pid
SlurmctldLogFile=$work/ctld/log
SlurmdLogFile=$work/slurmd/log
StateSaveLocation=$work/ctld
SlurmdSpoolDir=$work/slurmd
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
MpiDefault=none
ReturnToService=2
NodeName=$name NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=$name Default=YES MaxTime=INFINITE State=UP
CONF
    export SLURM_CONF=$work/slurm.conf
    sleep 0.5
    slurmctld -D > "$work/ctld/out" 2>&1 &
    pids+=($!)
    slurmd -D -N "$name" > "$work/slurmd/out" 2>&1 &
    pids+=($!)
    for ((i = 0; i < 60; ++i)); do
        [[ $(sinfo -h -o %t 2> /dev/null) == idle ]] && return 0
        sleep 0.5
    done
    echo "no node came up: $(tail -n 2 "$work/ctld/out" "$work/slurmd/out" 2>&1 | tr '\n' ' ')"
    return 1
}
if start_slurm > "$work/why"; then
    run slurm timeout 60 "$scans" -s "${common[@]}"
    same slurm
else
    echo "left out: Slurm, $(cat "$work/why")"
fi
