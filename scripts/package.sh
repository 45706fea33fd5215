#!/usr/bin/env bash
# Builds the Debian package into out/package and tries it: unpacked into a bare folder it has to hold
# what packaging/contents.txt and docs/ list, the same as cmake --install lays, and to run from there.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh dpkg-dev
cmake --preset release >/dev/null
cmake --build build --parallel "$(nproc)" --target morvenkite package_files
# The times in a package are those of its last change, so that the same sources give the same bytes.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
rm -rf out/package
(cd build && cpack -G DEB -B ../out/package) >/dev/null
package=$(echo out/package/*.deb)
rm -rf out/package/_CPack_Packages

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "package.sh: $*" >&2
    exit 1
}

dpkg-deb -x "$package" "$work/deb"
cmake --install build --prefix "$work/installed/usr" --strip >/dev/null
diff -r "$work/deb" "$work/installed" || fail "the package holds other files than cmake --install lays"
{
    cat packaging/contents.txt
    git ls-files docs | grep -E '\.(md|png|svg)$' | sed 's|^|share/doc/morvenkite/|'
} | LC_ALL=C sort >"$work/expected"
(cd "$work/deb/usr" && find . -type f | sed 's|^\./||' | LC_ALL=C sort) >"$work/found"
diff "$work/expected" "$work/found" || fail "these files are missing (<) or not listed (>)"

version=$(dpkg-deb -f "$package" Version)
[[ $(sed -nE '1s/.*\((.*)\).*/\1/p' packaging/changelog) == "$version" ]] ||
    fail "the first entry of packaging/changelog is not of version $version"
for library in libqt5widgets5 libtiff6 libfftw3-double3; do
    [[ $(dpkg-deb -f "$package" Depends) == *$library* ]] || fail "the package does not depend on $library"
done

# The program without a display, a home that it knows, and our environment.
mkdir "$work/home"
run() { # <argument...>
    (cd "$work/home" && env -i PATH=/usr/bin:/bin HOME="$work/home" QT_QPA_PLATFORM=offscreen \
        "$work/deb/usr/bin/morvenkite" "$@" 2>"$work/log") || fail "$* ended with $?: $(tail -n 5 "$work/log")"
}
told=$(run --version)
for part in "Morvenkite $version" "Qt 5" LIBTIFF fftw "instruction set"; do
    [[ $told == *"$part"* ]] || fail "--version does not tell $part: $told"
done
run --help-commands >"$work/commands"
grep -qx 'quit' "$work/commands" || fail "--help-commands does not list quit"
printf '%s\n' ':echo "from the package"' 'set_band_w 2' 'screenshot Body window.png' quit >"$work/home/batch.bat"
[[ $(run --check batch.bat) == "0 findings; 0 images to load" ]] || fail "--check has findings"
run -b batch.bat -x >/dev/null
grep -q 'from the package' "$work/log" || fail "the batch did not run"
[[ -s $work/home/window.png ]] || fail "the batch saved no picture"

# The manual page tells every command, and is set without a complaint.
page=$work/deb/usr/share/man/man1/morvenkite.1.gz
grep -E '^[^ ]' "$work/commands" | cut -d' ' -f1 | while read -r word; do
    zgrep -qF -- "${word//-/\\-}" "$page" || fail "the manual page lacks $word"
done
if command -v groff >/dev/null; then
    complaints=$(zcat "$page" | groff -man -Tutf8 -ww -z 2>&1)
    [[ -z $complaints ]] || fail "the manual page: $complaints"
fi
if command -v update-mime-database >/dev/null; then
    mime=$work/deb/usr/share/mime
    XDG_DATA_HOME=$work/none update-mime-database "$mime" 2>"$work/mime" ||
        fail "the MIME type: $(cat "$work/mime")"
    grep -q 'text/x-morvenkite-shift-map' "$mime/globs2" || fail "the MIME type is not taken"
fi
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$work/deb/usr/share/applications/morvenkite.desktop"
fi
if command -v lintian >/dev/null; then
    lintian --fail-on error,warning "$package"
fi
echo "$package: $(du -h --apparent-size "$package" | cut -f1), $(wc -l <"$work/found") files"
