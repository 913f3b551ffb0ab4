#!/bin/bash
# Regenerates every table of RESULTS.md in one go (six minutes on the
# project's 2-core machine under load):
#
#   bench/run-all.sh [build-dir] > results.md
#
# Builds the benchmark programs (Release) into build-dir, default
# build-bench, then runs each with five or more samples; prints Markdown with
# the machine and the date. Quote ratios: they compare figures taken in the
# same run.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-bench}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTESSELLATRIX_BENCH=ON >/dev/null
cmake --build "$build" -j"$(nproc)" >/dev/null

cpu=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n1)
echo "Machine: $cpu, $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2 / 1048576}' /proc/meminfo);" \
  "$(. /etc/os-release; echo "$PRETTY_NAME"), gcc $(gcc -dumpfullversion), SDL $(pkg-config --modversion sdl2)," \
  "cairo $(pkg-config --modversion cairo), libjpeg-turbo $(dpkg-query -W -f='${Version}' libjpeg62-turbo 2>/dev/null)."
echo "Date: $(date -u +%Y-%m-%d). Load average before the run: $(cut -d' ' -f1-3 /proc/loadavg)."
echo
echo "## Whole frames"
echo
bench/frames.sh "$build" 5 60
echo
echo "## The way in"
echo
bench/way_in.sh "$build" 5
echo
echo "## Idle and pacing"
echo
bench/idle_cpu.sh "$build" 5 4
echo
echo "## Level select opening"
echo
bench/level_select.sh "$build" 5
echo
echo "## Pictures and piece textures"
echo
"$build/textures_bench" 9 2>/dev/null
echo
echo "## Saves file"
echo
if [ -x "$build/store_bench" ]; then
  echo '```'
  "$build/store_bench" 1001
  echo '```'
else
  echo "(store_bench not built: apt-get install rapidjson-dev)"
fi
echo
echo "## Puzzle core"
echo
"$build/core_bench" 301
echo
echo "## Text layout"
echo
"$build/bench_text_layout" 15 400
