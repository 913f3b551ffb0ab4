#!/bin/bash
# Frame-loop cost from the game's own "[stats]" line, under Xvfb.
#
#   bench/frame_loop.sh [build-dir] [runs] [seconds-per-run]
#
# For each window size and renderer choice the game runs `runs` times for
# `seconds` each; the first two statistics lines of a run are warm-up and
# dropped, the rest give the run's median, and the table shows the median of
# the runs. BENCH_SCREEN picks the screen (TESSELLATRIX_SCREEN), default the
# first one.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
seconds=${3:-6}
game="$build/tessellatrix"
[ -x "$game" ] || { echo "no game binary at $game" >&2; exit 1; }

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
data=$(mktemp -d)
export XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" SDL_AUDIODRIVER=dummy
[ -n "${BENCH_SCREEN:-}" ] && export TESSELLATRIX_SCREEN="$BENCH_SCREEN"

# Prints "cpu gpu fps renderer" medians of one run.
one_run() {
  local size=$1; shift
  local log
  log=$(mktemp)
  env "$@" TESSELLATRIX_STATS=1 "$game" --size "$size" >"$log.out" 2>"$log" &
  local pid=$!
  sleep "$seconds"
  kill -TERM $pid; wait $pid || true
  local stats
  stats=$(grep '^\[stats\]' "$log" | tail -n +3)
  local cpu gpu fps renderer
  cpu=$(echo "$stats" | awk '{print $5}' | median)
  gpu=$(echo "$stats" | awk '{print $8}' | median)
  fps=$(echo "$stats" | awk '{print $2}' | median)
  renderer=$(sed -n 's/^\[video\] Treiber [^,]*, Renderer \([^ ]*\).*/\1/p' "$log.out")
  rm -f "$log" "$log.out"
  echo "$cpu $gpu $fps $renderer"
}

echo "| window | renderer | hints | CPU ms | GPU ms | fps |"
echo "|---|---|---|---|---|---|"
for size in 1280x800 1920x1080 2560x1440; do
  for config in software default; do
    if [ $config = software ]; then
      hints=(SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0)
    else
      hints=()
    fi
    results=()
    for _ in $(seq "$runs"); do results+=("$(one_run "$size" "${hints[@]}")"); done
    cpu=$(printf '%s\n' "${results[@]}" | awk '{print $1}' | median)
    gpu=$(printf '%s\n' "${results[@]}" | awk '{print $2}' | median)
    fps=$(printf '%s\n' "${results[@]}" | awk '{print $3}' | median)
    renderer=$(printf '%s\n' "${results[@]}" | awk '{print $4}' | head -n1)
    label=${hints[*]:-none}
    echo "| ${size/x/ × } | $renderer | $label | $cpu | $gpu | $fps |"
  done
done
rm -rf "$data"
