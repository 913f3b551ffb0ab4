#!/bin/sh
# Installs, from Debian's archive, whatever the game and its tests need and
# the machine lacks. Safe to run again: it does nothing when all is there.
set -eu

PACKAGES="
build-essential cmake pkg-config
libsdl2-dev libsdl2-mixer-dev libasound2-dev
libcairo2-dev libpango1.0-dev libfontconfig-dev libfreetype-dev
libstb-dev libsodium-dev libjpeg62-turbo-dev libexif-dev
libgtest-dev
xvfb xauth libgl1-mesa-dri xdotool libx11-dev
clang libclang-rt-14-dev
desktop-file-utils appstream
file
"

missing=""
for p in $PACKAGES; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing="$missing $p"
  fi
done
[ -z "$missing" ] && exit 0

echo "Installing:$missing"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
$SUDO apt-get update
# shellcheck disable=SC2086
$SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
