#!/bin/sh
# Installs what is missing, builds the game with its tests, builds the fuzz
# targets with clang and fuzzes each for a minute, checks that the tests stay
# within their share of the code, then runs every test (last, so that the
# test summary closes the output).
set -eu
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build-tests -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSELLATRIX_WERROR=ON
cmake --build build-tests -j"$(nproc)"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSELLATRIX_FUZZ=ON \
  -DTESSELLATRIX_WERROR=ON
cmake --build build-fuzz -j"$(nproc)"
scripts/fuzz.sh build-fuzz 60
scripts/test-share.sh
ctest --test-dir build-tests --output-on-failure -j"$(nproc)"
