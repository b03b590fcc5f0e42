#!/usr/bin/env bash
# Starts the staged program. Without a display it starts a virtual one, so `make run` also
# works on a machine with no screen.
set -euo pipefail
dist="$1"; shift || true
if [[ ! -x "$dist/lumora" ]]; then
  echo "The desktop program is not built; showing the workspace with lumora-cli instead." >&2
  exec "$dist/lumora-cli" list "$@"
fi
[[ $(id -u) -eq 0 ]] && export QTWEBENGINE_CHROMIUM_FLAGS="${QTWEBENGINE_CHROMIUM_FLAGS:---no-sandbox}"
if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" && -z "${QT_QPA_PLATFORM:-}" ]]; then
  exec xvfb-run -a "$dist/lumora" "$@"
fi
exec "$dist/lumora" "$@"
