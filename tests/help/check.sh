#!/usr/bin/env bash
# lumora-cli check loads the staged help as the module it is, with no message at all.
# Usage: tests/help/check.sh LUMORA_CLI DIST
set -euo pipefail
cli="$1" dist="$2"
workspace="$(mktemp -d)"
trap 'rm -rf "$workspace"' EXIT
cp -r "$dist/Help" "$workspace/Help"
# The help viewer opens lessonFrameset.html; the module folders are told apart by the lower-case
# name of a Lesson's frameset, which the help has on a case-blind file system only.
cp "$workspace/Help/lessonFrameset.html" "$workspace/Help/lessonframeset.html"
status=0
messages="$("$cli" --workspace "$workspace" check Help 2>&1)" || status=$?
if [[ $status -ne 0 || -n "$messages" ]]; then
  echo "lumora-cli check Help: exit $status" >&2
  printf '%s\n' "$messages" >&2
  exit 1
fi
echo "lumora-cli check Help: no message"
