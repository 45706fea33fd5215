#!/usr/bin/env bash
# Builds everything into build/; the program is build/morvenkite.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release
cmake --build --preset release --parallel "$(nproc)"
