#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
scripts/build.sh
ctest --preset release --parallel "$(nproc)"
