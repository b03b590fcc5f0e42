#!/usr/bin/env bash
# The README's screenshots of the main form, one per screen scale: the staged program on a
# 1280x1024 virtual screen under QT_SCALE_FACTOR 1, 1.5 and 2, driven by the keyboard from the
# start chooser to the sample Lesson. Usage: tools/screenshots.sh [DIST_DIR] [OUT_DIR]
set -euo pipefail
dist="$(cd "${1:-build/dist}" && pwd)"
out="$(mkdir -p "${2:-docs}" && cd "${2:-docs}" && pwd)"

if [[ -z "${LUMORA_SHOTS_DISPLAY:-}" ]]; then
  exec env LUMORA_SHOTS_DISPLAY=1 xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$dist" "$out"
fi
[[ $(id -u) -eq 0 ]] && export QTWEBENGINE_CHROMIUM_FLAGS="${QTWEBENGINE_CHROMIUM_FLAGS:---no-sandbox}"
workspace="$(mktemp -d)"
trap 'rm -rf "$workspace"' EXIT
"$dist/lumora-cli" --workspace "$workspace" new Lesson Sample_Lesson >/dev/null

# Waits until a window with this name (other than window $2) is on screen and gives it the
# keyboard: there is no window manager to do that.
wait_for() {
  local window
  for _ in $(seq 150); do
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | grep -vx "${2:-none}" |
             tail -1) || true
    if [[ -n "$window" ]]; then
      sleep 0.5
      # Gone again (a splash handing over): keep waiting.
      xdotool windowfocus --sync "$window" 2>/dev/null && return 0
    fi
    sleep 0.1
  done
  echo "no window named $1" >&2
  return 1
}

for scale in 1 1.5 2; do
  QT_SCALE_FACTOR=$scale "$dist/lumora" --workspace "$workspace" >/dev/null 2>&1 &
  pid=$!
  # The splash and the start chooser are both called "Lumora": the chooser is the second.
  for _ in $(seq 150); do
    splash=$(xdotool search --onlyvisible --name '^Lumora$' 2>/dev/null | head -1) || true
    [[ -n "$splash" ]] && break
    sleep 0.1
  done
  wait_for '^Lumora$' "$splash"
  xdotool key Return                   # Edit Existing Content has the focus
  wait_for '^Choose Folder$'
  xdotool key space Return             # select the one module in the list, open it
  wait_for '^Lumora: '
  sleep 3                              # the page editor shows its page
  # The screen around the form is cut off; few colours keep the files small.
  xwd -root -silent | convert xwd:- -trim +repage +dither -colors 64 "$out/main-form-${scale}x.png"
  kill "$pid"
  wait "$pid" 2>/dev/null || true
done
