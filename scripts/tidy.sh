#!/usr/bin/env bash
# Checks format and lint of our own sources. Needs clang-format and clang-tidy, and a build in build/
# (scripts/build.sh) for its compile commands and generated headers.
#   scripts/tidy.sh [file...]   all files when none is given
set -euo pipefail
cd "$(dirname "$0")/.."

for tool in clang-format clang-tidy; do
    command -v "$tool" >/dev/null || { echo "tidy.sh: $tool is not installed" >&2; exit 2; }
done
[[ -f build/compile_commands.json ]] || { echo "tidy.sh: run scripts/build.sh first" >&2; exit 2; }

if [[ $# -gt 0 ]]; then
    files=("$@")
else
    mapfile -t files < <(git ls-files 'src/*.cpp' 'src/*.h' 'demo/*.cpp' 'demo/*.h' \
        'bench/*.cpp' 'bench/*.h' 'tests/*.cpp' 'tests/*.h' 'fuzz/*.cpp' 'fuzz/*.h' 'packaging/*.cpp')
fi
clang-format --dry-run --Werror "${files[@]}"

# GCC's precompiled headers mean nothing to clang; the sources include what they use.
database=$(mktemp -d)
trap 'rm -rf "$database"' EXIT
sed -E 's/ -Winvalid-pch//g; s/ -include [^ ]*cmake_pch\.hxx//g' \
    build/compile_commands.json >"$database/compile_commands.json"
# The fuzzers have a build of their own.
printf '%s\n' "${files[@]}" | grep '\.cpp$' | grep -v '^fuzz/' |
    xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p "$database"
