#!/usr/bin/env bash
# Installs what building, running and testing Lumora needs, and only what is missing:
# Debian packages through apt-get, and the player tests' npm packages from their lock file.
# Safe to run again and again.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"

packages=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev qt6-webengine-dev qt6-webchannel-dev qt6-svg-dev libqt6webenginecore6-bin
  libgl-dev libhunspell-dev hunspell-en-us hunspell-en-med libzip-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth x11-apps xdotool imagemagick fonts-dejavu-core
  chromium libxml2-utils unzip nodejs npm
  dpkg-dev lintian desktop-file-utils appstream librsvg2-bin
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done
# nodejs may come from elsewhere than Debian's package; a working node and npm will do.
if command -v node >/dev/null && command -v npm >/dev/null; then
  filtered=()
  for p in "${missing[@]}"; do [[ "$p" == nodejs || "$p" == npm ]] || filtered+=("$p"); done
  missing=("${filtered[@]+"${filtered[@]}"}")
fi

if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  [[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
fi

# npm packages of the player tests, installed from the lock file when it changed.
player="$here/tests/player"
if [[ -f "$player/package-lock.json" ]]; then
  stamp="$player/node_modules/.lock-stamp"
  if [[ ! -f "$stamp" ]] || ! cmp -s "$player/package-lock.json" "$stamp"; then
    (cd "$player" && npm ci --no-audit --no-fund)
    cp "$player/package-lock.json" "$stamp"
  fi
fi
