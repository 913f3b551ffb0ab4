#!/bin/bash
# The menu's frame cost and the way in, under Xvfb with SDL's software
# renderer:
#
#   bench/menu_frames.sh [build-dir] [runs] [seconds-per-run]
#
# Frame cost: the "[stats]" CPU and GPU milliseconds per frame of the menu
# (TESSELLATRIX_SCREEN=menu) against the bare frame (frame_bench with
# BENCH_BARE: no screen at all) at 1920 x 1080 and 2560 x 1440, each run
# `runs` times, the first two statistics lines of a run dropped as warm-up;
# medians of the runs' medians, and the menu's cost over the bare frame's.
# The way in (menu_start, the game timing its own presents): process start
# to the splash's first shown frame, the splash's end to the first menu frame
# with every piece, the longest gap between menu frames in the 2 s after;
# medians of `runs` runs at 1920 x 1080.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
seconds=${3:-6}
for p in tessellatrix frame_bench menu_start; do
  [ -x "$build/$p" ] || { echo "no $build/$p: build with -DTESSELLATRIX_BENCH=ON" >&2; exit 1; }
done

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export SDL_AUDIODRIVER=dummy SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0

# Prints "cpu gpu" medians of one run of $2 at size $1.
one_run() {
  local size=$1 mode=$2 data
  data=$(mktemp -d)
  if [ "$mode" = bare ]; then
    XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" BENCH_BARE=1 TESSELLATRIX_STATS=1 \
      "$build/frame_bench" --size "$size" >/dev/null 2>"$data/err" &
  else
    XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" TESSELLATRIX_SCREEN=menu TESSELLATRIX_STATS=1 \
      "$build/tessellatrix" --size "$size" >/dev/null 2>"$data/err" &
  fi
  local pid=$!
  sleep "$seconds"
  kill -TERM $pid; wait $pid || true
  local stats
  stats=$(grep '^\[stats\]' "$data/err" | tail -n +3)
  echo "$(echo "$stats" | awk '{print $5}' | median) $(echo "$stats" | awk '{print $8}' | median)"
  rm -rf "$data"
}

echo "| window | case | CPU ms | GPU ms | CPU + GPU | over the bare frame |"
echo "|---|---|---|---|---|---|"
for size in 1920x1080 2560x1440; do
  bare=""
  for mode in bare menu; do
    results=()
    for _ in $(seq "$runs"); do results+=("$(one_run "$size" "$mode")"); done
    cpu=$(printf '%s\n' "${results[@]}" | awk '{print $1}' | median)
    gpu=$(printf '%s\n' "${results[@]}" | awk '{print $2}' | median)
    total=$(awk -v c="$cpu" -v g="$gpu" 'BEGIN {print c + g}')
    [ "$mode" = bare ] && bare=$total
    ratio=$(awk -v t="$total" -v b="$bare" 'BEGIN {printf "%.2f", t / b}')
    echo "| ${size/x/ × } | $mode | $cpu | $gpu | $total | $ratio |"
  done
done

echo
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
