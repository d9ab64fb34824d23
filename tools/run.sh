#!/usr/bin/env bash
# Installs what is needed, builds Menuwright and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DMENUWRIGHT_BUILD_TESTS=OFF -DMENUWRIGHT_BUILD_BENCH=OFF
cmake --build build-release
# Without a display the window runs on a virtual one, so the command still starts the program.
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  exec xvfb-run -a ./build-release/src/ui/menuwright
fi
exec ./build-release/src/ui/menuwright
