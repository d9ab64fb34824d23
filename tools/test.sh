#!/usr/bin/env bash
# Installs what is needed, builds Menuwright with warnings as errors and sanitizers, runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh
cmake -S . -B build-test -G Ninja -DCMAKE_BUILD_TYPE=Debug -DMENUWRIGHT_WERROR=ON -DMENUWRIGHT_SANITIZE=ON \
  -DMENUWRIGHT_BUILD_BENCH=OFF
cmake --build build-test
ctest --test-dir build-test --output-on-failure --timeout 300
