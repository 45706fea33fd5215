#!/usr/bin/env bash
# Builds and runs the tests with sanitizers: scripts/sanitize.sh asan|tsan
# asan checks addresses and undefined behaviour in all tests, tsan the functions of the worker threads.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=${1:-}
if [[ $preset != asan && $preset != tsan ]]; then
    echo "usage: scripts/sanitize.sh asan|tsan" >&2
    exit 2
fi
scripts/setup.sh
cmake --preset "$preset"
targets=(all)
[[ $preset == asan ]] || targets=(worker_tests)
cmake --build --preset "$preset" --parallel "$(nproc)" --target "${targets[@]}"
ctest --preset "$preset" --parallel "$(nproc)"
