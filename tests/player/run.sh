#!/usr/bin/env bash
# Runs the learner player tests in Chromium against a staged installation.
# Usage: tests/player/run.sh DIST   (DIST holds Templates/, app/, Help/ and lumora-cli)
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
if [[ $# -lt 1 ]]; then
  echo "usage: $0 DIST" >&2
  exit 2
fi
export LUMORA_DIST="$(cd "$1" && pwd)"
cd "$here"
exec node --test --test-concurrency=1 ./*.test.mjs
