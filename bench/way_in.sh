#!/bin/bash
# The way in, timed by the game itself (menu_start) under Xvfb:
#
#   bench/way_in.sh [build-dir] [runs]
#
# Process start to the splash's first shown frame, the splash's end to the
# first menu frame shown with every drifting piece, and the longest gap
# between menu frames in the two seconds after; medians of `runs` runs at
# 1920 x 1080 with SDL's software renderer. The menu's frame cost beside the
# bare frame is in bench/frames.sh.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
[ -x "$build/menu_start" ] || { echo "no $build/menu_start: build with -DTESSELLATRIX_BENCH=ON" >&2; exit 1; }

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export SDL_AUDIODRIVER=dummy SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0

echo "| step | ms (median of $runs) |"
echo "|---|---|"
lines=()
for _ in $(seq "$runs"); do
  data=$(mktemp -d)
  BENCH_T0=$(date +%s%N) XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" \
    "$build/menu_start" --size 1920x1080 >"$data/out" 2>/dev/null || true
  lines+=("$(grep '^\[bench\]' "$data/out" || echo '[bench] none')")
  rm -rf "$data"
done
for field in start splash-end worst-gap; do
  value=$(printf '%s\n' "${lines[@]}" | awk -v f="$field" '{for (i = 2; i < NF; i++) if ($i == f) print $(i + 1)}' | median)
  echo "| $field | $value |"
done
