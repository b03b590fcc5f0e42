#!/usr/bin/env bash
# Takes the help's pictures again from the real program: lumora-help-shots opens the sample
# modules on a 1024x768 virtual screen and grabs each form its table names; the pictures are
# then reduced to a 256-colour palette and written to share/Help/media. Rebuild afterwards so
# the staged help carries them. To add a picture, add a row to the table in
# tools/help/HelpShots.cpp and name the file in docs/help/help.txt.
# Usage: tools/help-screenshots.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}"

if [[ -z "${LUMORA_SHOTS_DISPLAY:-}" ]]; then
  cmake --build "$build" -j2 --target lumora-help-shots stage
  exec env LUMORA_SHOTS_DISPLAY=1 xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$build"
fi
[[ $(id -u) -eq 0 ]] && export QTWEBENGINE_CHROMIUM_FLAGS="${QTWEBENGINE_CHROMIUM_FLAGS:---no-sandbox}"
shots="$(mktemp -d)"
trap 'rm -rf "$shots"' EXIT
"$build/tools/lumora-help-shots" "$build/dist" "$shots"

media=share/Help/media
mkdir -p "$media"
for shot in "$shots"/*.png; do
  name="$(basename "$shot")"
  convert "$shot" -strip +dither -colors 256 "PNG8:$media/$name"
  printf '%-28s %5d KB\n' "$name" $(( ($(stat -c %s "$media/$name") + 1023) / 1024 ))
done
