#!/usr/bin/env bash
# Rewrites the templates' LMS import files (imsmanifest.xml and the AICC course.* files) from
# the generator, after files were added to or removed from a template. The generator is the
# same code a save runs; the storage tests carry it: with LUMORA_REFRESH_TEMPLATES set, their
# template check writes the files generated over the staged templates into share/Templates/*/
# instead of comparing. Commit the result.
# Usage: tools/refresh-templates.sh [BUILD_DIR]   (default: build)
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$here/build}"
if [[ ! -f "$build/build.ninja" && ! -f "$build/Makefile" ]]; then
  cmake -S "$here" -B "$build" -G Ninja -DLUMORA_GUI=OFF -DLUMORA_PLAYER_TESTS=OFF
fi
cmake --build "$build" -j2 --target stage lumora_storage_tests
LUMORA_REFRESH_TEMPLATES=1 "$build/tests/lumora_storage_tests" \
  --gtest_filter='LmsFilesTemplates.*'
# Stage again and compare: the templates must now match and check clean.
cmake --build "$build" -j2 --target stage
"$build/tests/lumora_storage_tests" --gtest_filter='LmsFilesTemplates.*'
git -C "$here" status --short -- share/Templates
