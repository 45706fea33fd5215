#!/usr/bin/env bash
# Brings the Japanese texts of the interface up to date with src/: run it after adding or changing
# a text that users see.
#   tools/update_translation.sh [file.ts]   by default src/resources/Morvenkite_ja_JP.ts
#
# 1. In code a text goes through tr(), in a form it is a plain <string>. What is the same in every
#    language (numbers, units, symbols, patterns) is <string notr="true"> in a form, and
#    QStringLiteral in code; log lines and batch texts stay English.
# 2. Run this script. New and changed texts come into the file as type="unfinished"; texts that the
#    sources no longer have go.
# 3. Write each translation (an editor will do, or Qt Linguist) and take its type="unfinished" away.
#    Place holders (%1), file patterns in parentheses, blanks and colons at the ends stay; a
#    mnemonic stands behind the text: "&File" becomes "ファイル(&F)". Words as in the rest of the
#    file; captions short, for the forms are tight.
# 4. `ctest -R translation` names what is still missing or does not fit.
#
# LUPDATE names another lupdate than that of Debian's qttools5-dev-tools.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
file=$(realpath -m -- "${1:-$root/src/resources/Morvenkite_ja_JP.ts}")
cd "$root"

# Without line numbers the file changes only where texts do.
"${LUPDATE:-/usr/lib/qt5/bin/lupdate}" src -locations none -no-obsolete -no-ui-lines \
    -source-language en -target-language ja_JP -ts "$file"
