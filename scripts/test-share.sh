#!/bin/sh
# Counts the lines of the tests against the lines of the game's own code.
# Both sides count every line (blank and comment lines too) of the C++
# sources and headers that git tracks. The game's side is app/ ui/ core/
# store/ js/ platform/ i18n/ audio/, less the translation tables
# (i18n/data/entries_*.cpp); bench/, fuzz/ and tools/ count on neither side.
# The project keeps the tests at no more than 35 % of the game's lines.
set -eu
cd "$(dirname "$0")/.."
count() {
  git ls-files -- "$@" | grep -E '\.(cpp|h)$' | grep -v '^i18n/data/entries_' |
    while read -r f; do [ -f "$f" ] && cat "$f"; done | wc -l
}
game=$(count app ui core store js platform i18n audio)
tests=$(count tests)
share=$((tests * 1000 / game))
printf 'game %d lines, tests %d lines: %d.%d %%\n' "$game" "$tests" $((share / 10)) $((share % 10))
[ "$share" -le 350 ] || { echo "over the 35 % the project allows"; exit 1; }
