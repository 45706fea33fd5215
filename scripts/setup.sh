#!/usr/bin/env bash
# Installs what building, testing and the demonstration need on Debian 12: as root, or by sudo.
#   scripts/setup.sh [more packages]
set -euo pipefail

packages=(
    g++ cmake ninja-build ccache pkg-config python3
    qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools
    qt5-image-formats-plugins qttranslations5-l10n libtiff-dev libfftw3-dev libbenchmark-dev
    xvfb xauth xdotool python3-xlib fonts-dejavu-core fonts-vlgothic
    strace util-linux
    "$@")

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || {
        echo "setup.sh: run as root, or install sudo; missing: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}"
