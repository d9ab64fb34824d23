#!/usr/bin/env bash
# Builds the fuzz targets with clang (folder build-fuzz), writes their seed corpora and runs each
# for the given number of seconds (60 unless told), e.g. `bash fuzz/run_fuzz.sh 300`. Any crash,
# leak, timeout or excess of memory fails the run and leaves its input in build-fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMENUWRIGHT_FUZZ=ON \
  -DMENUWRIGHT_BUILD_TESTS=OFF -DMENUWRIGHT_BUILD_BENCH=OFF >/dev/null
cmake --build build-fuzz --target avi_file_fuzz bmp_file_fuzz project_file_fuzz fuzz_seeds
corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
build-fuzz/fuzz/fuzz_seeds "$corpus"
if command -v ffmpeg >/dev/null; then
  ffmpeg -nostdin -v error -f lavfi -i testsrc=size=32x24:rate=25 -f lavfi -i sine -t 1 \
    -c:v mpeg4 -vtag DX50 -g 5 -c:a libmp3lame "$corpus/avi/ffmpeg.avi"
fi
mkdir -p build-fuzz/findings
for kind in avi bmp project; do
  echo "== ${kind}_file_fuzz for ${seconds} s"
  log="build-fuzz/findings/$kind.log"
  if ! build-fuzz/fuzz/${kind}_file_fuzz -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 \
    -print_final_stats=1 -artifact_prefix=build-fuzz/findings/ "$corpus/$kind" >"$log" 2>&1; then
    cat "$log"
    exit 1
  fi
  grep -E '^stat::number_of_executed_units|^Done' "$log"
done
