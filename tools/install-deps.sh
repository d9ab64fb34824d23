#!/usr/bin/env bash
# Installs everything Menuwright needs to build, run and test, from Debian 12 packages only.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  clang libclang-rt-14-dev
  libpugixml-dev
  libavformat-dev libavcodec-dev libavutil-dev libswscale-dev libswresample-dev ffmpeg
  qt6-base-dev libgl-dev libxcb1-dev qt6-image-formats-plugins qt6-multimedia-dev
  libqt6svg6 adwaita-icon-theme
  libgtest-dev libgmock-dev libbenchmark-dev
  fonts-liberation2
  libxml2-utils dvdauthor genisoimage lsdvd graphviz
  mencoder gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-libav
  xvfb xauth
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y --no-install-recommends "${missing[@]}"
fi
