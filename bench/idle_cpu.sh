#!/bin/bash
# What the game costs while nothing happens, while a piece is dragged and
# while its window is hidden: the CPU time of the game and of the X server
# together, in % of one core, and the frames drawn per second, under Xvfb
# with SDL's software renderer and with SDL's default choice (OpenGL):
#
#   bench/idle_cpu.sh [build-dir] [runs] [seconds-per-run] [baseline-binary]
#
# Cases, each in a fresh data folder with the window (1000 x 700) focused:
#   playing   the 6 x 7 puzzle of level 1 at rest, the clock running
#   levels, settings, menu   those screens at rest (BENCH_SCREENS to change)
#   drag      a piece taken from the tray and carried in circles, the pointer
#             moving 200 times a second; the table must look different
#             afterwards, or the run is marked "not moved"
#   hidden    the playing screen with its window unmapped, as a minimised
#             window is (Xvfb has no window manager to minimise it)
# CPU comes from /proc (user + system ticks of both processes over the
# measured seconds, after 2 s of warm-up), frames from the "[stats]" lines of
# the same seconds. Each figure is the median of `runs` runs. A baseline
# binary (another build of the game, say from before a change) runs every
# case too, in the same run, and the last column is ours / baseline.
# Needs Xvfb, xdotool and ImageMagick's import (Debian: xvfb, xdotool,
# imagemagick).
set -euo pipefail
build=${1:-build}
runs=${2:-5}
seconds=${3:-10}
baseline=${4:-}
game="$build/tessellatrix"
[ -x "$game" ] || { echo "no game binary at $game" >&2; exit 1; }
[ -z "$baseline" ] || [ -x "$baseline" ] || { echo "no baseline binary at $baseline" >&2; exit 1; }
for tool in xdotool import; do
  command -v $tool >/dev/null || { echo "$tool is needed" >&2; exit 1; }
done
screens=${BENCH_SCREENS:-levels settings menu}

# shellcheck source=bench/xvfb_stats.sh
source "$(dirname "$0")/xvfb_stats.sh"
start_xvfb
export SDL_AUDIODRIVER=dummy
hz=$(getconf CLK_TCK)

ticks() { awk '{print $14 + $15}' "/proc/$1/stat"; }

# The table below the header, as a checksum: it changes when a piece moves.
table_sum() { import -window "$1" -crop 1000x580+0+115 +repage png:- 2>/dev/null | md5sum | cut -c1-12; }

# A piece out of the left strip, then circles on the table, 200 moves a second.
drag() {
  local wid=$1 moves
  moves=$(awk -v n="$((seconds * 200 + 600))" 'BEGIN {
    for (i = 0; i < n; i++) {
      a = i * 3 * 3.14159 / 180
      printf "mousemove --window %s %d %d sleep 0.005 ", "'"$wid"'", 500 + 150 * cos(a), 400 + 150 * sin(a)
    }
  }')
  # shellcheck disable=SC2086
  xdotool mousemove --window "$wid" 64 160 sleep 0.2 mousedown 1 sleep 0.2 $moves
}

# Prints "cpu% fps" for one run of a case with one binary.
one_run() {
  local binary=$1 case=$2; shift 2
  local data screen=$case
  data=$(mktemp -d)
  case $case in drag | hidden) screen=playing ;; esac
  env "$@" XDG_DATA_HOME="$data" XDG_RUNTIME_DIR="$data" TESSELLATRIX_STATS=1 TESSELLATRIX_SCREEN="$screen" \
    "$binary" --size 1000x700 >"$data/out" 2>"$data/err" &
  local pid=$!
  local wid
  wid=$(xdotool search --sync --onlyvisible --name Quillmoss 2>/dev/null | head -n1)
  xdotool windowfocus --sync "$wid"
  sleep 2
  local before="" dragger=""
  case $case in
    drag) before=$(table_sum "$wid"); drag "$wid" & dragger=$! ; sleep 1 ;;
    hidden) xdotool windowunmap --sync "$wid"; sleep 1 ;;
  esac
  local lines0 g0 x0 g1 x1 lines1
  lines0=$(grep -c '^\[stats\]' "$data/err" || true)
  g0=$(ticks $pid); x0=$(ticks "$XVFB_PID")
  sleep "$seconds"
  g1=$(ticks $pid); x1=$(ticks "$XVFB_PID")
  lines1=$(grep -c '^\[stats\]' "$data/err" || true)
  local moved=""
  if [ -n "$dragger" ]; then
    kill "$dragger" 2>/dev/null; wait "$dragger" 2>/dev/null || true
    xdotool mouseup 1
    sleep 0.5
    [ "$(table_sum "$wid")" != "$before" ] || moved=" (not moved)"
  fi
  kill -TERM $pid; wait $pid || true
  local fps
  fps=$(sed -n "$((lines0 + 1)),${lines1}p" <(grep '^\[stats\]' "$data/err") | awk '{print $2}' | median)
  rm -rf "$data"
  awk -v t="$(( (g1 - g0) + (x1 - x0) ))" -v hz="$hz" -v s="$seconds" -v f="$fps" -v m="$moved" \
    'BEGIN {printf "%.2f %s%s\n", 100 * t / hz / s, f, m}'
}

# Prints "cpu fps[ (not moved)]" medians of `runs` runs.
medians() {
  local results=()
  for _ in $(seq "$runs"); do results+=("$(one_run "$@")"); done
  local cpu fps note
  cpu=$(printf '%s\n' "${results[@]}" | awk '{print $1}' | median)
  fps=$(printf '%s\n' "${results[@]}" | awk '{print $2}' | median)
  note=$(printf '%s\n' "${results[@]}" | grep -c 'not moved' || true)
  [ "$note" = 0 ] && note="" || note=" ($note runs not moved)"
  echo "$cpu $fps$note"
}

if [ -n "$baseline" ]; then
  echo "| case | renderer | CPU % of a core (game + X) | frames/s | baseline CPU % | baseline frames/s | CPU ours / baseline |"
  echo "|---|---|---|---|---|---|---|"
else
  echo "| case | renderer | CPU % of a core (game + X) | frames/s |"
  echo "|---|---|---|---|"
fi
for renderer in software opengl; do
  if [ $renderer = software ]; then
    hints=(SDL_RENDER_DRIVER=software SDL_FRAMEBUFFER_ACCELERATION=0)
  else
    hints=(SDL_RENDER_DRIVER=opengl)
  fi
  # shellcheck disable=SC2086
  for case in playing $screens drag hidden; do
    read -r cpu fps note <<<"$(medians "$game" "$case" "${hints[@]}")"
    if [ -n "$baseline" ]; then
      read -r bcpu bfps bnote <<<"$(medians "$baseline" "$case" "${hints[@]}")"
      ratio=$(awk -v a="$cpu" -v b="$bcpu" 'BEGIN {if (b > 0) printf "%.3f", a / b; else print "-"}')
      echo "| $case | $renderer | $cpu | $fps${note:+ $note} | $bcpu | $bfps${bnote:+ $bnote} | $ratio |"
    else
      echo "| $case | $renderer | $cpu | $fps${note:+ $note} |"
    fi
  done
done
