#!/usr/bin/env bash
# Start-up time of the desktop program: from process start to a usable start chooser, with
# the splash's 1500 ms wait left out. Runs the staged program N times (default 5) under a
# virtual display and prints each run's figure as the program measured it, and the wall time
# of the whole process (load, start-up, chooser, exit).
# Usage: bench/startup-time.sh [DIST_DIR] [RUNS]
set -euo pipefail
dist="${1:-build/dist}"
runs="${2:-5}"
export QTWEBENGINE_CHROMIUM_FLAGS="${QTWEBENGINE_CHROMIUM_FLAGS:---no-sandbox}"

run() {
  local start end line
  start=$(date +%s%N)
  line=$("$dist/lumora" --workspace "$workspace" --measure-startup 2>/dev/null)
  end=$(date +%s%N)
  echo "$line; whole process $(( (end - start) / 1000000 )) ms"
}

if [[ -z "${DISPLAY:-}" ]]; then
  exec xvfb-run -a "$0" "$dist" "$runs"
fi
workspace="$(mktemp -d)"
trap 'rm -rf "$workspace"' EXIT
for ((i = 1; i <= runs; i++)); do
  run
done
