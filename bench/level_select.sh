#!/bin/bash
# The level select opening at 1920 x 1080 under Xvfb with SDL's software
# renderer, unpaced:
#
#   bench/level_select.sh [build-dir] [runs]
#
# For each profile (fresh: one level open, blurred pictures; solved: every
# level solved, full-size photographs) and each run, a new data and cache
# folder: the first start paints every thumbnail (empty cache), the second
# start finds them on disk. The table gives the median of the runs for each
# column of level_select_bench (see its header), as wall / CPU milliseconds.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
bench="$build/level_select_bench"
[ -x "$bench" ] || { echo "no $bench: build with -DTESSELLATRIX_BENCH=ON" >&2; exit 1; }

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export SDL_AUDIODRIVER=dummy SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0

work=$(mktemp -d)
trap 'kill $XVFB_PID 2>/dev/null; rm -rf "$work"' EXIT
echo "| profile | cache | first frame | worst frame | visible thumbnails all shown | frames | bare frame | decode visible at once |"
echo "|---|---|---|---|---|---|---|---|"
for profile in fresh solved; do
  for r in $(seq "$runs"); do
    dir="$work/$profile$r"
    mkdir -p "$dir/data" "$dir/cache"
    solved=""
    [ "$profile" = solved ] && solved=1
    for cache in empty disk; do
      XDG_DATA_HOME="$dir/data" XDG_CACHE_HOME="$dir/cache" BENCH_SOLVED=$solved "$bench" >>"$work/$profile-$cache"
    done
  done
  for cache in empty disk; do
    row="| $profile | $cache |"
    # Each figure "wall / CPU" ms; the frame count stands alone.
    for col in 1 3 5 7 8 10; do
      wall=$(awk -v c=$col '{print $c}' "$work/$profile-$cache" | median)
      if [ $col = 7 ]; then row="$row $wall |"; continue; fi
      row="$row $wall / $(awk -v c=$((col + 1)) '{print $c}' "$work/$profile-$cache" | median) |"
    done
    echo "$row"
  done
done
