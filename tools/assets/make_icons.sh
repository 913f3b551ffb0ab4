#!/bin/sh
# Renders the application icon's PNG sizes from its SVG (needs librsvg2-bin).
set -eu
cd "$(dirname "$0")/../../packaging/icons"
id=software.quillmoss.tessellatrix
for size in 16 24 32 48 64 128 256 512; do
  mkdir -p "${size}x${size}"
  rsvg-convert -w "$size" -h "$size" "$id.svg" -o "${size}x${size}/$id.png"
done
