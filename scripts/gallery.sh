#!/usr/bin/env bash
# Renders every example page with the tool itself and refreshes docs/gallery/<name>.png.
# Expects a built templates/ui_blocks/compose (scripts/setup.sh builds it).
set -euo pipefail
cd "$(dirname "$0")/.."
COMPOSE=templates/ui_blocks/compose
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p docs/gallery
for spec in examples/*.json; do
  name=$(basename "$spec" .json)
  "$COMPOSE" "$spec" --project "$work/$name" --render >"$work/$name.log"
  cp "$work/$name/ui/main.render.png" "docs/gallery/$name.png"
  grep -E '^\s*\[(NOTE|X)\]' "$work/$name.log" >"docs/gallery/$name.notes.txt" || true
  echo "$name: $(grep -c . "docs/gallery/$name.notes.txt") note lines"
done
