#!/usr/bin/env bash
# Starts Menuwright on a virtual display of its own, in a fresh program folder that holds the
# demo project, so that the demo opens as at a first start, and saves a picture of the screen.
# Usage: tools/screenshot.sh [OUTPUT.png]   (default build-release/screenshot.png)
# Prints the picture's path.
set -euo pipefail
cd "$(dirname "$0")/.."

out="$(realpath -m "${1:-build-release/screenshot.png}")"
size="${SCREENSHOT_SIZE:-1280x800}"
program_dir=build-release/src/ui

if [ ! -f build-release/CMakeCache.txt ]; then
  cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DMENUWRIGHT_BUILD_TESTS=OFF -DMENUWRIGHT_BUILD_BENCH=OFF
fi
cmake --build build-release --target menuwright >&2

work="$(mktemp -d)"
xvfb_pid=""
app_pid=""
cleanup() {
  local status=$?
  for pid in $app_pid $xvfb_pid; do
    kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null || true
  done
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

# No settings file in the fresh folder: the program takes this for its first start.
home="$work/home"
mkdir -p "$home"
cp -r "$program_dir/Demo" "$home/"
cp "$program_dir"/*.Menuwright.exe.xml "$home/" 2>/dev/null || echo "screenshot: no language file beside the program" >&2

# Xvfb picks a free display itself and writes its number.
Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
xvfb_pid=$!
for _ in $(seq 100); do
  [ -s "$work/display" ] && break
  kill -0 "$xvfb_pid" 2>/dev/null || { cat "$work/xvfb.log" >&2; exit 1; }
  sleep 0.1
done
display=":$(tr -d '[:space:]' <"$work/display")"

DISPLAY="$display" MENUWRIGHT_HOME="$home" "$program_dir/menuwright" >"$work/app.log" 2>&1 &
app_pid=$!

# Wait until the main window is mapped (its title starts with the program's name), then give
# it a moment to paint. Without xwininfo a fixed wait has to do.
if command -v xwininfo >/dev/null; then
  for _ in $(seq 300); do
    DISPLAY="$display" xwininfo -root -tree 2>/dev/null | grep -q '"[^"]*Menuwright ver\.' && break
    kill -0 "$app_pid" 2>/dev/null || { cat "$work/app.log" >&2; exit 1; }
    sleep 0.1
  done
  sleep 2
else
  sleep 8
fi
kill -0 "$app_pid" 2>/dev/null || { echo "screenshot: menuwright ended early" >&2; cat "$work/app.log" >&2; exit 1; }

mkdir -p "$(dirname "$out")"
ffmpeg -nostdin -v error -y -f x11grab -draw_mouse 0 -video_size "$size" -i "$display" -frames:v 1 "$work/screen.png"
# No window manager places or frames the window: keep just the window, which is all that is
# not the black background.
# cropdetect keeps a few pixels off each edge, so the box grows back by a margin.
crop="$(ffmpeg -nostdin -i "$work/screen.png" -vf cropdetect=limit=0:round=1:skip=0 -f null - 2>&1 |
  grep -o 'crop=[0-9:]*' | tail -1 || true)"
filter=()
if [ -n "$crop" ]; then
  IFS=: read -r w h x y <<<"${crop#crop=}"
  margin=8
  x=$((x > margin ? x - margin : 0)); y=$((y > margin ? y - margin : 0))
  w=$((w + 2 * margin)); h=$((h + 2 * margin))
  filter=(-vf "crop=min($w\,iw-$x):min($h\,ih-$y):$x:$y")
fi
ffmpeg -nostdin -v error -y -i "$work/screen.png" "${filter[@]}" "$out"
echo "$out"
