#!/bin/sh
# Installs what is missing, builds the game with its tests and runs every test.
set -eu
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build-tests -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSELLATRIX_WERROR=ON
cmake --build build-tests -j"$(nproc)"
ctest --test-dir build-tests --output-on-failure -j"$(nproc)"
