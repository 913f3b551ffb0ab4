#!/bin/sh
# Builds the game and every test with AddressSanitizer and
# UndefinedBehaviorSanitizer in a build folder of its own and runs all tests.
# Any report fails the run: undefined behaviour stops the process at once,
# leaks fail it at exit. Leaks inside system libraries that the game cannot
# free (caches kept until exit) are listed in scripts/lsan.supp, so a clean
# run prints nothing but its last line.
# Usage: scripts/sanitize.sh [BUILD_DIR]   (default build-sanitize)
set -eu
cd "$(dirname "$0")/.."
build=${1:-build-sanitize}
sanitizers="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
# The test programs run while building (test discovery) and start the game,
# so the options hold for the build as well as for the run.
export ASAN_OPTIONS="detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1"
# Mesa's software driver, which the game's OpenGL renderer loads on the
# test's X server, keeps memory in its own globals and is unloaded with the
# last GL context, before the leak check runs: that memory then looks lost.
# Kept loaded for the whole run, it stays reachable and is no leak.
driver=/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so
if [ -f "$driver" ]; then
  export LD_PRELOAD="$driver"
  ASAN_OPTIONS="$ASAN_OPTIONS:verify_asan_link_order=0"
fi
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
log="$build/sanitize.log"
mkdir -p "$build"
{
  cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_FLAGS="$sanitizers" -DCMAKE_CXX_FLAGS="$sanitizers" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined"
  cmake --build "$build" -j"$(nproc)"
} >"$log" 2>&1 || { tail -n 80 "$log"; echo "sanitize: build FAILED (log $log)"; exit 1; }
if ! ctest --test-dir "$build" --output-on-failure -j"$(nproc)" >>"$log" 2>&1; then
  sed -n '/tests failed out of/,$p' "$log"
  echo "sanitize: tests FAILED (log $log)"
  exit 1
fi
# A report in a child process (the game started by a test) need not fail
# the test that started it; any such report fails the run here.
if grep -E "ERROR: (Address|Leak)Sanitizer|runtime error:" "$log" >/dev/null; then
  grep -E -A30 "ERROR: (Address|Leak)Sanitizer|runtime error:" "$log" | head -n 120
  echo "sanitize: sanitizer reports (log $log)"
  exit 1
fi
echo "sanitize: $(sed -n 's/.*tests passed, \(.*\)/\1/p' "$log" | tail -n 1), no sanitizer reports"
