#!/bin/sh
# Runs each fuzz target for a bounded time, starting from its committed seed
# corpus (left untouched: new inputs go to a scratch folder). Any crash, leak,
# sanitizer report or hang makes the script fail and shows the report.
# Usage: scripts/fuzz.sh [BUILD_DIR] [SECONDS]   (defaults: build-fuzz 60)
set -eu
cd "$(dirname "$0")/.."
build=${1:-build-fuzz}
seconds=${2:-60}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

status=0
for target in json unseal photo; do
  mkdir "$work/$target"
  log="$build/${target}_fuzz.log"
  # The JSON words help the two readers of the saved files only.
  dict="-dict=fuzz/json.dict"
  [ "$target" = photo ] && dict="-max_len=4096"
  if "$build/${target}_fuzz" -max_total_time="$seconds" -timeout=10 "$dict" \
      -print_final_stats=1 -artifact_prefix="$build/${target}_fuzz-" \
      "$work/$target" "fuzz/corpus/$target" >"$log" 2>&1; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    echo "fuzz ${target}_fuzz: ${runs:-?} inputs in ${seconds} s, nothing found"
  else
    echo "fuzz ${target}_fuzz: FAILED (log $log)"
    tail -n 60 "$log"
    status=1
  fi
done
exit $status
