#!/bin/sh
# Installs what is missing, builds the game and starts it.
set -eu
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DTESSELLATRIX_TESTS=OFF
cmake --build build -j"$(nproc)"
exec build/tessellatrix "$@"
