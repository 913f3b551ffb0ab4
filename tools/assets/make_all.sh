#!/bin/sh
# Remakes the whole asset tree. Extra arguments go to make_levels.py
# (--cache DIR, --sheets DIR).
set -eu
cd "$(dirname "$0")"
./make_levels.py "$@"
./make_fonts.py
./make_audio.py
./make_credits.py
