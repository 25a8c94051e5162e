#!/usr/bin/env bash
# Checks that every picture of every example page (slices and the rendered preview)
# decodes to the same RGBA pixels as in a reference tree made the same way, whatever
# their encoding. REF holds <page>/proj/... per example, as this script's own output does.
# Usage: scripts/check_pictures.sh REF [OUT]
set -euo pipefail
cd "$(dirname "$0")/.."
REF=${1:?usage: scripts/check_pictures.sh REF [OUT]}
OUT=${2:-$(mktemp -d)}
EXE=$PWD/templates/ui_blocks/compose
BUILD_DIR=${BUILD_DIR:-build}
cmake --build "$BUILD_DIR" --target png_compare >/dev/null
status=0
for f in examples/*.json; do
  n=$(basename "$f" .json)
  rm -rf "${OUT:?}/$n"
  "$EXE" "$f" --project "$OUT/$n/proj" --ui-layout flat --render --check >/dev/null 2>&1 || true
  printf '%-24s ' "$n"
  "$BUILD_DIR/bench/png_compare" "$REF/$n/proj" "$OUT/$n/proj" | tail -1 || status=1
done
exit $status
