#!/usr/bin/env bash
# Builds the benchmarks in release mode (folder build-release) and runs those whose name matches
# the optional filter, e.g. `bash bench/run_bench.sh Project`. Further arguments go to the
# benchmark program: `bash bench/run_bench.sh Process --benchmark_repetitions=5
# --benchmark_enable_random_interleaving=true` runs the whole-process timings in turns, so that
# a busy moment of the machine falls on both sides of a comparison alike.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DMENUWRIGHT_BUILD_TESTS=OFF -DMENUWRIGHT_BUILD_BENCH=ON >/dev/null
cmake --build build-release --target menuwright_bench
MENUWRIGHT_HOME=$(mktemp -d) ./build-release/bench/menuwright_bench --benchmark_filter="${1:-.}" --benchmark_min_time=1 "${@:2}"
