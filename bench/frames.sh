#!/bin/bash
# Whole frames under Xvfb, the playing screen beside the bare frame of the
# same run (see frame_bench.cpp for the cases):
#
#   bench/frames.sh [build-dir] [runs] [frames-per-case]
#
# For each window size and renderer, `runs` processes each draw every case;
# the table gives, per case, the median over the runs of the wall time and of
# the game's plus the X server's CPU per frame, and the median of the runs'
# own ratios to their bare frame. "check" is the drag's proof that the piece
# moved with the pointer: the median distance in pixels between where the
# piece ended and where the pointer carried it (-1: nothing moved); for the
# menu the pieces drawn, for the gallery its longest frame in ms. The solved
# screen's one frame is its first, picture painted from the file.
set -euo pipefail
build=${1:-build}
runs=${2:-5}
frames=${3:-60}
bench="$build/frame_bench"
[ -x "$bench" ] || { echo "no $bench: build with -DTESSELLATRIX_BENCH=ON" >&2; exit 1; }

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export BENCH_XPID=$XVFB_PID SDL_AUDIODRIVER=dummy SDL_FRAMEBUFFER_ACCELERATION=0

# The column `col` of case `name` over the run files given.
column() {
  local name=$1 col=$2; shift 2
  awk -v n="$name" -v c="$col" '$1 == n {print $c}' "$@" | median
}

# Per run, case / bare of (game + X) CPU and of wall time; prints both medians.
ratios() {
  local name=$1; shift
  local f cpu=() wall=()
  for f in "$@"; do
    cpu+=("$(awk -v n="$name" '$1 == "bare" {b = $4 + $5} $1 == n {c = $4 + $5} END {print c / b}' "$f")")
    wall+=("$(awk -v n="$name" '$1 == "bare" {b = $3} $1 == n {c = $3} END {print c / b}' "$f")")
  done
  printf '%.2f %.2f' "$(printf '%s\n' "${cpu[@]}" | median)" "$(printf '%s\n' "${wall[@]}" | median)"
}

echo "| window | renderer | case | wall ms | game CPU ms | X CPU ms | CPU / bare | wall / bare | check |"
echo "|---|---|---|---|---|---|---|---|---|"
for size in 1920x1080 2560x1440; do
  for driver in software opengl; do
    dir=$(mktemp -d)
    files=()
    for r in $(seq "$runs"); do
      mkdir -p "$dir/data$r"
      XDG_DATA_HOME="$dir/data$r" XDG_RUNTIME_DIR="$dir/data$r" SDL_RENDER_DRIVER=$driver \
        "$bench" "$size" "$frames" >"$dir/run$r" 2>"$dir/err$r" || { cat "$dir/err$r" >&2; exit 1; }
      files+=("$dir/run$r")
    done
    renderer=$(awk '$1 == "renderer" {print $2; exit}' "${files[0]}")
    for name in bare idle drag placed plain-idle plain-drag menu solved gallery; do
      read -r cpu_ratio wall_ratio <<<"$(ratios "$name" "${files[@]}")"
      check=$(case $name in *drag | menu | gallery) column "$name" 6 "${files[@]}" ;; esac)
      echo "| ${size/x/ × } | $renderer | $name | $(column $name 3 "${files[@]}") |" \
        "$(column $name 4 "${files[@]}") | $(column $name 5 "${files[@]}") | $cpu_ratio | $wall_ratio | $check |"
    done
    rm -rf "$dir"
  done
done
