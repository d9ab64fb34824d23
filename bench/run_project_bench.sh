#!/usr/bin/env bash
# Runs the project benchmark from a release build folder (default: build-release).
set -euo pipefail
build=${1:-build-release}
cd "$(dirname "$0")/.."
if [ ! -x "$build/bench/menuwright_bench" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DMENUWRIGHT_BUILD_TESTS=OFF
  cmake --build "$build"
fi
MENUWRIGHT_HOME=$(mktemp -d) "$build/bench/menuwright_bench" --benchmark_min_time=1
