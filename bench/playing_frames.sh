#!/bin/bash
# Frame cost on the playing screen with a 10 x 11 puzzle, from the "[stats]"
# line, under Xvfb with SDL's software renderer:
#
#   bench/playing_frames.sh [build-dir] [runs] [seconds-per-run]
#
# Three cases per window size, each run `runs` times: the bare frame (no
# screen: the loop's own clear, cairo layer upload and composite, present),
# the puzzle with all pieces on the table, and the same while a piece is
# dragged around in circles (xdotool, from Debian's xdotool package). The
# first two statistics lines of a run are warm-up and dropped; the table
# gives the median of the runs' medians, and the ratio of the frame's CPU
# time to the whole cost (CPU and GPU) of the bare frame.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
seconds=${3:-6}
game="$build/frame_bench"
[ -x "$game" ] || { echo "no $game: build with -DTESSELLATRIX_BENCH=ON" >&2; exit 1; }
command -v xdotool >/dev/null || { echo "xdotool is needed (apt-get install xdotool)" >&2; exit 1; }

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export SDL_AUDIODRIVER=dummy SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0

# Drags with the left button held along circles around (x, y): one xdotool
# process for the whole drag, so the driver itself costs next to nothing.
drag_circles() {
  local x=$1 y=$2
  sleep 1.5
  local moves
  moves=$(awk -v x="$x" -v y="$y" 'BEGIN {
    for (i = 0; i < 2000; i++) {
      a = i * 7 * 3.14159 / 180
      printf "mousemove %d %d sleep 0.01 ", x + 120 * cos(a), y + 120 * sin(a)
    }
  }')
  # shellcheck disable=SC2086
  xdotool mousemove "$x" "$y" sleep 0.1 mousedown 1 sleep 0.1 $moves
}

# Prints "cpu gpu fps" medians of one run of case $2 at size $1.
one_run() {
  local size=$1 mode=$2
  local data log
  data=$(mktemp -d)
  log="$data/err"
  local w=${size%x*} h=${size#*x}
  if [ "$mode" = bare ]; then
    XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" BENCH_BARE=1 TESSELLATRIX_STATS=1 \
      "$game" --size "$size" >/dev/null 2>"$log" &
  else
    XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" TESSELLATRIX_STATS=1 \
      "$game" --size "$size" >/dev/null 2>"$log" &
  fi
  local pid=$! dragger=""
  if [ "$mode" = drag ]; then
    # The left table zone holds a crowd of dealt pieces at every size here.
    drag_circles "$((w / 9))" "$((h / 2))" &
    dragger=$!
  fi
  sleep "$seconds"
  [ -n "$dragger" ] && { kill "$dragger"; wait "$dragger" 2>/dev/null || true; xdotool mouseup 1; }
  kill -TERM $pid; wait $pid || true
  local stats
  stats=$(grep '^\[stats\]' "$log" | tail -n +3)
  echo "$(echo "$stats" | awk '{print $5}' | median) $(echo "$stats" | awk '{print $8}' | median) $(echo "$stats" | awk '{print $2}' | median)"
  rm -rf "$data"
}

echo "| window | case | CPU ms | GPU ms | fps | CPU / bare frame |"
echo "|---|---|---|---|---|---|"
for size in 1920x1080 2560x1440; do
  bare_cost=""
  for mode in bare table drag; do
    results=()
    for _ in $(seq "$runs"); do results+=("$(one_run "$size" "$mode")"); done
    cpu=$(printf '%s\n' "${results[@]}" | awk '{print $1}' | median)
    gpu=$(printf '%s\n' "${results[@]}" | awk '{print $2}' | median)
    fps=$(printf '%s\n' "${results[@]}" | awk '{print $3}' | median)
    # The bare frame's whole cost: with SDL's draw batching its clear and
    # composite are carried out at present, in the GPU figure.
    [ "$mode" = bare ] && bare_cost=$(awk -v c="$cpu" -v g="$gpu" 'BEGIN {print c + g}')
    ratio=$(awk -v c="$cpu" -v b="$bare_cost" 'BEGIN {printf "%.2f", c / b}')
    echo "| ${size/x/ × } | $mode | $cpu | $gpu | $fps | $ratio |"
  done
done
